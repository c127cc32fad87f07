#include "workbench/forms/vehicle_printout.h"

#include "shell/form_bench.h"
#include "workbench/list_files.h"
#include "workbench/offline_list.h"

namespace karvo::test
{

struct PrintBench : FormBench {
    FixedClock clock;

    PrintBench()
    {
        put("bus.kvr", smallList("Standard KV07*6", "1;3;eins;\r\n2;5;zwei;\r\n"));
        EXPECT_TRUE(openList(bench, "lists/bus.kvr"));
        journal.clear();
    }
    std::string savedBy(FzCVdrucken& window, const char* button, const char* name)
    {
        prompts.chooseFile("lists/" + std::string(name));
        click(window, button);
        return saved(name);
    }
};

TEST(FzCVdrucken, SavesEachForm)
{
    const struct {
        const char* button;
        const char* name;
        const char* begin;
    } cases[] = {{"Report", "r.txt", "bus\r\n"},
                 {"Csv", "a.csv", "CV-Nummer;CV-Wert;CV-Text\r\n1;3;eins\r\n2;5;zwei\r\n"},
                 {"CsvClosed", "b.csv", "CV-Nummer;CV-Wert;CV-Text;\r\n1;3;eins"},
                 {"Pdf", "r.pdf", "%PDF-"}};
    for (const auto& [button, name, begin] : cases) {
        PrintBench bench;
        FzCVdrucken window(bench.bench, bench.clock);
        const auto content = bench.savedBy(window, button, name);
        EXPECT_TRUE(content.starts_with(begin)) << button;
        EXPECT_EQ(content.find("%%EOF") != std::string::npos, button == std::string_view("Pdf"));
        const std::string kind = std::string(name).substr(1);
        EXPECT_EQ(bench.journal.back(), "save *" + kind + " in lists: KARVO bus 2026-11-22" + kind);
        EXPECT_EQ(labelOf(window, "Saved"), std::string("Gespeichert: lists/") + name);
        bench.files.saveFailure = u"disk full";
        bench.savedBy(window, button, "x");
        EXPECT_TRUE(bench.journal.back().starts_with("message ")) << button;
        EXPECT_NE(bench.journal.back().find("disk full"), std::string::npos) << button;
    }
    PrintBench bench;
    ASSERT_TRUE(showOfflineList(bench.bench, "mnu_kv07"));
    FzCVdrucken window(bench.bench, bench.clock);
    EXPECT_TRUE(bench.savedBy(window, "Report", "r.txt").starts_with("Keine Daten eingelesen!\r\nKV07\r\n"));
}

} // namespace karvo::test
