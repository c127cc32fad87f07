#include "editors/distance_table.h"

#include "editor_bench.h"
#include "support/memory_files.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using test::bytesOf;

std::string valuesOf(const DistanceFile& file)
{
    std::string text;
    for (const Text& value : file.values)
        text += utf8FromText(value) + ",";
    return text;
}

TEST(DistanceTableTest, SavesToTheLetter)
{
    const std::string records =
        "CV-Nummer;CV-Wert;CV-Text;\r\n"
        "48;20;Bremswert wenn vom vorrausfahrenden Fahrzeug FAHRT empfangen wurde;\r\n"
        "52;110;Unterhalb dieser Fahrstufe wird schneller beschleunigt, oberhalb langsamer;\r\n"
        "53;21;Zeit in 5ms die zwischen jedem Hochschalten der Fahrstufe liegt, wenn die Fahrstufe unterhalb "
        "von CV 52 liegt;\r\n"
        "54;41;Zeit in 5ms die zwischen jedem Hochschalten der Fahrstufe liegt, wenn die Fahrstufe oberhalb "
        "von CV 52 liegt\r\n";
    const std::vector<Text> list = {u"",          u"KV07*5",    u"1;3;a;", u"Ende CV",
                                    u"ATmega328", u"Anfang FS", u"",       u"x"};
    const DistanceValues values = {u"20", u"110", u"21", u"41"};
    EXPECT_EQ(distanceFileContent(values, list), bytesOf(records + "Ende CV\r\nATmega328\r\nAnfang FS\r\n"));
    EXPECT_EQ(distanceFileContent(values, {}), bytesOf(records + "Ende CV\r\n"));
    const auto again = parseDistanceFile(distanceFileContent(values, {}));
    EXPECT_EQ(valuesOf(again), "20,110,21,41,");
    EXPECT_TRUE(again.faultyLines.empty());
}

TEST(DistanceTableTest, ReadsWhatItUnderstandsAndNamesTheRest)
{
    const std::tuple<const char*, const char*, std::vector<int>> cases[] = {
        {"", ",,,,", {}},
        {"48;1;ignored, as line 1 is\n", ",,,,", {}},
        {"K\n53;20;x;\n48;7;y\n", "7,,20,,", {}},
        {"K\n5;3;x;\n100;4;y;\nEnde CV\n", ",,,,", {}},
        {"K\n480;5;x;\n52\n53;12\n54;300;x;\n48;-1;x;\n48;x;x;\n", ",,,,", {2, 3, 4, 5, 6, 7}},
        {"K\r\n52; 100 ;x;\r\n52;101;x;\r\n", ",101,,,", {}},
    };
    for (const auto& [content, values, faulty] : cases) {
        const auto file = parseDistanceFile(bytesOf(content));
        EXPECT_EQ(valuesOf(file), values) << content;
        EXPECT_EQ(file.faultyLines, faulty) << content;
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
        EXPECT_FALSE(refusalOf(cvs[place], u"0", texts));
        EXPECT_FALSE(refusalOf(cvs[place], u"255", texts));
        EXPECT_EQ(refusalOf(cvs[place], u"256", texts), u"refused\r\n0 to 255");
    }
    EXPECT_EQ(test::planText(std::get<WritePlan>(planOfDistances({u"1", u"96", u"3", u"4"}))),
              "48=1 52=96 53=3 54=4 ");
    EXPECT_EQ(std::get<std::size_t>(planOfDistances({u"1", u"95", u"256", u"4"})), 1u);
}

} // namespace
} // namespace karvo
