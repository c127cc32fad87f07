// The CVs of a vehicle's speed: the speed table's, and what stands in its place on a decoder without one.
#pragma once

namespace karvo
{

inline constexpr int baseSpeedCv = 2;
inline constexpr int topSpeedCv = 5;

inline constexpr int speedStepCount = 28;
inline constexpr int firstSpeedStepCv = 70; // of step 28
inline constexpr int lastSpeedStepCv = firstSpeedStepCv + speedStepCount - 1;

// Speed step n (1 to 28) is CV (98 - n), and the other way round.
constexpr int cvOfSpeedStep(int step)
{
    return lastSpeedStepCv + 1 - step;
}

constexpr bool isSpeedStepCv(int cv)
{
    return cv >= firstSpeedStepCv && cv <= lastSpeedStepCv;
}

} // namespace karvo
