#include "program/bytes.h"
#include "program/clock.h"
#include "program/path_text.h"
#include "program/text.h"
#include "program/text_lines.h"
#include "support/case_table.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

Bytes bytesOf(std::string_view content)
{
    return Bytes(content.begin(), content.end());
}

TEST(TextTest, Windows1252HasItsOwnCharactersAndItsGaps)
{
    Bytes everyByte(256);
    for (std::size_t i = 0; i < everyByte.size(); ++i)
        everyByte[i] = static_cast<std::uint8_t>(i);
    EXPECT_EQ(windows1252FromText(textFromWindows1252(everyByte)), everyByte);
    EXPECT_EQ(textFromWindows1252(bytesOf("\x80\x8A\x96\x9F\xE4\x81\x9D")),
              u"\u20AC\u0160\u2013\u0178\u00E4\u0081\u009D");
    EXPECT_FALSE(windows1252FromText(u"\u0141\u00F3d\u017A"));
    EXPECT_FALSE(fitsWindows1252(u'\u0080'));
    EXPECT_TRUE(fitsWindows1252(u'\u0090'));
}

TEST(TextTest, Utf8RoundTripAndBrokenSequences)
{
    const std::string mixed = "a\xC3\xA4\xE0\xA4\x84\xE2\x82\xAC\xF0\x9F\x9A\x92";
    EXPECT_EQ(utf8FromText(textFromUtf8(mixed)), mixed);
    EXPECT_EQ(textFromUtf8("\xC3"), u"\uFFFD");
    EXPECT_EQ(textFromUtf8("\xC0\x80x"), u"\uFFFD\uFFFDx");          // overlong
    EXPECT_EQ(textFromUtf8("\xED\xA0\x80"), u"\uFFFD\uFFFD\uFFFD");  // a lone surrogate
    EXPECT_EQ(textFromUtf8("\xF4\x90\x80\x80"), Text(4, u'\uFFFD')); // beyond the last one
    EXPECT_EQ(utf8FromText(Text(1, char16_t{0xD800})), "?");
    EXPECT_EQ(pathText(std::filesystem::path(u"Linie \u03A9.kvr")), u"Linie \u03A9.kvr");
    if (sizeof(std::filesystem::path::value_type) == 1) { // a name of bytes may be broken
        EXPECT_EQ(pathText(std::filesystem::path("a\xFF\x62")), u"a\uFFFDb");
    }
}

TEST(TextTest, NumbersAndLettersInTexts)
{
    EXPECT_EQ(numberFromText(u" 42\t"), 42);
    EXPECT_EQ(numberFromText(u"-3"), -3);
    for (const TextView text : {u"", u" ", u"12a", u"1 2", u"0x1F", u"99999999999", u"\u0661"})
        EXPECT_EQ(numberFromText(text), std::nullopt) << utf8FromText(text);
    EXPECT_EQ(lowerCase(u"ÄÖÜ ÑÉ ŠŒŽŸ ×ß"), u"äöü ñé šœžÿ ×ß");
    const Text arguments[] = {u"{2}", u"b"};
    EXPECT_EQ(filledIn(u"{1}-{2}-{1}", arguments), u"{2}-b-{2}"); // what is filled in stays as it is
    EXPECT_EQ(filledIn(u"{3} {x} {", arguments), u"{3} {x} {");
    const std::pair<unsigned, TextView> binaries[] = {
        {0, u"00000000"}, {5, u"00000101"}, {255, u"11111111"}, {256, u"100000000"}};
    for (const auto& [number, digits] : binaries)
        EXPECT_EQ(binaryText(number), digits);
}

TEST(TextLinesTest, LineEndsAndEncodingsAreToldByTheBytesOfEachLine)
{
    for (const auto& [content, lines] : test::casesOf<2>("program/lines.txt")) {
        std::string read;
        for (const Text& line : linesOf(bytesOf(content)))
            read += utf8FromText(line) + "$";
        EXPECT_EQ(read, lines) << content;
    }
}

TEST(TextLinesTest, WhatIsWrittenReadsTheSame)
{
    EXPECT_EQ(encodedTextFile(u"L\u00E4nge \u20AC\r\n"), bytesOf("L\xE4nge \x80\r\n"));
    // Bytes of Windows-1252 that are UTF-8 by chance are not written, whatever the other lines hold.
    for (const TextView text : {u"\u03A9", u"\u00C3\u00A4", u"\u00C3\u00A4\n\u00E4\n", u"\u00EF\u00BB\u00BFx",
                                u"plain", u"", u"\u0081"})
        EXPECT_EQ(decodedTextFile(encodedTextFile(text)), text) << utf8FromText(text);
    const Text lines[] = {u"a", u"", u"b"};
    EXPECT_EQ(contentOfLines(lines), bytesOf("a\r\n\r\nb\r\n"));
}

TEST(PathText, ShowsTheSystemsSeparatorsAndAnyName)
{
    const auto separator = static_cast<char16_t>(std::filesystem::path::preferred_separator);
    EXPECT_EQ(pathText(u"lists/\u0416.kvr"), Text(u"lists") + separator + u"\u0416.kvr");
}

TEST(BytesTest, TheCheckByteIsTheSumModulo256)
{
    EXPECT_EQ(checkByte(Bytes()), 0);
    EXPECT_EQ(checkByte(Bytes(1024, 255)), 0);
    EXPECT_EQ(checkByte(Bytes{255, 255, 1}), 255);
}

TEST(ClockTest, DatesSortAndMayNameFiles)
{
    EXPECT_EQ(dateText({2026, 1, 2, 3, 4, 5}), u"2026-01-02");
    EXPECT_EQ(timeText({2026, 1, 2, 3, 4, 5}), u"03-04-05");
    EXPECT_EQ(timeText({2026, 11, 22, 23, 59, 10}), u"23-59-10");
}

} // namespace
} // namespace karvo
