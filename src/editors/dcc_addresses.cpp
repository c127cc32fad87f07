#include "editors/dcc_addresses.h"

#include "cvdata/dcc_address.h"
#include "editors/editor_gate.h"

#include <algorithm>

namespace karvo
{

namespace
{

constexpr int firstShortCv = 1;
constexpr int secondShortCv = 3;

struct LongCvs {
    int high;
    int low;
};
constexpr LongCvs firstLong = {17, 18};
constexpr LongCvs secondLong = {15, 16};

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

// The limits of an address in one of the forms, and what is said beyond them.
struct FormRules {
    int lowest;
    int highest;
    Message firstWrong;
    Message secondWrong;
};

constexpr FormRules shortRules = {1, 126, Message::firstShortAddressWrong, Message::secondShortAddressWrong};
constexpr FormRules longRules = {128, 9999, Message::firstLongAddressWrong, Message::secondLongAddressWrong};

const FormRules& rulesOf(AddressForm form)
{
    return form == AddressForm::longForm ? longRules : shortRules;
}

bool mayLackSecond(const TypedAddresses& addresses)
{
    const TextView typed = trimmed(addresses.second);
    if (typed.empty())
        return !addresses.writeSecond || addresses.form == AddressForm::longForm;
    return !addresses.writeSecond && numberFromText(typed) == 0;
}

void addAddress(WritePlan& plan, AddressForm form, int address, int shortCv, const LongCvs& cvs)
{
    if (form == AddressForm::shortForm) {
        plan.push_back({shortCv, address});
        return;
    }
    plan.push_back({cvs.high, highPartOf(address)});
    plan.push_back({cvs.low, lowPartOf(address)});
}

void addSwitches(WritePlan& plan, const TypedAddresses& addresses, const CvTable& table)
{
    // As a whole: its other switches go off.
    plan.push_back({configurationCv, addresses.form == AddressForm::longForm ? longAddressWeight : 0});
    if (!addresses.secondAnswers)
        return;
    const int mode = std::max(0, table.value(modeCv).value_or(0));
    const int bit = *addresses.secondAnswers ? secondAddressWeight : 0;
    plan.push_back({modeCv, (mode & ~secondAddressWeight) | bit});
}

Text listOf(const WritePlan& plan)
{
    Text list;
    for (const PlannedWrite& write : plan)
        list += (list.empty() ? Text() : u", ") + plannedLine(write);
    return list;
}

} // namespace

TypedAddresses addressesOf(const CvSet& set)
{
    const CvTable& table = set.table;
    TypedAddresses addresses;
    addresses.form = usesLongAddresses(table) ? AddressForm::longForm : AddressForm::shortForm;
    addresses.first = firstAddressOf(table, addresses.form);
    addresses.second = secondAddressOf(table, addresses.form);
    if (dealsWith(Editor::addresses, set, modeCv))
        addresses.secondAnswers = answersToSecondAddress(table);
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
    const FormRules& rules = rulesOf(addresses.form);
    const auto first = within(addresses.first, rules.lowest, rules.highest);
    if (!first)
        return rules.firstWrong;
    const auto second = within(addresses.second, rules.lowest, rules.highest);
    if (!second && !mayLackSecond(addresses))
        return rules.secondWrong;
    WritePlan plan;
    if (addresses.writeFirst)
        addAddress(plan, addresses.form, *first, firstShortCv, firstLong);
    if (addresses.writeSecond && second)
        addAddress(plan, addresses.form, *second, secondShortCv, secondLong);
    addSwitches(plan, addresses, table);
    return plan;
}

std::optional<Text> questionBefore(const TypedAddresses& addresses, const WritePlan& plan,
                                   const LanguageTables& texts)
{
    if (std::none_of(plan.begin(), plan.end(),
                     [](const PlannedWrite& write) { return isAddressPart(write.cv); })) {
        return texts.message(Message::noAddressTicked, {listOf(plan)});
    }
    const auto first = numberFromText(trimmed(addresses.first));
    if (!first || numberFromText(trimmed(addresses.second)) != first)
        return std::nullopt;
    return texts.message(Message::equalAddressesQuestion, {textFromNumber(*first)});
}

Text plannedLine(const PlannedWrite& write)
{
    return u"CV" + textFromNumber(write.cv) + u" = " + textFromNumber(write.value);
}

} // namespace karvo
