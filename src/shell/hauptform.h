// The main window: the program's hub. It puts together what stands in it and what it does.
#pragma once

#include "shell/main_window_setup.h"

#include <QMainWindow>

#include <memory>

class QSplitter;

namespace karvo
{

struct Controllers;
class CvPanel;
class FixedWidthList;
class MainMenu;
struct MenuEntry;
class PortBar;
class StaleNotice;
class StatusLine;

// A language is loaded before the window is made.
class Hauptform : public QMainWindow
{
    Q_OBJECT

public:
    explicit Hauptform(const MainWindowSetup& setup);
    ~Hauptform() override;

    // Starts a full read as soon as the current event has been handled.
    void readSoon();

protected:
    // What that comes to during an operation, and what is asked: Operations::mayClose().
    void closeEvent(QCloseEvent* event) override;

private:
    void build();
    void restorePlacement();
    void savePlacement();
    void carryOut(const MenuEntry& item);

    ProgramState& state_;
    Settings& settings_;
    MainMenu* menu_;
    PortBar* portBar_;
    StaleNotice* staleNotice_;
    FixedWidthList* list_;
    CvPanel* panel_;
    StatusLine* statusLine_;
    QSplitter* splitter_;
    std::unique_ptr<Controllers> controllers_; // goes before what it works with
};

} // namespace karvo
