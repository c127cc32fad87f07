#include "workbench/put_on_bench.h"

#include "cvdata/changes.h"
#include "program/path_text.h"
#include "workbench/library_faults.h"
#include "workbench/recovery.h"

namespace karvo
{

namespace
{

Text versionText(const LanguageTables& texts, const DecoderProfile& profile)
{
    return texts.caption(Caption::firmware) + u" = " + textFromNumber(profile.firmwareVersion);
}

Text firmwareText(const LanguageTables& texts, const DecoderProfile& profile)
{
    return versionText(texts, profile) + u"  " + texts.caption(Caption::subLevel) + u" = " +
           textFromNumber(profile.subLevel);
}

// What is loaded, and from which file it has its words.
Text loadedDataText(const ProgramState& state)
{
    const CvSet& set = state.set;
    const Text type = typeText(set.profile, state.texts) + u"  ";
    const bool hasOwnFile = set.isFromFile() && !set.listPath.empty();
    const Text file = u" | " + pathText((hasOwnFile ? set.listPath : set.descriptionPath).filename());
    if (set.isFromFile())
        return type + versionText(state.texts, set.profile) + file;
    return type +
           (set.isOffline() ? state.texts.caption(Caption::offlineList)
                            : firmwareText(state.texts, set.profile)) +
           file;
}

} // namespace

void putOnBench(Workbench& bench, CvSet set, const SetFaults& faults)
{
    startUnchanged(set);
    bench.state.set = std::move(set);
    showAnew(bench, faults);
}

void showAnew(Workbench& bench, const SetFaults& faults)
{
    tellFaults(bench, faults.ofFiles);
    fillList(bench);
    if (faults.leftOut)
        tellFaults(bench, {&*faults.leftOut, 1});
}

void fillList(Workbench& bench)
{
    ProgramState& state = bench.state;
    CvSet& set = state.set;
    set.list = fill_list1(
        {set.table, set.profile, set.rawReply, state.texts.message(Message::unitOfSpeedStep),
         state.language != LanguageCode::english, &set.expert, state.texts.caption(Caption::expertLabel),
         set.baseline ? &*set.baseline : nullptr, state.texts.caption(Caption::changedMark),
         state.texts.caption(Caption::speedTableGroup)});
    set.loadedData = loadedDataText(state);
    keepRecovery(bench);
    bench.view.listChanged();
}

void clearDisplay(Workbench& bench)
{
    bench.state.set = CvSet();
    bench.state.askNoMore.reset();
    keepRecovery(bench);
    bench.view.showStatus(Text());
    bench.view.listChanged();
}

} // namespace karvo
