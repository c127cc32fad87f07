// A CV set from what was loaded: a description gives it its rows and words, a decoder's block its values.
#pragma once

#include "cvdata/cv_set.h"
#include "cvdata/description_library.h"
#include "link/link.h"

namespace karvo
{

// The description's own values, with nothing of what was there before. The description has a content.
CvSet setOf(const DecoderProfile& profile, LibraryDescription description);

// The values of a decoder's block into the rows that the description names.
void valuesInto(CvTable& table, const CvImage& image);

// Another description of the same CVs, such as that of another language: the values, and whatever else does
// not come from the file, stay.
void describeAgain(CvSet& set, LibraryDescription description);

// The words alone: the lines that the values came with stay too.
void takeWords(CvSet& set, const LibraryDescription& description);

// The words of one row for another.
void takeTexts(CvTable& table, int row, const CvTable& other, int otherRow);

// What is wrong with its files is added to what is known of the others.
void takeKnowledge(CvSet& set, ExpertKnowledge knowledge, std::vector<LibraryFault>& faults);

} // namespace karvo
