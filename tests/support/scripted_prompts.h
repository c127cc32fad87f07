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
    ~ScriptedPrompts() override { EXPECT_TRUE(answers_.empty()) << "an answer was never asked for"; }

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
    void endProgram() override { journal_.push_back("end program"); }

private:
    Journal& journal_;
    std::deque<bool> answers_;
};

} // namespace karvo::test
