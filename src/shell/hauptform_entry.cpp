// The current CV in the main window: which one it is, and what is typed and ticked for it.
#include "cvdata/forms/cv_panel.h"
#include "shell/hauptform.h"
#include "shell/main_menu.h"
#include "ui/fixed_width_list.h"
#include "ui/typed_text.h"
#include "workbench/change_value.h"
#include "workbench/take_entry.h"

#include <QAction>
#include <QApplication>
#include <QShortcut>

namespace karvo
{

namespace
{

using namespace std::chrono_literals;

} // namespace

void Hauptform::connectEntry()
{
    entryTimer_.setSingleShot(true);
    connect(&entryTimer_, &QTimer::timeout, this, &Hauptform::refuseLeftEntry);
    connect(list_, &FixedWidthList::currentRowChanged, this, &Hauptform::chooseRow);
    connect(panel_, &CvPanel::entryLeft, this, [this] { settleQuietly(); });
    connect(panel_, &CvPanel::settlingWanted, this, &Hauptform::takePendingValue);
    connect(panel_, &CvPanel::valueEntered, this, [this] {
        if (takePendingValue())
            list_->setFocus();
    });
    connect(panel_, &CvPanel::bitChosen, this, &Hauptform::chooseBit);
    connect(panel_, &CvPanel::entryCancelled, this, [this] { list_->setFocus(); });
    connect(panel_, &CvPanel::takeBackWanted, this, &Hauptform::takeBackCurrent);
    connect(panel_, &CvPanel::takeBackAllWanted, this, &Hauptform::takeBackAll);
    connect(list_, &FixedWidthList::digitTyped, panel_, &CvPanel::beginEntry);
    connect(list_, &FixedWidthList::entryWanted, panel_, [this] { panel_->beginEntry(); });
    connect(list_, &FixedWidthList::stepWanted, this, &Hauptform::stepValue);
    auto* const undo = new QShortcut(QKeySequence::Undo, list_);
    undo->setObjectName(QStringLiteral("TakeBack"));
    connect(undo, &QShortcut::activated, this, &Hauptform::takeBackCurrent);
}

void Hauptform::whenChosen(std::string_view item, std::function<void()> act)
{
    connect(menu_->action(item), &QAction::triggered, this, [this, act = std::move(act)] {
        if (takePendingValue())
            act();
        else
            menu_->markLanguage(state_.language); // choosing another one has moved its tick
    });
}

void Hauptform::whenChosen(std::string_view item, void (Hauptform::*act)())
{
    whenChosen(item, [this, act] { (this->*act)(); });
}

bool Hauptform::takePendingValue()
{
    const TypedEntry entry = panel_->pendingEntry();
    if (entry.isEmpty())
        return true;
    if (settling_) // its box is open
        return false;
    settling_ = true;
    const auto end = takeEntry(bench_, entry);
    settling_ = false;
    entryTimer_.stop();
    showCurrentRow();
    showDetails();
    showAvailability();
    if (end == EntryEnd::numberRefused)
        panel_->returnToNumber(*entry.number);
    else if (end == EntryEnd::valueRefused)
        panel_->returnToValue(*entry.value);
    return end == EntryEnd::taken;
}

// A box must not come up in the middle of a change of the focus or of a click.
bool Hauptform::settleQuietly()
{
    if (canBeTaken(state_.set, panel_->pendingEntry()) || state_.lineBusy)
        return takePendingValue();
    entryTimer_.start(0ms);
    return false;
}

void Hauptform::refuseLeftEntry()
{
    if (QApplication::activePopupWidget() != nullptr) {
        entryTimer_.start(100ms);
        return;
    }
    showCurrentRow(); // a click may have chosen another one
    takePendingValue();
}

void Hauptform::chooseRow(int row)
{
    if (row < 0 || !settleQuietly())
        return;
    const ListLine& line = state_.set.list[static_cast<std::size_t>(row)];
    goTo({static_cast<std::size_t>(row), line.cv});
}

// False for a CV that no line shows.
bool Hauptform::goToCv(int number)
{
    const auto row = positionOf(state_.set.list, number);
    if (row)
        goTo({*row, number});
    return row.has_value();
}

void Hauptform::goTo(const ListHit& place)
{
    const QSignalBlocker quiet(list_);
    list_->setCurrentRow(static_cast<int>(place.row));
    state_.set.currentNumber = place.cv;
    showDetails();
    showAvailability();
}

// A row that stands for the current CV already stays the chosen one.
void Hauptform::showCurrentRow()
{
    const CvSet& set = state_.set;
    const int chosen = list_->currentRow();
    const bool fits = chosen >= 0 && static_cast<std::size_t>(chosen) < set.list.size() &&
                      set.currentNumber != 0 &&
                      set.list[static_cast<std::size_t>(chosen)].standsFor(set.currentNumber);
    if (fits)
        return;
    const auto row = positionOf(set.list, set.currentNumber);
    const QSignalBlocker quiet(list_); // nobody has chosen another CV
    list_->setCurrentRow(row ? static_cast<int>(*row) : -1);
}

void Hauptform::chooseBit(int weight, bool on)
{
    if (!takePendingValue())
        return;
    const int cv = state_.set.currentNumber;
    const int value = state_.set.table.value(cv).value_or(0);
    if (changeValue(bench_, cv, on ? value | weight : value & ~weight) != ChangeEnd::changed)
        showDetails(); // the boxes as the value has them
}

// At a limit the value stays, without a message: the key may be held down.
void Hauptform::stepValue(int by)
{
    const CvSet& set = state_.set;
    if (!takePendingValue())
        return;
    const auto value = set.currentNumber == 0 ? std::nullopt : set.table.value(set.currentNumber);
    if (value && limitsOf(set.table, set.currentNumber).allow(*value + by))
        changeValue(bench_, set.currentNumber, *value + by);
}

void Hauptform::takeBackCurrent()
{
    if (takePendingValue())
        takeBackValue(bench_, state_.set.currentNumber);
}

void Hauptform::takeBackAll()
{
    if (takePendingValue())
        takeBackAllValues(bench_);
}

} // namespace karvo
