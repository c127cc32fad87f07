#include "cvdata/description_file.h"
#include "support/memory_files.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using test::bytesOf;
using Kind = DescriptionFault::Kind;

TEST(DescriptionFileTest, FieldsFillTheColumnsOfTheirRow)
{
    const auto description = parseDescription(
        bytesOf("Standard KV07\r\n1;3;Adresse;1;126;3;\r\n2;5;erste$zweite;rest\r\nEnde CV\r\n"));
    ASSERT_TRUE(description);
    EXPECT_EQ(description->header(), u"Standard KV07");
    EXPECT_EQ(description->rowCount, 2);
    EXPECT_EQ(description->lines[3], u"2;5;erste$zweite;rest");
    EXPECT_EQ(description->table.at(2, 1), u"2");
    EXPECT_EQ(description->table.at(2, 2), u"5");
    EXPECT_EQ(description->table.at(2, 3), u"erste\r\nzweite");
    EXPECT_EQ(description->table.at(2, 4), u""); // behind the last ";"
    EXPECT_EQ(description->table.at(1, Column::upperLimit), u"126");
    EXPECT_TRUE(description->faults.empty());
}

TEST(DescriptionFileTest, LineFeedsAloneAndModernEditorsAreRead)
{
    const auto description = parseDescription(bytesOf("\xEF\xBB\xBFKopf\n1;3;L\xC3\xA4nge;\n"));
    ASSERT_TRUE(description);
    EXPECT_EQ(description->header(), u"Kopf");
    EXPECT_EQ(description->table.at(1, 3), u"Länge");
}

TEST(DescriptionFileTest, NothingBehindTheRowsIsARow)
{
    for (const std::string_view end : {"Anfang FS", "Ende CV"}) {
        const auto description =
            parseDescription(bytesOf("K\r\n1;1;a;\r\n" + std::string(end) + "\r\n3;9;no row;\r\n"));
        ASSERT_TRUE(description);
        EXPECT_EQ(description->rowCount, 1);
        EXPECT_FALSE(description->table.describes(2));
        EXPECT_FALSE(description->table.describes(3));
        EXPECT_EQ(description->lines.size(), 5u);
    }
}

TEST(DescriptionFileTest, WhatIsNoDescriptionIsRefused)
{
    for (const std::string_view content :
         {"", "\r\n", "Standard KV07\r\n", "K\r\nno fields\r\n", "K\r\nx;1;no CV;\r\n0;1;y;\r\n257;1;z;\r\n"})
        EXPECT_FALSE(parseDescription(bytesOf(content))) << content;
    Bytes binary(5000);
    for (std::size_t i = 0; i < binary.size(); ++i)
        binary[i] = static_cast<std::uint8_t>(i * 131);
    EXPECT_FALSE(parseDescription(binary));
}

TEST(DescriptionFileTest, LinesThatHaveMovedAreFoundByTheirNumber)
{
    const auto description = parseDescription(bytesOf("K\n4;1;a;\n2;7;b;\n256;8;c;\nAnfang FS\n"));
    ASSERT_TRUE(description);
    EXPECT_TRUE(description->faults.empty());
    EXPECT_EQ(description->table.value(4), 1);
    EXPECT_EQ(description->table.value(2), 7);
    EXPECT_EQ(description->table.value(256), 8);
    EXPECT_FALSE(description->table.describes(1));
    EXPECT_FALSE(description->table.describes(3));
}

TEST(DescriptionFileTest, WhatIsLeftOutIsNamedWithItsLine)
{
    const struct {
        const char* content;
        std::vector<std::pair<Kind, int>> faults;
    } cases[] = {
        {"K\n1;1;a;\n3;7;b;\n3;8;c;\nvier;1;d;\nEnde CV\n", {{Kind::wrongRow, 4}, {Kind::wrongRow, 5}}},
        {"K\n1;1;a;\na note\n   \n\n2;2;b;\nAnfang FS \nFS1 = 3\n",
         {{Kind::wrongRow, 3}, {Kind::wrongRow, 4}, {Kind::wrongRow, 5}}},
        {"K\n1;1;a;\n2;2;b;\n", {{Kind::noEnd, 3}}},
        {"K\n1;1;a;\n2;2", {{Kind::noEnd, 3}}},
    };
    for (const auto& [content, expected] : cases) {
        const auto description = parseDescription(bytesOf(content));
        ASSERT_TRUE(description) << content;
        std::vector<std::pair<Kind, int>> faults;
        for (const auto& fault : description->faults)
            faults.emplace_back(fault.kind, fault.line);
        EXPECT_EQ(faults, expected) << content;
        EXPECT_EQ(description->table.value(1), 1);
    }
}

TEST(DescriptionFileTest, AValueThatNoCvCanHaveIsNotShown)
{
    const auto description = parseDescription(
        bytesOf("K\n1;256;a;\n2;-1;b;\n3;x;c;\n4; 7 ;d;\n5;;e;\n6;255;f;\n7;0;g;\nEnde CV\n"));
    ASSERT_TRUE(description);
    std::vector<int> lines;
    for (const auto& fault : description->faults) {
        EXPECT_EQ(fault.kind, Kind::wrongValue);
        lines.push_back(fault.line);
    }
    EXPECT_EQ(lines, (std::vector<int>{2, 3, 4}));
    for (const int cv : {1, 2, 3, 5})
        EXPECT_EQ(description->table.at(cv, Column::value), u"") << cv;
    EXPECT_EQ(description->table.value(4), 7);
    EXPECT_EQ(description->table.value(6), 255);
    EXPECT_EQ(description->table.value(7), 0);
}

TEST(DescriptionFileTest, FieldsAndRowsBeyondTheTableAreLeftOutAndNamed)
{
    std::string content = "K\n1;1;3;4;5;6;7;8;9;10;11;12;13;14;15;16;17;18;\n";
    for (int row = 2; row <= 700; ++row)
        content += std::to_string(row) + ";1;x;\n";
    const auto description = parseDescription(bytesOf(content));
    ASSERT_TRUE(description);
    EXPECT_EQ(description->table.at(1, 16), u"16");
    EXPECT_EQ(description->table.value(256), 1);
    EXPECT_EQ(description->lines.size(), 551u);
    std::vector<std::pair<Kind, int>> faults;
    for (const auto& fault : description->faults)
        faults.emplace_back(fault.kind, fault.line);
    ASSERT_EQ(faults.size(), 2u + 550 - 257);
    EXPECT_EQ(faults[0], std::pair(Kind::tooManyLines, 551));
    EXPECT_EQ(faults[1], std::pair(Kind::tooManyFields, 2));
    EXPECT_EQ(faults[2], std::pair(Kind::rowBeyondTable, 258));
    EXPECT_EQ(faults.back(), std::pair(Kind::rowBeyondTable, 550));
}

} // namespace
} // namespace karvo
