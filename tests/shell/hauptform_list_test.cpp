// The list, the current CV, the bit boxes and the searches.
#include "shell/window_bench.h"

#include <QCheckBox>

namespace karvo::test
{

struct ListBench : WindowBench {
    ListBench() { showOfflineList(); }

    QCheckBox& box(int weight) { return find<QCheckBox>("Check" + std::to_string(weight)); }
    std::string words(int weight)
    {
        return box(weight).text().replace(QChar(0x2007), u' ').trimmed().toStdString();
    }
    std::string ticked()
    {
        std::string weights;
        for (const int weight : {128, 64, 32, 16, 8, 4, 2, 1})
            weights += box(weight).isChecked() ? std::to_string(weight) + " " : "";
        return weights;
    }
    std::string caption(Caption number) { return utf8FromText(state.texts.caption(number)); }
    // What the window asks for under this title; nothing typed cancels it.
    void ask(const char* menuItem, const char* title, const std::optional<QString>& typed)
    {
        driver.expectInput(QString::fromLatin1(title), typed);
        choose(menuItem);
    }
    void askNumber(const std::optional<QString>& typed) { ask("mnu_index", "Suchen nach CV Index", typed); }
    void askWord(const QString& typed) { ask("mnu_suchen_generell", "Suchen nach Stichwort", typed); }
};

TEST(HauptformList, AsksBeforeAListWithoutADecoder)
{
    WindowBench bench;
    for (const bool yes : {false, true}) {
        bench.driver.expectBox(
            QStringLiteral("Es wurde noch kein Decoder eingelesen.\r\n"
                           "Die Liste zeigt dann vorgegebene Werte und nicht die eines Fahrzeugs.\r\n"
                           "Möchten Sie die Liste trotzdem anzeigen?"),
            yes ? QStringLiteral("Ja") : QStringLiteral("Nein"));
        bench.find<QTimer>("Timer3").start(100000);
        bench.choose("mnu_kv07");
        EXPECT_EQ(bench.list().count(), yes ? 176 : 0);
        EXPECT_EQ(bench.find<QTimer>("Timer3").isActive(), !yes) << "No changes nothing";
    }
    EXPECT_EQ(bench.text("Version"), "V01_22");
    EXPECT_EQ(bench.window->windowTitle().toStdString(),
              "Karvo Decoder Daten einlesen - KV07  Liste ohne Fahrzeug | CV_Standart_kv07.txt[*]");
    bench.chooseCv(2);
    bench.state.link.identified = true;
    bench.expectBoxWith("CV_Standart_kv08.txt");
    bench.choose("mnu_KV08");
    EXPECT_EQ(bench.text("Programm_Kennung"), "KV07  Liste ohne Fahrzeug") << "the old list stays";
    EXPECT_EQ(bench.field("CV_Nummer"), "2");
    bench.expectBoxWith("Decoder = KV07\r\n");
    bench.choose("mnu_cv_datei");
}

TEST(HauptformList, ChoosingALineFillsTheFieldsAndClearingEmptiesThem)
{
    ListBench bench;
    const auto shown = [&] {
        std::string all;
        for (const auto& name : wordsOf("CV_Nummer CV_Wert CV_Fabrik"))
            all += bench.field(name) + "|";
        for (const auto& name : wordsOf("Grenzwert Bezeichnung Zusatz_Text var_Text Text1"))
            all += bench.text(name) + "|";
        return all;
    };
    bench.chooseCv(2);
    EXPECT_EQ(shown(),
              "2|20|18|1 bis 200|deutsch two|explains deutsch\r\nsecond line|0 = off|only if deutsch|");
    EXPECT_EQ(bench.state.set.currentNumber, 2);
    bench.list().setCurrentRow(69); // speed step 1
    EXPECT_EQ(shown(), "97|97|0|0 bis 255|deutsch 97||||");
    EXPECT_EQ(bench.line(), "  1 = 97 von 255  ");
    bench.choose("mnu_clear");
    EXPECT_EQ(bench.list().count(), 0);
    EXPECT_EQ(shown() + bench.text("DCC1") + bench.text("DCC2") + bench.ticked(), "||||||||");
    EXPECT_EQ(bench.text("Version"), "V01_23");
    EXPECT_EQ(bench.window->windowTitle().toStdString(), "Karvo Decoder Daten einlesen");
    EXPECT_EQ(bench.text("Programm_Kennung"), "Noch kein Decoder eingelesen");
}

TEST(HauptformList, TicksTheBoxesOfTheValueAndNamesThem)
{
    ListBench bench;
    bench.chooseCv(29);
    EXPECT_EQ(bench.ticked(), "4 2 ");
    EXPECT_EQ(bench.text("Errechneter_Wert"), "6");
    const struct {
        int weight;
        const char* words;
        bool isLive;
        const char* reason;
    } cases[] = {
        {1, "1  deutsch one", true, ""},
        {2, "2  two", true, ""},
        {8, "8  deutsch eight", true, ""},
        {16, "16  Bit 4", false, "Dieses Bit hat bei dieser CV keine Bedeutung."},
        {4, "4  Bit 2", false,
         "Dieses Bit hat bei dieser CV keine Bedeutung. Es ist gesetzt und zählt im Wert mit."},
    };
    for (const auto& [weight, words, isLive, reason] : cases) {
        EXPECT_EQ(bench.words(weight), words);
        EXPECT_EQ(bench.box(weight).isEnabled(), isLive) << words;
        EXPECT_EQ(bench.box(weight).toolTip().toStdString(), reason) << words;
    }
    bench.type("CV_Wert", "9");
    EXPECT_EQ(bench.ticked(), "8 1 ") << "they follow what is typed";
    EXPECT_EQ(bench.text("Errechneter_Wert"), "9");
    EXPECT_EQ(bench.box(4).toolTip(), bench.box(16).toolTip());
    QTest::keyClick(&bench.find<QLineEdit>("CV_Wert"), Qt::Key_Escape);
    EXPECT_EQ(bench.ticked(), "4 2 ");
    for (const auto& [weight, sum] : {std::pair{1, "7"}, {2, "5"}, {1, "4"}, {8, "12"}}) {
        bench.box(weight).click();
        EXPECT_EQ(bench.text("Errechneter_Wert"), sum);
        EXPECT_EQ(bench.field("CV_Wert"), sum);
    }
    bench.chooseCv(105);
    EXPECT_EQ(bench.ticked(), "4 1 ");
    EXPECT_EQ(bench.words(128), "128  Bit 7");
    for (const int weight : {1, 4, 128}) {
        EXPECT_FALSE(bench.box(weight).isEnabled()) << "a number has no switches";
        EXPECT_EQ(bench.box(weight).toolTip().toStdString(), bench.caption(Caption::bitsOfNumber));
    }
}

TEST(HauptformList, GoesToATypedNumberAndAsksForOne)
{
    ListBench bench;
    bench.typeNumber("105");
    EXPECT_EQ(bench.line(), "CV105 = 5");
    EXPECT_EQ(bench.text("Bezeichnung"), "deutsch 105");
    bench.typeNumber("97");
    bench.typeNumber("0");
    EXPECT_EQ(bench.field("CV_Nummer"), "97");
    EXPECT_EQ(bench.line(), "  1 = 97 von 255  ");
    bench.askNumber(QStringLiteral(" 29 "));
    EXPECT_EQ(bench.line(), "CV29 = 6");
    for (const char* wrong : {"177", "0", "-1", "abc", "99999999999"}) {
        bench.driver.expectInput(QStringLiteral("Suchen nach CV Index"), QString::fromLatin1(wrong));
        bench.expectBoxWith("Diese CV-Nummer steht nicht in der Liste.");
        bench.choose("mnu_index");
    }
    bench.askNumber(std::nullopt);
    EXPECT_EQ(bench.field("CV_Nummer"), "29");
}

TEST(HauptformList, SearchesAWordAndGoesOnWithF3)
{
    ListBench bench;
    bench.askWord(QStringLiteral("DEUTSCH 10"));
    EXPECT_EQ(bench.line(), "CV10 = 10");
    bench.press(Qt::Key_F3);
    EXPECT_EQ(bench.line(), "CV100 = 0");
    bench.askWord(QStringLiteral("DEUTSCH 10")); // the same again goes on
    EXPECT_EQ(bench.line(), "CV101 = 1");
    bench.askWord(QStringLiteral("eight")); // another one begins at the top
    EXPECT_EQ(bench.line(), "CV29 = 6");
    bench.press(Qt::Key_F3);
    EXPECT_EQ(bench.line(), "CV29 = 6");
    bench.driver.expectInput(QStringLiteral("Suchen nach Stichwort"), QStringLiteral("nirgends"));
    bench.expectBoxWith("Suche beendet, nichts gefunden");
    bench.choose("mnu_suchen_generell");
    EXPECT_EQ(bench.line(), "CV29 = 6") << "what was chosen stays";
}

TEST(HauptformList, ShowsExpertKnowledgeBesideItsCv)
{
    WindowBench bench;
    bench.state.expert = true;
    bench.files.content[bench.state.programFolder / "CV_exp_kv07.txt"] =
        bytesOf("Expert KV07\r\n2;;inner;;;;what happens inside;;;;;;;;;;\r\n");
    bench.expect("notice");
    bench.state.link.identified = true;
    bench.choose("mnu_kv07");
    ASSERT_EQ(bench.list().count(), 177);
    bench.list().setCurrentRow(2);
    EXPECT_EQ(bench.line(), "    Experte: what happens inside");
    EXPECT_EQ(bench.field("CV_Nummer"), "2");
    EXPECT_EQ(bench.text("Experte"), "Experte: what happens inside");
    bench.chooseCv(3);
    EXPECT_EQ(bench.text("Experte"), "");
}

} // namespace karvo::test
