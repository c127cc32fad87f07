#include "link/forms/aktive_com.h"

#include "support/memory_files.h"
#include "support/scripted_line.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

namespace karvo
{

namespace
{

LanguageTables searchTexts()
{
    LanguageTables texts;
    texts.captions[45] = u"0045Gerät {1}: {2}";
    texts.captions[130] = u"0130Vorhandene Schnittstellen";
    texts.captions[131] = u"0131Suche läuft";
    texts.captions[132] = u"0132Gefunden:";
    texts.captions[133] = u"0133Keine gefunden";
    texts.captions[134] = u"0134Nehmen";
    texts.captions[135] = u"0135Abbrechen";
    texts.captions[136] = u"0136Noch einmal";
    texts.captions[138] = u"0138neu: {1}";
    return texts;
}

struct SearchBench {
    test::Journal journal;
    test::ScriptedLine line{journal};
    test::MemorySettings settings;
    LinkState state;
    LanguageTables texts = searchTexts();
    std::vector<PortDevice> devices = std::vector<PortDevice>(31);
    std::vector<NewPortDevice> fresh;
    Aktive_COM dialog{state, line, settings, texts, [this] { return devices; }, [this] { return fresh; }};

    SearchBench()
    {
        state.portNumber = 7;
        devices[4] = {QStringLiteral("/dev/ttyUSB0"), QStringLiteral("USB Serial")};
        devices[6] = {QStringLiteral("COM7"), QString()};
    }
    QListWidget& list() { return *dialog.findChild<QListWidget*>(QStringLiteral("Ports")); }
    QPushButton& button(const char* name)
    {
        return *dialog.findChild<QPushButton*>(QString::fromLatin1(name));
    }
    std::string heading()
    {
        return dialog.findChild<QLabel*>(QStringLiteral("Heading"))->text().toStdString();
    }
    std::vector<std::string> found()
    {
        std::vector<std::string> names;
        for (int row = 0; row < list().count(); ++row)
            names.push_back(list().item(row)->text().toStdString());
        return names;
    }
    void search()
    {
        dialog.show();
        ASSERT_TRUE(QTest::qWaitFor([this] { return heading() == "Gefunden:"; }));
    }
};

} // namespace

TEST(AktiveCom, OffersThePortsThatAreThere)
{
    SearchBench bench;
    bench.line.stayPresent({3, 5, 7});
    bench.search();
    EXPECT_EQ(bench.dialog.objectName().toStdString(), "Aktive_COM");
    EXPECT_EQ(bench.found(), (std::vector<std::string>{"COM3", "COM5", "COM7"}));
    EXPECT_EQ(bench.list().item(1)->toolTip().toStdString(), "Gerät /dev/ttyUSB0: USB Serial");
    EXPECT_EQ(bench.list().item(2)->toolTip().toStdString(), "") << "nothing but the name again";
    EXPECT_EQ(bench.list().currentRow(), 2) << "the port in use is chosen at first";
}

TEST(AktiveCom, OkTakesTheChosenPort)
{
    SearchBench bench;
    bench.line.stayPresent({3, 5});
    bench.search();
    bench.list().setCurrentRow(1);
    bench.button("OK").click();
    EXPECT_EQ(bench.dialog.result(), QDialog::Accepted);
    EXPECT_EQ(bench.state.portNumber, 5);
    EXPECT_EQ(bench.line.portNumber(), 5);
    EXPECT_EQ(bench.settings.values["Parameter/Com_Port"], Text(u"5"));
    EXPECT_FALSE(bench.line.isOpen());
}

TEST(AktiveCom, OkGivesANumberToADeviceThatHasNone)
{
    SearchBench bench;
    bench.line.stayPresent({3});
    bench.fresh = {{31, {QStringLiteral("COM40"), QStringLiteral("USB Serial")}}};
    bench.search();
    EXPECT_EQ(bench.found(), (std::vector<std::string>{"COM3", "COM31"}));
    EXPECT_EQ(bench.list().item(1)->toolTip().toStdString(), "neu: Gerät COM40: USB Serial");
    bench.list().setCurrentRow(1);
    bench.button("OK").click();
    EXPECT_EQ(bench.settings.values["Ports/COM31"], Text(u"COM40"));
    EXPECT_EQ(bench.settings.values["Parameter/Com_Port"], Text(u"31"));
    EXPECT_EQ(bench.state.portNumber, 31);
}

TEST(AktiveCom, CancelKeepsThePortAsItWas)
{
    SearchBench bench;
    bench.line.stayPresent({3, 5});
    bench.search();
    bench.button("Cancel").click();
    EXPECT_EQ(bench.state.portNumber, 7);
    EXPECT_EQ(bench.line.portNumber(), 7);
    EXPECT_EQ(bench.settings.values.count("Parameter/Com_Port"), 0U);
}

TEST(AktiveCom, SaysSoWhenThereIsNoneAndSearchesAgain)
{
    SearchBench bench;
    bench.line.stayPresent({99});
    bench.search();
    EXPECT_TRUE(bench.found().empty());
    EXPECT_EQ(bench.list().accessibleDescription().toStdString(), "Keine gefunden");
    EXPECT_FALSE(bench.button("OK").isEnabled());
    bench.line.stayPresent({9});
    bench.button("SearchAgain").click();
    EXPECT_EQ(bench.heading(), "Suche läuft");
    EXPECT_FALSE(bench.button("SearchAgain").isEnabled());
    ASSERT_TRUE(QTest::qWaitFor([&] { return bench.list().count() == 1; }));
    EXPECT_EQ(bench.found(), std::vector<std::string>{"COM9"});
}

} // namespace karvo
