#include "cvdata/changes.h"
#include "cvdata/csv_export.h"
#include "cvdata/text_report.h"
#include "support/link_bench.h"
#include "support/memory_files.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using test::bytesOf;

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
