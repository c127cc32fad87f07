#include "editors/curve_questions.h"

#include <functional>

namespace karvo
{

namespace
{

using Check = std::function<std::optional<Text>(std::optional<int>)>;

class Questions
{
public:
    Questions(const CurveRequest& request, Prompts& prompts, const LanguageTables& texts)
        : request_(request), prompts_(prompts), texts_(texts)
    {
    }

    std::optional<CurvePoints> ask()
    {
        CurvePoints points{request_.shown.front(), request_.shown.back(), {}};
        if (!keptEndsAreSound(points))
            return std::nullopt;
        const auto questions = request_.questions;
        const auto step = [&](Message prompt, int shown, const Check& check, auto& value) {
            const auto typed = askUntilSound(prompt, shown, check);
            if (typed)
                value = *typed;
            return typed.has_value();
        };
        if (questions != CurveQuestions::lastOnly &&
            !step(Message::firstStepPrompt, points.first, firstCheck(points), points.first))
            return std::nullopt;
        if (questions == CurveQuestions::firstMiddleAndLast &&
            !step(Message::middleStepPrompt, request_.shown[middleStep - 1], middleCheck(points),
                  points.middle))
            return std::nullopt;
        if (questions != CurveQuestions::firstOnly &&
            !step(Message::lastStepPrompt, points.last, lastCheck(points), points.last))
            return std::nullopt;
        return points;
    }

private:
    // An end that is not asked for can not be mended by any answer.
    bool keptEndsAreSound(const CurvePoints& points)
    {
        std::optional<Text> refusal;
        if (request_.questions == CurveQuestions::lastOnly)
            refusal = refusalOfFirstStep(points.first, request_.highest, texts_);
        else if (request_.questions == CurveQuestions::firstOnly)
            refusal = refusalOfLastStep(points.last, {lowestSpeed, 0, {}}, request_.highest, texts_);
        if (refusal)
            prompts_.message(*refusal, PromptIcon::warning);
        return !refusal;
    }

    Check firstCheck(const CurvePoints& points) const
    {
        return [this, kept = points.last](std::optional<int> typed) {
            auto refusal = refusalOfFirstStep(typed, request_.highest, texts_);
            if (refusal || request_.questions != CurveQuestions::firstOnly)
                return refusal;
            return refusalOfLastStep(kept, {*typed, 0, {}}, request_.highest, texts_);
        };
    }

    Check middleCheck(const CurvePoints& points) const
    {
        return [this, first = points.first](std::optional<int> typed) {
            return refusalOfMiddleStep(typed, first, request_.highest, texts_);
        };
    }

    Check lastCheck(const CurvePoints& points) const
    {
        return [this, points](std::optional<int> typed) {
            return refusalOfLastStep(typed, points, request_.highest, texts_);
        };
    }

    std::optional<int> askUntilSound(Message prompt, int shown, const Check& check)
    {
        Text proposed = textFromNumber(shown);
        for (;;) {
            const auto answer =
                prompts_.input(texts_.message(Message::generatorTitle), texts_.message(prompt), proposed);
            if (!answer || trimmed(*answer).empty())
                return std::nullopt;
            const auto typed = numberFromText(*answer);
            const auto refusal = check(typed);
            if (!refusal)
                return typed;
            prompts_.message(*refusal, PromptIcon::warning);
            proposed = *answer;
        }
    }

    const CurveRequest& request_;
    Prompts& prompts_;
    const LanguageTables& texts_;
};

} // namespace

std::optional<CurvePoints> askForCurve(const CurveRequest& request, Prompts& prompts,
                                       const LanguageTables& texts)
{
    return Questions(request, prompts, texts).ask();
}

} // namespace karvo
