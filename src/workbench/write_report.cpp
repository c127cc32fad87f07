#include "workbench/write_report.h"

#include "cvdata/main_list.h"

#include <algorithm>

namespace karvo
{

namespace
{

Caption captionOfSkip(WriteSkip skip)
{
    switch (skip) {
    case WriteSkip::notUsed:
        return Caption::outcomeNotUsed;
    case WriteSkip::decodersOwn:
        return Caption::outcomeDecodersOwn;
    case WriteSkip::reset:
        return Caption::outcomeReset;
    case WriteSkip::outsideLimits:
        return Caption::outcomeOutsideLimits;
    case WriteSkip::otherSteps:
        return Caption::outcomeOtherSteps;
    case WriteSkip::addressUnconfirmed:
        return Caption::outcomeAddressUnconfirmed;
    case WriteSkip::none:
        break;
    }
    return Caption::outcomeNotReached;
}

Caption captionOfEnd(WriteEnd end)
{
    switch (end) {
    case WriteEnd::written:
        return Caption::outcomeWritten;
    case WriteEnd::unconfirmed:
        return Caption::outcomeUnconfirmed;
    case WriteEnd::refusedByUser:
        return Caption::outcomeDeclined;
    case WriteEnd::guarded:
        return Caption::outcomeFirmware;
    case WriteEnd::noReply:
        return Caption::outcomeNoReply;
    case WriteEnd::unacknowledged:
        return Caption::outcomeUnacknowledged;
    case WriteEnd::unknownDecoder:
        return Caption::outcomeUnknownDecoder;
    case WriteEnd::otherDecoder:
        return Caption::outcomeOtherDecoder;
    case WriteEnd::commandRefused:
        return Caption::outcomeNotReady;
    case WriteEnd::frameRefused:
        return Caption::outcomeRefused;
    case WriteEnd::ended:
        break;
    }
    return Caption::outcomeNotReached;
}

// What is never written this way is missed by nobody; a value that was left out for what it is may be.
bool isWanted(const WriteOutcome& outcome)
{
    switch (outcome.skip) {
    case WriteSkip::decodersOwn:
    case WriteSkip::reset:
        return false;
    case WriteSkip::notUsed:
        return isServoCv(outcome.cv);
    case WriteSkip::none:
    case WriteSkip::outsideLimits:
    case WriteSkip::otherSteps:
    case WriteSkip::addressUnconfirmed:
        break;
    }
    return true;
}

bool isClean(const WriteOutcome& outcome)
{
    return !isWanted(outcome) || outcome.end == WriteEnd::written || outcome.end == WriteEnd::unconfirmed;
}

} // namespace

std::size_t WriteReport::countOf(WriteEnd wanted) const
{
    return static_cast<std::size_t>(
        std::count_if(outcomes.begin(), outcomes.end(),
                      [&](const WriteOutcome& outcome) { return outcome.end == wanted; }));
}

std::size_t WriteReport::countOfWanted() const
{
    return static_cast<std::size_t>(std::count_if(outcomes.begin(), outcomes.end(), isWanted));
}

bool WriteReport::isClean() const
{
    return (end == WriteManyEnd::finished || end == WriteManyEnd::nothingToWrite) &&
           std::all_of(outcomes.begin(), outcomes.end(),
                       [](const WriteOutcome& outcome) { return karvo::isClean(outcome); });
}

Text outcomeText(const WriteOutcome& outcome, const LanguageTables& texts)
{
    return texts.caption(outcome.end ? captionOfEnd(*outcome.end) : captionOfSkip(outcome.skip));
}

Text outcomeLine(const WriteOutcome& outcome, const LanguageTables& texts)
{
    return cvLabel(outcome.cv) + textFromNumber(outcome.value) + u"  " + outcomeText(outcome, texts);
}

} // namespace karvo
