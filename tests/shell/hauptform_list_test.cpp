// The list, the current CV with its bits, the searches, and what is typed.
#include "shell/window_bench.h"

#include <QCheckBox>

namespace karvo::test
{

struct ListBench : WindowBench {
    ListBench()
    {
        showOfflineList();
        chooseCv(2);
    }
    std::string ticked()
    {
        std::string weights;
        for (const auto& weight : wordsOf("128 64 32 16 8 4 2 1"))
            weights += find<QCheckBox>("Check" + weight).isChecked() ? weight + " " : "";
        return weights + "= " + text("Errechneter_Wert");
    }
    // A box's words, and in brackets why it is disabled.
    std::string bit(const char* name)
    {
        const auto& box = find<QCheckBox>(name);
        return box.text().replace(QChar(0x2007), u' ').trimmed().toStdString() +
               (box.isEnabled() ? "" : " (" + box.toolTip().toStdString() + ")");
    }
    std::string shown()
    {
        return field("CV_Nummer") + "|" + field("CV_Wert") + "|" + field("CV_Fabrik") + "|" +
               texts("Grenzwert Bezeichnung Zusatz_Text var_Text Text1 Experte");
    }
    // Types into what the window asks for; `told` comes then.
    void search(const std::string& item, const char* typed, const char* told = nullptr)
    {
        const char* const title = item == "mnu_index" ? "Suchen nach CV Index" : "Suchen nach Stichwort";
        driver.expectInput(QString::fromLatin1(title), QString::fromLatin1(typed));
        if (told != nullptr)
            expectBoxWith(told);
        choose(item);
    }
};

TEST(HauptformList, AsksBeforeAListWithoutADecoder)
{
    WindowBench bench;
    for (const bool yes : {false, true}) {
        bench.expect("without a decoder?", [yes](QWidget& box) {
            dynamic_cast<QMessageBox&>(box).button(yes ? QMessageBox::Yes : QMessageBox::No)->click();
        });
        bench.find<QTimer>("Timer3").start(100000);
        bench.choose("mnu_kv07");
        EXPECT_EQ(bench.list().count(), yes ? 176 : 0);
        EXPECT_EQ(bench.find<QTimer>("Timer3").isActive(), !yes) << "No changes nothing";
    }
    EXPECT_EQ(bench.texts("Version Programm_Kennung"), "V01_22|KV07  Liste ohne Fahrzeug|");
}

TEST(HauptformList, ChoosingALineFillsTheFieldsAndClearingEmptiesThem)
{
    ListBench bench;
    bench.state.set.expert[2].knowledge = u"inside";
    bench.list().setCurrentRow(69); // speed step 1
    EXPECT_EQ(bench.line(), "  1 = 97 von 255  ");
    EXPECT_EQ(bench.shown(), "97|97|0|0 bis 255|deutsch 97|||||");
    bench.chooseCv(2);
    EXPECT_EQ(bench.shown(), "2|20|18|1 bis 200|deutsch two|explains deutsch\r\nsecond line|0 = off|"
                             "only if deutsch|Experte: inside|");
    bench.choose("mnu_clear");
    EXPECT_EQ(bench.list().count(), 0);
    EXPECT_EQ(bench.shown() + bench.ticked(), "|||||||||= 0");
    EXPECT_EQ(bench.texts("DCC1 DCC2 Programm_Kennung"), "||Noch kein Decoder eingelesen|");
    EXPECT_EQ(bench.window->windowTitle().toStdString(), "Karvo Decoder Daten einlesen");
    for (const auto& name : wordsOf("Enter_Taste Einzelne_speichern Alle_speichern Check1"))
        EXPECT_FALSE(bench.isEnabled(name)) << name;
    EXPECT_TRUE(bench.find<QLineEdit>("CV_Wert").isReadOnly());
}

TEST(HauptformList, TicksTheBitsAndTakesThemWithinTheLimits)
{
    const std::string meansNothing = "4  Bit 2 (Dieses Bit hat bei dieser CV keine Bedeutung.";
    ListBench bench;
    bench.state.set.table.at(29, Column::upperLimit) = u"14";
    bench.chooseCv(29);
    EXPECT_EQ(bench.ticked(), "4 2 = 6");
    EXPECT_EQ(bench.bit("Check1"), "1  deutsch one");
    EXPECT_EQ(bench.bit("Check4"), meansNothing + " Es ist gesetzt und zählt im Wert mit.)");
    bench.type("CV_Wert", "9");
    EXPECT_EQ(bench.ticked(), "8 1 = 9") << "they follow what is typed";
    EXPECT_EQ(bench.bit("Check4"), meansNothing + ")");
    bench.key("CV_Wert", Qt::Key_Escape);
    EXPECT_EQ(bench.ticked(), "4 2 = 6");
    bench.click("Check1");
    bench.click("Check2");
    EXPECT_EQ(bench.line(), "CV29 = 5  geändert");
    bench.click("Check8");
    bench.expect("limits");
    bench.click("Check2"); // 15
    EXPECT_EQ(bench.line(), "CV29 = 13  geändert");
    EXPECT_EQ(bench.ticked(), "8 4 1 = 13");
    bench.chooseCv(105);
    EXPECT_TRUE(bench.bit("Check1").starts_with("1  Bit 0 (Diese CV")) << bench.bit("Check1");
}

TEST(HauptformList, SearchesANumberAndAWordAndGoesOnWithF3)
{
    ListBench bench;
    bench.search("mnu_index", " 29 ");
    EXPECT_EQ(bench.line(), "CV29 = 6");
    bench.search("mnu_index", "177", "Diese CV-Nummer steht nicht in der Liste.");
    bench.search("mnu_suchen_generell", "DEUTSCH 10");
    EXPECT_EQ(bench.line(), "CV10 = 10");
    bench.press(Qt::Key_F3);
    EXPECT_EQ(bench.line(), "CV100 = 0");
    bench.search("mnu_suchen_generell", "DEUTSCH 10"); // the same again goes on
    EXPECT_EQ(bench.line(), "CV101 = 1");
    bench.search("mnu_suchen_generell", "eight"); // another one begins at the top
    EXPECT_EQ(bench.line(), "CV29 = 6");
    bench.search("mnu_suchen_generell", "nirgends", "Suche beendet, nichts gefunden");
    EXPECT_EQ(bench.line(), "CV29 = 6") << "what was chosen stays";
}

TEST(HauptformList, TakesAValueByKeysAndByButtonAndGivesItBack)
{
    ListBench bench;
    bench.activate();
    bench.type("CV_Wert", "25");
    EXPECT_EQ(bench.line(), "CV2  = 20") << "typing alone changes nothing";
    bench.key("CV_Wert", Qt::Key_Return);
    EXPECT_EQ(bench.line(), "CV2  = 25  geändert");
    EXPECT_TRUE(bench.hasFocus("List1")) << "on to the next CV";
    bench.key("List1", Qt::Key_F2);
    EXPECT_TRUE(bench.hasFocus("CV_Wert"));
    bench.expectBoxWith("1 bis 200");
    bench.type("CV_Wert", "201");
    bench.click("Enter_Taste");
    EXPECT_EQ(bench.line(), "CV2  = 25  geändert");
    EXPECT_TRUE(bench.hasFocus("CV_Wert")) << "to be mended";
    bench.key("CV_Wert", Qt::Key_Escape);
    EXPECT_EQ(bench.field("CV_Wert"), "25");
    EXPECT_TRUE(bench.hasFocus("List1"));
    bench.key("List1", Qt::Key_1);
    QTest::keyClicks(&bench.find<QLineEdit>("CV_Wert"), QStringLiteral("99"));
    bench.key("CV_Wert", Qt::Key_Return);
    for (int i = 0; i < 3; ++i)
        bench.key("List1", Qt::Key_Plus);
    EXPECT_EQ(bench.line(), "CV2  = 200  geändert") << "no further than its limit, without a message";
    bench.key("List1", Qt::Key_Minus);
    EXPECT_EQ(bench.line(), "CV2  = 199  geändert");

    bench.change(3, 77);
    bench.change(4, 77);
    bench.click("Zuruecknehmen");
    EXPECT_EQ(bench.line(), "CV4  = 4");
    EXPECT_FALSE(bench.isEnabled("Zuruecknehmen"));
    bench.click("Alle_zuruecknehmen");
    EXPECT_FALSE(bench.isEnabled("Alle_zuruecknehmen"));
    EXPECT_EQ(bench.lineOf(2) + bench.lineOf(3), "CV2  = 20CV3  = 3");
}

// Whatever comes next: with a number that is not there nothing happens but one box, and the number can be
// mended.
TEST(HauptformList, NothingActsBeforeATypedNumberIsMended)
{
    std::vector<std::pair<std::string, std::function<void(ListBench&)>>> acts = {
        {"return", [](auto& b) { b.key("CV_Nummer", Qt::Key_Return); }},
        {"value", [](auto& b) { b.type("CV_Wert", "9"); }},
        {"F5", [](auto& b) { b.press(Qt::Key_F5); }},
        {"row", [](auto& b) { b.list().setCurrentRow(7); }},
        {"port", [](auto& b) { b.template find<QComboBox>("COM").setCurrentIndex(8); }},
        {"close", [](auto& b) { b.window->close(); }},
        {"language", [](auto& b) { b.choose("mnu_english"); }},
        {"editor", [](auto& b) { b.choose("mnu_dcc_adresse"); }},
    };
    for (const auto& button : wordsOf("Enter_Taste Check1 Einzelne_speichern Alle_speichern Start"))
        acts.emplace_back(button, [button](auto& b) { b.click(button); });
    for (const auto& [what, act] : acts) {
        ListBench bench;
        bench.chooseCv(29);
        bench.type("CV_Nummer", "200");
        bench.expectBoxWith("CV200");
        act(bench);
        EXPECT_TRUE(QTest::qWaitFor([&] { return bench.driver.isDone(); })) << what;
        QTest::qWait(20); // a second box would be unexpected
        EXPECT_EQ(bench.line() + " " + bench.field("CV_Nummer") + " " + bench.field("CV_Wert"),
                  "CV29 = 6 200 6");
        EXPECT_TRUE(bench.item("mnu_german").isChecked() && bench.state.link.portNumber == 5) << what;
        EXPECT_TRUE(!bench.port.isOpen() && bench.window->isVisible() && bench.hasFocus("CV_Nummer")) << what;
        bench.key("CV_Nummer", Qt::Key_Escape);
        EXPECT_EQ(bench.field("CV_Nummer"), "29") << what;
    }
}

TEST(HauptformList, WhatIsTypedIsTakenBeforeAnythingElse)
{
    ListBench bench;
    bench.activate();
    bench.find<QLineEdit>("CV_Nummer").setFocus();
    bench.type("CV_Nummer", "12");
    bench.key("CV_Nummer", Qt::Key_Tab);
    EXPECT_EQ(bench.line(), "CV12 = 12") << "taken when the field is left";
    EXPECT_TRUE(bench.hasFocus("CV_Wert"));
    bench.type("CV_Wert", "99");
    bench.type("CV_Nummer", "5"); // without leaving the value: it belongs to CV12
    EXPECT_EQ(bench.lineOf(12), "CV12 = 99  geändert");
    bench.type("CV_Wert", "88");
    bench.click("Enter_Taste");
    EXPECT_EQ(bench.line(), "CV5  = 88  geändert");
    bench.type("CV_Wert", "67");
    bench.expectBox(Message::unsavedChangesQuestion, "Abbrechen");
    bench.press(Qt::Key_F5);
    EXPECT_EQ(bench.line(), "CV5  = 67  geändert");
    bench.chooseCv(2);
    bench.type("CV_Wert", "201");
    bench.expect("limits");
    bench.chooseCv(4);
    EXPECT_TRUE(QTest::qWaitFor([&] { return bench.driver.isDone(); }));
    EXPECT_EQ(bench.line() + bench.field("CV_Wert"), "CV2  = 20201") << "to be mended";
    EXPECT_TRUE(bench.hasFocus("CV_Wert"));
    bench.type("CV_Wert", "66");
    bench.chooseCv(3);
    EXPECT_EQ(bench.line() + bench.lineOf(2), "CV3  = 3CV2  = 66  geändert");
}

} // namespace karvo::test
