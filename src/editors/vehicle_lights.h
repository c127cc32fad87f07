// What the lights of a vehicle or trailer do by CV24 to CV26, CV60 to CV69, CV100, CV101 and CV112 to CV120.
#pragma once

#include "editors/light_rhythm.h"
#include "editors/picture_values.h"

#include <array>
#include <cstddef>

namespace karvo
{

// In the order of the table of outputs.
enum class Light {
    headlight,
    rearLight,
    brakeLight,
    leftIndicator,
    rightIndicator,
    beacon1,
    beacon2,
    interiorLight,
    doorLight,
    highBeam,
    reversingLight,
    thirdBrakeLight,
    parkingLight,
    roofBeacon,
    frontBeacon,
    rearBeacon
};
inline constexpr std::size_t lightCount = 16;
inline constexpr std::size_t outputCount =
    8; // the first lights hang at outputs 1 to 8; the others nobody knows where

enum class Motion { driving, standing, braking, reversing, emergencyStop };

// What the vehicle is doing, and what its keys have switched on.
struct LightScene {
    Motion motion = Motion::driving;
    std::array<bool, lightCount> on{};
    bool hazardLights = false;
    bool batteryLow = false;
    bool trailer = false; // CV113 to CV115 mean something else there

    bool isOn(Light light) const { return on[static_cast<std::size_t>(light)]; }
    bool& isOn(Light light) { return on[static_cast<std::size_t>(light)]; }
};

// What it looks like: by its automatics, then by its kind (CV167).
enum class Body { car, lorry, bus, fireEngine, trailer };
Body bodyOf(const PictureValues& values, bool trailer);

// A reason to be lit.
struct LightCause {
    Rhythm rhythm;
    double share = 1;           // of the brightness
    std::optional<int> until{}; // ms from the beginning of the motion
};

// Lit for any of the causes, or for none of them.
struct LightDrive {
    std::vector<LightCause> causes;
    bool inverted = false;
};

struct LightCourse {
    Light light = Light::headlight;
    LightDrive own;
    std::vector<LightDrive> followed{}; // the lights that it is coupled to; they count after their inversion
    double brightness = 1;              // 0 to 1
    int fadeTime = 0;                   // ms from dark to full brightness
    bool fadeSchematic = false;
    std::optional<int> goesOut{}; // ms of standstill (CV101)
    enum class Block { none, notFitted, batteryLow } block = Block::none;
};

// Of the lights that such a model has.
std::vector<LightCourse> lightCourses(const PictureValues& values, const LightScene& scene);

// 0 to 1, without the fading, `ms` after the motion began.
double levelAt(const LightCourse& course, int ms);

// The cause for which it is lit; one that does not change where it is lit for nothing else than its
// inversion. Nothing for a light that is dark.
std::optional<LightCause> shownCause(const LightCourse& course);

// The brightness of each light as time passes, with the fading; 0 where the model has no such light.
class LightLevels
{
public:
    // `ms` is never less than the last time, but where a motion begins: then it starts at 0.
    const std::array<double, lightCount>& at(const std::vector<LightCourse>& courses, int ms);

    // As they are once all fading is over.
    void settle(const std::vector<LightCourse>& courses, int ms);

private:
    std::array<double, lightCount> levels_{};
    int last_ = 0;
};

// The shipped name of the light; a trailer's first one goes by the driving light of the towing vehicle.
Text lightName(const PictureWords& words, Light light, bool trailer);

// "blinks: 400 ms lit, 400 ms dark, 100 %", with what is schematic or not known.
Text lightText(const PictureWords& words, const LightCourse& course);

bool isSchematic(const LightCourse& course);

// Whether it is not the same at all times.
bool changes(const LightCourse& course);

} // namespace karvo
