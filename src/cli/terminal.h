// The logic's prompts and view on a terminal.
#pragma once

#include "cli/output.h"
#include "language/language_tables.h"
#include "platform/interrupt_notice.h"
#include "program/prompts.h"
#include "program/view.h"

#include <functional>
#include <set>

namespace karvo
{

class TerminalPrompts : public Prompts
{
public:
    // `answeredYes`: the kinds of questions that have been answered with Yes beforehand.
    TerminalPrompts(Output& output, const LanguageTables& texts, const InterruptNotice& interrupt,
                    std::function<void()> endWaits, std::set<QuestionKind> answeredYes)
        : output_(output),
          texts_(texts),
          interrupt_(interrupt),
          endWaits_(std::move(endWaits)),
          answeredYes_(std::move(answeredYes))
    {
    }

    void message(const Text& text, PromptIcon /*icon*/) override { output_.say(text); }
    void error(const Text& text) override { output_.say(text); }
    // Answered at a terminal with the first letter of Yes, or the whole word, in the language in use; Ctrl-C
    // is No. Off a terminal the question is printed, and the answer is No.
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
    void endProgram() override { endWaits_(); }

private:
    // Nothing off a terminal, and after Ctrl-C.
    std::optional<Text> answerTo(const Text& prompt) const;
    bool isYes(const Text& answer) const;

    Output& output_;
    const LanguageTables& texts_;
    const InterruptNotice& interrupt_;
    std::function<void()> endWaits_;
    std::set<QuestionKind> answeredYes_;
};

// Shows progress only where somebody watches.
class TerminalView : public View
{
public:
    explicit TerminalView(Output& output);

    void showStatus(const Text& text) override;
    Text statusText() const override { return status_; }
    void showProgress(std::size_t done, std::size_t total) override;
    void showWriteProgress(int, std::size_t) override {} // the status names each CV
    void showHourglass(bool) override {}
    void showLineBusy(bool) override {}
    void listChanged() override {}

private:
    Output& output_;
    bool watched_;
    Text status_;
};

} // namespace karvo
