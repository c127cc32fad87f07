#include "editors/speed_step_file.h"

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

// Steps 1 to 28 with the values 3 to 30.
std::string allSteps()
{
    std::string content;
    for (int step = 1; step <= 28; ++step)
        content += std::to_string(98 - step) + ";" + std::to_string(step + 2) + ";x\r\n";
    return content;
}

TEST(SpeedStepFileTest, WhatTheReaderTakes)
{
    const std::pair<const char*, const char*> cases[] = {
        {"", ""},
        {"97;12;the header line\r\n", ""},
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
    for (const auto& [content, reading] : cases)
        EXPECT_EQ(readingOf(content), reading) << content;
    const auto whole = readingOf("K\r\n" + allSteps());
    EXPECT_TRUE(whole.ends_with("70=30 ")) << whole;
    for (const char* const oneTooMany : {"69;1;x\r\n", "5;1;x\r\n"}) // it counts though it is ignored
        EXPECT_EQ(readingOf("K\r\n" + allSteps() + oneTooMany), whole + "too long 30");
}

TEST(SpeedStepFileTest, ATableWithBaseAndTopSpeedIsWholeOrRefused)
{
    const std::string good = "K\r\n2;20;base\r\n5;140;top\r\n" + allSteps();
    const auto table = std::get<BasedSpeedTable>(parseBasedSpeedTable(bytesOf(good)));
    EXPECT_EQ((std::array{table.base, table.top, table.steps.front(), table.steps.back()}),
              (std::array{20, 140, 3, 30}));
    const auto with = [&](std::string_view old, const char* replacement) {
        std::string content = good;
        return content.replace(content.find(old), old.size(), replacement);
    };
    const std::pair<std::string, int> refusedAt[] = {{with("2;20;base\r\n", ""), 2},
                                                     {with("5;140;", "5;256;"), 3},
                                                     {with("97;3;", "97;x;"), 4},
                                                     {with("96;4;", "95;4;"), 5},
                                                     {with("70;30;x\r\n", ""), 31},
                                                     {good + "69;1;x\r\n", 32},
                                                     {"", 1}};
    for (const auto& [content, line] : refusedAt)
        EXPECT_EQ(std::get<int>(parseBasedSpeedTable(bytesOf(content))), line);
}

} // namespace
} // namespace karvo
