// A workbench on which the steps of a text file in tests/data are carried out.
#pragma once

#include "support/write_bench.h"

namespace karvo::test
{

// A step has a name, and words behind it; it shows a text.
class StepBench : public WriteBench
{
public:
    // What a step shows when vehicle and person answer so.
    std::string carryOut(const std::string& step, const std::string& answers)
    {
        const auto nameEnd = std::min(step.find(' '), step.size());
        const auto known = steps.find(step.substr(0, nameEnd));
        if (known == steps.end())
            return "no such step";
        script(answers);
        const auto shown = known->second(step.substr(std::min(nameEnd + 1, step.size())));
        EXPECT_FALSE(line.hasUnusedReplies());
        return shown;
    }

protected:
    using Step = std::function<std::string(const std::string&)>;

    // A step that shows nothing.
    void prepare(const std::string& name, const std::function<void(const std::string&)>& act)
    {
        steps[name] = [this, act](const std::string& words) {
            act(words);
            journal.clear();
            return std::string();
        };
    }
    std::map<std::string, Step> steps;
};

// Of a file whose lines are a step, what vehicle and person answer to it, and what it shows. "case" begins
// anew with what it shows; the other steps follow each other.
template <typename Steps>
void followSteps(const std::string& file)
{
    std::optional<Steps> steps;
    std::string name;
    for (const auto& [step, answers, shown] : casesOf<3>(file)) {
        if (step == "case") {
            name = answers;
            steps.reset();
            steps.emplace();
        } else {
            EXPECT_EQ(portable(steps->carryOut(step, answers)), shown)
                << name << ": " << step << "|" << answers;
        }
    }
}

} // namespace karvo::test
