#include "cvdata/dcc_address.h"

#include "program/binary_text.h"

namespace karvo
{

namespace
{

Text addressFrom(const CvTable& table, int shortCv, int highCv, int lowCv)
{
    if (!usesLongAddresses(table))
        return table.at(shortCv, Column::value);
    const auto high = table.value(highCv);
    const auto low = table.value(lowCv);
    return high && low ? textFromNumber(longAddress(*high, *low)) : Text();
}

} // namespace

bool usesLongAddresses(const CvTable& table)
{
    const auto configuration = table.value(29);
    if (!configuration || *configuration < 0)
        return false;
    const Text digits = binaryText(static_cast<unsigned>(*configuration));
    constexpr std::size_t longAddressBit = 5;
    return digits[digits.size() - 1 - longAddressBit] == u'1';
}

bool answersToSecondAddress(const CvTable& table)
{
    return (table.value(21).value_or(0) & secondAddressWeight) != 0;
}

Text firstAddress(const CvTable& table)
{
    return addressFrom(table, 1, 17, 18);
}

Text secondAddress(const CvTable& table)
{
    return addressFrom(table, 3, 15, 16);
}

} // namespace karvo
