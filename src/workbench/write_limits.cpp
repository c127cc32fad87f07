#include "workbench/write_limits.h"

#include "cvdata/cv_use.h"
#include "cvdata/receiver_releases.h"
#include "workbench/steps_outside.h"
#include "workbench/write_guard.h"

#include <utility>

namespace karvo
{

namespace
{

constexpr std::size_t mostLines = 12; // a box has room for so many

Caption captionOf(WriteSkip reason)
{
    if (reason == WriteSkip::notUsed)
        return Caption::valueUnused;
    return reason == WriteSkip::decodersOwn ? Caption::valueReadOnly : Caption::valueBeyondLimits;
}

Text lineOf(const WriteOutcome& outcome, const CvTable& table, const LanguageTables& texts)
{
    const auto limits = limitsOf(table, outcome.cv);
    return texts.caption(captionOf(limitsAgainst(table, outcome.cv, outcome.value)),
                         {u"CV" + textFromNumber(outcome.cv), textFromNumber(outcome.value),
                          textFromNumber(limits.lower), textFromNumber(limits.upper)});
}

std::vector<Text> linesOf(const std::vector<WriteOutcome>& beyond, const CvSet& set,
                          const LanguageTables& texts)
{
    std::vector<Text> lines;
    std::vector<StepOutside> steps;
    for (const WriteOutcome& outcome : beyond) {
        if (const auto step = stepOutside(set.table, outcome.cv, outcome.value))
            steps.push_back(*step);
        else
            lines.push_back(lineOf(outcome, set.table, texts));
    }
    if (!steps.empty())
        lines.push_back(stepsOutsideText(std::move(steps), texts));
    return lines;
}

Text questionAbout(const std::vector<Text>& lines, const LanguageTables& texts)
{
    if (lines.empty())
        return {};
    Text question = texts.message(Message::limitsQuestion);
    const std::size_t shown = lines.size() <= mostLines ? lines.size() : mostLines - 1;
    for (std::size_t i = 0; i < shown; ++i)
        question += Text(lineBreak) + lines[i];
    if (shown != lines.size()) {
        question +=
            Text(lineBreak) + texts.caption(Caption::furtherValues,
                                            {textFromNumber(static_cast<long long>(lines.size() - shown))});
    }
    return question + Text(lineBreak) + texts.message(Message::limitsQuestionLast);
}

bool mayWrite(Prompts& prompts, const Text& question)
{
    return question.empty() || prompts.question(question, QuestionKind::limits);
}

} // namespace

Text questionBeyondLimits(const ProgramState& state, const std::vector<WriteOutcome>& outcomes)
{
    std::vector<WriteOutcome> beyond;
    for (const WriteOutcome& outcome : outcomes) {
        if (isDue(outcome) && limitsAgainst(state.set.table, outcome.cv, outcome.value) != WriteSkip::none)
            beyond.push_back(outcome);
    }
    return questionAbout(linesOf(beyond, state.set, state.texts), state.texts);
}

bool mayWriteBeyondLimits(Prompts& prompts, const ProgramState& state,
                          const std::vector<WriteOutcome>& outcomes)
{
    return mayWrite(prompts, questionBeyondLimits(state, outcomes));
}

bool mayWriteWhatItLacks(Prompts& prompts, const ProgramState& state,
                         const std::vector<WriteOutcome>& outcomes, const DecoderProfile& vehicle)
{
    std::vector<Text> lines;
    for (const WriteOutcome& outcome : outcomes) {
        if (isDue(outcome) && lacksCv(vehicle, state.set.table, outcome.cv))
            lines.push_back(state.texts.caption(
                Caption::valueUnused, {u"CV" + textFromNumber(outcome.cv), textFromNumber(outcome.value)}));
    }
    return mayWrite(prompts, questionAbout(lines, state.texts));
}

} // namespace karvo
