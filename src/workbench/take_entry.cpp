#include "workbench/take_entry.h"

#include "workbench/change_value.h"

namespace karvo
{

namespace
{

// False after a message.
bool takeNumber(Workbench& bench, TextView typed)
{
    if (isNoNumber(typed))
        return true;
    if (const int cv = cvOfNumber(bench.state.set, typed)) {
        bench.state.set.currentNumber = cv;
        return true;
    }
    if (bench.state.lineBusy)
        return true;
    bench.prompts.message(bench.state.texts.message(Message::numberNotInList, {Text(trimmed(typed))}),
                          PromptIcon::warning);
    return false;
}

} // namespace

EntryEnd takeEntry(Workbench& bench, const TypedEntry& entry)
{
    if (entry.number && !takeNumber(bench, *entry.number))
        return EntryEnd::numberRefused;
    if (!entry.value || bench.state.lineBusy)
        return EntryEnd::taken;
    const auto end = changeValue(bench, bench.state.set.currentNumber, *entry.value);
    return end == ChangeEnd::changed ? EntryEnd::taken : EntryEnd::valueRefused;
}

} // namespace karvo
