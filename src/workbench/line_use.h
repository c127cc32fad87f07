// Who has the line has it alone.
#pragma once

#include "workbench/workbench.h"

namespace karvo
{

enum class LineTask {
    brief,
    lasting // a write of many CVs or a transfer of firmware: the computer does not go to sleep meanwhile
};

// Takes the line for its own lifetime, unless an operation has it already: then isGranted() is false, and the
// operation that asked is not carried out. A stop that was asked for before does not concern who takes it.
class LineUse
{
public:
    explicit LineUse(Workbench& bench, LineTask task = LineTask::brief);
    ~LineUse();
    LineUse(const LineUse&) = delete;
    LineUse& operator=(const LineUse&) = delete;

    bool isGranted() const { return granted_; }

private:
    Workbench& bench_;
    bool granted_;
    bool keepsAwake_;
};

} // namespace karvo
