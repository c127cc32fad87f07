#include "editors/speed_step_file.h"

#include "support/folder_files.h"
#include "support/memory_files.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using test::bytesOf;

std::string readingOf(const std::string& content)
{
    const auto file = parseSpeedStepFile(bytesOf(content));
    std::string text;
    for (const SpeedStepRecord& record : file.records)
        text += std::to_string(record.cv) + "=" + std::to_string(record.value) + " ";
    if (file.fault)
        text += (file.fault->kind == SpeedStepFault::Kind::tooLong ? "too long " : "wrong ") +
                std::to_string(file.fault->line);
    return text;
}

TEST(SpeedStepFileTest, WhatTheReaderTakes)
{
    struct Case {
        const char* content;
        const char* reading;
    };
    const Case cases[] = {
        {"", ""},
        {"97;12;the header line\r\n", ""},
        {"K\r\n97;12;Fahrstufe 1\r\n", "97=12 "},
        {"K\r\n97;12;\r\n", "97=12 "},
        {"K\n97;12;Fahrstufe 1", "97=12 "}, // LF only, no end of line
        {"K\r\n\r\n97;12;a\r\n  \r\n96;13;b\r\n\r\n", "97=12 96=13 "},
        {"K\r\n50;7;below the steps\r\n10;8;a\r\n99;9;b\r\n", "50=7 10=8 99=9 "},
        {"K\r\n5;3;x\r\n120;4;x\r\n09;4;x\r\nx7;4;x\r\n-7;4;x\r\nEnde\r\n97\r\n", ""},
        {"K\r\n97;12.9;a\r\n96; 13,5 ;b\r\n", "97=12 96=13 "},
        {"K\r\n97;a;b;12;text\r\n", "97=12 "}, // counted from the end
        {"K\r\n97;0;a\r\n96;255;b\r\n95;256;c\r\n94;1;d\r\n", "97=0 96=255 wrong 4"},
        {"K\r\n97;-1;a\r\n", "wrong 2"},
        {"K\r\n97;x;a\r\n", "wrong 2"},
        {"K\r\n97;1.x;a\r\n", "wrong 2"},
        {"K\r\n97;;a\r\n", "wrong 2"},
        {"K\r\n97;12\r\n", "wrong 2"},
        {"K\r\n97;12;a;b;\r\n", "wrong 2"},
        {"K\r\n97;99999999999999999999;a\r\n", "wrong 2"},
    };
    for (const Case& expected : cases)
        EXPECT_EQ(readingOf(expected.content), expected.reading) << expected.content;
}

TEST(SpeedStepFileTest, TheTwentyNinthLineIsOneTooMany)
{
    std::string content = "K\r\n";
    std::string records;
    for (int cv = 97; cv >= 70; --cv) {
        content += std::to_string(cv) + ";1;x\r\n";
        records += std::to_string(cv) + "=1 ";
    }
    EXPECT_EQ(readingOf(content), records);
    EXPECT_EQ(readingOf(content + "69;1;x\r\n"), records + "too long 30");
    EXPECT_EQ(readingOf(content + "5;1;x\r\n"), records + "too long 30") << "it counts though it is ignored";
}

TEST(SpeedStepFileTest, SavesToTheLetter)
{
    CvTable table;
    for (int step = 1; step <= 28; ++step) {
        table.setValue(98 - step, step * 6);
        table.at(98 - step, Column::text) = u"Fahrstufe " + textFromNumber(step);
    }
    table.at(96, Column::text) = u"a;b\r\nc";
    const Bytes saved = speedStepFileContent(table);
    const std::string text(saved.begin(), saved.end());
    EXPECT_TRUE(text.starts_with("CV-Nummer;CV-Wert;CV-Text\r\n97;6;Fahrstufe 1\r\n96;12;a,b c\r\n95;18;"))
        << text;
    EXPECT_TRUE(text.ends_with("\r\n71;162;Fahrstufe 27\r\n70;168;Fahrstufe 28\r\n")) << text;
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 29);
    const auto again = parseSpeedStepFile(saved);
    EXPECT_FALSE(again.fault);
    ASSERT_EQ(again.records.size(), 28U);
    EXPECT_EQ(again.records[1].value, 12);
}

std::string basedContent()
{
    std::string content = "K\r\n2;20;base\r\n5;140;top\r\n";
    for (int step = 1; step <= 28; ++step)
        content += std::to_string(98 - step) + ";" + std::to_string(step + 2) + ";x\r\n";
    return content;
}

TEST(SpeedStepFileTest, ATableWithBaseAndTopSpeed)
{
    const auto parsed = parseBasedSpeedTable(bytesOf(basedContent()));
    const auto& table = std::get<BasedSpeedTable>(parsed);
    EXPECT_EQ(table.base, 20);
    EXPECT_EQ(table.top, 140);
    EXPECT_EQ(table.steps.front(), 3);
    EXPECT_EQ(table.steps.back(), 30);
}

TEST(SpeedStepFileTest, ATableWithBaseAndTopSpeedIsWholeOrRefused)
{
    const std::string good = basedContent();
    const auto refusedAt = [](const std::string& content) {
        const auto parsed = parseBasedSpeedTable(bytesOf(content));
        return std::holds_alternative<int>(parsed) ? std::get<int>(parsed) : 0;
    };
    const auto with = [&](const char* old, const char* replacement) {
        std::string content = good;
        return content.replace(content.find(old), std::string_view(old).size(), replacement);
    };
    EXPECT_EQ(refusedAt(good), 0);
    EXPECT_EQ(refusedAt(with("2;20;base\r\n", "")), 2);
    EXPECT_EQ(refusedAt(with("5;140;", "5;256;")), 3);
    EXPECT_EQ(refusedAt(with("97;3;", "97;x;")), 4);
    EXPECT_EQ(refusedAt(with("96;4;", "95;4;")), 5);
    EXPECT_EQ(refusedAt(with("70;30;x\r\n", "")), 31);
    EXPECT_EQ(refusedAt(good + "69;1;x\r\n"), 32);
    EXPECT_EQ(refusedAt(""), 1);
}

TEST(SpeedStepFileTest, EachShippedTableIsWhole)
{
    test::FolderFiles files;
    const auto folder = std::filesystem::path(KARVO_PROGRAM_FOLDER) / "original" / "FS_listen";
    for (const char* const name :
         {"FS_Faller.fcr", "FS_CI26_12.fcr", "FS_CI26_24.fcr", "FS_CI46_12.fcr", "FS_CI46_24.fcr"}) {
        const auto content = files.readWhole(folder / name, textFileLimit);
        ASSERT_TRUE(content) << name;
        const auto file = parseSpeedStepFile(*content);
        EXPECT_FALSE(file.fault) << name;
        ASSERT_EQ(file.records.size(), 28U) << name;
        EXPECT_EQ(file.records.front().cv, 97) << name;
        EXPECT_GE(file.records.front().value, 3) << name;
        EXPECT_LE(file.records.back().value, 120) << name;
    }
    for (const char* const name : {"FS_Faller_CV2_CV5.fcr", "FS_CI26_12_CV2_CV5.fcr",
                                   "FS_CI26_24_CV2_CV5.fcr", "FS_CI46_12_CV2_CV5.fcr"}) {
        const auto content = files.readWhole(folder / name, textFileLimit);
        ASSERT_TRUE(content) << name;
        const auto parsed = parseBasedSpeedTable(*content);
        const auto* const table = std::get_if<BasedSpeedTable>(&parsed);
        ASSERT_NE(table, nullptr) << name;
        EXPECT_EQ(table->base, table->steps.front()) << name;
        EXPECT_EQ(table->top, table->steps.back()) << name;
    }
    EXPECT_FALSE(files.exists(folder / "FS_CI46_24_CV2_CV5.fcr"));
}

} // namespace
} // namespace karvo
