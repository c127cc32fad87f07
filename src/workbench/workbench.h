// The program-wide state, and what every operation that spans rooms is handed.
#pragma once

#include "cvdata/cv_set.h"
#include "cvdata/description_library.h"
#include "language/language_code.h"
#include "language/language_tables.h"
#include "link/link.h"
#include "program/files.h"
#include "program/settings.h"
#include "program/stay_awake.h"
#include "workbench/user_folders.h"

#include <filesystem>
#include <optional>
#include <set>

namespace karvo
{

// Where unsaved changes are kept (workbench/recovery.h).
struct RecoveryState {
    std::filesystem::path file; // empty: they are not kept
    bool troubleShown = false;  // that they could not be kept has been told in this run
    bool holdsChanges = false;  // the file has what is unsaved on the bench
};

// A block that was read, and the decoder that it is of.
struct DecoderBlock {
    CvImage image{};
    DecoderProfile profile;
    Text identification;
    int lineRun = 0; // in which it was read; see lineRunLasts()
};

// For which list the person wished not to see the preview of a write any more, and what he left out then.
struct AskNoMore {
    std::filesystem::path listPath;
    std::string offlineItem;
    std::set<int> leftOut;
    bool withoutVehiclesOwn = false; // nothing that makes a vehicle this one
};

struct ProgramState {
    std::filesystem::path programFolder; // where the text files lie
    UserFolders userFolders;             // where the user's files lie
    std::filesystem::path driveC;        // "C:\", elsewhere than on Windows the folder that stands for it
    LanguageCode language = LanguageCode::german;
    LanguageTables texts;
    LinkState link;
    CvImage image{};
    ReceiverValues receiver;
    CvSet set;
    RecoveryState recovery;
    Text hexFolder;                        // start folder of the HEX file dialogs
    bool expert = false;                   // expert mode
    bool readStartedByButton = false;      // during a read that the button `Start` has begun
    bool lineBusy = false;                 // an operation has the line
    bool stopRequested = false;            // a read is to end, or a write of many CVs before its next one
    bool firmwareAtRisk = false;           // a transfer of firmware has begun to change the decoder
    std::optional<DecoderBlock> lastRead;  // the block that came last, without what has been written since
    std::optional<DecoderBlock> keptBlock; // the one kept as a file last, with what has been written since
    std::filesystem::path keptFile;        // where that block was kept; empty when none was in this run
    std::optional<AskNoMore> askNoMore;
    std::set<std::filesystem::path> faultyFiles; // of the program folder, of which has been told in this run
    int automaticVariant = 0;                    // bus or fire-engine variant 0 to 3 of the offline lists
    int speedStepViews = 0; // above 0 the speed-step editor only shows what the last read has brought
    bool tellsWrongFirstLine = true; // a HEX file of another kind is refused with a message, not silently
};

struct Workbench {
    ProgramState& state;
    SerialPort& port;
    Wait& wait;
    Prompts& prompts;
    View& view;
    Files& files;
    Settings& settings;
    StayAwake* stayAwake = nullptr; // nothing: the computer may sleep whenever it likes

    Link link()
    {
        return {state.link,          port, wait, prompts, view, state.texts, state.recovery.holdsChanges,
                &state.stopRequested};
    }
    DescriptionLibrary library() const
    {
        return {files, state.programFolder, state.language, state.texts, state.expert};
    }
};

} // namespace karvo
