#include "firmware/download.h"

#include "firmware/archive_names.h"
#include "program/path_text.h"

namespace karvo
{

namespace
{

constexpr std::size_t nameLength = 12;
// In German whatever the language is, as the vehicles' owners know them from the maker.
constexpr TextView failed = u"Fehler beim Download: Entweder existiert die URL nicht, oder Sie haben "
                            u"einen ungültigen Dateinamen angegeben!";
constexpr TextView complete = u"Download erfolgreich ausgeführt!";

Downloaded fetch(Workbench& bench, Downloader& downloader, const Text& address, const Text& name,
                 WorkObserver& observer)
{
    const auto folder = folderBelow(bench.files, bench.state.driveC, {"temp"});
    bench.files.makeFolder(folder); // where that fails, the file can not be made either
    bench.view.showHourglass(true);
    auto file = folder / std::filesystem::path(utf8FromText(name));
    const auto end = downloader.fetch(address, file, observer);
    bench.view.showHourglass(false);
    return {end, std::move(file)};
}

} // namespace

std::optional<Text> downloadFileName(TextView address)
{
    if (address.size() < nameLength)
        return std::nullopt;
    Text name(address.substr(address.size() - nameLength));
    return isPlainFileName(utf8FromText(name)) ? std::optional(std::move(name)) : std::nullopt;
}

std::optional<Downloaded> download(Workbench& bench, Downloader& downloader, WorkObserver& observer)
{
    const Text address = bench.state.texts.message(Message::downloadAddress);
    if (const auto name = downloadFileName(address))
        return fetch(bench, downloader, address, *name, observer);
    bench.prompts.message(bench.state.texts.message(Message::downloadNameRefused), PromptIcon::stop);
    return std::nullopt;
}

void tellDownloadFailed(Prompts& prompts)
{
    prompts.message(Text(failed), PromptIcon::stop);
}

Text downloadedText(const LanguageTables& texts, const std::filesystem::path& file)
{
    return Text(complete) + Text(lineBreak) + texts.caption(Caption::downloadPlace, {pathText(file)});
}

} // namespace karvo
