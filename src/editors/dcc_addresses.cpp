#include "editors/dcc_addresses.h"

#include "cvdata/dcc_address.h"
#include "program/binary_text.h"

#include <algorithm>

namespace karvo
{

namespace
{

constexpr int firstShortCv = 1;
constexpr int secondShortCv = 3;
constexpr int configurationCv = 29;
constexpr int longAddresses = 32; // CV29 as a whole
constexpr int modeCv = 21;
constexpr int secondAddressWeight = 2;

struct LongCvs {
    int high;
    int low;
};
constexpr LongCvs firstLong = {17, 18};
constexpr LongCvs secondLong = {15, 16};

bool answersToSecond(int mode)
{
    const Text digits = binaryText(static_cast<unsigned>(mode));
    return digits[digits.size() - 2] == u'1';
}

int modeOf(const CvTable& table)
{
    return std::max(0, table.value(modeCv).value_or(0));
}

Text addressOf(const CvTable& table, AddressForm form, int shortCv, const LongCvs& cvs)
{
    if (form == AddressForm::shortForm)
        return table.at(shortCv, Column::value);
    const auto high = table.value(cvs.high);
    const auto low = table.value(cvs.low);
    return high && low ? textFromNumber(longAddress(*high, *low)) : Text();
}

std::optional<int> within(TextView typed, int lowest, int highest)
{
    const auto number = numberFromText(trimmed(typed));
    return number && *number >= lowest && *number <= highest ? number : std::nullopt;
}

void addLong(WritePlan& plan, int address, const LongCvs& cvs)
{
    plan.push_back({cvs.high, address / 256});
    plan.push_back({cvs.low, address % 256});
}

void addSwitches(WritePlan& plan, const TypedAddresses& addresses, const CvTable& table)
{
    plan.push_back({configurationCv, addresses.form == AddressForm::longForm ? longAddresses : 0});
    const int mode = modeOf(table);
    const int change = (addresses.secondAnswers ? 1 : 0) - (answersToSecond(mode) ? 1 : 0);
    plan.push_back({modeCv, mode + change * secondAddressWeight});
}

std::variant<WritePlan, Message> planOfShort(const TypedAddresses& addresses, const CvTable& table)
{
    constexpr int lowest = 1;
    constexpr int highest = 126;
    const auto first = within(addresses.first, lowest, highest);
    if (!first)
        return Message::firstShortAddressWrong;
    const auto second = within(addresses.second, lowest, highest);
    if (!second)
        return Message::secondShortAddressWrong;
    WritePlan plan;
    if (addresses.writeFirst)
        plan.push_back({firstShortCv, *first});
    if (addresses.writeSecond)
        plan.push_back({secondShortCv, *second});
    addSwitches(plan, addresses, table);
    return plan;
}

std::variant<WritePlan, Message> planOfLong(const TypedAddresses& addresses, const CvTable& table)
{
    constexpr int lowest = 128;
    constexpr int highest = 9999;
    const auto first = within(addresses.first, lowest, highest);
    if (!first)
        return Message::firstLongAddressWrong;
    const bool hasSecond = !trimmed(addresses.second).empty();
    const auto second = within(addresses.second, lowest, highest);
    if (hasSecond && !second)
        return Message::secondLongAddressWrong;
    WritePlan plan;
    if (addresses.writeFirst)
        addLong(plan, *first, firstLong);
    if (addresses.writeSecond && second)
        addLong(plan, *second, secondLong);
    addSwitches(plan, addresses, table);
    return plan;
}

} // namespace

TypedAddresses addressesOf(const CvTable& table)
{
    TypedAddresses addresses;
    addresses.form = usesLongAddresses(table) ? AddressForm::longForm : AddressForm::shortForm;
    addresses.first = firstAddressOf(table, addresses.form);
    addresses.second = secondAddressOf(table, addresses.form);
    addresses.secondAnswers = answersToSecond(modeOf(table));
    return addresses;
}

Text firstAddressOf(const CvTable& table, AddressForm form)
{
    return addressOf(table, form, firstShortCv, firstLong);
}

Text secondAddressOf(const CvTable& table, AddressForm form)
{
    return addressOf(table, form, secondShortCv, secondLong);
}

std::variant<WritePlan, Message> planOfAddresses(const TypedAddresses& addresses, const CvTable& table)
{
    return addresses.form == AddressForm::shortForm ? planOfShort(addresses, table)
                                                    : planOfLong(addresses, table);
}

Text plannedLine(const PlannedWrite& write)
{
    return u"CV" + textFromNumber(write.cv) + u" = " + textFromNumber(write.value);
}

} // namespace karvo
