#include "cvdata/description_choice.h"

#include <gtest/gtest.h>

namespace karvo
{

TEST(DescriptionChoiceTest, OnlyAFileOfAllLanguagesHasACompanion)
{
    using enum LanguageCode;
    EXPECT_EQ(textCompanionName("CV_Standart180.txt", english), "CV_Standart180_EN.txt");
    EXPECT_EQ(textCompanionName("CV_Standart172_Mai10_4.txt", dutch), "CV_Standart172_Mai10_4_NL.txt");
    EXPECT_EQ(textCompanionName("CV_Standart_kv07Tacho.txt", french), "CV_Standart_kv07Tacho_FR.txt");
    EXPECT_EQ(textCompanionName("CV_Standart180.txt", german), "");
    EXPECT_EQ(textCompanionName("CV_Standart_kv07en.txt", english), "");
    EXPECT_EQ(textCompanionName("CV_Standart_an07_V1es.txt", spanish), "");
    EXPECT_EQ(textCompanionName("CV_Standart_receiver_fr.txt", french), "");
}

TEST(OfflineListTest, ItemsAndVariantsChooseTheirFiles)
{
    const std::tuple<std::string_view, int, const char*> cases[] = {
        {"mnu_KV04", 0, "CV_Standart180.txt"},
        {"mnu_KV04_neu", 0, "CV_Standart172.txt"},
        {"mnu_kv07", 3, "CV_Standart_kv07es.txt"},
        {"mnu_KV05", 0, "CV_Standart172_v1_5.txt"},
        {"mnu_karvo_xt_list", 0, "CV_Standart_receiver_es.txt"},
        {"mnu_KV07_Bus", 0, "CV_KV07_Bus_V1.txt"},
        {"mnu_KV06_FW", 3, "CV_KV06_FW_V4.txt"},
        {"mnu_KV04_Bus_09", 1, "CV_KV04_Bus_V2_09.txt"},
        {"mnu_KV04_FW_08", 2, "CV_KV04_FW_V3_08.txt"},
        {"mnu_KV04_FW_08", 4, ""},
        {"mnu_KV04_FW_08", -1, ""}};
    for (const auto& [item, variant, file] : cases)
        EXPECT_EQ(offlineDescriptionFileName(*offlineListOf(item), variant, LanguageCode::spanish), file);
    EXPECT_EQ(offlineListOf("mnu_open"), nullptr);
    EXPECT_EQ(modelCode(offlineListOf("mnu_KV06_FW")->model), u"06");
}

} // namespace karvo
