// What the main window does with lists that no vehicle is needed for, and with their files.
#pragma once

#include "program/clock.h"
#include "workbench/workbench.h"

#include <QObject>

namespace karvo
{

class BenchDisplay;
class EntryController;
struct MenuEntry;
class ReadController;

class FilesController : public QObject
{
public:
    FilesController(Workbench& bench, QWidget& window, BenchDisplay& display, EntryController& entry,
                    ReadController& reading, const Clock& clock);

    void open(const MenuEntry& item);
    void save(const MenuEntry& item);
    void saveAs(const MenuEntry& item);
    void showOffline(const MenuEntry& item);
    void showStandard();
    void changeMoreCvs();
    void print();
    void compare();
    void exit();

private:
    void showWithoutDecoder();
    void showSaved();

    Workbench& bench_;
    const LanguageTables& texts_;
    QWidget& window_;
    BenchDisplay& display_;
    EntryController& entry_;
    ReadController& reading_;
    const Clock& clock_;
};

} // namespace karvo
