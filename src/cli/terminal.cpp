#include "cli/terminal.h"

#include <iostream>
#include <string>

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace karvo
{

namespace
{

bool isTerminal(std::FILE* stream)
{
#ifdef _WIN32
    return _isatty(_fileno(stream)) != 0;
#else
    return isatty(fileno(stream)) != 0;
#endif
}

// A box's lines as lines of a terminal.
Text withPlainLineEnds(const Text& text)
{
    Text plain;
    for (const char16_t character : text) {
        if (character != u'\r')
            plain += character;
    }
    return plain;
}

std::optional<Text> answerTo(const Text& prompt)
{
    if (!isTerminal(stdin))
        return std::nullopt;
    std::fputs(utf8FromText(prompt).c_str(), stderr);
    std::string answer;
    if (!std::getline(std::cin, answer))
        return std::nullopt;
    return textFromUtf8(answer);
}

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

} // namespace

void printLine(std::FILE* stream, TextView text)
{
    std::fputs((utf8FromText(text) + "\n").c_str(), stream);
}

void printLines(std::FILE* stream, const Text& text)
{
    printLine(stream, withPlainLineEnds(text));
}

void TerminalPrompts::message(const Text& text, PromptIcon)
{
    printLines(stderr, text);
}

bool TerminalPrompts::question(const Text& text, QuestionKind kind, ProposedAnswer)
{
    if (answeredYes_.count(kind) != 0)
        return true;
    if (!isTerminal(stdin)) {
        printLine(stderr, withPlainLineEnds(text));
        printLine(stderr,
                  u"Not answered, which counts as No; " + Text(yesOptionOf(kind)) + u" answers with Yes.");
        return false;
    }
    const auto answer = answerTo(withPlainLineEnds(text) + u" [y/n] ");
    return answer && (*answer == u"y" || *answer == u"Y");
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

void TerminalPrompts::endProgram()
{
    ended_ = true;
    endWaits_();
}

TerminalView::TerminalView() : watched_(isTerminal(stderr))
{
}

void TerminalView::showStatus(const Text& text)
{
    status_ = text;
    if (!text.empty())
        printLine(stderr, text);
}

void TerminalView::showProgress(std::size_t done, std::size_t total)
{
    if (!watched_ || (total == 0 && !progressShown_))
        return;
    progressShown_ = total != 0;
    if (total == 0)
        std::fputs("\r\x1b[K", stderr);
    else
        std::fprintf(stderr, "\r%3zu %%", done * 100 / total);
}

} // namespace karvo
