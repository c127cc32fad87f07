// The values of an open function sheet: a copy that the person works on. The list and the vehicle learn of it
// when he says so.
#pragma once

#include "editors/sheet_view.h"
#include "workbench/workbench.h"
#include "workbench/write_plan.h"

namespace karvo
{

// What became of pasted text.
struct SheetPaste {
    bool isUnderstood = false;      // else nothing was taken
    std::vector<int> taken{};       // CVs that hold the pasted value now
    std::vector<int> notHere{};     // CVs that the sheet does not have
    std::vector<CvChange> beyond{}; // values that the model does not allow
};

class SheetValues
{
public:
    // What the sheet sets is set already; what it opens with is the list's otherwise.
    SheetValues(const SheetView& view, const CvSet& set);

    // Nothing where the list has none for the CV.
    std::optional<int> value(int cv) const { return at(cv).now; }
    std::optional<int> factory(int cv) const { return at(cv).factory; }
    bool bit(int cv, int weight) const { return (value(cv).value_or(0) & weight) != 0; }

    // Of a field; of a long number all of it. Nothing where a CV of it has none.
    std::optional<int> value(const SheetViewField& field) const;

    // False for a CV that the sheet does not edit and for a value outside its limits: then nothing changes.
    bool setValue(int cv, int value);
    bool setValue(const SheetViewField& field, int value);
    bool setBit(int cv, int weight, bool on);

    // All values of a set that the sheet has; a value of another variant that this one does not name goes
    // back to the factory's.
    void fill(const SheetViewValues& values, std::span<const SheetViewValues> variants);

    // Whose values all stand in the sheet; nothing when none does.
    std::optional<std::size_t> filledWith(std::span<const SheetViewValues> sets) const;

    // Whether there is a field that the person can change.
    bool hasEdited() const;

    void setFactoryValues(); // of all that it edits; a CV of which only some bits are shown keeps the others
    void setBack();          // to what it opened with

    // Whether the person has changed anything: what closing would lose.
    bool isTouched() const;

    // Whether a field differs from the vehicle as far as it is known, else from what the list held first.
    bool differs(const SheetViewField& field) const;
    bool isFactory(const SheetViewField& field) const;

    // What taking over would change in the list; ascending.
    std::vector<CvChange> changes() const;

    // What writing would write: all of the sheet that the vehicle, as far as it is known, does not hold, in
    // the order of writing.
    WritePlan plan(const CvSet& set) const;

    // "CV102=30 CV103=10": all that the sheet edits or sets, ascending.
    Text asText() const;
    SheetPaste paste(TextView text);

private:
    struct Entry {
        std::optional<int> list;  // when the sheet opened
        std::optional<int> start; // the same with what the sheet sets
        std::optional<int> now;
        std::optional<int> held; // by the vehicle, or the list at first
        std::optional<int> factory;
        ValueLimits limits;
        int shownBits = 0; // 255 for a whole CV
        bool isEdited = false;
        bool isHere = false;
    };

    Entry& at(int cv) { return entries_[static_cast<std::size_t>(cv)]; }
    const Entry& at(int cv) const { return entries_[static_cast<std::size_t>(cv)]; }
    void add(const SheetViewField& field, const CvSet& set);
    template <typename Condition>
    std::vector<CvChange> valuesWhere(const Condition& condition) const;

    std::array<Entry, CvTable::lastRow + 1> entries_;
};

// Takes the values into the list, where they count as changed, and makes it anew. How many changed; nothing
// while an operation has the line.
std::optional<std::size_t> takeIntoList(Workbench& bench, std::span<const CvChange> changes);

// What the person is told of a paste; empty when all of it was taken.
Text pasteText(const SheetPaste& paste, const LanguageTables& texts);

} // namespace karvo
