#include "cvdata/expert_choice.h"
#include "cvdata/expert_file.h"
#include "support/memory_files.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

constexpr auto de = LanguageCode::german;
constexpr auto nl = LanguageCode::dutch;
constexpr auto en = LanguageCode::english;
constexpr auto es = LanguageCode::spanish;
constexpr auto fr = LanguageCode::french;

DecoderProfile profileFor(int typeCode, Generation generation)
{
    DecoderProfile profile;
    profile.typeCode = typeCode;
    profile.model = modelOfTypeCode(typeCode);
    profile.generation = generation;
    return profile;
}

TEST(ExpertChoiceTest, FileOfEachDecoder)
{
    using enum Generation;
    struct Case {
        int typeCode;
        Generation generation;
        LanguageCode language;
        const char* file;
    };
    const Case cases[] = {
        {0, until2008First, en, "CV_exp.txt"},     {0, until2008Last, de, "CV_exp.txt"},
        {0, from2009, de, "CV_exp_v1.txt"},        {1, standard, fr, "CV_exp_v1_5.txt"},
        {2, standard, de, "CV_exp_v1_6.txt"},      {4, undated, de, "CV_exp_Mai10_4.txt"},
        {5, may2010, de, "CV_exp_Mai10_5.txt"},    {6, november2012, es, "CV_exp_November12_6.txt"},
        {7, standard, de, "CV_exp_kv07.txt"},      {7, standard, nl, "CV_exp_kv07_NL.txt"},
        {8, f3, en, "CV_exp_kv08_F3_EN.txt"},      {7, v1, fr, "CV_exp_kv07_V1_FR.txt"},
        {7, tacho, es, "CV_exp_kv07Tacho.txt"},    {8, laneControl, en, "CV_exp_kv08LCen.txt"},
        {57, standard, en, "CV_exp_an07_EN.txt"},  {57, v1, es, "CV_exp_an07_V1_ES.txt"},
        {80, standard, de, "CV_exp_receiver.txt"}, {81, standard, nl, "CV_exp_receiver_nl.txt"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(expertFileName(profileFor(c.typeCode, c.generation), c.language), c.file);
}

TEST(ExpertChoiceTest, AReceiversFirmwareDateDecides)
{
    struct Case {
        FirmwareDate date;
        int subLevel;
        LanguageCode language;
        const char* file;
    };
    const Case cases[] = {
        {{2015, 8, 31}, 0, de, "CV_exp_Receiver.txt"},
        {{2015, 8, 31}, 0, en, "CV_exp_Receiver_en.txt"},
        {{2015, 8, 31}, 0, nl, "CV_exp_Receiver.txt_nl.txt"},
        {{2015, 9, 1}, 0, fr, "CV_exp_Receiver_010915_fr.txt"},
        {{2016, 2, 24}, 0, es, "CV_exp_Receiver_240216_es.txt"},
        {{2016, 2, 24}, 1, de, "CV_exp_Receiver_240216_neu.txt"},
        {{2016, 2, 24}, 1, en, "CV_exp_Receiver_240216_en_neu.txt"},
        {{2022, 2, 26}, 0, nl, "CV_exp_Receiver_240216_nl.txt"},
        {{2022, 2, 27}, 1, de, "CV_exp_Receiver_270222.txt"},
        {{2023, 1, 1}, 0, nl, "CV_exp_Receiver_270222_nl"},
    };
    for (const Case& c : cases) {
        auto profile = profileFor(80, Generation::standard);
        profile.firmwareDate = c.date;
        profile.subLevel = c.subLevel;
        EXPECT_EQ(expertFileName(profile, c.language), c.file);
    }
}

TEST(ExpertChoiceTest, OfflineListsHaveTheirOwnRule)
{
    const auto file = [](std::string_view item, LanguageCode language) {
        const OfflineList& list = *offlineListOf(item);
        return offlineExpertFileName(list, offlineProfile(list), language);
    };
    EXPECT_EQ(file("mnu_KV04", de), "CV_exp.txt");
    EXPECT_EQ(file("mnu_KV04_neu", de), "CV_exp_v1.txt");
    EXPECT_EQ(file("mnu_KV04_Bus_09", de), "CV_exp.txt");
    EXPECT_EQ(file("mnu_KV04_FW_08", en), "CV_exp.txt");
    EXPECT_EQ(file("mnu_KV06_Bus", fr), "CV_exp_v1_6.txt");
    EXPECT_EQ(file("mnu_KV08_FW", fr), "CV_exp_kv08_FR.txt");
}

TEST(ExpertChoiceTest, AnOfflineListFollowsFirmwareV1OfTheDecoderOnTheBench)
{
    struct Case {
        std::string_view item;
        int typeCode;
        Generation generation;
        const char* file;
    };
    const Case cases[] = {
        {"mnu_kv07", 7, Generation::v1, "CV_exp_kv07_V1_EN.txt"},
        {"mnu_KV08", 8, Generation::v1, "CV_exp_kv08_V1_EN.txt"},
        {"mnu_KV08", 7, Generation::v1, "CV_exp_kv08_EN.txt"},
        {"mnu_kv07", 7, Generation::f3, "CV_exp_kv07_EN.txt"},
        {"mnu_KV07_Bus", 7, Generation::v1, "CV_exp_kv07_EN.txt"},
        {"mnu_KV05", 57, Generation::v1, "CV_exp_v1_5.txt"},
    };
    for (const Case& c : cases) {
        const OfflineList& list = *offlineListOf(c.item);
        const auto profile = offlineProfile(list, profileFor(c.typeCode, c.generation));
        EXPECT_EQ(offlineExpertFileName(list, profile, en), c.file) << c.item;
        EXPECT_EQ(profile.model, list.model);
    }
}

TEST(ExpertFileTest, EntriesAreFoundByTheirNumberAndFaultsByTheirLine)
{
    const auto file =
        parseExpertFile(test::bytesOf("Head\r\n57;;Bit 7;;;;What happens$inside;;\r\n"
                                      "3;;Three;\r\n257;;x;\r\n3;;again;\r\nno field\r\n  \r\n"));
    ASSERT_TRUE(file);
    ASSERT_EQ(file->entries.size(), 2u);
    EXPECT_EQ(file->entries.at(57).name, u"Bit 7");
    EXPECT_EQ(file->entries.at(57).knowledge, u"What happens\r\ninside");
    EXPECT_EQ(file->entries.at(3).name, u"Three");
    EXPECT_EQ(file->entries.at(3).knowledge, u"");
    EXPECT_EQ(file->faultyLines, (std::vector<int>{4, 5, 6}));
    EXPECT_FALSE(parseExpertFile(test::bytesOf("")));
    EXPECT_FALSE(parseExpertFile(test::bytesOf("only a header\r\n")));
}

TEST(ExpertFileTest, ALineSaysTheFirstSentenceOfWhatIsKnown)
{
    const Text longText(30, u'a');
    const struct {
        Text knowledge;
        Text line;
    } cases[] = {
        {u"", u"name"},
        {u"  ", u"name"},
        {u"Nur ein Satz", u"Nur ein Satz"},
        {u"Das gilt. Sonst nicht.", u"Das gilt."},
        {u"Werte z. B. 10 oder 3.5 sind gut. Mehr nicht.", u"Werte z. B. 10 oder 3.5 sind gut."},
        {u"Was dann?\r\nDas.", u"Was dann?"},
        {longText + u' ' + longText + u' ' + longText, longText + u' ' + longText + u"\u2026"},
    };
    for (const auto& [knowledge, line] : cases)
        EXPECT_EQ(expertLine({u"name", knowledge}), line) << utf8FromText(knowledge);
}

} // namespace
} // namespace karvo
