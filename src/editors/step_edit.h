// The speed table while a person works on it: what is shown, what was taken over last, and what differs.
#pragma once

#include "cvdata/speed_cvs.h"
#include "editors/speed_step_file.h"
#include "workbench/workbench.h"

#include <array>
#include <optional>
#include <span>
#include <vector>

namespace karvo
{

// Step 1 is CV97; a CV without a value counts as 0.
SpeedTable speedTableOf(const CvTable& table);

// The table in a decoder's memory: step n is the byte of CV 98 - n.
SpeedTable speedTableOf(const CvImage& image);

// A message, under this heading, that names those of the steps (1 to 28) whose values in the table are beyond
// what the list or the editor allows. Nothing where there are none.
void tellStepsOutside(Workbench& bench, const Text& heading, const std::vector<int>& steps);

class StepEdit
{
public:
    explicit StepEdit(const SpeedTable& values) : shown_(values), taken_(values) {}

    const SpeedTable& shown() const { return shown_; }
    const SpeedTable& taken() const { return taken_; }
    const std::optional<BasedSpeedTable>& pendingBase() const { return base_; }

    // `step`: 1 to 28.
    void setStep(int step, int value);

    // All steps, from a generator. At the next take-over each counts as changed.
    void fill(const SpeedTable& values);

    // All steps from a table that has a base and a top speed: these come with them at the next take-over.
    void fill(const BasedSpeedTable& table);

    // The values of the last take-over again.
    void reset();

    // Whether something would be lost without a take-over.
    bool isChanged() const { return shown_ != taken_ || base_; }

    // Puts what was changed into the table of the set on the bench and its list, which is then made anew.
    // Names the steps whose values are outside their limits. How many steps were taken over.
    int Uebernehmen(Workbench& bench);

private:
    void takeBase(CvTable& table);

    SpeedTable shown_;
    SpeedTable taken_;
    std::array<bool, speedStepCount> changed_{};
    bool generated_ = false; // a generator ran since the last take-over
    std::optional<BasedSpeedTable> base_;
};

} // namespace karvo
