#include "support/test_bench.h"
#include "workbench/decoder_info.h"
#include "workbench/expert_mode.h"
#include "workbench/full_read.h"
#include "workbench/language_change.h"
#include "workbench/offline_list.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using test::blockOf;
using test::smallDescription;

class ExpertModeTest : public testing::Test, protected test::TestBench
{
protected:
    ExpertModeTest()
    {
        test::setText(state.texts, 603, u"expert file:");
        test::setText(state.texts, 701, u"processor");
        test::setText(state.texts, 702, u"description");
        test::setText(state.texts, 703, u"expert");
        test::setCaption(state.texts, 160, u"Expert");
        addFile("CV_Standart_kv07.txt", smallDescription("Standard KV07", "Wort "));
        addFile("CV_exp_kv07.txt", "Head\r\n2;;zwei;;;;Tiefes Wissen;\r\n97;;eins;\r\n");
        addFile("CV_Standart172.txt", smallDescription("Standard KV04", "Wort "));
        addFile("CV_exp_v1.txt", "Head\r\n2;;zwei;;;;Tiefes Wissen;\r\n3;;drei;\r\n");
        addFile("CV_exp_v1_EN.txt", "Head\r\n2;;two;;;;Deep knowledge;\r\n");
        state.expert = true;
    }
};

TEST_F(ExpertModeTest, LinesStandBelowTheirCvAndAreMarked)
{
    ASSERT_TRUE(showOfflineList(bench, "mnu_kv07"));
    EXPECT_EQ(state.set.list[1].text, u"CV2  = 1");
    EXPECT_EQ(state.set.list[2].text, u"    Expert: Tiefes Wissen");
    EXPECT_EQ(state.set.list[2].cv, 2);
    EXPECT_EQ(state.set.expert.at(2).knowledge, u"Tiefes Wissen");
    const auto step = positionOf(state.set.list, 97);
    ASSERT_TRUE(step);
    EXPECT_EQ(state.set.list[*step].text, u"  1 = 1 of 168   ");
    EXPECT_EQ(state.set.list[*step + 1].text, u"    Expert: eins");
    EXPECT_EQ(journal[0], "message expert file: CV_exp_kv07.txt");
}

TEST_F(ExpertModeTest, WithoutExpertModeNothingIsSaidOrShown)
{
    state.expert = false;
    ASSERT_TRUE(showOfflineList(bench, "mnu_kv07"));
    EXPECT_EQ(state.set.list[2].text, u"CV3  = 1");
    EXPECT_TRUE(state.set.expert.empty());
    EXPECT_EQ(journal, (test::Journal{"list changed"}));
}

TEST_F(ExpertModeTest, SwitchedWhileTheLineIsBusyItLeavesTheListAlone)
{
    ASSERT_TRUE(showOfflineList(bench, "mnu_kv07"));
    for (const bool busy : {true, false}) {
        journal.clear();
        state.lineBusy = busy;
        setExpertMode(bench, false);
        EXPECT_EQ(journal.empty(), busy);
        EXPECT_EQ(state.set.expert.empty(), !busy);
        EXPECT_EQ(settings.values.at("Parameter/Expert"), u"0");
    }
}

TEST_F(ExpertModeTest, AMissingExpertFileIsNamedAndTheListShownAllTheSame)
{
    files.content.erase(state.programFolder / "CV_exp_kv07.txt");
    ASSERT_TRUE(showOfflineList(bench, "mnu_kv07"));
    EXPECT_EQ(journal[1], "message cannot open program/CV_exp_kv07.txt\r\ninstall again");
    EXPECT_EQ(state.set.list.size(), 176u);
}

TEST_F(ExpertModeTest, WhatIsNoExpertFileOrHasFaultsIsSaidOnce)
{
    test::setText(state.texts, 681, u"{1}: {2} lines, first {3}");
    test::setText(state.texts, 735, u"no expert file {1}");
    test::setText(state.texts, 736, u"no words {1}");
    addFile("CV_exp_kv07.txt", "Head\r\nnonsense;\r\n");
    for (int time = 0; time < 2; ++time)
        ASSERT_TRUE(showOfflineList(bench, "mnu_kv07"));
    EXPECT_EQ(std::count(journal.begin(), journal.end(), "message no expert file program/CV_exp_kv07.txt"),
              1);
    EXPECT_EQ(state.set.list.size(), 176u);

    addFile("CV_exp_v1.txt", "Head\r\n300;;x;;;;y;\r\n2;;zwei;;;;Tiefes Wissen;\r\n2;;noch;;;;mal;\r\n");
    state.language = LanguageCode::french;
    journal.clear();
    for (int time = 0; time < 2; ++time)
        ASSERT_TRUE(showOfflineList(bench, "mnu_KV04_neu"));
    EXPECT_EQ(state.set.expert.at(2).name, u"zwei");
    const auto times = [&](const std::string& text) {
        return std::count(journal.begin(), journal.end(), "message " + text);
    };
    EXPECT_EQ(times("program/CV_exp_v1.txt: 2 lines, first 2"), 1);
    EXPECT_EQ(times("no words program/CV_exp_v1_FR.txt"), 1);
    EXPECT_EQ(times("no words program/CV_Standart172_FR.txt"), 1);
}

TEST_F(ExpertModeTest, AFileOfAllLanguagesHasItsWordsFromTheCompanion)
{
    line.replyWith({'1', '4'});
    line.replyWith(blockOf(512));
    ASSERT_EQ(readIntoList(bench, ReadStarter::other), ReadEnd::read);
    EXPECT_EQ(state.set.expert.at(2).name, u"zwei");
    state.language = LanguageCode::english;
    describeAnew(bench);
    EXPECT_EQ(state.set.expert.at(2).name, u"two");
    EXPECT_EQ(state.set.expert.at(3).name, u"drei");
}

TEST_F(ExpertModeTest, TheListOfADecoderWithFirmwareV1KeepsItsExpertFile)
{
    for (const std::string language : {"", "en"})
        addFile("CV_Standart_kv07" + language + ".txt", smallDescription("Standard KV07", "Wort "));
    for (const std::string language : {"", "_EN"}) {
        addFile("CV_exp_kv07_V1" + language + ".txt", "H\n5;;old" + language + ";\n");
        addFile("CV_exp_kv07" + language + ".txt", "H\n5;;new" + language + ";\n");
    }
    state.set.profile.generation = Generation::v1;
    for (int time = 0; time < 2; ++time) {
        ASSERT_TRUE(showOfflineList(bench, "mnu_kv07"));
        EXPECT_EQ(state.set.descriptionPath, state.programFolder / "CV_Standart_kv07.txt");
        EXPECT_EQ(state.set.expert.at(5).name, u"old");
    }
    state.language = LanguageCode::english;
    describeAnew(bench);
    EXPECT_EQ(state.set.expert.at(5).name, u"old_EN");
    EXPECT_EQ(state.set.descriptionPath, state.programFolder / "CV_Standart_kv07en.txt");
}

TEST_F(ExpertModeTest, StandardListReplacesWhatWasRead)
{
    EXPECT_FALSE(showStandardList(bench));
    line.replyWith({'1', '4'});
    line.replyWith(blockOf(512));
    ASSERT_EQ(readIntoList(bench, ReadStarter::other), ReadEnd::read);
    EXPECT_EQ(state.set.list[0].text, u"CV1  = 7");
    ASSERT_TRUE(showStandardList(bench));
    EXPECT_EQ(state.set.list[0].text, u"CV1  = 1");
    EXPECT_TRUE(state.set.isOffline());
    EXPECT_EQ(state.set.descriptionPath, state.programFolder / "CV_Standart172.txt");
    describeAnew(bench);
    EXPECT_EQ(state.set.descriptionPath, state.programFolder / "CV_Standart172.txt");
    state.lineBusy = true;
    EXPECT_FALSE(showStandardList(bench));
}

TEST_F(ExpertModeTest, DecoderInfoNamesModelProcessorAndFiles)
{
    EXPECT_EQ(decoderInfoText(state), u"");
    ASSERT_TRUE(showOfflineList(bench, "mnu_KV04_neu"));
    EXPECT_EQ(decoderInfoText(state), u"Decoder = KV04\r\nprocessor = ATmega168\r\n"
                                      u"description = program/CV_Standart172.txt\r\n"
                                      u"expert = program/CV_exp_v1.txt");
    addFile("CV_Standart_receiver.txt", smallDescription("Standard KV05-XT", "Wort "));
    addFile("CV_exp_receiver.txt", "H\n1;;a;\n");
    ASSERT_TRUE(showOfflineList(bench, "mnu_karvo_xt_list"));
    EXPECT_TRUE(decoderInfoText(state).starts_with(u"XT-Modul\r\nprocessor = ATmega328\r\n"));
}

} // namespace
} // namespace karvo
