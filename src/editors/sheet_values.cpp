#include "editors/sheet_values.h"

#include "cvdata/changes.h"
#include "editors/editor_gate.h"
#include "workbench/put_on_bench.h"

#include <algorithm>

namespace karvo
{

namespace
{

constexpr int wholeCv = 255;

// What the set's values are changes of: the vehicle's when it was read, else the list's own.
std::optional<int> heldValue(const CvSet& set, int cv)
{
    return set.baseline ? numberFromText((*set.baseline)[static_cast<std::size_t>(cv)]) : set.table.value(cv);
}

int bitsOf(const SheetViewField& field)
{
    if (field.kind != SheetViewField::Kind::switches)
        return wholeCv;
    int bits = 0;
    for (const SheetSwitch& one : field.switches)
        bits |= one.weight;
    return bits;
}

// A number as the values of its CVs, the high part first.
std::vector<CvChange> partsOf(int value, const std::vector<int>& cvs)
{
    std::vector<CvChange> parts(cvs.size());
    for (std::size_t i = cvs.size(); i-- > 0; value /= 256)
        parts[i] = {cvs[i], value % 256};
    return parts;
}

bool holds(const SheetValues& values, std::span<const CvChange> wanted)
{
    return std::all_of(wanted.begin(), wanted.end(),
                       [&](const CvChange& one) { return values.value(one.cv) == one.value; });
}

bool names(const SheetViewValues& values, int cv)
{
    return std::any_of(values.values.begin(), values.values.end(),
                       [cv](const CvChange& one) { return one.cv == cv; });
}

} // namespace

SheetValues::SheetValues(const SheetView& view, const CvSet& set)
{
    for (const SheetViewSection& section : view.sections) {
        for (const SheetViewField& field : section.fields) {
            if (field.isEdited() || field.kind == SheetViewField::Kind::set)
                add(field, set);
        }
    }
}

void SheetValues::add(const SheetViewField& field, const CvSet& set)
{
    for (const int cv : field.cvs) {
        Entry& entry = at(cv);
        const auto value = set.table.value(cv);
        entry.list = isCvValue(value) ? value : std::nullopt;
        entry.held = heldValue(set, cv);
        entry.factory = numberFromText(set.table.at(cv, Column::factoryValue));
        entry.limits = limitsOf(set.table, cv);
        entry.shownBits |= bitsOf(field);
        entry.isEdited = field.isEdited();
        entry.isHere = true;
        entry.start = field.setTo ? field.setTo : entry.list;
        entry.now = entry.start;
    }
}

std::optional<int> SheetValues::value(const SheetViewField& field) const
{
    int number = 0;
    for (const int cv : field.cvs) {
        const auto part = value(cv);
        if (!part)
            return std::nullopt;
        number = number * 256 + *part;
    }
    return number;
}

bool SheetValues::setValue(int cv, int value)
{
    if (cv < 1 || cv > CvTable::lastRow || !at(cv).isEdited || !at(cv).limits.allow(value))
        return false;
    at(cv).now = value;
    return true;
}

bool SheetValues::setValue(const SheetViewField& field, int value)
{
    if (value < field.lower || value > field.upper)
        return false;
    const auto parts = partsOf(value, field.cvs);
    const bool areAllowed = std::all_of(parts.begin(), parts.end(), [&](const CvChange& part) {
        return at(part.cv).isEdited && at(part.cv).limits.allow(part.value);
    });
    if (!areAllowed)
        return false;
    for (const CvChange& part : parts)
        at(part.cv).now = part.value;
    return true;
}

bool SheetValues::setBit(int cv, int weight, bool on)
{
    const int old = value(cv).value_or(0);
    return setValue(cv, on ? old | weight : old & ~weight);
}

void SheetValues::fill(const SheetViewValues& values, std::span<const SheetViewValues> variants)
{
    for (const SheetViewValues& other : variants) {
        for (const CvChange& one : other.values) {
            const auto factory = at(one.cv).factory;
            if (!names(values, one.cv) && value(one.cv) == one.value && factory)
                setValue(one.cv, *factory);
        }
    }
    for (const CvChange& one : values.values)
        setValue(one.cv, one.value);
}

std::optional<std::size_t> SheetValues::filledWith(std::span<const SheetViewValues> sets) const
{
    const auto found = std::find_if(sets.begin(), sets.end(), [&](const SheetViewValues& one) {
        return !one.values.empty() && holds(*this, one.values);
    });
    if (found == sets.end())
        return std::nullopt;
    return static_cast<std::size_t>(found - sets.begin());
}

bool SheetValues::hasEdited() const
{
    return std::any_of(entries_.begin(), entries_.end(), [](const Entry& entry) { return entry.isEdited; });
}

void SheetValues::setFactoryValues()
{
    for (Entry& entry : entries_) {
        if (entry.isEdited && entry.factory)
            entry.now = (entry.now.value_or(0) & ~entry.shownBits) | (*entry.factory & entry.shownBits);
    }
}

void SheetValues::setBack()
{
    for (Entry& entry : entries_)
        entry.now = entry.start;
}

bool SheetValues::isTouched() const
{
    return std::any_of(entries_.begin(), entries_.end(),
                       [](const Entry& entry) { return entry.now != entry.start; });
}

bool SheetValues::differs(const SheetViewField& field) const
{
    const int bits = bitsOf(field);
    return std::any_of(field.cvs.begin(), field.cvs.end(), [&](int cv) {
        const Entry& entry = at(cv);
        const bool isKnown = entry.now && entry.held;
        return isKnown ? ((*entry.now ^ *entry.held) & bits) != 0 : entry.now != entry.held;
    });
}

bool SheetValues::isFactory(const SheetViewField& field) const
{
    const int bits = bitsOf(field);
    return std::all_of(field.cvs.begin(), field.cvs.end(), [&](int cv) {
        const Entry& entry = at(cv);
        return entry.now && entry.factory && ((*entry.now ^ *entry.factory) & bits) == 0;
    });
}

template <typename Condition>
std::vector<CvChange> SheetValues::valuesWhere(const Condition& condition) const
{
    std::vector<CvChange> values;
    for (int cv = 1; cv <= CvTable::lastRow; ++cv) {
        if (at(cv).isHere && at(cv).now && condition(at(cv)))
            values.push_back({cv, *at(cv).now});
    }
    return values;
}

std::vector<CvChange> SheetValues::changes() const
{
    return valuesWhere([](const Entry& entry) { return entry.now != entry.list; });
}

WritePlan SheetValues::plan(const CvSet& set) const
{
    return planOfValues(set, valuesWhere([](const Entry& entry) { return entry.now != entry.held; }));
}

Text SheetValues::asText() const
{
    return textOfChanges(valuesWhere([](const Entry&) { return true; }));
}

SheetPaste SheetValues::paste(TextView text)
{
    SheetPaste result;
    const auto changes = changesFromText(text);
    if (!changes)
        return result;
    result.isUnderstood = true;
    for (const CvChange& change : *changes) {
        if (!at(change.cv).isEdited) {
            if (value(change.cv) != change.value)
                result.notHere.push_back(change.cv);
        } else if (setValue(change.cv, change.value)) {
            result.taken.push_back(change.cv);
        } else {
            result.beyond.push_back(change);
        }
    }
    std::sort(result.notHere.begin(), result.notHere.end());
    return result;
}

std::optional<std::size_t> takeIntoList(Workbench& bench, std::span<const CvChange> changes)
{
    if (bench.state.lineBusy)
        return std::nullopt;
    CvSet& set = bench.state.set;
    std::size_t taken = 0;
    for (const CvChange& change : changes) {
        if (!set.table.describes(change.cv) || set.table.value(change.cv) == change.value)
            continue;
        set.table.setValue(change.cv, change.value);
        noteChange(set);
        ++taken;
    }
    fillList(bench);
    return taken;
}

Text pasteText(const SheetPaste& paste, const LanguageTables& texts)
{
    if (!paste.isUnderstood)
        return texts.message(Message::pasteNotUnderstood);
    Text text;
    if (!paste.notHere.empty())
        text = texts.message(Message::pasteNotHere, {namesOfCvs(paste.notHere)});
    if (!paste.beyond.empty()) {
        text += text.empty() ? TextView() : lineBreak;
        text += texts.message(Message::pasteBeyondLimits, {textOfChanges(paste.beyond)});
    }
    return text;
}

} // namespace karvo
