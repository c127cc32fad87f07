#include "editors/presets.h"

#include "shell/window_bench.h"

namespace karvo::test
{

struct PresetWindowBench : WindowBench {
    PresetWindowBench()
    {
        state.userFolders.speedSteps.own = "fs";
        state.userFolders.distances.own = "abs";
        files.content["fs/FS_Faller.fcr"] = bytesOf("K\r\n97;12;x\r\n70;140;x\r\n");
        files.content["abs/Faller.bcr"] = bytesOf("K\r\n52;110;x;\r\n");
    }
};

TEST(HauptformPresets, EachKindOfVehicleHasItsThreeItems)
{
    PresetWindowBench bench;
    const auto expectBoth = [&](Message first, Message second) {
        bench.expectBoxWith(
            (bench.message(first) + QStringLiteral("\r\n\r\n") + bench.message(second)).toStdString());
    };
    expectBoth(Message::presetNeedsSet, Message::presetNeedsSetAdvice);
    bench.choose("mnu_Eg_Faller");
    expectBoth(Message::saveNeedsSet, Message::saveNeedsSetAdvice);
    bench.choose("mnu_Sg_EigenFz");
    bench.showOfflineList();
    for (const Preset& preset : presets()) {
        for (const char* const start : {"mnu_Eg_", "mnu_Sg_", "mnu_FS_"})
            EXPECT_TRUE(bench.item(start + std::string(preset.kind)).isEnabled()) << preset.kind;
    }
    bench.choose("mnu_Eg_Faller");
    EXPECT_EQ(bench.state.set.table.value(97), 12);
    EXPECT_TRUE(bench.window->isWindowModified());
    EXPECT_EQ(bench.text("Status"), "3 CVs der Liste geändert: Faller");
    EXPECT_EQ(bench.lineOf(52), "CV52 = 52                [110]  geändert");
}

TEST(HauptformPresets, BaseAndTopSpeedAreWritten)
{
    PresetWindowBench bench;
    bench.showOfflineList();
    bench.state.link.identified = false;
    bench.expectBox(Message::baseAndTopWritten);
    bench.choose("mnu_FS_Faller");
    EXPECT_EQ(bench.held(2), 12);
    EXPECT_EQ(bench.held(5), 140);
    EXPECT_EQ(bench.state.set.table.value(2), 12);
}

TEST(HauptformPresets, TheEditorOfTheGenerationOpens)
{
    WindowBench bench;
    bench.showOfflineList();
    for (const auto& [generation, name] :
         {std::pair{Generation::standard, "Fahrstufen"}, {Generation::f5, "FahrstufenF5"}}) {
        bench.state.set.profile.generation = generation;
        bench.expect(name, [name = name](QWidget& dialog) {
            EXPECT_EQ(dialog.objectName().toStdString(), name);
            dialog.close();
        });
        bench.choose("mnu_fahrstufen");
    }
}

} // namespace karvo::test
