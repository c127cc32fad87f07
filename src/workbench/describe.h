// Loads a description file and makes the CV table and the main list from it.
#pragma once

#include "cvdata/description_file.h"
#include "workbench/workbench.h"

#include <optional>
#include <string>

namespace karvo
{

// A description file with the texts in the language in use; where the file that would have them is missing,
// its own, after a message. Nothing, after a message, when it can not be read or is none. What the firmware
// of `profile` lacks is unused in it; where its date is not known, the advice says from which one on there is
// a CV.
std::optional<Description> loadDescription(Workbench& bench, const std::string& fileName,
                                           const DecoderProfile& profile = {});

// Says in the advice on the CVs of a table, where it does not yet, which firmware they need.
void addFirmwareRemarks(CvTable& table, const LanguageTables& texts);

// Replaces the words of the set on the bench by those of a description; the values, and the lines they came
// with, stay.
void takeWords(Workbench& bench, const Description& description, const std::string& fileName);

// What the decoder is called: message 299 for the KV04 until December 2008, else the name of the model.
Text typeText(const DecoderProfile& profile, const LanguageTables& texts);

// Replaces the description of the set on the bench. The values, and whatever else does not come from the
// file, stay.
void takeDescription(Workbench& bench, Description description, const std::string& fileName);

// The values of a decoder's block into the rows that the description names.
void takeValues(CvTable& table, const CvImage& image);

// Notes the expert file that belongs to the set and, in expert mode, takes its lines. A file that can not be
// read is shown; the set is then without expert knowledge.
void takeExpertFile(Workbench& bench, const std::string& fileName);

// Makes the list anew from the table, keeps what is unsaved in it safe and tells the view.
void fillList(Workbench& bench);

// Says that a file can not be opened.
void showCannotOpen(Workbench& bench, const std::filesystem::path& path);

// Once in a run, naming the file and the first line, when something in the file was left out.
void reportFaults(Workbench& bench, const std::string& fileName, const std::vector<DescriptionFault>& faults);

// Empties the list, the table and the fields; the decoder that was identified stays known.
void clearDisplay(Workbench& bench);

} // namespace karvo
