// The values of a memory image on their way into the list on the bench.
#pragma once

#include "firmware/memory_image.h"
#include "workbench/write_plan.h"

namespace karvo
{

// A CV of which list and image hold something else.
struct ImageChange {
    int cv;
    int value;                 // the image's
    std::optional<int> inList; // nothing: the list has no value for it
    WriteSkip skip;            // why the list keeps its value, as a write from the list would leave it out

    bool isTaken() const { return skip == WriteSkip::none; }
};

// Ascending by CV. Only CVs that the list describes and the image holds.
std::vector<ImageChange> changesByImage(const CvSet& set, const MemoryImage& image);

// The question before an image is taken that may be of another layout or decoder: CV1, CV7, CV8 or CV29 are
// outside their limits, or CV7 or CV8, which the decoder alone decides, are others than the list's. Empty
// where nothing is unusual.
Text unusualImageQuestion(const CvTable& table, const MemoryImage& image, const LanguageTables& texts);

// Takes the values, which then count as changed as typed ones do. How many; none while the line is busy.
std::size_t takeImage(Workbench& bench, const std::vector<ImageChange>& changes);

} // namespace karvo
