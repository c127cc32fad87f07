#include "cvdata/dcc_address.h"

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
    const int configuration = table.value(configurationCv).value_or(0);
    return configuration > 0 && (configuration & longAddressWeight) != 0;
}

bool answersToSecondAddress(const CvTable& table)
{
    return (table.value(modeCv).value_or(0) & secondAddressWeight) != 0;
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
