#include "editors/time_line.h"

#include <algorithm>

namespace karvo
{

namespace
{

using Kind = Phase::Kind;

int indicatorPhase(const PictureValues& values)
{
    return values(66).value_or(0) * 10;
}

// The last time that is known: what the picture is scaled to.
TimeLine finished(TimeLine line)
{
    for (const Phase& phase : line.phases)
        line.end = std::max({line.end, phase.from.value_or(0), phase.to.value_or(0)});
    return line;
}

// CV103 and CV104.
void addDoorLight(const PictureValues& values, int stop, bool decimalComma, TimeLine& line)
{
    const int length = values(104).value_or(0) * 100;
    if (length == 0 || !allowsBit(values, 22, 4))
        return;
    const int from = values(103).value_or(0) * 100;
    const int to = from + length;
    line.phases.push_back({Track::doorLight, Kind::light, from, to, 0, to > stop});
    if (to > stop)
        line.notes.push_back(
            {from >= stop ? Message::doorLightAfterStop : Message::doorLightPastStop,
             {durationText(from >= stop ? from : to, decimalComma), durationText(stop, decimalComma)}});
}

// CV106: the last flash ends when the bus leaves.
void addLeavingIndicator(const PictureValues& values, int stop, bool decimalComma, TimeLine& line)
{
    const int flashes = values(106).value_or(0);
    const int length = flashes * 2 * indicatorPhase(values);
    if (length == 0 || !allowsBit(values, 22, 2))
        return;
    line.phases.push_back({Track::leftIndicator, Kind::light, std::max(stop - length, 0), stop,
                           indicatorPhase(values), length > stop});
    if (length > stop)
        line.notes.push_back({Message::flashesLongerThanStop,
                              {textFromNumber(flashes), durationText(length, decimalComma),
                               durationText(stop, decimalComma)}});
}

// CV23: what is on during the run; what CV112 leaves without power is marked.
void addRunLights(const PictureValues& values, int start, int arrival, int end, TimeLine& line)
{
    const auto add = [&](int weight, Phase phase, int equipment, Message unpowered) {
        if (!hasBit(values, 23, weight))
            return;
        phase.conflict = equipment != 0 && !allowsBit(values, 112, equipment);
        line.phases.push_back(phase);
        if (phase.conflict)
            line.notes.push_back({unpowered});
    };
    add(2, {Track::frontBeacon, Kind::light, 0, end}, 16, Message::frontBeaconUnpowered);
    add(4, {Track::highBeam, Kind::light, start, arrival}, 32, Message::highBeamUnpowered);
    add(8, {Track::priority, Kind::light, start, arrival}, 0, {});
    add(16, {Track::hazardLights, Kind::light, arrival, {}, indicatorPhase(values)}, 0, {});
}

Text drivingName(const LanguageTables& texts, const TimeLine& line, Kind kind)
{
    const Text step = textFromNumber(line.speedStep);
    switch (kind) {
    case Kind::slowing:
        return texts.caption(Caption::phaseSlowing, {step});
    case Kind::standing:
        return texts.caption(Caption::phaseStanding);
    case Kind::leaving:
        return texts.caption(Caption::phaseLeaving);
    case Kind::waiting:
        return texts.caption(Caption::phaseWaiting);
    case Kind::running:
        return texts.caption(Caption::phaseRunning, {step});
    default:
        return texts.caption(Caption::phaseArrived);
    }
}

} // namespace

bool TimeLine::conflicts() const
{
    return std::any_of(notes.begin(), notes.end(), [](const TimeLineNote& note) { return note.conflict; });
}

TimeLine busStop(const PictureValues& values, bool decimalComma)
{
    TimeLine line;
    const int stop = values(102).value_or(0) * 1000;
    if (stop == 0) {
        line.notes.push_back({Message::busAutomaticsOff, {}, false});
        return line;
    }
    line.speedStep = values(107).value_or(0);
    line.phases = {{Track::driving, Kind::slowing, {}, 0},
                   {Track::driving, Kind::standing, 0, stop},
                   {Track::driving, Kind::leaving, stop, {}}};
    if (hasBit(values, 22, 1))
        line.phases.push_back({Track::rightIndicator, Kind::light, {}, 0, indicatorPhase(values)});
    addDoorLight(values, stop, decimalComma, line);
    if (hasBit(values, 22, 8))
        line.phases.push_back({Track::hazardLights, Kind::light, 0, stop, indicatorPhase(values)});
    if (hasBit(values, 22, 16))
        line.phases.push_back({Track::interiorLight, Kind::light, 0, stop});
    addLeavingIndicator(values, stop, decimalComma, line);
    const int lightsOut = values(101).value_or(0) * 10'000;
    if (lightsOut > 0 && lightsOut < stop)
        line.notes.push_back({Message::lightsOutInStop, {durationText(lightsOut, decimalComma)}, false});
    if (const int passed = values(105).value_or(0); passed > 0)
        line.notes.push_back({Message::stopsPassed, {textFromNumber(passed)}, false});
    return finished(std::move(line));
}

TimeLine emergencyRun(const PictureValues& values)
{
    TimeLine line;
    const int length = values(108).value_or(0) * 1000;
    if (length == 0) {
        line.notes.push_back({Message::fireAutomaticsOff, {}, false});
        return line;
    }
    const int start = values(109).value_or(0) * 100;
    const int arrival = start + length;
    const int end = arrival + values(111).value_or(0) * 1000;
    line.speedStep = values(110).value_or(0);
    const auto addParts = [&](Track track, const std::array<Kind, 3>& kinds, std::optional<int> last) {
        if (start > 0)
            line.phases.push_back({track, kinds[0], 0, start});
        line.phases.push_back({track, kinds[1], start, arrival});
        if (last != arrival)
            line.phases.push_back({track, kinds[2], arrival, last});
    };
    addParts(Track::driving, {Kind::waiting, Kind::running, Kind::arrived}, {});
    if (allowsBit(values, 23, 1))
        addParts(Track::beacons, {Kind::light, Kind::light, Kind::light}, end);
    addRunLights(values, start, arrival, end, line);
    if (!allowsBit(values, 23, 1 | 2))
        line.notes.push_back({Message::noBeaconOnRun});
    line.notes.push_back({Message::runEndsWithStart, {}, false});
    return finished(std::move(line));
}

Text trackName(const LanguageTables& texts, Track track)
{
    constexpr Caption names[] = {Caption::trackVehicle,     Caption::lightRightIndicator,
                                 Caption::lightDoor,        Caption::hazardLights,
                                 Caption::interiorBrighter, Caption::lightLeftIndicator,
                                 Caption::beacons,          Caption::lightFrontBeacon,
                                 Caption::highBeamFlashes,  Caption::priorityAtTrafficLights};
    return texts.caption(names[static_cast<std::size_t>(track)]);
}

Text phaseName(const LanguageTables& texts, const TimeLine& line, const Phase& phase)
{
    return phase.track == Track::driving ? drivingName(texts, line, phase.kind)
                                         : trackName(texts, phase.track);
}

Text phaseText(const PictureWords& words, const TimeLine& line, const Phase& phase)
{
    const Text name = phaseName(words.texts, line, phase);
    const auto time = [&](const std::optional<int>& ms) {
        return durationText(ms.value_or(0), words.decimalComma);
    };
    if (!phase.from)
        return words.texts.caption(Caption::timeUntil, {name, time(phase.to)});
    if (!phase.to)
        return words.texts.caption(Caption::timeFrom, {name, time(phase.from)});
    return words.texts.caption(Caption::timeFromTo, {name, time(phase.from), time(phase.to)});
}

bool holdsAt(const Phase& phase, int ms)
{
    return (!phase.from || ms >= *phase.from) && (!phase.to || ms < *phase.to);
}

bool isLitAt(const Phase& phase, int ms)
{
    if (!holdsAt(phase, ms) || phase.phaseLength <= 0)
        return holdsAt(phase, ms);
    const int since = ms - phase.from.value_or(0);
    const int cycle = 2 * phase.phaseLength;
    return (since % cycle + cycle) % cycle < phase.phaseLength;
}

Text momentText(const PictureWords& words, const TimeLine& line, int ms)
{
    Text text = joined({ms < 0 ? u"-" : u"", durationText(std::abs(ms), words.decimalComma)});
    TextView separator = u": ";
    for (const Phase& phase : line.phases)
        if (holdsAt(phase, ms)) {
            text = joined({text, separator, phaseName(words.texts, line, phase)});
            separator = u", ";
        }
    return text;
}

Text noteText(const LanguageTables& texts, const TimeLineNote& note)
{
    return filledIn(texts.message(note.message), note.arguments);
}

} // namespace karvo
