// What a bus does at a stop, and a fire engine on an emergency run, one after the other.
#pragma once

#include "editors/picture_values.h"

#include <vector>

namespace karvo
{

// The rows of a time line, in their order.
enum class Track {
    driving,
    rightIndicator,
    doorLight,
    hazardLights,
    interiorLight,
    leftIndicator,
    beacons,
    frontBeacon,
    highBeam,
    priority
};

// A time in which something is going on. Where its beginning or end is not known, only the other counts.
struct Phase {
    enum class Kind { slowing, standing, leaving, waiting, running, arrived, light };
    Track track = Track::driving;
    Kind kind = Kind::light;
    std::optional<int> from{}; // ms; 0 is the halt, or the alarm
    std::optional<int> to{};
    int phaseLength = 0; // ms that an indicator is lit, and dark; 0 where it does not blink
    bool conflict = false;
};

// How something does not go together, or what else there is to know.
struct TimeLineNote {
    Message message;
    std::vector<Text> arguments{};
    bool conflict = true;
};

struct TimeLine {
    std::vector<Phase> phases; // none where it is turned off
    std::vector<TimeLineNote> notes;
    int end = 0;       // ms of the last known time
    int speedStep = 0; // CV107, CV110

    bool conflicts() const;
};

// CV22, CV66, CV101 to CV107. Time 0 is the halt.
TimeLine busStop(const PictureValues& values, bool decimalComma);

// CV23, CV108 to CV111. Time 0 is the alarm.
TimeLine emergencyRun(const PictureValues& values);

Text trackName(const LanguageTables& texts, Track track);

// What the phase is called in its track.
Text phaseName(const LanguageTables& texts, const TimeLine& line, const Phase& phase);

// "door light: from 1 s to 6 s"
Text phaseText(const PictureWords& words, const TimeLine& line, const Phase& phase);

// What is going on then, in words.
Text momentText(const PictureWords& words, const TimeLine& line, int ms);

bool holdsAt(const Phase& phase, int ms);

// The same, but for the dark halves of an indicator's rhythm.
bool isLitAt(const Phase& phase, int ms);

Text noteText(const LanguageTables& texts, const TimeLineNote& note);

} // namespace karvo
