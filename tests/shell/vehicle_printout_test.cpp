#include "workbench/forms/vehicle_printout.h"

#include "form_bench.h"
#include "workbench/list_files.h"
#include "workbench/offline_list.h"

namespace karvo::test
{
namespace
{

struct PrintBench : FormBench {
    FixedClock clock;

    PrintBench()
    {
        put("bus.kvr", smallList("Standard KV07*6", "1;3;eins;\r\n2;5;zwei;\r\n"));
        addFile("CV_Standart_kv07.txt", smallDescription("Standard KV07", "Wort "));
        EXPECT_TRUE(openList(bench, "lists/bus.kvr"));
        journal.clear();
    }
    std::string savedBy(FzCVdrucken& window, const char* button, const char* name)
    {
        prompts.chooseFile("lists/" + std::string(name));
        find<QPushButton>(window, button).click();
        return saved(name);
    }
};

} // namespace

TEST(FzCVdrucken, SavesEachForm)
{
    PrintBench bench;
    FzCVdrucken window(bench.bench, bench.clock);
    EXPECT_EQ(bench.savedBy(window, "Report", "r.txt").substr(0, 5), "bus\r\n");
    EXPECT_EQ(bench.journal.back(), "save *.txt in lists: KARVO bus 2026-11-22.txt");
    EXPECT_EQ(bench.savedBy(window, "Csv", "a.csv"), "CV-Nummer;CV-Wert;CV-Text\r\n1;3;eins\r\n2;5;zwei\r\n");
    EXPECT_EQ(bench.journal.back(), "save *.csv in lists: KARVO bus 2026-11-22.csv");
    EXPECT_TRUE(
        bench.savedBy(window, "CsvClosed", "b.csv").starts_with("CV-Nummer;CV-Wert;CV-Text;\r\n1;3;eins"));
    EXPECT_EQ(find<QLabel>(window, "Saved").text().toStdString(), "Gespeichert: lists/b.csv");
    const std::string pdf = bench.savedBy(window, "Pdf", "r.pdf");
    EXPECT_TRUE(pdf.starts_with("%PDF-"));
    EXPECT_NE(pdf.find("%%EOF"), std::string::npos);
    EXPECT_EQ(bench.journal.back(), "save *.pdf in lists: KARVO bus 2026-11-22.pdf");
}

TEST(FzCVdrucken, AFailedSaveIsTold)
{
    PrintBench bench;
    FzCVdrucken window(bench.bench, bench.clock);
    bench.files.saveFailure = u"disk full";
    for (const char* const button : {"Report", "Csv", "CsvClosed", "Pdf"}) {
        bench.savedBy(window, button, "x");
        EXPECT_TRUE(bench.journal.back().starts_with("message ")) << button;
        EXPECT_NE(bench.journal.back().find("disk full"), std::string::npos) << button;
        EXPECT_EQ(find<QLabel>(window, "Saved").text().toStdString(), "");
    }
}

TEST(FzCVdrucken, AListThatWasNeverReadSaysSo)
{
    PrintBench bench;
    ASSERT_TRUE(showOfflineList(bench.bench, "mnu_kv07"));
    FzCVdrucken window(bench.bench, bench.clock);
    EXPECT_TRUE(bench.savedBy(window, "Report", "r.txt").starts_with("Keine Daten eingelesen!\r\nKV07\r\n"));
}

} // namespace karvo::test
