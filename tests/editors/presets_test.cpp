#include "editors/presets.h"

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
        for (const auto& [number, text] : {std::pair{24, u"no CVs"},
                                           {25, u"read first"},
                                           {79, u"nothing yet"},
                                           {78, u"read before"},
                                           {190, u"saved"},
                                           {128, u"refused"},
                                           {127, u"0 to 255"},
                                           {132, u"refused"},
                                           {131, u"96 to 150"},
                                           {720, u"disk: {1}"},
                                           {761, u"{1}: distance line {2}"},
                                           {762, u"{1}: value in line {2}"},
                                           {763, u"{1}: too long from {2}"},
                                           {764, u"unusable {1}"},
                                           {775, u"{1} is not {2}"},
                                           {776, u"{1} lacks {2}"},
                                           {772, u"replace {1} and {2}?"},
                                           {773, u"{1}: not in line {2}"},
                                           {806, u"outside in {1}:"},
                                           {807, u"{1} to {2}: {3}"},
                                           {808, u"think"},
                                           {811, u"{1} and {2} before {3} and {4}?"},
                                           {812, u"not among the shipped: {1}"}})
            test::setText(state.texts, number, text);
        test::setCaption(state.texts, 161, u"changed");
        state.link.identified = true;
        state.userFolders.speedSteps = {"fs", "shipped-fs", {}};
        state.userFolders.distances = {"abs", "shipped-abs", {}};
        if (!withList)
            return;
        addFile("CV_Standart_kv07.txt", test::smallDescription("Standard KV07", "Wort "));
        EXPECT_TRUE(showOfflineList(bench, "mnu_kv07"));
        journal.clear();
    }
    void put(const char* path, const std::string& content) { files.content[path] = bytesOf(content); }
    std::string lineOf(int cv)
    {
        for (const ListLine& shown : state.set.list) {
            if (shown.cv == cv)
                return utf8FromText(shown.text) + (shown.changed ? " !" : "");
        }
        return "none";
    }
    std::string saved(const char* path)
    {
        const Bytes& content = files.content[path];
        return {content.begin(), content.end()};
    }
    std::vector<std::string> messages() const
    {
        std::vector<std::string> told;
        for (const std::string& entry : journal) {
            if (entry.starts_with("message "))
                told.push_back(entry.substr(8));
        }
        return told;
    }
};

const Preset& preset(std::string_view kind)
{
    for (const Preset& one : presets()) {
        if (one.kind == kind)
            return one;
    }
    throw std::runtime_error("no such preset");
}

TEST(PresetsTest, TheFilesOfEachKind)
{
    std::string table;
    for (const Preset& one : presets())
        table += std::string(one.kind) + " " + std::string(one.stepFile) + " " +
                 std::string(one.distanceFile) + "\n";
    EXPECT_EQ(table, "Faller FS_Faller.fcr Faller.bcr\n"
                     "CI26_1 FS_CI26_12.fcr CI_26_12.bcr\n"
                     "CI26_2 FS_CI26_24.fcr CI_26_24.bcr\n"
                     "CI46_1 FS_CI46_12.fcr CI_46_12.bcr\n"
                     "CI46_2 FS_CI46_24.fcr CI_46_24.bcr\n");
    std::string based;
    for (const BasedPreset& one : basedPresets())
        based += std::string(one.file) + " ";
    EXPECT_EQ(based,
              "FS_Faller_CV2_CV5.fcr FS_CI26_12_CV2_CV5.fcr FS_CI26_24_CV2_CV5.fcr FS_CI46_12_CV2_CV5.fcr ");
}

TEST(PresetsTest, KnowsADistanceFileByBothItsNames)
{
    for (const auto& [name, kind] : {std::pair{"a/Faller.bcr", "Faller"},
                                     {"CI26_12.bcr", "CI26_1"},
                                     {"x/CI_26_12.bcr", "CI26_1"},
                                     {"CI26_24.bcr", "CI26_2"},
                                     {"ci46_12.BCR", "CI46_1"},
                                     {"CI46_24.bcr", "CI46_2"},
                                     {"CI_46_24.bcr", "CI46_2"}}) {
        ASSERT_NE(presetOfDistanceFile(name), nullptr) << name;
        EXPECT_EQ(presetOfDistanceFile(name)->kind, kind) << name;
    }
    EXPECT_EQ(presetOfDistanceFile("CI_26.bcr"), nullptr);
    EXPECT_EQ(presetOfDistanceFile("CI26_12.fcr"), nullptr);
}

TEST(PresetsTest, LoadsBothFilesIntoTheTableAndTheList)
{
    PresetBench bench;
    bench.put("shipped-fs/FS_CI26_12.fcr",
              stepFile("97;12;x\r\n96;1;x\r\n70;140;x\r\n50;7;x\r\n5;99;x\r\n120;88;x\r\n"));
    bench.put("abs/CI_26_12.bcr", "K\r\n48;20;x;\r\n52;110;x;\r\n53;1;x;\r\n54;41;x\r\n");
    EXPECT_EQ(loadPreset(bench.bench, preset("CI26_1")), 6);
    const CvTable& table = bench.state.set.table;
    for (const auto& [cv, value] : {std::pair{97, 12},
                                    {96, 1},
                                    {70, 140},
                                    {50, 7},
                                    {5, 1},
                                    {12, 1},
                                    {48, 20},
                                    {52, 110},
                                    {53, 1},
                                    {54, 41}})
        EXPECT_EQ(table.value(cv), value) << cv;
    EXPECT_EQ(bench.lineOf(97), "  1 = 1 of 168            [12]  changed !");
    EXPECT_EQ(bench.lineOf(96), "  2 = 1 of 168   ");
    EXPECT_EQ(bench.lineOf(50), "CV50 = 1                 [7]  changed !");
    EXPECT_EQ(bench.lineOf(52), "CV52 = 1                 [110]  changed !");
    EXPECT_TRUE(bench.state.set.unsavedChanges);
    EXPECT_EQ(bench.journal.back(), "list changed");
    EXPECT_EQ(bench.messages(), (std::vector<std::string>{"outside in shipped-fs/FS_CI26_12.fcr:\r\n"
                                                          "3 to 168: 2 = 1\r\nthink"}));
    EXPECT_EQ(loadPreset(bench.bench, preset("CI26_1")), 0) << "nothing is another value now";
    EXPECT_EQ(bench.lineOf(97), "  1 = 12 of 168     changed !") << "nothing was brought";
}

TEST(PresetsTest, ASecondPresetShowsTheValueThatCountsLastAndOneMark)
{
    PresetBench bench;
    bench.put("fs/FS_Faller.fcr", stepFile("97;12;x\r\n96;9;x\r\n96;8;x\r\n95;30;x\r\n"));
    bench.put("fs/FS_CI46_24.fcr", stepFile("97;7;x\r\n96;0;x\r\n70;255;x\r\n"));
    for (const char* const distances : {"abs/Faller.bcr", "abs/CI_46_24.bcr"})
        bench.put(distances, "K\r\n48;1;x;\r\n");
    EXPECT_EQ(loadPreset(bench.bench, preset("Faller")), 3);
    EXPECT_EQ(bench.lineOf(96), "  2 = 1 of 168            [8]  changed !");
    EXPECT_EQ(loadPreset(bench.bench, preset("CI46_2")), 3);
    EXPECT_EQ(bench.lineOf(97), "  1 = 12 of 168          [7]  changed !");
    EXPECT_EQ(bench.lineOf(95), "  3 = 30 of 168     changed !");
    EXPECT_EQ(bench.messages()[0], "outside in fs/FS_CI46_24.fcr:\r\n3 to 168: 2 = 0, 28 = 255\r\nthink");
    bench.state.set.table.at(97, Column::lowerLimit) = u"10";
    bench.state.set.profile.generation = Generation::f5;
    loadPreset(bench.bench, preset("CI46_2"));
    EXPECT_EQ(bench.messages().back(), "outside in fs/FS_CI46_24.fcr:\r\n3 to 120: 2 = 0, 28 = 255\r\n"
                                       "10 to 120: 1 = 7\r\nthink")
        << "the list's limits where they are narrower";
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
        EXPECT_EQ(bench.journal[bench.journal.size() - (yes ? 2 : 1)],
                  "question fs/FS_Faller.fcr and abs/Faller.bcr before shipped-fs/FS_Faller.fcr and "
                  "shipped-abs/Faller.bcr?");
        EXPECT_EQ(bench.files.exists("fs/FS_Faller.fcr"), yes);
    }
    EXPECT_EQ(bench.saved("shipped-fs/FS_Faller.fcr"), stepFile("97;13;x\r\n"));
    bench.state.set.table.setValue(97, 60);
    EXPECT_EQ(load(), 55);
    bench.files.content.erase("fs/FS_Faller.fcr");
    EXPECT_EQ(load(), 13) << "back when one's own is taken away";
    bench.prompts.chooseFile("fs/other.fcr");
    bench.prompts.chooseFile("Shipped-abs/../shipped-abs/other.bcr");
    EXPECT_FALSE(saveOwnPreset(bench.bench, u"t"));
    EXPECT_EQ(bench.journal.back(), "message not among the shipped: Shipped-abs/../shipped-abs/other.bcr");
    EXPECT_FALSE(bench.files.exists("fs/other.fcr"));
}

TEST(PresetsTest, AFaultEndsTheLoadAndKeepsWhatWasMerged)
{
    struct Case {
        const char* lines;
        std::optional<int> changed;
        const char* message;
    };
    const Case cases[] = {
        {"97;12;x\r\n96;x;x\r\n95;13;x\r\n", 1, "fs/FS_Faller.fcr: value in line 3"},
        {"97;300;x\r\n", std::nullopt, "fs/FS_Faller.fcr: value in line 2"},
        {"nothing\r\n", std::nullopt, "unusable fs/FS_Faller.fcr"},
    };
    for (const Case& expected : cases) {
        PresetBench bench;
        bench.put("fs/FS_Faller.fcr", stepFile(expected.lines));
        bench.put("abs/Faller.bcr", "K\r\n48;20;x;\r\n");
        EXPECT_EQ(loadPreset(bench.bench, preset("Faller")), expected.changed) << expected.lines;
        EXPECT_EQ(bench.messages(), (std::vector<std::string>{expected.message}));
        EXPECT_EQ(bench.state.set.table.value(48), 1) << "the distances are not loaded";
    }
    PresetBench bench;
    std::string lines;
    for (int i = 0; i < 29; ++i)
        lines += "97;" + std::to_string(i) + ";x\r\n";
    bench.put("fs/FS_Faller.fcr", stepFile(lines));
    EXPECT_TRUE(loadPreset(bench.bench, preset("Faller")));
    EXPECT_EQ(bench.state.set.table.value(97), 27);
    EXPECT_EQ(bench.messages(), (std::vector<std::string>{"fs/FS_Faller.fcr: too long from 30"}));
}

TEST(PresetsTest, DistancesOutsideTheirRangeAreToldAndLeftOut)
{
    PresetBench bench;
    bench.put("fs/FS_Faller.fcr", stepFile("97;12;x\r\n"));
    bench.put("abs/Faller.bcr", "K\r\n52;95;x;\r\n53;x;x;\r\n54;7;x\r\n");
    EXPECT_EQ(loadPreset(bench.bench, preset("Faller")), 2) << "CV97 and CV54";
    EXPECT_EQ(bench.state.set.table.value(52), 1);
    ASSERT_EQ(bench.messages().size(), 2U);
    EXPECT_EQ(bench.messages()[0], "abs/Faller.bcr: distance line 3");
    EXPECT_EQ(bench.messages()[1], "abs/Faller.bcr\r\nrefused\r\n96 to 150");
}

TEST(PresetsTest, NeedsAListWithSpeedSteps)
{
    PresetBench bench(false);
    EXPECT_FALSE(loadPreset(bench.bench, preset("Faller")));
    EXPECT_FALSE(savePreset(bench.bench, preset("Faller")));
    EXPECT_FALSE(loadOwnPreset(bench.bench, u"t"));
    EXPECT_FALSE(saveOwnPreset(bench.bench, u"t"));
    EXPECT_FALSE(planOfBaseAndTop(bench.bench, preset("Faller")));
    EXPECT_EQ(bench.journal,
              (Journal{"message no CVs\r\n\r\nread first", "message nothing yet\r\n\r\nread before",
                       "message no CVs\r\n\r\nread first", "message nothing yet\r\n\r\nread before",
                       "message no CVs\r\n\r\nread first"}));
    PresetBench receiver;
    receiver.state.set.profile.model = Model::receiver;
    EXPECT_FALSE(loadPreset(receiver.bench, preset("Faller")));
    EXPECT_FALSE(planOfBaseAndTop(receiver.bench, preset("Faller")));
    EXPECT_EQ(receiver.journal, (Journal(2, "message KV-R is not KV04, KV05, KV06, KV07, KV08")));
    PresetBench v1;
    v1.put("fs/FS_Faller.fcr", stepFile("97;12;x\r\n70;140;x\r\n"));
    for (int cv = 70; cv <= 97; ++cv)
        v1.state.set.table.at(cv, Column::factoryValue).clear();
    EXPECT_FALSE(savePreset(v1.bench, preset("Faller")));
    EXPECT_EQ(v1.journal, (Journal{"message KV07 lacks CV70-97"}));
    EXPECT_TRUE(planOfBaseAndTop(v1.bench, preset("Faller"))) << "CV2 and CV5 are all that it needs";
}

TEST(PresetsTest, LoadsTwoFilesThatArePicked)
{
    PresetBench bench;
    bench.put("fs/mine.fcr", stepFile("97;12;x\r\n"));
    bench.put("abs/mine.bcr", "K\r\n48;20;x;\r\n");
    bench.prompts.chooseFile("fs/mine.fcr");
    bench.prompts.chooseFile(std::nullopt);
    EXPECT_FALSE(loadOwnPreset(bench.bench, u"t"));
    EXPECT_EQ(bench.state.set.table.value(97), 1) << "cancelled is nothing loaded";
    bench.journal.clear();
    bench.prompts.chooseFile("fs/mine.fcr");
    bench.prompts.chooseFile("abs/mine.bcr");
    const auto loaded = loadOwnPreset(bench.bench, u"t");
    ASSERT_TRUE(loaded);
    EXPECT_EQ(loaded->changed, 2);
    EXPECT_EQ(bench.journal[0], "open *.fcr in fs: ");
    EXPECT_EQ(bench.journal[1], "open *.bcr in abs: ");
    EXPECT_EQ(bench.files.folders.count("fs"), 1U) << "made for the dialog";
    EXPECT_EQ(bench.files.folders.count("abs"), 1U);
}

TEST(PresetsTest, SavesTheDistancesThenTheSteps)
{
    PresetBench bench;
    for (const auto& [cv, value] : {std::pair{97, 6}, {70, 150}, {48, 20}, {52, 110}, {53, 21}, {54, 41}})
        bench.state.set.table.setValue(cv, value);
    EXPECT_TRUE(savePreset(bench.bench, preset("CI46_2")));
    EXPECT_EQ(bench.journal, (Journal{"message saved fs/FS_CI46_24.fcr"}));
    EXPECT_TRUE(bench.saved("abs/CI_46_24.bcr").starts_with("CV-Nummer;CV-Wert;CV-Text\r\n48;20;Bremswert "));
    EXPECT_TRUE(bench.saved("abs/CI_46_24.bcr").ends_with("oberhalb von CV 52 liegt\r\n")) << "no trailer";
    EXPECT_TRUE(
        bench.saved("fs/FS_CI46_24.fcr").starts_with("CV-Nummer;CV-Wert;CV-Text\r\n97;6;Wort 97\r\n"));
    EXPECT_TRUE(bench.saved("fs/FS_CI46_24.fcr").ends_with("70;150;Wort 70\r\n"));
    const std::string before = bench.saved("fs/FS_CI46_24.fcr");
    bench.state.set.table.setValue(97, 7);
    bench.prompts.answer(false);
    EXPECT_FALSE(savePreset(bench.bench, preset("CI46_2")));
    EXPECT_EQ(bench.journal.back(), "question replace fs/FS_CI46_24.fcr and abs/CI_46_24.bcr?");
    EXPECT_EQ(bench.saved("fs/FS_CI46_24.fcr"), before);
    bench.files.saveFailure = u"full";
    bench.prompts.answer(true);
    EXPECT_FALSE(savePreset(bench.bench, preset("CI46_2")));
    EXPECT_EQ(bench.journal.back(), "message disk: abs/CI_46_24.bcr");
}

TEST(PresetsTest, SavesUnderOwnNames)
{
    PresetBench bench;
    bench.prompts.chooseFile("fs/mine.fcr");
    bench.prompts.chooseFile("abs/mine.bcr");
    EXPECT_TRUE(saveOwnPreset(bench.bench, u"t"));
    EXPECT_EQ(bench.journal,
              (Journal{"save *.fcr in fs: ", "save *.bcr in abs: ", "message saved fs/mine.fcr"}));
    EXPECT_TRUE(bench.saved("abs/mine.bcr").starts_with("CV-Nummer;CV-Wert;CV-Text\r\n48;1;"));
    bench.prompts.chooseFile("fs/other.fcr");
    bench.prompts.chooseFile(std::nullopt);
    EXPECT_FALSE(saveOwnPreset(bench.bench, u"t"));
    EXPECT_FALSE(bench.files.exists("fs/other.fcr")) << "both or none";
}

TEST(PresetsTest, BaseAndTopSpeedOfAPreset)
{
    PresetBench bench;
    bench.put("shipped-fs/FS_Faller.fcr", stepFile("97;6;x\r\n96;9;x\r\n70;110;x\r\n"));
    const auto plan = planOfBaseAndTop(bench.bench, preset("Faller"));
    ASSERT_TRUE(plan);
    ASSERT_EQ(plan->size(), 2U);
    EXPECT_EQ((*plan)[0].cv, 2);
    EXPECT_EQ((*plan)[0].value, 6);
    EXPECT_EQ((*plan)[1].cv, 5);
    EXPECT_EQ((*plan)[1].value, 110);
    bench.put("fs/FS_Faller.fcr", stepFile("97;6;x\r\n"));
    EXPECT_FALSE(planOfBaseAndTop(bench.bench, preset("Faller")));
    EXPECT_FALSE(planOfBaseAndTop(bench.bench, preset("CI46_2")));
    EXPECT_EQ(bench.messages()[0], "unusable fs/FS_Faller.fcr");
    EXPECT_TRUE(bench.messages()[1].starts_with("cannot open fs/FS_CI46_24.fcr"));
}

TEST(PresetsTest, ATableWithBaseAndTopSpeedThatDoesNotFitIsTold)
{
    PresetBench bench;
    bench.put("fs/FS_Faller_CV2_CV5.fcr", stepFile("2;6;x\r\n97;1;x\r\n"));
    EXPECT_FALSE(readBasedPreset(bench.bench, basedPresets()[0]));
    EXPECT_EQ(bench.journal, (Journal{"message fs/FS_Faller_CV2_CV5.fcr: not in line 3"}));
}

} // namespace
} // namespace karvo
