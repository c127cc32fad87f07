// Ready-made speed steps and distances in the main window, of a kind of vehicle or of the person's own.
#pragma once

#include "editors/presets.h"
#include "workbench/workbench.h"

#include <QObject>

namespace karvo
{

struct MenuEntry;
class WriteController;

class PresetsController : public QObject
{
public:
    PresetsController(Workbench& bench, WriteController& writing);

    // Of the kind of vehicle that the item's name ends with.
    void load(const MenuEntry& item);
    void save(const MenuEntry& item);
    void writeBaseAndTop(const MenuEntry& item);

    void loadOwn(const MenuEntry& item);
    void saveOwn(const MenuEntry& item);

private:
    void showLoaded(int changed, const Text& from);

    Workbench& bench_;
    const LanguageTables& texts_;
    WriteController& writing_;
};

} // namespace karvo
