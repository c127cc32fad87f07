#include "editors/vehicle_lights.h"

#include <algorithm>
#include <utility>

namespace karvo
{

namespace
{

// The switches of CV100.
constexpr int brakeWhenBraking = 1;
constexpr int hazardOnEmergencyStop = 2;
constexpr int fading = 4;
constexpr int daytimeLight = 8;
constexpr int dimmedAtStandstill = 16;
constexpr int beaconOffAtStandstill = 32;
constexpr int reversingWhenReversing = 64;
constexpr int interiorAtStandstill = 128;

bool behaves(const PictureValues& values, int weight)
{
    return hasBit(values, 100, weight);
}

// CV60: which light follows which.
struct Coupling {
    int weight;
    Light follower;
    Light leader;
};
constexpr Coupling couplings[] = {
    {1, Light::rearLight, Light::headlight},           {2, Light::parkingLight, Light::headlight},
    {4, Light::interiorLight, Light::headlight},       {8, Light::thirdBrakeLight, Light::brakeLight},
    {16, Light::leftIndicator, Light::rightIndicator}, {16, Light::rightIndicator, Light::leftIndicator},
    {32, Light::frontBeacon, Light::roofBeacon},       {64, Light::rearBeacon, Light::roofBeacon},
    {128, Light::highBeam, Light::roofBeacon}};

// CV112: what gets no power unless it is told to be there.
int equipmentWeight(Light light)
{
    switch (light) {
    case Light::thirdBrakeLight:
        return 4;
    case Light::reversingLight:
        return 8;
    case Light::frontBeacon:
        return 16;
    case Light::highBeam:
        return 32;
    default:
        return 0;
    }
}

bool isBeacon(Light light)
{
    return light == Light::beacon1 || light == Light::beacon2 || light >= Light::roofBeacon;
}

bool isIndicator(Light light)
{
    return light == Light::leftIndicator || light == Light::rightIndicator;
}

int outputBit(Light light)
{
    const auto place = static_cast<std::size_t>(light);
    return place < outputCount ? 1 << place : 0;
}

bool modelHas(const PictureValues& values, Light light, bool trailer)
{
    switch (light) {
    case Light::doorLight: // at bus stops only
        return false;
    case Light::highBeam:
        return !trailer && (values(60) || values(112));
    case Light::thirdBrakeLight:
    case Light::parkingLight:
    case Light::roofBeacon:
    case Light::frontBeacon:
    case Light::rearBeacon:
        return values(60).has_value();
    default:
        return true;
    }
}

Rhythm indicatorRhythm(const PictureValues& values)
{
    const int phase = values(66) ? *values(66) * 10 : schematic::indicatorPhase;
    return pulsing({phase, phase});
}

bool switchedOn(const PictureValues& values, const LightScene& scene, Light light)
{
    if (isIndicator(light))
        return scene.isOn(light) || scene.hazardLights ||
               (scene.motion == Motion::emergencyStop && behaves(values, hazardOnEmergencyStop));
    if (isBeacon(light) && scene.motion == Motion::standing && behaves(values, beaconOffAtStandstill))
        return false;
    if (light == Light::roofBeacon) // where it hangs is not known; it goes with the beacons
        return scene.isOn(Light::beacon1) || scene.isOn(Light::beacon2);
    return scene.isOn(light);
}

Rhythm rhythmOf(const PictureValues& values, Light light)
{
    if (isIndicator(light) || hasBit(values, 25, outputBit(light)))
        if (!isBeacon(light))
            return indicatorRhythm(values);
    if (isBeacon(light))
        return beaconRhythm(values(67).value_or(0) * 10, values(68).value_or(0) * 10, values(69).value_or(0),
                            light == Light::beacon2);
    return steadyRhythm();
}

// What the driving itself switches on.
std::vector<LightCause> causedByMotion(const PictureValues& values, Motion motion, Light light,
                                       const Rhythm& rhythm)
{
    const bool standing = motion == Motion::standing;
    const bool braking = motion == Motion::braking || motion == Motion::emergencyStop;
    if (light == Light::headlight && behaves(values, daytimeLight)) {
        if (!standing)
            return {{rhythm, schematic::daytimeShare}};
        if (behaves(values, dimmedAtStandstill))
            return {{rhythm, schematic::dimmedShare}};
    }
    if (light == Light::brakeLight && behaves(values, brakeWhenBraking) && (braking || standing)) {
        const int hold = values(65).value_or(0) * 100;
        if (braking)
            return {{rhythm}};
        if (hold > 0)
            return {{rhythm, 1, hold}};
    }
    if (light == Light::reversingLight && behaves(values, reversingWhenReversing) &&
        motion == Motion::reversing)
        return {{rhythm}};
    if (light == Light::interiorLight && behaves(values, interiorAtStandstill) && standing)
        return {{rhythm}};
    return {};
}

LightDrive driveOf(const PictureValues& values, const LightScene& scene, Light light)
{
    const Rhythm rhythm = rhythmOf(values, light);
    LightDrive drive{causedByMotion(values, scene.motion, light, rhythm),
                     hasBit(values, 61, outputBit(light))};
    if (switchedOn(values, scene, light)) {
        const bool dimmed = light == Light::headlight && scene.motion == Motion::standing &&
                            behaves(values, dimmedAtStandstill);
        drive.causes.push_back({rhythm, dimmed ? schematic::dimmedShare : 1});
    }
    return drive;
}

// CV62 to CV64, and no more than CV113 to CV120 let through.
double brightnessOf(const PictureValues& values, Light light, bool trailer)
{
    int brightness = 255;
    if (light <= Light::brakeLight)
        brightness = values(62 + static_cast<int>(light)).value_or(brightness);
    if (outputBit(light) != 0 && !trailer)
        brightness = std::min(brightness, values(113 + static_cast<int>(light)).value_or(brightness));
    return brightness / 255.0;
}

void setFading(const PictureValues& values, LightCourse& course)
{
    if (!behaves(values, fading))
        return;
    const bool chosen = values(24) ? hasBit(values, 24, outputBit(course.light))
                                   : !isBeacon(course.light) && !isIndicator(course.light);
    course.fadeTime = chosen ? schematic::fadeTime : 0;
    course.fadeSchematic = chosen && !values(24);
}

LightCourse::Block blockOf(const PictureValues& values, const LightScene& scene, Light light)
{
    if (const int weight = equipmentWeight(light); weight != 0 && !allowsBit(values, 112, weight))
        return LightCourse::Block::notFitted;
    const bool warns = scene.batteryLow && allowsBit(values, 21, 32);
    return warns && hasBit(values, 26, outputBit(light)) ? LightCourse::Block::batteryLow
                                                         : LightCourse::Block::none;
}

LightCourse courseOf(const PictureValues& values, const LightScene& scene, Light light)
{
    LightCourse course{light, driveOf(values, scene, light)};
    for (const Coupling& coupling : couplings)
        if (coupling.follower == light && hasBit(values, 60, coupling.weight))
            course.followed.push_back(driveOf(values, scene, coupling.leader));
    course.brightness = brightnessOf(values, light, scene.trailer);
    setFading(values, course);
    const int tensOfSeconds = values(101).value_or(0);
    if (scene.motion == Motion::standing && tensOfSeconds > 0 && !isBeacon(light))
        course.goesOut = tensOfSeconds * 10'000;
    course.block = blockOf(values, scene, light);
    return course;
}

double levelOf(const LightDrive& drive, int ms)
{
    double level = 0;
    for (const LightCause& cause : drive.causes)
        if (!cause.until || ms < *cause.until)
            level = std::max(level, levelAt(cause.rhythm, ms) * (drive.inverted ? 1 : cause.share));
    return drive.inverted ? 1 - level : level;
}

// No flash is shorter than 10 ms, and none falls between two pictures.
double brightestSince(const LightCourse& course, int last, int now)
{
    double level = levelAt(course, now);
    for (int ms = last + 10; ms < now; ms += 10)
        level = std::max(level, levelAt(course, ms));
    return level;
}

std::optional<LightCause> causeOf(const LightDrive& drive)
{
    if (drive.causes.empty())
        return drive.inverted ? std::optional(LightCause{steadyRhythm()}) : std::nullopt;
    const auto strongest = std::max_element(
        drive.causes.begin(), drive.causes.end(),
        [](const LightCause& one, const LightCause& other) { return one.share < other.share; });
    if (!drive.inverted)
        return *strongest;
    if (strongest->rhythm.kind == Rhythm::Kind::steady)
        return std::nullopt;
    LightCause dark = *strongest; // lit between the pulses
    if (dark.rhythm.kind == Rhythm::Kind::pulses) {
        dark.rhythm.delay += dark.rhythm.pulses.front();
        std::rotate(dark.rhythm.pulses.begin(), dark.rhythm.pulses.begin() + 1, dark.rhythm.pulses.end());
    }
    return dark;
}

} // namespace

Body bodyOf(const PictureValues& values, bool trailer)
{
    if (trailer)
        return Body::trailer;
    if (values(102).value_or(0) > 0)
        return Body::bus;
    if (values(108).value_or(0) > 0)
        return Body::fireEngine;
    constexpr Body kinds[] = {Body::lorry,      Body::car, Body::lorry, Body::bus,
                              Body::fireEngine, Body::car, Body::lorry};
    const auto kind = static_cast<std::size_t>(values(167).value_or(0));
    return kind < std::size(kinds) ? kinds[kind] : Body::lorry;
}

std::vector<LightCourse> lightCourses(const PictureValues& values, const LightScene& scene)
{
    std::vector<LightCourse> courses;
    for (std::size_t place = 0; place < lightCount; ++place)
        if (const auto light = static_cast<Light>(place); modelHas(values, light, scene.trailer))
            courses.push_back(courseOf(values, scene, light));
    return courses;
}

double levelAt(const LightCourse& course, int ms)
{
    if (course.block != LightCourse::Block::none || (course.goesOut && ms >= *course.goesOut))
        return 0;
    double level = levelOf(course.own, ms);
    for (const LightDrive& drive : course.followed)
        level = std::max(level, levelOf(drive, ms));
    return level * course.brightness;
}

std::optional<LightCause> shownCause(const LightCourse& course)
{
    if (course.block != LightCourse::Block::none)
        return std::nullopt;
    auto cause = causeOf(course.own);
    for (const LightDrive& drive : course.followed)
        if (!cause)
            cause = causeOf(drive);
    return cause;
}

bool changes(const LightCourse& course)
{
    const auto cause = shownCause(course);
    return course.fadeTime > 0 || (cause && (periodOf(cause->rhythm) > 0 || cause->until || course.goesOut));
}

void LightLevels::settle(const std::vector<LightCourse>& courses, int ms)
{
    last_ = ms;
    levels_ = {};
    for (const LightCourse& course : courses)
        levels_[static_cast<std::size_t>(course.light)] = levelAt(course, ms);
}

const std::array<double, lightCount>& LightLevels::at(const std::vector<LightCourse>& courses, int ms)
{
    const int passed = std::max(ms - std::exchange(last_, ms), 0);
    auto before = std::exchange(levels_, {});
    for (const LightCourse& course : courses) {
        const auto place = static_cast<std::size_t>(course.light);
        const double wanted = brightestSince(course, ms - passed, ms);
        const double step = course.fadeTime > 0 ? double(passed) / course.fadeTime : 1;
        levels_[place] = std::clamp(wanted, before[place] - step, before[place] + step);
    }
    return levels_;
}

} // namespace karvo
