#include "support/test_bench.h"
#include "workbench/offline_list.h"

namespace karvo::test
{

class OfflineListTest : public testing::Test, protected TestBench
{
protected:
    OfflineListTest() { addFile("CV_Standart_kv07.txt", smallDescription("Standard KV07", "Wort ")); }
};

TEST_F(OfflineListTest, AsksOnlyUntilADecoderHasBeenIdentified)
{
    for (const bool yes : {false, true}) {
        prompts.answer(yes);
        EXPECT_EQ(confirmOfflineList(bench), yes);
        EXPECT_EQ(journal.back(), "question no decoder yet\r\nvalues are defaults\r\ngo on?");
    }
    state.link.identified = true; // a KV04, whose type code is 0
    EXPECT_TRUE(confirmOfflineList(bench));
    EXPECT_EQ(journal.size(), 2u);
}

TEST_F(OfflineListTest, ShowsTheDescriptionsOwnValues)
{
    state.set.currentNumber = 29;
    state.set.rawReply = Bytes(513, 5);
    state.askNoMore.emplace();
    ASSERT_TRUE(showOfflineList(bench, "mnu_kv07"));
    EXPECT_FALSE(state.askNoMore);
    EXPECT_EQ(state.set.list[0].text, u"CV1  = 1");
    EXPECT_EQ(state.set.currentNumber, 0);
    EXPECT_EQ(state.set.modelCode, u"07");
    EXPECT_TRUE(state.set.isOffline());
    EXPECT_TRUE(state.set.rawReply.empty());
    EXPECT_EQ(state.set.loadedData, u"KV07  offline | CV_Standart_kv07.txt");
    EXPECT_EQ(journal.back(), "list changed");
}

TEST_F(OfflineListTest, TheFourVariantsAreOfferedAndTheLastOneProposed)
{
    setTexts(state.texts, {}, {{50, u"variant"}, {51, u"which?"}});
    for (int number = 1; number <= 4; ++number) {
        setCaption(state.texts, 51 + number, u"bus" + textFromNumber(number));
        setCaption(state.texts, 55 + number, u"fire" + textFromNumber(number));
    }
    addFile("CV_KV04_Bus_V3_08.txt", smallDescription("Standard KV04 172 Bus V3", "Wort "));
    addFile("CV_KV07_FW_V4.txt", smallDescription("Standard KV07 FW V4", "Wort "));
    const struct {
        const char* item;
        std::size_t chosen;
        const char* asked;
        const char* file;
    } cases[] = {
        {"mnu_KV04_Bus_08", 2, "*bus1 bus2 bus3 bus4", "CV_KV04_Bus_V3_08.txt"},
        {"mnu_KV07_FW", 3, "fire1 fire2 *fire3 fire4", "CV_KV07_FW_V4.txt"},
    };
    for (const auto& [item, chosen, asked, file] : cases) {
        journal.clear();
        prompts.choose(chosen);
        ASSERT_TRUE(showChosenOfflineList(bench, item));
        EXPECT_EQ(journal[0], std::string("choice variant: which? ") + asked);
        EXPECT_EQ(state.set.descriptionPath.filename(), file);
    }
    prompts.choose(std::nullopt);
    EXPECT_FALSE(showChosenOfflineList(bench, "mnu_KV07_FW"));
    prompts.choose(0); // not in the folder
    EXPECT_FALSE(showChosenOfflineList(bench, "mnu_KV07_FW"));
    EXPECT_EQ(state.automaticVariant, 3);
    EXPECT_TRUE(showChosenOfflineList(bench, "mnu_kv07")); // without a question
}

TEST_F(OfflineListTest, NeitherUnknownItemsNorBusyLinesChangeAnything)
{
    EXPECT_FALSE(showOfflineList(bench, "mnu_open"));
    state.automaticVariant = 4;
    EXPECT_FALSE(showOfflineList(bench, "mnu_KV07_Bus"));
    state.lineBusy = true;
    EXPECT_FALSE(showOfflineList(bench, "mnu_kv07"));
    EXPECT_TRUE(state.set.isEmpty());
    EXPECT_TRUE(journal.empty());
}

} // namespace karvo::test
