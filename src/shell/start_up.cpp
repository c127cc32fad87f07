#include "shell/start_up.h"

#include "language/forms/language_dialog.h"
#include "workbench/language_change.h"
#include "workbench/start.h"

#include <QLocale>

namespace karvo
{

namespace
{

// What the person most likely speaks; it is only ticked, not chosen.
LanguageCode likelyLanguage()
{
    switch (QLocale::system().language()) {
    case QLocale::German:
        return LanguageCode::german;
    case QLocale::Dutch:
        return LanguageCode::dutch;
    case QLocale::Spanish:
        return LanguageCode::spanish;
    case QLocale::French:
        return LanguageCode::french;
    default:
        return LanguageCode::english;
    }
}

std::optional<LanguageCode> askLanguage(Workbench& bench, const LocaleInfo& locale)
{
    Language dialog(bench.state.texts, languageButtonCaptions(locale.countryAbbreviation()), likelyLanguage(),
                    bench.prompts);
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    storeLanguage(bench.settings, dialog.chosen());
    return dialog.chosen();
}

void tellOfSettings(Workbench& bench)
{
    const auto place = bench.settings.unwritablePlace();
    if (!place)
        return;
    bench.prompts.message(bench.state.texts.message(Message::settingsNotStored, {*place}),
                          PromptIcon::warning);
}

} // namespace

bool startUp(Workbench& bench, const LocaleInfo& locale, const StartChoices& choices)
{
    auto language = readSettings(bench.state, bench.settings, choices.presentPorts);
    if (choices.language) {
        language = choices.language;
        storeLanguage(bench.settings, *language);
    } else if (!language) {
        language = askLanguage(bench, locale);
    }
    if (!language || !useLanguage(bench, *language))
        return false;
    tellOfSettings(bench);
    return true;
}

} // namespace karvo
