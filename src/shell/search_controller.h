// Searching the list in the main window.
#pragma once

#include "cvdata/list_search.h"
#include "workbench/workbench.h"

#include <QObject>

namespace karvo
{

class EntryController;

class SearchController : public QObject
{
public:
    SearchController(Workbench& bench, QWidget& window, EntryController& entry);

    void askCvNumber();
    void askWord();

private:
    void findNext();
    void searchWord(std::optional<ListHit> after);

    Workbench& bench_;
    const LanguageTables& texts_;
    EntryController& entry_;
    Text word_; // last searched
};

} // namespace karvo
