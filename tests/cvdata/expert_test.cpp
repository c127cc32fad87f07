#include "cvdata/expert_choice.h"
#include "cvdata/expert_file.h"
#include "support/memory_files.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using enum LanguageCode;
using enum Generation;

DecoderProfile profileFor(int typeCode, Generation generation, FirmwareDate date = {}, int subLevel = 0)
{
    DecoderProfile profile;
    profile.typeCode = typeCode;
    profile.model = modelOfTypeCode(typeCode);
    profile.generation = generation;
    profile.firmwareDate = date;
    profile.subLevel = subLevel;
    return profile;
}

TEST(ExpertChoiceTest, FileOfEachDecoder)
{
    const std::tuple<DecoderProfile, LanguageCode, const char*> cases[] = {
        {profileFor(0, until2008Last), german, "CV_exp.txt"},
        {profileFor(0, from2009), german, "CV_exp_v1.txt"},
        {profileFor(1, standard), french, "CV_exp_v1_5.txt"},
        {profileFor(2, standard), german, "CV_exp_v1_6.txt"},
        {profileFor(4, undated), german, "CV_exp_Mai10_4.txt"},
        {profileFor(5, may2010), german, "CV_exp_Mai10_5.txt"},
        {profileFor(6, november2012), spanish, "CV_exp_November12_6.txt"},
        {profileFor(7, standard), german, "CV_exp_kv07.txt"},
        {profileFor(8, f3), english, "CV_exp_kv08_F3_EN.txt"},
        {profileFor(7, f4), dutch, "CV_exp_kv07_F4_NL.txt"},
        {profileFor(7, f5), dutch, "CV_exp_kv07_F5_NL.txt"},
        {profileFor(7, v1), french, "CV_exp_kv07_V1_FR.txt"},
        {profileFor(7, tacho), spanish, "CV_exp_kv07Tacho.txt"},
        {profileFor(8, laneControl), english, "CV_exp_kv08LCen.txt"},
        {profileFor(57, standard), english, "CV_exp_an07_EN.txt"},
        {profileFor(57, v1), spanish, "CV_exp_an07_V1_ES.txt"},
        {profileFor(80, standard), german, "CV_exp_receiver.txt"},
        {profileFor(81, standard), dutch, "CV_exp_receiver_nl.txt"},
        {profileFor(80, standard, {2015, 8, 31}), german, "CV_exp_Receiver.txt"},
        {profileFor(80, standard, {2015, 8, 31}), english, "CV_exp_Receiver_en.txt"},
        {profileFor(80, standard, {2015, 8, 31}), dutch, "CV_exp_Receiver.txt_nl.txt"},
        {profileFor(80, standard, {2015, 9, 1}), french, "CV_exp_Receiver_010915_fr.txt"},
        {profileFor(80, standard, {2016, 2, 24}), spanish, "CV_exp_Receiver_240216_es.txt"},
        {profileFor(80, standard, {2016, 2, 24}, 1), english, "CV_exp_Receiver_240216_en_neu.txt"},
        {profileFor(80, standard, {2022, 2, 26}), dutch, "CV_exp_Receiver_240216_nl.txt"},
        {profileFor(80, standard, {2022, 2, 27}, 1), german, "CV_exp_Receiver_270222.txt"},
        {profileFor(80, standard, {2023, 1, 1}), dutch, "CV_exp_Receiver_270222_nl"},
    };
    for (const auto& [profile, language, file] : cases)
        EXPECT_EQ(expertFileName(profile, language), file);
}

TEST(ExpertChoiceTest, AnOfflineListFollowsFirmwareV1OfTheDecoderOnTheBench)
{
    // Item of the list; type code and generation of the decoder on the bench.
    const std::tuple<std::string_view, int, Generation, const char*> cases[] = {
        {"mnu_kv07", 7, v1, "CV_exp_kv07_V1_EN.txt"},     {"mnu_KV08", 8, v1, "CV_exp_kv08_V1_EN.txt"},
        {"mnu_KV08", 7, v1, "CV_exp_kv08_EN.txt"},        {"mnu_kv07", 7, f3, "CV_exp_kv07_EN.txt"},
        {"mnu_KV07_Bus", 7, v1, "CV_exp_kv07_EN.txt"},    {"mnu_KV05", 57, v1, "CV_exp_v1_5.txt"},
        {"mnu_KV06_Bus", 0, from2009, "CV_exp_v1_6.txt"}, {"mnu_KV08_FW", 0, from2009, "CV_exp_kv08_EN.txt"},
        {"mnu_KV04_Bus_09", 0, from2009, "CV_exp.txt"},   {"mnu_KV04_neu", 0, from2009, "CV_exp_v1.txt"},
    };
    for (const auto& [item, typeCode, generation, file] : cases) {
        const OfflineList& list = *offlineListOf(item);
        const auto profile = offlineProfile(list, profileFor(typeCode, generation));
        EXPECT_EQ(offlineExpertFileName(list, profile, english), file) << item;
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
    EXPECT_EQ(file->entries.at(57).name + u": " + file->entries.at(57).knowledge,
              u"Bit 7: What happens\r\ninside");
    EXPECT_EQ(file->entries.at(3).name + u": " + file->entries.at(3).knowledge, u"Three: ");
    EXPECT_EQ(file->faultyLines, (std::vector<int>{4, 5, 6}));
    EXPECT_FALSE(parseExpertFile(test::bytesOf("")));
    EXPECT_FALSE(parseExpertFile(test::bytesOf("only a header\r\n")));
}

TEST(ExpertFileTest, ALineSaysTheFirstSentenceOfWhatIsKnown)
{
    const Text longText(30, u'a');
    const Text half(37, u'a');
    const std::pair<Text, Text> cases[] = {
        {u"", u"name"},
        {u"  ", u"name"},
        {u"Nur ein Satz", u"Nur ein Satz"},
        {u"Das gilt. Sonst nicht.", u"Das gilt."},
        {u"Werte z. B. 10 oder 3.5 sind gut. Mehr nicht.", u"Werte z. B. 10 oder 3.5 sind gut."},
        {u"Weniger als 32. Mehr nicht.", u"Weniger als 32."},
        {u"Etwa 0,3 s. Mehr nicht.", u"Etwa 0,3 s."},
        {u"Was dann?\r\nDas.", u"Was dann?"},
        {half + u' ' + half, half + u' ' + half},
        {half + u' ' + half + u'b', half + u"\u2026"},
        {longText + u' ' + longText + u' ' + longText, longText + u' ' + longText + u"\u2026"},
    };
    for (const auto& [knowledge, line] : cases)
        EXPECT_EQ(expertLine({u"name", knowledge}), line) << utf8FromText(knowledge);
}

} // namespace
} // namespace karvo
