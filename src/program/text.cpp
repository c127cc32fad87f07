#include "program/text.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace karvo
{

namespace
{

// Codes 0x80 to 0x9F; every other code is its own character.
constexpr std::array<char16_t, 32> upperControlRow = {
    u'\u20AC', char16_t{0x81}, u'\u201A',      u'\u0192', u'\u201E', u'\u2026', u'\u2020',
    u'\u2021', u'\u02C6',      u'\u2030',      u'\u0160', u'\u2039', u'\u0152', char16_t{0x8D},
    u'\u017D', char16_t{0x8F}, char16_t{0x90}, u'\u2018', u'\u2019', u'\u201C', u'\u201D',
    u'\u2022', u'\u2013',      u'\u2014',      u'\u02DC', u'\u2122', u'\u0161', u'\u203A',
    u'\u0153', char16_t{0x9D}, u'\u017E',      u'\u0178'};

constexpr char32_t replacement = 0xFFFD;

std::optional<std::uint8_t> codeOf(char16_t character)
{
    if (character < 0x80 || (character >= 0xA0 && character <= 0xFF))
        return static_cast<std::uint8_t>(character);
    const auto found = std::find(upperControlRow.begin(), upperControlRow.end(), character);
    if (found == upperControlRow.end())
        return std::nullopt;
    return static_cast<std::uint8_t>(0x80 + (found - upperControlRow.begin()));
}

void appendUtf16(Text& text, char32_t point)
{
    if (point < 0x10000) {
        text += static_cast<char16_t>(point);
        return;
    }
    point -= 0x10000;
    text += static_cast<char16_t>(0xD800 + (point >> 10));
    text += static_cast<char16_t>(0xDC00 + (point & 0x3FF));
}

void appendUtf8(std::string& utf8, char32_t point)
{
    const auto tail = [point](int shift) { return static_cast<char>(0x80 | ((point >> shift) & 0x3F)); };
    if (point < 0x80) {
        utf8 += static_cast<char>(point);
    } else if (point < 0x800) {
        utf8 += static_cast<char>(0xC0 | (point >> 6));
        utf8 += tail(0);
    } else if (point < 0x10000) {
        utf8 += static_cast<char>(0xE0 | (point >> 12));
        utf8 += tail(6);
        utf8 += tail(0);
    } else {
        utf8 += static_cast<char>(0xF0 | (point >> 18));
        utf8 += tail(12);
        utf8 += tail(6);
        utf8 += tail(0);
    }
}

struct Utf8Lead {
    std::size_t length; // bytes of the whole character, 0 for a byte that starts none
    char32_t bits;
    char32_t smallest; // a smaller point written in this length is an overlong form
};

Utf8Lead utf8Lead(unsigned char byte)
{
    if (byte < 0x80)
        return {1, byte, 0};
    if (byte >= 0xC2 && byte < 0xE0)
        return {2, byte & 0x1Fu, 0x80};
    if (byte >= 0xE0 && byte < 0xF0)
        return {3, byte & 0x0Fu, 0x800};
    if (byte >= 0xF0 && byte < 0xF5)
        return {4, byte & 0x07u, 0x10000};
    return {0, 0, 0};
}

// The character at `at` and the position behind it; a broken one is one replacement for its first byte.
std::pair<char32_t, std::size_t> nextPoint(std::string_view utf8, std::size_t at)
{
    const auto lead = utf8Lead(static_cast<unsigned char>(utf8[at]));
    if (lead.length == 0 || at + lead.length > utf8.size())
        return {replacement, at + 1};
    char32_t point = lead.bits;
    for (std::size_t i = 1; i < lead.length; ++i) {
        const auto byte = static_cast<unsigned char>(utf8[at + i]);
        if ((byte & 0xC0) != 0x80)
            return {replacement, at + 1};
        point = (point << 6) | (byte & 0x3Fu);
    }
    const bool surrogate = point >= 0xD800 && point < 0xE000;
    if (point < lead.smallest || point > 0x10FFFF || surrogate)
        return {replacement, at + 1};
    return {point, at + lead.length};
}

} // namespace

Text textFromWindows1252(std::span<const std::uint8_t> bytes)
{
    Text text(bytes.size(), u'\0');
    std::transform(bytes.begin(), bytes.end(), text.begin(), [](std::uint8_t byte) {
        return byte >= 0x80 && byte < 0xA0 ? upperControlRow[byte - 0x80u] : static_cast<char16_t>(byte);
    });
    return text;
}

std::optional<Bytes> windows1252FromText(TextView text)
{
    Bytes bytes;
    bytes.reserve(text.size());
    for (const char16_t character : text) {
        const auto code = codeOf(character);
        if (!code)
            return std::nullopt;
        bytes.push_back(*code);
    }
    return bytes;
}

bool fitsWindows1252(char16_t character)
{
    return codeOf(character).has_value();
}

Text textFromUtf8(std::string_view utf8)
{
    Text text;
    text.reserve(utf8.size());
    for (std::size_t at = 0; at < utf8.size();) {
        const auto [point, next] = nextPoint(utf8, at);
        appendUtf16(text, point);
        at = next;
    }
    return text;
}

std::string utf8FromText(TextView text)
{
    std::string utf8;
    utf8.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char16_t unit = text[at];
        const bool high = unit >= 0xD800 && unit < 0xDC00;
        const bool low = unit >= 0xDC00 && unit < 0xE000;
        const bool paired = high && at + 1 < text.size() && text[at + 1] >= 0xDC00 && text[at + 1] < 0xE000;
        if (paired) {
            const auto tail = static_cast<char32_t>(text[++at] - 0xDC00);
            appendUtf8(utf8, 0x10000 + (static_cast<char32_t>(unit - 0xD800) << 10) + tail);
        } else {
            appendUtf8(utf8, high || low ? U'?' : unit);
        }
    }
    return utf8;
}

// A U+FFFD is refused too: it says that a character was lost before.
bool isUtf8(std::string_view bytes)
{
    for (std::size_t at = 0; at < bytes.size();) {
        const auto [point, next] = nextPoint(bytes, at);
        if (point == replacement)
            return false;
        at = next;
    }
    return true;
}

Text textFromNumber(long long number)
{
    std::array<char, 24> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    return Text(digits.data(), end);
}

std::optional<int> numberFromText(TextView text)
{
    std::string digits;
    for (const char16_t character : trimmed(text)) {
        if (character > 0x7F)
            return std::nullopt;
        digits += static_cast<char>(character);
    }
    int number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error != std::errc{} || end != digits.data() + digits.size())
        return std::nullopt;
    return number;
}

TextView trimmed(TextView text)
{
    constexpr TextView blanks = u" \t";
    const auto first = text.find_first_not_of(blanks);
    if (first == TextView::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

Text joined(std::initializer_list<TextView> parts)
{
    Text whole;
    for (const TextView part : parts)
        whole += part;
    return whole;
}

Text lowerCase(TextView text)
{
    Text lower(text);
    for (char16_t& character : lower) {
        const bool latin = character >= u'A' && character <= u'Z';
        const bool accented = character >= 0xC0 && character <= 0xDE && character != 0xD7;
        if (latin || accented)
            character = static_cast<char16_t>(character + 0x20);
        else if (character == u'\u0160' || character == u'\u0152' || character == u'\u017D')
            ++character;
        else if (character == u'\u0178')
            character = 0xFF;
    }
    return lower;
}

Text filledIn(TextView pattern, std::span<const Text> arguments)
{
    Text text;
    for (std::size_t at = 0; at < pattern.size();) {
        const bool mark = pattern.size() - at >= 3 && pattern[at] == u'{' && pattern[at + 2] == u'}';
        const auto index = mark ? static_cast<std::size_t>(pattern[at + 1] - u'1') : arguments.size();
        if (index < arguments.size()) {
            text += arguments[index];
            at += 3;
        } else {
            text += pattern[at++];
        }
    }
    return text;
}

} // namespace karvo
