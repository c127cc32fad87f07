#include "language/language_loader.h"

#include "program/text_lines.h"

#include <algorithm>

namespace karvo
{

namespace
{

// Line n of the content becomes entry n.
template <std::size_t size>
void fillTable(std::array<Text, size>& table, const Bytes& content)
{
    auto lines = linesOf(content);
    const auto count = std::min(lines.size(), size - 1);
    std::move(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(count), table.begin() + 1);
}

} // namespace

std::optional<std::string_view> loadLanguage(LanguageTables& tables, LanguageCode code,
                                             const std::filesystem::path& programFolder, Files& files)
{
    const LanguageFiles& names = languageFiles(code);
    const auto load = [&](std::string_view name, auto& table) {
        const auto content = files.readWhole(programFolder / name, textFileLimit);
        if (content)
            fillTable(table, *content);
        return content.has_value();
    };
    if (!load(names.messageFile, tables.messages))
        return names.messageFile;
    if (!load(names.menuFile, tables.menu))
        return names.menuFile;
    if (!load(names.captionFile, tables.captions))
        return names.captionFile;
    return std::nullopt;
}

Text missingLanguageFileText(std::string_view fileName)
{
    return u"File [" + textFromUtf8(fileName) + u"] not available !\r\n" +
           u"Set language to German.\r\n\r\n" + u"Program will be closed";
}

} // namespace karvo
