// Changing the language in the main window.
#pragma once

#include "workbench/workbench.h"

#include <QObject>

#include <functional>

namespace karvo
{

class BenchDisplay;
class MainMenu;
struct MenuEntry;

class LanguageController : public QObject
{
public:
    // `useQtTexts` may be empty.
    LanguageController(Workbench& bench, MainMenu& menu, BenchDisplay& display,
                       std::function<void(LanguageCode)> useQtTexts);

    void choose(const MenuEntry& item);

private:
    void change(LanguageCode code);

    Workbench& bench_;
    MainMenu& menu_;
    BenchDisplay& display_;
    std::function<void(LanguageCode)> useQtTexts_;
};

} // namespace karvo
