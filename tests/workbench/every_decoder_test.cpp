// Every simulated decoder in every language, read from the real program folder.
#include "cvdata/cv_use.h"
#include "language/language_loader.h"
#include "support/folder_files.h"
#include "support/link_bench.h"
#include "support/memory_files.h"
#include "support/simulated_line.h"
#include "workbench/decoder_info.h"
#include "workbench/full_read.h"
#include "workbench/language_change.h"
#include "workbench/list_files.h"
#include "workbench/offline_list.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

struct DecoderCase {
    const char* decoder;
    const char* file; // "*" stands for the language's suffix
    std::size_t lines;
    const char* lastLine;
};

constexpr const char* battery = "Akkuspannung = 3*92 Volt (196)"; // "*": comma or point

const DecoderCase decoderCases[] = {
    {"kv07", "CV_Standart_kv07*.txt", 177, battery},
    {"kv07-f3", "CV_Standart_kv07_F3*.txt", 177, battery},
    {"kv07-f4", "CV_Standart_kv07_F4*.txt", 177, battery},
    {"kv07-f5", "CV_Standart_kv07_F5*.txt", 177, battery},
    {"kv07-v1", "CV_Standart_kv07_V1*.txt", 177, battery},
    {"kv07-tacho", "CV_Standart_kv07Tacho.txt", 181, battery},
    {"kv07-lc", "CV_Standart_kv07LC*.txt", 185, battery},
    {"kv08", "CV_Standart_kv08*.txt", 177, battery},
    {"kv08-f3", "CV_Standart_kv08_F3*.txt", 177, battery},
    {"kv08-f4", "CV_Standart_kv08_F4*.txt", 177, battery},
    {"kv08-f5", "CV_Standart_kv08_F5*.txt", 177, battery},
    {"kv08-v1", "CV_Standart_kv08_V1*.txt", 177, battery},
    {"kv08-tacho", "CV_Standart_kv08Tacho.txt", 181, battery},
    {"kv08-lc", "CV_Standart_kv08LC*.txt", 185, battery},
    {"kv04", "CV_Standart172.txt", 176, "CV176 = 0"},
    {"kv04-2008", "CV_Standart180.txt", 176, "CV176 = 0"},
    {"kv04-2008-v1", "CV_Standart180_v1.txt", 176, "CV176 = 0"},
    {"kv04-2008-v2", "CV_Standart172.txt", 176, "CV176 = 0"},
    {"kv04-f4", "CV_Standart172_Mai10_4.txt", 176, "CV176 = 0"},
    {"kv04-mai10", "CV_Standart_Mai10_4.txt", 176, "CV176 = 0"},
    {"kv05", "CV_Standart172_v1_5.txt", 149, "CV176 = 0"},
    {"kv05-f5", "CV_Standart172_Mai10_5.txt", 149, "CV176 = 0"},
    {"kv05-mai10", "CV_Standart_Mai10_5.txt", 149, "CV176 = 0"},
    {"kv05-nov12", "CV_Standart_November12_5.txt", 149, "CV176 = 0"},
    {"kv06", "CV_Standart172_v1_6.txt", 149, "CV176 = 0"},
    {"kv06-f6", "CV_Standart172_Mai10_6.txt", 149, "CV176 = 0"},
    {"kv06-mai10", "CV_Standart_Mai10_6.txt", 149, "CV176 = 0"},
    {"kv06-nov12", "CV_Standart_November12_6.txt", 149, "CV176 = 0"},
    {"trailer", "CV_Standart_an07*.txt", 176, "CV176 = 0"},
    {"trailer-v1", "CV_Standart_an07_V1*.txt", 176, "CV176 = 0"},
    {"receiver", "CV_Standart_receiver_*.txt", 252, "CV250 = 0"},
    {"receiver-undated", "CV_Standart_receiver_*.txt", 252, "CV250 = 0"},
    {"receiver-2014", "CV_Standart_receiver_*.txt", 251, "CV250 = 0"},
    {"receiver-2015", "CV_Standart_receiver_*.txt", 251, "CV250 = 0"},
    {"receiver-2016", "CV_Standart_receiver_*.txt", 251, "CV250 = 0"},
    {"receiver-readonly", "CV_Standart_receiver_*.txt", 251, "CV250 = 0"},
};

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

std::string withSuffix(std::string pattern, const LanguageCase& language)
{
    if (const auto star = pattern.find('*'); star != std::string::npos)
        pattern.replace(star, 1, language.suffix);
    if (const auto blank = pattern.find("_.txt"); blank != std::string::npos)
        pattern.erase(blank, 1);
    return pattern;
}

std::string withDecimalSign(std::string pattern, const LanguageCase& language)
{
    if (const auto star = pattern.find('*'); star != std::string::npos)
        pattern[star] = language.code == LanguageCode::english ? '.' : ',';
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
    std::optional<ReadEnd> read(const char* decoder)
    {
        test::SimulatedLine line(
            sim::Simulator(*sim::decoderByName(decoder), sim::Pace::line, sim::Fault::none));
        Workbench bench{state_, line, line, prompts_, view_, files_, settings_};
        return readIntoList(bench, ReadStarter::other);
    }

    void changeWords()
    {
        test::SimulatedLine line(sim::Simulator({}, sim::Pace::none, sim::Fault::none));
        Workbench bench{state_, line, line, prompts_, view_, files_, settings_};
        describeAnew(bench);
    }

    test::Journal journal_;
    test::ScriptedPrompts prompts_{journal_};
    test::RecordingView view_{journal_};
    test::FolderFiles files_;
    test::MemorySettings settings_;
    ProgramState state_;
};

TEST_P(EveryDecoderTest, HasItsFileItsFirstAndItsLastLineInEachLanguage)
{
    const DecoderCase& expected = GetParam();
    for (const LanguageCase& language : languageCases) {
        use(language);
        ASSERT_EQ(read(expected.decoder), ReadEnd::read) << language.suffix;
        const auto& list = state_.set.list;
        EXPECT_EQ(state_.set.descriptionPath.filename(), withSuffix(expected.file, language));
        EXPECT_EQ(utf8FromText(list.front().text), "CV1  = 3");
        EXPECT_EQ(utf8FromText(list.front().name), language.firstName);
        EXPECT_EQ(utf8FromText(list.back().text), withDecimalSign(expected.lastLine, language));
        EXPECT_EQ(list.size(), expected.lines) << language.suffix;
        const CvTable& table = state_.set.table;
        for (int cv = 1; cv <= CvTable::lastRow; ++cv) {
            if (table.describes(cv) && table.at(cv, Column::factoryValue).empty()) {
                EXPECT_EQ(table.value(cv).value_or(0), 0) << "CV" << cv << " is not used by this decoder";
            }
        }
    }
    for (const auto& entry : journal_)
        EXPECT_FALSE(entry.starts_with("message")) << entry;
}

TEST_P(EveryDecoderTest, AnotherLanguageKeepsValuesAndMarks)
{
    use(languageCases[0]);
    ASSERT_EQ(read(GetParam().decoder), ReadEnd::read);
    CvSet& set = state_.set;
    set.table.setValue(3, 99);
    const CvTable before = set.table;
    for (const LanguageCase& language : languageCases) {
        use(language);
        changeWords();
        EXPECT_EQ(set.descriptionPath.filename(), withSuffix(GetParam().file, language));
        EXPECT_EQ(set.list.size(), GetParam().lines);
        EXPECT_EQ(utf8FromText(set.list.front().name), language.firstName);
        EXPECT_EQ(utf8FromText(set.list[2].text),
                  "CV3  = 99  " + utf8FromText(state_.texts.caption(Caption::changedMark)));
        EXPECT_EQ(std::count_if(set.list.begin(), set.list.end(),
                                [](const ListLine& line) { return line.changed; }),
                  1);
        for (int cv = 1; cv <= CvTable::lastRow; ++cv)
            EXPECT_EQ(set.table.at(cv, Column::value), before.at(cv, Column::value)) << "CV" << cv;
    }
}

TEST_P(EveryDecoderTest, HasExpertKnowledgeInEachLanguage)
{
    state_.expert = true;
    for (const LanguageCase& language : languageCases) {
        use(language);
        ASSERT_EQ(read(GetParam().decoder), ReadEnd::read);
        EXPECT_GE(state_.set.expert.size(), 5u) << language.suffix;
        for (const auto& [cv, entry] : state_.set.expert)
            EXPECT_FALSE(entry.name.empty() || entry.knowledge.empty()) << language.suffix << " CV" << cv;
    }
    for (const auto& entry : journal_)
        EXPECT_FALSE(entry.starts_with("message")) << entry;
}

// A list file of the set, opened again; without marks as before there were any.
class ReceiverTest : public EveryDecoderTest
{
protected:
    void reopen(bool withMarks)
    {
        auto content = textFromWindows1252(listFileContent(state_.set));
        for (auto at = content.find(u"mark="); !withMarks && at != Text::npos; at = content.find(u"mark="))
            content.erase(at, content.find(u';', at) - at);
        test::SimulatedLine line(sim::Simulator({}, sim::Pace::none, sim::Fault::none));
        Workbench bench{state_, line, line, prompts_, view_, files_, settings_};
        ASSERT_TRUE(takeListContent(bench, *windows1252FromText(content), "receiver.kvr"));
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
    const std::pair<const char*, std::vector<int>> cases[] = {
        {"receiver", {}},
        {"receiver-undated", {}},
        {"receiver-2014", {13, 14, 43, 44, 45, 80, 250}},
        {"receiver-2015", {13, 14, 43, 44, 45, 80, 250}},
        {"receiver-2016", {13, 14, 80, 250}},
        {"receiver-readonly", {13, 14, 250}}, // the newer board
    };
    for (const auto& [decoder, expected] : cases) {
        const bool isUnknown = decoder == std::string_view("receiver-undated");
        use(languageCases[1]);
        ASSERT_EQ(read(decoder), ReadEnd::read);
        EXPECT_EQ(lacking(), expected) << decoder;
        EXPECT_EQ(remarks(), isUnknown) << decoder;
        EXPECT_TRUE(isReadOnly(state_.set.table, 72) && isReadOnly(state_.set.table, 73));
        use(languageCases[3]);
        changeWords();
        EXPECT_EQ(lacking(), expected) << decoder;
        for (const bool withMarks : {true, false}) {
            reopen(withMarks);
            auto expectedInList = expected;
            if (decoder == std::string_view("receiver-readonly"))
                expectedInList.pop_back();
            EXPECT_EQ(lacking(), expectedInList) << decoder << withMarks;
            EXPECT_EQ(remarks(), isUsed(state_.set.table, 43)) << decoder << withMarks;
            EXPECT_TRUE(isReadOnly(state_.set.table, 72)) << withMarks;
            use(languageCases[2]);
            changeWords();
            EXPECT_EQ(lacking(), expectedInList) << decoder << withMarks;
        }
    }
}

class DecoderInfoTest : public EveryDecoderTest
{
};

TEST_P(DecoderInfoTest, NamesTheFilesOfLaneControlInEachLanguage)
{
    const std::string folder = std::filesystem::path(KARVO_PROGRAM_FOLDER).string() + "/";
    for (const LanguageCase& language : languageCases) {
        use(language);
        ASSERT_EQ(read(GetParam().decoder), ReadEnd::read);
        const std::string model = std::string(GetParam().decoder).substr(0, 4);
        const std::string ending = " = " + folder + "CV_exp_" + model + "LC" + language.suffix + ".txt";
        const std::string info = utf8FromText(decoderInfoText(state_));
        EXPECT_TRUE(info.starts_with(model == "kv07" ? "Decoder = KV07\r\n" : "Decoder = KV08\r\n")) << info;
        EXPECT_NE(info.find(" = ATmega328\r\n"), std::string::npos) << info;
        EXPECT_NE(info.find(" = " + folder + "CV_Standart_" + model + "LC" + language.suffix + ".txt\r\n"),
                  std::string::npos)
            << info;
        EXPECT_TRUE(info.ends_with(ending)) << info;
    }
}

INSTANTIATE_TEST_SUITE_P(LaneControl, DecoderInfoTest, testing::Values(decoderCases[6], decoderCases[13]));

INSTANTIATE_TEST_SUITE_P(Decoders, EveryDecoderTest, testing::ValuesIn(decoderCases),
                         [](const auto& decoderCase) {
                             std::string name = decoderCase.param.decoder;
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });

TEST(EveryDecoderCasesTest, NoSimulatedDecoderIsLeftOut)
{
    std::vector<std::string> names;
    for (const DecoderCase& decoder : decoderCases)
        names.emplace_back(decoder.decoder);
    std::sort(names.begin(), names.end());
    auto simulated = sim::decoderNames();
    std::sort(simulated.begin(), simulated.end());
    EXPECT_EQ(names, simulated);
}

} // namespace
} // namespace karvo
