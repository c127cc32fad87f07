#include "support/test_bench.h"
#include "workbench/decoder_info.h"
#include "workbench/expert_mode.h"
#include "workbench/full_read.h"
#include "workbench/language_change.h"
#include "workbench/offline_list.h"

namespace karvo::test
{

class ExpertModeTest : public testing::Test, protected TestBench
{
protected:
    ExpertModeTest()
    {
        setTexts(state.texts,
                 {{603, u"expert file:"}, {701, u"processor"}, {702, u"description"}, {703, u"expert"}},
                 {{160, u"Expert"}});
        addFile("CV_Standart_kv07.txt", smallDescription("Standard KV07", "Wort "));
        addFile("CV_exp_kv07.txt", "Head\r\n2;;zwei;;;;Tiefes Wissen;\r\n97;;eins;\r\n");
        addFile("CV_Standart172.txt", smallDescription("Standard KV04", "Wort "));
        addFile("CV_exp_v1.txt", "Head\r\n2;;zwei;;;;Tiefes Wissen;\r\n3;;drei;\r\n");
        addFile("CV_exp_v1_EN.txt", "Head\r\n2;;two;;;;Deep knowledge;\r\n");
        state.expert = true;
    }
    void readKv04()
    {
        line.replyWith({'1', '4'});
        line.replyWith(blockOf(512));
        ASSERT_EQ(readIntoList(bench, ReadStarter::other), ReadEnd::read);
    }
    long times(const std::string& message) const
    {
        return std::count(journal.begin(), journal.end(), "message " + message);
    }
};

TEST_F(ExpertModeTest, LinesStandBelowTheirCvAndAreMarkedInExpertModeOnly)
{
    ASSERT_TRUE(showOfflineList(bench, "mnu_kv07"));
    const auto& list = state.set.list;
    EXPECT_EQ(list[1].text, u"CV2  = 1");
    EXPECT_EQ(list[2].text, u"    Expert: Tiefes Wissen");
    EXPECT_EQ(list[2].cv, 2);
    EXPECT_EQ(state.set.expert.at(2).knowledge, u"Tiefes Wissen");
    const auto step = positionOf(list, 97);
    ASSERT_TRUE(step);
    EXPECT_EQ(list[*step].text, u"  1 = 1 of 168   ");
    EXPECT_EQ(list[*step + 1].text, u"    Expert: eins");
    EXPECT_EQ(journal, (Journal{"message expert file: CV_exp_kv07.txt", "list changed"}));
    // While the line is busy the list is left alone.
    for (const bool busy : {true, false}) {
        journal.clear();
        state.lineBusy = busy;
        setExpertMode(bench, false);
        EXPECT_EQ(journal.empty(), busy);
        EXPECT_EQ(state.set.expert.empty(), !busy);
        EXPECT_EQ(settings.values.at("Parameter/Expert"), u"0");
    }
    journal.clear();
    ASSERT_TRUE(showOfflineList(bench, "mnu_kv07"));
    EXPECT_EQ(list[2].text, u"CV3  = 1");
    EXPECT_EQ(journal, (Journal{"list changed"}));
}

TEST_F(ExpertModeTest, AMissingExpertFileIsNamedAndOneWithFaultsOnceAndTheListShownAllTheSame)
{
    setTexts(state.texts,
             {{681, u"{1}: {2} lines, first {3}"}, {735, u"no expert file {1}"}, {736, u"no words {1}"}}, {});
    files.content.erase("program/CV_exp_kv07.txt");
    ASSERT_TRUE(showOfflineList(bench, "mnu_kv07"));
    EXPECT_EQ(journal[1], "message cannot open program/CV_exp_kv07.txt\r\ninstall again");
    EXPECT_EQ(state.set.list.size(), 176u);
    addFile("CV_exp_kv07.txt", "Head\r\nnonsense;\r\n");
    addFile("CV_exp_v1.txt", "Head\r\n300;;x;;;;y;\r\n2;;zwei;;;;Tiefes Wissen;\r\n2;;noch;;;;mal;\r\n");
    for (int time = 0; time < 2; ++time) {
        state.language = LanguageCode::german;
        ASSERT_TRUE(showOfflineList(bench, "mnu_kv07"));
        EXPECT_EQ(state.set.list.size(), 176u);
        state.language = LanguageCode::french;
        ASSERT_TRUE(showOfflineList(bench, "mnu_KV04_neu"));
        EXPECT_EQ(state.set.expert.at(2).name, u"zwei");
    }
    EXPECT_EQ(times("no expert file program/CV_exp_kv07.txt"), 1);
    EXPECT_EQ(times("program/CV_exp_v1.txt: 2 lines, first 2"), 1);
    EXPECT_EQ(times("no words program/CV_exp_v1_FR.txt"), 1);
    EXPECT_EQ(times("no words program/CV_Standart172_FR.txt"), 1);
}

TEST_F(ExpertModeTest, AFileOfAllLanguagesHasItsWordsFromTheCompanion)
{
    readKv04();
    EXPECT_EQ(state.set.expert.at(2).name, u"zwei");
    state.language = LanguageCode::english;
    describeAnew(bench);
    EXPECT_EQ(state.set.expert.at(2).name, u"two");
    EXPECT_EQ(state.set.expert.at(3).name, u"drei");
}

TEST_F(ExpertModeTest, TheListOfADecoderWithFirmwareV1KeepsItsExpertFile)
{
    addFile("CV_Standart_kv07en.txt", smallDescription("Standard KV07", "Wort "));
    for (const std::string language : {"", "_EN"}) {
        addFile("CV_exp_kv07_V1" + language + ".txt", "H\n5;;old" + language + ";\n");
        addFile("CV_exp_kv07" + language + ".txt", "H\n5;;new" + language + ";\n");
    }
    state.set.profile.generation = Generation::v1;
    for (int time = 0; time < 2; ++time) {
        ASSERT_TRUE(showOfflineList(bench, "mnu_kv07"));
        EXPECT_EQ(state.set.descriptionPath, "program/CV_Standart_kv07.txt");
        EXPECT_EQ(state.set.expert.at(5).name, u"old");
    }
    state.language = LanguageCode::english;
    describeAnew(bench);
    EXPECT_EQ(state.set.expert.at(5).name, u"old_EN");
    EXPECT_EQ(state.set.descriptionPath, "program/CV_Standart_kv07en.txt");
}

TEST_F(ExpertModeTest, StandardListReplacesWhatWasRead)
{
    EXPECT_FALSE(showStandardList(bench));
    readKv04();
    EXPECT_EQ(state.set.list[0].text, u"CV1  = 7");
    ASSERT_TRUE(showStandardList(bench));
    EXPECT_EQ(state.set.list[0].text, u"CV1  = 1");
    EXPECT_TRUE(state.set.isOffline());
    EXPECT_EQ(state.set.descriptionPath, "program/CV_Standart172.txt");
    describeAnew(bench);
    EXPECT_EQ(state.set.descriptionPath, "program/CV_Standart172.txt");
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

} // namespace karvo::test
