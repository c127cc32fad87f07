// A sheet of vehicle functions as it stands in its file (layout in docs/files.md): which CVs, or bits of CVs,
// stand in which section, for which models, with the words that no description has. What it comes to for the
// list on the bench is a SheetView.
#pragma once

#include "cvdata/cv_change.h"
#include "cvdata/cv_table.h"
#include "cvdata/decoder_profile.h"
#include "language/language_code.h"
#include "program/text.h"

#include <array>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace karvo
{

// A text in some of the languages, or in one for all.
class SheetWords
{
public:
    void take(LanguageCode language, Text text)
    {
        texts_[static_cast<std::size_t>(language)] = std::move(text);
    }
    void takeForAll(Text text) { texts_[0] = std::move(text); }

    // In the language, else for all, else in the first that has it; empty without any.
    const Text& in(LanguageCode language) const;
    bool empty() const;

private:
    std::array<Text, 6> texts_; // 0: for all languages
};

// A model of which the sheet, or a part of it, is for; with a build where only that one is meant.
struct SheetModel {
    Model model;
    std::optional<Generation> build; // tacho or laneControl

    bool operator==(const SheetModel&) const = default;
};

// "KV07", "KV08 LC", "KV08 Tacho"; nothing for anything else.
std::optional<SheetModel> sheetModelOf(TextView word);
Text wordOf(const SheetModel& model);

// Where none is named each model counts.
bool isFor(std::span<const SheetModel> models, const DecoderProfile& profile);

struct SheetField {
    enum class Kind {
        cv,          // what the description makes of it: switches, a choice, a number
        bits,        // these switches of a CV, with their words
        namedSwitch, // one switch, with the name of its CV
        number,      // one number over several CVs, the high part first
        address,     // the first or second address, in the form in use; the address window changes it
        shown,       // only to be looked at
        measured,    // the voltage of the last read
        set          // gets its value by the sheet, whatever it holds
    };
    Kind kind = Kind::cv;
    std::vector<int> cvs;          // one, but for a number; the first of the short form of an address: 1 or 3
    int bits = 255;                // of bits and namedSwitch
    std::optional<int> value = {}; // of set; nothing: its factory value
    std::vector<std::vector<CvChange>> onlyWhere =
        {}; // of set: where the list holds all values of one of these
    std::vector<SheetModel> models = {};
    SheetWords words = {}; // in place of the description's name
};

struct SheetNote {
    std::vector<SheetModel> models = {};
    SheetWords words = {};
};

struct SheetSection {
    std::vector<SheetModel> models = {};
    SheetWords words = {}; // its title; may be empty
    std::vector<SheetNote> notes = {};
    std::vector<SheetField> fields = {};
};

// Values that belong together: a variant of the ready-made lists, a rhythm, what a preset of the menu fills
// in.
struct SheetValueSet {
    std::vector<CvChange> values = {};
    std::string item = {}; // of the menu, without "mnu_"; empty for a variant and for a choice in the sheet
    std::vector<SheetModel> models = {};
    SheetWords words = {};
};

// What settings come to, in a sentence: "Drives with {2}, at most {5}." The numbers in braces are CVs, in
// their place stands what their value means.
struct SheetSentence {
    std::vector<int> cvs = {}; // those that it tells of: they need no line of their own then
    std::vector<std::vector<CvChange>> onlyWhere = {}; // as of a field
    std::vector<CvChange> unless = {};                 // not where the list holds all of these
    std::vector<SheetModel> models = {};
    SheetWords words = {};
};

struct FunctionSheet {
    std::string item;    // of the menu, without "mnu_"
    std::string window;  // the objectName of its window; the item where the file names none
    std::string picture; // what is drawn above the fields (forms/picture.h); empty without one
    std::vector<SheetModel> models;
    SheetWords words; // the title
    std::vector<SheetNote> notes;
    std::vector<SheetSection> sections;
    std::vector<SheetValueSet> variants;  // shown as 1, 2, ...; the program stores 0, 1, ...
    std::vector<SheetValueSet> readyMade; // other sets of values
    std::vector<SheetSentence> sentences;

    // Of a set of values, the menu item that fills them in; nothing for one that it does not have.
    const SheetValueSet* readyMadeOf(std::string_view item) const;
};

// Whether the list holds all of these values; true where there are none.
bool holdsAll(std::span<const CvChange> values, const CvTable& table);

// Whether it holds all values of one of the alternatives; true where there are none.
bool holdsOneOf(std::span<const std::vector<CvChange>> alternatives, const CvTable& table);

} // namespace karvo
