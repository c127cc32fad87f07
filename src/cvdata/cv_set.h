// The CV set on the bench: the table, where it came from, and the list made of it.
#pragma once

#include "cvdata/cv_table.h"
#include "cvdata/decoder_profile.h"
#include "cvdata/expert_file.h"
#include "cvdata/main_list.h"

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace karvo
{

// Stands for the menu item of an offline list where the set was opened from a CV list file.
inline constexpr std::string_view openedListItem = "mnu_open";

struct CvSet {
    CvTable table;
    std::optional<CvValues> baseline;   // what the table's values are changes of; nothing: no value is marked
    bool precedesUpdate = false;        // read from a decoder whose firmware has been updated since
    bool unsavedChanges = false;        // values have changed since the set was read, opened or saved
    std::vector<Text> descriptionLines; // as in Description::lines
    int rowCount = 0;
    std::filesystem::path descriptionPath; // full path of the description file in use
    std::filesystem::path expertPath;      // full path of the expert file that belongs to it
    std::map<int, ExpertEntry> expert;     // by CV number; empty without expert mode
    DecoderProfile profile;
    Text modelCode;                 // "04" to "08"
    Bytes rawReply;                 // the decoder's last block; empty in an offline list
    std::string offlineItem;        // the menu item of an offline list; empty after a read
    int offlineVariant = 0;         // which of that item's lists, where it has four: 0 to 3
    int currentNumber = 0;          // the current CV; 0 when none
    std::filesystem::path listPath; // the list file that was opened or saved last; empty when there is none
    std::optional<Processor> fileProcessor; // of an opened list: nothing when it names none that is known
    std::optional<DecoderProfile>
        acceptedVehicle; // of another build than the list; may be written all the same
    Text loadedData;     // what is loaded: two texts joined by " | "
    MainList list;

    bool isEmpty() const { return list.empty(); }
    bool isOffline() const { return !offlineItem.empty(); }
    bool isFromFile() const { return offlineItem == openedListItem; }
};

} // namespace karvo
