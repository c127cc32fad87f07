#include "firmware/hex_image.h"

#include "support/hex_file.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using test::bytesOf;
using test::hexFile;
using test::hexLine;

std::variant<HexImage, FileRefusal> parsed(const std::string& content)
{
    return parseHexImage(bytesOf(content));
}

TEST(HexImageTest, JoinsRecordsByAddressAndFillsTheLastPage)
{
    const auto result = parsed(":020000020000FC\r\n:020002000304F5\r\n:020000000102FB\r\n:00000001FF\r\n");
    ASSERT_TRUE(std::holds_alternative<HexImage>(result));
    const auto& image = std::get<HexImage>(result);
    EXPECT_EQ(image.data, (Bytes{1, 2, 3, 4}));
    const auto pages = image.pages();
    ASSERT_EQ(pages.size(), 1U);
    EXPECT_EQ(pages[0][3], 4);
    EXPECT_EQ(pages[0][4], 0xFF);
    EXPECT_EQ(pages[0][127], 0xFF);
}

TEST(HexImageTest, EightRecordsOfSixteenBytesMakeAPage)
{
    const auto result = parsed(hexFile(9));
    ASSERT_TRUE(std::holds_alternative<HexImage>(result));
    const auto pages = std::get<HexImage>(result).pages();
    ASSERT_EQ(pages.size(), 2U);
    EXPECT_EQ(pages[0][127], test::flashByte(127));
    EXPECT_EQ(pages[1][15], test::flashByte(143));
    EXPECT_EQ(pages[1][16], 0xFF);
}

// What editors and old systems leave behind; the first line alone is exact.
TEST(HexImageTest, TakesBlanksBehindLinesAndEmptyLinesBehindTheEnd)
{
    const auto result =
        parsed(":020000020000FC\r\n:020000000102FB \t\r\n:00000001FF  \r\n\r\n \t\r\n\x1A\x1A");
    ASSERT_TRUE(std::holds_alternative<HexImage>(result));
    EXPECT_EQ(std::get<HexImage>(result).data, (Bytes{1, 2}));
    EXPECT_TRUE(
        std::holds_alternative<HexImage>(parsed(":020000020000FC\n:020000000102FB\n:00000001FF\x1A")));
}

TEST(HexImageTest, Takes2048DataLinesAndNoMore)
{
    const auto most = parsed(hexFile(2048));
    ASSERT_TRUE(std::holds_alternative<HexImage>(most));
    EXPECT_EQ(std::get<HexImage>(most).pages().size(), 256U);
    const auto tooMany = parsed(hexFile(2049));
    ASSERT_TRUE(std::holds_alternative<FileRefusal>(tooMany));
    EXPECT_EQ(std::get<FileRefusal>(tooMany).fault, FileFault::tooManyLines);
    EXPECT_EQ(std::get<FileRefusal>(tooMany).line, 2050);
}

struct RefusedCase {
    const char* name;
    std::string content;
    FileFault fault;
    int line;
};

const std::string first = ":020000020000FC\r\n";
const std::string end = ":00000001FF\r\n";

const RefusedCase refusedCases[] = {
    {"Empty", "", FileFault::otherFirstLine, 1},
    {"FirstLineInLowerCase", ":020000020000fc\r\n" + end, FileFault::otherFirstLine, 1},
    {"FirstLineWithABlank", ":020000020000FC \r\n" + end, FileFault::otherFirstLine, 1},
    {"CarriageReturnsOnly", ":020000020000FC\r:00000001FF\r", FileFault::otherFirstLine, 1},
    {"NoColon", first + "00000001FF\r\n", FileFault::lineForm, 2},
    {"OddDigits", first + ":0100000001F\r\n", FileFault::lineForm, 2},
    {"Binary", first + std::string(":\0\x01\xFF", 4) + "\r\n", FileFault::lineForm, 2},
    {"EmptyLine", first + "\r\n" + end, FileFault::lineForm, 2},
    {"LineCut", first + ":0200000001\r\n" + end, FileFault::lineLength, 2},
    {"NoByteOfData", first + ":0000000000\r\n" + end, FileFault::lineLength, 2},
    {"WrongSum", first + ":0100000001FF\r\n" + end, FileFault::lineSum, 2},
    {"OtherType", first + first + end, FileFault::lineType, 2},
    {"Overlap", first + hexLine(0, {1, 2}) + hexLine(1, {3}) + end, FileFault::overlap, 3},
    {"Gap", first + hexLine(0, {1, 2}) + hexLine(3, {3}) + end, FileFault::gap, 3},
    {"NotFromZero", first + hexLine(16, {1}) + end, FileFault::gap, 2},
    {"NoEnd", first + hexLine(0, {1}), FileFault::endMissing, 2},
    {"LineBehindEnd", first + hexLine(0, {1}) + end + "\r\n" + end, FileFault::linesBehindEnd, 5},
    {"NoData", first + end, FileFault::noData, 2},
};

TEST(HexImageTest, NamesTheFaultAndItsLine)
{
    for (const RefusedCase& refused : refusedCases) {
        const auto result = parsed(refused.content);
        ASSERT_TRUE(std::holds_alternative<FileRefusal>(result)) << refused.name;
        EXPECT_EQ(std::get<FileRefusal>(result).fault, refused.fault) << refused.name;
        EXPECT_EQ(std::get<FileRefusal>(result).line, refused.line) << refused.name;
    }
}

} // namespace
} // namespace karvo
