#include "firmware/hex_image.h"

#include "support/hex_file.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using test::hexLine;

const std::string first = ":020000020000FC\r\n";
const std::string end = ":00000001FF\r\n";

std::variant<HexImage, FileRefusal> parsed(const std::string& content)
{
    return parseHexImage(test::bytesOf(content));
}

std::string blocks(std::size_t count, std::size_t size)
{
    std::string lines;
    for (std::size_t i = 0; i < count; ++i)
        lines += hexLine(static_cast<unsigned>(i * size), Bytes(size, 0x55));
    return lines;
}

TEST(HexImageTest, JoinsRecordsByAddressAndFillsTheLastPage)
{
    const auto data = std::get<HexImage>(parsed(first + hexLine(2, {3, 4}) + hexLine(0, {1, 2}) + end)).data;
    EXPECT_EQ(data, (Bytes{1, 2, 3, 4}));
    const auto pages = std::get<HexImage>(parsed(test::hexFile(9))).pages();
    ASSERT_EQ(pages.size(), 2U);
    EXPECT_EQ(pages[0][127], test::flashByte(127));
    EXPECT_EQ(pages[1][15], test::flashByte(143));
    EXPECT_EQ(pages[1][16], 0xFF);
    EXPECT_EQ(pages[1][127], 0xFF);
}

TEST(HexImageTest, TakesWhatEditorsLeaveBehindAndAFullFlash)
{
    const std::pair<std::string, std::size_t> cases[] = {
        {first + ":020000000102FB \t\r\n:00000001FF  \r\n\r\n \t\r\n\x1A\x1A", 2},
        {":020000020000FC\n:020000000102FB\n:00000001FF\x1A", 2},
        {test::hexFile(2048), 32768},
        {first + blocks(256, 128) + end, 32768}};
    for (const auto& [content, size] : cases) {
        const auto result = parsed(content);
        ASSERT_TRUE(std::holds_alternative<HexImage>(result)) << content.substr(0, 100);
        EXPECT_EQ(std::get<HexImage>(result).data.size(), size);
    }
}

TEST(HexImageTest, NamesTheFaultAndItsLine)
{
    struct Case {
        std::string content;
        FileFault fault;
        int line;
    };
    const Case cases[] = {
        {"", FileFault::otherFirstLine, 1},
        {":020000020000fc\r\n" + end, FileFault::otherFirstLine, 1},
        {":020000020000FC \r\n" + end, FileFault::otherFirstLine, 1},
        {":020000020000FC\r:00000001FF\r", FileFault::otherFirstLine, 1},
        {first + "00000001FF\r\n", FileFault::lineForm, 2},
        {first + ":0100000001F\r\n", FileFault::lineForm, 2},
        {first + std::string(":\0\x01\xFF", 4) + "\r\n", FileFault::lineForm, 2},
        {first + "\r\n" + end, FileFault::lineForm, 2},
        {first + ":0200000001\r\n" + end, FileFault::lineLength, 2},
        {first + ":0000000000\r\n" + end, FileFault::lineLength, 2},
        {first + ":0100000001FF\r\n" + end, FileFault::lineSum, 2},
        {first + first + end, FileFault::lineType, 2},
        {first + hexLine(0, {1, 2}) + hexLine(1, {3}) + end, FileFault::overlap, 3},
        {first + hexLine(0, {1, 2}) + hexLine(3, {3}) + end, FileFault::gap, 3},
        {first + hexLine(16, {1}) + end, FileFault::gap, 2},
        {first + hexLine(0, {1}), FileFault::endMissing, 2},
        {first + hexLine(0, {1}) + end + "\r\n" + end, FileFault::linesBehindEnd, 5},
        {first + end, FileFault::noData, 2},
        {first + blocks(257, 128) + end, FileFault::tooLarge, 258},
        {test::hexFile(2049), FileFault::tooManyLines, 2050},
    };
    for (const Case& refused : cases) {
        const auto result = parsed(refused.content);
        ASSERT_TRUE(std::holds_alternative<FileRefusal>(result)) << refused.content;
        EXPECT_EQ(std::get<FileRefusal>(result).fault, refused.fault) << refused.content;
        EXPECT_EQ(std::get<FileRefusal>(result).line, refused.line) << refused.content;
    }
}

} // namespace
} // namespace karvo
