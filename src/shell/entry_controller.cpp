#include "shell/entry_controller.h"

#include "cvdata/forms/cv_panel.h"
#include "shell/bench_display.h"
#include "shell/named_shortcut.h"
#include "ui/fixed_width_list.h"
#include "workbench/change_value.h"
#include "workbench/take_entry.h"

#include <QApplication>
#include <QSignalBlocker>

namespace karvo
{

namespace
{

using namespace std::chrono_literals;

} // namespace

EntryController::EntryController(Workbench& bench, BenchDisplay& display, FixedWidthList& list,
                                 CvPanel& panel)
    : bench_(bench), state_(bench.state), display_(display), list_(list), panel_(panel)
{
    leftTimer_.setSingleShot(true);
    connectControls();
}

void EntryController::connectControls()
{
    connect(&leftTimer_, &QTimer::timeout, this, &EntryController::refuseLeft);
    connect(&list_, &FixedWidthList::currentRowChanged, this, &EntryController::chooseRow);
    connect(&panel_, &CvPanel::entryLeft, this, &EntryController::settleQuietly);
    connect(&panel_, &CvPanel::settlingWanted, this, &EntryController::takePending);
    connect(&panel_, &CvPanel::valueEntered, this, [this] {
        if (takePending())
            focusList();
    });
    connect(&panel_, &CvPanel::bitChosen, this, &EntryController::chooseBit);
    connect(&panel_, &CvPanel::entryCancelled, this, &EntryController::focusList);
    connect(&panel_, &CvPanel::takeBackWanted, this, &EntryController::takeBackCurrent);
    connect(&panel_, &CvPanel::takeBackAllWanted, this, &EntryController::takeBackAll);
    connect(&list_, &FixedWidthList::digitTyped, &panel_, &CvPanel::beginEntry);
    connect(&list_, &FixedWidthList::entryWanted, &panel_, [this] { panel_.beginEntry(); });
    connect(&list_, &FixedWidthList::stepWanted, this, &EntryController::stepValue);
    addShortcut(list_, QKeySequence::Undo, "TakeBack", this, &EntryController::takeBackCurrent);
}

bool EntryController::takePending()
{
    const TypedEntry entry = panel_.pendingEntry();
    if (entry.isEmpty())
        return true;
    if (settling_) // its box is open
        return false;
    settling_ = true;
    const auto end = takeEntry(bench_, entry);
    settling_ = false;
    leftTimer_.stop();
    display_.showCurrentRow();
    display_.showDetails();
    display_.showAvailability();
    if (end == EntryEnd::numberRefused)
        panel_.returnToNumber(*entry.number);
    else if (end == EntryEnd::valueRefused)
        panel_.returnToValue(*entry.value);
    return end == EntryEnd::taken;
}

// A box must not come up in the middle of a change of the focus or of a click.
bool EntryController::settleQuietly()
{
    if (canBeTaken(state_.set, panel_.pendingEntry()) || state_.lineBusy)
        return takePending();
    leftTimer_.start(0ms);
    return false;
}

void EntryController::refuseLeft()
{
    if (QApplication::activePopupWidget() != nullptr) {
        leftTimer_.start(100ms);
        return;
    }
    display_.showCurrentRow(); // a click may have chosen another one
    takePending();
}

void EntryController::chooseRow(int row)
{
    if (row < 0 || !settleQuietly())
        return;
    const auto& list = state_.set.list;
    const auto index = static_cast<std::size_t>(row);
    if (index < list.size()) // until a new set has its list, the rows are those of the one before
        goTo({index, list[index].cv});
}

bool EntryController::goToCv(int number)
{
    const auto row = positionOf(state_.set.list, number);
    if (row)
        goTo({*row, number});
    return row.has_value();
}

void EntryController::goTo(const ListHit& place)
{
    const QSignalBlocker quiet(&list_);
    list_.setCurrentRow(static_cast<int>(place.row));
    state_.set.currentNumber = place.cv;
    display_.showDetails();
    display_.showAvailability();
}

std::optional<ListHit> EntryController::place() const
{
    const int row = list_.currentRow();
    return row < 0 ? std::nullopt
                   : std::optional(ListHit{static_cast<std::size_t>(row), state_.set.currentNumber});
}

void EntryController::focusList()
{
    list_.setFocus();
}

void EntryController::chooseBit(int weight, bool on)
{
    if (!takePending())
        return;
    const int cv = state_.set.currentNumber;
    const int value = state_.set.table.value(cv).value_or(0);
    if (changeValue(bench_, cv, on ? value | weight : value & ~weight) != ChangeEnd::changed)
        display_.showDetails(); // the boxes as the value has them
}

// At a limit the value stays, without a message: the key may be held down.
void EntryController::stepValue(int by)
{
    const CvSet& set = state_.set;
    if (!takePending())
        return;
    const auto value = set.currentNumber == 0 ? std::nullopt : set.table.value(set.currentNumber);
    if (value && limitsOf(set.table, set.currentNumber).allow(*value + by))
        changeValue(bench_, set.currentNumber, *value + by);
}

void EntryController::takeBackCurrent()
{
    if (takePending())
        takeBackValue(bench_, state_.set.currentNumber);
}

void EntryController::takeBackAll()
{
    if (takePending())
        takeBackAllValues(bench_);
}

} // namespace karvo
