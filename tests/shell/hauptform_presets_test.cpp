#include "window_bench.h"

#include "editors/presets.h"

namespace karvo::test
{
namespace
{

struct PresetWindowBench : WindowBench {
    PresetWindowBench()
    {
        state.userFolders.speedSteps.own = "fs";
        state.userFolders.distances.own = "abs";
        files.content["fs/FS_Faller.fcr"] = bytesOf("K\r\n97;12;x\r\n70;140;x\r\n");
        files.content["abs/Faller.bcr"] = bytesOf("K\r\n52;110;x;\r\n");
        state.link.identified = true;
    }
};

} // namespace

TEST(HauptformPresets, EachKindOfVehicleHasItsThreeItems)
{
    PresetWindowBench bench;
    bench.showOfflineList();
    for (const Preset& preset : presets()) {
        for (const char* const start : {"mnu_Eg_", "mnu_Sg_", "mnu_FS_"})
            EXPECT_TRUE(bench.item((start + std::string(preset.kind)).c_str()).isEnabled()) << preset.kind;
    }
    bench.item("mnu_Eg_Faller").trigger();
    EXPECT_EQ(bench.state.set.table.value(97), 12);
    EXPECT_EQ(bench.state.set.table.value(52), 110);
    EXPECT_TRUE(bench.window->isWindowModified());
    EXPECT_EQ(bench.text("Status"), "3 CVs der Liste geändert: Faller");
    const auto row = positionOf(bench.state.set.list, 52);
    ASSERT_TRUE(row);
    EXPECT_EQ(bench.list().item(static_cast<int>(*row))->text().toStdString(),
              "CV52 = 52                [110]  geändert");
}

TEST(HauptformPresets, SaySoWithoutAList)
{
    PresetWindowBench bench;
    const auto both = [&](Message first, Message second) {
        return bench.message(first) + QStringLiteral("\r\n\r\n") + bench.message(second);
    };
    bench.driver.expectBox(both(Message::presetNeedsSet, Message::presetNeedsSetAdvice),
                           QStringLiteral("OK"));
    bench.item("mnu_Eg_Faller").trigger();
    bench.driver.expectBox(both(Message::saveNeedsSet, Message::saveNeedsSetAdvice), QStringLiteral("OK"));
    bench.item("mnu_Sg_EigenFz").trigger();
    EXPECT_FALSE(bench.item("mnu_FS_Faller").isEnabled());
    EXPECT_FALSE(bench.item("mnu_fahrstufen").isEnabled());
}

TEST(HauptformPresets, BaseAndTopSpeedAreWritten)
{
    PresetWindowBench bench;
    bench.showOfflineList();
    bench.state.link.identified = false;
    bench.driver.expectBox(bench.message(Message::baseAndTopWritten), QStringLiteral("OK"));
    bench.item("mnu_FS_Faller").trigger();
    const auto& memory = bench.port.simulator().decoder().memory;
    EXPECT_EQ(memory[1], 12);
    EXPECT_EQ(memory[4], 140);
    EXPECT_EQ(bench.state.set.table.value(2), 12);
}

TEST(HauptformPresets, TheEditorOfTheGenerationOpens)
{
    for (const auto& [generation, name] :
         {std::pair{Generation::standard, "Fahrstufen"}, {Generation::f5, "FahrstufenF5"}}) {
        PresetWindowBench bench;
        bench.showOfflineList();
        bench.state.set.profile.generation = generation;
        bench.driver.expect(QString::fromLatin1(name), [name = name](QWidget& dialog) {
            EXPECT_EQ(dialog.objectName().toStdString(), name);
            dialog.close();
        });
        bench.item("mnu_fahrstufen").trigger();
    }
}

} // namespace karvo::test
