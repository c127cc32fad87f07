// The folders that hold what the user keeps: CV lists, speed-step tables and distance tables.
#pragma once

#include "program/files.h"

#include <filesystem>
#include <initializer_list>

namespace karvo
{

struct UserFolder {
    std::filesystem::path own;     // where the user's files are opened and saved; may have to be made
    std::filesystem::path shipped; // what came with the program; empty where that is the same folder

    // The file of that name: the user's own, else the one that was shipped. The own path when there is
    // neither.
    std::filesystem::path find(Files& files, const std::filesystem::path& name) const;
};

struct UserFolders {
    UserFolder cvLists;    // "CV_listen"
    UserFolder speedSteps; // "FS_listen"
    UserFolder distances;  // "ABS_listen"
};

// Beside the program where files can be made there, else in the user's documents folder. A folder that is
// there is found whatever the case of its letters.
UserFolders findUserFolders(Files& files, const std::filesystem::path& programFolder,
                            const std::filesystem::path& documentsFolder);

// A folder below another one, whatever the case of its letters; what is not there yet is named as given.
std::filesystem::path folderBelow(Files& files, std::filesystem::path folder,
                                  std::initializer_list<const char*> names);

} // namespace karvo
