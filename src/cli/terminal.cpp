#include "cli/terminal.h"

#include "platform/console.h"

namespace karvo
{

namespace
{

TextView yesOptionOf(QuestionKind kind)
{
    switch (kind) {
    case QuestionKind::limits:
        return u"--force limits";
    case QuestionKind::vehicle:
        return u"--force vehicle";
    case QuestionKind::backup:
        return u"--force backup";
    case QuestionKind::usual:
        break;
    }
    return u"--yes";
}

Text firstLetter(const Text& word)
{
    return lowerCase(word.substr(0, 1));
}

} // namespace

bool TerminalPrompts::isYes(const Text& answer) const
{
    const Text typed = lowerCase(trimmed(answer));
    const Text yes = texts_.caption(Caption::yesButton);
    return !typed.empty() && (typed == firstLetter(yes) || typed == lowerCase(yes));
}

bool TerminalPrompts::question(const Text& text, QuestionKind kind, ProposedAnswer)
{
    if (answeredYes_.count(kind) != 0)
        return true;
    output_.say(text);
    if (!isTerminal(StandardStream::in)) {
        output_.say(texts_.message(Message::notAnswered, {Text(yesOptionOf(kind))}));
        return false;
    }
    const Text letters = joined({u"[", firstLetter(texts_.caption(Caption::yesButton)), u"/",
                                 firstLetter(texts_.caption(Caption::noButton)), u"] "});
    const auto answer = answerTo(letters);
    return answer && isYes(*answer);
}

std::optional<Text> TerminalPrompts::answerTo(const Text& prompt) const
{
    if (!isTerminal(StandardStream::in))
        return std::nullopt;
    print(StandardStream::err, utf8FromText(prompt));
    if (auto answer = typedLine(interrupt_))
        return answer;
    print(StandardStream::err, "\n");
    return std::nullopt;
}

std::optional<Text> TerminalPrompts::input(const Text& title, const Text& prompt, const Text&)
{
    return answerTo(title + u"\n" + prompt + u" ");
}

std::optional<std::size_t> TerminalPrompts::choice(const Text&, const Text&, const std::vector<Text>&,
                                                   std::size_t current)
{
    return current;
}

TerminalView::TerminalView(Output& output) : output_(output), watched_(isTerminal(StandardStream::err))
{
}

void TerminalView::showStatus(const Text& text)
{
    status_ = text;
    if (!text.empty())
        output_.remark(text);
}

void TerminalView::showProgress(std::size_t done, std::size_t total)
{
    if (watched_)
        output_.showPercent(total == 0 ? std::nullopt : std::optional<std::size_t>(done * 100 / total));
}

} // namespace karvo
