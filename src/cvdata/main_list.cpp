#include "cvdata/main_list.h"

#include "cvdata/battery.h"
#include "cvdata/changes.h"
#include "cvdata/cv_use.h"
#include "cvdata/dcc_address.h"
#include "cvdata/speed_cvs.h"

#include <algorithm>
#include <iterator>

namespace karvo
{

namespace
{

constexpr int resistantCv = 99; // unknown to decoders of a firmware level below 3
constexpr int lowestLevelOfResistantCv = 3;
constexpr int optionalCv = 153;
constexpr int firstPrefixedCv = 163; // CV163 to CV166 show their bit 7 as a prefix
constexpr int lastPrefixedCv = 166;
constexpr int prefixedBit = 128;

constexpr TextView speedTableGroupLabel = u"CV70 - CV97 ";

enum class SpeedTable { steps, group, rows };

SpeedTable speedTableOf(const DecoderProfile& profile)
{
    switch (profile.model) {
    case Model::kv05:
    case Model::kv06:
        return SpeedTable::group;
    case Model::kv04:
    case Model::kv07:
    case Model::kv08:
    case Model::trailer:
        return SpeedTable::steps;
    case Model::receiver:
    case Model::xtModule:
        break;
    }
    return SpeedTable::rows;
}

// Behind these CVs of a receiver a servo stands: its address is split over the CV before and the CV itself.
struct ServoLine {
    int cv;
    TextView label;
    TextView addressLabel;
};

constexpr ServoLine servoLines[] = {{12, u"CV12 = Servo 1 Adresse ", u"    A-Servo 1 = "},
                                    {14, u"CV14 = Servo 2 Adresse ", u"    A-Servo 2 = "}};

// None where the receiver's firmware knows no such servo.
const ServoLine* servoLineOf(const ListSource& source, int cv)
{
    const Model model = source.profile.model;
    if (!isReceiver(model))
        return nullptr;
    const auto* const found = std::find_if(std::begin(servoLines), std::end(servoLines),
                                           [cv](const ServoLine& line) { return line.cv == cv; });
    return found != std::end(servoLines) && isUsed(source.table, cv) ? found : nullptr;
}

Text cvLine(const ListSource& source, int cv)
{
    const Text& value = source.table.at(cv, Column::value);
    if (cv == optionalCv && value.empty())
        return cvLabel(cv) + u"---";
    if (cv == resistantCv && source.profile.firmwareLevel < lowestLevelOfResistantCv)
        return cvLabel(cv) + u"0";
    const auto number = source.table.value(cv);
    if (cv >= firstPrefixedCv && cv <= lastPrefixedCv && number && *number >= prefixedBit)
        return cvLabel(cv) + u"128+" + textFromNumber(*number - prefixedBit);
    return cvLabel(cv) + value;
}

ListLine speedStepLine(const ListSource& source, int step)
{
    const auto inReply = speedStepInReply(source.rawReply, step);
    const Text value =
        inReply ? textFromNumber(*inReply) : source.table.at(cvOfSpeedStep(step), Column::value);
    return speedStepLine(source.table, step, value, source.speedStepUnit);
}

bool anyChanged(const ListSource& source, int firstCv, int lastCv)
{
    for (int cv = firstCv; source.baseline != nullptr && cv <= lastCv; ++cv) {
        if (isChanged(source.table, *source.baseline, cv))
            return true;
    }
    return false;
}

// What experts know of the line's CV stands below it, indented and marked.
void addLine(MainList& list, const ListSource& source, ListLine line)
{
    const int cv = line.cv;
    line.changed = anyChanged(source, cv, std::max(cv, line.lastCv));
    if (line.changed)
        line.text += u"  " + source.changedMark;
    list.push_back(std::move(line));
    if (source.expert == nullptr)
        return;
    const auto entry = source.expert->find(cv);
    if (entry != source.expert->end())
        list.push_back({u"    " + source.expertLabel + u": " + expertLine(entry->second), Text(), cv});
}

void addServoLines(MainList& list, const ListSource& source, const ServoLine& servo)
{
    const CvTable& table = source.table;
    addLine(list, source,
            {Text(servo.label) + table.at(servo.cv, Column::value), nameOfCv(table, servo.cv), servo.cv});
    const auto high = table.value(servo.cv - 1);
    const auto low = table.value(servo.cv);
    const Text address = high && low ? textFromNumber(longAddress(*high, *low)) : Text();
    list.push_back({Text(servo.addressLabel) + address, Text(), servo.cv});
}

void addSpeedTable(MainList& list, const ListSource& source, SpeedTable form)
{
    if (form == SpeedTable::group) {
        addLine(list, source,
                {.text = Text(speedTableGroupLabel),
                 .name = source.speedTableName,
                 .cv = firstSpeedStepCv,
                 .lastCv = lastSpeedStepCv});
        return;
    }
    for (int step = 1; step <= speedStepCount; ++step)
        addLine(list, source, speedStepLine(source, step));
}

// "Akkuspannung = 3,92 Volt (196)", where the decoder has measured its battery.
void addBatteryLine(MainList& list, const ListSource& source)
{
    const auto units = measuredBattery(source.profile, source.rawReply);
    if (!units)
        return;
    list.push_back({u"Akkuspannung = " + voltsText(*units, source.decimalComma) + u" Volt (" +
                        textFromNumber(*units) + u")",
                    Text(), 0});
}

} // namespace

MainList fill_list1(const ListSource& source)
{
    MainList list;
    const SpeedTable speedTable = speedTableOf(source.profile);
    for (int cv = 1; cv <= CvTable::lastRow; ++cv) {
        if (!source.table.describes(cv))
            continue;
        const ServoLine* const servo = servoLineOf(source, cv);
        if (servo != nullptr)
            addServoLines(list, source, *servo);
        else if (speedTable == SpeedTable::rows || !isSpeedStepCv(cv))
            addLine(list, source, {cvLine(source, cv), nameOfCv(source.table, cv), cv});
        else if (cv == firstSpeedStepCv)
            addSpeedTable(list, source, speedTable);
    }
    addBatteryLine(list, source);
    return list;
}

bool hasSpeedTable(const CvTable& table)
{
    for (int step = 1; step <= speedStepCount; ++step) {
        if (!isUsed(table, cvOfSpeedStep(step)))
            return false;
    }
    return true;
}

Text nameOfCv(const CvTable& table, int cv)
{
    const Text& text = table.at(cv, Column::text);
    return text.substr(0, text.find(lineBreak));
}

Text cvLabel(int cv)
{
    const Text number = textFromNumber(cv);
    return u"CV" + number + (number.size() < 2 ? u"  = " : u" = ");
}

Text speedStepLabel(int step)
{
    const Text number = textFromNumber(step);
    return Text(3 - number.size(), u' ') + number + u" = ";
}

ListLine speedStepLine(const CvTable& table, int step, const Text& value, const Text& unit)
{
    const int cv = cvOfSpeedStep(step);
    return {speedStepLabel(step) + value + unit, nameOfCv(table, cv), cv};
}

std::optional<int> speedStepInReply(std::span<const std::uint8_t> reply, int step)
{
    constexpr std::size_t shortestTable = 55;
    constexpr std::size_t shortestBlock = 513;
    if (reply.size() < shortestTable || reply.size() >= shortestBlock)
        return std::nullopt;
    const auto position = static_cast<std::size_t>(57 - 2 * step);
    return reply[position - 1];
}

std::optional<std::size_t> positionOf(const MainList& list, int cv)
{
    if (cv <= 0)
        return std::nullopt;
    const Text start = cvLabel(cv).substr(0, cv >= 100 ? 5 : 4);
    const auto labelled = std::find_if(list.begin(), list.end(),
                                       [&](const ListLine& line) { return line.text.starts_with(start); });
    const auto found = labelled != list.end()
                           ? labelled
                           : std::find_if(list.begin(), list.end(),
                                          [cv](const ListLine& line) { return line.standsFor(cv); });
    if (found == list.end())
        return std::nullopt;
    return static_cast<std::size_t>(found - list.begin());
}

} // namespace karvo
