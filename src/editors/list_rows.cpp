#include "editors/list_rows.h"

#include "cvdata/speed_cvs.h"
#include "editors/speed_curves.h"

#include <algorithm>

namespace karvo
{

namespace
{

constexpr std::size_t stepLabelLength = 6; // " 28 = "
constexpr std::size_t loadedValueColumn = 24;

bool isDigit(char16_t character)
{
    return character >= u'0' && character <= u'9';
}

int stepOf(const ListLine& line)
{
    for (int step = 1; step <= speedStepCount; ++step) {
        if (line.cv == cvOfSpeedStep(step) && line.text.starts_with(speedStepLabel(step)))
            return step;
    }
    return 0;
}

bool isGroupLine(const ListLine& line)
{
    return line.text.starts_with(u"CV70 - CV97 ");
}

// Where the value of a speed step ends: the unit behind it stays.
std::size_t endOfValue(const ListLine& line)
{
    if (stepOf(line) == 0)
        return line.text.size();
    const auto start = line.text.begin() + static_cast<std::ptrdiff_t>(stepLabelLength);
    return static_cast<std::size_t>(std::find_if_not(start, line.text.end(), isDigit) - line.text.begin());
}

template <typename Condition>
int rowOf(const MainList& list, const Condition& condition)
{
    const auto found = std::find_if(list.begin(), list.end(), condition);
    return found == list.end() ? noListRow : static_cast<int>(found - list.begin()) + 1;
}

// How many blanks stand before the bracket behind a line of this length: the brackets stand below one
// another.
std::size_t blanksBehindStep(std::size_t length)
{
    constexpr std::size_t withOneDigit = 17;
    constexpr std::size_t withTwoDigits = 18;
    if (length == withOneDigit)
        return 9;
    return length == withTwoDigits ? 7 : 6;
}

} // namespace

int listRowOf(const MainList& list, TextView name)
{
    return rowOf(list, [name](const ListLine& line) {
        return line.text.starts_with(name) &&
               (line.text.size() == name.size() || !isDigit(line.text[name.size()]));
    });
}

int listRowOfStep(const MainList& list, int step)
{
    return rowOf(list, [step](const ListLine& line) { return stepOf(line) == step; });
}

void cv_uebernehmen(MainList& list, int row, int value)
{
    if (row < 1 || row > static_cast<int>(list.size()))
        return;
    ListLine& line = list[static_cast<std::size_t>(row) - 1];
    if (isGroupLine(line))
        return;
    const auto end = endOfValue(line);
    const Text behind = line.text.substr(end);
    Text text = line.text.substr(0, end);
    text.erase(text.find_last_not_of(u' ') + 1);
    const Text digits = textFromNumber(value);
    text.erase(text.size() - std::min(text.size(), digits.size()));
    line.text = text + digits + behind;
}

void showLoadedValue(MainList& list, int cv, int value)
{
    const int step = cvOfSpeedStep(cv); // the same rule both ways
    const bool isStep = step >= 1 && step <= speedStepCount;
    const int row = isStep ? listRowOfStep(list, step) : noListRow;
    const int found = row != noListRow ? row : listRowOf(list, u"CV" + textFromNumber(cv));
    if (found == noListRow)
        return;
    ListLine& line = list[static_cast<std::size_t>(found) - 1];
    if (isGroupLine(line))
        return;
    if (row != noListRow)
        line.text += Text(blanksBehindStep(line.text.size()), u' ') + u"[";
    else
        line.text += Text(loadedValueColumn - std::min(loadedValueColumn, line.text.size()), u' ') + u" [";
    line.text += textFromNumber(value) + u"]";
}

} // namespace karvo
