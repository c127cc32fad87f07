// The current CV in the main window: which one it is, and what is typed and ticked for it.
#pragma once

#include "cvdata/list_search.h"
#include "workbench/workbench.h"

#include <QTimer>

namespace karvo
{

class BenchDisplay;
class CvPanel;
class FixedWidthList;

class EntryController : public QObject
{
public:
    EntryController(Workbench& bench, BenchDisplay& display, FixedWidthList& list, CvPanel& panel);

    // Takes what is typed in the fields and not taken yet. To be called before anything acts, which must not
    // go on when it is false: a message has said why, and the keyboard is in the field.
    bool takePending();

    // False for a CV that no line shows.
    bool goToCv(int number);
    void goTo(const ListHit& place);

    // The chosen line with the current CV; nothing where none is chosen.
    std::optional<ListHit> place() const;

    // Puts the keyboard into the list.
    void focusList();

private:
    void connectControls();
    bool settleQuietly();
    void refuseLeft();
    void chooseRow(int row);
    void chooseBit(int weight, bool on);
    void stepValue(int by);
    void takeBackCurrent();
    void takeBackAll();

    Workbench& bench_;
    ProgramState& state_;
    BenchDisplay& display_;
    FixedWidthList& list_;
    CvPanel& panel_;
    QTimer leftTimer_;      // a field was left with what can not be taken: it is refused with the next event
    bool settling_ = false; // what was typed is being settled: a box may be open
};

} // namespace karvo
