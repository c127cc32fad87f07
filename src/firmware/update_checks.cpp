#include "firmware/update_checks.h"

#include "program/path_text.h"

#include <algorithm>
#include <set>

namespace karvo
{

namespace
{

constexpr std::size_t usualRecords = 4096;
constexpr std::size_t mostShortLines = 3; // that are named one by one
constexpr TextView receiver = u"80";

bool isDigit(char16_t character)
{
    return character >= u'0' && character <= u'9';
}

// The digit of a model's name that begins here, such as "KV07", "kv-7" or "KV 08"; 0 for none.
char16_t modelDigitAt(TextView text)
{
    constexpr TextView start = u"kv";
    if (!text.starts_with(start))
        return 0;
    text.remove_prefix(start.size());
    if (!text.empty() && (text.front() == u' ' || text.front() == u'-' || text.front() == u'_'))
        text.remove_prefix(1);
    if (!text.empty() && text.front() == u'0')
        text.remove_prefix(1);
    const bool isModel = !text.empty() && text.front() >= u'4' && text.front() <= u'8' &&
                         (text.size() == 1 || !isDigit(text[1]));
    return isModel ? text.front() : u'\0';
}

// Whether a text has this name, and not as the beginning of a longer word.
bool names(TextView text, TextView name)
{
    const auto isLetter = [](char16_t character) { return character >= u'a' && character <= u'z'; };
    for (auto at = text.find(name); at != TextView::npos; at = text.find(name, at + 1)) {
        if (at + name.size() == text.size() || !isLetter(text[at + name.size()]))
            return true;
    }
    return false;
}

// The models that a text speaks of: "KV07", "AN07", or the receiver and its module as `receiver`.
std::set<Text> modelsIn(TextView text)
{
    const Text lower = lowerCase(text);
    std::set<Text> models;
    for (std::size_t at = 0; at < lower.size(); ++at) {
        if (const char16_t digit = modelDigitAt(TextView(lower).substr(at)))
            models.insert(joined({u"KV0", {&digit, 1}}));
    }
    for (const TextView word :
         {u"receiver", u"empfänger", u"empfaenger", u"ontvanger", u"receptor", u"récepteur"}) {
        if (lower.find(word) != Text::npos)
            models.insert(Text(receiver));
    }
    for (const TextView name : {u"kv-r", u"kv_r", u"kv r", u"kv-xt", u"kv_xt", u"kv xt", u"kvxt"}) {
        if (names(lower, name))
            models.insert(Text(receiver));
    }
    if (names(lower, u"an07") || names(lower, u"an-07"))
        models.insert(u"AN07");
    return models;
}

Text shownName(const LanguageTables& texts, const Text& model)
{
    return model == receiver ? texts.caption(Caption::modelReceiver) : model;
}

Text modelOf(TypeCode typeCode)
{
    return typeCode == TypeCode::receiver ? Text(receiver) : u"KV0" + textFromNumber(numberOf(typeCode));
}

} // namespace

Text updateHeaderText(const LanguageTables& texts, const UpdateFile& file)
{
    Text items;
    for (const HeaderItem& item : file.header)
        items += (items.empty() ? Text() : Text(u", ")) + item.text;
    return texts.caption(Caption::updateHeader, {items});
}

std::vector<Text> unusualIn(const LanguageTables& texts, const UpdateFile& file)
{
    std::vector<Text> findings;
    const std::size_t named = std::min(file.shortLines.size(), mostShortLines);
    for (std::size_t i = 0; i < named; ++i)
        findings.push_back(texts.caption(Caption::findingShortRecord, {textFromNumber(file.shortLines[i])}));
    if (const auto more = file.shortLines.size() - named; more != 0)
        findings.back() +=
            u" (" + texts.caption(Caption::andMore, {textFromNumber(static_cast<int>(more))}) + u")";
    const auto count = static_cast<int>(file.records.size());
    if (file.records.size() > usualRecords)
        findings.push_back(texts.caption(
            Caption::findingManyRecords,
            {textFromNumber(file.firstRecordLine + static_cast<int>(usualRecords)), textFromNumber(count)}));
    if (file.lineEndMissing)
        findings.push_back(
            texts.caption(Caption::findingOpenEnd, {textFromNumber(file.firstRecordLine + count - 1)}));
    return findings;
}

std::vector<Text> otherModelsIn(const LanguageTables& texts, const UpdateFile& file,
                                const std::filesystem::path& path, TypeCode typeCode)
{
    const Text own = modelOf(typeCode);
    std::vector<Text> findings;
    const bool headerNamesOwn =
        std::any_of(file.header.begin(), file.header.end(),
                    [&](const HeaderItem& item) { return modelsIn(item.text).contains(own); });
    for (const HeaderItem& item : file.header) {
        const auto named = modelsIn(item.text);
        if (!named.empty() && !headerNamesOwn)
            findings.push_back(texts.caption(
                Caption::findingHeaderModel,
                {textFromNumber(item.line), shownName(texts, *named.begin()), shownName(texts, own)}));
    }
    const auto named = modelsIn(pathText(path.filename()));
    if (!named.empty() && !named.contains(own))
        findings.push_back(texts.caption(Caption::findingNameModel,
                                         {shownName(texts, *named.begin()), shownName(texts, own)}));
    return findings;
}

} // namespace karvo
