#include "cvdata/cv_details.h"

namespace karvo
{

namespace
{

std::array<Text, 8> bitTexts(const Text& field)
{
    std::array<Text, 8> bits;
    std::size_t start = 0;
    for (Text& bit : bits) {
        const auto end = field.find(lineBreak, start);
        bit = field.substr(start, end - start);
        if (end == Text::npos)
            break;
        start = end + lineBreak.size();
    }
    return bits;
}

} // namespace

CvDetails cvDetails(const CvTable& table, int cv)
{
    CvDetails details;
    if (cv < 1 || cv > CvTable::lastRow)
        return details;
    details.number = cv;
    details.value = table.at(cv, Column::value);
    details.factoryValue = table.at(cv, Column::factoryValue);
    details.lowerLimit = table.at(cv, Column::lowerLimit);
    details.upperLimit = table.at(cv, Column::upperLimit);
    details.name = table.at(cv, Column::text);
    details.explanation = table.at(cv, Column::explanation);
    details.values = table.at(cv, Column::values);
    details.advice = table.at(cv, Column::advice);
    details.bits = bitTexts(table.at(cv, Column::bits));
    details.isSetOfSwitches = !table.at(cv, Column::bits).empty();
    return details;
}

int valueOfBits(const std::array<bool, 8>& bits)
{
    int value = 0;
    for (std::size_t i = 0; i < bits.size(); ++i)
        value += bits[i] ? bitWeight(i) : 0;
    return value;
}

std::array<bool, 8> bitsOfValue(int value)
{
    std::array<bool, 8> bits{};
    for (std::size_t i = 0; i < bits.size(); ++i)
        bits[i] = (value & bitWeight(i)) != 0;
    return bits;
}

} // namespace karvo
