#include "cvdata/cv_kind.h"

#include <algorithm>
#include <array>

namespace karvo
{

namespace
{

struct GroupWord {
    TextView word;
    Caption caption;
};

// In the order of CvGroup.
constexpr std::array<GroupWord, cvGroupCount> groupWords = {{
    {u"identification", Caption::groupIdentification},
    {u"addresses", Caption::groupAddresses},
    {u"mode", Caption::groupMode},
    {u"driving", Caption::groupDriving},
    {u"automatic", Caption::groupAutomatic},
    {u"speed-table", Caption::groupSpeedTable},
    {u"braking", Caption::groupBraking},
    {u"infrared", Caption::groupInfrared},
    {u"identity", Caption::groupIdentity},
    {u"keys", Caption::groupKeys},
    {u"outputs", Caption::groupOutputs},
    {u"equipment", Caption::groupEquipment},
    {u"lights", Caption::groupLights},
    {u"brightness", Caption::groupBrightness},
    {u"blue-light", Caption::groupBlueLight},
    {u"bus", Caption::groupBus},
    {u"fire", Caption::groupFire},
    {u"battery", Caption::groupBattery},
    {u"servo", Caption::groupServo},
    {u"tacho", Caption::groupTacho},
    {u"lane", Caption::groupLane},
    {u"trailer", Caption::groupTrailer},
    {u"turnout", Caption::groupTurnout},
    {u"recognition", Caption::groupRecognition},
    {u"return-times", Caption::groupReturnTimes},
    {u"reset", Caption::groupReset},
}};

constexpr TextView groupPrefix = u"group=";
constexpr TextView choicePrefix = u"choice=";
constexpr TextView specialPrefix = u"special=";
constexpr TextView unitPrefix = u"unit=";

bool isOwn(TextView field, Column column)
{
    switch (column) {
    case Column::groups:
        return field.starts_with(groupPrefix);
    case Column::words:
        return field.starts_with(choicePrefix) || field.starts_with(specialPrefix);
    case Column::unit:
        return field.starts_with(unitPrefix);
    case Column::marks:
        return field.starts_with(markPrefix);
    default:
        return false;
    }
}

// What follows the prefix, cut at the separator; nothing where the field begins otherwise.
std::vector<TextView> partsBehind(TextView field, TextView prefix, char16_t separator)
{
    std::vector<TextView> parts;
    if (!field.starts_with(prefix))
        return parts;
    for (auto end = prefix.size() - 1; end != TextView::npos; end = field.find(separator)) {
        field.remove_prefix(end + 1);
        parts.push_back(field.substr(0, field.find(separator)));
    }
    return parts;
}

std::optional<int> numberWithin(TextView text, int lowest, int highest)
{
    const auto number = numberFromText(text);
    return number && *number >= lowest && *number <= highest ? number : std::nullopt;
}

// "infrared", or "infrared:1" for single bits.
std::vector<GroupShare> groupsIn(TextView field)
{
    std::vector<GroupShare> groups;
    for (const TextView part : partsBehind(field, groupPrefix, u',')) {
        const auto colon = part.find(u':');
        const auto group = groupOfWord(trimmed(part.substr(0, colon)));
        const auto bits = colon == TextView::npos ? 255 : numberWithin(part.substr(colon + 1), 1, 255);
        if (group && bits)
            groups.push_back({*group, *bits});
    }
    return groups;
}

// "0:off|255:full brightness"
std::vector<NamedValue> wordsIn(TextView field, TextView prefix)
{
    std::vector<NamedValue> words;
    for (const TextView part : partsBehind(field, prefix, u'|')) {
        const auto colon = part.find(u':');
        const auto value = numberWithin(part.substr(0, colon), 0, 255);
        const TextView word = colon == TextView::npos ? TextView() : trimmed(part.substr(colon + 1));
        if (value && !word.empty())
            words.push_back({*value, Text(word)});
    }
    const auto byValue = [](const NamedValue& a, const NamedValue& b) { return a.value < b.value; };
    const auto isSame = [](const NamedValue& a, const NamedValue& b) { return a.value == b.value; };
    std::stable_sort(words.begin(), words.end(), byValue);
    words.erase(std::unique(words.begin(), words.end(), isSame), words.end());
    return words;
}

// "5", "0.1" and "1/255" as a fraction; nothing for anything else.
std::optional<CvUnit> factorIn(TextView text)
{
    constexpr int highest = 10'000;
    CvUnit unit;
    Text digits(text);
    if (const auto slash = text.find(u'/'); slash != TextView::npos) {
        const auto denominator = numberWithin(text.substr(slash + 1), 1, highest);
        if (!denominator)
            return std::nullopt;
        unit.denominator = *denominator;
        digits = text.substr(0, slash);
    } else if (const auto point = text.find(u'.'); point != TextView::npos) {
        digits.erase(point, 1);
        for (std::size_t i = point + 1; i < text.size() && unit.denominator < highest; ++i)
            unit.denominator *= 10;
    }
    const auto numerator = numberWithin(digits, 1, highest);
    if (!numerator)
        return std::nullopt;
    unit.numerator = *numerator;
    return unit;
}

// "0.1 s", "1/255"
std::optional<CvUnit> unitIn(TextView field)
{
    if (!field.starts_with(unitPrefix))
        return std::nullopt;
    const TextView text = trimmed(field.substr(unitPrefix.size()));
    const auto blank = text.find(u' ');
    auto unit = factorIn(text.substr(0, blank));
    if (unit && blank != TextView::npos)
        unit->name = trimmed(text.substr(blank));
    return unit;
}

// So many thousandths as a decimal number, with this many decimals at least.
Text decimal(long long thousandths, std::size_t least, bool comma)
{
    Text decimals = textFromNumber(1000 + thousandths % 1000).substr(1);
    while (decimals.size() > least && decimals.back() == u'0')
        decimals.pop_back();
    const Text whole = textFromNumber(thousandths / 1000);
    return decimals.empty() ? whole : joined({whole, comma ? u"," : u".", decimals});
}

} // namespace

Caption captionOf(CvGroup group)
{
    return groupWords[static_cast<std::size_t>(group)].caption;
}

TextView wordOf(CvGroup group)
{
    return groupWords[static_cast<std::size_t>(group)].word;
}

std::optional<CvGroup> groupOfWord(TextView word)
{
    const auto* const found = std::find_if(groupWords.begin(), groupWords.end(),
                                           [&](const GroupWord& one) { return one.word == word; });
    if (found == groupWords.end())
        return std::nullopt;
    return static_cast<CvGroup>(found - groupWords.begin());
}

TextView CvKind::wordOfValue(int value) const
{
    for (const auto* const words : {&choices, &specials}) {
        for (const NamedValue& named : *words) {
            if (named.value == value)
                return named.word;
        }
    }
    return {};
}

CvKind kindOf(const CvTable& table, int cv)
{
    const Text& words = table.at(cv, Column::words);
    return {groupsIn(table.at(cv, Column::groups)), wordsIn(words, choicePrefix),
            wordsIn(words, specialPrefix), unitIn(table.at(cv, Column::unit))};
}

bool carries(const CvTable& table, Column column)
{
    for (int cv = 1; cv <= CvTable::lastRow; ++cv) {
        if (isOwn(table.at(cv, column), column))
            return true;
    }
    return false;
}

Text timeText(long long milliseconds, bool decimalComma)
{
    constexpr long long second = 1000;
    constexpr long long minute = 60 * second;
    if (milliseconds < minute || milliseconds % second != 0)
        return decimal(milliseconds, 0, decimalComma) + u" s";
    const Text minutes = textFromNumber(milliseconds / minute) + u" min";
    const long long rest = milliseconds % minute / second;
    return rest == 0 ? minutes : joined({minutes, u" ", textFromNumber(rest), u" s"});
}

Text inUnit(int value, const CvUnit& unit, bool decimalComma)
{
    const long long thousandths = 1000LL * value * unit.numerator / unit.denominator;
    if (unit.isShare())
        return textFromNumber((100LL * value * unit.numerator * 2 + unit.denominator) /
                              (2LL * unit.denominator)) +
               u" %";
    if (unit.isTime() && (unit.name == u"s" || thousandths >= 1'000'000))
        return timeText(unit.name == u"s" ? thousandths : thousandths / 1000, decimalComma);
    if (unit.name == u"mV")
        return decimal(thousandths / 1000, 2, decimalComma) + u" V";
    return joined({decimal(thousandths, 0, decimalComma), u" ", unit.name});
}

Text meaningOf(int value, const CvKind& kind, bool decimalComma)
{
    if (const TextView word = kind.wordOfValue(value); !word.empty())
        return Text(word);
    return kind.unit ? inUnit(value, *kind.unit, decimalComma) : textFromNumber(value);
}

} // namespace karvo
