// CV list files on the bench: open, save, and the backup before the first write.
#pragma once

#include "cvdata/list_file.h"
#include "program/clock.h"
#include "workbench/workbench.h"
#include "workbench/write_backup.h"

#include <optional>
#include <span>

namespace karvo
{

inline constexpr std::string_view listFileExtension = ".kvr";

// The dialogs for opening and saving start in the folder of CV lists, which is made when it is missing.
FileRequest listFileRequest(Workbench& bench, const Text& title);

// When changes of the set on the bench would be lost, asks whether to save them first. True to go on.
bool mayReplaceSet(Workbench& bench);

// Asks for a list file and makes it the set on the bench. False when nothing was opened.
bool openChosenList(Workbench& bench, const Text& title);

// A list file as it is read; nothing after a message that names the file, the line and what was expected.
std::optional<ListFile> readListFile(Workbench& bench, const std::filesystem::path& path);

// Makes a list file the set on the bench. False, after a message, when it can not be read, is no list file or
// names no model; the set in memory is then as it was. What was not understood in it is told. False while the
// line is busy.
bool openList(Workbench& bench, const std::filesystem::path& path);

// Makes the content of a list file the set on the bench, under a file name that may be empty. As openList().
bool takeListContent(Workbench& bench, std::span<const std::uint8_t> content,
                     const std::filesystem::path& path);

// Saves the set on the bench under a name, with the extension added where it has another or none; if a file
// of that name is there already, a question comes first. The name becomes the current one. False when nothing
// was saved, after a message where that failed; what the file held before is whole then.
bool saveListAs(Workbench& bench, const std::filesystem::path& path);

// Saves under the current name; asks for one where there is none. False when nothing was saved.
bool saveList(Workbench& bench, const Text& title);

// Asks for a name and saves under it. False when nothing was saved.
bool saveListUnderNewName(Workbench& bench, const Text& title);

// Saves a set under a dated name of its own into the folder of CV lists.
KeptBackup keepBackup(Files& files, const LanguageTables& texts, const Clock& clock,
                      const UserFolders& folders, const CvSet& set);

// The expert file that belongs to an opened list.
std::string listExpertFileName(const CvSet& set, LanguageCode language);

} // namespace karvo
