#include "cvdata/description_choice.h"

#include "cvdata/language_suffix.h"

#include <algorithm>
#include <iterator>

namespace karvo
{

namespace
{

using namespace std::string_literals;

std::string withSuffix(const std::string& stem, SuffixForm form, LanguageCode language)
{
    return stem + languageSuffix(form, language) + ".txt";
}

std::string datedFileName(const DecoderProfile& profile)
{
    const auto code = std::to_string(numberOf(profile.typeCode));
    switch (profile.generation) {
    case Generation::november2012:
        return "CV_Standart_November12_" + code + ".txt";
    case Generation::may2010:
        return "CV_Standart_Mai10_" + code + ".txt";
    default:
        return "CV_Standart172_Mai10_" + code + ".txt";
    }
}

std::string newerFileName(const DecoderProfile& profile, LanguageCode language)
{
    const std::string stem = profile.model == Model::kv07 ? "CV_Standart_kv07" : "CV_Standart_kv08";
    switch (profile.generation) {
    case Generation::laneControl:
        return withSuffix(stem + "LC", SuffixForm::attached, language);
    case Generation::tacho:
        return stem + "Tacho.txt";
    case Generation::v1:
        return withSuffix(stem + "_V1", SuffixForm::attached, language);
    case Generation::f3:
        return withSuffix(stem + "_F3", SuffixForm::attached, language);
    case Generation::f4:
        return withSuffix(stem + "_F4", SuffixForm::attached, language);
    case Generation::f5:
        return withSuffix(stem + "_F5", SuffixForm::attached, language);
    default:
        return withSuffix(stem, SuffixForm::attached, language);
    }
}

std::string kv04FileName(Generation generation)
{
    switch (generation) {
    case Generation::until2008First:
        return "CV_Standart180.txt";
    case Generation::until2008Second:
        return "CV_Standart180_v1.txt";
    default:
        return "CV_Standart172.txt";
    }
}

constexpr OfflineList offlineTable[] = {
    {"mnu_kv07", Model::kv07, Generation::standard, ""},
    {"mnu_KV08", Model::kv08, Generation::standard, ""},
    {"mnu_KV06", Model::kv06, Generation::standard, ""},
    {"mnu_KV05", Model::kv05, Generation::standard, ""},
    {"mnu_KV04_neu", Model::kv04, Generation::from2009, ""},
    {"mnu_KV04", Model::kv04, Generation::until2008First, ""},
    {"mnu_karvo_xt_list", Model::xtModule, Generation::standard, ""},
    {"mnu_KV07_Bus", Model::kv07, Generation::standard, "CV_KV07_Bus_V"},
    {"mnu_KV07_FW", Model::kv07, Generation::standard, "CV_KV07_FW_V"},
    {"mnu_KV08_Bus", Model::kv08, Generation::standard, "CV_KV08_Bus_V"},
    {"mnu_KV08_FW", Model::kv08, Generation::standard, "CV_KV08_FW_V"},
    {"mnu_KV06_Bus", Model::kv06, Generation::standard, "CV_KV06_Bus_V"},
    {"mnu_KV06_FW", Model::kv06, Generation::standard, "CV_KV06_FW_V"},
    {"mnu_KV05_Bus", Model::kv05, Generation::standard, "CV_KV05_Bus_V"},
    {"mnu_KV05_FW", Model::kv05, Generation::standard, "CV_KV05_FW_V"},
    {"mnu_KV04_Bus_09", Model::kv04, Generation::from2009, "CV_KV04_Bus_V"},
    {"mnu_KV04_FW_09", Model::kv04, Generation::from2009, "CV_KV04_FW_V"},
    {"mnu_KV04_Bus_08", Model::kv04, Generation::until2008First, "CV_KV04_Bus_V"},
    {"mnu_KV04_FW_08", Model::kv04, Generation::until2008First, "CV_KV04_FW_V"},
};

TypeCode offlineTypeCode(Model model)
{
    switch (model) {
    case Model::kv04:
        return TypeCode::kv04;
    case Model::kv05:
        return TypeCode::kv05;
    case Model::kv06:
        return TypeCode::kv06;
    case Model::kv07:
        return TypeCode::kv07;
    case Model::kv08:
        return TypeCode::kv08;
    case Model::trailer:
        return TypeCode::trailer;
    case Model::receiver:
    case Model::xtModule:
        break;
    }
    return TypeCode::receiver;
}

} // namespace

std::string descriptionFileName(const DecoderProfile& profile, LanguageCode language)
{
    switch (profile.typeCode) {
    case TypeCode::kv04:
        return kv04FileName(profile.generation);
    case TypeCode::kv05:
        return "CV_Standart172_v1_5.txt";
    case TypeCode::kv06:
        return "CV_Standart172_v1_6.txt";
    case TypeCode::kv04From2010:
    case TypeCode::kv05From2010:
    case TypeCode::kv06From2010:
        return datedFileName(profile);
    case TypeCode::kv07:
    case TypeCode::kv08:
        return newerFileName(profile, language);
    case TypeCode::trailer:
        return withSuffix(profile.generation == Generation::v1 ? "CV_Standart_an07_V1" : "CV_Standart_an07",
                          SuffixForm::attached, language);
    default:
        return withSuffix("CV_Standart_receiver", SuffixForm::small, language);
    }
}

std::string textCompanionName(std::string_view fileName, LanguageCode language)
{
    constexpr std::string_view withLanguageForms[] = {
        "CV_Standart_kv0", "CV_Standart_an07", "CV_Standart_receiver", "CV_exp_kv0",
        "CV_exp_an07",     "CV_exp_receiver",  "CV_exp_Receiver"};
    const bool hasLanguageForms =
        std::any_of(std::begin(withLanguageForms), std::end(withLanguageForms),
                    [&](std::string_view start) { return fileName.starts_with(start); });
    const bool germanOnly = fileName.ends_with("Tacho.txt");
    if (language == LanguageCode::german || (hasLanguageForms && !germanOnly))
        return {};
    const auto stem = fileName.substr(0, fileName.rfind('.'));
    return withSuffix(std::string(stem), SuffixForm::capital, language);
}

const OfflineList* offlineListOf(std::string_view menuItem)
{
    const auto* const found =
        std::find_if(std::begin(offlineTable), std::end(offlineTable),
                     [&](const OfflineList& list) { return list.menuItem == menuItem; });
    return found == std::end(offlineTable) ? nullptr : found;
}

std::span<const OfflineList> offlineLists()
{
    return offlineTable;
}

std::string offlineDescriptionFileName(const OfflineList& list, int variant, LanguageCode language)
{
    if (list.variantStem.empty())
        return descriptionFileName(offlineProfile(list), language);
    if (variant < 0 || variant >= automaticVariants)
        return {};
    const bool dated = list.model == Model::kv04;
    const std::string date = list.generation == Generation::from2009 ? "_09" : "_08";
    return std::string(list.variantStem) + std::to_string(variant + 1) + (dated ? date : "") + ".txt";
}

DecoderProfile offlineProfile(const OfflineList& list)
{
    DecoderProfile profile;
    profile.typeCode = offlineTypeCode(list.model);
    profile.model = list.model;
    profile.generation = list.generation;
    profile.processor = usualProcessor(list.model);
    return profile;
}

DecoderProfile offlineProfile(const OfflineList& list, const DecoderProfile& onBench)
{
    DecoderProfile profile = offlineProfile(list);
    const bool hasFirmwareV1 = list.model == Model::kv07 || list.model == Model::kv08;
    if (hasFirmwareV1 && list.variantStem.empty() && onBench.model == list.model &&
        onBench.generation == Generation::v1)
        profile.generation = Generation::v1;
    return profile;
}

} // namespace karvo
