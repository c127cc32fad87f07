// The list, the current CV, the bit boxes and the searches.
#include "shell/window_bench.h"

#include <QCheckBox>

namespace karvo::test
{

namespace
{

const QString ok = QStringLiteral("OK");

std::string boxText(WindowBench& bench, const char* name)
{
    return bench.find<QCheckBox>(name).text().replace(QChar(0x2007), u' ').trimmed().toStdString();
}

std::string tickedBoxes(WindowBench& bench)
{
    std::string ticked;
    for (const int weight : {128, 64, 32, 16, 8, 4, 2, 1}) {
        const auto name = "Check" + std::to_string(weight);
        if (bench.find<QCheckBox>(name.c_str()).isChecked())
            ticked += (ticked.empty() ? "" : " ") + std::to_string(weight);
    }
    return ticked;
}

} // namespace

TEST(HauptformList, AsksBeforeAListWithoutADecoder)
{
    WindowBench bench;
    const QString question =
        QStringLiteral("Es wurde noch kein Decoder eingelesen.\r\n"
                       "Die Liste zeigt dann vorgegebene Werte und nicht die eines Fahrzeugs.\r\n"
                       "Möchten Sie die Liste trotzdem anzeigen?");
    bench.driver.expectBox(question, QStringLiteral("Nein"));
    bench.find<QTimer>("Timer3").start(100000);
    bench.item("mnu_kv07").trigger();
    EXPECT_EQ(bench.list().count(), 0);
    EXPECT_TRUE(bench.find<QTimer>("Timer3").isActive()) << "No changes nothing";

    bench.driver.expectBox(question, QStringLiteral("Ja"));
    bench.item("mnu_kv07").trigger();
    EXPECT_EQ(bench.list().count(), 176);
    EXPECT_FALSE(bench.find<QTimer>("Timer3").isActive());
    EXPECT_EQ(bench.text("Version"), "V01_22");
    EXPECT_EQ(bench.text("Programm_Kennung"), "KV07  Liste ohne Fahrzeug");
    EXPECT_EQ(bench.window->windowTitle().toStdString(),
              "Karvo Decoder Daten einlesen - KV07  Liste ohne Fahrzeug | CV_Standart_kv07.txt[*]");
}

TEST(HauptformList, KeepsTheOldListWhenADescriptionIsMissing)
{
    WindowBench bench;
    bench.showOfflineList();
    bench.chooseCv(2);
    bench.driver.expect(QStringLiteral("missing"), [](QWidget& window) {
        EXPECT_TRUE(
            dynamic_cast<QMessageBox&>(window).text().contains(QStringLiteral("CV_Standart_kv08.txt")));
        window.close();
    });
    bench.item("mnu_KV08").trigger();
    EXPECT_EQ(bench.list().count(), 176);
    EXPECT_EQ(bench.text("Programm_Kennung"), "KV07  Liste ohne Fahrzeug");
    EXPECT_EQ(bench.field("CV_Nummer"), "2");
}

TEST(HauptformList, ShowsLabelsAndValues)
{
    WindowBench bench;
    bench.showOfflineList();
    EXPECT_EQ(bench.list().item(0)->text().toStdString(), "CV1  = 1");
    EXPECT_EQ(bench.list().item(1)->text().toStdString(), "CV2  = 20");
    EXPECT_EQ(bench.list().item(28)->text().toStdString(), "CV29 = 6");
    EXPECT_EQ(bench.list().item(69)->text().toStdString(), "  1 = 97 von 255  ");
    EXPECT_EQ(bench.list().item(96)->text().toStdString(), " 28 = 70 von 255  ");
    EXPECT_EQ(bench.list().item(104)->text().toStdString(), "CV105 = 5");
}

TEST(HauptformList, ChoosingALineFillsTheFields)
{
    WindowBench bench;
    bench.showOfflineList();
    bench.chooseCv(2);
    EXPECT_EQ(bench.field("CV_Nummer"), "2");
    EXPECT_EQ(bench.field("CV_Wert"), "20");
    EXPECT_EQ(bench.field("CV_Fabrik"), "18");
    EXPECT_EQ(bench.text("Grenzwert"), "1 bis 200");
    EXPECT_EQ(bench.text("Bezeichnung"), "deutsch two");
    EXPECT_EQ(bench.text("Zusatz_Text"), "explains deutsch\r\nsecond line");
    EXPECT_EQ(bench.text("var_Text"), "0 = off");
    EXPECT_EQ(bench.text("Text1"), "only if deutsch");
    EXPECT_EQ(bench.state.set.currentNumber, 2);

    bench.list().setCurrentRow(69); // speed step 1
    EXPECT_EQ(bench.field("CV_Nummer"), "97");
    EXPECT_EQ(bench.text("Zusatz_Text"), "");
}

TEST(HauptformList, TicksTheBoxesOfTheValueAndNamesThem)
{
    WindowBench bench;
    bench.showOfflineList();
    bench.chooseCv(29);
    EXPECT_EQ(tickedBoxes(bench), "4 2");
    EXPECT_EQ(bench.text("Errechneter_Wert"), "6");
    EXPECT_EQ(boxText(bench, "Check1"), "1  deutsch one");
    EXPECT_EQ(boxText(bench, "Check2"), "2  two");
    EXPECT_EQ(boxText(bench, "Check4"), "4  Bit 2") << "a bit without a name";
    EXPECT_EQ(boxText(bench, "Check8"), "8  deutsch eight");
    const auto live = [&](const char* name) { return bench.find<QCheckBox>(name).isEnabled(); };
    const auto reason = [&](const char* name) { return bench.find<QCheckBox>(name).toolTip().toStdString(); };
    EXPECT_TRUE(live("Check1") && live("Check2") && live("Check8"));
    EXPECT_FALSE(live("Check4") || live("Check16") || live("Check128"));
    EXPECT_EQ(reason("Check1"), "");
    EXPECT_EQ(reason("Check16"), "Dieses Bit hat bei dieser CV keine Bedeutung.");
    EXPECT_EQ(reason("Check4"),
              "Dieses Bit hat bei dieser CV keine Bedeutung. Es ist gesetzt und zählt im Wert mit.");
    bench.type("CV_Wert", "9");
    EXPECT_EQ(tickedBoxes(bench), "8 1") << "they follow what is typed";
    EXPECT_EQ(bench.text("Errechneter_Wert"), "9");
    EXPECT_EQ(reason("Check4"), reason("Check16"));
    QTest::keyClick(&bench.find<QLineEdit>("CV_Wert"), Qt::Key_Escape);
    EXPECT_EQ(tickedBoxes(bench), "4 2");
    bench.chooseCv(105);
    EXPECT_EQ(tickedBoxes(bench), "4 1");
    EXPECT_EQ(boxText(bench, "Check128"), "128  Bit 7");
    for (const char* box : {"Check1", "Check4", "Check128"}) {
        EXPECT_FALSE(live(box)) << "a number has no switches";
        EXPECT_EQ(reason(box), utf8FromText(bench.state.texts.caption(Caption::bitsOfNumber)));
    }
}

TEST(HauptformList, AddsUpTheTickedBoxes)
{
    WindowBench bench;
    bench.showOfflineList();
    bench.chooseCv(29);
    const struct {
        const char* box;
        const char* sum;
    } clicks[] = {{"Check1", "7"}, {"Check2", "5"}, {"Check1", "4"}, {"Check8", "12"}};
    for (const auto& [box, sum] : clicks) {
        bench.find<QCheckBox>(box).click();
        EXPECT_EQ(bench.text("Errechneter_Wert"), sum) << box;
        EXPECT_EQ(bench.field("CV_Wert"), sum) << box;
    }
}

TEST(HauptformList, GoesToATypedNumber)
{
    WindowBench bench;
    bench.showOfflineList();
    bench.typeNumber("105");
    EXPECT_EQ(bench.list().currentItem()->text().toStdString(), "CV105 = 5");
    EXPECT_EQ(bench.text("Bezeichnung"), "deutsch 105");
    bench.typeNumber("97");
    EXPECT_EQ(bench.list().currentItem()->text().toStdString(), "  1 = 97 von 255  ");
    bench.typeNumber("0");
    EXPECT_EQ(bench.field("CV_Nummer"), "97");
    EXPECT_EQ(bench.list().currentItem()->text().toStdString(), "  1 = 97 von 255  ");
}

TEST(HauptformList, AsksForANumber)
{
    WindowBench bench;
    bench.showOfflineList();
    bench.driver.expectInput(QStringLiteral("Suchen nach CV Index"), QStringLiteral(" 29 "));
    bench.item("mnu_index").trigger();
    EXPECT_EQ(bench.list().currentItem()->text().toStdString(), "CV29 = 6");
    for (const char* wrong : {"177", "0", "-1", "abc", "99999999999"}) {
        bench.driver.expectInput(QStringLiteral("Suchen nach CV Index"), QString::fromLatin1(wrong));
        bench.driver.expectBox(QStringLiteral("Diese CV-Nummer steht nicht in der Liste."), ok);
        bench.item("mnu_index").trigger();
    }
    bench.driver.expectInput(QStringLiteral("Suchen nach CV Index"), std::nullopt);
    bench.item("mnu_index").trigger();
    EXPECT_EQ(bench.field("CV_Nummer"), "29");
}

TEST(HauptformList, SearchesAWordAndGoesOnWithF3)
{
    WindowBench bench;
    bench.showOfflineList();
    const QString title = QStringLiteral("Suchen nach Stichwort");
    const auto current = [&] { return bench.list().currentItem()->text().toStdString(); };
    bench.driver.expectInput(title, QStringLiteral("DEUTSCH 10"));
    bench.item("mnu_suchen_generell").trigger();
    EXPECT_EQ(current(), "CV10 = 10");
    bench.press(Qt::Key_F3);
    EXPECT_EQ(current(), "CV100 = 0");
    bench.driver.expectInput(title, QStringLiteral("DEUTSCH 10")); // the same again goes on
    bench.item("mnu_suchen_generell").trigger();
    EXPECT_EQ(current(), "CV101 = 1");
    bench.driver.expectInput(title, QStringLiteral("eight")); // another one begins at the top
    bench.item("mnu_suchen_generell").trigger();
    EXPECT_EQ(current(), "CV29 = 6");
    bench.press(Qt::Key_F3);
    EXPECT_EQ(current(), "CV29 = 6");
    bench.driver.expectInput(title, QStringLiteral("nirgends"));
    bench.driver.expectBox(QStringLiteral("Suche beendet, nichts gefunden"), ok);
    bench.item("mnu_suchen_generell").trigger();
    EXPECT_EQ(current(), "CV29 = 6") << "what was chosen stays";
}

TEST(HauptformList, ClearsTheDisplay)
{
    WindowBench bench;
    bench.showOfflineList();
    bench.chooseCv(29);
    bench.item("mnu_clear").trigger();
    EXPECT_EQ(bench.list().count(), 0);
    for (const char* name : {"CV_Nummer", "CV_Wert", "CV_Fabrik"})
        EXPECT_EQ(bench.field(name), "") << name;
    for (const char* name : {"Grenzwert", "Bezeichnung", "Zusatz_Text", "var_Text", "Text1", "DCC1", "DCC2"})
        EXPECT_EQ(bench.text(name), "") << name;
    EXPECT_EQ(tickedBoxes(bench), "");
    EXPECT_EQ(bench.text("Version"), "V01_23");
    EXPECT_EQ(bench.window->windowTitle().toStdString(), "Karvo Decoder Daten einlesen");
    EXPECT_EQ(bench.text("Programm_Kennung"), "Noch kein Decoder eingelesen");
}

TEST(HauptformList, ShowsExpertKnowledgeBesideItsCv)
{
    WindowBench bench;
    bench.state.expert = true;
    bench.files.content[bench.state.programFolder / "CV_exp_kv07.txt"] =
        bytesOf("Expert KV07\r\n2;;inner;;;;what happens inside;;;;;;;;;;\r\n");
    bench.driver.expect(QStringLiteral("notice"), [](QWidget& window) { window.close(); });
    bench.state.link.identified = true;
    bench.item("mnu_kv07").trigger();
    ASSERT_EQ(bench.list().count(), 177);
    bench.list().setCurrentRow(2);
    EXPECT_EQ(bench.list().currentItem()->text().toStdString(), "    Experte: what happens inside");
    EXPECT_EQ(bench.field("CV_Nummer"), "2");
    EXPECT_EQ(bench.text("Experte"), "Experte: what happens inside");
    bench.chooseCv(3);
    EXPECT_EQ(bench.text("Experte"), "");
}

TEST(HauptformList, NamesTheFilesOfTheDecoder)
{
    WindowBench bench;
    bench.showOfflineList();
    bench.driver.expect(QStringLiteral("info"), [](QWidget& window) {
        const auto text = dynamic_cast<QMessageBox&>(window).text();
        EXPECT_TRUE(text.startsWith(QStringLiteral("Decoder = KV07\r\n"))) << text.toStdString();
        window.close();
    });
    bench.item("mnu_cv_datei").trigger();
    EXPECT_TRUE(bench.driver.isDone());
}

} // namespace karvo::test
