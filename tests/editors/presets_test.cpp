#include "editors/presets.h"

#include "editor_bench.h"
#include "support/case_table.h"
#include "support/memory_files.h"
#include "support/test_bench.h"
#include "workbench/offline_list.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using test::bytesOf;

std::string stepFile(const std::string& lines)
{
    return "CV-Nummer;CV-Wert;CV-Text\r\n" + lines;
}

const Preset& preset(std::string_view kind)
{
    const auto all = presets();
    return *std::find_if(all.begin(), all.end(), [&](const Preset& one) { return one.kind == kind; });
}

struct PresetBench : test::TestBench {
    CvTable& table = state.set.table;

    PresetBench()
    {
        test::numberEveryText(state.texts);
        for (const int number : {720, 761, 762, 763, 773, 776})
            test::setText(state.texts, number, u"m" + textFromNumber(number) + u" {1}, {2}");
        for (const int number : {764, 806, 812})
            test::setText(state.texts, number, u"m" + textFromNumber(number) + u" {1}");
        test::setTexts(state.texts, {{301, u" of 168   "}, {772, u"replace {1} and {2}?"}});
        test::setTexts(state.texts, {{807, u"{1} to {2}: {3}"}, {811, u"{1} and {2} before {3} and {4}?"}});
        test::setCaption(state.texts, 161, u"changed");
        state.userFolders.speedSteps = {"fs", "shipped-fs", {}};
        state.userFolders.distances = {"abs", "shipped-abs", {}};
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
    // What has happened since the last call.
    std::string passed()
    {
        const bool endsWithTheList = !journal.empty() && journal.back() == "list changed";
        std::erase(journal, "list changed");
        return test::joined(std::exchange(journal, {})) + (endsWithTheList ? ", list changed" : "");
    }
    // How many CVs a load has changed, "-" for none that succeeded, and what has happened.
    std::string load(std::string_view kind)
    {
        const auto changed = loadPreset(bench, preset(kind));
        return (changed ? std::to_string(*changed) : "-") + ": " + passed();
    }
    std::string save(std::string_view kind)
    {
        const bool isSaved = savePreset(bench, preset(kind));
        return (isSaved ? "saved: " : "not saved: ") + passed();
    }
};

class PresetsTest : public testing::Test, protected PresetBench
{
};

TEST_F(PresetsTest, EachIsShippedAndKnownByBothNamesOfItsDistances)
{
    test::FolderFiles onDisk;
    const auto shipped = std::filesystem::path(KARVO_PROGRAM_FOLDER) / "original";
    for (const Preset& one : presets()) {
        EXPECT_TRUE(onDisk.exists(shipped / "FS_listen" / one.stepFile)) << one.kind;
        EXPECT_TRUE(onDisk.exists(shipped / "ABS_listen" / one.distanceFile)) << one.kind;
        EXPECT_EQ(presetOfDistanceFile(std::filesystem::path("a") / one.distanceFile), &one);
    }
    for (const BasedPreset& one : basedPresets())
        EXPECT_TRUE(onDisk.exists(shipped / "FS_listen" / one.file)) << one.file;
    EXPECT_EQ(presetOfDistanceFile("ci46_12.BCR"), &preset("CI46_1"));
    EXPECT_EQ(presetOfDistanceFile("CI_26.bcr"), nullptr);
    EXPECT_EQ(presetOfDistanceFile("CI26_12.fcr"), nullptr);
}

TEST_F(PresetsTest, LoadsBothFilesIntoTheTableAndTheListWithOneMarkEach)
{
    put("shipped-fs/FS_CI26_12.fcr",
        stepFile("97;12;x\r\n96;1;x\r\n70;140;x\r\n50;7;x\r\n5;99;x\r\n120;88;x\r\n"));
    put("abs/CI_26_12.bcr", "K\r\n48;20;x;\r\n52;110;x;\r\n53;1;x;\r\n54;41;x\r\n");
    EXPECT_EQ(load("CI26_1"),
              "6: message m806 shipped-fs/FS_CI26_12.fcr\r\n3 to 168: 2 = 1\r\nm808, list changed");
    std::string values;
    for (const int cv : {97, 96, 70, 50, 5, 12, 48, 52, 53, 54})
        values += utf8FromText(table.at(cv, Column::value)) + " ";
    EXPECT_EQ(values, "12 1 140 7 1 1 20 110 1 41 ");
    EXPECT_EQ(lineOf(97), "  1 = 1 of 168            [12]  changed !");
    EXPECT_EQ(lineOf(96), "  2 = 1 of 168   ");
    EXPECT_EQ(lineOf(52), "CV52 = 1                 [110]  changed !");
    EXPECT_TRUE(state.set.unsavedChanges);

    table.at(97, Column::lowerLimit) = u"10"; // the list's limits where they are narrower
    state.set.profile.generation = Generation::f5;
    put("fs/FS_CI46_24.fcr", stepFile("97;7;x\r\n96;9;x\r\n96;8;x\r\n95;0;x\r\n70;255;x\r\n"));
    put("abs/CI_46_24.bcr", "K\r\n48;20;x;\r\n");
    EXPECT_EQ(load("CI46_2"), "4: message m806 fs/FS_CI46_24.fcr\r\n3 to 120: 3 = 0, 28 = 255\r\n10 to 120: "
                              "1 = 7\r\nm808, list changed");
    EXPECT_EQ(lineOf(96), "  2 = 1 of 168            [8]  changed !") << "the last one counts";
    EXPECT_TRUE(load("CI46_2").starts_with("0: ")) << "nothing is another value now";
    EXPECT_EQ(lineOf(97), "  1 = 7 of 168     changed !") << "nothing was brought";
}

TEST(PresetFaultsTest, AFaultEndsTheLoadAndKeepsWhatWasMerged)
{
    std::string tooLong;
    for (int i = 0; i < 29; ++i)
        tooLong += "97;" + std::to_string(i) + ";x\r\n";
    for (const auto& [steps, distances, outcome] : test::casesOf<3>("editors/preset_faults.txt")) {
        PresetBench fresh;
        fresh.put("fs/FS_Faller.fcr", stepFile(steps == "29 lines" ? tooLong : steps));
        fresh.put("abs/Faller.bcr", "K\r\n" + distances + "\r\n");
        EXPECT_EQ(fresh.load("Faller"), outcome) << steps;
        EXPECT_TRUE(fresh.table.value(48) == 1 && fresh.table.value(52) == 1);
    }
}

TEST_F(PresetsTest, NeedsAListWithSpeedSteps)
{
    put("fs/FS_Faller.fcr", stepFile("97;12;x\r\n70;140;x\r\n"));
    for (int cv = 70; cv <= 97; ++cv)
        table.at(cv, Column::factoryValue).clear();
    EXPECT_EQ(save("Faller"), "not saved: message m776 KV07, CV70-97");
    EXPECT_TRUE(planOfBaseAndTop(bench, preset("Faller"))) << "CV2 and CV5 are all that it needs";
    state.set = CvSet();
    const std::string noList = "message m24\r\n\r\nm25";
    EXPECT_EQ(load("Faller"), "-: " + noList);
    EXPECT_FALSE(loadOwnPreset(bench, u"t") || planOfBaseAndTop(bench, preset("Faller")));
    EXPECT_EQ(passed(), noList + ", " + noList);
    EXPECT_EQ(save("Faller"), "not saved: message m79\r\n\r\nm78");
    EXPECT_FALSE(saveOwnPreset(bench, u"t"));
    EXPECT_EQ(passed(), "message m79\r\n\r\nm78");
}

TEST_F(PresetsTest, SavesTheDistancesThenTheStepsAndAsksBeforeItReplaces)
{
    for (const auto& [cv, value] : {std::pair{97, 6}, {70, 150}, {48, 20}})
        table.setValue(cv, value);
    table.at(96, Column::text) = u"a;b\r\nc";
    EXPECT_EQ(save("CI46_2"), "saved: message m190 fs/FS_CI46_24.fcr");
    const auto distances = saved("abs/CI_46_24.bcr");
    EXPECT_TRUE(distances.starts_with("CV-Nummer;CV-Wert;CV-Text\r\n48;20;Bremswert ")) << distances;
    EXPECT_TRUE(distances.ends_with("oberhalb von CV 52 liegt\r\n")) << "no trailer";
    const auto steps = saved("fs/FS_CI46_24.fcr");
    EXPECT_TRUE(steps.starts_with("CV-Nummer;CV-Wert;CV-Text\r\n97;6;Wort 97\r\n96;1;a,b c\r\n95;")) << steps;
    EXPECT_TRUE(steps.ends_with("70;150;Wort 70\r\n")) << steps;
    table.setValue(97, 7);
    const std::string question = "not saved: question replace fs/FS_CI46_24.fcr and abs/CI_46_24.bcr?";
    prompts.answer(false);
    EXPECT_EQ(save("CI46_2"), question);
    EXPECT_EQ(saved("fs/FS_CI46_24.fcr"), steps);
    files.saveFailure = u"full";
    prompts.answer(true);
    EXPECT_EQ(save("CI46_2"), question + ", message m720 abs/CI_46_24.bcr, full");
}

TEST_F(PresetsTest, TheShippedTablesStayBehindTheUsersOwn)
{
    put("shipped-fs/FS_Faller.fcr", stepFile("97;13;x\r\n"));
    put("shipped-abs/Faller.bcr", "K\r\n48;20;x;\r\n");
    table.setValue(97, 55);
    for (const bool yes : {false, true}) {
        prompts.answer(yes);
        EXPECT_EQ(save("Faller"), std::string(yes ? "" : "not ") +
                                      "saved: question fs/FS_Faller.fcr and abs/Faller.bcr before "
                                      "shipped-fs/FS_Faller.fcr and shipped-abs/Faller.bcr?" +
                                      (yes ? ", message m190 fs/FS_Faller.fcr" : ""));
        EXPECT_EQ(files.exists("fs/FS_Faller.fcr"), yes);
    }
    EXPECT_EQ(saved("shipped-fs/FS_Faller.fcr"), stepFile("97;13;x\r\n"));
    table.setValue(97, 60);
    load("Faller");
    EXPECT_EQ(table.value(97), 55);
    files.content.erase("fs/FS_Faller.fcr");
    load("Faller");
    EXPECT_EQ(table.value(97), 13) << "back when one's own is taken away";
}

TEST_F(PresetsTest, LoadsAndSavesTwoFilesThatArePicked)
{
    put("fs/mine.fcr", stepFile("97;12;x\r\n"));
    put("abs/mine.bcr", "K\r\n48;20;x;\r\n");
    choose("fs/mine.fcr", std::nullopt);
    EXPECT_FALSE(loadOwnPreset(bench, u"t"));
    EXPECT_EQ(table.value(97), 1) << "cancelled is nothing loaded";
    EXPECT_EQ(passed(), "open *.fcr in fs: , open *.bcr in abs: ");
    choose("fs/mine.fcr", "abs/mine.bcr");
    const auto loaded = loadOwnPreset(bench, u"t");
    EXPECT_EQ(loaded ? loaded->changed : 0, 2);
    EXPECT_EQ(files.folders, (std::set<std::filesystem::path>{"abs", "fs"})) << "made for the dialog";
    journal.clear();
    choose("fs/new.fcr", "abs/new.bcr");
    EXPECT_TRUE(saveOwnPreset(bench, u"t"));
    EXPECT_EQ(passed(), "save *.fcr in fs: , save *.bcr in abs: , message m190 fs/new.fcr");
    EXPECT_TRUE(saved("abs/new.bcr").starts_with("CV-Nummer;CV-Wert;CV-Text\r\n48;20;"));
    choose("fs/other.fcr", std::nullopt);
    EXPECT_FALSE(saveOwnPreset(bench, u"t"));
    choose("fs/other.fcr", "Shipped-abs/../shipped-abs/other.bcr");
    EXPECT_FALSE(saveOwnPreset(bench, u"t"));
    EXPECT_EQ(journal.back(), "message m812 Shipped-abs/../shipped-abs/other.bcr");
    EXPECT_FALSE(files.exists("fs/other.fcr")) << "both or none";
}

TEST_F(PresetsTest, BaseAndTopSpeedOfAPreset)
{
    put("shipped-fs/FS_Faller.fcr", stepFile("97;6;x\r\n96;9;x\r\n70;110;x\r\n"));
    EXPECT_EQ(test::planText(planOfBaseAndTop(bench, preset("Faller")).value_or(WritePlan())), "2=6 5=110 ");
    put("fs/FS_Faller.fcr", stepFile("97;6;x\r\n"));
    EXPECT_FALSE(planOfBaseAndTop(bench, preset("Faller")));
    EXPECT_EQ(passed(), "message m764 fs/FS_Faller.fcr");
    EXPECT_FALSE(planOfBaseAndTop(bench, preset("CI46_2")));
    EXPECT_TRUE(passed().starts_with("message m1 fs/FS_CI46_24.fcr"));
    put("fs/FS_Faller_CV2_CV5.fcr", stepFile("2;6;x\r\n97;1;x\r\n"));
    EXPECT_FALSE(readBasedPreset(bench, basedPresets()[0]));
    EXPECT_EQ(passed(), "message m773 fs/FS_Faller_CV2_CV5.fcr, 3");
}

} // namespace
} // namespace karvo
