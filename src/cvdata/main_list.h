// The main list: a line per CV, or per speed step, as it stands in the window.
#pragma once

#include "cvdata/cv_table.h"
#include "cvdata/decoder_profile.h"
#include "cvdata/expert_file.h"
#include "program/text.h"

#include <map>
#include <optional>
#include <span>
#include <vector>

namespace karvo
{

struct ListLine {
    Text text;            // label and value, contiguous from the start of the line
    Text name;            // what the CV is called; shown beside the text
    int cv;               // the CV that choosing the line shows; 0 for none
    bool changed = false; // a value of the line is marked as changed, by a word too
    int lastCv = 0;       // of a line that stands for all from `cv` to this one; 0 for every other

    bool standsFor(int number) const { return number == cv || (number > cv && number <= lastCv); }
};

using MainList = std::vector<ListLine>;

// What a list is made of.
struct ListSource {
    const CvTable& table;
    const DecoderProfile& profile;
    std::span<const std::uint8_t> rawReply; // empty in an offline list
    Text speedStepUnit;                     // ten characters behind a speed step's value
    bool decimalComma;
    const std::map<int, ExpertEntry>* expert = nullptr; // expert knowledge to show below its CVs
    Text expertLabel = {};                              // what marks it
    const CvValues* baseline = nullptr;                 // what a CV's value has to differ from to be marked
    Text changedMark = {};                              // the word that marks it, behind two blanks
    Text speedTableName = {};                           // of the line that stands for the whole speed table
};

// One line for every row that the description names, in row order, with the special lines of the decoder's
// kind.
MainList fill_list1(const ListSource& source);

// "CV1  = ", "CV11 = ", "CV100 = ".
Text cvLabel(int cv);

// "  1 = " to " 28 = ".
Text speedStepLabel(int step);

// A speed step as a line, without a mark.
ListLine speedStepLine(const CvTable& table, int step, const Text& value, const Text& unit);

// A speed step's value in a reply that carries the speed table itself: step 1 at position 55, step 28 at
// position 1, counted from 1. Nothing for a reply that is none, such as a whole block.
std::optional<int> speedStepInReply(std::span<const std::uint8_t> reply, int step);

// Whether the model has a speed table: it uses all CVs of one. On receivers some of them are ordinary CVs.
bool hasSpeedTable(const CvTable& table);

// What a CV is called: the first line of its text.
Text nameOfCv(const CvTable& table, int cv);

// The first line whose text starts with this CV's label, or the line that stands for it as a speed step or
// among others; nothing for 0 and for a CV that has no line.
std::optional<std::size_t> positionOf(const MainList& list, int cv);

} // namespace karvo
