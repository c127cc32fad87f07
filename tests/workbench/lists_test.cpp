// The list on the bench: of a decoder that was read, or of a description alone, in the words of its files.
#include "cvdata/changes.h"
#include "support/test_bench.h"
#include "workbench/decoder_info.h"
#include "workbench/describe.h"
#include "workbench/expert_mode.h"
#include "workbench/full_read.h"
#include "workbench/language_change.h"
#include "workbench/offline_list.h"

namespace karvo::test
{

const std::string kv05File = "CV_Standart172_v1_5.txt";

class ListsTest : public testing::Test, protected TestBench
{
protected:
    ListsTest()
    {
        setTexts(
            state.texts,
            {{603, u"expert file:"}, {615, u"{1} ends with line {2}"}, {681, u"{1}: {2} lines, first {3}"}},
            {{160, u"Expert"}, {161, u"changed"}});
        addFile("CV_Standart_kv07.txt", smallDescription("Standard KV07", "Wort "));
        addFile("CV_exp_kv07.txt", "Head\r\n2;;zwei;;;;Tiefes Wissen;\r\n97;;eins;\r\n");
        addFile(kv05File, smallDescription("Standard KV05", "Wort "));
        addFile("CV_Standart172_v1_6.txt", smallDescription("Standard KV06", "Wort "));
        addFile("CV_Standart172.txt", smallDescription("Standard KV04", "Wort "));
    }
    // A decoder with this identification, "15" for a KV05.
    std::optional<ReadEnd> read(const char* identification, const Bytes& block = blockOf(512))
    {
        line.replyWith(bytesOf(identification));
        line.replyWith(block);
        return readIntoList(bench, ReadStarter::other);
    }
    Text lineAt(std::size_t index) const { return state.set.list.at(index).text; }
    Text expertName(int cv) const { return state.set.expert.at(cv).name; }
    long times(const std::string& message) const
    {
        return std::count(journal.begin(), journal.end(), "message " + message);
    }
};

TEST_F(ListsTest, ADecoderIsReadIntoAListInItsWords)
{
    ASSERT_EQ(read("27", blockOf(1024)), ReadEnd::read);
    // 1024 bytes: n * 7 + n / 256; CV7 is 49, so the current generation.
    EXPECT_EQ(lineAt(0), u"CV1  = 7");
    EXPECT_EQ(state.set.table.at(153, Column::value), u"") << "without a value in the description";
    EXPECT_EQ(state.set.table.value(176), (176 * 7) % 256);
    EXPECT_EQ(state.set.modelCode, u"07");
    EXPECT_EQ(state.set.loadedData, u"KV07  Firmware = 49  Sublevel = 152 | CV_Standart_kv07.txt");
    EXPECT_EQ(state.set.rawReply.size(), 1025u);
    EXPECT_TRUE(joined(journal).ends_with("no hourglass, list changed, status 176 CVs, idle"));
    clearDisplay(bench);
    EXPECT_TRUE(state.set.isEmpty());
    EXPECT_TRUE(state.link.identified) << "the decoder stays known";
    EXPECT_EQ(journal.back(), "list changed");
}

TEST_F(ListsTest, AFileOfAllLanguagesHasItsWordsFromItsCompanion)
{
    addFile("CV_Standart180.txt", smallDescription("Standard KV04", "Wort "));
    addFile("CV_Standart180_EN.txt", smallDescription("Standard KV04", "word ", 3));
    addFile("CV_exp.txt", "Head\r\n2;;zwei;;;;Tiefes Wissen;\r\n3;;drei;\r\n");
    addFile("CV_exp_EN.txt", "Head\r\n2;;two;;;;Deep knowledge;\r\nno field\r\n");
    state.expert = true;
    Bytes block(513, 0);
    block[6] = 1;
    block[512] = 1;
    ASSERT_EQ(read("04", block), ReadEnd::read);
    EXPECT_EQ(expertName(2), u"zwei");
    state.language = LanguageCode::english;
    describeAnew(bench);
    EXPECT_TRUE(state.set.loadedData.starts_with(u"old KV04  Firmware = 1"));
    EXPECT_EQ(state.set.table.at(3, Column::text), u"word 3");
    EXPECT_EQ(state.set.table.at(4, Column::text), u"Wort 4"); // the companion does not describe it
    EXPECT_EQ(state.set.descriptionPath, "program/CV_Standart180.txt");
    EXPECT_EQ(expertName(2) + expertName(3), u"twodrei");
    EXPECT_EQ(times("program/CV_exp_EN.txt: 1 lines, first 3"), 1);
}

TEST_F(ListsTest, WithoutABlockOrItsDescriptionTheOldListStaysAndTheLineIsFree)
{
    for (const bool same : {false, true}) {
        state.askNoMore.emplace();
        ASSERT_EQ(read("27", blockOf(1024)), ReadEnd::read);
        EXPECT_EQ(state.askNoMore.has_value(), same) << "another vehicle";
    }
    files.content.erase("program/" + kv05File);
    EXPECT_EQ(read("15"), std::nullopt);
    EXPECT_EQ(times("cannot open program/" + kv05File + "\r\ninstall again"), 1);
    addFile(kv05File, "nonsense");
    EXPECT_EQ(read("15"), std::nullopt);
    EXPECT_EQ(times("no description: program/" + kv05File), 1);
    EXPECT_EQ(readIntoList(bench, ReadStarter::other), ReadEnd::noReply);
    EXPECT_EQ(state.set.list.size(), 177u);
    EXPECT_EQ(state.set.modelCode, u"07");
    EXPECT_EQ(journal.back(), "idle");
    EXPECT_FALSE(state.lineBusy);
    state.lineBusy = true;
    journal.clear();
    EXPECT_EQ(readIntoList(bench, ReadStarter::other), std::nullopt) << "a second operation";
    EXPECT_FALSE(showStandardList(bench) || showOfflineList(bench, "mnu_kv07"));
    EXPECT_TRUE(journal.empty() && state.lineBusy);
}

TEST_F(ListsTest, TheSameVehicleKeepsItsChosenCvAndAnyOtherBeginsWithTheFirst)
{
    // The CV that is chosen after a read, 40 before; where a CV is given, its value in the block is another.
    const auto chosenAfter = [this](const char* identification, std::size_t cv,
                                    const std::function<void()>& before) {
        EXPECT_EQ(read("15"), ReadEnd::read);
        state.set.currentNumber = 40;
        before();
        Bytes block = blockOf(512);
        if (cv != 0) {
            ++block[cv - 1];
            ++block.back();
        }
        EXPECT_EQ(read(identification, block), ReadEnd::read);
        const int chosen = state.set.currentNumber;
        clearDisplay(bench);
        return chosen;
    };
    const auto writeAddress = [this] {
        state.set.table.setValue(1, 8);
        markWritten(state.set, 1);
    };
    const auto nothing = [] {};
    EXPECT_EQ(chosenAfter("15", 0, nothing), 40);
    EXPECT_EQ(chosenAfter("15", 52, nothing), 40);
    EXPECT_EQ(chosenAfter("15", 1, nothing), 1) << "another address";
    EXPECT_EQ(chosenAfter("15", 1, writeAddress), 40);
    EXPECT_EQ(chosenAfter("16", 0, nothing), 1) << "another model";
    EXPECT_EQ(chosenAfter("15", 0, [this] { state.set.offlineItem = "mnu_KV05"; }), 1);
}

TEST_F(ListsTest, AnOfflineListHasTheDescriptionsValuesAndTakesThePlaceOfWhatWasRead)
{
    EXPECT_FALSE(showStandardList(bench)) << "nothing is there";
    EXPECT_EQ(decoderInfoText(state), u"");
    ASSERT_EQ(read("14"), ReadEnd::read);
    state.askNoMore.emplace();
    ASSERT_TRUE(showStandardList(bench));
    EXPECT_FALSE(state.askNoMore);
    EXPECT_EQ(lineAt(0), u"CV1  = 1");
    EXPECT_EQ(state.set.currentNumber, 0);
    EXPECT_TRUE(state.set.isOffline() && state.set.rawReply.empty());
    EXPECT_EQ(state.set.loadedData, u"KV04  offline | CV_Standart172.txt");
    describeAnew(bench);
    EXPECT_EQ(state.set.descriptionPath, "program/CV_Standart172.txt");
    setTexts(state.texts, {{701, u"processor"}, {702, u"description"}, {703, u"expert"}}, {});
    EXPECT_EQ(decoderInfoText(state), u"Decoder = KV04\r\nprocessor = ATmega168\r\n"
                                      u"description = program/CV_Standart172.txt\r\n"
                                      u"expert = program/CV_exp_v1.txt");
    state.set.profile.model = Model::xtModule;
    EXPECT_TRUE(decoderInfoText(state).starts_with(u"XT-Modul\r\nprocessor"));
}

TEST_F(ListsTest, BeforeADecoderIsKnownAndAmongFourVariantsThePersonIsAsked)
{
    for (const bool yes : {false, true}) {
        prompts.answer(yes);
        EXPECT_EQ(confirmOfflineList(bench), yes);
        EXPECT_EQ(journal.back(), "question no decoder yet\r\nvalues are defaults\r\ngo on?");
    }
    state.link.identified = true; // a KV04, whose type code is 0
    EXPECT_TRUE(confirmOfflineList(bench));
    numberEveryText(state.texts);
    addFile("CV_KV04_Bus_V3_08.txt", smallDescription("Standard KV04 172 Bus V3", "Wort "));
    addFile("CV_KV07_FW_V4.txt", smallDescription("Standard KV07 FW V4", "Wort "));
    prompts.choose(2);
    ASSERT_TRUE(showChosenOfflineList(bench, "mnu_KV04_Bus_08"));
    EXPECT_EQ(journal[journal.size() - 2], "choice c50: c51 *c52 c53 c54 c55");
    EXPECT_EQ(state.set.descriptionPath.filename(), "CV_KV04_Bus_V3_08.txt");
    prompts.choose(3);
    ASSERT_TRUE(showChosenOfflineList(bench, "mnu_KV07_FW"));
    EXPECT_EQ(journal[journal.size() - 2], "choice c50: c51 c56 c57 *c58 c59");
    EXPECT_EQ(state.set.descriptionPath.filename(), "CV_KV07_FW_V4.txt");
    for (const std::optional<std::size_t> chosen : {std::optional<std::size_t>(), {0}}) { // not in the folder
        prompts.choose(chosen);
        EXPECT_FALSE(showChosenOfflineList(bench, "mnu_KV07_FW"));
    }
    EXPECT_EQ(state.automaticVariant, 3);
    EXPECT_TRUE(showChosenOfflineList(bench, "mnu_kv07")); // without a question
    state.automaticVariant = 4;
    EXPECT_FALSE(showOfflineList(bench, "mnu_KV07_Bus") || showOfflineList(bench, "mnu_open"));
}

TEST_F(ListsTest, ExpertLinesStandBelowTheirCvInExpertModeOnly)
{
    state.expert = true;
    ASSERT_TRUE(showOfflineList(bench, "mnu_kv07"));
    EXPECT_EQ(lineAt(1) + lineAt(2), u"CV2  = 1    Expert: Tiefes Wissen");
    EXPECT_EQ(state.set.list[2].cv, 2);
    const auto step = positionOf(state.set.list, 97);
    ASSERT_TRUE(step);
    EXPECT_EQ(lineAt(*step) + lineAt(*step + 1), u"  1 = 1 of 168       Expert: eins");
    EXPECT_EQ(joined(journal), "message expert file: CV_exp_kv07.txt, list changed");
    // While the line is busy the list is left alone.
    for (const bool busy : {true, false}) {
        journal.clear();
        state.lineBusy = busy;
        setExpertMode(bench, false);
        EXPECT_EQ(journal.empty(), busy);
        EXPECT_EQ(state.set.expert.empty(), !busy);
        EXPECT_EQ(settings.values.at("Parameter/Expert"), u"0");
    }
    ASSERT_TRUE(showOfflineList(bench, "mnu_kv07"));
    EXPECT_EQ(lineAt(2), u"CV3  = 1");
    EXPECT_EQ(joined(journal), "list changed, list changed") << "without a message";
}

TEST_F(ListsTest, WhatAFileLacksOrHasWrongIsSaidOnceAndTheListShownAllTheSame)
{
    setTexts(state.texts, {{735, u"no expert file {1}"}, {736, u"no words {1}"}}, {});
    state.expert = true;
    files.content.erase("program/CV_exp_kv07.txt");
    ASSERT_TRUE(showOfflineList(bench, "mnu_kv07"));
    EXPECT_EQ(times("cannot open program/CV_exp_kv07.txt\r\ninstall again"), 1);
    addFile("CV_exp_kv07.txt", "Head\r\nnonsense;\r\n");
    addFile("CV_exp_v1.txt", "Head\r\n300;;x;;;;y;\r\n2;;zwei;;;;Tiefes Wissen;\r\n2;;noch;;;;mal;\r\n");
    for (int time = 0; time < 2; ++time) {
        state.language = LanguageCode::german;
        ASSERT_TRUE(showOfflineList(bench, "mnu_kv07"));
        EXPECT_EQ(state.set.list.size(), 176u);
        state.language = LanguageCode::french;
        ASSERT_TRUE(showOfflineList(bench, "mnu_KV04_neu"));
        EXPECT_EQ(expertName(2), u"zwei");
    }
    state.expert = false;
    state.language = LanguageCode::german;
    addFile(kv05File, "K\n1;1;a;\n1;1;b;\nx;1;c;\nEnde CV\n");
    for (int time = 0; time < 2; ++time)
        EXPECT_EQ(read("15"), ReadEnd::read);
    EXPECT_EQ(state.set.list.size(), 1u);
    addFile("CV_Standart172_v1_6.txt", "K\n1;1;a;\n\n3;1;c;\n");
    EXPECT_EQ(read("16"), ReadEnd::read);
    for (const std::string said :
         {"no expert file program/CV_exp_kv07.txt", "program/CV_exp_v1.txt: 2 lines, first 2",
          "no words program/CV_exp_v1_FR.txt", "no words program/CV_Standart172_FR.txt",
          "program/CV_Standart172_v1_5.txt: 2 lines, first 3",
          "program/CV_Standart172_v1_6.txt ends with line 4"})
        EXPECT_EQ(times(said), 1) << said;
}

TEST_F(ListsTest, AnotherLanguageChangesTheWordsWhereThereAreAnyAndNothingElse)
{
    describeAnew(bench);
    EXPECT_TRUE(journal.empty()) << "there is no list";
    addFile("CV_Standart_kv07en.txt", smallDescription("Standard KV07", "word "));
    for (const std::string language : {"", "_EN"}) { // what a decoder with firmware V1 has
        addFile("CV_exp_kv07_V1" + language + ".txt", "H\n6;;old" + language + ";\n");
        addFile("CV_exp_kv07" + language + ".txt", "H\n6;;new" + language + ";\n");
    }
    state.expert = true;
    state.set.profile.generation = Generation::v1;
    for (int time = 0; time < 2; ++time) {
        ASSERT_TRUE(showOfflineList(bench, "mnu_kv07"));
        EXPECT_EQ(state.set.descriptionPath, "program/CV_Standart_kv07.txt");
        EXPECT_EQ(expertName(6), u"old");
    }
    state.set.table.setValue(5, 99);
    state.set.currentNumber = 5;
    for (const auto language : {LanguageCode::english, LanguageCode::french}) { // French has no file here
        state.language = language;
        describeAnew(bench);
        EXPECT_EQ(lineAt(4), u"CV5  = 99  changed");
        EXPECT_EQ(state.set.list[4].name, u"word 5");
        EXPECT_EQ(expertName(6), u"old_EN");
        EXPECT_EQ(state.set.currentNumber, 5);
        EXPECT_EQ(state.set.descriptionPath, "program/CV_Standart_kv07en.txt");
    }
    storeLanguage(bench, LanguageCode::spanish);
    EXPECT_EQ(settings.values["Parameter/Language"], u"4");
    addFile("Franz_var.txt", "0001x\r\n");
    journal.clear();
    EXPECT_FALSE(useLanguage(bench, LanguageCode::french));
    EXPECT_EQ(joined(journal), "message File [Franz_mnu.txt] not available !\r\nSet language to "
                               "German.\r\n\r\nProgram will be closed, end program");
}

} // namespace karvo::test
