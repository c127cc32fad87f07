#include "firmware/unpack.h"

#include "program/path_text.h"

namespace karvo
{

namespace
{

// In German whatever the language is, with the folder as it is called on Windows.
constexpr TextView unpackedText = u"Unzip ist fertig. Dateien sind in Ordner C:\\Temp\\Zip_Ordner";

// Where drive C is a folder of the user's, people have to be told where that lies.
Text unpackedMessage(const std::filesystem::path& folder)
{
    const Text path = pathText(folder);
    return lowerCase(path) == lowerCase(unzipFolderName) ? Text(unpackedText)
                                                         : Text(unpackedText) + Text(lineBreak) + path;
}

} // namespace

std::optional<std::filesystem::path> unzipFolder(Workbench& bench)
{
    auto folder = folderBelow(bench.files, bench.state.driveC, {"TEMP", "Zip_Ordner"});
    const auto error = bench.files.makeFolder(folder);
    if (!error)
        return folder;
    bench.prompts.error(
        *messageOf({UnzipEnd::notPlaced, pathText(folder), {}, error}, bench.state.texts, bench.files));
    return std::nullopt;
}

std::filesystem::path withZipEnding(Files& files, const std::filesystem::path& archive)
{
    if (lowerCase(pathText(archive)).ends_with(u".zip"))
        return archive;
    auto upper = archive;
    upper += ".ZIP";
    auto lower = archive;
    lower += ".zip";
    return !files.exists(upper) && files.exists(lower) ? lower : upper; // where letter case counts
}

UnzipPlace placeFor(Files& files, const std::filesystem::path& folder)
{
    const auto target = folder.has_filename() ? folder : folder.parent_path();
    return {target, files.temporaryPath(target.parent_path())};
}

UnzipResult unpack(View& view, Files& files, Archive& archive, const UnzipRequest& request,
                   WorkObserver& observer)
{
    view.showHourglass(true);
    const auto place = placeFor(files, request.folder);
    auto result = unzip(archive, withZipEnding(files, request.archive), place, observer);
    view.showHourglass(false);
    return result;
}

void tellUnpacked(Workbench& bench, const UnzipRequest& request, const UnzipResult& result)
{
    if (const auto fault = messageOf(result, bench.state.texts, bench.files))
        bench.prompts.error(*fault);
    else if (result.end == UnzipEnd::unpacked)
        bench.prompts.message(unpackedMessage(request.folder));
}

} // namespace karvo
