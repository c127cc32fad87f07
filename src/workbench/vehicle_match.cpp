#include "workbench/vehicle_match.h"

#include "cvdata/decoder_profile.h"
#include "cvdata/description_choice.h"
#include "cvdata/list_header.h"

namespace karvo
{

namespace
{

Model modelOnLine(Model model)
{
    return model == Model::xtModule ? Model::receiver : model;
}

// A list file tells the generation by the description that it was made with, which two generations may share.
bool isOfOtherGeneration(const CvSet& set, const DecoderProfile& vehicle)
{
    if (!set.isOffline())
        return set.profile.generation != vehicle.generation;
    const auto header = set.isFromFile() ? modelOfHeader(set.descriptionLines[1]) : std::nullopt;
    return header && header->namesGeneration &&
           descriptionFileName(set.profile, LanguageCode::german) !=
               descriptionFileName(vehicle, LanguageCode::german);
}

std::optional<Processor> processorOf(const CvSet& set)
{
    if (set.isOffline())
        return set.fileProcessor;
    return set.profile.processorIsRead ? std::optional(set.profile.processor) : std::nullopt;
}

bool isOfOtherProcessor(const CvSet& set, const DecoderProfile& vehicle)
{
    const auto processor = processorOf(set);
    return processor && vehicle.processorIsRead && *processor != vehicle.processor;
}

bool isAccepted(const CvSet& set, const DecoderProfile& vehicle)
{
    return set.acceptedVehicle && set.acceptedVehicle->generation == vehicle.generation &&
           set.acceptedVehicle->processor == vehicle.processor;
}

Text generationName(Generation generation, const LanguageTables& texts)
{
    switch (generation) {
    case Generation::v1:
        return u"V1";
    case Generation::f3:
        return u"F3";
    case Generation::f4:
        return u"F4";
    case Generation::f5:
        return u"F5";
    case Generation::tacho:
        return u"Tacho";
    case Generation::laneControl:
        return u"LaneControl";
    case Generation::from2009:
        return texts.caption(Caption::buildFrom2009);
    case Generation::undated:
        return texts.caption(Caption::buildUndated);
    case Generation::may2010:
        return texts.caption(Caption::buildMay2010);
    case Generation::november2012:
        return texts.caption(Caption::buildNovember2012);
    default:
        return texts.caption(Caption::buildStandard);
    }
}

// "KV07 F5, Firmware 5"; the older KV04 has its generation in its name.
Text buildText(const DecoderProfile& profile, const LanguageTables& texts)
{
    Text text = typeText(profile, texts);
    if (!profile.isOlderKv04())
        text += joined({u" ", generationName(profile.generation, texts)});
    if (profile.firmwareVersion != 0)
        text +=
            joined({u", ", texts.caption(Caption::firmware), u" ", textFromNumber(profile.firmwareVersion)});
    return text;
}

} // namespace

bool isOfModel(const CvSet& set, Model model)
{
    return set.isEmpty() || modelOnLine(set.profile.model) == model;
}

std::optional<Text> otherBuildQuestion(const CvSet& set, const DecoderProfile& vehicle,
                                       const LanguageTables& texts)
{
    if (set.isEmpty() || isAccepted(set, vehicle))
        return std::nullopt;
    Text lines;
    const auto add = [&](Message message, const Text& ofList, const Text& ofVehicle) {
        lines += Text(lineBreak) + texts.message(message, {ofList, ofVehicle});
    };
    if (isOfOtherGeneration(set, vehicle))
        add(Message::otherGeneration, buildText(set.profile, texts), buildText(vehicle, texts));
    if (isOfOtherProcessor(set, vehicle))
        add(Message::otherProcessor, Text(processorName(*processorOf(set))),
            Text(processorName(vehicle.processor)));
    if (lines.empty())
        return std::nullopt;
    return texts.message(Message::listOfOtherBuild) + lines + Text(lineBreak) +
           texts.message(Message::writeToOtherBuild);
}

} // namespace karvo
