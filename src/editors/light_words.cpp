// What the lights do, in words.
#include "editors/vehicle_lights.h"

#include <cmath>

namespace karvo
{

namespace
{

Text percentOf(double level)
{
    return textFromNumber(std::lround(level * 100));
}

Text doingText(const PictureWords& words, const LightCourse& course, const LightCause& cause)
{
    const auto& pulses = cause.rhythm.pulses;
    const Text percent = percentOf(course.brightness * cause.share);
    const auto duration = [&](int ms) { return durationText(ms, words.decimalComma); };
    switch (cause.rhythm.kind) {
    case Rhythm::Kind::steady:
        return words.texts.caption(Caption::lightSteady, {percent});
    case Rhythm::Kind::wave:
        return words.texts.caption(Caption::lightRotates, {duration(periodOf(cause.rhythm)), percent});
    default:
        return words.texts.caption(pulses.size() > 2 ? Caption::lightFlashesTwice : Caption::lightFlashes,
                                   {duration(pulses.front()), duration(pulses.back()), percent});
    }
}

} // namespace

Text lightName(const PictureWords& words, Light light, bool trailer)
{
    if (trailer && light == Light::headlight)
        return words.texts.caption(Caption::lightWithDrivingLight);
    const auto first = static_cast<unsigned>(Caption::lightHeadlight);
    return words.texts.caption(static_cast<Caption>(first + static_cast<unsigned>(light)));
}

bool isSchematic(const LightCourse& course)
{
    const auto cause = shownCause(course);
    return cause && (cause->rhythm.schematic || cause->share != 1 || course.fadeSchematic);
}

Text lightText(const PictureWords& words, const LightCourse& course)
{
    const LanguageTables& texts = words.texts;
    if (course.block == LightCourse::Block::notFitted)
        return texts.caption(Caption::lightNotFitted);
    if (course.block == LightCourse::Block::batteryLow)
        return texts.caption(Caption::lightBatteryLow);
    const auto cause = shownCause(course);
    if (!cause || course.brightness == 0)
        return texts.caption(Caption::lightDark);
    Text text = doingText(words, course, *cause);
    if (course.fadeTime > 0)
        text = joined({text, u", ", texts.caption(Caption::lightFades)});
    const auto end = cause->until ? cause->until : course.goesOut;
    if (end)
        text = joined(
            {text, u", ", texts.caption(Caption::lightGoesOut, {durationText(*end, words.decimalComma)})});
    if (isSchematic(course))
        text = joined({text, u" (", texts.caption(Caption::schematicMark), u")"});
    return text;
}

} // namespace karvo
