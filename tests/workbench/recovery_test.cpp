#include "workbench/recovery.h"

#include "cvdata/changes.h"
#include "support/test_bench.h"
#include "workbench/change_value.h"
#include "workbench/describe.h"
#include "workbench/list_files.h"
#include "workbench/offline_list.h"

namespace karvo::test
{

const std::string list = "Standard KV07*5\r\n1;42;Adresse;0;255;3;\r\nEnde CV\r\nATmega328\r\nEnde FS\r\n";

class RecoveryTest : public testing::Test, protected TestBench
{
protected:
    RecoveryTest()
    {
        setTexts(state.texts, {{710, u"no list"}, {723, u"restore {1} of {2}, {3}? else {4}"}},
                 {{161, u"changed"}, {17, u"Address:"}});
        setTexts(state.texts, {{679, u"kept"}, {724, u"{1}: {2}"}}, {});
        addFile("CV_Standart_kv07.txt", smallDescription("Standard KV07", "Wort "));
        files.content["lists/bus.kvr"] = bytesOf(list);
        state.recovery.file = "config/recovery";
        openList(bench, "lists/bus.kvr");
        journal.clear();
    }
    void change(int value) { ASSERT_EQ(changeValue(bench, 1, value), ChangeEnd::changed); }
    bool isKept() const { return files.content.count("config/recovery") != 0; }
    void keep(const std::string& content) { files.content["config/recovery"] = bytesOf(content); }
    // The next start, with the answer that the person gives then.
    bool offered(bool answer)
    {
        state.set = CvSet();
        journal.clear();
        prompts.answer(answer);
        return offerRecovery(bench);
    }
};

TEST_F(RecoveryTest, ChangesAreOfferedAtTheNextStart)
{
    change(43);
    change(44);
    files.saveFailure = u"disk full"; // what is on disk must do until the list is there
    ASSERT_TRUE(offered(true));
    EXPECT_TRUE(isKept());
    files.saveFailure.reset();
    EXPECT_EQ(journal.front(),
              "question restore lists/bus.kvr of 2026-11-24 08:05, 1? else config/recovery.old [yes]");
    EXPECT_EQ(state.set.listPath, "lists/bus.kvr");
    EXPECT_TRUE(state.set.unsavedChanges);
    EXPECT_EQ(state.set.list[0].text, u"CV1  = 44  changed");
    EXPECT_TRUE(takeBackValue(bench, 1));
    EXPECT_EQ(state.set.table.value(1), 42);
    EXPECT_TRUE(isKept()); // until they are saved
    ASSERT_TRUE(saveListAs(bench, "lists/bus.kvr"));
    EXPECT_FALSE(isKept());
    ASSERT_TRUE(showOfflineList(bench, "mnu_kv07")); // a list without a file
    change(7);
    ASSERT_TRUE(offered(true));
    EXPECT_EQ(journal.front().substr(0, 46), "question restore Standard KV07, Address: 7 of ");
    EXPECT_TRUE(state.set.listPath.empty());
    EXPECT_EQ(state.set.loadedData, u"KV07  Firmware = 0 | CV_Standart_kv07.txt");
}

TEST_F(RecoveryTest, NothingIsKeptOrOfferedAfterACleanEndOrWithoutAPlace)
{
    EXPECT_FALSE(offerRecovery(bench));
    const std::function<void()> ends[] = {
        [&] { dropRecovery(bench); },
        [&] { showOfflineList(bench, "mnu_kv07"); }, // in place of the changed list
        [&] { clearDisplay(bench); },
    };
    int value = 43;
    for (const auto& end : ends) {
        change(value++);
        EXPECT_TRUE(isKept());
        end();
        EXPECT_FALSE(isKept());
        EXPECT_FALSE(offerRecovery(bench));
    }
    openList(bench, "lists/bus.kvr");
    state.recovery.file.clear();
    files.saves = 0;
    change(43);
    EXPECT_EQ(files.saves, 0);
    EXPECT_FALSE(offerRecovery(bench));
}

TEST_F(RecoveryTest, WhatIsDeclinedOrDamagedIsPutAside)
{
    change(43);
    EXPECT_FALSE(offered(false));
    EXPECT_TRUE(state.set.isEmpty());
    EXPECT_FALSE(isKept());
    for (const std::string content : {"", "nonsense", "Karvo recovery;x", "Karvo recovery;x\r\n1=3;"}) {
        keep(content);
        EXPECT_FALSE(offerRecovery(bench)) << content;
        EXPECT_FALSE(isKept());
    }
    keep("Karvo recovery;lists/bus.kvr\r\n\r\nbinary");
    EXPECT_FALSE(offered(true));
    EXPECT_EQ(journal.back(), "message no list");
    EXPECT_EQ(files.content["config/recovery.old6"], bytesOf("binary"));
    ASSERT_TRUE(openList(bench, "config/recovery.old"));
    EXPECT_EQ(state.set.table.value(1), 43);
    keep("Karvo recovery;\r\n0=1;1=;257=2;x;=;3;1\r\n" + list); // values before the changes
    ASSERT_TRUE(offered(true));
    EXPECT_EQ((*state.set.baseline)[1], u"");
    EXPECT_EQ(changedCvs(state.set), (std::vector<int>{1}));
}

TEST_F(RecoveryTest, ABoxBeforeTheEndSaysThatWorkIsKeptAndOnceThatItIsNot)
{
    EXPECT_EQ(withUnsavedWork(state, u"end"), u"end");
    change(43);
    EXPECT_EQ(withUnsavedWork(state, u"end"), u"end\r\nkept");
    EXPECT_TRUE(bench.link().unsavedWorkKept);
    files.saveFailure = u"disk full";
    change(44);
    change(45);
    EXPECT_EQ(withUnsavedWork(state, u"end"), u"end");
    EXPECT_EQ(std::count(journal.begin(), journal.end(), "message config/recovery: disk full"), 1);
    files.saveFailure.reset();
    change(46);
    ASSERT_TRUE(saveListAs(bench, "lists/bus.kvr"));
    EXPECT_FALSE(bench.link().unsavedWorkKept);
    files.saveFailure = u"disk full";
    keep("Karvo recovery;\r\n\r\n" + list);
    EXPECT_FALSE(offered(false));
    EXPECT_TRUE(isKept()) << "what can not be put aside is offered again";
}

} // namespace karvo::test
