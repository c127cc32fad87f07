// The CV table: what the program knows about the decoder on the bench, as texts by CV number and field.
#pragma once

#include "program/text.h"

#include <optional>
#include <vector>

namespace karvo
{

// The fields of a description line that the program itself reads; the others are carried along unchanged.
enum class Column {
    number = 1,
    value = 2, // decimal text, "0" to "255"; empty when the CV has no value
    text = 3,  // the CV's name; may hold line breaks
    lowerLimit = 4,
    upperLimit = 5,
    factoryValue = 6,
    explanation = 7,
    values = 8, // what the values mean
    advice = 9,
    bits = 10,   // up to eight lines, the bit of weight 1 first; empty for a CV that is no set of switches
    groups = 11, // "group=" and what cv_kind.h knows, as the two that follow
    words = 12,  // "choice=" or "special=": words of single values
    unit = 13,   // "unit=", what 1 stands for
    marks = 14,  // "mark=" and the words that cv_use.h knows, separated by commas
    sharedValue = 15 // a copy of the value, where it belongs to two CVs
};

class CvTable
{
public:
    static constexpr int lastRow = 256;   // the row number is the CV number; row 0 is not used
    static constexpr int lastColumn = 16; // the field number; column 0 is not used

    Text& at(int row, int column)
    {
        Row& fields = rows_[static_cast<std::size_t>(row)];
        if (fields.empty())
            fields.resize(lastColumn + 1);
        return fields[static_cast<std::size_t>(column)];
    }
    const Text& at(int row, int column) const
    {
        static const Text none;
        const Row& fields = rows_[static_cast<std::size_t>(row)];
        return fields.empty() ? none : fields[static_cast<std::size_t>(column)];
    }
    Text& at(int row, Column column) { return at(row, static_cast<int>(column)); }
    const Text& at(int row, Column column) const { return at(row, static_cast<int>(column)); }

    // The current value as a number; nothing when the CV has none.
    std::optional<int> value(int row) const { return numberFromText(at(row, Column::value)); }
    void setValue(int row, int value) { at(row, Column::value) = textFromNumber(value); }

    // Whether the description speaks of this CV.
    bool describes(int row) const { return !at(row, Column::number).empty(); }

    // All CVs that it speaks of, ascending.
    std::vector<int> describedCvs() const
    {
        std::vector<int> cvs;
        for (int row = 1; row <= lastRow; ++row) {
            if (describes(row))
                cvs.push_back(row);
        }
        return cvs;
    }

private:
    using Row = std::vector<Text>;

    // A table of all fields of all rows is 140 KB, and most descriptions speak of part of them: a row that
    // nobody has filled is empty.
    std::vector<Row> rows_ = std::vector<Row>(lastRow + 1);
};

// Whether a CV can hold it: a number from 0 to 255.
constexpr bool isCvValue(std::optional<int> value)
{
    return value && *value >= 0 && *value <= 255;
}

// A value for each CV, as texts; index n holds CV n.
using CvValues = std::array<Text, CvTable::lastRow + 1>;

} // namespace karvo
