// All settings in force in plain sentences by group, for windows, the printer and the command line.
#pragma once

#include "cvdata/cv_kind.h"
#include "cvdata/cv_set.h"
#include "editors/sheet_store.h"

namespace karvo
{

struct DescribedSetting {
    Text sentence;          // "Run-out when stopping: 40 ms"
    std::vector<int> cvs{}; // that it tells of
    bool isFactory = true;  // false: shown in bold, or with a mark
    std::string item{}; // the menu item, without "mnu_", of the sheet or window that changes it; may be empty
};

struct DescribedGroup {
    CvGroup group;
    Text title;
    std::vector<DescribedSetting> settings;
};

// Only what acts: a receiver's settings of other modes than that of its CV9 and CV30 are left out, as are
// those of an automatic run that is off, of addresses in the form that is not used, and what is no setting
// (CV59, and what puts an address to use).
std::vector<DescribedGroup> describeSettings(const CvSet& set, const SheetStore& sheets,
                                             const LanguageTables& texts, LanguageCode language);

// Whether the CV acts with the values of the list.
bool isInForce(const CvTable& table, Model model, int cv);

} // namespace karvo
