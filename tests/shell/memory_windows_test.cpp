// The windows that show a memory byte by byte.
#include "firmware/forms/eeprom.h"
#include "firmware/memory_image_file.h"

#include "shell/window_bench.h"
#include "workbench/offline_list.h"

#include <QTableView>
#include <QTableWidget>

namespace karvo::test
{

std::string cellOf(QWidget& window, int row, int column)
{
    const auto& model = *find<QTableView>(window, "Speicherinhalt").model();
    return model.index(row, column).data().toString().toStdString();
}

TEST(Speicher, ShowsWhatWasReadAndItsSpeedStepsAndOpensAfterARead)
{
    WindowBench bench;
    EXPECT_FALSE(bench.item("mnu_RAM").isEnabled());
    EXPECT_EQ(bench.item("mnu_RAM").statusTip(), bench.message(Message::memoryNotRead));
    bench.click("Start");
    bench.change(17, 5);
    const int held = bench.held(17);
    bench.expect("Speicher", [&](QWidget& window) {
        EXPECT_EQ(cellOf(window, 1, 0), std::to_string(held) + "*"); // the list has another
        click(window, "Hexadezimal");
        EXPECT_EQ(cellOf(window, 0, 7), "0D");
        trigger(window, "Nichts");
        EXPECT_EQ(cellOf(window, 1, 0).size(), 2U);
        bench.expect("Fahrstufen", [&](QWidget& steps) {
            EXPECT_FALSE(find(steps, "Uebernehmen").isEnabled());
            EXPECT_EQ(fieldOf(steps, "Text1_27"), std::to_string(bench.held(70)));
            steps.close();
        });
        click(window, "Fahrstufen_zeigen");
        window.close();
    });
    bench.choose("mnu_RAM");
    EXPECT_EQ(bench.state.speedStepViews, 0);
    EXPECT_EQ(bench.settings.get("Window", "Hexadecimal"), Text(u"1"));
}

TEST(EEPROM, ShowsWhatChangesAndTakesItOnceThatIsAgreedTo)
{
    FormBench bench;
    ModalDriver driver;
    ASSERT_TRUE(showOfflineList(bench.bench, "mnu_kv07"));
    MemoryImage image;
    image.set(addressOfCv(1), 1);
    image.set(addressOfCv(8), 99); // the decoder's own, and another than the list's
    image.set(addressOfCv(48), 90);
    const Bytes content = memoryImageContent(image);
    bench.put("a.hex", {content.begin(), content.end()});
    EEPROM window(bench.bench);
    EXPECT_FALSE(find(window, "Uebernehmen").isEnabled());
    bench.prompts.chooseFile("lists/a.hex");
    click(window, "Oeffnen");
    EXPECT_EQ(cellOf(window, 2, 15), "90*");

    bench.prompts.answer(false);
    click(window, "Uebernehmen");
    for (const char* const button : {"CancelButton", "OKButton"}) {
        EXPECT_EQ(bench.state.set.table.value(48), 1);
        bench.prompts.answer(true);
        driver.expect(QStringLiteral("Abbild_Aenderungen"), [button](QWidget& changes) {
            const auto& table = find<QTableWidget>(changes, "Aenderungen");
            EXPECT_EQ(table.rowCount(), 2); // CV8 stays as it is
            click(changes, button);
        });
        click(window, "Uebernehmen");
    }
    EXPECT_EQ(bench.state.set.table.value(48), 90);
    EXPECT_EQ(bench.state.set.table.value(8), 1);
    EXPECT_TRUE(bench.state.set.unsavedChanges);
    EXPECT_EQ(cellOf(window, 2, 15), "90");
}

} // namespace karvo::test
