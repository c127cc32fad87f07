#include "simulator/lacking_cvs.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace karvo::sim
{

namespace
{

constexpr std::array f3 = {9, 26, 27, 56, 162, 163, 164};
constexpr std::array f4 = {26, 163, 164};
constexpr std::array v1 = {9, 26, 27, 56, 112, 160, 161, 162, 163, 164};
constexpr std::array until2008First = {49, 50, 51, 58, 63, 65, 69};
constexpr std::array until2008Second = {49, 50, 51, 58, 65};
constexpr std::array from2009 = {49, 50, 51, 58};
constexpr std::array kv04WithoutDate = {50, 55, 56, 58, 154};
constexpr std::array kv04Of2010 = {55, 56, 58};
constexpr std::array kv05 = {55, 56};
constexpr std::array withoutBatterySwitch = {56};
constexpr std::array trailerV1 = {69, 113, 114};
constexpr std::array fixedRange = {80};

struct Lacking {
    std::string_view decoder;
    std::span<const int> cvs;
};

constexpr Lacking table[] = {
    {"kv07-f3", f3},
    {"kv07-f4", f4},
    {"kv07-v1", v1},
    {"kv08-f3", f3},
    {"kv08-f4", f4},
    {"kv08-v1", v1},
    {"kv04", from2009},
    {"kv04-2008", until2008First},
    {"kv04-2008-v1", until2008Second},
    {"kv04-2008-v2", from2009},
    {"kv04-f4", kv04WithoutDate},
    {"kv04-mai10", kv04Of2010},
    {"kv05", kv05},
    {"kv05-f5", withoutBatterySwitch},
    {"kv05-mai10", withoutBatterySwitch},
    {"kv06", withoutBatterySwitch},
    {"kv06-f6", withoutBatterySwitch},
    {"trailer-v1", trailerV1},
    {"receiver-2014", fixedRange},
    {"receiver-2015", fixedRange},
    {"receiver-2016", fixedRange},
};

} // namespace

std::span<const int> lackingCvs(std::string_view decoder)
{
    const auto* const found = std::find_if(std::begin(table), std::end(table),
                                           [&](const Lacking& one) { return one.decoder == decoder; });
    return found == std::end(table) ? std::span<const int>() : found->cvs;
}

} // namespace karvo::sim
