// The logic's prompts and view on a terminal: results on standard output, everything else on standard error.
#pragma once

#include "program/prompts.h"
#include "program/view.h"

#include <cstdio>
#include <functional>
#include <set>

namespace karvo
{

class TerminalPrompts : public Prompts
{
public:
    // `answeredYes`: the kinds of questions that have been answered with Yes beforehand.
    TerminalPrompts(std::function<void()> endWaits, std::set<QuestionKind> answeredYes)
        : endWaits_(std::move(endWaits)), answeredYes_(std::move(answeredYes))
    {
    }

    void message(const Text& text, PromptIcon icon) override;
    void error(const Text& text) override { message(text, PromptIcon::warning); }
    // Answered at a terminal with y. Off a terminal the question is printed, and the answer is No.
    bool question(const Text& text, QuestionKind kind = QuestionKind::usual,
                  ProposedAnswer proposed = ProposedAnswer::no) override;
    std::optional<Text> input(const Text& title, const Text& prompt, const Text& initial) override;
    // The current one: on the command line an option says which.
    std::optional<std::size_t> choice(const Text& title, const Text& prompt, const std::vector<Text>& options,
                                      std::size_t current) override;
    // On the command line the arguments name the files: nothing is asked.
    std::optional<std::filesystem::path> openFile(const FileRequest&) override { return std::nullopt; }
    std::vector<std::filesystem::path> openFiles(const FileRequest&) override { return {}; }
    std::optional<std::filesystem::path> saveFile(const FileRequest&) override { return std::nullopt; }
    // What is asked for with --yes may cost changes that were not saved.
    SaveChoice saveChanges(const Text& text) override
    {
        return question(text) ? SaveChoice::discard : SaveChoice::cancel;
    }
    void endProgram() override;

    bool programEnded() const { return ended_; }

private:
    std::function<void()> endWaits_;
    std::set<QuestionKind> answeredYes_;
    bool ended_ = false;
};

// Shows progress on a line of its own, and only where somebody watches.
class TerminalView : public View
{
public:
    TerminalView();

    void showStatus(const Text& text) override;
    Text statusText() const override { return status_; }
    void showProgress(std::size_t done, std::size_t total) override;
    void showWriteProgress(int, std::size_t) override {} // the status names each CV
    void showHourglass(bool) override {}
    void showLineBusy(bool) override {}
    void listChanged() override {}

private:
    bool watched_;
    bool progressShown_ = false;
    Text status_;
};

// One line of text and a line end, as UTF-8.
void printLine(std::FILE* stream, TextView text);

// The same for a text of several lines.
void printLines(std::FILE* stream, const Text& text);

} // namespace karvo
