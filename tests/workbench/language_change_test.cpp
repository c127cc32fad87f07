#include "support/test_bench.h"
#include "workbench/full_read.h"
#include "workbench/language_change.h"
#include "workbench/offline_list.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using test::Journal;
using test::smallDescription;

class LanguageChangeTest : public testing::Test, protected test::TestBench
{
};

TEST_F(LanguageChangeTest, AMissingFileIsShownAndEndsTheProgram)
{
    addFile("Franz_var.txt", "0001x\r\n");
    EXPECT_FALSE(useLanguage(bench, LanguageCode::french));
    EXPECT_EQ(journal, (Journal{"message File [Franz_mnu.txt] not available !\r\nSet language to "
                                "German.\r\n\r\nProgram will be closed",
                                "end program"}));
}

TEST_F(LanguageChangeTest, ValuesAndTheCurrentCvStayAndTheWordsChange)
{
    addFile("CV_Standart_kv07.txt", smallDescription("Standard KV07", "Wort "));
    addFile("CV_Standart_kv07en.txt", smallDescription("Standard KV07", "word "));
    ASSERT_TRUE(showOfflineList(bench, "mnu_kv07"));
    state.set.table.setValue(5, 99);
    state.set.currentNumber = 5;
    state.language = LanguageCode::english;
    test::setCaption(state.texts, 161, u"changed");
    describeAnew(bench);
    EXPECT_EQ(state.set.list[4].text, u"CV5  = 99  changed");
    EXPECT_EQ(state.set.list[4].name, u"word 5");
    EXPECT_EQ(state.set.currentNumber, 5);
    EXPECT_EQ(state.set.descriptionPath, state.programFolder / "CV_Standart_kv07en.txt");
}

TEST_F(LanguageChangeTest, AMissingDescriptionLeavesTheWordsAsTheyWere)
{
    addFile("CV_Standart_kv07.txt", smallDescription("Standard KV07", "Wort "));
    ASSERT_TRUE(showOfflineList(bench, "mnu_kv07"));
    state.language = LanguageCode::french;
    describeAnew(bench);
    EXPECT_EQ(state.set.list[4].name, u"Wort 5");
}

TEST_F(LanguageChangeTest, WithoutAListNothingIsRead)
{
    describeAnew(bench);
    EXPECT_TRUE(journal.empty());
    storeLanguage(bench, LanguageCode::spanish);
    EXPECT_EQ(settings.values["Parameter/Language"], u"4");
}

} // namespace
} // namespace karvo
