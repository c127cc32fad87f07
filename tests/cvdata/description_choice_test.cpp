#include "cvdata/description_choice.h"

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

std::string fileOf(int typeCode, Model model, Generation generation, LanguageCode language)
{
    DecoderProfile profile;
    profile.typeCode = typeCode;
    profile.model = model;
    profile.generation = generation;
    return descriptionFileName(profile, language);
}

TEST(DescriptionChoiceTest, FileOfEachDecoderAndLanguage)
{
    using enum Generation;
    struct Case {
        int typeCode;
        Model model;
        Generation generation;
        LanguageCode language;
        const char* file;
    };
    const Case cases[] = {
        {0, Model::kv04, until2008First, en, "CV_Standart180.txt"},
        {0, Model::kv04, until2008Second, fr, "CV_Standart180_v1.txt"},
        {0, Model::kv04, until2008Last, de, "CV_Standart172.txt"},
        {0, Model::kv04, from2009, nl, "CV_Standart172.txt"},
        {1, Model::kv05, standard, es, "CV_Standart172_v1_5.txt"},
        {2, Model::kv06, standard, de, "CV_Standart172_v1_6.txt"},
        {4, Model::kv04, undated, en, "CV_Standart172_Mai10_4.txt"},
        {5, Model::kv05, undated, fr, "CV_Standart172_Mai10_5.txt"},
        {6, Model::kv06, undated, nl, "CV_Standart172_Mai10_6.txt"},
        {4, Model::kv04, may2010, de, "CV_Standart_Mai10_4.txt"},
        {6, Model::kv06, november2012, en, "CV_Standart_November12_6.txt"},
        {7, Model::kv07, standard, de, "CV_Standart_kv07.txt"},
        {7, Model::kv07, standard, nl, "CV_Standart_kv07nl.txt"},
        {7, Model::kv07, standard, en, "CV_Standart_kv07en.txt"},
        {7, Model::kv07, standard, es, "CV_Standart_kv07es.txt"},
        {7, Model::kv07, standard, fr, "CV_Standart_kv07fr.txt"},
        {8, Model::kv08, standard, fr, "CV_Standart_kv08fr.txt"},
        {7, Model::kv07, f3, de, "CV_Standart_kv07_F3.txt"},
        {8, Model::kv08, f5, nl, "CV_Standart_kv08_F5nl.txt"},
        {7, Model::kv07, v1, en, "CV_Standart_kv07_V1en.txt"},
        {7, Model::kv07, tacho, en, "CV_Standart_kv07Tacho.txt"},
        {8, Model::kv08, laneControl, es, "CV_Standart_kv08LCes.txt"},
        {57, Model::trailer, standard, en, "CV_Standart_an07en.txt"},
        {57, Model::trailer, v1, fr, "CV_Standart_an07_V1fr.txt"},
        {80, Model::receiver, standard, de, "CV_Standart_receiver.txt"},
        {81, Model::receiver, standard, nl, "CV_Standart_receiver_nl.txt"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(fileOf(c.typeCode, c.model, c.generation, c.language), c.file);
}

TEST(DescriptionChoiceTest, OnlyAFileOfAllLanguagesHasACompanion)
{
    EXPECT_EQ(textCompanionName("CV_Standart180.txt", en), "CV_Standart180_EN.txt");
    EXPECT_EQ(textCompanionName("CV_Standart172_Mai10_4.txt", nl), "CV_Standart172_Mai10_4_NL.txt");
    EXPECT_EQ(textCompanionName("CV_Standart_kv07Tacho.txt", fr), "CV_Standart_kv07Tacho_FR.txt");
    EXPECT_EQ(textCompanionName("CV_Standart180.txt", de), "");
    EXPECT_EQ(textCompanionName("CV_Standart_kv07en.txt", en), "");
    EXPECT_EQ(textCompanionName("CV_Standart_an07_V1es.txt", es), "");
    EXPECT_EQ(textCompanionName("CV_Standart_receiver_fr.txt", fr), "");
}

TEST(OfflineListTest, ItemsAndVariantsChooseTheirFiles)
{
    const auto file = [](std::string_view item, int variant, LanguageCode language) {
        const auto* list = offlineListOf(item);
        return list == nullptr ? std::string("unknown")
                               : offlineDescriptionFileName(*list, variant, language);
    };
    EXPECT_EQ(file("mnu_KV04", 0, en), "CV_Standart180.txt");
    EXPECT_EQ(file("mnu_KV04_neu", 0, de), "CV_Standart172.txt");
    EXPECT_EQ(file("mnu_kv07", 3, es), "CV_Standart_kv07es.txt");
    EXPECT_EQ(file("mnu_KV05", 0, fr), "CV_Standart172_v1_5.txt");
    EXPECT_EQ(file("mnu_karvo_xt_list", 0, nl), "CV_Standart_receiver_nl.txt");
    EXPECT_EQ(file("mnu_KV07_Bus", 0, en), "CV_KV07_Bus_V1.txt");
    EXPECT_EQ(file("mnu_KV06_FW", 3, de), "CV_KV06_FW_V4.txt");
    EXPECT_EQ(file("mnu_KV04_Bus_09", 1, de), "CV_KV04_Bus_V2_09.txt");
    EXPECT_EQ(file("mnu_KV04_FW_08", 2, de), "CV_KV04_FW_V3_08.txt");
    EXPECT_EQ(file("mnu_KV04_FW_08", 4, de), "");
    EXPECT_EQ(file("mnu_KV04_FW_08", -1, de), "");
    EXPECT_EQ(file("mnu_open", 0, de), "unknown");
    EXPECT_EQ(modelCode(offlineListOf("mnu_KV06_FW")->model), u"06");
}

} // namespace
} // namespace karvo
