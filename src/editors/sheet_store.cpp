#include "editors/sheet_store.h"

#include "program/path_text.h"

#include <algorithm>

namespace karvo
{

namespace
{

bool isSheetName(const std::filesystem::path& name)
{
    const Text text = lowerCase(pathText(name));
    return text.starts_with(u"fkt_") && text.ends_with(u".txt");
}

void load(SheetStore& store, Files& files, const std::filesystem::path& path, bool isOwn)
{
    const auto content = files.readWhole(path, textFileLimit);
    if (!content) {
        store.refused.push_back({path, std::nullopt});
        return;
    }
    auto parsed = parseSheet(*content);
    if (const auto* const fault = std::get_if<SheetFault>(&parsed))
        store.refused.push_back({path, *fault});
    else
        store.sheets.push_back({std::get<FunctionSheet>(std::move(parsed)), path, isOwn});
}

std::vector<std::filesystem::path> sheetFiles(Files& files, const std::filesystem::path& folder)
{
    std::vector<std::filesystem::path> paths;
    for (const FolderEntry& entry : files.list(folder)) {
        if (!entry.isFolder && isSheetName(entry.name))
            paths.push_back(folder / entry.name);
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

bool shows(const SheetField& field, int cv, int bits)
{
    const bool isChange = field.kind != SheetField::Kind::set && field.kind != SheetField::Kind::measured;
    return isChange && std::find(field.cvs.begin(), field.cvs.end(), cv) != field.cvs.end() &&
           (field.bits & bits) != 0;
}

bool shows(std::span<const SheetSection> sections, const DecoderProfile& profile, int cv, int bits)
{
    return std::any_of(sections.begin(), sections.end(), [&](const SheetSection& section) {
        return isFor(section.models, profile) &&
               std::any_of(section.fields.begin(), section.fields.end(), [&](const SheetField& field) {
                   return isFor(field.models, profile) && shows(field, cv, bits);
               });
    });
}

} // namespace

const FunctionSheet* SheetStore::sheetOf(std::string_view item) const
{
    const auto found = std::find_if(sheets.begin(), sheets.end(), [&](const StoredSheet& one) {
        return one.sheet.item == item || one.sheet.readyMadeOf(item) != nullptr;
    });
    return found == sheets.end() ? nullptr : &found->sheet;
}

const FunctionSheet* SheetStore::sheetOf(const DecoderProfile& profile, int cv, int bits) const
{
    for (const bool inFirstSection : {true, false}) {
        for (const StoredSheet& one : sheets) {
            const auto sections =
                std::span(one.sheet.sections)
                    .first(inFirstSection ? std::min<std::size_t>(1, one.sheet.sections.size())
                                          : one.sheet.sections.size());
            if (!one.isOwn && isFor(one.sheet.models, profile) && shows(sections, profile, cv, bits))
                return &one.sheet;
        }
    }
    return nullptr;
}

SheetStore loadSheets(Files& files, const std::filesystem::path& programFolder, const UserFolder& own)
{
    SheetStore store;
    for (const auto& path : sheetFiles(files, programFolder))
        load(store, files, path, false);
    if (own.own.empty())
        return store;
    for (const auto& path : sheetFiles(files, own.own))
        load(store, files, path, true);
    return store;
}

Text refusalText(const RefusedSheet& refused, const LanguageTables& texts)
{
    const Text why =
        refused.fault ? faultText(*refused.fault, texts) : texts.message(Message::sheetUnreadable);
    return texts.message(Message::sheetRefused, {pathText(refused.path), why});
}

} // namespace karvo
