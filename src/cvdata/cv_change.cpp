#include "cvdata/cv_change.h"

#include "cvdata/cv_table.h"

#include <algorithm>

namespace karvo
{

namespace
{

constexpr TextView blanks = u" \t\r\n";

// Digits alone: what stands in a change has no sign.
std::optional<int> plainNumber(TextView digits)
{
    const bool isPlain = !digits.empty() && digits.find_first_not_of(u"0123456789") == TextView::npos;
    return isPlain ? numberFromText(digits) : std::nullopt;
}

} // namespace

std::optional<CvChange> changeFromText(TextView word)
{
    const Text lower = lowerCase(word);
    TextView text = lower;
    if (text.starts_with(u"cv"))
        text.remove_prefix(2);
    const auto equals = text.find(u'=');
    if (equals == TextView::npos)
        return std::nullopt;
    const auto cv = plainNumber(text.substr(0, equals));
    const auto value = plainNumber(text.substr(equals + 1));
    if (!cv || !value)
        return std::nullopt;
    return CvChange{*cv, *value};
}

std::optional<std::vector<CvChange>> changesFromText(TextView text)
{
    std::vector<CvChange> changes;
    for (auto start = text.find_first_not_of(blanks); start != TextView::npos;
         start = text.find_first_not_of(blanks)) {
        text.remove_prefix(start);
        const auto end = std::min(text.find_first_of(blanks), text.size());
        const auto change = changeFromText(text.substr(0, end));
        text.remove_prefix(end);
        const bool isSound = change && change->cv >= 1 && change->cv <= CvTable::lastRow &&
                             isCvValue(change->value) &&
                             std::none_of(changes.begin(), changes.end(),
                                          [&](const CvChange& other) { return other.cv == change->cv; });
        if (!isSound)
            return std::nullopt;
        changes.push_back(*change);
    }
    return changes.empty() ? std::nullopt : std::optional(changes);
}

Text textOfChanges(std::span<const CvChange> changes)
{
    Text text;
    for (const CvChange& change : changes)
        text += joined(
            {text.empty() ? u"CV" : u" CV", textFromNumber(change.cv), u"=", textFromNumber(change.value)});
    return text;
}

} // namespace karvo
