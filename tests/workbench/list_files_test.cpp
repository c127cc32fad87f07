#include "support/case_table.h"
#include "support/test_bench.h"
#include "workbench/change_value.h"
#include "workbench/full_read.h"
#include "workbench/language_change.h"
#include "workbench/list_files.h"
#include "workbench/offline_list.h"

namespace karvo::test
{

const std::string kv07List = "Standard KV07 F5*5\r\n1;42;Adresse;0;255;3;\r\n2;5;$;0;255;5;\r\n"
                             "Ende CV\r\nATmega328\r\nFirmware_Version: 5\r\nEnde FS\r\n";

class ListFilesTest : public testing::Test, protected TestBench
{
protected:
    ListFilesTest()
    {
        setCaption(state.texts, 161, u"changed");
        for (int number = 710; number <= 724; ++number)
            setText(state.texts, number, textFromNumber(number) + u" {1} {2}");
        setTexts(state.texts, {{448, u"448 {1} {2}"}, {726, u"replace {1}?"}}, {});
        addFile("CV_Standart_kv07.txt", smallDescription("Standard KV07", "Wort "));
        addFile("CV_Standart_kv07en.txt", smallDescription("Standard KV07", "word "));
        state.userFolders = {{"lists", {}}, {"fs", {}}, {"abs", {}}};
    }
    bool open(const std::string& content)
    {
        files.content["lists/bus.kvr"] = bytesOf(content);
        return openList(bench, "lists/bus.kvr");
    }
    void openAndChange(const std::string& content = kv07List)
    {
        ASSERT_TRUE(open(content));
        changeValue(bench, 1, 43);
        journal.clear();
    }
    std::string saved(const std::string& name)
    {
        return std::string(files.content[name].begin(), files.content[name].end());
    }
};

TEST_F(ListFilesTest, AnOpenedListIsTheSetOnTheBench)
{
    state.set.currentNumber = 29;
    state.set.rawReply = Bytes(513, 5);
    state.askNoMore.emplace();
    ASSERT_TRUE(open(kv07List));
    const CvSet& set = state.set;
    EXPECT_EQ(set.list[0].text, u"CV1  = 42");
    EXPECT_EQ(set.list.size(), 2u);
    EXPECT_EQ(set.modelCode, u"07");
    EXPECT_TRUE(set.rawReply.empty() && set.currentNumber == 0 && !state.askNoMore);
    EXPECT_TRUE(set.isFromFile() && set.isOffline() && !set.unsavedChanges);
    EXPECT_EQ(set.listPath, "lists/bus.kvr");
    EXPECT_EQ(set.descriptionPath, "program/CV_Standart_kv07_F5.txt");
    EXPECT_EQ(set.loadedData, u"KV07  Firmware = 5 | bus.kvr");
    EXPECT_EQ(joined(journal), "list changed");
}

TEST_F(ListFilesTest, HeaderAndTrailerTellWhichDecoderItIsFor)
{
    for (const auto& [header, trailer, told] : casesOf<3>("workbench/list_models.txt")) {
        ASSERT_TRUE(
            open(header + "\r\n1;3;a;\r\n72;2;b;\r\n99;7;c;\r\nEnde CV\r\n" + trailer + "Ende FS\r\n"));
        const DecoderProfile& profile = state.set.profile;
        EXPECT_EQ(std::to_string(profile.firmwareVersion) + " " + std::to_string(profile.firmwareLevel) +
                      " " + state.set.expertPath.filename().string(),
                  told)
            << header;
        EXPECT_EQ(state.set.list.back().text == u"CV99 = 0", profile.model == Model::xtModule) << header;
    }
}

TEST_F(ListFilesTest, ARefusalNamesFileAndLineAndLeavesTheSet)
{
    openAndChange();
    const std::pair<std::string, std::string> cases[] = {
        {"Standard KV07*5\r\nEnde CV\r\n", "710 lists/other.kvr 2"},
        {"CV-Nummer;CV-Wert;CV-Text\r\n1;3;x;\r\n", "712 lists/other.kvr {2}"},
        {"Standard KV07\r\n1;3;x;\r\n" + std::string(600, '\n'), "711 lists/other.kvr 601"},
        {"Standard KV07\r\n1;3;x;\r\n" + std::string(textFileLimit, ' '), "448 lists/other.kvr 4"},
    };
    for (const auto& [content, message] : cases) {
        files.content["lists/other.kvr"] = bytesOf(content);
        EXPECT_FALSE(openList(bench, "lists/other.kvr"));
        EXPECT_EQ(journal.back(), "message " + message);
    }
    EXPECT_FALSE(openList(bench, "lists/none.kvr"));
    EXPECT_EQ(journal.back(), "message cannot open lists/none.kvr\r\ninstall again");
    EXPECT_EQ(journal.size(), std::size(cases) + 1) << "one message each";
    state.lineBusy = true;
    EXPECT_FALSE(openList(bench, "lists/bus.kvr"));
    EXPECT_EQ(state.set.table.value(1), 43);
    EXPECT_EQ(state.set.listPath, "lists/bus.kvr");
    EXPECT_TRUE(state.set.unsavedChanges);
}

TEST_F(ListFilesTest, WhatIsNotSoundIsToldLineByLine)
{
    std::string content = "Standard KV07*5\r\n1;3;a;\r\n300;1;x;\r\n2;abc;x;\r\n2;4;x;\r\n";
    for (int number = 6; number <= 20; ++number)
        content += "Notiz\r\n";
    ASSERT_TRUE(open(content));
    EXPECT_EQ(journal.back(), "message 713 lists/bus.kvr {2}\r\n"
                              "714 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, ... \r\n"
                              "715 3 (300) \r\n716 5 \r\n717 4 \r\n718 20 ");
    ASSERT_TRUE(open("Standard KV07*5\r\n1;3;a;\r\nEnde CV\r\nATmega644\r\nEnde FS\r\n"));
    EXPECT_EQ(journal.back(), "message 713 lists/bus.kvr {2}\r\n719 4 ATmega644");
    EXPECT_EQ(state.set.fileProcessor, std::nullopt);
    EXPECT_EQ(state.set.profile.processor, Processor::atmega328);
}

TEST_F(ListFilesTest, AnotherLanguageChangesTheWordsAndKeepsTheFilesLines)
{
    openAndChange("Standard KV07*5\r\n1;42;Adresse;0;255;3;\r\nNotiz\r\nEnde CV\r\nfremd\r\nEnde FS\r\n");
    state.language = LanguageCode::english;
    describeAnew(bench);
    EXPECT_EQ(state.set.list.at(0).text, u"CV1  = 43  changed");
    EXPECT_TRUE(state.set.unsavedChanges && state.set.isFromFile());
    EXPECT_EQ(state.set.descriptionPath, "program/CV_Standart_kv07en.txt");
    ASSERT_TRUE(saveList(bench, u"save"));
    EXPECT_EQ(saved("lists/bus.kvr"),
              "Standard KV07*5\r\n1;43;word 1;0;255;3;\r\nNotiz\r\nEnde CV\r\nfremd\r\nEnde FS\r\n");
}

TEST_F(ListFilesTest, SavesUnderTheCurrentNameOrAsksForOne)
{
    EXPECT_FALSE(saveListAs(bench, "lists/new.kvr") || saveListUnderNewName(bench, u"save as"));
    EXPECT_EQ(joined(journal), "message 721 {1} {2}, message 721 {1} {2}");
    openAndChange();
    ASSERT_TRUE(saveList(bench, u"save"));
    EXPECT_NE(saved("lists/bus.kvr").find("\r\n1;43;Adresse;0;255;3;\r\n2;5;$;"), std::string::npos);
    EXPECT_FALSE(state.set.unsavedChanges);
    EXPECT_EQ(state.set.list[0].text, u"CV1  = 43  changed"); // until it is written
    ASSERT_TRUE(showOfflineList(bench, "mnu_kv07"));          // another vehicle
    journal.clear();
    const std::pair<const char*, const char*> chosen[] = {{"lists/my bus", "lists/my bus.kvr"},
                                                          {"lists/Bus 1.5", "lists/Bus 1.5.kvr"},
                                                          {"lists/BUS.KVR", "lists/BUS.KVR"}};
    for (const auto& [typed, path] : chosen) {
        prompts.chooseFile(typed);
        ASSERT_TRUE(state.set.listPath.empty() ? saveList(bench, u"save")
                                               : saveListUnderNewName(bench, u"save as"));
        EXPECT_EQ(state.set.listPath, path);
        EXPECT_TRUE(saved(path).starts_with("Standard KV07*0\r\n1;1;Wort 1;0;255;1;"));
    }
    EXPECT_EQ(joined(journal),
              "save *.kvr in lists: , list changed, save *.kvr in lists: my bus.kvr, list changed, "
              "save *.kvr in lists: Bus 1.5.kvr, list changed");
    EXPECT_TRUE(files.folders.count("lists"));
    files.saves = 0;
    prompts.answer(false);
    EXPECT_FALSE(saveListAs(bench, "lists/Bus 1.5"));
    EXPECT_EQ(journal.back(), "question replace lists/Bus 1.5.kvr?")
        << "another name than the one that was chosen";
    state.set.listPath.clear();
    prompts.chooseFile(std::nullopt);
    EXPECT_FALSE(saveList(bench, u"save"));
    EXPECT_EQ(files.saves, 0);
}

TEST_F(ListFilesTest, AListWithNumbersAndValuesAloneHasTheModelsLimits)
{
    const std::string content =
        "Standard KV07*3\r\n1;42;Mein Bus;\r\n2;5;x;1;9;5;\r\nEnde CV\r\nATmega328\r\nEnde FS\r\n";
    addFile("CV_Standart_kv07_F3.txt", smallDescription("Standard KV07 F3", "Wort "));
    ASSERT_TRUE(open(content));
    const CvTable& table = state.set.table;
    EXPECT_EQ(table.at(1, Column::upperLimit) + u" " + table.at(1, Column::factoryValue), u"255 1");
    EXPECT_EQ(table.at(1, Column::text), u"Mein Bus");
    EXPECT_EQ(table.at(2, Column::upperLimit), u"9");
    ASSERT_TRUE(saveList(bench, u"save"));
    EXPECT_EQ(saved("lists/bus.kvr"), content);
    files.content.erase(state.set.descriptionPath);
    journal.clear();
    ASSERT_TRUE(openList(bench, "lists/bus.kvr"));
    EXPECT_EQ(joined(journal), "list changed");
}

TEST_F(ListFilesTest, AReadVehicleIsNotSavedOverAnothersFileAndKeepsTheNameOfItsWords)
{
    ASSERT_TRUE(open(kv07List));
    addFile("CV_Standart172.txt", smallDescription("Standard KV04 172", "Wort "));
    line.replyWith({'1', '4'});
    line.replyWith(blockOf(512));
    ASSERT_EQ(readIntoList(bench, ReadStarter::other), ReadEnd::read);
    EXPECT_TRUE(state.set.listPath.empty());
    ASSERT_TRUE(saveListAs(bench, "lists/read.kvr"));
    EXPECT_EQ(state.set.loadedData, u"KV04  Firmware = 49  Sublevel = 152 | CV_Standart172.txt");
    EXPECT_TRUE(saved("lists/read.kvr")
                    .ends_with("\r\nATmega168\r\nFirmware_Version: 49\r\nAnfang FS\r\n"
                               "FS1 = 3\r\nEnde FS\r\n"));
}

TEST_F(ListFilesTest, AsksBeforeChangesAreLost)
{
    EXPECT_TRUE(mayReplaceSet(bench));
    openAndChange();
    prompts.answerSaveChanges(SaveChoice::cancel);
    EXPECT_FALSE(openChosenList(bench, u"open"));
    EXPECT_EQ(joined(journal), "save changes 722 {1} {2}");
    prompts.answerSaveChanges(SaveChoice::discard);
    prompts.chooseFile(std::nullopt);
    EXPECT_FALSE(openChosenList(bench, u"open"));
    // What can not be saved is told and not given up.
    files.saveFailure = u"disk full";
    prompts.answerSaveChanges(SaveChoice::save);
    EXPECT_FALSE(mayReplaceSet(bench));
    EXPECT_EQ(journal.back(), "message 720 lists/bus.kvr disk full");
    EXPECT_FALSE(saveListAs(bench, "lists/new.kvr"));
    EXPECT_EQ(state.set.listPath, "lists/bus.kvr");
    EXPECT_TRUE(state.set.unsavedChanges);
    files.saveFailure.reset();
    prompts.answerSaveChanges(SaveChoice::save);
    prompts.chooseFile("lists/bus.kvr");
    EXPECT_TRUE(openChosenList(bench, u"open"));
    EXPECT_EQ(state.set.table.value(1), 43);
}

TEST_F(ListFilesTest, BackupsHaveADatedNameOfTheirOwn)
{
    ASSERT_TRUE(open(kv07List));
    const auto keep = [&](const UserFolders& folders) {
        return keepBackup(files, FixedClock(), folders, state.set);
    };
    for (const auto* const name :
         {"lists/KARVO KV07 2026-11-22 09-05-07.kvr", "lists/KARVO KV07 2026-11-22 09-05-07 (2).kvr"}) {
        const auto kept = keep(state.userFolders);
        EXPECT_EQ(kept.trouble, std::nullopt);
        EXPECT_EQ(kept.file, name);
        EXPECT_EQ(saved(name), kv07List);
    }
    EXPECT_EQ(state.set.listPath, "lists/bus.kvr");
    files.saveFailure = u"disk full";
    EXPECT_EQ(keep(state.userFolders).trouble, u"disk full");
    files.saveFailure.reset();
    files.readOnly.insert("");
    EXPECT_EQ(keep({{"none", {}}, {}, {}}).trouble, u"read-only");
}

} // namespace karvo::test
