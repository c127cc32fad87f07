// Unpacking an archive that a person has chosen into "C:\TEMP\Zip_Ordner".
#pragma once

#include "firmware/unzip.h"
#include "workbench/workbench.h"

namespace karvo
{

inline constexpr TextView unzipFolderName = u"C:\\TEMP\\Zip_Ordner";

// What Unzip_Dialog asks for.
struct UnzipRequest {
    std::filesystem::path archive;
    std::filesystem::path folder;
};

// The folder that unzipFolderName stands for, made where it is missing. Nothing, after a message, when it can
// not be made.
std::optional<std::filesystem::path> unzipFolder(Workbench& bench);

// With ".ZIP" behind a name that does not end so, in whatever letters.
std::filesystem::path withZipEnding(Files& files, const std::filesystem::path& archive);

// On the way beside the folder, under a name that tells whose it is.
UnzipPlace placeFor(Files& files, const std::filesystem::path& folder);

// With an hourglass meanwhile.
UnzipResult unpack(View& view, Files& files, Archive& archive, const UnzipRequest& request,
                   WorkObserver& observer);

// Says how it went; nothing of what the person has stopped.
void tellUnpacked(Workbench& bench, const UnzipRequest& request, const UnzipResult& result);

} // namespace karvo
