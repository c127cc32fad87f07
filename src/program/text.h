// What people read (Text) and what goes over the wire or stands in a file (Bytes): two types that never mix.
//
// The installed files are Windows-1252. A Text holds one unit per byte of such a file, so positions and
// lengths are plain indexing. The five codes that Windows-1252 leaves undefined become U+0081, U+008D,
// U+008F, U+0090, U+009D, so that every file survives a round trip byte for byte. A path inside a message may
// hold any character.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace karvo
{

using Text = std::u16string;
using TextView = std::u16string_view;
using Bytes = std::vector<std::uint8_t>;

inline constexpr TextView lineBreak = u"\r\n";

Text textFromWindows1252(std::span<const std::uint8_t> bytes);

// Nothing when a character has no code in Windows-1252.
std::optional<Bytes> windows1252FromText(TextView text);

// Whether Windows-1252 has a code for this character: what may be typed into a file.
bool fitsWindows1252(char16_t character);

// Broken UTF-8 becomes U+FFFD, broken surrogate pairs become "?".
Text textFromUtf8(std::string_view utf8);
std::string utf8FromText(TextView text);

// Whether the bytes are whole, sound UTF-8 characters.
bool isUtf8(std::string_view bytes);

// Decimal digits, with a leading "-" below zero.
Text textFromNumber(long long number);

// A whole decimal number, blanks around it allowed; nothing for anything else or beyond the range of int.
std::optional<int> numberFromText(TextView text);

// One behind the other.
Text joined(std::initializer_list<TextView> parts);

// Without the blanks and tabs at both ends.
TextView trimmed(TextView text);

// Letters of Windows-1252 in lower case, for searching and for comparing names of files.
Text lowerCase(TextView text);

// `pattern` with each "{1}" to "{9}" replaced by the argument of that position; a mark without one stays.
Text filledIn(TextView pattern, std::span<const Text> arguments);

} // namespace karvo
