// Which function sheets there are: those beside the program, and a person's own in the folder "FKT_listen".
#pragma once

#include "editors/sheet_file.h"
#include "program/files.h"
#include "workbench/user_folders.h"

#include <filesystem>

namespace karvo
{

struct StoredSheet {
    FunctionSheet sheet;
    std::filesystem::path path;
    bool isOwn = false; // of the person: at the end of the menu
};

// A file that is no sheet; it is left out, and the person is told once.
struct RefusedSheet {
    std::filesystem::path path;
    std::optional<SheetFault> fault; // nothing: it could not be read
};

struct SheetStore {
    std::vector<StoredSheet> sheets; // by the name of the file, the program's first
    std::vector<RefusedSheet> refused;

    // Of a menu item without "mnu_"; of one that fills in a preset, the sheet that it opens. Nothing for
    // another one.
    const FunctionSheet* sheetOf(std::string_view item) const;

    // Which sheet shows a CV, or these bits of it, for the model; one that has it in its first section before
    // others. Nothing for none.
    const FunctionSheet* sheetOf(const DecoderProfile& profile, int cv, int bits = 255) const;
};

// Reads "FKT_*.txt" of the program folder and of the person's folder.
SheetStore loadSheets(Files& files, const std::filesystem::path& programFolder, const UserFolder& own);

// "The sheet ...\FKT_my.txt is left out. Line 7: there is no model \"KV09\"."
Text refusalText(const RefusedSheet& refused, const LanguageTables& texts);

} // namespace karvo
