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
        EXPECT_TRUE(answers_.empty() && choices_.empty()) << "an answer was never asked for";
    }

    void answer(bool yes) { answers_.push_back(yes); }

    void message(const Text& text, PromptIcon) override
    {
        journal_.push_back("message " + utf8FromText(text));
    }
    bool question(const Text& text) override
    {
        journal_.push_back("question " + utf8FromText(text));
        if (answers_.empty()) {
            ADD_FAILURE() << "unexpected question: " << utf8FromText(text);
            return false;
        }
        const bool yes = answers_.front();
        answers_.pop_front();
        return yes;
    }
    std::optional<Text> input(const Text& title, const Text&, const Text&) override
    {
        ADD_FAILURE() << "unexpected input: " << utf8FromText(title);
        return std::nullopt;
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
    void endProgram() override { journal_.push_back("end program"); }

private:
    Journal& journal_;
    std::deque<bool> answers_;
    std::deque<std::optional<std::size_t>> choices_;
};

} // namespace karvo::test
