// Prompts answered by a script: an unexpected question and an unused answer fail the test.
#pragma once

#include "program/prompts.h"
#include "support/journal.h"

#include <gtest/gtest.h>

#include <deque>
#include <utility>

namespace karvo::test
{

class ScriptedPrompts : public Prompts
{
    using Path = std::filesystem::path;

public:
    explicit ScriptedPrompts(Journal& journal) : journal_(journal) {}
    ~ScriptedPrompts() override
    {
        EXPECT_TRUE(answers_.empty() && typed_.empty() && choices_.empty() && files_.empty() &&
                    saveChoices_.empty())
            << "an answer was never asked for";
    }

    // What is answered next; nothing cancels.
    void answer(bool yes) { answers_.push_back(yes); }
    void type(const Text& text) { typed_.emplace_back(text); }
    void choose(std::optional<std::size_t> place) { choices_.push_back(place); }
    void chooseFile(std::optional<Path> path) { files_.push_back(std::move(path)); }
    void answerSaveChanges(SaveChoice choice) { saveChoices_.push_back(choice); }

    // Of the last question.
    QuestionKind lastKind = QuestionKind::usual;

    void message(const Text& text, PromptIcon) override
    {
        journal_.push_back("message " + utf8FromText(text));
    }
    void error(const Text& text) override { journal_.push_back("error " + utf8FromText(text)); }
    bool question(const Text& text, QuestionKind kind, ProposedAnswer proposed) override
    {
        lastKind = kind;
        return next(answers_,
                    "question " + utf8FromText(text) + (proposed == ProposedAnswer::yes ? " [yes]" : ""));
    }
    std::optional<Text> input(const Text& title, const Text&, const Text&) override
    {
        return next(typed_, "input " + utf8FromText(title));
    }
    std::optional<std::size_t> choice(const Text& title, const Text& prompt, const std::vector<Text>& options,
                                      std::size_t current) override
    {
        std::string entry = "choice " + utf8FromText(title) + ": " + utf8FromText(prompt);
        for (std::size_t i = 0; i < options.size(); ++i)
            entry += (i == current ? " *" : " ") + utf8FromText(options[i]);
        return next(choices_, entry);
    }
    std::optional<Path> openFile(const FileRequest& request) override { return nextFile("open", request); }
    std::vector<Path> openFiles(const FileRequest& request) override
    {
        const auto chosen = nextFile("open some", request);
        return chosen ? std::vector{*chosen} : std::vector<Path>();
    }
    std::optional<Path> saveFile(const FileRequest& request) override { return nextFile("save", request); }
    SaveChoice saveChanges(const Text& text) override
    {
        return next(saveChoices_, "save changes " + utf8FromText(text), SaveChoice::cancel);
    }
    void endProgram() override { journal_.push_back("end program"); }

private:
    template <typename Answer>
    Answer next(std::deque<Answer>& answers, const std::string& asked, Answer otherwise = {})
    {
        journal_.push_back(asked);
        if (answers.empty()) {
            ADD_FAILURE() << "unexpected " << asked;
            return otherwise;
        }
        otherwise = std::move(answers.front());
        answers.pop_front();
        return otherwise;
    }
    std::optional<Path> nextFile(const std::string& what, const FileRequest& request)
    {
        auto entry = what + " " + utf8FromText(request.filter) + " in " + request.folder.string();
        if (request.other)
            entry += " or " + utf8FromText(request.other->filter) + " in " + request.other->folder.string();
        return next(files_, entry + ": " + utf8FromText(request.name));
    }

    Journal& journal_;
    std::deque<bool> answers_;
    std::deque<std::optional<Text>> typed_;
    std::deque<std::optional<Path>> files_;
    std::deque<SaveChoice> saveChoices_;
    std::deque<std::optional<std::size_t>> choices_;
};

} // namespace karvo::test
