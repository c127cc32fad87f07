// What the pictures of function sheets show, from the values of CVs.
#include "editors/key_map.h"
#include "editors/lane_view.h"
#include "editors/receiver_lamps.h"
#include "editors/time_line.h"
#include "editors/vehicle_lights.h"

#include "support/case_table.h"

#include <cmath>

namespace karvo
{
namespace
{

using test::casesOf;
using test::wordsOf;

PictureValues valuesFrom(const std::string& cvs)
{
    const auto numbers = test::numbersOf(cvs);
    return [given = std::map<int, int>(numbers.begin(), numbers.end())](int cv) {
        const auto found = given.find(cv);
        return found == given.end() ? std::nullopt : std::optional(found->second);
    };
}

std::size_t placeOf(const std::string& name, const std::string& names)
{
    const auto all = wordsOf(names);
    return static_cast<std::size_t>(std::find(all.begin(), all.end(), name) - all.begin());
}

constexpr auto lightNames =
    "headlight rear brake left right beacon1 beacon2 interior door high reversing third "
    "parking roof front rearbeacon";

LightScene sceneFrom(const std::string& words)
{
    LightScene scene;
    for (const std::string& word : wordsOf(words)) {
        const auto motion = placeOf(word, "driving standing braking reversing emergencystop");
        const auto light = placeOf(word, lightNames);
        if (motion < 5 && word == wordsOf(words).front())
            scene.motion = static_cast<Motion>(motion);
        else if (light < lightCount)
            scene.on[light] = true;
        scene.hazardLights |= word == "hazard";
        scene.batteryLow |= word == "low";
        scene.trailer |= word == "trailer";
    }
    return scene;
}

TEST(LightsTest, ShineAsTheirCvsSay)
{
    for (const auto& [cvs, scene, name, times, levels] : casesOf<5>("editors/lights.txt")) {
        const auto light = static_cast<Light>(placeOf(name, lightNames));
        std::string seen;
        for (const LightCourse& course : lightCourses(valuesFrom(cvs), sceneFrom(scene)))
            for (const auto& [ms, unused] : test::numbersOf(course.light == light ? times : ""))
                seen += (seen.empty() ? "" : " ") + std::to_string(std::lround(levelAt(course, ms) * 100));
        EXPECT_EQ(seen, levels) << cvs << "|" << scene << "|" << name << "|" << times;
    }
}

TEST(LightsTest, FadeOnlyWhereTheyAreToldTo)
{
    const std::pair<const char*, int> halfWay[] = {
        {"100=4 24=1", 40}, {"100=4 24=2", 100}, {"100=0 24=1", 100}, {"100=4", 40}};
    for (const auto& [cvs, level] : halfWay) {
        LightLevels levels;
        levels.at(lightCourses(valuesFrom(cvs), sceneFrom("driving")), 0);
        EXPECT_EQ(levels.at(lightCourses(valuesFrom(cvs), sceneFrom("driving headlight")), 100)[0] * 100,
                  level)
            << cvs;
    }
    LightLevels flashing; // the flash from 500 to 510 ms lies between two pictures
    const auto courses = lightCourses(valuesFrom("67=1 68=49 69=0"), sceneFrom("driving beacon1"));
    flashing.at(courses, 490);
    EXPECT_EQ(flashing.at(courses, 530)[5], 1);
}

TEST(TimeLineTest, PhasesAndWhatDoesNotGoTogether)
{
    constexpr std::array tracks = {"driving", "right",   "door",  "hazard", "interior",
                                   "left",    "beacons", "front", "high",   "priority"};
    const auto timeOf = [](const std::optional<int>& ms) { return ms ? std::to_string(*ms) : "?"; };
    for (const auto& [cvs, which, phases, notes] : casesOf<4>("editors/time_lines.txt")) {
        const auto values = valuesFrom(cvs);
        const TimeLine line = which == "bus" ? busStop(values, false) : emergencyRun(values);
        std::string seen;
        for (const Phase& phase : line.phases)
            seen += (seen.empty() ? "" : " ") + std::string(tracks[static_cast<std::size_t>(phase.track)]) +
                    " " + timeOf(phase.from) + "-" + timeOf(phase.to) + (phase.conflict ? "!" : "");
        std::string told;
        for (const TimeLineNote& note : line.notes)
            told += (told.empty() ? "" : " ") + std::to_string(static_cast<int>(note.message));
        EXPECT_EQ(seen, phases) << cvs;
        EXPECT_EQ(told, notes) << cvs;
    }
}

// Which of the eight lamps are lit, from output 1 on.
std::string litAt(const PictureValues& values, int ms)
{
    std::string lit;
    for (const ReceiverLamp& lamp : receiverLamps(values))
        lit += levelAt(lamp.rhythm, ms) > 0 ? '*' : '.';
    return lit;
}

TEST(ReceiverLampsTest, FollowTheirFunctionsAndGroups)
{
    const std::tuple<const char*, int, const char*> cases[] = {
        {"50=1 51=0 52=2 54=2 90=25 91=50", 499, "*.*.*..."},
        {"50=1 51=0 52=2 54=2 90=25 91=50", 500, "*...*..."},
        {"50=1 51=0 52=2 54=2 90=25 91=50", 1000, "*.*....."},
        {"50=4 52=4 57=4", 0, "*......."},
        {"50=4 52=4 57=4", 250, "..*....."},
        {"50=4 52=4 57=4", 500, ".......*"},
        {"50=4 52=4 57=4", 750, "*......."},
        {"51=6 52=6 53=6", 3999, ".*......"},
        {"51=6 52=6 53=6", 4000, ".**....."},
        {"51=6 52=6 53=6", 5000, "...*...."},
        {"51=6 52=6 53=6", 9000, "..*....."},
        {"51=6 52=6 53=6", 10000, ".*......"},
    };
    for (const auto& [cvs, ms, lit] : cases)
        EXPECT_EQ(litAt(valuesFrom(cvs), ms), lit) << cvs << " at " << ms;
    const auto lamps = receiverLamps(valuesFrom("50=2 51=3 52=9 60=51"));
    EXPECT_EQ(lamps[0].brightness, 0.2);
    EXPECT_FALSE(lamps[0].rhythm.schematic);
    EXPECT_TRUE(lamps[1].rhythm.schematic);
    EXPECT_EQ(lamps[2].function, 9);
}

TEST(KeyMapTest, ChoosingChangesTheCvBehindThePlace)
{
    const auto values = valuesFrom("33=1 36=37 45=12 19=5");
    const auto change = [&](int row, int key) {
        const auto chosen = chosenAt(values, row, key);
        return chosen ? std::to_string(chosen->cv) + "=" + std::to_string(chosen->value) : "";
    };
    EXPECT_EQ(change(4, 0), "33=4");
    EXPECT_EQ(change(1, 0), ""); // it has that one
    EXPECT_EQ(change(0, 12), "45=0");
    EXPECT_EQ(change(9, 3), "36=9");
    EXPECT_EQ(change(KeyMapRows::otherValue, 0), "");
    EXPECT_EQ(change(3, 1), ""); // the model lacks CV34
    EXPECT_EQ(change(KeyMapRows::pushButton, 2), "19=1");
    EXPECT_EQ(change(KeyMapRows::pushButton, 1), "19=7");
    EXPECT_EQ(change(KeyMapRows::pushButton, 8), "");
    EXPECT_EQ(change(KeyMapRows::secondAddress, 0), "");
    EXPECT_TRUE(isChosen(values, KeyMapRows::otherValue, 3)); // 37 stays
    EXPECT_FALSE(isChosen(values, KeyMapRows::otherValue, 12));
}

TEST(LaneViewTest, SteersAboutStraightAhead)
{
    const auto view = laneView(valuesFrom("177=1 178=1 181=192 182=63 183=20 184=18"));
    EXPECT_TRUE(view.leftOfLine);
    EXPECT_EQ((std::array{view.lowest, view.straight, view.highest, view.stopAfter}),
              (std::array{129, 192, 255, 2000}));
    LanguageTables texts;
    EXPECT_EQ(laneTexts({texts}, laneView(valuesFrom("177=0"))).size(), 1u); // nothing else takes effect
    EXPECT_EQ(durationText(50, true) + u"|" + durationText(1050, true) + u"|" + durationText(20'000, true),
              u"50 ms|1,05 s|20 s");
}

} // namespace
} // namespace karvo
