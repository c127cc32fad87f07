// What a function sheet comes to for the list on the bench: the fields that its model has, with the names,
// limits and words of the description in use.
#pragma once

#include "cvdata/cv_kind.h"
#include "cvdata/cv_set.h"
#include "cvdata/cv_use.h"
#include "editors/function_sheet.h"
#include "language/language_tables.h"

namespace karvo
{

// One bit with a box of its own; `objectName` is "CV60_32".
struct SheetSwitch {
    int cv;
    int weight;
    Text word;
};

struct SheetViewField {
    enum class Kind {
        switches,
        choice,     // one of CvKind::choices
        number,     // with its unit and special values
        time,       // a number in ms or s
        longNumber, // over several CVs, the high part first
        address,    // to be looked at; the address window changes it
        shown,      // to be looked at
        measured,   // the voltage of the last read
        set         // the sheet gives it `setTo`
    };
    Kind kind = Kind::number;
    std::vector<int> cvs{}; // "CV102"; of a long number and an address in long form "CV43_45"
    Text name{};
    Text explanation{}; // help, values and advice of the description, as beside the list
    Text values{};
    Text advice{};
    std::vector<SheetSwitch> switches{};
    CvKind meaning{};
    int lower = 0; // of a long number 0 to 16,777,215
    int upper = 255;
    std::optional<int> factory{}; // of a long number all of it; nothing where nobody knows it
    std::optional<int> setTo{};
    Text shownText{}; // of an address, a voltage and what is only to be looked at

    bool isEdited() const
    {
        return kind == Kind::switches || kind == Kind::choice || kind == Kind::number || kind == Kind::time ||
               kind == Kind::longNumber;
    }
};

struct SheetViewSection {
    Text title{};
    std::vector<Text> notes{};
    std::vector<SheetViewField> fields{};
};

struct SheetViewValues {
    Text name{};
    std::string item{}; // of the menu
    std::vector<CvChange> values{};
};

struct SheetView {
    std::string item;
    std::string window;  // objectName
    std::string picture; // empty without one
    Text title;
    std::vector<Text> notes;
    std::vector<SheetViewSection> sections; // those of which something is left
    std::vector<SheetViewValues> variants;  // with what the model has of them
    std::vector<SheetViewValues> readyMade;
    Text leftOut; // which CVs of the sheet the model lacks, in a line; empty where it has all of them

    const SheetViewValues* readyMadeOf(std::string_view menuItem) const;
};

// Of a list that whyNotOpen() has nothing against.
SheetView viewOf(const FunctionSheet& sheet, const CvSet& set, const LanguageTables& texts,
                 LanguageCode language);

// Why the sheet does not open for this list, as status text and tool tip: no list, another model, or none of
// its CVs in use. Nothing when it opens.
std::optional<Text> whyNotOpen(const FunctionSheet& sheet, const CvSet& set, const LanguageTables& texts);

// "CV102", "CV43_45" for a field, "CV60_32" for a switch.
std::string objectNameOf(const SheetViewField& field);
std::string objectNameOf(const SheetSwitch& one);

} // namespace karvo
