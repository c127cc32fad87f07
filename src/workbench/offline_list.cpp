#include "workbench/offline_list.h"

#include "cvdata/description_choice.h"
#include "workbench/describe.h"

namespace karvo
{

bool confirmOfflineList(Workbench& bench)
{
    if (bench.state.link.identified)
        return true;
    const LanguageTables& texts = bench.state.texts;
    return bench.prompts.question(texts.message(Message::offlineListQuestion1) + Text(lineBreak) +
                                  texts.message(Message::offlineListQuestion2) + Text(lineBreak) +
                                  texts.message(Message::offlineListQuestion3));
}

bool showOfflineList(Workbench& bench, std::string_view menuItem)
{
    const OfflineList* const list = offlineListOf(menuItem);
    if (list == nullptr || bench.state.lineBusy)
        return false;
    const auto fileName =
        offlineDescriptionFileName(*list, bench.state.automaticVariant, bench.state.language);
    if (fileName.empty())
        return false;
    auto description = loadDescription(bench, fileName);
    if (!description)
        return false;
    const auto faults = std::move(description->faults);
    takeDescription(bench, std::move(*description), fileName);
    CvSet& set = bench.state.set;
    set.profile = offlineProfile(*list);
    set.modelCode = modelCode(list->model);
    set.rawReply.clear();
    set.offlineItem = menuItem;
    set.currentNumber = 0;
    fillList(bench);
    reportFaults(bench, fileName, faults);
    return true;
}

} // namespace karvo
