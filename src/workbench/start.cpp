#include "workbench/start.h"

#include "link/port_choice.h"

namespace karvo
{

namespace
{

constexpr std::string_view section = "Parameter";
constexpr TextView rootFolder = u"C:\\";

// The stored text, or `fallback` where nothing is stored; written back.
Text readAndWriteBack(Settings& settings, std::string_view key, TextView fallback)
{
    Text value = settings.get(section, key).value_or(Text());
    if (value.empty())
        value = fallback;
    settings.save(section, key, value);
    return value;
}

} // namespace

std::optional<LanguageCode> readSettings(ProgramState& state, Settings& settings,
                                         const std::vector<int>& present)
{
    const Text language = readAndWriteBack(settings, "Language", u"");
    state.hexFolder = readAndWriteBack(settings, "ATMELpath", rootFolder);
    const auto storedPort = settings.get(section, "Com_Port");
    state.link.portNumber = storedPort ? portNumberFromSetting(storedPort) : portNumberToBeginWith(present);
    settings.save(section, "Com_Port", textFromNumber(state.link.portNumber));
    readAndWriteBack(settings, "Location", u"");
    state.expert = settings.get(section, "Expert") == Text(u"1");
    settings.save(section, "Expert", state.expert ? u"1" : u"0");
    return languageFromSetting(language);
}

} // namespace karvo
