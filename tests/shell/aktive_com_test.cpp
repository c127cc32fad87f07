#include "link/forms/aktive_com.h"

#include "shell/controls.h"
#include "support/link_bench.h"

#include <gtest/gtest.h>

namespace karvo::test
{

struct SearchBench {
    Journal journal;
    ScriptedLine line{journal};
    MemorySettings settings;
    LinkState state;
    LanguageTables texts;
    std::vector<PortDevice> devices = std::vector<PortDevice>(31);
    std::vector<NewPortDevice> fresh;
    Aktive_COM dialog{state, line, settings, texts, [this] { return devices; }, [this] { return fresh; }};

    explicit SearchBench(const std::vector<int>& present)
    {
        numberEveryText(texts);
        setCaption(texts, 45, u"device {1}: {2}");
        setCaption(texts, 138, u"new: {1}");
        state.portNumber = 7;
        devices[4] = {QStringLiteral("/dev/ttyUSB0"), QStringLiteral("USB Serial")};
        devices[6] = {QStringLiteral("COM7"), QString()};
        line.stayPresent(present);
    }
    QListWidget& list() { return find<QListWidget>(dialog, "Ports"); }
    // The names, each with its tool tip.
    std::string found()
    {
        std::string names;
        for (int row = 0; row < list().count(); ++row)
            names += (list().item(row)->text() + u'|' + list().item(row)->toolTip() + u';').toStdString();
        return names;
    }
    void search()
    {
        dialog.show();
        ASSERT_TRUE(QTest::qWaitFor([this] { return labelOf(dialog, "Heading") == "c132"; }));
    }
    void take(int row)
    {
        list().setCurrentRow(row);
        click(dialog, "OK");
    }
};

TEST(AktiveCom, OffersThePortsThatAreThereAndTakesTheChosenOne)
{
    for (const bool taken : {true, false}) {
        SearchBench bench({3, 5, 7});
        bench.search();
        EXPECT_EQ(bench.dialog.objectName().toStdString(), "Aktive_COM");
        EXPECT_EQ(bench.found(), "COM3|;COM5|device /dev/ttyUSB0: USB Serial;COM7|;") << "not the name again";
        EXPECT_EQ(bench.list().currentRow(), 2) << "the port in use is chosen at first";
        bench.list().setCurrentRow(1);
        click(bench.dialog, taken ? "OK" : "Cancel");
        EXPECT_EQ(bench.dialog.result(), taken ? QDialog::Accepted : QDialog::Rejected);
        EXPECT_EQ(bench.state.portNumber, taken ? 5 : 7);
        EXPECT_EQ(bench.line.portNumber(), taken ? 5 : 7);
        EXPECT_EQ(bench.settings.values.count("Parameter/Com_Port"), taken ? 1U : 0U);
        EXPECT_FALSE(bench.line.isOpen());
    }
}

TEST(AktiveCom, OkGivesANumberToADeviceThatHasNone)
{
    SearchBench bench({3});
    bench.fresh = {{31, {QStringLiteral("COM40"), QStringLiteral("USB Serial")}}};
    bench.search();
    EXPECT_EQ(bench.found(), "COM3|;COM31|new: device COM40: USB Serial;");
    bench.take(1);
    EXPECT_EQ(bench.settings.values["Ports/COM31"], Text(u"COM40"));
    EXPECT_EQ(bench.settings.values["Parameter/Com_Port"], Text(u"31"));
    EXPECT_EQ(bench.state.portNumber, 31);
}

TEST(AktiveCom, SaysSoWhenThereIsNoneAndSearchesAgain)
{
    SearchBench bench({99});
    bench.search();
    EXPECT_EQ(bench.found(), "");
    EXPECT_EQ(bench.list().accessibleDescription().toStdString(), "c133");
    EXPECT_FALSE(find(bench.dialog, "OK").isEnabled());
    bench.line.stayPresent({9});
    click(bench.dialog, "SearchAgain");
    EXPECT_EQ(labelOf(bench.dialog, "Heading"), "c131");
    EXPECT_FALSE(find(bench.dialog, "SearchAgain").isEnabled());
    EXPECT_TRUE(QTest::qWaitFor([&] { return bench.found() == "COM9|;"; }));
}

} // namespace karvo::test
