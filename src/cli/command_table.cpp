#include "cli/command_table.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace karvo
{

namespace
{

constexpr int many = 1'000'000;

constexpr CommandOption options[] = {
    {{"port", "COM5"}, Caption::cliOptionPort},
    {{"map-port", "COM5=/dev/ttyUSB0"}, Caption::cliOptionMapPort},
    {{"simulate", "MODEL"}, Caption::cliOptionSimulate},
    {{"fault", "NAME"}, Caption::cliOptionFault},
    {{"no-pace", ""}, Caption::cliOptionNoPace},
    {{"from", "LIST.kvr"}, Caption::cliOptionFrom},
    {{"output", "FILE.kvr|csv|txt"}, Caption::cliOptionOutput},
    {{"variant", "N"}, Caption::cliOptionVariant},
    {{"expert", ""}, Caption::cliOptionExpert},
    {{"dry-run", ""}, Caption::cliOptionDryRun},
    {{"yes", ""}, Caption::cliOptionYes},
    {{"force", "WHAT"}, Caption::cliOptionForce},
    {{"json", ""}, Caption::cliOptionJson},
    {{"language", "CODE"}, Caption::cliOptionLanguage},
    {{"program-folder", "DIR"}, Caption::cliOptionProgramFolder},
    {{"settings", "FILE"}, Caption::cliOptionSettings},
    {{"help", "", 'h'}, Caption::cliOptionHelp},
    {{"version", ""}, Caption::cliOptionVersion},
};

// A script may hand these to every command.
constexpr std::string_view always[] = {"port",   "map-port", "simulate",       "fault",    "no-pace",
                                       "yes",    "language", "program-folder", "settings", "json",
                                       "expert", "help",     "version"};
constexpr std::string_view ofRead[] = {"output"};
constexpr std::string_view ofList[] = {"variant"};
constexpr std::string_view ofFiles[] = {"dry-run"};
constexpr std::string_view ofSheet[] = {"from"};
constexpr std::string_view ofWrite[] = {"from", "force", "dry-run"};

constexpr CommandExit done{ExitCode::done, Caption::cliExitDone};
constexpr CommandExit file{ExitCode::fileTrouble, Caption::cliExitFile};
constexpr CommandExit wrong{ExitCode::wrongArguments, Caption::cliExitArguments};
constexpr CommandExit port{ExitCode::portRefused, Caption::cliExitPort};
constexpr CommandExit noReply{ExitCode::noReply, Caption::cliExitNoReply};
constexpr CommandExit unknown{ExitCode::unknownDecoder, Caption::cliExitUnknownDecoder};
constexpr CommandExit damaged{ExitCode::damagedData, Caption::cliExitDamaged};
constexpr CommandExit notAll{ExitCode::notAllWritten, Caption::cliExitNotAll};
constexpr CommandExit interrupted{ExitCode::interrupted, Caption::cliExitInterrupted};

constexpr CommandExit ofLists[] = {done, file, wrong};
constexpr CommandExit ofIdentify[] = {done, file, wrong, port, noReply, unknown, interrupted};
constexpr CommandExit ofReading[] = {done, file, wrong, port, noReply, unknown, damaged, interrupted};
constexpr CommandExit ofWriting[] = {done, file, wrong, port, noReply, unknown, damaged, notAll, interrupted};
constexpr CommandExit ofCompare[] = {{ExitCode::done, Caption::cliExitEqual},
                                     {ExitCode::listsDiffer, Caption::cliExitDifferent},
                                     {ExitCode::cannotCompare, Caption::cliExitCannotCompare}};
constexpr CommandExit ofFlash[] = {
    {ExitCode::done, Caption::cliExitPagesAccepted},          file,       wrong, port, noReply,
    {ExitCode::notAllWritten, Caption::cliExitUploadRefused}, interrupted};
constexpr CommandExit ofUpdate[] = {{ExitCode::done, Caption::cliExitRecordsAcknowledged},
                                    file,
                                    wrong,
                                    port,
                                    {ExitCode::noReply, Caption::cliExitNothingChanged},
                                    {ExitCode::unknownDecoder, Caption::cliExitWrongModel},
                                    {ExitCode::notAllWritten, Caption::cliExitUpdateBroken},
                                    interrupted};
constexpr CommandExit ofUnzip[] = {done,
                                   file,
                                   wrong,
                                   {ExitCode::damagedData, Caption::cliExitArchive},
                                   {ExitCode::notAllWritten, Caption::cliExitFolder}};

constexpr Command table[] = {
    {CliCommand::ports, "ports", "", 0, 0, Caption::cliPorts, {}, ofLists},
    {CliCommand::identify, "identify", "", 0, 0, Caption::cliIdentify, {}, ofIdentify},
    {CliCommand::read, "read", "", 0, 0, Caption::cliRead, ofRead, ofReading},
    {CliCommand::list, "list", "[MODEL]", 0, 1, Caption::cliList, ofList, ofLists},
    {CliCommand::exportList, "export", "LIST.kvr FILE.csv|txt", 2, 2, Caption::cliExport, {}, ofLists},
    {CliCommand::compare, "compare", "A.kvr B.kvr", 2, 2, Caption::cliCompare, {}, ofCompare},
    {CliCommand::set, "set", "LIST.kvr... CV3=12...", 1, many, Caption::cliSet, ofFiles, ofLists},
    {CliCommand::write, "write", "CV3=12... | --from LIST.kvr", 0, many, Caption::cliWrite, ofWrite,
     ofWriting, Caption::cliWriteNote},
    {CliCommand::sheet, "sheet", "[NAME] --from LIST.kvr", 0, 1, Caption::cliSheet, ofSheet, ofLists},
    {CliCommand::describe, "describe", "LIST.kvr", 1, 1, Caption::cliDescribe, {}, ofLists},
    {CliCommand::flash, "flash", "FIRMWARE.hex", 1, 1, Caption::cliFlash, ofFiles, ofFlash},
    {CliCommand::update, "update", "FIRMWARE.uhx", 1, 1, Caption::cliUpdate, ofFiles, ofUpdate},
    {CliCommand::unzip, "unzip", "ARCHIVE.zip FOLDER", 2, 2, Caption::cliUnzip, {}, ofUnzip},
};

bool contains(std::span<const std::string_view> words, std::string_view word)
{
    return std::find(words.begin(), words.end(), word) != words.end();
}

// How many letters have to be put in, taken out or replaced, or neighbours exchanged.
std::size_t lettersApart(std::string_view one, std::string_view other)
{
    std::vector<std::vector<std::size_t>> apart(one.size() + 1, std::vector<std::size_t>(other.size() + 1));
    for (std::size_t i = 0; i <= one.size(); ++i) {
        for (std::size_t j = 0; j <= other.size(); ++j) {
            if (i == 0 || j == 0) {
                apart[i][j] = i + j;
                continue;
            }
            const std::size_t replaced = apart[i - 1][j - 1] + (one[i - 1] == other[j - 1] ? 0 : 1);
            apart[i][j] = std::min({replaced, apart[i - 1][j] + 1, apart[i][j - 1] + 1});
            if (i > 1 && j > 1 && one[i - 1] == other[j - 2] && one[i - 2] == other[j - 1])
                apart[i][j] = std::min(apart[i][j], apart[i - 2][j - 2] + 1);
        }
    }
    return apart[one.size()][other.size()];
}

} // namespace

std::span<const Command> commands()
{
    return table;
}

const Command* commandOf(std::string_view word)
{
    const auto* const found = std::find_if(std::begin(table), std::end(table),
                                           [&](const Command& command) { return command.word == word; });
    return found == std::end(table) ? nullptr : found;
}

const Command& commandOf(CliCommand command)
{
    return *std::find_if(std::begin(table), std::end(table),
                         [&](const Command& one) { return one.command == command; });
}

std::span<const CommandOption> commandOptions()
{
    return options;
}

bool isHeeded(const Command& command, std::string_view option)
{
    return contains(always, option) || contains(command.options, option);
}

const CommandExit* exitOf(const Command& command, ExitCode code)
{
    const auto found = std::find_if(command.exits.begin(), command.exits.end(),
                                    [&](const CommandExit& exit) { return exit.code == code; });
    return found == command.exits.end() ? nullptr : &*found;
}

bool isInterruptible(const Command& command)
{
    return exitOf(command, ExitCode::interrupted) != nullptr;
}

std::string_view nearestWord(std::string_view word, std::span<const std::string_view> words)
{
    constexpr std::size_t mostLetters = 2;
    std::string_view nearest;
    std::size_t fewest = mostLetters + 1;
    for (const std::string_view one : words) {
        const std::size_t apart = lettersApart(word, one);
        if (apart < fewest && apart < one.size()) {
            fewest = apart;
            nearest = one;
        }
    }
    return nearest;
}

} // namespace karvo
