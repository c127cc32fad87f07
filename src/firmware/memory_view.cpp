#include "firmware/memory_view.h"

#include "cvdata/main_list.h"
#include "program/bytes.h"

#include <algorithm>

namespace karvo
{

namespace
{

constexpr char16_t differsMark = u'*';
constexpr TextView cvPrefix = u"cv";

Text hexAddress(std::size_t address)
{
    return joined({u"0x", hexPair(static_cast<std::uint8_t>(address / 256)),
                   hexPair(static_cast<std::uint8_t>(address % 256))});
}

std::vector<Text> wordsOf(TextView text)
{
    std::vector<Text> words;
    for (std::size_t start = 0; (start = text.find_first_not_of(u' ', start)) != TextView::npos;) {
        const auto end = std::min(text.find(u' ', start), text.size());
        words.emplace_back(text.substr(start, end - start));
        start = end;
    }
    return words;
}

// "1", "1B", "1B010E"
std::optional<Bytes> hexBytes(const Text& word)
{
    return bytesFromHex(word.size() == 1 ? u"0" + word : word);
}

std::optional<Bytes> decimalByte(const Text& word)
{
    const auto number = numberFromText(word);
    return isCvValue(number) ? std::optional(Bytes{static_cast<std::uint8_t>(*number)}) : std::nullopt;
}

std::optional<int> cvOf(TextView lowerWord)
{
    return lowerWord.starts_with(cvPrefix) ? numberFromText(lowerWord.substr(cvPrefix.size())) : std::nullopt;
}

bool isNamed(const CvTable& names, std::size_t address, TextView lowerWord)
{
    const int cv = cvAtAddress(address);
    return cv <= CvTable::lastRow && lowerCase(nameOfCv(names, cv)).find(lowerWord) != Text::npos;
}

Text valueText(std::optional<int> value)
{
    return value ? textFromNumber(*value) : Text(u"---");
}

} // namespace

Text MemoryView::addressText(std::size_t address) const
{
    return hexadecimal_ ? hexAddress(address) : textFromNumber(static_cast<long long>(address));
}

Text MemoryView::byteText(std::size_t address) const
{
    const auto byte = image_.at(address);
    if (!byte)
        return {};
    return hexadecimal_ ? hexPair(*byte) : textFromNumber(*byte);
}

Text MemoryView::cellText(std::size_t address) const
{
    Text text = byteText(address);
    if (differs(address))
        text += differsMark;
    return text;
}

bool MemoryView::differs(std::size_t address) const
{
    const auto byte = image_.at(address);
    const auto other = compared_ ? compared_->image.at(address) : std::nullopt;
    return byte && other && *byte != *other;
}

std::vector<std::size_t> MemoryView::differences() const
{
    std::vector<std::size_t> found;
    for (std::size_t address = 0; address < image_.size(); ++address) {
        if (differs(address))
            found.push_back(address);
    }
    return found;
}

std::optional<std::size_t> MemoryView::nextDifference(std::size_t from, bool forward) const
{
    const auto all = differences();
    if (all.empty())
        return std::nullopt;
    if (forward) {
        const auto next = std::upper_bound(all.begin(), all.end(), from);
        return next != all.end() ? *next : all.front();
    }
    const auto here = std::lower_bound(all.begin(), all.end(), from);
    return here != all.begin() ? *std::prev(here) : all.back();
}

template <typename Condition>
std::optional<std::size_t> MemoryView::nextWhere(std::size_t from, const Condition& condition) const
{
    const auto size = image_.size();
    for (std::size_t step = 1; step <= size; ++step) {
        const auto address = (from + step) % size;
        if (condition(address))
            return address;
    }
    return std::nullopt;
}

std::optional<Bytes> MemoryView::bytesOf(TextView wanted) const
{
    Bytes bytes;
    for (const Text& word : wordsOf(wanted)) {
        const auto some = hexadecimal_ ? hexBytes(word) : decimalByte(word);
        if (!some)
            return std::nullopt;
        bytes.insert(bytes.end(), some->begin(), some->end());
    }
    return bytes;
}

bool MemoryView::holdsAt(std::size_t address, const Bytes& bytes) const
{
    return std::all_of(bytes.begin(), bytes.end(),
                       [&](std::uint8_t byte) { return image_.at(address++) == byte; });
}

std::optional<std::size_t> MemoryView::find(TextView wanted, const CvTable& names, std::size_t from) const
{
    const Text word = lowerCase(trimmed(wanted));
    if (word.empty())
        return std::nullopt;
    if (const auto cv = cvOf(word)) {
        const bool isShown = *cv >= 1 && addressOfCv(*cv) < image_.size();
        return isShown ? std::optional(addressOfCv(*cv)) : std::nullopt;
    }
    const auto bytes = bytesOf(word);
    const auto place =
        bytes ? nextWhere(from, [&](std::size_t address) { return holdsAt(address, *bytes); }) : std::nullopt;
    return place ? place
                 : nextWhere(from, [&](std::size_t address) { return isNamed(names, address, word); });
}

Text MemoryView::copied(std::vector<std::size_t> addresses) const
{
    std::sort(addresses.begin(), addresses.end());
    if (addresses.size() < 2) {
        addresses.clear();
        for (std::size_t address = 0; address < image_.size(); ++address)
            addresses.push_back(address);
    }
    Text text;
    std::optional<std::size_t> row;
    for (const auto address : addresses) {
        if (row != address / bytesInRow)
            text += joined({row ? lineBreak : TextView(), addressText(address)});
        row = address / bytesInRow;
        text += joined({u"\t", byteText(address)});
    }
    return text;
}

std::vector<Text> byteDetails(const MemoryView& view, std::size_t address, const CvSet& set,
                              const LanguageTables& texts)
{
    const int cv = cvAtAddress(address);
    const auto byte = view.image().at(address);
    Text first = texts.caption(
        Caption::bytePlace,
        {textFromNumber(cv), textFromNumber(static_cast<long long>(address)), hexAddress(address)});
    if (byte)
        first += joined({u" = ", textFromNumber(*byte), u" = 0x", hexPair(*byte)});
    std::vector<Text> lines = {first};
    if (cv <= CvTable::lastRow && set.table.describes(cv)) {
        lines.push_back(
            texts.caption(Caption::byteInList, {nameOfCv(set.table, cv), valueText(set.table.value(cv))}));
    }
    const auto& other = view.compared();
    if (other && !other->isBenchList)
        lines.push_back(
            texts.message(Message::byteCompared, {other->name, valueText(other->image.at(address))}));
    return lines;
}

} // namespace karvo
