#include "editors/presets.h"

#include "editor_bench.h"
#include "support/case_table.h"
#include "support/folder_files.h"
#include "support/test_bench.h"
#include "workbench/offline_list.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using test::bytesOf;
using test::Journal;

std::string stepFile(const std::string& lines)
{
    return "CV-Nummer;CV-Wert;CV-Text\r\n" + lines;
}

struct PresetBench : test::TestBench {
    explicit PresetBench(bool withList = true)
    {
        test::numberEveryText(state.texts);
        for (const int number : {720, 761, 762, 763, 773, 776})
            test::setText(state.texts, number, u"m" + textFromNumber(number) + u" {1}, {2}");
        for (const int number : {764, 806, 812})
            test::setText(state.texts, number, u"m" + textFromNumber(number) + u" {1}");
        test::setTexts(state.texts, {{301, u" of 168   "},
                                     {772, u"replace {1} and {2}?"},
                                     {807, u"{1} to {2}: {3}"},
                                     {811, u"{1} and {2} before {3} and {4}?"}});
        test::setCaption(state.texts, 161, u"changed");
        state.userFolders.speedSteps = {"fs", "shipped-fs", {}};
        state.userFolders.distances = {"abs", "shipped-abs", {}};
        if (!withList)
            return;
        addFile("CV_Standart_kv07.txt", test::smallDescription("Standard KV07", "Wort "));
        EXPECT_TRUE(showOfflineList(bench, "mnu_kv07"));
        journal.clear();
    }
    void put(const char* path, const std::string& content) { files.content[path] = bytesOf(content); }
    void choose(const char* steps, std::optional<std::filesystem::path> distances)
    {
        prompts.chooseFile(steps);
        prompts.chooseFile(std::move(distances));
    }
    std::string lineOf(int cv) const
    {
        const ListLine& shown = state.set.list[*positionOf(state.set.list, cv)];
        return utf8FromText(shown.text) + (shown.changed ? " !" : "");
    }
    std::string saved(const char* path)
    {
        const Bytes& content = files.content[path];
        return {content.begin(), content.end()};
    }
    // Since the last call.
    std::vector<std::string> messages()
    {
        std::vector<std::string> told;
        for (const std::string& entry : std::exchange(journal, {})) {
            if (entry.starts_with("message "))
                told.push_back(entry.substr(8));
        }
        return told;
    }
};

using Told = std::vector<std::string>;

const Preset& preset(std::string_view kind)
{
    const auto all = presets();
    return *std::find_if(all.begin(), all.end(), [&](const Preset& one) { return one.kind == kind; });
}

TEST(PresetsTest, EachIsShippedAndKnownByBothNamesOfItsDistances)
{
    test::FolderFiles files;
    const auto shipped = std::filesystem::path(KARVO_PROGRAM_FOLDER) / "original";
    for (const Preset& one : presets()) {
        EXPECT_TRUE(files.exists(shipped / "FS_listen" / one.stepFile)) << one.kind;
        EXPECT_TRUE(files.exists(shipped / "ABS_listen" / one.distanceFile)) << one.kind;
        EXPECT_EQ(presetOfDistanceFile(std::filesystem::path("a") / one.distanceFile), &one);
    }
    for (const BasedPreset& one : basedPresets())
        EXPECT_TRUE(files.exists(shipped / "FS_listen" / one.file)) << one.file;
    EXPECT_EQ(presetOfDistanceFile("ci46_12.BCR"), &preset("CI46_1"));
    EXPECT_EQ(presetOfDistanceFile("CI_26.bcr"), nullptr);
    EXPECT_EQ(presetOfDistanceFile("CI26_12.fcr"), nullptr);
}

TEST(PresetsTest, LoadsBothFilesIntoTheTableAndTheListWithOneMarkEach)
{
    PresetBench bench;
    CvSet& set = bench.state.set;
    bench.put("shipped-fs/FS_CI26_12.fcr",
              stepFile("97;12;x\r\n96;1;x\r\n70;140;x\r\n50;7;x\r\n5;99;x\r\n120;88;x\r\n"));
    bench.put("abs/CI_26_12.bcr", "K\r\n48;20;x;\r\n52;110;x;\r\n53;1;x;\r\n54;41;x\r\n");
    EXPECT_EQ(loadPreset(bench.bench, preset("CI26_1")), 6);
    std::string values;
    for (const int cv : {97, 96, 70, 50, 5, 12, 48, 52, 53, 54})
        values += utf8FromText(set.table.at(cv, Column::value)) + " ";
    EXPECT_EQ(values, "12 1 140 7 1 1 20 110 1 41 ");
    const std::vector<std::string> lines = {bench.lineOf(97), bench.lineOf(96), bench.lineOf(52)};
    EXPECT_EQ(lines, (Told{"  1 = 1 of 168            [12]  changed !", "  2 = 1 of 168   ",
                           "CV52 = 1                 [110]  changed !"}));
    EXPECT_TRUE(set.unsavedChanges);
    EXPECT_EQ(bench.journal.back(), "list changed");
    EXPECT_EQ(bench.messages(), Told{"m806 shipped-fs/FS_CI26_12.fcr\r\n3 to 168: 2 = 1\r\nm808"});

    set.table.at(97, Column::lowerLimit) = u"10"; // the list's limits where they are narrower
    set.profile.generation = Generation::f5;
    bench.put("fs/FS_CI46_24.fcr", stepFile("97;7;x\r\n96;9;x\r\n96;8;x\r\n95;0;x\r\n70;255;x\r\n"));
    bench.put("abs/CI_46_24.bcr", "K\r\n48;20;x;\r\n");
    EXPECT_EQ(loadPreset(bench.bench, preset("CI46_2")), 4);
    EXPECT_EQ(bench.lineOf(96), "  2 = 1 of 168            [8]  changed !") << "the last one counts";
    EXPECT_EQ(bench.messages(),
              Told{"m806 fs/FS_CI46_24.fcr\r\n3 to 120: 3 = 0, 28 = 255\r\n10 to 120: 1 = 7\r\nm808"});
    EXPECT_EQ(loadPreset(bench.bench, preset("CI46_2")), 0) << "nothing is another value now";
    EXPECT_EQ(bench.lineOf(97), "  1 = 7 of 168     changed !") << "nothing was brought";
}

TEST(PresetsTest, AFaultEndsTheLoadAndKeepsWhatWasMerged)
{
    std::string tooLong;
    for (int i = 0; i < 29; ++i)
        tooLong += "97;" + std::to_string(i) + ";x\r\n";
    for (const auto& [steps, distances, changed, told] : test::casesOf<4>("editors/preset_faults.txt")) {
        PresetBench bench;
        bench.put("fs/FS_Faller.fcr", stepFile(steps == "29 lines" ? tooLong : steps));
        bench.put("abs/Faller.bcr", "K\r\n" + distances + "\r\n");
        const auto loaded = loadPreset(bench.bench, preset("Faller"));
        EXPECT_EQ(loaded ? std::to_string(*loaded) : "-", changed) << steps;
        std::string messages;
        for (const auto& message : bench.messages())
            messages += message + "; ";
        EXPECT_EQ(messages, told);
        EXPECT_EQ(bench.state.set.table.value(48), 1);
        EXPECT_EQ(bench.state.set.table.value(52), 1);
    }
}

TEST(PresetsTest, NeedsAListWithSpeedSteps)
{
    PresetBench bench(false);
    EXPECT_FALSE(loadPreset(bench.bench, preset("Faller")) || loadOwnPreset(bench.bench, u"t") ||
                 planOfBaseAndTop(bench.bench, preset("Faller")));
    EXPECT_EQ(bench.messages(), Told(3, "m24\r\n\r\nm25"));
    EXPECT_FALSE(savePreset(bench.bench, preset("Faller")) || saveOwnPreset(bench.bench, u"t"));
    EXPECT_EQ(bench.messages(), Told(2, "m79\r\n\r\nm78"));
    PresetBench v1;
    v1.put("fs/FS_Faller.fcr", stepFile("97;12;x\r\n70;140;x\r\n"));
    for (int cv = 70; cv <= 97; ++cv)
        v1.state.set.table.at(cv, Column::factoryValue).clear();
    EXPECT_FALSE(savePreset(v1.bench, preset("Faller")));
    EXPECT_EQ(v1.messages(), Told{"m776 KV07, CV70-97"});
    EXPECT_TRUE(planOfBaseAndTop(v1.bench, preset("Faller"))) << "CV2 and CV5 are all that it needs";
}

TEST(PresetsTest, SavesTheDistancesThenTheStepsAndAsksBeforeItReplaces)
{
    PresetBench bench;
    for (const auto& [cv, value] : {std::pair{97, 6}, {70, 150}, {48, 20}})
        bench.state.set.table.setValue(cv, value);
    bench.state.set.table.at(96, Column::text) = u"a;b\r\nc";
    EXPECT_TRUE(savePreset(bench.bench, preset("CI46_2")));
    EXPECT_EQ(bench.journal, (Journal{"message m190 fs/FS_CI46_24.fcr"}));
    const auto distances = bench.saved("abs/CI_46_24.bcr");
    EXPECT_TRUE(distances.starts_with("CV-Nummer;CV-Wert;CV-Text\r\n48;20;Bremswert ")) << distances;
    EXPECT_TRUE(distances.ends_with("oberhalb von CV 52 liegt\r\n")) << "no trailer";
    const auto steps = bench.saved("fs/FS_CI46_24.fcr");
    EXPECT_TRUE(steps.starts_with("CV-Nummer;CV-Wert;CV-Text\r\n97;6;Wort 97\r\n96;1;a,b c\r\n95;")) << steps;
    EXPECT_TRUE(steps.ends_with("70;150;Wort 70\r\n")) << steps;
    bench.state.set.table.setValue(97, 7);
    bench.prompts.answer(false);
    EXPECT_FALSE(savePreset(bench.bench, preset("CI46_2")));
    EXPECT_EQ(bench.journal.back(), "question replace fs/FS_CI46_24.fcr and abs/CI_46_24.bcr?");
    EXPECT_EQ(bench.saved("fs/FS_CI46_24.fcr"), steps);
    bench.files.saveFailure = u"full";
    bench.prompts.answer(true);
    EXPECT_FALSE(savePreset(bench.bench, preset("CI46_2")));
    EXPECT_EQ(bench.journal.back(), "message m720 abs/CI_46_24.bcr, full");
}

TEST(PresetsTest, TheShippedTablesStayBehindTheUsersOwn)
{
    PresetBench bench;
    const auto load = [&] {
        loadPreset(bench.bench, preset("Faller"));
        return bench.state.set.table.value(97);
    };
    bench.put("shipped-fs/FS_Faller.fcr", stepFile("97;13;x\r\n"));
    bench.put("shipped-abs/Faller.bcr", "K\r\n48;20;x;\r\n");
    bench.state.set.table.setValue(97, 55);
    for (const bool yes : {false, true}) {
        bench.prompts.answer(yes);
        EXPECT_EQ(savePreset(bench.bench, preset("Faller")), yes);
        EXPECT_EQ(std::exchange(bench.journal, {}).front(),
                  "question fs/FS_Faller.fcr and abs/Faller.bcr before shipped-fs/FS_Faller.fcr and "
                  "shipped-abs/Faller.bcr?");
        EXPECT_EQ(bench.files.exists("fs/FS_Faller.fcr"), yes);
    }
    EXPECT_EQ(bench.saved("shipped-fs/FS_Faller.fcr"), stepFile("97;13;x\r\n"));
    bench.state.set.table.setValue(97, 60);
    EXPECT_EQ(load(), 55);
    bench.files.content.erase("fs/FS_Faller.fcr");
    EXPECT_EQ(load(), 13) << "back when one's own is taken away";
}

TEST(PresetsTest, LoadsAndSavesTwoFilesThatArePicked)
{
    PresetBench bench;
    bench.put("fs/mine.fcr", stepFile("97;12;x\r\n"));
    bench.put("abs/mine.bcr", "K\r\n48;20;x;\r\n");
    bench.choose("fs/mine.fcr", std::nullopt);
    EXPECT_FALSE(loadOwnPreset(bench.bench, u"t"));
    EXPECT_EQ(bench.state.set.table.value(97), 1) << "cancelled is nothing loaded";
    EXPECT_EQ(std::exchange(bench.journal, {}), (Journal{"open *.fcr in fs: ", "open *.bcr in abs: "}));
    bench.choose("fs/mine.fcr", "abs/mine.bcr");
    const auto loaded = loadOwnPreset(bench.bench, u"t");
    EXPECT_EQ(loaded ? loaded->changed : 0, 2);
    EXPECT_EQ(bench.files.folders, (std::set<std::filesystem::path>{"abs", "fs"})) << "made for the dialog";
    bench.journal.clear();
    bench.choose("fs/new.fcr", "abs/new.bcr");
    EXPECT_TRUE(saveOwnPreset(bench.bench, u"t"));
    EXPECT_EQ(bench.journal,
              (Journal{"save *.fcr in fs: ", "save *.bcr in abs: ", "message m190 fs/new.fcr"}));
    EXPECT_TRUE(bench.saved("abs/new.bcr").starts_with("CV-Nummer;CV-Wert;CV-Text\r\n48;20;"));
    bench.choose("fs/other.fcr", std::nullopt);
    EXPECT_FALSE(saveOwnPreset(bench.bench, u"t"));
    bench.choose("fs/other.fcr", "Shipped-abs/../shipped-abs/other.bcr");
    EXPECT_FALSE(saveOwnPreset(bench.bench, u"t"));
    EXPECT_EQ(bench.journal.back(), "message m812 Shipped-abs/../shipped-abs/other.bcr");
    EXPECT_FALSE(bench.files.exists("fs/other.fcr")) << "both or none";
}

TEST(PresetsTest, BaseAndTopSpeedOfAPreset)
{
    PresetBench bench;
    bench.put("shipped-fs/FS_Faller.fcr", stepFile("97;6;x\r\n96;9;x\r\n70;110;x\r\n"));
    EXPECT_EQ(test::planText(planOfBaseAndTop(bench.bench, preset("Faller")).value_or(WritePlan())),
              "2=6 5=110 ");
    bench.put("fs/FS_Faller.fcr", stepFile("97;6;x\r\n"));
    EXPECT_FALSE(planOfBaseAndTop(bench.bench, preset("Faller")));
    EXPECT_EQ(bench.messages(), Told{"m764 fs/FS_Faller.fcr"});
    EXPECT_FALSE(planOfBaseAndTop(bench.bench, preset("CI46_2")));
    EXPECT_TRUE(bench.messages()[0].starts_with("m1 fs/FS_CI46_24.fcr"));
    bench.put("fs/FS_Faller_CV2_CV5.fcr", stepFile("2;6;x\r\n97;1;x\r\n"));
    EXPECT_FALSE(readBasedPreset(bench.bench, basedPresets()[0]));
    EXPECT_EQ(bench.messages(), Told{"m773 fs/FS_Faller_CV2_CV5.fcr, 3"});
}

} // namespace
} // namespace karvo
