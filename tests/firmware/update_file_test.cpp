#include "firmware/update_file.h"

#include "support/memory_files.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

const std::string whole = ":1000000102030405060708090A0B0C0D0E0F\r\n";

std::variant<UpdateFile, FileRefusal> parsed(const std::string& content)
{
    return parseUpdateFile(test::bytesOf(content));
}

TEST(UpdateFileTest, ReadsHeaderItemsByCommaAndByLineAndFillsAShortRecord)
{
    const auto file =
        std::get<UpdateFile>(parsed("1F80,KV07,3\r\nV6.3\r\n5\n6\r\nUpdate Ende\r\n" + whole + "12345AB\n"));
    ASSERT_EQ(file.header.size(), 6U);
    EXPECT_EQ(file.header[1].text, u"KV07");
    EXPECT_EQ(file.header[1].line, 1);
    EXPECT_EQ(file.header[3].text, u"V6.3");
    EXPECT_EQ(file.header[3].line, 2);
    EXPECT_EQ(file.start, (Bytes{0x1F, 0x80}));
    UpdateRecord shortOne;
    shortOne.fill(0xFF); // erased, not what the line before holds
    shortOne[0] = 0xAB;
    EXPECT_EQ(file.records,
              (std::vector<UpdateRecord>{{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15}, shortOne}));
}

TEST(UpdateFileTest, NamesTheFaultAndItsLine)
{
    struct Case {
        std::string content;
        FileFault fault;
        int line;
    };
    const std::string start = "1F80\r\nUpdate Ende\r\n";
    const Case cases[] = {
        {"", FileFault::headerOpen, 1},
        {"1F80\r\nKV07\r\n", FileFault::headerOpen, 2},
        {"1F80,2,3,4,5,6\r\n7\r\nUpdate Ende\r\n", FileFault::headerTooLong, 2},
        {"1F80,Update Ende," + whole, FileFault::recordForm, 1},
        {"Update Ende\r\n12345AB\r\n", FileFault::headerStart, 1},
        {"KV07\r\nUpdate Ende\r\n12345AB\r\n", FileFault::headerStart, 1},
        {"1F8000\r\nUpdate Ende\r\n12345AB\r\n", FileFault::headerStart, 1},
        {start, FileFault::noData, 2},
        {start + "12345\r\n", FileFault::recordForm, 3},
        {start + "12345ABC\r\n", FileFault::recordForm, 3},
        {start + "12345AB\r\n12345XY\r\n", FileFault::recordForm, 4},
        {start + "12345000102030405060708090A0B0C0D0E0F10\r\n", FileFault::recordTooLong, 3},
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
