#include "cli/write_output.h"

#include "cli/stable_words.h"
#include "cvdata/main_list.h"
#include "platform/text_conversion.h"

#include <QJsonArray>

namespace karvo
{

namespace
{

Text remarkOn(const PreviewRow& row, const LanguageTables& texts)
{
    return texts.caption(row.isWritten() ? Caption::willBeWritten : captionOfSkip(row.skip));
}

// "CV48 = 12 -> 5  will be written  Name".
Text previewLine(const PreviewRow& row, const LanguageTables& texts)
{
    return cvLabel(row.cv) + heldText(row.held) + u" -> " + textFromNumber(row.value) + u"  " +
           remarkOn(row, texts) + u"  " + row.name;
}

QJsonValue heldOrNull(std::optional<int> held)
{
    return held ? QJsonValue(*held) : QJsonValue();
}

QJsonObject objectOf(const PreviewRow& row, const LanguageTables& texts)
{
    return {{QStringLiteral("cv"), row.cv},
            {QStringLiteral("name"), toQString(row.name)},
            {QStringLiteral("old"), heldOrNull(row.held)},
            {QStringLiteral("new"), row.value},
            {QStringLiteral("written"), row.isWritten()},
            {QStringLiteral("code"), row.isWritten() ? QLatin1StringView("willBeWritten") : wordOf(row.skip)},
            {QStringLiteral("remark"), toQString(remarkOn(row, texts))}};
}

// What ended a write before the first CV is what kept each of them from the decoder.
WriteOutcome withReason(WriteOutcome outcome, WriteManyEnd end)
{
    if (outcome.end || outcome.skip != WriteSkip::none)
        return outcome;
    if (end == WriteManyEnd::unknownDecoder)
        outcome.end = WriteEnd::unknownDecoder;
    if (end == WriteManyEnd::noReply)
        outcome.end = WriteEnd::noReply;
    return outcome;
}

QLatin1StringView wordOf(const WriteOutcome& outcome)
{
    if (outcome.end)
        return karvo::wordOf(*outcome.end);
    return outcome.skip == WriteSkip::none ? QLatin1StringView("notReached") : karvo::wordOf(outcome.skip);
}

QJsonObject objectOf(const WriteOutcome& outcome, const LanguageTables& texts)
{
    return {{QStringLiteral("cv"), outcome.cv},
            {QStringLiteral("name"), toQString(outcome.name)},
            {QStringLiteral("old"), heldOrNull(outcome.held)},
            {QStringLiteral("value"), outcome.value},
            {QStringLiteral("written"), outcome.end == WriteEnd::written},
            {QStringLiteral("code"), wordOf(outcome)},
            {QStringLiteral("outcome"), toQString(outcomeText(outcome, texts))}};
}

} // namespace

void printPreview(Output& output, const WritePreview& preview, const ProgramState& state)
{
    const LanguageTables& texts = state.texts;
    QJsonArray rows;
    for (const PreviewRow& row : preview.rows) {
        rows.append(objectOf(row, texts));
        output.line(previewLine(row, texts));
    }
    const auto written = static_cast<int>(preview.countOfWritten());
    const auto leftOut = static_cast<int>(preview.countOfLeftOut());
    output.put(QStringLiteral("cvs"), rows);
    output.put(QStringLiteral("toBeWritten"), written);
    output.put(QStringLiteral("leftOut"), leftOut);
    output.put(QStringLiteral("otherAddressesOrNumbers"), preview.otherVehicle);
    output.put(QStringLiteral("lowBattery"), preview.lowBattery.has_value());
    output.line(texts.caption(Caption::previewCounts, {textFromNumber(written), textFromNumber(leftOut)}));
    if (preview.otherVehicle)
        output.line(texts.caption(Caption::previewOtherVehicle));
    if (preview.lowBattery)
        output.line(lowBatteryText(preview, state));
}

void printOutcomes(Output& output, const WriteReport& report, const LanguageTables& texts)
{
    QJsonArray outcomes;
    for (const WriteOutcome& reported : report.outcomes) {
        const auto outcome = withReason(reported, report.end);
        outcomes.append(objectOf(outcome, texts));
        output.line(outcomeLine(outcome, texts));
    }
    output.put(QStringLiteral("end"), karvo::wordOf(report.end));
    output.put(QStringLiteral("cvs"), outcomes);
    if (!report.backup.empty())
        output.put(QStringLiteral("backup"), pathToQString(report.backup));
    if (!report.hasRun())
        return;
    const auto summary = summaryOf(report, texts);
    for (std::size_t i = 1; i < summary.size(); ++i) // the first one has been said as the status of the run
        output.say(summary[i]);
}

} // namespace karvo
