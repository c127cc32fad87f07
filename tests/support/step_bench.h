// A workbench on which the steps of a text file in tests/data are carried out.
#pragma once

#include "support/write_bench.h"

namespace karvo::test
{

// A step has a name, and words behind it; it shows a text.
class StepBench : public WriteBench
{
public:
    Steps steps;

    void checkStepsEnd() { EXPECT_FALSE(line.hasUnusedReplies()); }

protected:
    // A step that shows nothing.
    void prepare(const std::string& name, const std::function<void(const std::string&)>& act)
    {
        steps[name] = [this, act](const std::string& words) {
            act(words);
            journal.clear();
            return std::string();
        };
    }
};

} // namespace karvo::test
