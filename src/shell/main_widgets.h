// The main window and what stands in it.
#pragma once

class QMainWindow;

namespace karvo
{

class CvPanel;
class FixedWidthList;
class MainMenu;
class PortBar;
class StaleNotice;
class StatusLine;

struct MainWidgets {
    QMainWindow& window;
    MainMenu& menu;
    PortBar& portBar;
    StaleNotice& staleNotice;
    FixedWidthList& list;
    CvPanel& panel;
    StatusLine& statusLine;
};

} // namespace karvo
