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
    const auto description =
        parseDescription(bytesOf("Standard KV07\r\n1;3;Adresse;1;126;3;\r\n2;5;erste$zweite;rest\r\n"));
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
         {"", "\r\n", "Standard KV07\r\n", "K\r\nno fields\r\n", "K\r\n7;1;row of another CV;\r\n"})
        EXPECT_FALSE(parseDescription(bytesOf(content))) << content;
    Bytes binary(5000);
    for (std::size_t i = 0; i < binary.size(); ++i)
        binary[i] = static_cast<std::uint8_t>(i * 131);
    EXPECT_FALSE(parseDescription(binary));
}

TEST(DescriptionFileTest, ARowInTheWrongPlaceIsLeftOutAndNamed)
{
    const auto description = parseDescription(bytesOf("K\n1;1;a;\n3;7;b;\n3;8;c;\n"));
    ASSERT_TRUE(description);
    ASSERT_EQ(description->faults.size(), 1u);
    EXPECT_EQ(description->faults[0].kind, Kind::wrongRow);
    EXPECT_EQ(description->faults[0].line, 3);
    EXPECT_FALSE(description->table.describes(2));
    EXPECT_EQ(description->table.value(3), 8);
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
    EXPECT_EQ(faults, (std::vector<std::pair<Kind, int>>{
                          {Kind::tooManyLines, 551}, {Kind::tooManyFields, 2}, {Kind::rowBeyondTable, 258}}));
}

} // namespace
} // namespace karvo
