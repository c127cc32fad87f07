#include "support/test_bench.h"
#include "workbench/language_change.h"
#include "workbench/offline_list.h"

namespace karvo::test
{

class LanguageChangeTest : public testing::Test, protected TestBench
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

TEST_F(LanguageChangeTest, ValuesAndTheCurrentCvStayAndTheWordsChangeWhereThereAreAny)
{
    describeAnew(bench);
    EXPECT_TRUE(journal.empty()) << "there is no list";
    addFile("CV_Standart_kv07.txt", smallDescription("Standard KV07", "Wort "));
    addFile("CV_Standart_kv07en.txt", smallDescription("Standard KV07", "word "));
    ASSERT_TRUE(showOfflineList(bench, "mnu_kv07"));
    state.set.table.setValue(5, 99);
    state.set.currentNumber = 5;
    setCaption(state.texts, 161, u"changed");
    for (const auto language : {LanguageCode::english, LanguageCode::french}) { // French has no file here
        state.language = language;
        describeAnew(bench);
        EXPECT_EQ(state.set.list[4].text, u"CV5  = 99  changed");
        EXPECT_EQ(state.set.list[4].name, u"word 5");
        EXPECT_EQ(state.set.currentNumber, 5);
        EXPECT_EQ(state.set.descriptionPath, "program/CV_Standart_kv07en.txt");
    }
    storeLanguage(bench, LanguageCode::spanish);
    EXPECT_EQ(settings.values["Parameter/Language"], u"4");
}

} // namespace karvo::test
