// The names under which files and folders are written before they take their place.
#pragma once

#include <QtGlobal>

#include <filesystem>

namespace karvo
{

// A name in the folder that nobody has: "karvo-4711-1-WORKSHOP.tmp", with the number of this process and the
// name of this computer, since a folder may be shared by several.
std::filesystem::path temporaryPath(const std::filesystem::path& folder);

// Removes what programs of this computer that have ended left in the folder under such names. Where a process
// runs that has the number, the name stays, even if the number has gone to another program meanwhile: nothing
// that is still being written is ever taken away.
void clearLeftovers(const std::filesystem::path& folder);

// Whether a process of this number runs.
bool isRunning(qint64 process);

} // namespace karvo
