// What is told of one CV: its description and what the expert knows.
#include "cvdata/cv_details.h"
#include "cvdata/cv_use.h"
#include "cvdata/expert_file.h"
#include "support/case_table.h"
#include "support/memory_files.h"

#include <gtest/gtest.h>

namespace karvo
{

TEST(CvDetailsTest, EachFieldComesFromItsColumnAndBitTextsAreLinesFromWeightOneUp)
{
    CvTable table;
    for (int column = 1; column <= 9; ++column)
        table.at(29, column) = textFromNumber(column);
    table.at(29, Column::bits) = u"1\r\n\r\n3\r\n4\r\n5\r\n6\r\n7\r\n8\r\n9";
    const auto details = cvDetails(table, 29);
    EXPECT_EQ(details.number, 29);
    EXPECT_EQ(details.value + details.name + details.lowerLimit + details.upperLimit + details.factoryValue +
                  details.explanation + details.values + details.advice,
              u"23456789");
    EXPECT_EQ(details.bits, (std::array<Text, 8>{u"1", u"", u"3", u"4", u"5", u"6", u"7", u"8"}));
    EXPECT_TRUE(details.isSetOfSwitches && !cvDetails(table, 58).isSetOfSwitches);
    for (const int cv : {-1, 0, 257, 100000})
        EXPECT_EQ(cvDetails(table, cv).number, 0) << cv;
    EXPECT_EQ(valueOfBits({true, false, true, false, false, false, false, true}), 133);
    for (int value = 0; value <= 255; ++value)
        EXPECT_EQ(valueOfBits(bitsOfValue(value)), value);
}

TEST(CvUseTest, MarksAreWordsOfTheirFieldAndNothingElseIsOne)
{
    for (const auto& [field, words] : test::casesOf<2>("cvdata/marks.txt")) {
        CvTable table;
        table.at(20, Column::marks) = textFromUtf8(field);
        const auto from = utf8FromText(firstFirmwareOf(table, 20));
        EXPECT_EQ(std::string(hasMarks(table) ? "marks" : "") + (isReadOnly(table, 20) ? " read-only" : "") +
                      (from.empty() ? "" : " " + from),
                  words);
        EXPECT_TRUE(isReadOnly(table, 7) && isReadOnly(table, 8));
    }
}

TEST(ExpertFileTest, EntriesAreFoundByTheirNumberAndFaultsByTheirLine)
{
    const auto file =
        parseExpertFile(test::bytesOf("Head\r\n57;;Bit 7;;;;What happens$inside;;\r\n"
                                      "3;;Three;\r\n257;;x;\r\n3;;again;\r\nno field\r\n  \r\n"));
    ASSERT_TRUE(file);
    ASSERT_EQ(file->entries.size(), 2u);
    EXPECT_EQ(file->entries.at(57).name + u": " + file->entries.at(57).knowledge,
              u"Bit 7: What happens\r\ninside");
    EXPECT_EQ(file->entries.at(3).name + u": " + file->entries.at(3).knowledge, u"Three: ");
    EXPECT_EQ(file->faultyLines, (std::vector<int>{4, 5, 6}));
    for (const char* const none : {"", "only a header\r\n"})
        EXPECT_FALSE(parseExpertFile(test::bytesOf(none)));
    for (const auto& [knowledge, line] : test::casesOf<2>("cvdata/knowledge.txt")) {
        const auto whole = [](std::string text) {
            for (auto at = text.find('@'); at != std::string::npos; at = text.find('@'))
                text.replace(at, 1, std::string(30, 'a'));
            return textFromUtf8(text);
        };
        EXPECT_EQ(expertLine({u"name", whole(knowledge)}), whole(line)) << knowledge;
    }
}

} // namespace karvo
