// Two lists compared, and a list as text and as CSV.
#include "cvdata/changes.h"
#include "cvdata/comparison.h"
#include "cvdata/csv_export.h"
#include "cvdata/list_file.h"
#include "cvdata/text_report.h"
#include "program/text_lines.h"

#include "support/case_table.h"
#include "support/link_bench.h"
#include "support/memory_files.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using test::bytesOf;

class ComparisonTest : public testing::Test
{
protected:
    ComparisonTest()
    {
        test::numberEveryText(texts);
        test::setText(texts, 725, u"Liste: {1}");
        test::setCaption(texts, 174, u"{1} {2} {3} {4}");
        for (int cv = 1; cv <= 100; ++cv) {
            give(one, cv, cv);
            give(other, cv, cv);
        }
    }

    static void give(CvTable& table, int cv, int value)
    {
        table.at(cv, Column::number) = textFromNumber(cv);
        table.setValue(cv, value);
        table.at(cv, Column::text) = u"Name " + textFromNumber(cv) + u"\r\nmehr";
    }

    Comparison compared(SpeedSteps steps = SpeedSteps::asSteps) const
    {
        return compare({u"Fahrzeug", &one, {}, true}, {u"a;b.kvr", &other, {}, false}, one, steps);
    }

    LanguageTables texts;
    CvTable one;
    CvTable other;
};

// Steps 14 to 20 have a single blank before the bracket.
TEST_F(ComparisonTest, LinesStandInOrderAndAreSavedAsTextAndCsv)
{
    give(other, 5, 200);
    give(other, 180, 0);
    one.at(2, Column::number).clear();
    one.at(2, Column::value).clear();
    other.at(3, Column::value).clear();
    const auto comparison = compared();
    EXPECT_EQ(contentOfLines(comparisonReport(comparison, texts)), test::golden("list_files/comparison.txt"));
    EXPECT_EQ(comparisonCsv(comparison, texts), test::golden("list_files/comparison.csv"));
    EXPECT_FALSE(comparison.isEqual());
    EXPECT_EQ(compared(SpeedSteps::asRows).lines[69].text(), u"CV70 = 70\t70");
    for (const Model model : {Model::receiver, Model::xtModule, Model::kv05})
        EXPECT_EQ(speedStepsOf(model) == SpeedSteps::asSteps, model == Model::kv05);
}

TEST_F(ComparisonTest, ACvWithoutAValueIsNotLacking)
{
    EXPECT_TRUE(compared().isEqual());
    for (const int cv : {150, 151})
        one.at(cv, Column::number) = u"x";
    for (const int cv : {151, 152})
        other.at(cv, Column::number) = u"x";
    EXPECT_EQ(countsText(compared(), texts), u"101 0 1 1");
    EXPECT_FALSE(compared().isEqual());
}

TEST_F(ComparisonTest, DifferentProcessorsAreRefusedBothWaysAndKnownFromDecoderOrFileOnly)
{
    using Known = std::optional<Processor>;
    const auto named = [](const std::string& name) {
        return name.ends_with("168")   ? Known(Processor::atmega168)
               : name.ends_with("328") ? Known(Processor::atmega328)
                                       : Known();
    };
    for (const auto& [first, second, text] : test::casesOf<3>("cvdata/refused_pairs.txt")) {
        const auto refusal = comparisonRefusal({u"", &one, named(first), first.starts_with("vehicle")},
                                               {u"", &other, named(second), false}, texts);
        EXPECT_EQ(utf8FromText(refusal.value_or(u"")), text);
    }
    CvSet set;
    set.profile.processor = Processor::atmega168;
    EXPECT_EQ(sideOf(set, u"").processor, Processor::atmega168);
    EXPECT_TRUE(sideOf(set, u"").isVehicle);
    set.offlineItem = "mnu_KV05";
    EXPECT_EQ(sideOf(set, u"").processor, std::nullopt);
    set.offlineItem = openedListItem;
    set.fileProcessor = Processor::atmega328;
    EXPECT_EQ(sideOf(set, u"").processor, Processor::atmega328);
    EXPECT_FALSE(sideOf(set, u"").isVehicle);
}

TEST_F(ComparisonTest, LooksUpACvOrAValue)
{
    give(other, 5, 99);
    for (const auto& [answer, found] : test::casesOf<2>("cvdata/looked_up.txt"))
        EXPECT_EQ(utf8FromText(lookedUpValues(other, textFromUtf8(answer), texts).value_or(Text())), found);
}

TEST(CsvExportTest, BothFormsDifferInTheHeaderAlone)
{
    CvTable table;
    table.at(1, Column::number) = u"1";
    table.at(1, Column::value) = u"3";
    table.at(1, Column::text) = u"Länge";
    table.at(29, Column::number) = u"29";
    table.at(29, Column::text) = u"zwei\r\nZeilen; mehr";
    const std::string rows = "1;3;L\xE4nge\r\n29;;zwei Zeilen, mehr\r\n";
    EXPECT_EQ(csvExport(table), bytesOf("CV-Nummer;CV-Wert;CV-Text\r\n" + rows));
    EXPECT_EQ(csvExport(table, CsvForm::closedHeader), bytesOf("CV-Nummer;CV-Wert;CV-Text;\r\n" + rows));
}

class TextReportTest : public testing::Test
{
protected:
    TextReportTest()
    {
        test::setText(texts, 696, u"Keine Daten eingelesen!");
        set.loadedData = u"KV07  Firmware = 6 | CV_Standart_kv07.txt";
        set.list = {{u"CV1  = 3", u"Adresse", 1}, {u"CV100 = 12", u"Licht", 100}, {u"Akku", u"", 0}};
    }

    LanguageTables texts;
    CvSet set;
};

TEST_F(TextReportTest, ALineForTheWholeSpeedTableIsFollowedByItsSteps)
{
    test::setText(texts, 301, u" of 168   ");
    test::setCaption(texts, 161, u"changed");
    for (int cv = 70; cv <= 97; ++cv)
        set.table.at(cv, Column::value) = textFromNumber(200 - cv);
    startUnchanged(set);
    set.table.at(97, Column::value) = u"9";
    set.table.at(97, Column::text) = u"step one";
    set.list[1] = {.text = u"CV70 - CV97 ", .name = u"table", .cv = 70, .lastCv = 97};
    const auto lines = linesOfEveryCv(set, texts);
    ASSERT_EQ(lines.size(), 3u + 28u);
    EXPECT_EQ(lines[1], u"CV70 - CV97                 table");
    EXPECT_EQ(lines[2], u"  1 = 9 of 168     changed  step one");
    EXPECT_EQ(lines[29], u" 28 = 130 of 168   ");
    EXPECT_EQ(textReport(set, texts).size(), 3u + lines.size());
}

TEST_F(TextReportTest, HoldsTheLinesInTwoColumnsAndSaysFirstWhenNothingWasRead)
{
    const DateTime date{2026, 1, 2, 3, 4, 5};
    const Text nothingRead = u"Keine Daten eingelesen!";
    std::vector<Text> lines = {u"KV07", set.loadedData, u"", u"CV1  = 3    Adresse", u"CV100 = 12  Licht",
                               u"Akku"};
    EXPECT_EQ(textReport(CvSet(), texts), std::vector{nothingRead});
    EXPECT_EQ(textReport(set, texts), lines);
    EXPECT_EQ(reportFileName(set, date), u"KARVO KV07 2026-01-02.txt");
    set.offlineItem = openedListItem;
    set.listPath = "lists/Bus:7?.kvr";
    lines[0] = u"Bus:7?";
    EXPECT_EQ(textReport(set, texts), lines);
    EXPECT_EQ(reportFileName(set, date), u"KARVO Bus_7_ 2026-01-02.txt");
    set.offlineItem = "mnu_kv07";
    lines.insert(lines.begin(), nothingRead);
    EXPECT_EQ(textReport(set, texts), lines);
}

} // namespace
} // namespace karvo
