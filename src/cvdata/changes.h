// Which values of the CV set on the bench differ from those that were read, opened or written.
#pragma once

#include "cvdata/cv_set.h"
#include "link/link.h"

#include <vector>

namespace karvo
{

// Whether the value differs from its baseline; as numbers, so that "006" is 6.
bool isChanged(const CvTable& table, const CvValues& baseline, int cv);

// The same for the set; false without a baseline and beyond the table.
bool isChanged(const CvSet& set, int cv);

// Ascending.
std::vector<int> changedCvs(const CvSet& set);

// The values now in the table are what later ones are changes of, nothing is unsaved, and no vehicle of
// another build has been accepted: after a read, and after a list has been opened or shown.
void startUnchanged(CvSet& set);

// What the decoder holds is what the table's values are changes of. A CV without a value in the table is not
// one.
void measureAgainst(CvSet& set, const CvImage& image);

// To be called after a value was changed: the set is unsaved then, unless it was never a file and holds what
// it was read or shown with again.
void noteChange(CvSet& set);

// The decoder holds the table's value now. When it holds all of them, and the set was read and never saved as
// a file, nothing is unsaved: the vehicle has it.
void markWritten(CvSet& set, int cv);

// The baseline's value again. True when it was another. A list file whose values have been taken back counts
// as unsaved: what was saved in between may be what was taken back.
bool takeBack(CvSet& set, int cv);
bool takeBackAll(CvSet& set);

} // namespace karvo
