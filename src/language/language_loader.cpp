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

// Text holds no control characters but tabs and line ends; old editors end a file with Ctrl-Z.
bool holdsText(const Bytes& content)
{
    const auto isPrinted = [](std::uint8_t byte) { return byte > 0x20; };
    const auto isForeign = [](std::uint8_t byte) {
        return byte < 0x20 && byte != '\t' && byte != '\r' && byte != '\n' && byte != 0x1A;
    };
    return std::any_of(content.begin(), content.end(), isPrinted) &&
           std::none_of(content.begin(), content.end(), isForeign);
}

} // namespace

LoadedLanguage loadLanguage(LanguageTables& tables, LanguageCode code,
                            const std::filesystem::path& programFolder, Files& files)
{
    const LanguageFiles& names = languageFiles(code);
    LoadedLanguage loaded;
    const auto load = [&](std::string_view name, auto& table) {
        const auto content = files.readWhole(programFolder / name, textFileLimit);
        if (!content) {
            loaded.missing = name;
            return false;
        }
        fillTable(table, *content);
        if (!holdsText(*content))
            loaded.damaged.push_back(name);
        return true;
    };
    static_cast<void>(load(names.messageFile, tables.messages) && load(names.menuFile, tables.menu) &&
                      load(names.captionFile, tables.captions));
    return loaded;
}

Text damagedLanguageFileText(const LanguageTables& texts, const LoadedLanguage& loaded, LanguageCode code)
{
    Text names;
    for (const auto name : loaded.damaged)
        names += (names.empty() ? Text() : Text(u", ")) + textFromUtf8(name);
    const bool ownWords = loaded.damaged.front() != languageFiles(code).messageFile;
    const Text words = ownWords ? texts.message(Message::languageFileDamaged) : Text();
    const Text arguments[] = {names};
    return filledIn(words.empty() ? Text(u"File [{1}] is damaged !\r\nPlease install the program again.")
                                  : words,
                    arguments);
}

Text missingLanguageFileText(std::string_view fileName)
{
    return u"File [" + textFromUtf8(fileName) + u"] not available !\r\n" +
           u"Set language to German.\r\n\r\n" + u"Program will be closed";
}

} // namespace karvo
