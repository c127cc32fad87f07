#include "shell/language_controller.h"

#include "shell/bench_display.h"
#include "shell/main_menu.h"
#include "shell/menu_tree.h"
#include "workbench/language_change.h"

namespace karvo
{

LanguageController::LanguageController(Workbench& bench, MainMenu& menu, BenchDisplay& display,
                                       std::function<void(LanguageCode)> useQtTexts)
    : bench_(bench), menu_(menu), display_(display), useQtTexts_(std::move(useQtTexts))
{
    menu_.markLanguage(bench.state.language);
}

void LanguageController::choose(const MenuEntry& item)
{
    for (const LanguageCode code : allLanguages) {
        if (languageFiles(code).menuItem == item.name)
            change(code);
    }
}

void LanguageController::change(LanguageCode code)
{
    storeLanguage(bench_.settings, code);
    menu_.markLanguage(code);
    if (!useLanguage(bench_, code))
        return;
    if (useQtTexts_)
        useQtTexts_(code);
    display_.applyCaptions();
    bench_.view.showStatus(bench_.state.texts.caption(Caption::ready));
    display_.showDetails();
    describeAnew(bench_);
}

} // namespace karvo
