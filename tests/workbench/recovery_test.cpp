#include "cvdata/changes.h"
#include "support/test_bench.h"
#include "workbench/change_value.h"
#include "workbench/describe.h"
#include "workbench/list_files.h"
#include "workbench/offline_list.h"
#include "workbench/recovery.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using test::bytesOf;

const std::string list = "Standard KV07*5\r\n1;42;Adresse;0;255;3;\r\nEnde CV\r\nATmega328\r\nEnde FS\r\n";

class RecoveryTest : public testing::Test, protected test::TestBench
{
protected:
    RecoveryTest()
    {
        test::setCaption(state.texts, 161, u"changed");
        test::setText(state.texts, 710, u"no list");
        test::setText(state.texts, 723, u"restore {1} of {2}, {3}? else {4}");
        test::setText(state.texts, 679, u"kept");
        test::setCaption(state.texts, 17, u"Address:");
        test::setText(state.texts, 724, u"{1}: {2}");
        addFile("CV_Standart_kv07.txt", test::smallDescription("Standard KV07", "Wort "));
        files.content["lists/bus.kvr"] = bytesOf(list);
        state.recovery.file = "config/recovery";
    }

    void change(int value) { ASSERT_EQ(changeValue(bench, 1, value), ChangeEnd::changed); }

    bool isKept() const { return files.content.count("config/recovery") != 0; }
    void startAnew() { state.set = CvSet(); }
};

TEST_F(RecoveryTest, ChangesAreOfferedAtTheNextStart)
{
    ASSERT_TRUE(openList(bench, "lists/bus.kvr"));
    change(43);
    change(44);
    startAnew();
    journal.clear();
    prompts.answer(true);
    files.saveFailure = u"disk full"; // what is on disk must do until the list is there
    ASSERT_TRUE(offerRecovery(bench));
    files.saveFailure.reset();
    EXPECT_EQ(journal.front(),
              "question restore lists/bus.kvr of 2026-11-24 08:05, 1? else config/recovery.old [yes]");
    EXPECT_EQ(state.set.table.value(1), 44);
    EXPECT_EQ(state.set.listPath, "lists/bus.kvr");
    EXPECT_TRUE(state.set.unsavedChanges);
    EXPECT_EQ(changedCvs(state.set), (std::vector<int>{1}));
    EXPECT_EQ(state.set.list[0].text, u"CV1  = 44  changed");
    EXPECT_TRUE(takeBackValue(bench, 1));
    EXPECT_EQ(state.set.table.value(1), 42);
    EXPECT_EQ(files.content["lists/bus.kvr"], bytesOf(list));
    EXPECT_TRUE(isKept()); // until they are saved
    ASSERT_TRUE(saveListAs(bench, "lists/bus.kvr"));
    EXPECT_FALSE(isKept());
}

TEST_F(RecoveryTest, AListWithoutAFileIsRecoveredToo)
{
    ASSERT_TRUE(showOfflineList(bench, "mnu_kv07"));
    change(7);
    startAnew();
    journal.clear();
    prompts.answer(true);
    ASSERT_TRUE(offerRecovery(bench));
    EXPECT_EQ(journal.front().substr(0, 46), "question restore Standard KV07, Address: 7 of ");
    EXPECT_EQ(state.set.table.value(1), 7);
    EXPECT_TRUE(state.set.listPath.empty());
    EXPECT_EQ(state.set.loadedData, u"KV07  Firmware = 0 | CV_Standart_kv07.txt");
}

TEST_F(RecoveryTest, NothingIsOfferedAfterACleanEnd)
{
    EXPECT_FALSE(offerRecovery(bench));
    ASSERT_TRUE(openList(bench, "lists/bus.kvr"));
    change(43);
    dropRecovery(bench);
    EXPECT_FALSE(isKept());
    change(44);
    EXPECT_TRUE(isKept());
    ASSERT_TRUE(showOfflineList(bench, "mnu_kv07")); // in place of the changed list
    EXPECT_FALSE(isKept());
    change(45);
    EXPECT_TRUE(isKept());
    clearDisplay(bench);
    EXPECT_FALSE(isKept());
    EXPECT_FALSE(offerRecovery(bench));
}

TEST_F(RecoveryTest, WhatIsDeclinedIsPutAside)
{
    ASSERT_TRUE(openList(bench, "lists/bus.kvr"));
    change(43);
    startAnew();
    prompts.answer(false);
    EXPECT_FALSE(offerRecovery(bench));
    EXPECT_TRUE(state.set.isEmpty());
    EXPECT_FALSE(isKept());
    files.content["config/recovery"] = bytesOf("Karvo recovery;\r\n\r\n" + list);
    prompts.answer(false);
    EXPECT_FALSE(offerRecovery(bench));
    EXPECT_EQ(files.content["config/recovery.old2"], bytesOf(list));
    ASSERT_TRUE(openList(bench, "config/recovery.old"));
    EXPECT_EQ(state.set.table.value(1), 43);
}

TEST_F(RecoveryTest, ABoxBeforeTheEndSaysThatWorkIsKept)
{
    ASSERT_TRUE(openList(bench, "lists/bus.kvr"));
    EXPECT_EQ(withUnsavedWork(state, u"end"), u"end");
    change(43);
    EXPECT_EQ(withUnsavedWork(state, u"end"), u"end\r\nkept");
    EXPECT_TRUE(bench.link().unsavedWorkKept);
    files.saveFailure = u"disk full";
    change(44);
    EXPECT_EQ(withUnsavedWork(state, u"end"), u"end");
    files.saveFailure.reset();
    change(45);
    ASSERT_TRUE(saveListAs(bench, "lists/bus.kvr"));
    EXPECT_FALSE(bench.link().unsavedWorkKept);
}

TEST_F(RecoveryTest, ADamagedFileIsPutAsideAndNotAskedAboutAgain)
{
    for (const std::string content :
         {"", "nonsense", "Karvo recovery;lists/bus.kvr", "Karvo recovery;lists/bus.kvr\r\n1=3;"}) {
        files.content["config/recovery"] = bytesOf(content);
        EXPECT_FALSE(offerRecovery(bench)) << content;
        EXPECT_FALSE(isKept());
    }
    files.content["config/recovery"] = bytesOf("Karvo recovery;lists/bus.kvr\r\n\r\nbinary");
    prompts.answer(true);
    EXPECT_FALSE(offerRecovery(bench));
    EXPECT_EQ(journal.back(), "message no list");
    EXPECT_EQ(files.content["config/recovery.old5"], bytesOf("binary"));
}

TEST_F(RecoveryTest, ValuesBeforeTheChangesAreReadWithCare)
{
    files.content["config/recovery"] = bytesOf("Karvo recovery;\r\n0=1;1=;257=2;x;=;3;1\r\n" + list);
    prompts.answer(true);
    ASSERT_TRUE(offerRecovery(bench));
    EXPECT_EQ((*state.set.baseline)[1], u"");
    EXPECT_EQ(changedCvs(state.set), (std::vector<int>{1}));
}

TEST_F(RecoveryTest, AFileThatCanNotBeWrittenIsToldOnce)
{
    ASSERT_TRUE(openList(bench, "lists/bus.kvr"));
    journal.clear();
    files.saveFailure = u"disk full";
    change(43);
    change(44);
    EXPECT_EQ(std::count(journal.begin(), journal.end(), "message config/recovery: disk full"), 1);
    // What can not be put aside stays to be offered again.
    files.content["config/recovery"] = bytesOf("Karvo recovery;\r\n\r\n" + list);
    prompts.answer(false);
    EXPECT_FALSE(offerRecovery(bench));
    EXPECT_TRUE(isKept());
}

TEST_F(RecoveryTest, WithoutAPlaceNothingIsKept)
{
    state.recovery.file.clear();
    ASSERT_TRUE(openList(bench, "lists/bus.kvr"));
    change(43);
    EXPECT_EQ(files.saves, 0);
    EXPECT_FALSE(offerRecovery(bench));
}

} // namespace
} // namespace karvo
