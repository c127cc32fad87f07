#include "editors/distance_table.h"

#include "support/folder_files.h"
#include "support/link_bench.h"
#include "support/memory_files.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using test::bytesOf;

const std::string records =
    "48;20;Bremswert wenn vom vorrausfahrenden Fahrzeug FAHRT empfangen wurde;\r\n"
    "52;110;Unterhalb dieser Fahrstufe wird schneller beschleunigt, oberhalb langsamer;\r\n"
    "53;21;Zeit in 5ms die zwischen jedem Hochschalten der Fahrstufe liegt, wenn die Fahrstufe unterhalb von "
    "CV 52 "
    "liegt;\r\n"
    "54;41;Zeit in 5ms die zwischen jedem Hochschalten der Fahrstufe liegt, wenn die Fahrstufe oberhalb von "
    "CV 52 "
    "liegt\r\n";

std::string saved(const std::vector<Text>& listLines)
{
    const Bytes content = distanceFileContent({u"20", u"110", u"21", u"41"}, listLines);
    return {content.begin(), content.end()};
}

std::string valuesOf(const DistanceFile& file)
{
    std::string text;
    for (const Text& value : file.values)
        text += utf8FromText(value) + ",";
    return text;
}

TEST(DistanceTableTest, SavesToTheLetter)
{
    EXPECT_EQ(saved({}), "CV-Nummer;CV-Wert;CV-Text;\r\n" + records + "Ende CV\r\n");
    EXPECT_EQ(saved({u"", u"KV07*5", u"1;3;a;", u"Ende CV", u"ATmega328", u"Anfang FS", u"", u"Ende FS"}),
              "CV-Nummer;CV-Wert;CV-Text;\r\n" + records + "Ende CV\r\nATmega328\r\nAnfang FS\r\n");
    const auto again = parseDistanceFile(bytesOf(saved({})));
    EXPECT_EQ(valuesOf(again), "20,110,21,41,");
    EXPECT_TRUE(again.faultyLines.empty());
}

TEST(DistanceTableTest, ReadsWhatItUnderstandsAndNamesTheRest)
{
    struct Case {
        const char* content;
        const char* values;
        std::vector<int> faulty;
    };
    const Case cases[] = {
        {"", ",,,,", {}},
        {"48;1;ignored, as line 1 is\n", ",,,,", {}},
        {"K\n53;20;x;\n48;7;y\n", "7,,20,,", {}},
        {"K\n5;3;x;\n100;4;y;\nEnde CV\n", ",,,,", {}},
        {"K\n480;5;x;\n52\n53;12\n54;300;x;\n48;-1;x;\n48;x;x;\n", ",,,,", {2, 3, 4, 5, 6, 7}},
        {"K\r\n52; 100 ;x;\r\n52;101;x;\r\n", ",101,,,", {}},
    };
    for (const Case& expected : cases) {
        const auto file = parseDistanceFile(bytesOf(expected.content));
        EXPECT_EQ(valuesOf(file), expected.values) << expected.content;
        EXPECT_EQ(file.faultyLines, expected.faulty) << expected.content;
    }
}

TEST(DistanceTableTest, RangesAreTheCvsOwn)
{
    LanguageTables texts;
    test::setText(texts, 127, u"0 to 255");
    test::setText(texts, 128, u"refused");
    test::setText(texts, 131, u"96 to 150");
    test::setText(texts, 132, u"CV52 refused");
    const auto cvs = distanceCvs();
    for (const TextView good : {u"96", u"150", u" 120 "})
        EXPECT_FALSE(refusalOf(cvs[1], good, texts));
    for (const TextView wrong : {u"95", u"151", u"", u"x", u"99999999999"})
        EXPECT_EQ(refusalOf(cvs[1], wrong, texts), u"CV52 refused\r\n96 to 150");
    for (const std::size_t place : {0u, 2u, 3u}) {
        EXPECT_FALSE(refusalOf(cvs[place], u"0", texts));
        EXPECT_EQ(refusalOf(cvs[place], u"256", texts), u"refused\r\n0 to 255");
    }
    const auto plan = planOfDistances({u"1", u"96", u"3", u"4"});
    std::string lines;
    for (const PlannedWrite& write : std::get<WritePlan>(plan))
        lines += std::to_string(write.cv) + "=" + std::to_string(write.value) + " ";
    EXPECT_EQ(lines, "48=1 52=96 53=3 54=4 ");
    EXPECT_EQ(std::get<std::size_t>(planOfDistances({u"1", u"95", u"256", u"4"})), 1u);
}

TEST(DistanceTableTest, EachShippedPresetIsWhole)
{
    test::FolderFiles files;
    for (const char* const name : {"Faller.bcr", "CI_26.bcr", "CI_26_12.bcr", "CI_26_24.bcr", "CI_46.bcr",
                                   "CI_46_12.bcr", "CI_46_24.bcr"}) {
        const auto content = files.readWhole(
            std::filesystem::path(KARVO_PROGRAM_FOLDER) / "original" / "ABS_listen" / name, textFileLimit);
        ASSERT_TRUE(content) << name;
        const auto file = parseDistanceFile(*content);
        EXPECT_TRUE(std::holds_alternative<WritePlan>(planOfDistances(file.values))) << name;
    }
}

} // namespace
} // namespace karvo
