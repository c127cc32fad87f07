// Ready-made tables: the files of speed steps and of distances, and how they are loaded and saved.
#include "editors/distance_table.h"
#include "editors/presets.h"
#include "editors/speed_step_file.h"

#include "editor_bench.h"
#include "support/case_table.h"
#include "support/memory_files.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using test::bytesOf;
using test::casesOf;

std::string valuesOf(const DistanceFile& file)
{
    std::string text;
    for (const Text& value : file.values)
        text += utf8FromText(value) + ",";
    return text;
}

TEST(DistanceTableTest, SavesToTheLetterAndReadsWhatItUnderstands)
{
    const auto saved = test::golden("editors/distances.saved.bcr");
    const std::vector<Text> list = {u"",          u"KV07*5",    u"1;3;a;", u"Ende CV",
                                    u"ATmega328", u"Anfang FS", u"",       u"x"};
    const DistanceValues values = {u"20", u"110", u"21", u"41"};
    EXPECT_EQ(distanceFileContent(values, {}), saved);
    auto withTrailer = saved;
    for (const auto byte : bytesOf("ATmega328\r\nAnfang FS\r\n"))
        withTrailer.push_back(byte);
    EXPECT_EQ(distanceFileContent(values, list), withTrailer);
    EXPECT_EQ(valuesOf(parseDistanceFile(saved)), "20,110,21,41,");
    for (const auto& [content, read, faulty] : casesOf<3>("editors/distance_files.txt")) {
        const auto file = parseDistanceFile(bytesOf(content));
        std::string lines;
        for (const int line : file.faultyLines)
            lines += std::to_string(line) + " ";
        EXPECT_EQ(valuesOf(file), read) << content;
        EXPECT_EQ(lines, faulty) << content;
    }
}

TEST(DistanceTableTest, RangesAreTheCvsOwn)
{
    LanguageTables texts;
    test::setTexts(texts,
                   {{127, u"0 to 255"}, {128, u"refused"}, {131, u"96 to 150"}, {132, u"CV52 refused"}});
    const auto cvs = distanceCvs();
    for (const TextView good : {u"96", u"150", u" 120 "})
        EXPECT_FALSE(refusalOf(cvs[1], good, texts));
    for (const TextView wrong : {u"95", u"151", u"", u"x", u"99999999999"})
        EXPECT_EQ(refusalOf(cvs[1], wrong, texts), u"CV52 refused\r\n96 to 150");
    for (const std::size_t place : {0u, 2u, 3u}) {
        EXPECT_FALSE(refusalOf(cvs[place], u"0", texts) || refusalOf(cvs[place], u"255", texts));
        EXPECT_EQ(refusalOf(cvs[place], u"256", texts), u"refused\r\n0 to 255");
    }
    EXPECT_EQ(test::planText(std::get<WritePlan>(planOfDistances({u"1", u"96", u"3", u"4"}))),
              "48=1 52=96 53=3 54=4 ");
    EXPECT_EQ(std::get<std::size_t>(planOfDistances({u"1", u"95", u"256", u"4"})), 1u);
}

std::string readingOf(const std::string& content)
{
    const auto file = parseSpeedStepFile(bytesOf(content));
    std::string text;
    for (const SpeedStepRecord& record : file.records)
        text += std::to_string(record.cv) + "=" + std::to_string(record.value) + " ";
    if (file.fault)
        text += (file.fault->kind == SpeedStepFault::Kind::tooLong ? "too long " : "wrong ") +
                std::to_string(file.fault->line);
    return text;
}

TEST(SpeedStepFileTest, IsReadUpToItsFaultAndWithBaseAndTopSpeedWholeOrRefused)
{
    for (const auto& [content, reading] : casesOf<2>("editors/speed_step_files.txt"))
        EXPECT_EQ(readingOf(content), reading) << content;
    std::string allSteps; // 1 to 28 with the values 3 to 30
    for (int step = 1; step <= 28; ++step)
        allSteps += std::to_string(98 - step) + ";" + std::to_string(step + 2) + ";x\r\n";
    const auto whole = readingOf("K\r\n" + allSteps);
    EXPECT_TRUE(whole.ends_with("70=30 ")) << whole;
    for (const char* const oneTooMany : {"69;1;x\r\n", "5;1;x\r\n"}) // it counts though it is ignored
        EXPECT_EQ(readingOf("K\r\n" + allSteps + oneTooMany), whole + "too long 30");

    const std::string good = "K\r\n2;20;base\r\n5;140;top\r\n" + allSteps;
    const auto table = std::get<BasedSpeedTable>(parseBasedSpeedTable(bytesOf(good)));
    EXPECT_EQ((std::array{table.base, table.top, table.steps.front(), table.steps.back()}),
              (std::array{20, 140, 3, 30}));
    const auto with = [&](std::string_view old, const char* replacement) {
        std::string content = good;
        return content.replace(content.find(old), old.size(), replacement);
    };
    const std::pair<std::string, int> refusedAt[] = {{with("2;20;base\r\n", ""), 2},
                                                     {with("5;140;", "5;256;"), 3},
                                                     {with("97;3;", "97;x;"), 4},
                                                     {with("96;4;", "95;4;"), 5},
                                                     {with("70;30;x\r\n", ""), 31},
                                                     {good + "69;1;x\r\n", 32},
                                                     {"", 1}};
    for (const auto& [content, line] : refusedAt)
        EXPECT_EQ(std::get<int>(parseBasedSpeedTable(bytesOf(content))), line);
}

const Preset& preset(std::string_view kind)
{
    const auto all = presets();
    return *std::find_if(all.begin(), all.end(), [&](const Preset& one) { return one.kind == kind; });
}

struct PresetBench : test::EditorBench {
    PresetBench()
    {
        for (const int number : {720, 761, 762, 763, 773, 776})
            test::setText(state.texts, number, u"m" + textFromNumber(number) + u" {1}, {2}");
        for (const int number : {764, 806, 812})
            test::setText(state.texts, number, u"m" + textFromNumber(number) + u" {1}");
        test::setTexts(state.texts, {{772, u"replace {1}, {2}?"}, {811, u"{1}, {2} before {3}, {4}?"}});
        state.userFolders.speedSteps = {"fs", "shipped-fs", {}};
        state.userFolders.distances = {"abs", "shipped-abs", {}};
        table.at(96, Column::text) = u"a;b\r\nc";
        addPreparations();
        addUses();
        addFiles();
    }
    void addPreparations()
    {
        const auto prepare = [this](const std::string& name, const std::function<void()>& act) {
            steps[name] = [act](auto&) { return act(), std::string(); };
        };
        prepare("f5", [this] { state.set.profile.generation = Generation::f5; });
        prepare("no-list", [this] { state.set = CvSet(); });
        prepare("disk-full",
                [this] { files.saveFailure = std::make_error_code(std::errc::no_space_on_device); });
    }
    std::string told(const std::string& result) { return result + ": " + passed(); }
    void addUses()
    {
        steps["load"] = [this](auto& kind) {
            const auto changed = loadPreset(bench, preset(kind));
            return told(changed ? std::to_string(*changed) : "-");
        };
        steps["load-own"] = [this](auto&) {
            const auto loaded = loadOwnPreset(bench, u"t");
            return told(loaded ? std::to_string(loaded->changed) : "-");
        };
        steps["save"] = [this](auto& kind) { return told(savePreset(bench, preset(kind)) ? "saved" : "-"); };
        steps["save-own"] = [this](auto&) { return told(saveOwnPreset(bench, u"t") ? "saved" : "-"); };
        steps["base-and-top"] = [this](auto& kind) {
            const auto plan = planOfBaseAndTop(bench, preset(kind));
            return told(plan ? test::planText(*plan) : "-");
        };
        steps["based"] = [this](auto&) {
            return told(readBasedPreset(bench, basedPresets()[0]) ? "read" : "-");
        };
    }
    void addFiles()
    {
        steps["file"] = [this](auto& words) { // the first line of its content is left to the bench
            const auto end = words.find(' ');
            files.content[words.substr(0, end)] = bytesOf("K\r\n" + words.substr(end + 1));
            return std::string();
        };
        steps["erase"] = [this](auto& path) { return std::to_string(files.content.erase(path)); };
        steps["begin"] = [this](auto& path) { return textOf(path).substr(0, 55); };
        steps["end"] = [this](auto& path) { return textOf(path).substr(textOf(path).size() - 35); };
        steps["folders"] = [this](auto&) {
            std::string folders;
            for (const auto& folder : files.folders)
                folders += folder.string() + " ";
            return folders;
        };
    }
    std::string textOf(const std::string& path)
    {
        const auto content = files.readWhole(path, textFileLimit).value_or(bytesOf("none"));
        return {content.begin(), content.end()};
    }
};

TEST(PresetsTest, EachStepShowsWhatItShould)
{
    test::carryOut<PresetBench>("editors/presets.txt");
}

TEST(PresetsTest, EachIsShippedAndKnownByBothNamesOfItsDistances)
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

} // namespace
} // namespace karvo
