#include "shell/menu_reasons.h"

#include "editors/sheet_view.h"
#include "program/path_text.h"

namespace karvo
{

namespace
{

std::optional<Text> whyNoSheet(const MenuEntry& entry, const ProgramState& state, const SheetStore& sheets)
{
    const std::string item(entry.itemName());
    if (const FunctionSheet* const sheet = sheets.sheetOf(item))
        return whyNotOpen(*sheet, state.set, state.texts);
    const auto file = "FKT_" + item + ".txt";
    for (const RefusedSheet& refused : sheets.refused) {
        if (pathText(refused.path.filename()) == textFromUtf8(file))
            return refusalText(refused, state.texts);
    }
    return state.texts.message(Message::sheetFileMissing, {textFromUtf8(file)});
}

// The pages of a receiver's settings and of a vehicle's are two items of the menu.
std::optional<Text> whyNoPage(bool ofReceivers, const CvSet& set, const LanguageTables& texts)
{
    static constexpr Model receivers[] = {Model::receiver, Model::xtModule};
    static constexpr Model vehicles[] = {Model::kv04, Model::kv05, Model::kv06,
                                         Model::kv07, Model::kv08, Model::trailer};
    EditorNeeds needs;
    if (ofReceivers)
        needs.models = receivers;
    else
        needs.models = vehicles;
    return whyNotOpen(needs, set, texts);
}

} // namespace

std::optional<Text> whyNotChosen(const MenuEntry& entry, const ProgramState& state, const SheetStore& sheets)
{
    const LanguageTables& texts = state.texts;
    switch (entry.opens) {
    case Opens::other:
        break;
    case Opens::sheet:
        return whyNoSheet(entry, state, sheets);
    case Opens::vehiclePage:
    case Opens::receiverPage:
        return whyNoPage(entry.opens == Opens::receiverPage, state.set, texts);
    case Opens::receiverReset:
        if (state.link.typeCode == TypeCode::readOnlyReceiver)
            return texts.caption(Caption::receiverOnlyRead);
        return state.link.identified && isReceiver(state.link.typeCode)
                   ? std::nullopt
                   : std::optional(texts.message(Message::resetNeedsReceiver));
    }
    return entry.editor ? whyNotOpen(*entry.editor, state.set, texts) : std::nullopt;
}

std::vector<OwnItem> ownItems(const ProgramState& state, const SheetStore& sheets)
{
    std::vector<OwnItem> items;
    for (const StoredSheet& stored : sheets.sheets) {
        if (stored.isOwn)
            items.push_back({stored.sheet.item, stored.sheet.words.in(state.language),
                             whyNotOpen(stored.sheet, state.set, state.texts)});
    }
    for (const RefusedSheet& refused : sheets.refused) {
        if (refused.path.parent_path() != state.programFolder)
            items.push_back({utf8FromText(pathText(refused.path.stem())), pathText(refused.path.filename()),
                             refusalText(refused, state.texts)});
    }
    return items;
}

} // namespace karvo
