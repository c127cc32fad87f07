// What is on the bench, shown in the main window: the list, the details of the current CV, the decoder, and
// what can be done with them.
#pragma once

#include "editors/sheet_store.h"
#include "shell/main_widgets.h"
#include "workbench/workbench.h"

#include <QObject>

namespace karvo
{

class MainWindowView;

class BenchDisplay : public QObject
{
public:
    // Shows what the view is told from then on.
    BenchDisplay(ProgramState& state, const SheetStore& sheets, MainWindowView& view,
                 const MainWidgets& widgets);

    // In the language in use.
    void applyCaptions();

    void showList();
    void showDetails();

    // Chooses the row of the current CV; one that stands for it already stays the chosen one.
    void showCurrentRow();

    // What can be chosen in the menu and beside the list.
    void showAvailability();

    // The window's title, with a note behind it.
    void showTitle(const QString& note = {});

private:
    void connectView(MainWindowView& view);
    void showLineBusy(bool busy);
    void showReasons();
    QString title() const;

    ProgramState& state_;
    const SheetStore& sheets_;
    const LanguageTables& texts_;
    const MainWidgets in_;
};

} // namespace karvo
