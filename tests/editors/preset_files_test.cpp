// The files of speed steps and of distances.
#include "editors/distance_table.h"
#include "editors/speed_step_file.h"

#include "editor_bench.h"
#include "support/case_table.h"
#include "support/memory_files.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using test::bytesOf;
using test::casesOf;

std::string valuesOf(const DistanceFile& file)
{
    std::string text;
    for (const Text& value : file.values)
        text += utf8FromText(value) + ",";
    return text;
}

TEST(DistanceTableTest, SavesToTheLetterAndReadsWhatItUnderstands)
{
    const auto path = std::filesystem::path(KARVO_SOURCE_FOLDER) / "tests/data/editors/distances.saved.bcr";
    const auto saved = test::FolderFiles().readWhole(path, textFileLimit).value_or(Bytes());
    const std::vector<Text> list = {u"",          u"KV07*5",    u"1;3;a;", u"Ende CV",
                                    u"ATmega328", u"Anfang FS", u"",       u"x"};
    const DistanceValues values = {u"20", u"110", u"21", u"41"};
    EXPECT_EQ(distanceFileContent(values, {}), saved);
    auto withTrailer = saved;
    for (const auto byte : bytesOf("ATmega328\r\nAnfang FS\r\n"))
        withTrailer.push_back(byte);
    EXPECT_EQ(distanceFileContent(values, list), withTrailer);
    EXPECT_EQ(valuesOf(parseDistanceFile(saved)), "20,110,21,41,");
    for (const auto& [content, read, faulty] : casesOf<3>("editors/distance_files.txt")) {
        const auto file = parseDistanceFile(bytesOf(content));
        std::string lines;
        for (const int line : file.faultyLines)
            lines += std::to_string(line) + " ";
        EXPECT_EQ(valuesOf(file), read) << content;
        EXPECT_EQ(lines, faulty) << content;
    }
}

TEST(DistanceTableTest, RangesAreTheCvsOwn)
{
    LanguageTables texts;
    test::setTexts(texts,
                   {{127, u"0 to 255"}, {128, u"refused"}, {131, u"96 to 150"}, {132, u"CV52 refused"}});
    const auto cvs = distanceCvs();
    for (const TextView good : {u"96", u"150", u" 120 "})
        EXPECT_FALSE(refusalOf(cvs[1], good, texts));
    for (const TextView wrong : {u"95", u"151", u"", u"x", u"99999999999"})
        EXPECT_EQ(refusalOf(cvs[1], wrong, texts), u"CV52 refused\r\n96 to 150");
    for (const std::size_t place : {0u, 2u, 3u}) {
        EXPECT_FALSE(refusalOf(cvs[place], u"0", texts) || refusalOf(cvs[place], u"255", texts));
        EXPECT_EQ(refusalOf(cvs[place], u"256", texts), u"refused\r\n0 to 255");
    }
    EXPECT_EQ(test::planText(std::get<WritePlan>(planOfDistances({u"1", u"96", u"3", u"4"}))),
              "48=1 52=96 53=3 54=4 ");
    EXPECT_EQ(std::get<std::size_t>(planOfDistances({u"1", u"95", u"256", u"4"})), 1u);
}

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

TEST(SpeedStepFileTest, IsReadUpToItsFaultAndWithBaseAndTopSpeedWholeOrRefused)
{
    for (const auto& [content, reading] : casesOf<2>("editors/speed_step_files.txt"))
        EXPECT_EQ(readingOf(content), reading) << content;
    std::string allSteps; // 1 to 28 with the values 3 to 30
    for (int step = 1; step <= 28; ++step)
        allSteps += std::to_string(98 - step) + ";" + std::to_string(step + 2) + ";x\r\n";
    const auto whole = readingOf("K\r\n" + allSteps);
    EXPECT_TRUE(whole.ends_with("70=30 ")) << whole;
    for (const char* const oneTooMany : {"69;1;x\r\n", "5;1;x\r\n"}) // it counts though it is ignored
        EXPECT_EQ(readingOf("K\r\n" + allSteps + oneTooMany), whole + "too long 30");

    const std::string good = "K\r\n2;20;base\r\n5;140;top\r\n" + allSteps;
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
