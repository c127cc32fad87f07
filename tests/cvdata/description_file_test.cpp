#include "cvdata/description_file.h"
#include "support/memory_files.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using test::bytesOf;
using Faults = std::vector<std::pair<DescriptionFault::Kind, int>>;

Faults faultsOf(const Description& description)
{
    Faults faults;
    for (const auto& fault : description.faults)
        faults.emplace_back(fault.kind, fault.line);
    return faults;
}

TEST(DescriptionFileTest, FieldsFillTheColumnsOfTheRowThatTheirNumberNames)
{
    for (const std::string end : {"Anfang FS", "Ende CV"}) {
        const auto description = parseDescription(
            bytesOf("\xEF\xBB\xBFStandard KV07\r\n4;3;L\xC3\xA4nge;1;126;3;\n2;5;erste$zweite;rest\r\n" +
                    end + "\r\n5;9;no row;\r\n"));
        ASSERT_TRUE(description);
        EXPECT_EQ(description->rowCount, 2);
        EXPECT_EQ(description->lines.size(), 6u);
        const CvTable& table = description->table;
        EXPECT_EQ(table.describedCvs(), (std::vector{2, 4}));
        EXPECT_EQ(
            (std::vector<Text>{description->header(), description->lines[3], table.at(2, 2), table.at(2, 3),
                               table.at(4, Column::text), table.at(4, Column::upperLimit)}),
            (std::vector<Text>{u"Standard KV07", u"2;5;erste$zweite;rest", u"5", u"erste\r\nzweite", u"Länge",
                               u"126"}));
        EXPECT_EQ(table.at(2, 4), u""); // behind the last ";"
        EXPECT_TRUE(description->faults.empty());
    }
}

TEST(DescriptionFileTest, WhatIsNoDescriptionIsRefused)
{
    std::string binary(5000, ' ');
    for (std::size_t i = 0; i < binary.size(); ++i)
        binary[i] = static_cast<char>(i * 131);
    const std::string contents[] = {
        "",    "\r\n", "Standard KV07\r\n", "K\r\nno fields\r\n", "K\r\nx;1;no CV;\r\n0;1;y;\r\n257;1;z;\r\n",
        binary};
    for (const std::string& content : contents)
        EXPECT_FALSE(parseDescription(bytesOf(content))) << content;
}

TEST(DescriptionFileTest, WhatIsLeftOutIsNamedWithItsLine)
{
    using enum DescriptionFault::Kind;
    const std::pair<const char*, Faults> cases[] = {
        {"K\n1;1;a;\n3;7;b;\n3;8;c;\nvier;1;d;\nEnde CV\n", {{wrongRow, 4}, {wrongRow, 5}}},
        {"K\n1;1;a;\na note\n   \n\n2;2;b;\nAnfang FS \nFS1 = 3\n",
         {{wrongRow, 3}, {wrongRow, 4}, {wrongRow, 5}}},
        {"K\n1;1;a;\n2;2;b;\n", {{noEnd, 3}}},
        {"K\n1;1;a;\n2;2", {{noEnd, 3}}},
        // A value that no CV can have is not shown.
        {"K\n1; 1 ;a;\n2;-1;b;\n3;x;c;\n4;256;d;\n5;;e;\n6;255;f;\n7;0;g;\nEnde CV\n",
         {{wrongValue, 3}, {wrongValue, 4}, {wrongValue, 5}}},
    };
    for (const auto& [content, faults] : cases) {
        const auto description = parseDescription(bytesOf(content));
        ASSERT_TRUE(description) << content;
        EXPECT_EQ(faultsOf(*description), faults) << content;
        EXPECT_EQ(description->table.value(1), 1);
    }
    const auto values = parseDescription(bytesOf(cases[4].first))->table;
    for (const auto& [cv, value] : {std::pair(2, u""), {3, u""}, {4, u""}, {5, u""}, {6, u"255"}, {7, u"0"}})
        EXPECT_EQ(values.at(cv, Column::value), value) << cv;
}

TEST(DescriptionFileTest, FieldsAndRowsBeyondTheTableAreLeftOutAndNamed)
{
    using enum DescriptionFault::Kind;
    std::string content = "K\n1;1;3;4;5;6;7;8;9;10;11;12;13;14;15;16;17;18;\n";
    Faults expected = {{tooManyLines, 551}, {tooManyFields, 2}};
    for (int row = 2; row <= 700; ++row) {
        content += std::to_string(row) + ";1;x;\n";
        if (row > 256 && row < 550)
            expected.emplace_back(rowBeyondTable, row + 1);
    }
    const auto description = parseDescription(bytesOf(content));
    ASSERT_TRUE(description);
    EXPECT_EQ(description->table.at(1, 16), u"16");
    EXPECT_EQ(description->table.value(256), 1);
    EXPECT_EQ(description->lines.size(), 551u);
    EXPECT_EQ(faultsOf(*description), expected);
}

} // namespace
} // namespace karvo
