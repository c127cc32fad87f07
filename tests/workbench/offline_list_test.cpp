#include "support/test_bench.h"
#include "workbench/offline_list.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using test::smallDescription;

class OfflineListTest : public testing::Test, protected test::TestBench
{
};

TEST_F(OfflineListTest, AsksOnlyUntilADecoderHasBeenIdentified)
{
    prompts.answer(false);
    EXPECT_FALSE(confirmOfflineList(bench));
    EXPECT_EQ(journal.back(), "question no decoder yet\r\nvalues are defaults\r\ngo on?");
    prompts.answer(true);
    EXPECT_TRUE(confirmOfflineList(bench));
    state.link.identified = true; // a KV04, whose type code is 0
    journal.clear();
    EXPECT_TRUE(confirmOfflineList(bench));
    EXPECT_TRUE(journal.empty());
}

TEST_F(OfflineListTest, ShowsTheDescriptionsOwnValues)
{
    state.set.currentNumber = 29;
    state.set.rawReply = Bytes(513, 5);
    addFile("CV_Standart_kv07.txt", smallDescription("Standard KV07", "Wort "));
    ASSERT_TRUE(showOfflineList(bench, "mnu_kv07"));
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
    test::setCaption(state.texts, 50, u"variant");
    test::setCaption(state.texts, 51, u"which?");
    for (int number = 1; number <= 4; ++number) {
        test::setCaption(state.texts, 51 + number, u"bus" + textFromNumber(number));
        test::setCaption(state.texts, 55 + number, u"fire" + textFromNumber(number));
    }
    addFile("CV_KV04_Bus_V3_08.txt", smallDescription("Standard KV04 172 Bus V3", "Wort "));
    addFile("CV_KV07_FW_V4.txt", smallDescription("Standard KV07 FW V4", "Wort "));
    prompts.choose(2);
    ASSERT_TRUE(showChosenOfflineList(bench, "mnu_KV04_Bus_08"));
    EXPECT_EQ(journal[0], "choice variant: which? *bus1 bus2 bus3 bus4");
    EXPECT_EQ(state.set.descriptionPath.filename(), "CV_KV04_Bus_V3_08.txt");
    EXPECT_EQ(state.set.modelCode, u"04");
    journal.clear();
    prompts.choose(3);
    ASSERT_TRUE(showChosenOfflineList(bench, "mnu_KV07_FW"));
    EXPECT_EQ(journal[0], "choice variant: which? fire1 fire2 *fire3 fire4");
    EXPECT_EQ(state.set.descriptionPath.filename(), "CV_KV07_FW_V4.txt");

    prompts.choose(std::nullopt);
    EXPECT_FALSE(showChosenOfflineList(bench, "mnu_KV07_FW"));
    prompts.choose(0); // not in the folder
    EXPECT_FALSE(showChosenOfflineList(bench, "mnu_KV07_FW"));
    EXPECT_EQ(state.automaticVariant, 3);
    addFile("CV_Standart_kv07.txt", smallDescription("Standard KV07", "Wort "));
    EXPECT_TRUE(showChosenOfflineList(bench, "mnu_kv07")); // without a question
}

TEST_F(OfflineListTest, NeitherUnknownItemsNorBusyLinesChangeAnything)
{
    addFile("CV_Standart_kv07.txt", smallDescription("Standard KV07", "Wort "));
    EXPECT_FALSE(showOfflineList(bench, "mnu_open"));
    state.automaticVariant = 4;
    EXPECT_FALSE(showOfflineList(bench, "mnu_KV07_Bus"));
    state.lineBusy = true;
    EXPECT_FALSE(showOfflineList(bench, "mnu_kv07"));
    EXPECT_TRUE(state.set.isEmpty());
    EXPECT_TRUE(journal.empty());
}

} // namespace
} // namespace karvo
