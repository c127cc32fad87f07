#include "cvdata/decoder_profile.h"

#include <optional>
#include <tuple>

namespace karvo
{

namespace
{

// Where a decoder keeps what it is; all within the first 512 CVs, which every block has.
constexpr std::size_t firmwareCv = 7;
constexpr std::size_t generationCv = 73; // speed step 25 wherever there is a speed table
constexpr std::size_t subLevelCv = 497;
constexpr std::size_t buildCv = 498;
constexpr std::size_t dayCv = 499;
constexpr std::size_t monthCv = 500;
constexpr std::size_t yearCv = 501;
constexpr std::size_t signatureCv = 509;

constexpr int laneControlBuild = 1;
constexpr int tachoBuild = 2;
constexpr int lowestSpeedStep = 4; // a value below it at CV73 is no speed step

FirmwareDate dateOf(const CvImage& image)
{
    if (image[dayCv] == 0 && image[monthCv] == 0 && image[yearCv] == 0)
        return {};
    return {2000 + image[yearCv], image[monthCv], image[dayCv]};
}

bool isFrom(const FirmwareDate& date, int year, int month)
{
    return std::tie(date.year, date.month) >= std::tie(year, month);
}

std::optional<Processor> processorIn(const CvImage& image)
{
    if (image[signatureCv] == 0x1E && image[signatureCv + 1] == 0x94 && image[signatureCv + 2] == 0x06)
        return Processor::atmega168;
    if (image[signatureCv] == 0x1E && image[signatureCv + 1] == 0x95 &&
        (image[signatureCv + 2] == 0x0F || image[signatureCv + 2] == 0x14))
        return Processor::atmega328;
    return std::nullopt;
}

Generation kv04Generation(TextView identification, int firmware)
{
    if (identification != u"04")
        return Generation::from2009;
    if (firmware <= 1)
        return Generation::until2008First;
    return firmware == 2 ? Generation::until2008Second : Generation::until2008Last;
}

Generation datedGeneration(TypeCode typeCode, const FirmwareDate& date)
{
    if (typeCode != TypeCode::kv04From2010 && isFrom(date, 2012, 11))
        return Generation::november2012;
    return isFrom(date, 2010, 5) ? Generation::may2010 : Generation::undated;
}

Generation newerGeneration(const CvImage& image)
{
    if (image[buildCv] == laneControlBuild)
        return Generation::laneControl;
    if (image[buildCv] == tachoBuild)
        return Generation::tacho;
    if (image[generationCv] < lowestSpeedStep)
        return Generation::v1;
    const int firmware = image[firmwareCv];
    if (firmware <= 3)
        return Generation::f3;
    if (firmware == 4)
        return Generation::f4;
    return firmware == 5 ? Generation::f5 : Generation::standard;
}

Generation generationOf(TypeCode typeCode, TextView identification, const CvImage& image)
{
    switch (typeCode) {
    case TypeCode::kv04:
        return kv04Generation(identification, image[firmwareCv]);
    case TypeCode::kv04From2010:
    case TypeCode::kv05From2010:
    case TypeCode::kv06From2010:
        return datedGeneration(typeCode, dateOf(image));
    case TypeCode::kv07:
    case TypeCode::kv08:
        return newerGeneration(image);
    case TypeCode::trailer:
        return image[firmwareCv] <= 1 ? Generation::v1 : Generation::standard;
    default:
        return Generation::standard;
    }
}

} // namespace

bool DecoderProfile::isOlderKv04() const
{
    return generation == Generation::until2008First || generation == Generation::until2008Second ||
           generation == Generation::until2008Last;
}

Model modelOfTypeCode(TypeCode typeCode)
{
    switch (typeCode) {
    case TypeCode::kv04:
    case TypeCode::kv04From2010:
        return Model::kv04;
    case TypeCode::kv05:
    case TypeCode::kv05From2010:
        return Model::kv05;
    case TypeCode::kv06:
    case TypeCode::kv06From2010:
        return Model::kv06;
    case TypeCode::kv07:
        return Model::kv07;
    case TypeCode::kv08:
        return Model::kv08;
    case TypeCode::trailer:
        return Model::trailer;
    default:
        return Model::receiver;
    }
}

Processor usualProcessor(Model model)
{
    const bool small = model == Model::kv04 || model == Model::kv05 || model == Model::kv06;
    return small ? Processor::atmega168 : Processor::atmega328;
}

DecoderProfile profileOf(TypeCode typeCode, TextView identification, const CvImage& image,
                         const ReceiverValues& receiver)
{
    DecoderProfile profile;
    profile.typeCode = typeCode;
    profile.model = modelOfTypeCode(typeCode);
    profile.generation = generationOf(typeCode, identification, image);
    const auto processor = processorIn(image);
    profile.processor = processor.value_or(usualProcessor(profile.model));
    profile.processorIsRead = processor.has_value();
    profile.firmwareVersion = image[firmwareCv];
    profile.subLevel = image[subLevelCv];
    profile.firmwareLevel = receiver.firmwareLevel;
    profile.firmwareDate = dateOf(image);
    return profile;
}

TextView modelCode(Model model)
{
    switch (model) {
    case Model::kv04:
        return u"04";
    case Model::kv05:
        return u"05";
    case Model::kv06:
        return u"06";
    case Model::kv07:
        return u"07";
    case Model::kv08:
        return u"08";
    case Model::trailer:
    case Model::receiver:
    case Model::xtModule:
        break;
    }
    return {};
}

TextView modelName(Model model)
{
    constexpr TextView names[] = {u"KV04", u"KV05", u"KV06", u"KV07", u"KV08", u"AN07", u"KV-R", u"KV-XT"};
    return names[static_cast<std::size_t>(model)];
}

Text typeText(const DecoderProfile& profile, const LanguageTables& texts)
{
    return profile.isOlderKv04() ? texts.message(Message::olderKv04) : Text(modelName(profile.model));
}

TextView processorName(Processor processor)
{
    return processor == Processor::atmega168 ? u"ATmega168" : u"ATmega328";
}

} // namespace karvo
