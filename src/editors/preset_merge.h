// Takes the values of preset files into the set on the bench, and shows them in its list.
#pragma once

#include "workbench/workbench.h"

#include <map>

namespace karvo
{

class PresetMerge
{
public:
    // Makes the list anew: what an earlier preset has put into its lines is gone.
    explicit PresetMerge(Workbench& bench);

    // A CV that the list lacks is passed over. The value that comes last counts.
    void take(int cv, int value);

    // How many CVs have another value than before. Their lines show the old value, behind it the new one in
    // brackets, and behind that the mark of a change.
    int finish();

private:
    int showTaken();

    Workbench& bench_;
    Text mark_;
    MainList lines_;            // as before, without their marks
    std::map<int, Text> taken_; // the value before of each CV that was taken
};

} // namespace karvo
