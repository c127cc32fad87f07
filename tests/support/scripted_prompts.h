// Prompts answered by a script: an unexpected question and an unused answer fail the test.
#pragma once

#include "program/prompts.h"
#include "support/journal.h"

#include <gtest/gtest.h>

#include <deque>

namespace karvo::test
{

class ScriptedPrompts : public Prompts
{
public:
    explicit ScriptedPrompts(Journal& journal) : journal_(journal) {}
    ~ScriptedPrompts() override
    {
        EXPECT_TRUE(answers_.empty() && typed_.empty() && choices_.empty() && files_.empty() &&
                    saveChoices_.empty())
            << "an answer was never asked for";
    }

    void answer(bool yes) { answers_.push_back(yes); }

    void message(const Text& text, PromptIcon) override
    {
        journal_.push_back("message " + utf8FromText(text));
    }
    void error(const Text& text) override { journal_.push_back("error " + utf8FromText(text)); }
    // Of the last question.
    QuestionKind lastKind = QuestionKind::usual;
    ProposedAnswer lastProposed = ProposedAnswer::no;

    bool question(const Text& text, QuestionKind kind, ProposedAnswer proposed) override
    {
        lastKind = kind;
        lastProposed = proposed;
        journal_.push_back("question " + utf8FromText(text) +
                           (proposed == ProposedAnswer::yes ? " [yes]" : ""));
        if (answers_.empty()) {
            ADD_FAILURE() << "unexpected question: " << utf8FromText(text);
            return false;
        }
        const bool yes = answers_.front();
        answers_.pop_front();
        return yes;
    }
    // What is typed into the next input.
    void type(const Text& text) { typed_.push_back(text); }

    std::optional<Text> input(const Text& title, const Text&, const Text&) override
    {
        journal_.push_back("input " + utf8FromText(title));
        if (typed_.empty()) {
            ADD_FAILURE() << "unexpected input: " << utf8FromText(title);
            return std::nullopt;
        }
        const Text text = typed_.front();
        typed_.pop_front();
        return text;
    }
    // The next choice; nothing cancels it.
    void choose(std::optional<std::size_t> place) { choices_.push_back(place); }

    std::optional<std::size_t> choice(const Text& title, const Text& prompt, const std::vector<Text>& options,
                                      std::size_t current) override
    {
        std::string entry = "choice " + utf8FromText(title) + ": " + utf8FromText(prompt);
        for (std::size_t i = 0; i < options.size(); ++i)
            entry += (i == current ? " *" : " ") + utf8FromText(options[i]);
        journal_.push_back(entry);
        if (choices_.empty()) {
            ADD_FAILURE() << "unexpected " << entry;
            return std::nullopt;
        }
        const auto chosen = choices_.front();
        choices_.pop_front();
        return chosen;
    }
    // The next file that is chosen; nothing cancels the dialog.
    void chooseFile(std::optional<std::filesystem::path> path) { files_.push_back(std::move(path)); }

    std::optional<std::filesystem::path> openFile(const FileRequest& request) override
    {
        return chosenFile("open", request);
    }
    std::vector<std::filesystem::path> openFiles(const FileRequest& request) override
    {
        const auto chosen = chosenFile("open some", request);
        return chosen ? std::vector{*chosen} : std::vector<std::filesystem::path>();
    }
    std::optional<std::filesystem::path> saveFile(const FileRequest& request) override
    {
        return chosenFile("save", request);
    }

    void answerSaveChanges(SaveChoice choice) { saveChoices_.push_back(choice); }
    SaveChoice saveChanges(const Text& text) override
    {
        journal_.push_back("save changes " + utf8FromText(text));
        if (saveChoices_.empty()) {
            ADD_FAILURE() << "unexpected question about changes";
            return SaveChoice::cancel;
        }
        const auto choice = saveChoices_.front();
        saveChoices_.pop_front();
        return choice;
    }
    void endProgram() override { journal_.push_back("end program"); }

private:
    std::optional<std::filesystem::path> chosenFile(const std::string& what, const FileRequest& request)
    {
        auto entry = what + " " + utf8FromText(request.filter) + " in " + request.folder.string();
        if (request.other)
            entry += " or " + utf8FromText(request.other->filter) + " in " + request.other->folder.string();
        entry += ": " + utf8FromText(request.name);
        journal_.push_back(entry);
        if (files_.empty()) {
            ADD_FAILURE() << "unexpected " << entry;
            return std::nullopt;
        }
        auto chosen = std::move(files_.front());
        files_.pop_front();
        return chosen;
    }

    Journal& journal_;
    std::deque<bool> answers_;
    std::deque<Text> typed_;
    std::deque<std::optional<std::filesystem::path>> files_;
    std::deque<SaveChoice> saveChoices_;
    std::deque<std::optional<std::size_t>> choices_;
};

} // namespace karvo::test
