// The folders that hold what the user keeps: CV lists, speed-step tables, distance tables and function
// sheets.
#pragma once

#include "program/files.h"

#include <filesystem>
#include <initializer_list>

namespace karvo
{

struct UserFolder {
    std::filesystem::path own; // where the user's files are opened and saved; may have to be made
    // What came with the program: read-only, and the program never saves there.
    std::filesystem::path shipped = {};
    // Of the same name beside a program that can make no files there; else empty.
    std::filesystem::path beside = {};

    // The file of that name: the user's own, else the one beside the program, else the one that was shipped.
    // The own path when there is none.
    std::filesystem::path find(Files& files, const std::filesystem::path& name) const;

    // Whether a file of this path would lie among the shipped ones.
    bool isShipped(const std::filesystem::path& file) const;
};

struct UserFolders {
    UserFolder cvLists;    // "CV_listen"
    UserFolder speedSteps; // "FS_listen"
    UserFolder distances;  // "ABS_listen"
    UserFolder sheets;     // "FKT_listen"
};

// Beside the program where files can be made there, else in the user's documents folder. A folder that is
// there is found whatever the case of its letters.
UserFolders findUserFolders(Files& files, const std::filesystem::path& programFolder,
                            const std::filesystem::path& documentsFolder);

// A folder below another one, whatever the case of its letters; what is not there yet is named as given.
std::filesystem::path folderBelow(Files& files, std::filesystem::path folder,
                                  std::initializer_list<const char*> names);

} // namespace karvo
