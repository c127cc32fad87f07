// All that is shown of one CV beside the list.
#pragma once

#include "cvdata/cv_table.h"

#include <array>

namespace karvo
{

// The weight of bit box i (0 to 7).
constexpr int bitWeight(std::size_t index)
{
    return 1 << index;
}

struct CvDetails {
    int number = 0; // 0 when no CV is chosen; everything else is empty then
    Text value;
    Text factoryValue;
    Text lowerLimit;
    Text upperLimit;
    Text name;
    Text explanation;
    Text values;
    Text advice;
    std::array<Text, 8> bits; // what each bit switches, weight 1 first; empty for a bit without a name
    bool isSetOfSwitches = false;

    // Whether the bit means something; none of a number does.
    bool isLive(std::size_t bit) const { return isSetOfSwitches && !bits[bit].empty(); }
};

// For a row that the description does not name: nothing but its number.
CvDetails cvDetails(const CvTable& table, int cv);

// The sum of the weights of the bits that are set.
int valueOfBits(const std::array<bool, 8>& bits);

// The bits of a value from 0 to 255.
std::array<bool, 8> bitsOfValue(int value);

} // namespace karvo
