#include "editors/speed_curves.h"

#include "cvdata/speed_cvs.h"

#include <algorithm>
#include <cmath>

namespace karvo
{

namespace
{

constexpr int highestOfOlderKv04 = 180;
constexpr int highestOfF5 = 120;
constexpr int highestOfOthers = 168;
constexpr int highestLinearOfF5 = 80;

constexpr std::size_t last = speedStepCount - 1;
constexpr std::size_t middle = middleStep - 1;

// Halves to even, whatever rounding the processor is set to.
int rounded(double value)
{
    const double below = std::floor(value);
    const double rest = value - below;
    const int whole = static_cast<int>(below);
    if (rest != 0.5)
        return rest < 0.5 ? whole : whole + 1;
    return whole % 2 == 0 ? whole : whole + 1;
}

int halved(int difference)
{
    return rounded(difference / 2.0);
}

// Each step's value comes from the one before; only what is shown is rounded.
SpeedTable linearCurve(const CurvePoints& points)
{
    SpeedTable table{};
    const double rise = (points.last - points.first) / static_cast<double>(last);
    double value = points.first;
    for (std::size_t i = 0; i < last; ++i, value += rise)
        table[i] = rounded(value);
    table[last] = points.last;
    return table;
}

// Straight from one place to another, both exactly.
void drawLine(SpeedTable& table, std::size_t from, int low, std::size_t to, int high)
{
    for (std::size_t i = from; i <= to; ++i)
        table[i] =
            rounded(low + (high - low) * static_cast<double>(i - from) / static_cast<double>(to - from));
}

// The hyperbolic sine over 28 equal steps, with the smallest pace that reaches the last value.
SpeedTable risingSinh(const CurvePoints& points)
{
    constexpr double firstPace = 2500;
    constexpr double finerPace = 0.0005;
    SpeedTable table{};
    double pace = (points.last - points.first) / firstPace;
    for (;; pace += finerPace) {
        double x = 1;
        for (std::size_t i = 0; i <= last; ++i, x += pace)
            table[i] = points.first + static_cast<int>(std::exp(x) - std::exp(-x));
        if (table[last] >= points.last)
            break;
    }
    table[last] = points.last;
    return table;
}

// Flat first: what was cut off at step 28 is spread over steps 27 and 28.
SpeedTable logarithmicCurve(const CurvePoints& points)
{
    SpeedTable table = risingSinh(points);
    table[last - 1] = table[last - 2] + halved(table[last] - table[last - 2]);
    return table;
}

// The same, mirrored: steep first.
SpeedTable exponentialCurve(const CurvePoints& points)
{
    const SpeedTable rising = risingSinh(points);
    SpeedTable table{};
    for (std::size_t i = 0; i <= last; ++i)
        table[i] = points.last - rising[last - i] + points.first;
    table[1] = table[2] - halved(table[2] - table[0]);
    return table;
}

Text tooHigh(int highest, const LanguageTables& texts)
{
    return texts.message(Message::stepTooHigh) + textFromNumber(highest) +
           texts.message(Message::stepTooHighEnd);
}

} // namespace

int highestSpeed(const DecoderProfile& profile)
{
    if (profile.generation == Generation::f5)
        return highestOfF5;
    return profile.isOlderKv04() ? highestOfOlderKv04 : highestOfOthers;
}

int highestLinearSpeed(const DecoderProfile& profile)
{
    return profile.generation == Generation::f5 ? highestLinearOfF5 : highestSpeed(profile);
}

SpeedTable speedCurve(Curve curve, const CurvePoints& points)
{
    SpeedTable table{};
    switch (curve) {
    case Curve::linear:
        return linearCurve(points);
    case Curve::logarithmic:
        return logarithmicCurve(points);
    case Curve::exponential:
        return exponentialCurve(points);
    case Curve::threePoint:
        if (points.middle) {
            drawLine(table, 0, points.first, middle, *points.middle);
            drawLine(table, middle, *points.middle, last, points.last);
            return table;
        }
        break;
    case Curve::twoPoint:
        break;
    }
    drawLine(table, 0, points.first, last, points.last);
    return table;
}

SpeedTable exaggeratedCurve(const SpeedTable& taken, int highest)
{
    constexpr double intervals = 26;
    const int first = std::clamp(taken[0], lowestSpeed, highest - lowestSpeedRise);
    const int reached = std::clamp(taken[last], first, highest);
    const double rise = (reached - first) / intervals / 2;
    const int bend = rounded(first + rise * static_cast<double>(middle));
    SpeedTable table{};
    drawLine(table, 0, first, middle, bend);
    drawLine(table, middle, bend, last, highest);
    return table;
}

std::optional<Text> refusalOfFirstStep(std::optional<int> typed, int highest, const LanguageTables& texts)
{
    if (!typed || *typed < lowestSpeed)
        return texts.message(Message::firstStepTooLow);
    const int limit = highest - lowestSpeedRise;
    return *typed > limit ? std::optional(tooHigh(limit, texts)) : std::nullopt;
}

std::optional<Text> refusalOfLastStep(std::optional<int> typed, const CurvePoints& before, int highest,
                                      const LanguageTables& texts)
{
    if (!typed || *typed > highest)
        return tooHigh(highest, texts);
    if (*typed < before.first + lowestSpeedRise)
        return texts.message(Message::lastStepTooClose) + textFromNumber(before.first) +
               texts.message(Message::lastStepTooCloseEnd);
    if (!before.middle || *typed >= *before.middle + lowestUpperRise)
        return std::nullopt;
    return texts.message(Message::lastStepTooLow, {textFromNumber(*before.middle + lowestUpperRise)});
}

std::optional<Text> refusalOfMiddleStep(std::optional<int> typed, int first, int highest,
                                        const LanguageTables& texts)
{
    const int lowest = first + lowestMiddleRise;
    const int limit = highest - lowestUpperRise;
    if (typed && *typed >= lowest && *typed <= limit)
        return std::nullopt;
    return texts.message(Message::middleStepRange, {textFromNumber(lowest), textFromNumber(limit)});
}

} // namespace karvo
