#include "workbench/write_report.h"

#include "cvdata/dcc_address.h"
#include "cvdata/main_list.h"
#include "program/path_text.h"

#include <algorithm>

namespace karvo
{

namespace
{

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
    case WriteSkip::unticked:
        return false;
    case WriteSkip::notUsed:
        return isServoCv(outcome.cv);
    case WriteSkip::none:
    case WriteSkip::outsideLimits:
    case WriteSkip::otherSteps:
    case WriteSkip::addressUnconfirmed:
    case WriteSkip::withSeries:
        break;
    }
    return true;
}

bool isClean(const WriteOutcome& outcome)
{
    return !isWanted(outcome) || outcome.end == WriteEnd::written || outcome.end == WriteEnd::unconfirmed;
}

bool isStillToWrite(const WriteOutcome& outcome)
{
    if (outcome.skip == WriteSkip::addressUnconfirmed)
        return true; // what it puts to use is still to be written too
    if (outcome.skip != WriteSkip::none)
        return false;
    if (!outcome.end)
        return true;
    switch (*outcome.end) {
    case WriteEnd::written:
    case WriteEnd::unconfirmed:
    case WriteEnd::refusedByUser:
    case WriteEnd::guarded:
        return false;
    case WriteEnd::frameRefused:
        return isAddressCv(outcome.cv) || isServoCv(outcome.cv);
    default:
        return true;
    }
}

Text numberText(std::size_t number)
{
    return textFromNumber(static_cast<long long>(number));
}

void addEnd(std::vector<Text>& lines, WriteManyEnd end, const LanguageTables& texts)
{
    if (end == WriteManyEnd::stoppedByUser)
        lines.push_back(texts.caption(Caption::writeStoppedByUser));
    if (end == WriteManyEnd::stoppedByFault)
        lines.push_back(texts.caption(Caption::writeStoppedByFault));
}

void addLeftOut(std::vector<Text>& lines, const WriteReport& report, const LanguageTables& texts)
{
    std::vector<WriteSkip> skips;
    for (const WriteOutcome& outcome : report.outcomes) {
        if (outcome.skip != WriteSkip::none)
            skips.push_back(outcome.skip);
    }
    if (skips.empty())
        return;
    lines.push_back(texts.caption(Caption::leftOutCount, {numberText(skips.size())}));
    for (Text& reason : reasonsOf(skips, texts))
        lines.push_back(u"    " + std::move(reason));
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

bool WriteReport::hasRun() const
{
    const bool isThrough = end == WriteManyEnd::finished || end == WriteManyEnd::stoppedByUser ||
                           end == WriteManyEnd::stoppedByFault;
    return isThrough && !outcomes.empty();
}

std::vector<int> WriteReport::rest() const
{
    std::vector<int> cvs;
    if (end != WriteManyEnd::stoppedByUser && end != WriteManyEnd::stoppedByFault)
        return cvs;
    for (const WriteOutcome& outcome : outcomes) {
        if (isStillToWrite(outcome))
            cvs.push_back(outcome.cv);
    }
    return cvs;
}

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
    case WriteSkip::withSeries:
        return Caption::outcomeWithSeries;
    case WriteSkip::unticked:
        return Caption::outcomeUnticked;
    case WriteSkip::none:
        break;
    }
    return Caption::outcomeNotReached;
}

Text heldText(std::optional<int> held)
{
    return held ? textFromNumber(*held) : Text(u"---");
}

Text outcomeText(const WriteOutcome& outcome, const LanguageTables& texts)
{
    return texts.caption(outcome.end ? captionOfEnd(*outcome.end) : captionOfSkip(outcome.skip));
}

Text outcomeLine(const WriteOutcome& outcome, const LanguageTables& texts)
{
    return cvLabel(outcome.cv) + textFromNumber(outcome.value) + u"  " + outcomeText(outcome, texts);
}

std::vector<Text> reasonsOf(std::span<const WriteSkip> skips, const LanguageTables& texts)
{
    std::vector<std::pair<WriteSkip, int>> counts;
    for (const WriteSkip skip : skips) {
        const auto known = std::find_if(counts.begin(), counts.end(),
                                        [&](const auto& counted) { return counted.first == skip; });
        if (known == counts.end())
            counts.emplace_back(skip, 1);
        else
            ++known->second;
    }
    std::vector<Text> lines;
    lines.reserve(counts.size());
    for (const auto& [skip, count] : counts)
        lines.push_back(textFromNumber(count) + u" \u00D7 " + texts.caption(captionOfSkip(skip)));
    return lines;
}

std::vector<Text> summaryOf(const WriteReport& report, const LanguageTables& texts)
{
    std::vector<Text> lines{
        texts.caption(Caption::writeSummary,
                      {numberText(report.countOf(WriteEnd::written)), numberText(report.countOfWanted())})};
    addEnd(lines, report.end, texts);
    addLeftOut(lines, report, texts);
    if (!report.addressNotice.empty())
        lines.push_back(report.addressNotice);
    if (!report.backup.empty())
        lines.push_back(texts.caption(Caption::backupFile, {pathText(report.backup)}));
    return lines;
}

Text reportText(const WriteReport& report, const LanguageTables& texts)
{
    Text text;
    for (const Text& line : summaryOf(report, texts))
        text += line + u'\n';
    text += u'\n';
    for (const WriteOutcome& outcome : report.outcomes) {
        text += u"CV" + textFromNumber(outcome.cv) + u'\t' + outcome.name + u'\t' + heldText(outcome.held) +
                u'\t' + textFromNumber(outcome.value) + u'\t' + outcomeText(outcome, texts) + u'\n';
    }
    return text;
}

} // namespace karvo
