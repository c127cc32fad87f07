#include "shell/options.h"

#include "program/command_words.h"
#include "simulator/decoder.h"

namespace karvo
{

namespace
{

const std::vector<HelpedOption>& options()
{
    static const std::vector<HelpedOption> all = {
        {{"simulate", "MODEL"}, "work with a simulated programming interface and this decoder on it"},
        {{"map-port", "COM5=DEVICE"}, "the device behind a port's name, for this run; may be repeated"},
        {{"language", "CODE"}, "speak de, nl, en, es or fr from now on"},
        {{"program-folder", "DIR"}, "where the text files lie; else beside the program"},
        {{"settings", "FILE"}, "keep language, port and all else in this file, not in your own settings"},
        {{"read", ""}, "read the decoder as soon as the window is there"},
        {{"help", "", 'h'}, "show this text"},
        {{"version", "", 'v'}, "show the version"},
    };
    return all;
}

std::string errorText(const WordFault& fault)
{
    return (fault.form == nullptr ? "" : "option ") + faultText(fault);
}

std::string errorIn(const CommandWords& words, std::span<const OptionForm> forms)
{
    if (words.fault())
        return errorText(*words.fault());
    for (const OptionForm& form : forms) {
        if (!form.value.empty() && words.has(form.name) && words.value(form.name).empty())
            return errorText({WordFault::Kind::needsValue, {}, &form});
    }
    return {};
}

} // namespace

Options parseOptions(const std::vector<std::string>& arguments)
{
    const auto forms = formsOf(options());
    const CommandWords words(arguments, forms, SingleDash::isWord);
    const auto valueOf = [&](std::string_view option) {
        return words.has(option) ? std::optional(words.value(option)) : std::nullopt;
    };
    return {.help = words.has("help"),
            .version = words.has("version"),
            .read = words.has("read"),
            .simulate = valueOf("simulate"),
            .mapPorts = words.values("map-port"),
            .programFolder = valueOf("program-folder"),
            .settingsFile = valueOf("settings"),
            .language = valueOf("language"),
            .others = words.plain(),
            .error = errorIn(words, forms)};
}

std::string helpText()
{
    constexpr std::size_t helpColumn = 26;
    std::string models;
    std::size_t column = 0;
    for (const std::string& name : sim::decoderNames()) {
        if (column == 0 || column + name.size() > 70) {
            models += "\n   ";
            column = 3;
        }
        models += " " + name;
        column += name.size() + 1;
    }
    return "Usage: karvo [options]\n"
           "Reads the CVs of a Karvo vehicle, explains them and writes changes back.\n"
           "\n" +
           optionRows(options(), helpColumn) + "\nModels:" + models + "\n";
}

} // namespace karvo
