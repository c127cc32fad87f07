#include "editors/live_setup.h"

#include "cvdata/cv_use.h"

#include <algorithm>
#include <array>

namespace karvo
{

namespace
{

constexpr int restingPositionCv = 172;
constexpr int otherPositionCv = 173;
constexpr int returnTimeCv = 174;
constexpr int sweepTimeCv = 175;
constexpr int travelTimeCv = 176;

constexpr int fittingsCv = 112;
constexpr int firstServoFitted = 1; // bits of it
constexpr int secondServoFitted = 2;

constexpr int openingChannel = 1;
constexpr int firstServoChannel = 2;
constexpr int secondServoChannel = 3;

constexpr LiveControl positionControls[] = {{restingPositionCv, Caption::endPosition1, true},
                                            {otherPositionCv, Caption::endPosition2, true},
                                            {travelTimeCv, Caption::travelTime, false}};
constexpr LiveControl timeControls[] = {{returnTimeCv, Caption::returnTime, true},
                                        {sweepTimeCv, Caption::sweepTime, true}};

struct WindowServos {
    int fitted; // bits of CV112: one of them is enough
    TextView name;
};

WindowServos servosOf(LiveWindow window)
{
    switch (window) {
    case LiveWindow::firstServo:
        return {firstServoFitted, u"1"};
    case LiveWindow::secondServo:
        return {secondServoFitted, u"2"};
    case LiveWindow::bothServos:
    case LiveWindow::times:
        break;
    }
    return {firstServoFitted | secondServoFitted, u"1, 2"};
}

constexpr std::array servoChannels = {firstServoChannel, secondServoChannel};

} // namespace

// The times are tried from the position that the servo returns from.
LiveSetup::LiveSetup(LiveWindow window, const CvTable& table)
    : window_(window),
      opening_(table.value(window == LiveWindow::times ? otherPositionCv : restingPositionCv).value_or(0))
{
    for (const LiveControl& control : controls()) {
        const int value = table.value(control.cv).value_or(0);
        values_.push_back({control.cv, value, value});
    }
    triedCv_ = firstTried();
}

std::span<const LiveControl> LiveSetup::controlsOf(LiveWindow window)
{
    if (window == LiveWindow::times)
        return timeControls;
    return positionControls;
}

int LiveSetup::valueOf(int cv) const
{
    return at(cv).now;
}

void LiveSetup::move(int cv, int value)
{
    at(cv).now = value;
    const auto all = controls();
    const auto control =
        std::find_if(all.begin(), all.end(), [cv](const LiveControl& one) { return one.cv == cv; });
    if (control != all.end() && control->followed)
        triedCv_ = cv;
}

std::optional<Text> LiveSetup::clearExcluded(int changed, const LanguageTables& texts)
{
    if (window_ != LiveWindow::times || valueOf(returnTimeCv) == 0 || valueOf(sweepTimeCv) == 0)
        return std::nullopt;
    at(sweepTimeCv).now = 0;
    triedCv_ = returnTimeCv;
    const Message why = changed == sweepTimeCv ? Message::returnTimeExcluded : Message::sweepTimeExcluded;
    return texts.message(why) + Text(lineBreak) + texts.message(Message::sweepTimeCleared);
}

LiveValue LiveSetup::opening() const
{
    return {openingChannel, opening_};
}

std::span<const int> LiveSetup::channels() const
{
    return std::span(servoChannels).first(window_ == LiveWindow::times ? 1 : servoChannels.size());
}

// A servo that is not set up stays in its resting position.
LiveValue LiveSetup::tried(int channel) const
{
    const bool rests = (window_ == LiveWindow::firstServo && channel == secondServoChannel) ||
                       (window_ == LiveWindow::secondServo && channel == firstServoChannel);
    return {channel, rests ? at(restingPositionCv).stored : valueOf(triedCv_)};
}

LiveValue LiveSetup::stored(int channel) const
{
    return {channel, at(firstTried()).stored};
}

WritePlan LiveSetup::plan() const
{
    WritePlan plan;
    for (const Value& value : values_)
        plan.push_back({value.cv, value.now});
    if (window_ == LiveWindow::times)
        std::stable_sort(plan.begin(), plan.end(), [](const PlannedWrite& left, const PlannedWrite& right) {
            return left.value == 0 && right.value != 0;
        });
    return plan;
}

LiveSetup::Value& LiveSetup::at(int cv)
{
    return *std::find_if(values_.begin(), values_.end(), [cv](const Value& value) { return value.cv == cv; });
}

const LiveSetup::Value& LiveSetup::at(int cv) const
{
    return *std::find_if(values_.begin(), values_.end(), [cv](const Value& value) { return value.cv == cv; });
}

// The resting position, or the time that is in use.
int LiveSetup::firstTried() const
{
    if (window_ != LiveWindow::times)
        return restingPositionCv;
    return at(returnTimeCv).stored == 0 && at(sweepTimeCv).stored != 0 ? sweepTimeCv : returnTimeCv;
}

std::optional<Text> servoWithoutPower(LiveWindow window, const CvSet& set, const LanguageTables& texts)
{
    const auto value = set.table.value(fittingsCv);
    const WindowServos servos = servosOf(window);
    if (isReceiver(set.profile.model) || !value || !isUsed(set.table, fittingsCv) ||
        (*value & servos.fitted) != 0)
        return std::nullopt;
    return texts.message(Message::servoWithoutPower, {textFromNumber(*value), Text(servos.name)});
}

} // namespace karvo
