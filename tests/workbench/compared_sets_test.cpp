#include "workbench/compared_sets.h"

#include "support/test_bench.h"
#include "workbench/list_files.h"

namespace karvo::test
{

class ComparedSetsTest : public testing::Test, protected TestBench
{
protected:
    ComparedSetsTest()
    {
        numberEveryText(state.texts);
        setTexts(state.texts, {{1, u"cannot open"}}, {{21, u"Firmware"}, {223, u"vehicle {1}"}});
        put("a.kvr", "Standard KV07*6", "14;7;x;\r\n84;9;FS;\r\n");
        put("b.kvr", "Standard KV07*6", "11;4;y;\r\n84;8;FS;\r\n");
        put("old.kvr", "Standard KV04*6", "", "ATmega168");
        put("damaged.kvr", "Standard KV08*6", "300;1;x;\r\n");
        addFile("CV_Standart_kv07.txt", smallDescription("Standard KV07", "Wort "));
        addFile("CV_Standart172_v1_5.txt", smallDescription("Standard KV05", "anderes "));
    }
    void put(const std::string& name, const std::string& header, const std::string& rows,
             const std::string& processor = "ATmega328")
    {
        files.content[name] = bytesOf(header + "\r\n1;3;eins;0;255;1;\r\n" + rows + "Ende CV\r\n" +
                                      processor + "\r\nFirmware_Version: 6\r\nEnde FS\r\n");
    }
    // Label, values and name of each line.
    std::string lines()
    {
        std::string text;
        const auto comparison = sets.compare();
        for (const ComparisonLine& one : comparison ? comparison->lines : std::vector<ComparisonLine>())
            text += utf8FromText(one.label + one.firstValue + u" " + one.secondValue + u" " + one.name) + ";";
        return text;
    }
    Text names() const { return sets.firstName() + u"|" + sets.secondName() + u"|" + sets.modelLabel(); }

    ComparedSets sets{bench};
};

TEST_F(ComparedSetsTest, TwoFilesStandSideBySideInTheWordsOfTheirModelOrOfAChosenOne)
{
    EXPECT_EQ(names(), u"||");
    EXPECT_EQ(sets.lookUp(u"9"), std::nullopt);
    EXPECT_TRUE(sets.openSecond("old.kvr"));
    EXPECT_EQ(sets.compare(), std::nullopt) << "a side is missing";
    EXPECT_EQ(names(), u"|old.kvr|  KV04");
    EXPECT_TRUE(sets.openFirst("a.kvr"));
    EXPECT_EQ(names(), u"a.kvr|old.kvr|  KV07");
    EXPECT_EQ(lines(), "") << "of another processor";
    EXPECT_TRUE(journal.size() == 1 && journal[0].starts_with("message m"));
    EXPECT_TRUE(sets.openSecond("b.kvr"));
    EXPECT_EQ(lines(), "CV1 = 3 3 Wort 1;CV11 = --- 4 Wort 11;CV14 = 7 --- Wort 14;"
                       "  14 (CV84) = 9 8 Wort 84;");
    EXPECT_TRUE(sets.lookUp(u"CV84")->ends_with(u"CV84 = 8")) << "in the second side";
    EXPECT_TRUE(sets.chooseModel("mnu_KV05"));
    EXPECT_FALSE(sets.openFirst("none.kvr") || sets.openSecond("none.kvr"));
    EXPECT_EQ(names(), u"a.kvr|b.kvr|  KV05");
    EXPECT_EQ(lines().substr(0, 19), "CV1 = 3 3 anderes 1");
    EXPECT_TRUE(sets.openSecond("damaged.kvr"));
    EXPECT_TRUE(journal.back().starts_with("message m713")) << "what is not sound is told";
}

TEST_F(ComparedSetsTest, TheSetOnTheBenchIsTheFirstSide)
{
    ASSERT_TRUE(openList(bench, "a.kvr"));
    EXPECT_TRUE(sets.lookUp(u"9")->ends_with(u"CV84 = 9"));
    ASSERT_TRUE(sets.openSecond("b.kvr"));
    EXPECT_EQ(names(), u"KV07  Firmware = 6 | a.kvr|b.kvr|  KV07");
    EXPECT_EQ(lines(), "CV1 = 3 3 eins;CV11 = --- 4 ;CV14 = 7 --- x;  14 (CV84) = 9 8 FS;");
    state.set.offlineItem.clear(); // a vehicle
    state.set.profile.model = Model::receiver;
    EXPECT_EQ(names(), u"vehicle KV07  Firmware = 6 | a.kvr|b.kvr| KV-XT");
    EXPECT_NE(lines().find("CV84 = 9 8"), std::string::npos) << "it has no speed table";
}

TEST_F(ComparedSetsTest, EachModelHasItsDescription)
{
    files.content.clear();
    std::string missing;
    for (const ComparedModel& one : comparedModels()) {
        EXPECT_FALSE(sets.chooseModel(one.menuItem)) << one.menuItem;
        const auto file = journal.back().substr(std::string("message cannot open program/").size());
        missing += file.substr(0, file.find('\r')) + " ";
    }
    state.language = LanguageCode::french;
    EXPECT_FALSE(sets.chooseModel("mnu_KV08"));
    EXPECT_EQ(missing,
              "CV_Standart180.txt CV_Standart172.txt CV_Standart172_v1_5.txt CV_Standart172_v1_6.txt "
              "CV_Standart_kv07.txt CV_Standart_kv08.txt CV_Standart_receiver.txt ");
    EXPECT_NE(journal.back().find("CV_Standart_kv08fr.txt"), std::string::npos) << journal.back();
}

} // namespace karvo::test
