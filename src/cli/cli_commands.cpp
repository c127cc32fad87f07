#include "cli/cli_commands.h"

#include "cli/file_commands.h"
#include "cli/list_output.h"
#include "cvdata/description_choice.h"
#include "link/fault_text.h"
#include "link/identification.h"
#include "link/port_choice.h"
#include "platform/text_conversion.h"
#include "workbench/full_read.h"
#include "workbench/line_use.h"
#include "workbench/offline_list.h"

namespace karvo
{

namespace
{

std::string_view menuItemOf(const QString& name)
{
    for (const OfflineList& list : offlineLists()) {
        if (offlineListName(list.menuItem) == name.toLower())
            return list.menuItem;
    }
    return {};
}

} // namespace

ExitCode exitCodeOf(ReadEnd end)
{
    switch (end) {
    case ReadEnd::read:
        return ExitCode::done;
    case ReadEnd::noReply:
        return ExitCode::noReply;
    case ReadEnd::unknownDecoder:
        return ExitCode::unknownDecoder;
    case ReadEnd::wrongCheckByte:
        return ExitCode::damagedData;
    case ReadEnd::ended:
        break;
    }
    return ExitCode::portRefused; // nothing else ends the program here
}

ExitCode runPorts(CommandRun& run)
{
    const auto descriptions = run.ports.describePorts();
    std::vector<PresentPort> present;
    for (const int number : searchPorts(run.bench.state.link, run.bench.port)) {
        const auto& description = descriptions[static_cast<std::size_t>(number) - 1];
        present.push_back({number, description.device, description.description});
    }
    printPorts(run.output, present, run.ports.newPorts());
    return ExitCode::done;
}

ExitCode runIdentify(CommandRun& run)
{
    Workbench& bench = run.bench;
    const LineUse line(bench);
    Link link = bench.link();
    if (!EnsurePortOpen(link))
        return ExitCode::portRefused;
    switch (IdentifyDecoder(link, ReadOnlyReceiver::accepted)) {
    case IdentificationEnd::identified:
        printDecoder(run.output, bench.state);
        return ExitCode::done;
    case IdentificationEnd::timedOut:
        bench.state.link.timeOut = false;
        bench.prompts.message(noReplyText(link));
        return ExitCode::noReply;
    case IdentificationEnd::unknown:
        return ExitCode::unknownDecoder;
    case IdentificationEnd::ended:
        break;
    }
    return ExitCode::portRefused;
}

ExitCode runRead(CommandRun& run)
{
    const auto end = readIntoList(run.bench, ReadStarter::other);
    if (!end)
        return ExitCode::fileTrouble;
    if (*end == ReadEnd::read && !run.arguments.output.isEmpty())
        return saveToFile(run, run.arguments.output);
    if (*end == ReadEnd::read)
        printList(run.output, run.bench.state);
    return exitCodeOf(*end);
}

ExitCode runList(CommandRun& run)
{
    const QString name = run.arguments.operands.value(0);
    if (name.isEmpty()) {
        printOfflineLists(run.output);
        return ExitCode::done;
    }
    const auto menuItem = menuItemOf(name);
    if (menuItem.empty()) {
        run.output.say(run.texts().message(Message::noSuchList, {toText(name)}));
        return ExitCode::wrongArguments;
    }
    if (run.arguments.variant && offlineListOf(menuItem)->variantStem.empty()) {
        run.output.say(run.texts().message(Message::listHasNoVariants, {toText(name)}));
        return ExitCode::wrongArguments;
    }
    run.bench.state.automaticVariant = run.arguments.variant.value_or(0);
    if (!showOfflineList(run.bench, menuItem))
        return ExitCode::fileTrouble;
    printList(run.output, run.bench.state);
    return ExitCode::done;
}

} // namespace karvo
