#include "firmware/upload_verdict.h"

#include "program/bytes.h"

namespace karvo
{

namespace
{

constexpr std::size_t mostNamed = 6;

Text numberText(std::size_t number)
{
    return textFromNumber(static_cast<long long>(number));
}

Caption wordOf(ReplyVerdict verdict)
{
    switch (verdict) {
    case ReplyVerdict::refused:
        return Caption::replyRefused;
    case ReplyVerdict::damaged:
        return Caption::replyDamaged;
    default:
        return Caption::replyMissing;
    }
}

Text nameOf(const LanguageTables& texts, const UploadStep& step, std::size_t page)
{
    switch (step.message.phase) {
    case UploadPhase::signOn:
        return texts.caption(Caption::messageSignOn);
    case UploadPhase::erase:
        return texts.caption(Caption::messageErase);
    case UploadPhase::pages:
        return texts.caption(Caption::messagePage, {numberText(page)});
    default:
        return texts.caption(Caption::messageProgramming);
    }
}

// "Page 4 (refused), page 5 (refused) and 12 more"; empty when nothing is wrong.
Text notConfirmed(const LanguageTables& texts, const UploadReport& report)
{
    Text list;
    std::size_t found = 0;
    std::size_t page = 0;
    for (const UploadStep& step : report.steps) {
        page += step.isPage() ? 1U : 0U;
        if (!step.message.countsForVerdict || step.isAccepted() || ++found > mostNamed)
            continue;
        list += joined({list.empty() ? u"" : u", ", nameOf(texts, step, page), u" (",
                        texts.caption(wordOf(step.verdict)), u")"});
    }
    if (found > mostNamed)
        list += joined({u" ", texts.caption(Caption::andMore, {numberText(found - mostNamed)})});
    return list;
}

Caption captionOf(EraseState erase)
{
    switch (erase) {
    case EraseState::untouched:
        return Caption::memoryUntouched;
    case EraseState::mayBeErased:
        return Caption::memoryMayBeErased;
    case EraseState::erased:
        break;
    }
    return Caption::memoryErased;
}

Text whatIsWrong(const LanguageTables& texts, const UploadReport& report)
{
    if (!report.anyReply())
        return texts.caption(Caption::uploadNothingAnswered);
    Text text;
    if (const Text list = notConfirmed(texts, report); !list.empty())
        text = joined({texts.caption(Caption::uploadNotConfirmed, {list}), lineBreak});
    return joined({text, texts.caption(Caption::pagesAccepted,
                                       {numberText(report.pagesAccepted()), numberText(report.pages)})});
}

} // namespace

Caption captionOfPhase(UploadPhase phase)
{
    switch (phase) {
    case UploadPhase::signOn:
        return Caption::phaseSignOn;
    case UploadPhase::parameters:
        return Caption::phaseParameters;
    case UploadPhase::settings:
        return Caption::phaseSettings;
    case UploadPhase::fuses:
        return Caption::phaseFuses;
    case UploadPhase::erase:
        return Caption::phaseErase;
    case UploadPhase::pages:
        break;
    }
    return Caption::phasePages;
}

Text uploadVerdict(const LanguageTables& texts, const UploadReport& report)
{
    if (report.steps.empty())
        return {};
    if (report.isAccepted())
        return texts.caption(Caption::uploadAccepted, {numberText(report.pages)});
    Text text;
    if (report.end != UploadEnd::sent)
        text = joined({texts.caption(Caption::uploadStopped), lineBreak});
    const EraseState erase = report.erase();
    text += joined({whatIsWrong(texts, report), lineBreak, texts.caption(captionOf(erase))});
    if (erase != EraseState::untouched)
        text += joined({u" ", texts.caption(Caption::uploadRepeat)});
    return text;
}

Text uploadLog(const LanguageTables& texts, const UploadStep& step)
{
    Text log = u"> " + hexText(step.message.bytes) + Text(lineBreak) + u"< " + hexText(step.reply);
    if (!step.isAccepted())
        log += (step.reply.empty() ? u"(" : u" (") + texts.caption(wordOf(step.verdict)) + u")";
    return log;
}

} // namespace karvo
