#include "editors/receiver_lamps.h"

#include <algorithm>
#include <cmath>

namespace karvo
{

namespace
{

enum Function { nothing, steady, blinking, flashing, runningLight, flicker, trafficLight };

constexpr int outputs = 8;

Rhythm blinkingRhythm(const PictureValues& values, int output)
{
    const int phase = values(output <= 4 ? 90 : 91).value_or(0) * 20;
    return phase > 0 ? pulsing({phase, phase}) : steadyRhythm();
}

// The turn of one of `count` lamps.
Rhythm turnOf(int place, int count)
{
    Rhythm rhythm = pulsing({schematic::runningStep, schematic::runningStep * std::max(count - 1, 1)});
    rhythm.delay = place * schematic::runningStep;
    return rhythm;
}

// Red, red with yellow, green, yellow: of lamps that hang in this order.
Rhythm trafficRhythm(ReceiverLamp::Glass glass)
{
    constexpr int go = schematic::trafficGo;
    constexpr int change = schematic::trafficChange;
    Rhythm rhythm = pulsing({go + change, go + change}); // red
    if (glass == ReceiverLamp::Glass::yellow)
        rhythm = {Rhythm::Kind::pulses, {change, go}, go};
    else if (glass == ReceiverLamp::Glass::green)
        rhythm = {Rhythm::Kind::pulses, {go, go + 2 * change}, go + change};
    return rhythm;
}

ReceiverLamp::Glass glassOf(int place)
{
    constexpr ReceiverLamp::Glass glasses[] = {ReceiverLamp::Glass::red, ReceiverLamp::Glass::yellow,
                                               ReceiverLamp::Glass::green};
    return glasses[place % 3];
}

Rhythm openRhythm(int function, int place, int count, int output)
{
    Rhythm rhythm;
    if (function == flashing)
        rhythm = pulsing({schematic::flashing.begin(), schematic::flashing.end()});
    else if (function == runningLight)
        rhythm = turnOf(place, count);
    else if (function == trafficLight)
        rhythm = trafficRhythm(glassOf(place));
    else if (function == flicker) {
        rhythm = pulsing({schematic::flicker.begin(), schematic::flicker.end()});
        rhythm.delay = output * schematic::flickerShift;
    }
    rhythm.schematic = rhythm.kind != Rhythm::Kind::dark;
    return rhythm;
}

} // namespace

bool lampsInForce(const PictureValues& values)
{
    return values(9).value_or(0) == 0;
}

std::array<ReceiverLamp, 8> receiverLamps(const PictureValues& values)
{
    std::array<ReceiverLamp, outputs> lamps;
    const auto functionOf = [&](int output) { return values(49 + output); };
    for (int output = 1; output <= outputs; ++output) {
        ReceiverLamp& lamp = lamps[static_cast<std::size_t>(output - 1)];
        lamp.function = functionOf(output);
        lamp.brightness = values(59 + output).value_or(255) / 255.0;
        int place = 0;
        int count = 0;
        for (int other = 1; other <= outputs; ++other)
            if (functionOf(other) == lamp.function) {
                place += other < output ? 1 : 0;
                ++count;
            }
        const int function = lamp.function.value_or(nothing);
        if (function == steady)
            lamp.rhythm = steadyRhythm();
        else if (function == blinking)
            lamp.rhythm = blinkingRhythm(values, output);
        else
            lamp.rhythm = openRhythm(function, place, count, output);
        if (function == trafficLight)
            lamp.glass = glassOf(place);
    }
    return lamps;
}

Text lampText(const PictureWords& words, const ReceiverLamp& lamp, int output)
{
    const auto percent = textFromNumber(std::lround(lamp.brightness * 100));
    Text text = joined(
        {textFromNumber(output), u": ", lamp.function ? wordOf(words, 49 + output, *lamp.function) : u"-"});
    if (lamp.rhythm.kind == Rhythm::Kind::dark)
        return text;
    if (lamp.function == blinking && !lamp.rhythm.pulses.empty())
        text = joined({text, u", ", durationText(lamp.rhythm.pulses.front(), words.decimalComma)});
    text = joined({text, u", ", percent, u" %"});
    if (lamp.rhythm.schematic)
        text = joined({text, u" (", words.texts.caption(Caption::schematicMark), u")"});
    return text;
}

} // namespace karvo
