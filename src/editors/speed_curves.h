// The speed table of a vehicle, and the curves that fill it from two or three values (docs/speed-curves.md).
#pragma once

#include "cvdata/decoder_profile.h"
#include "cvdata/speed_cvs.h"
#include "language/language_tables.h"

#include <array>
#include <cstddef>
#include <optional>

namespace karvo
{

// A motor value, 0 to 255, for each step; index 0 is step 1.
using SpeedTable = std::array<int, speedStepCount>;

inline constexpr int lowestSpeed = 3;       // below it no vehicle starts
inline constexpr int lowestSpeedRise = 29;  // from step 1 to step 28, at least
inline constexpr int lowestMiddleRise = 15; // from step 1 to step 14, at least
inline constexpr int lowestUpperRise = 14;  // from step 14 to step 28, at least
inline constexpr int middleStep = 14;

// The highest value that the editor allows: 180 for the KV04 until 2008, 120 for the generation F5, else 168.
int highestSpeed(const DecoderProfile& profile);

// What the linear curve of the generation F5 stays below; highestSpeed() for all others.
int highestLinearSpeed(const DecoderProfile& profile);

// The values that a person has given; those of steps 1 and 28 that were not asked for come from the table.
struct CurvePoints {
    int first;
    int last;
    std::optional<int> middle = {}; // of step 14
};

enum class Curve { linear, twoPoint, threePoint, logarithmic, exponential };

// The points have passed the checks below. Each curve rises, or stays level, from step to step.
SpeedTable speedCurve(Curve curve, const CurvePoints& points);

// From the values of the last take-over to `highest`: half as steep as they up to step 14, then straight up.
SpeedTable exaggeratedCurve(const SpeedTable& taken, int highest);

// What is wrong with a value, as it is told; nothing for a sound one. `typed` is nothing for what is no
// number.
std::optional<Text> refusalOfFirstStep(std::optional<int> typed, int highest, const LanguageTables& texts);
std::optional<Text> refusalOfLastStep(std::optional<int> typed, const CurvePoints& before, int highest,
                                      const LanguageTables& texts);
std::optional<Text> refusalOfMiddleStep(std::optional<int> typed, int first, int highest,
                                        const LanguageTables& texts);

} // namespace karvo
