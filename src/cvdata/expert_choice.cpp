#include "cvdata/expert_choice.h"

#include "cvdata/language_suffix.h"
#include "cvdata/receiver_releases.h"

namespace karvo
{

namespace
{

std::string newerExpertFileName(const DecoderProfile& profile, LanguageCode language)
{
    const std::string stem = profile.model == Model::kv07 ? "CV_exp_kv07" : "CV_exp_kv08";
    const std::string suffix = languageSuffix(SuffixForm::capital, language) + ".txt";
    switch (profile.generation) {
    case Generation::laneControl:
        return stem + "LC" + languageSuffix(SuffixForm::attached, language) + ".txt";
    case Generation::tacho:
        return stem + "Tacho.txt";
    case Generation::v1:
        return stem + "_V1" + suffix;
    case Generation::f3:
        return stem + "_F3" + suffix;
    case Generation::f4:
        return stem + "_F4" + suffix;
    case Generation::f5:
        return stem + "_F5" + suffix;
    default:
        return stem + suffix;
    }
}

// Two names are odd, and installed under these very names.
std::string receiverExpertFileName(const DecoderProfile& profile, LanguageCode language)
{
    const std::string suffix = languageSuffix(SuffixForm::small, language);
    const bool dutch = language == LanguageCode::dutch;
    const auto release = releaseOf(profile);
    if (!release)
        return "CV_exp_receiver" + suffix + ".txt";
    switch (*release) {
    case ReceiverRelease::february2022:
        return "CV_exp_Receiver_270222" + suffix + (dutch ? "" : ".txt");
    case ReceiverRelease::february2016NewBoard:
        return "CV_exp_Receiver_240216" + suffix + "_neu.txt";
    case ReceiverRelease::february2016:
        return "CV_exp_Receiver_240216" + suffix + ".txt";
    case ReceiverRelease::september2015:
        return "CV_exp_Receiver_010915" + suffix + ".txt";
    case ReceiverRelease::earlier:
        break;
    }
    return dutch ? "CV_exp_Receiver.txt_nl.txt" : "CV_exp_Receiver" + suffix + ".txt";
}

std::string datedExpertFileName(const DecoderProfile& profile)
{
    const auto code = std::to_string(numberOf(profile.typeCode));
    const bool november = profile.generation == Generation::november2012;
    return (november ? "CV_exp_November12_" : "CV_exp_Mai10_") + code + ".txt";
}

} // namespace

std::string expertFileName(const DecoderProfile& profile, LanguageCode language)
{
    switch (profile.typeCode) {
    case TypeCode::kv04:
        return profile.generation == Generation::from2009 ? "CV_exp_v1.txt" : "CV_exp.txt";
    case TypeCode::kv05:
        return "CV_exp_v1_5.txt";
    case TypeCode::kv06:
        return "CV_exp_v1_6.txt";
    case TypeCode::kv04From2010:
    case TypeCode::kv05From2010:
    case TypeCode::kv06From2010:
        return datedExpertFileName(profile);
    case TypeCode::kv07:
    case TypeCode::kv08:
        return newerExpertFileName(profile, language);
    case TypeCode::trailer: {
        const std::string stem = profile.generation == Generation::v1 ? "CV_exp_an07_V1" : "CV_exp_an07";
        return stem + languageSuffix(SuffixForm::capital, language) + ".txt";
    }
    default:
        return receiverExpertFileName(profile, language);
    }
}

std::string offlineExpertFileName(const OfflineList& list, const DecoderProfile& profile,
                                  LanguageCode language)
{
    // The bus and fire-engine lists of both KV04 generations share the older one's expert file.
    if (list.model == Model::kv04 && !list.variantStem.empty())
        return "CV_exp.txt";
    return expertFileName(profile, language);
}

} // namespace karvo
