#include "workbench/address_notice.h"

#include "cvdata/dcc_address.h"

#include <algorithm>

namespace karvo
{

namespace
{

// With this vehicle: what another one is asked to take does not concern its address.
bool hadItsTurn(const WriteOutcome& outcome)
{
    return isAddressCv(outcome.cv) && outcome.end && *outcome.end != WriteEnd::refusedByUser &&
           *outcome.end != WriteEnd::unknownDecoder && *outcome.end != WriteEnd::otherDecoder &&
           *outcome.end != WriteEnd::ended;
}

bool isWhole(const std::vector<WriteOutcome>& outcomes)
{
    return std::all_of(outcomes.begin(), outcomes.end(), [](const WriteOutcome& outcome) {
        if (outcome.skip == WriteSkip::addressUnconfirmed)
            return false;
        return outcome.skip != WriteSkip::none || outcome.end == WriteEnd::written ||
               outcome.end == WriteEnd::unconfirmed;
    });
}

CvTable addressCvsOf(const CvImage& image)
{
    CvTable table;
    for (std::size_t cv = 1; cv <= CvTable::lastRow; ++cv)
        table.setValue(static_cast<int>(cv), image[cv]);
    return table;
}

// "300 (long)".
Text withForm(const CvTable& table, const Text& address, const LanguageTables& texts)
{
    const auto form = usesLongAddresses(table) ? Caption::longAddress : Caption::shortAddress;
    return address + u" (" + texts.caption(form) + u")";
}

Text addressesText(const CvTable& table, bool hasSecond, const LanguageTables& texts)
{
    Text first = withForm(table, firstAddress(table), texts);
    if (!hasSecond)
        return first;
    return texts.caption(Caption::bothAddresses, {first, withForm(table, secondAddress(table), texts)});
}

} // namespace

Text addressNotice(const std::vector<WriteOutcome>& outcomes, const HeldBlock* held,
                   const LanguageTables& texts)
{
    if (isWhole(outcomes) || std::none_of(outcomes.begin(), outcomes.end(), hadItsTurn))
        return {};
    if (held == nullptr)
        return texts.message(Message::addressUnknown);
    auto table = addressCvsOf(held->image);
    const bool hasSecond = !isReceiver(held->profile.typeCode) && answersToSecondAddress(table);
    const Text before = addressesText(table, hasSecond, texts);
    for (const WriteOutcome& outcome : outcomes) {
        if (isAddressCv(outcome.cv) && outcome.end == WriteEnd::unacknowledged)
            table.setValue(outcome.cv, outcome.value);
    }
    const Text after = addressesText(table, hasSecond, texts);
    return texts.message(before == after ? Message::addressNow : Message::addressUncertain, {before, after});
}

} // namespace karvo
