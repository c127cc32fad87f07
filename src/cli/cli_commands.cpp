#include "cli/cli_commands.h"

#include "cli/file_commands.h"
#include "cli/list_output.h"
#include "cli/terminal.h"
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

ExitCode runPorts(Workbench& bench, const PortMap& map, const CliArguments& arguments)
{
    const auto descriptions = map.describePorts();
    std::vector<PresentPort> present;
    for (const int number : searchPorts(bench.state.link, bench.port)) {
        const auto& description = descriptions[static_cast<std::size_t>(number) - 1];
        present.push_back({number, description.device, description.description});
    }
    printPorts(present, arguments.json);
    printNewPorts(map.newPorts());
    return ExitCode::done;
}

ExitCode runIdentify(Workbench& bench, const CliArguments& arguments)
{
    const LineUse line(bench);
    Link link = bench.link();
    if (!EnsurePortOpen(link))
        return ExitCode::portRefused;
    switch (IdentifyDecoder(link, ReadOnlyReceiver::accepted)) {
    case IdentificationEnd::identified:
        printDecoder(bench.state, arguments.json);
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

ExitCode runRead(Workbench& bench, const CliArguments& arguments)
{
    const auto end = readIntoList(bench, ReadStarter::other);
    if (!end)
        return ExitCode::fileTrouble;
    if (*end == ReadEnd::read && !arguments.output.isEmpty())
        return saveToFile(bench, arguments.output, arguments);
    if (*end == ReadEnd::read)
        printList(bench.state, arguments.json);
    return exitCodeOf(*end);
}

ExitCode runList(Workbench& bench, const CliArguments& arguments)
{
    if (arguments.operands.value(0).isEmpty()) {
        printOfflineLists(arguments.json);
        return ExitCode::done;
    }
    const auto menuItem = menuItemOf(arguments.operands.value(0));
    if (menuItem.empty()) {
        printLine(stderr,
                  toText(QStringLiteral("There is no list %1. The command list alone prints the names.")
                             .arg(arguments.operands.value(0))));
        return ExitCode::wrongArguments;
    }
    if (arguments.variant && offlineListOf(menuItem)->variantStem.empty()) {
        printLine(stderr,
                  toText(QStringLiteral("The list %1 has no variants.").arg(arguments.operands.value(0))));
        return ExitCode::wrongArguments;
    }
    bench.state.automaticVariant = arguments.variant.value_or(0);
    if (!showOfflineList(bench, menuItem))
        return ExitCode::fileTrouble;
    printList(bench.state, arguments.json);
    return ExitCode::done;
}

} // namespace karvo
