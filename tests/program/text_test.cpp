#include "program/binary_text.h"
#include "program/check_byte.h"
#include "program/clock.h"
#include "program/path_text.h"
#include "program/text.h"
#include "program/text_lines.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

Bytes everyByte()
{
    Bytes bytes(256);
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<std::uint8_t>(i);
    return bytes;
}

TEST(TextTest, EveryByteSurvivesTheRoundTrip)
{
    EXPECT_EQ(windows1252FromText(textFromWindows1252(everyByte())), everyByte());
}

TEST(TextTest, Windows1252HasItsOwnCharactersAndItsGaps)
{
    const Bytes bytes = {0x80, 0x8A, 0x96, 0x9F, 0xE4, 0x81, 0x9D};
    EXPECT_EQ(textFromWindows1252(bytes), u"\u20AC\u0160\u2013\u0178\u00E4\u0081\u009D");
    EXPECT_FALSE(windows1252FromText(u"\u0141\u00F3d\u017A"));
    EXPECT_FALSE(fitsWindows1252(u'\u0080'));
    EXPECT_TRUE(fitsWindows1252(u'\u0090'));
}

TEST(TextTest, Utf8RoundTripAndBrokenSequences)
{
    const std::string mixed = "a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x9A\x92";
    EXPECT_EQ(utf8FromText(textFromUtf8(mixed)), mixed);
    EXPECT_EQ(textFromUtf8("\xC3"), u"\uFFFD");
    EXPECT_EQ(textFromUtf8("\xC0\x80x"), u"\uFFFD\uFFFDx");         // overlong
    EXPECT_EQ(textFromUtf8("\xED\xA0\x80"), u"\uFFFD\uFFFD\uFFFD"); // a lone surrogate
    EXPECT_EQ(utf8FromText(Text(1, char16_t{0xD800})), "?");
}

TEST(TextTest, NumbersAreWholeAndDecimal)
{
    EXPECT_EQ(numberFromText(u" 42\t"), 42);
    EXPECT_EQ(numberFromText(u"-3"), -3);
    for (const TextView text : {u"", u" ", u"12a", u"1 2", u"0x1F", u"99999999999", u"\u0661"})
        EXPECT_EQ(numberFromText(text), std::nullopt) << utf8FromText(text);
}

TEST(TextTest, FillsInArgumentsByPosition)
{
    const Text arguments[] = {u"{2}", u"b"};
    EXPECT_EQ(filledIn(u"{1}-{2}-{1}", arguments), u"{2}-b-{2}"); // what is filled in stays as it is
    EXPECT_EQ(filledIn(u"{3} {x} {", arguments), u"{3} {x} {");
}

TEST(TextTest, LowerCaseCoversTheLettersOfWindows1252)
{
    EXPECT_EQ(lowerCase(u"ÄÖÜ ÑÉ ŠŒŽŸ ×ß"), u"äöü ñé šœžÿ ×ß");
}

TEST(TextLinesTest, LineEndsAndLastLines)
{
    struct Case {
        std::string_view content;
        std::vector<Text> lines;
    };
    const Case cases[] = {{"", {}},
                          {"a", {u"a"}},
                          {"a\r\nb\r\n", {u"a", u"b"}},
                          {"a\nb", {u"a", u"b"}},
                          {"a\r\n\r\nb", {u"a", u"", u"b"}},
                          {"\n", {u""}},
                          {"a\rb\n", {u"a\rb"}}};
    for (const Case& c : cases)
        EXPECT_EQ(linesOf(Bytes(c.content.begin(), c.content.end())), c.lines) << c.content;
}

TEST(TextLinesTest, RecognisesUtf8ByItsBytes)
{
    const Bytes marked = {0xEF, 0xBB, 0xBF, 'a', '\n'};
    const Bytes unmarked = {'L', 0xC3, 0xA4, 'n', 'g', 'e'};
    const Bytes windows = {'L', 0xE4, 'n', 'g', 'e'};
    EXPECT_EQ(linesOf(marked), std::vector<Text>{u"a"});
    EXPECT_EQ(linesOf(unmarked), std::vector<Text>{u"Länge"});
    EXPECT_EQ(linesOf(windows), std::vector<Text>{u"Länge"});
}

TEST(TextLinesTest, EachLineIsWhatItsBytesAre)
{
    const Bytes mixed = {'a', 0xC3, 0xA4, 10, 'b', 0xE4, 13, 10, 'c', 0xE2, 0x82, 0xAC};
    EXPECT_EQ(linesOf(mixed), (std::vector<Text>{u"a\u00E4", u"b\u00E4", u"c\u20AC"}));
    const Bytes marked = {0xEF, 0xBB, 0xBF, 0xC3, 0xA4, 10, 0xE4, 10};
    EXPECT_EQ(linesOf(marked), (std::vector<Text>{u"\u00E4", u"\u00E4"}));
    // A character cut in two by the end of its line.
    EXPECT_EQ(linesOf(Bytes{0xC3, 10, 0xA4}), (std::vector<Text>{u"\u00C3", u"\u00A4"}));
    // Bytes of Windows-1252 that are UTF-8 by chance are not written, whatever the other lines hold.
    const Text text = u"\u00C3\u00A4\n\u00E4\n";
    EXPECT_EQ(decodedTextFile(encodedTextFile(text)), text);
}

TEST(CheckByteTest, IsTheSumModulo256)
{
    EXPECT_EQ(checkByte(Bytes{}), 0);
    EXPECT_EQ(checkByte(Bytes{99, 200}), 43);
    EXPECT_EQ(checkByte(Bytes(1024, 255)), 0);
    EXPECT_EQ(checkByte(Bytes{255, 255, 1}), 255);
}

TEST(BinaryTextTest, HasAtLeastEightDigits)
{
    EXPECT_EQ(binaryText(5), u"00000101");
    EXPECT_EQ(binaryText(0), u"00000000");
    EXPECT_EQ(binaryText(255), u"11111111");
    EXPECT_EQ(binaryText(256), u"100000000");
}

TEST(TextFileTest, IsWrittenSoThatItReadsTheSame)
{
    EXPECT_EQ(encodedTextFile(u"L\u00E4nge \u20AC\r\n"),
              (Bytes{'L', 0xE4, 'n', 'g', 'e', ' ', 0x80, 13, 10}));
    for (const TextView text : {u"\u03A9", u"\u00C3\u00A4", u"\u00EF\u00BB\u00BFx", u"plain", u"", u"\u0081"})
        EXPECT_EQ(decodedTextFile(encodedTextFile(text)), text) << utf8FromText(text);
    const Text lines[] = {u"a", u"", u"b"};
    EXPECT_EQ(contentOfLines(lines), (Bytes{'a', 13, 10, 13, 10, 'b', 13, 10}));
    EXPECT_EQ(linesOf(contentOfLines(lines)), (std::vector<Text>{u"a", u"", u"b"}));
}

TEST(ClockTest, DatesSortAndMayNameFiles)
{
    EXPECT_EQ(dateText({2026, 1, 2, 3, 4, 5}), u"2026-01-02");
    EXPECT_EQ(timeText({2026, 1, 2, 3, 4, 5}), u"03-04-05");
    EXPECT_EQ(timeText({2026, 11, 22, 23, 59, 10}), u"23-59-10");
}

TEST(PathTextTest, NamesAnyPath)
{
    EXPECT_EQ(pathText(std::filesystem::path(u"Linie \u03A9.kvr")), u"Linie \u03A9.kvr");
    const bool namesAreBytes = sizeof(std::filesystem::path::value_type) == 1;
    if (namesAreBytes) {
        EXPECT_EQ(pathText(std::filesystem::path("a\xFF\x62")), u"a\uFFFDb");
    }
}

} // namespace
} // namespace karvo
