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
