// What a description says of a CV beside its texts: the groups it belongs to, the words of its values, and
// what a value of it stands for (fields 11 to 13, layout in docs/files.md).
#pragma once

#include "cvdata/cv_table.h"
#include "language/text_numbers.h"

#include <optional>
#include <vector>

namespace karvo
{

// In the order in which people are told of them.
enum class CvGroup {
    identification,
    addresses,
    mode,
    driving,
    automatic,
    speedTable,
    braking,
    infrared,
    identity,
    keys,
    outputs,
    equipment,
    lights,
    brightness,
    blueLight,
    bus,
    fire,
    battery,
    servo,
    tacho,
    lane,
    trailer,
    turnout,
    recognition,
    returnTimes,
    reset
};

inline constexpr int cvGroupCount = static_cast<int>(CvGroup::reset) + 1;

Caption captionOf(CvGroup group);

// As in "group=blue-light": in no language.
TextView wordOf(CvGroup group);
std::optional<CvGroup> groupOfWord(TextView word);

// That a CV belongs to a group, or these of its bits alone.
struct GroupShare {
    CvGroup group;
    int bits = 255;
};

struct NamedValue {
    int value; // 0 to 255
    Text word;
};

// What 1 stands for: 5 ms, 1/10 s, 20 mV, or 1/255 of the whole, which has no name.
struct CvUnit {
    int numerator = 1;
    int denominator = 1;
    Text name;

    bool isTime() const { return name == u"ms" || name == u"s"; }
    bool isShare() const { return name.empty(); }
};

struct CvKind {
    std::vector<GroupShare> groups;   // the main one first
    std::vector<NamedValue> choices;  // ascending; empty where the CV is no choice
    std::vector<NamedValue> specials; // values of a number with a word of their own: 0 is "off"
    std::optional<CvUnit> unit;

    // Of a choice or a special value; empty without one.
    TextView wordOfValue(int value) const;
};

// Parts that are not sound are left out: they cost the person a word, not the CV.
CvKind kindOf(const CvTable& table, int cv);

inline constexpr TextView markPrefix = u"mark=";

// Whether any CV of the table has something of this program's own in one of the fields 11 to 14. What means
// something else to others does not count.
bool carries(const CvTable& table, Column column);

// "0.5 s", "3 s", "1 min 20 s".
Text timeText(long long milliseconds, bool decimalComma);

// "50 ms", "3 s", "1 min 20 s", "3.30 V", "78 %": so many of the unit.
Text inUnit(int value, const CvUnit& unit, bool decimalComma);

// What a value stands for: its word, else so many of the unit, else the number itself.
Text meaningOf(int value, const CvKind& kind, bool decimalComma);

} // namespace karvo
