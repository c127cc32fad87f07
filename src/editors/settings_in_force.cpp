#include "editors/describe_settings.h"

#include "cvdata/cv_use.h"

#include <algorithm>

namespace karvo
{

namespace
{

enum class Of { vehicles, receivers, all };

// The CVs act only where another one has one of these values, or one of these bits.
struct Condition {
    Of of;
    int first;
    int last;
    int cv;
    enum class Holds { bits, noneOf, oneOf, notZero } holds;
    int what; // bits; or values as bits: 1 << value
};

constexpr int longAddresses = 32;

constexpr Condition conditions[] = {
    {Of::all, 1, 1, 29, Condition::Holds::noneOf, longAddresses},
    {Of::all, 3, 3, 29, Condition::Holds::noneOf, longAddresses},
    {Of::all, 15, 18, 29, Condition::Holds::bits, longAddresses},
    {Of::vehicles, 3, 3, 21, Condition::Holds::bits, 2},
    {Of::vehicles, 15, 16, 21, Condition::Holds::bits, 2},
    {Of::vehicles, 20, 20, 21, Condition::Holds::bits, 2},
    {Of::vehicles, 22, 22, 102, Condition::Holds::notZero, 0},
    {Of::vehicles, 103, 107, 102, Condition::Holds::notZero, 0},
    {Of::vehicles, 23, 23, 108, Condition::Holds::notZero, 0},
    {Of::vehicles, 109, 111, 108, Condition::Holds::notZero, 0},
    {Of::vehicles, 24, 24, 100, Condition::Holds::bits, 4},
    {Of::vehicles, 48, 48, 21, Condition::Holds::bits, 16},
    {Of::vehicles, 52, 54, 21, Condition::Holds::bits, 16},
    {Of::vehicles, 56, 56, 57, Condition::Holds::bits, 32},
    {Of::vehicles, 57, 57, 21, Condition::Holds::bits, 1},
    {Of::vehicles, 58, 58, 57, Condition::Holds::bits, 2},
    {Of::vehicles, 153, 153, 21, Condition::Holds::bits, 32},
    {Of::vehicles, 162, 162, 27, Condition::Holds::bits, 4},
    {Of::receivers, 10, 10, 9, Condition::Holds::oneOf, 1 << 1},
    {Of::receivers, 11, 14, 9, Condition::Holds::oneOf, 1 << 2},
    {Of::receivers, 172, 176, 9, Condition::Holds::oneOf, 1 << 2},
    {Of::receivers, 50, 57, 9, Condition::Holds::oneOf, 1 << 0},
    {Of::receivers, 60, 67, 9, Condition::Holds::oneOf, 1 << 0},
    {Of::receivers, 90, 91, 9, Condition::Holds::oneOf, 1 << 0},
    {Of::receivers, 77, 78, 9, Condition::Holds::oneOf, 1 << 0 | 1 << 1},
    {Of::receivers, 31, 34, 30, Condition::Holds::oneOf, 1 << 1 | 1 << 3},
    {Of::receivers, 35, 42, 30, Condition::Holds::oneOf, 1 << 2 | 1 << 3},
    {Of::receivers, 43, 45, 30, Condition::Holds::oneOf, 1 << 4},
};

bool isOf(const Condition& condition, Model model)
{
    return condition.of == Of::all || isReceiver(model) == (condition.of == Of::receivers);
}

// What the model lacks holds nothing back, nor does a value that nobody knows.
bool holds(const Condition& condition, const CvTable& table)
{
    const auto value = table.value(condition.cv);
    if (!isUsed(table, condition.cv) || !isCvValue(value))
        return true;
    switch (condition.holds) {
    case Condition::Holds::bits:
        return (*value & condition.what) != 0;
    case Condition::Holds::noneOf:
        return (*value & condition.what) == 0;
    case Condition::Holds::oneOf:
        return *value < 31 && (condition.what & 1 << *value) != 0;
    case Condition::Holds::notZero:
        break;
    }
    return *value != 0;
}

} // namespace

bool isInForce(const CvTable& table, Model model, int cv)
{
    return std::all_of(std::begin(conditions), std::end(conditions), [&](const Condition& condition) {
        const bool isAbout = cv >= condition.first && cv <= condition.last && isOf(condition, model);
        return !isAbout || holds(condition, table);
    });
}

} // namespace karvo
