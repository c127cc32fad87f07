// Every simulated decoder in every language, read from the real program folder, and the files in that folder.
#include "cvdata/cv_kind.h"
#include "cvdata/cv_use.h"
#include "language/language_loader.h"
#include "support/case_table.h"
#include "support/link_bench.h"
#include "support/memory_files.h"
#include "support/simulated_line.h"
#include "workbench/expert_mode.h"
#include "workbench/full_read.h"
#include "workbench/language_change.h"
#include "workbench/list_files.h"

namespace karvo::test
{

// Of tests/data/decoders.txt: decoder, description file, lines and the last of them.
using DecoderCase = std::array<std::string, 4>;

struct LanguageCase {
    LanguageCode code;
    const char* suffix;
    const char* firstName;
};

const LanguageCase languageCases[] = {
    {LanguageCode::german, "", "Erste Adresse (kurz)"},
    {LanguageCode::dutch, "nl", "Eerste adres (kort)"},
    {LanguageCode::english, "en", "First address (short)"},
    {LanguageCode::spanish, "es", "Primera dirección (corta)"},
    {LanguageCode::french, "fr", "Première adresse (courte)"},
};

static std::string withStar(std::string pattern, const std::string& inItsPlace)
{
    if (const auto star = pattern.find('*'); star != std::string::npos)
        pattern.replace(star, 1, inItsPlace);
    if (const auto blank = pattern.find("_.txt"); blank != std::string::npos)
        pattern.erase(blank, 1);
    return pattern;
}

class EveryDecoderTest : public testing::TestWithParam<DecoderCase>
{
protected:
    EveryDecoderTest() { state_.programFolder = KARVO_PROGRAM_FOLDER; }

    void use(const LanguageCase& language)
    {
        state_.language = language.code;
        ASSERT_FALSE(loadLanguage(state_.texts, language.code, state_.programFolder, files_).missing);
    }
    // With something at the line: the decoder of this name.
    template <typename Act>
    auto onBench(const std::string& decoder, Act act)
    {
        SimulatedLine line(sim::Simulator(*sim::decoderByName(decoder), sim::Pace::line, sim::Fault::none));
        Workbench bench{state_, line, line, prompts_, view_, files_, settings_};
        return act(bench);
    }
    void read(const std::string& decoder)
    {
        const auto end =
            onBench(decoder, [](auto& bench) { return readIntoList(bench, ReadStarter::other); });
        ASSERT_EQ(end, ReadEnd::read);
    }
    void changeWords()
    {
        onBench("kv07", [](auto& bench) { describeAnew(bench); });
    }
    void expectListOf(const DecoderCase& decoder, const LanguageCase& language, const std::string& lineOfCv3)
    {
        const CvSet& set = state_.set;
        const char* const point = language.code == LanguageCode::english ? "." : ",";
        EXPECT_EQ(set.descriptionPath.filename(), withStar(decoder[1], language.suffix));
        EXPECT_EQ(std::to_string(set.list.size()), decoder[2]) << language.suffix;
        EXPECT_EQ(utf8FromText(set.list.back().text), withStar(decoder[3], point));
        EXPECT_EQ(utf8FromText(set.list.front().text), "CV1  = 3");
        EXPECT_EQ(utf8FromText(set.list.front().name), language.firstName);
        EXPECT_EQ(utf8FromText(set.list[2].text), lineOfCv3);
    }
    void expectExpertKnowledge(const std::string& decoder, const char* suffix)
    {
        EXPECT_GE(state_.set.expert.size(), 5u);
        for (const auto& [cv, entry] : state_.set.expert)
            EXPECT_FALSE(entry.name.empty() || entry.knowledge.empty()) << " CV" << cv;
        if (decoder.ends_with("-lc")) {
            EXPECT_EQ(state_.set.expertPath.filename(),
                      "CV_exp_" + decoder.substr(0, 4) + "LC" + suffix + ".txt");
        }
    }
    void expectUnusedCvsAtZeroAndFullBytes()
    {
        const CvTable& table = state_.set.table;
        for (int cv = 1; cv <= CvTable::lastRow; ++cv) {
            if (table.describes(cv) && table.at(cv, Column::factoryValue).empty()) {
                EXPECT_EQ(table.value(cv).value_or(0), 0) << "CV" << cv;
            }
        }
        for (const int cv : {100, 101}) // take any byte
            EXPECT_EQ(table.at(cv, Column::lowerLimit) + u"-" + table.at(cv, Column::upperLimit), u"0-255");
    }
    Journal journal_;
    ScriptedPrompts prompts_{journal_};
    RecordingView view_{journal_};
    FolderFiles files_;
    MemorySettings settings_;
    ProgramState state_;
};

TEST_P(EveryDecoderTest, HasItsListInEachLanguageAndKeepsItsValuesInAnother)
{
    for (const LanguageCase& language : languageCases) {
        use(language);
        state_.expert = true;
        read(GetParam()[0]);
        expectExpertKnowledge(GetParam()[0], language.suffix);
        onBench("kv07", [](auto& bench) { setExpertMode(bench, false); });
        expectListOf(GetParam(), language, utf8FromText(state_.set.list[2].text));
        expectUnusedCvsAtZeroAndFullBytes();
    }
    state_.set.table.setValue(3, 99);
    const CvTable before = state_.set.table;
    for (const LanguageCase& language : languageCases) {
        use(language);
        changeWords();
        const auto changed = utf8FromText(state_.texts.caption(Caption::changedMark));
        expectListOf(GetParam(), language, "CV3  = 99  " + changed);
        const auto& list = state_.set.list;
        EXPECT_EQ(std::count_if(list.begin(), list.end(), [](const auto& line) { return line.changed; }), 1);
        for (int cv = 1; cv <= CvTable::lastRow; ++cv)
            EXPECT_EQ(state_.set.table.at(cv, Column::value), before.at(cv, Column::value)) << "CV" << cv;
    }
    EXPECT_EQ(joined(journal_).find("message"), std::string::npos) << joined(journal_);
}

INSTANTIATE_TEST_SUITE_P(Decoders, EveryDecoderTest, testing::ValuesIn(casesOf<4>("decoders.txt")));

TEST(EveryDecoderCasesTest, NoSimulatedDecoderIsLeftOut)
{
    EXPECT_EQ(casesOf<4>("decoders.txt").size(), sim::decoderNames().size());
}

// A list file of the set, opened again; without marks, groups, words and units as before there were any.
class ReceiverTest : public EveryDecoderTest
{
protected:
    void reopen(bool withMarks)
    {
        auto content = textFromWindows1252(listFileContent(state_.set));
        for (const TextView own : {u"mark=", u"group=", u"choice=", u"special=", u"unit="}) {
            for (auto at = content.find(own); !withMarks && at != Text::npos; at = content.find(own))
                content.erase(at, content.find(u';', at) - at);
        }
        ASSERT_TRUE(onBench("kv07", [&](auto& bench) {
            return takeListContent(bench, *windows1252FromText(content), "receiver.kvr");
        }));
    }
    std::vector<int> lacking() const
    {
        std::vector<int> cvs;
        for (const int cv : {13, 14, 43, 44, 45, 80, 250}) {
            if (!state_.set.table.describes(cv)) // a list of a read-only receiver ends before it
                continue;
            const bool isUnused =
                state_.set.table.at(cv, Column::text) == state_.set.table.at(2, Column::text);
            EXPECT_EQ(isUnused, !isUsed(state_.set.table, cv)) << cv;
            if (isUnused)
                cvs.push_back(cv);
        }
        return cvs;
    }
    bool remarks() const { return state_.set.table.at(43, Column::advice).find(u"24.2.2016") != Text::npos; }
};

TEST_F(ReceiverTest, WhatItsFirmwareLacksIsUnusedThereInItsListsAndInEachLanguage)
{
    const std::pair<std::string, std::vector<int>> cases[] = {
        {"receiver", {}},
        {"receiver-undated", {}},
        {"receiver-2014", {13, 14, 43, 44, 45, 80, 250}},
        {"receiver-2015", {13, 14, 43, 44, 45, 80, 250}},
        {"receiver-2016", {13, 14, 80, 250}},
        {"receiver-readonly", {13, 14, 250}}, // the newer board
    };
    for (const auto& [decoder, expected] : cases) {
        use(languageCases[1]);
        read(decoder);
        EXPECT_EQ(lacking(), expected) << decoder;
        EXPECT_EQ(remarks(), decoder == "receiver-undated") << decoder;
        EXPECT_TRUE(isReadOnly(state_.set.table, 72) && isReadOnly(state_.set.table, 73));
        use(languageCases[3]);
        changeWords();
        EXPECT_EQ(lacking(), expected) << decoder;
        auto expectedInList = expected;
        if (decoder == "receiver-readonly")
            expectedInList.pop_back();
        for (const bool withMarks : {true, false}) {
            reopen(withMarks);
            EXPECT_EQ(lacking(), expectedInList) << decoder << withMarks;
            EXPECT_EQ(remarks(), isUsed(state_.set.table, 43)) << decoder << withMarks;
            EXPECT_TRUE(isReadOnly(state_.set.table, 72)) << withMarks;
            EXPECT_EQ(inUnit(10, kindOf(state_.set.table, 77).unit.value_or(CvUnit()), false), u"1 s");
            EXPECT_EQ(kindOf(state_.set.table, 9).wordOfValue(1), withMarks ? u"desvío" : u"turnout");
            EXPECT_EQ(kindOf(state_.set.table, 77).groups.front().group, CvGroup::returnTimes);
            use(languageCases[2]);
            changeWords();
            EXPECT_EQ(kindOf(state_.set.table, 9).wordOfValue(1), u"turnout");
            EXPECT_EQ(lacking(), expectedInList) << decoder << withMarks;
        }
    }
}

// data/program_folder.txt names every file that the program may ask for.
TEST(ProgramFolderTest, HoldsTheListedFilesAndNoOthersUnderExactlyTheirNames)
{
    const std::filesystem::path folder = KARVO_PROGRAM_FOLDER;
    std::ifstream list(std::filesystem::path(KARVO_SOURCE_FOLDER) / "data" / "program_folder.txt");
    std::set<std::string> listed;
    for (std::string line; std::getline(list, line);) {
        if (!line.empty() && !line.starts_with('#'))
            listed.insert(line);
    }
    std::set<std::string> held;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        const auto name = entry.path().lexically_relative(folder).generic_string();
        const bool isText =
            entry.path().parent_path() == folder && (name.starts_with("CV_") || name.ends_with(".txt"));
        if (entry.is_regular_file() && (isText || name.starts_with("original/")))
            held.insert(name);
    }
    EXPECT_EQ(held, listed);
    const auto content = [&](const std::string& name) {
        return FolderFiles().readWhole(folder / name, textFileLimit);
    };
    for (const std::string ending : {".txt", "_nl.txt", "_en.txt", "_es.txt", "_fr.txt"})
        EXPECT_EQ(content("CV_exp_receiver" + ending), content("CV_exp_Receiver" + ending))
            << "one file on Windows";
}

} // namespace karvo::test
