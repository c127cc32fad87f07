// The windows that compare, print and change list files, and the search for ports.
#include "link/forms/aktive_com.h"
#include "workbench/forms/more_cvs_dialog.h"
#include "workbench/forms/vehicle_printout.h"
#include "workbench/forms/vergleichen.h"

#include "shell/window_bench.h"
#include "workbench/list_files.h"
#include "workbench/offline_list.h"

#include <QPrinterInfo>
#include <QSpinBox>
#include <QTableWidget>

namespace karvo::test
{

struct CompareBench : FormBench {
    Vergleichen window{bench};

    void choose(const char* item, const std::string& file)
    {
        prompts.chooseFile("lists/" + file);
        trigger(window, item);
    }
    // As they are spoken.
    std::string lines()
    {
        const auto& list = find<QListWidget>(window, "List1");
        std::string texts;
        for (int row = 0; row < list.count(); ++row)
            texts += list.item(row)->data(Qt::AccessibleTextRole).toString().toStdString() + ";";
        return texts;
    }
};

TEST(Vergleichen, ShowsTwoFilesSideBySideAndSavesTheResult)
{
    CompareBench bench;
    bench.put("a.kvr", listFile("1;3;eins;\r\n14;7;x;\r\n70;200;FS;\r\n"));
    bench.put("b.kvr", listFile("1;3;eins;\r\n70;201;FS;\r\n"));
    bench.put("old.kvr", listFile("1;3;eins;\r\n", "Standard KV04*6", "ATmega168"));
    bench.addFile("CV_Standart172_v1_5.txt", smallDescription("Standard KV05", "anderes "));
    EXPECT_FALSE(find(bench.window, "Command1").isEnabled());
    bench.choose("mnu_saved", "a.kvr");
    EXPECT_EQ(bench.journal.back(), "open *.kvr in lists: ");
    bench.choose("mnu_saved_2", "b.kvr");
    EXPECT_EQ(portable(labelOf(bench.window, "FirstSide") + labelOf(bench.window, "SecondSide")),
              "Links: lists/a.kvrRechts: lists/b.kvr");
    EXPECT_EQ(labelOf(bench.window, "Counts"), "1 gleich, 1 verschieden, 1 nur links, 0 nur rechts");
    EXPECT_EQ(bench.lines(), "CV1 = 3, 3, gleich, Wort 1;CV14 = 7, ---, nur links, Wort 14;"
                             "  28  (CV70) = 200, 201, verschieden, Wort 70;");
    bench.choose("SaveAsText", "result.txt");
    EXPECT_NE(bench.saved("result.txt").find("\r\nCV1 = 3\t3\tgleich\tWort 1\r\n"), std::string::npos);
    bench.choose("SaveAsCsv", "result.csv");
    EXPECT_NE(bench.saved("result.csv").find("\r\n70;200;201;verschieden;Wort 70\r\n"), std::string::npos);

    click(bench.window, "OnlyDifferences");
    trigger(bench.window, "mnu_KV05");
    EXPECT_EQ(bench.lines(), "CV14 = 7, ---, nur links, anderes 14;"
                             "  28  (CV70) = 200, 201, verschieden, anderes 70;");
    bench.prompts.type(u"CV70");
    click(bench.window, "Command2");
    EXPECT_EQ(find<QListWidget>(bench.window, "List1").item(2)->text().toStdString(),
              "Werte aus der Datei: CV70 = 201");
    bench.choose("mnu_saved_2", "old.kvr"); // of another processor: nothing is compared
    EXPECT_TRUE(bench.journal.back().ends_with("\r\nCVs können nicht verglichen werden."));
    EXPECT_EQ(bench.lines(), "");
    EXPECT_FALSE(find(bench.window, "SaveResult").isEnabled());
}

TEST(Vergleichen, TheExpertPasswordIsExact)
{
    CompareBench bench;
    bench.addFile("CV_exp_kv07.txt", "Head\r\n1;;tief;;;;Wissen;\r\n");
    ASSERT_TRUE(showOfflineList(bench.bench, "mnu_kv07"));
    const auto expectExpert = [&](bool expert, const char* item) {
        trigger(bench.window, item);
        EXPECT_EQ(find<QAction>(bench.window, "mnu_expert_ein").isVisible(), !expert);
        EXPECT_EQ(find<QAction>(bench.window, "mnu_expert_aus").isVisible(), expert);
        EXPECT_EQ(bench.settings.values["Parameter/Expert"] == u"1", expert);
        EXPECT_EQ(bench.state.set.list[1].text, expert ? u"    Experte: Wissen" : u"CV2  = 1");
    };
    bench.prompts.type(u"ROFU");
    expectExpert(false, "mnu_expert_ein");
    EXPECT_TRUE(bench.journal.back().starts_with("message Das Passwort ist nicht richtig"));
    bench.prompts.type(u"Rofu");
    expectExpert(true, "mnu_expert_ein");
    expectExpert(false, "mnu_expert_aus");
}

TEST(FzCVdrucken, SavesEachForm)
{
    FormBench bench;
    const FixedClock clock;
    bench.put("bus.kvr", listFile("1;3;eins;\r\n2;5;zwei;\r\n"));
    ASSERT_TRUE(openList(bench.bench, "lists/bus.kvr"));
    FzCVdrucken window(bench.bench, clock);
    const auto save = [&](const char* button, const std::string& name) {
        bench.prompts.chooseFile("lists/" + name);
        click(window, button);
        return bench.saved(name);
    };
    const std::tuple<const char*, std::string, const char*> cases[] = {
        {"Report", "txt", "bus\r\n"},
        {"Csv", "csv", "CV-Nummer;CV-Wert;CV-Text\r\n1;3;eins\r\n2;5;zwei\r\n"},
        {"CsvClosed", "csv", "CV-Nummer;CV-Wert;CV-Text;\r\n1;3;eins"},
        {"Pdf", "pdf", "%PDF-"}};
    for (const auto& [button, kind, begin] : cases) {
        EXPECT_TRUE(save(button, "r." + kind).starts_with(begin)) << button;
        EXPECT_EQ(bench.journal.back(), "save *." + kind + " in lists: KARVO bus 2026-11-22." + kind);
        EXPECT_EQ(portable(labelOf(window, "Saved")), "Gespeichert: lists/r." + kind);
        bench.files.saveFailure = std::make_error_code(std::errc::no_space_on_device);
        save(button, "x." + kind);
        EXPECT_NE(bench.journal.back().find("Datenträger ist voll"), std::string::npos) << button;
        bench.files.saveFailure.clear();
    }
    if (!QPrinterInfo::availablePrinterNames().isEmpty())
        GTEST_SKIP() << "here the system's dialog would come";
    click(window, "Print");
    EXPECT_TRUE(bench.journal.back().starts_with("message Auf diesem Computer ist kein Drucker"));
}

struct MoreCvsBench : FormBench {
    ModalDriver driver;
    Change_more_CV window{bench};

    MoreCvsBench()
    {
        put("a.kvr", listFile("3;4;eins;1;126;\r\n4;8;x;0;255;\r\n"));
        put("b.kvr", listFile("3;4;eins;1;99;\r\n4;8;x;0;255;\r\n"));
        for (const char* const name : {"missing.kvr", "a.kvr", "b.kvr", "a.kvr"}) { // once
            prompts.chooseFile(std::string("lists/") + name);
            act("AddFiles");
        }
    }
    // Clicks a button and waits until what it begins is done.
    void act(const char* button)
    {
        click(window, button);
        EXPECT_TRUE(QTest::qWaitFor([this] { return !find(window, "Anhalten").isEnabled(); }));
    }
    void addChange(int cv, int value)
    {
        find<QSpinBox>(window, "CV").setValue(cv);
        find<QSpinBox>(window, "Value").setValue(value);
        act("AddChange");
    }
    void removeFirst(const char* list, const char* button)
    {
        find<QListWidget>(window, list).setCurrentRow(0);
        act(button);
    }
    std::string rows()
    {
        auto& table = find<QTableWidget>(window, "Preview");
        QString cells;
        for (int row = 0; row < table.rowCount(); ++row) {
            for (int column = 0; column < table.columnCount(); ++column)
                cells += table.item(row, column)->text() + QLatin1Char(column == 4 ? '\n' : '|');
        }
        return cells.toStdString();
    }
    bool canApply() { return find(window, "Apply").isEnabled(); }
    std::string told() { return labelOf(window, "State"); }
};

TEST(Change_more_CV, PreviewsAndChangesAlsoTheListOnTheBench)
{
    MoreCvsBench bench;
    ASSERT_TRUE(openList(bench.bench, "lists/a.kvr"));
    EXPECT_FALSE(bench.canApply());
    bench.addChange(3, 50);
    bench.addChange(3, 100); // instead
    bench.addChange(4, 8);
    bench.removeFirst("Files", "RemoveFiles");
    const char* const refused = "b.kvr|CV3|4|100|CV3 darf hier nur von 1 bis 99 gehen\n"
                                "b.kvr|CV4|8|8|Datei bleibt unverändert\n";
    EXPECT_EQ(bench.rows(),
              std::string("a.kvr|CV3|4|100|wird geändert\na.kvr|CV4|8|8|ist schon so\n") + refused);
    EXPECT_EQ(bench.told(), "Zu ändern: 1 Dateien. Abgelehnt: 1.");
    EXPECT_TRUE(bench.canApply());
    const std::string other = bench.saved("b.kvr");
    bench.act("Apply");
    EXPECT_TRUE(bench.rows().starts_with("a.kvr|CV3|4|100|geändert\n"));
    EXPECT_EQ(bench.told(), "Erledigt: 1 Dateien. Unverändert gelassen: 1.");
    EXPECT_NE(bench.saved("a.kvr").find("\r\n3;100;eins;"), std::string::npos);
    EXPECT_EQ(bench.saved("b.kvr"), other);
    EXPECT_FALSE(bench.canApply()) << "all of it is done";
    EXPECT_EQ(bench.state.set.table.value(3), 100);
    bench.removeFirst("Changes", "RemoveChanges");
    EXPECT_EQ(bench.rows(), "a.kvr|CV4|8|8|ist schon so\nb.kvr|CV4|8|8|ist schon so\n");
}

TEST(Change_more_CV, StopsAndGoesOnWithTheRest)
{
    MoreCvsBench bench;
    bench.addChange(4, 9);
    click(bench.window, "Apply");
    EXPECT_FALSE(bench.canApply() || find(bench.window, "AddFiles").isEnabled());
    click(bench.window, "Anhalten"); // before the first file
    QTest::qWait(20);
    EXPECT_EQ(bench.files.saves, 0);
    EXPECT_TRUE(bench.rows().ends_with("\nb.kvr|CV4|8|9|wird geändert\n"));
    EXPECT_EQ(bench.told(), "Erledigt: 0 Dateien. Unverändert gelassen: 3.");
    bench.act("Apply");
    EXPECT_EQ(bench.files.saves, 2) << "only one was missing";
    bench.addChange(4, 10);
    bench.window.show();
    const auto question = QString::fromStdU16String(bench.state.texts.message(Message::discardQuestion));
    click(bench.window, "Apply");
    bench.driver.expectBox(question, QStringLiteral("Weiter bearbeiten"));
    bench.act("Schliessen");
    EXPECT_EQ(bench.files.saves, 4) << "whoever stays goes on with the rest";
    bench.addChange(4, 11);
    click(bench.window, "Apply");
    bench.driver.expectBox(question, QStringLiteral("Verwerfen"));
    bench.act("Schliessen");
    EXPECT_EQ(bench.files.saves, 4) << "whoever closes the window stops";
    EXPECT_FALSE(bench.window.isVisible());
    bench.window.show();
    while (find<QListWidget>(bench.window, "Files").count() > 0)
        bench.removeFirst("Files", "RemoveFiles");
    bench.driver.expectBox(question, QStringLiteral("Verwerfen")); // typed for no file
    click(bench.window, "Schliessen");
}

struct SearchBench {
    Journal journal;
    ScriptedLine line{journal};
    MemorySettings settings;
    LinkState state;
    LanguageTables texts;
    std::vector<PortDevice> devices = std::vector<PortDevice>(31);
    std::vector<NewPortDevice> fresh;
    Aktive_COM dialog{state, line, settings, texts, [this] { return devices; }, [this] { return fresh; }};

    // The names, each with its tool tip.
    std::string found()
    {
        auto& list = find<QListWidget>(dialog, "Ports");
        std::string names;
        for (int row = 0; row < list.count(); ++row)
            names += (list.item(row)->text() + u'|' + list.item(row)->toolTip() + u';').toStdString();
        return names;
    }
    void search(const std::vector<int>& present)
    {
        line.stayPresent(present);
        dialog.show();
        EXPECT_EQ(labelOf(dialog, "Heading"), "c131");
        EXPECT_TRUE(QTest::qWaitFor([this] { return labelOf(dialog, "Heading") == "c132"; }));
    }
    void take()
    {
        find<QListWidget>(dialog, "Ports").setCurrentRow(1);
        click(dialog, "OK");
    }
};

TEST(AktiveCom, OffersThePortsThatAreThereAndTakesTheChosenOne)
{
    SearchBench bench;
    numberEveryText(bench.texts);
    setTexts(bench.texts, {}, {{45, u"device {1}: {2}"}, {138, u"new: {1}"}});
    bench.state.portNumber = 7;
    bench.devices[4] = {QStringLiteral("/dev/ttyUSB0"), QStringLiteral("USB Serial")};
    bench.devices[6] = {QStringLiteral("COM7"), QString()};
    bench.search({99});
    EXPECT_EQ(bench.found(), "");
    EXPECT_FALSE(find(bench.dialog, "OK").isEnabled());
    click(bench.dialog, "SearchAgain");
    EXPECT_FALSE(find(bench.dialog, "SearchAgain").isEnabled());
    bench.search({3, 5, 7});
    EXPECT_EQ(bench.found(), "COM3|;COM5|device /dev/ttyUSB0: USB Serial;COM7|;") << "not the name again";
    EXPECT_EQ(find<QListWidget>(bench.dialog, "Ports").currentRow(), 2) << "the port in use";
    click(bench.dialog, "Cancel");
    EXPECT_TRUE(bench.settings.values.empty());
    bench.search({3, 5, 7});
    bench.take();
    EXPECT_EQ(bench.dialog.result(), QDialog::Accepted);
    EXPECT_EQ(bench.state.portNumber, 5);
    // A device that has no number yet is given one.
    bench.fresh = {{31, {QStringLiteral("COM40"), QStringLiteral("USB Serial")}}};
    bench.search({3});
    EXPECT_EQ(bench.found(), "COM3|;COM31|new: device COM40: USB Serial;");
    bench.take();
    EXPECT_EQ(bench.settings.values["Ports/COM31"], Text(u"COM40"));
    EXPECT_EQ(bench.settings.values["Parameter/Com_Port"], Text(u"31"));
}

} // namespace karvo::test
