#include "firmware/update_file.h"

#include "support/memory_files.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

std::variant<UpdateFile, FileRefusal> parsed(const std::string& content)
{
    return parseUpdateFile(test::bytesOf(content));
}

TEST(UpdateFileTest, ReadsHeaderItemsByCommaAndByLine)
{
    const auto result =
        parsed("1F80,KV07\r\nV6.3\r\nUpdate Ende\r\n:1000000102030405060708090A0B0C0D0E0F\r\n");
    ASSERT_TRUE(std::holds_alternative<UpdateFile>(result));
    const auto& file = std::get<UpdateFile>(result);
    ASSERT_EQ(file.header.size(), 3U);
    EXPECT_EQ(file.header[1].text, u"KV07");
    EXPECT_EQ(file.header[1].line, 1);
    EXPECT_EQ(file.header[2].text, u"V6.3");
    EXPECT_EQ(file.header[2].line, 2);
    EXPECT_EQ(file.start, (Bytes{0x1F, 0x80}));
    ASSERT_EQ(file.records.size(), 1U);
    EXPECT_EQ(file.records[0], (UpdateRecord{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15}));
}

TEST(UpdateFileTest, FillsAShortLineWithErasedBytesNotWithTheLineBefore)
{
    const auto result = parsed("0000\nUpdate Ende\n12345000102030405060708090A0B0C0D0E0F\n12345AB\n");
    ASSERT_TRUE(std::holds_alternative<UpdateFile>(result));
    const auto& record = std::get<UpdateFile>(result).records.at(1);
    EXPECT_EQ(record[0], 0xAB);
    for (std::size_t i = 1; i < record.size(); ++i)
        EXPECT_EQ(record[i], 0xFF);
}

struct RefusedCase {
    const char* name;
    std::string content;
    FileFault fault;
    int line;
};

const RefusedCase refusedCases[] = {
    {"Empty", "", FileFault::headerOpen, 1},
    {"HeaderOnly", "1F80\r\nKV07\r\n", FileFault::headerOpen, 2},
    {"SevenItems", "1F80,2,3,4,5,6\r\n7\r\nUpdate Ende\r\n", FileFault::headerTooLong, 2},
    {"NoItem", "Update Ende\r\n12345AB\r\n", FileFault::headerStart, 1},
    {"StartIsNoNumber", "KV07\r\nUpdate Ende\r\n12345AB\r\n", FileFault::headerStart, 1},
    {"StartTooLong", "1F8000\r\nUpdate Ende\r\n12345AB\r\n", FileFault::headerStart, 1},
    {"NoRecord", "1F80\r\nUpdate Ende\r\n", FileFault::noData, 2},
    {"PrefixOnly", "1F80\r\nUpdate Ende\r\n12345\r\n", FileFault::recordForm, 3},
    {"OddDigits", "1F80\r\nUpdate Ende\r\n12345ABC\r\n", FileFault::recordForm, 3},
    {"NoDigits", "1F80\r\nUpdate Ende\r\n12345AB\r\n12345XY\r\n", FileFault::recordForm, 4},
    {"SeventeenBytes", "1F80\r\nUpdate Ende\r\n12345000102030405060708090A0B0C0D0E0F10\r\n",
     FileFault::recordTooLong, 3},
};

TEST(UpdateFileTest, NamesTheFaultAndItsLine)
{
    for (const RefusedCase& refused : refusedCases) {
        const auto result = parsed(refused.content);
        ASSERT_TRUE(std::holds_alternative<FileRefusal>(result)) << refused.name;
        EXPECT_EQ(std::get<FileRefusal>(result).fault, refused.fault) << refused.name;
        EXPECT_EQ(std::get<FileRefusal>(result).line, refused.line) << refused.name;
    }
}

TEST(UpdateFileTest, TakesSixItems)
{
    EXPECT_TRUE(std::holds_alternative<UpdateFile>(parsed("1F80,2,3,4,5,6\r\nUpdate Ende\r\n12345AB\r\n")));
}

} // namespace
} // namespace karvo
