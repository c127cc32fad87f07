#include "cvdata/changes.h"
#include "support/test_bench.h"
#include "workbench/describe.h"
#include "workbench/full_read.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using test::blockOf;
using test::Journal;
using test::smallDescription;
using test::TestBench;

class FullReadTest : public testing::Test, protected TestBench
{
protected:
    void answerAs(Bytes identification, std::size_t dataBytes)
    {
        line.replyWith(identification);
        line.replyWith(blockOf(dataBytes));
    }
    std::optional<ReadEnd> read() { return readIntoList(bench, ReadStarter::other); }
};

TEST_F(FullReadTest, TheListShowsTheBlockInTheDecodersWords)
{
    addFile("CV_Standart_kv07.txt", smallDescription("Standard KV07", "Wort "));
    answerAs({'2', '7'}, 1024);
    ASSERT_EQ(read(), ReadEnd::read);
    // 1024 bytes: n * 7 + n / 256; CV7 is 49, so the current generation.
    EXPECT_EQ(state.set.list[0].text, u"CV1  = 7");
    EXPECT_EQ(state.set.list[0].name, u"Wort 1");
    EXPECT_EQ(state.set.list[69].text, u"  1 = 167 of 168   "); // CV97
    EXPECT_EQ(state.set.list.size(), 176u + 1u);                // and the battery
    EXPECT_EQ(state.set.table.at(153, Column::value), u"");
    EXPECT_EQ(state.set.table.value(176), (176 * 7) % 256);
    EXPECT_EQ(state.set.profile.firmwareVersion, 49);
    EXPECT_EQ(state.set.modelCode, u"07");
    EXPECT_EQ(state.set.loadedData, u"KV07  Firmware = 49  Sublevel = 152 | CV_Standart_kv07.txt");
    EXPECT_EQ(state.set.rawReply.size(), 1025u);
    const Journal end(journal.end() - 4, journal.end());
    EXPECT_EQ(end, (Journal{"no hourglass", "list changed", "status 176 CVs", "idle"}));
}

TEST_F(FullReadTest, AnOldKv04IsCalledByItsMessageAndHasItsCompanionsWords)
{
    state.language = LanguageCode::english;
    Bytes block(513, 0);
    block[6] = 1;
    block[512] = 1;
    addFile("CV_Standart180.txt", smallDescription("Standard KV04", "Wort "));
    addFile("CV_Standart180_EN.txt", smallDescription("Standard KV04", "word ", 3));
    line.replyWith({'0', '4'});
    line.replyWith(block);
    ASSERT_EQ(read(), ReadEnd::read);
    EXPECT_EQ(state.set.list[2].name, u"word 3");
    EXPECT_EQ(state.set.list[3].name, u"Wort 4"); // the companion does not describe it
    EXPECT_EQ(state.set.list[3].text, u"CV4  = 0");
    EXPECT_EQ(state.set.descriptionPath, state.programFolder / "CV_Standart180.txt");
    EXPECT_TRUE(state.set.loadedData.starts_with(u"old KV04  Firmware = 1"));
}

TEST_F(FullReadTest, WithoutItsDescriptionTheOldListStays)
{
    addFile("CV_Standart_kv07.txt", smallDescription("Standard KV07", "Wort "));
    answerAs({'2', '7'}, 1024);
    ASSERT_EQ(read(), ReadEnd::read);
    const auto before = state.set.list.size();
    answerAs({'1', '5'}, 512);
    EXPECT_EQ(read(), std::nullopt);
    EXPECT_EQ(state.set.list.size(), before);
    EXPECT_EQ(state.set.modelCode, u"07");
    EXPECT_EQ(journal[journal.size() - 2],
              "message cannot open program/CV_Standart172_v1_5.txt\r\ninstall again");
}

TEST_F(FullReadTest, WhatIsNoDescriptionOrHasFaultsIsSaidOnce)
{
    addFile("CV_Standart172_v1_5.txt", "nonsense");
    answerAs({'1', '5'}, 512);
    EXPECT_EQ(read(), std::nullopt);
    EXPECT_TRUE(state.set.isEmpty());
    EXPECT_EQ(journal[journal.size() - 2], "message no description: program/CV_Standart172_v1_5.txt");

    addFile("CV_Standart172_v1_5.txt", "K\n1;1;a;\n1;1;b;\nx;1;c;\nEnde CV\n");
    for (int time = 0; time < 2; ++time) {
        answerAs({'1', '5'}, 512);
        EXPECT_EQ(read(), ReadEnd::read);
    }
    EXPECT_EQ(state.set.list.size(), 1u);
    EXPECT_EQ(std::count(journal.begin(), journal.end(),
                         "message program/CV_Standart172_v1_5.txt: 2 lines left out, first 3"),
              1);

    test::setText(state.texts, 615, u"{1} ends with line {2}");
    addFile("CV_Standart172_v1_6.txt", "K\n1;1;a;\n\n3;1;c;\n");
    answerAs({'1', '6'}, 512);
    EXPECT_EQ(read(), ReadEnd::read);
    EXPECT_EQ(std::count(journal.begin(), journal.end(),
                         "message program/CV_Standart172_v1_6.txt ends with line 4"),
              1);
}

TEST_F(FullReadTest, TheSameVehicleKeepsItsChosenCvAndAnyOtherBeginsWithTheFirst)
{
    addFile("CV_Standart172_v1_5.txt", smallDescription("Standard KV05", "Wort "));
    addFile("CV_Standart172_v1_6.txt", smallDescription("Standard KV06", "Wort "));
    const struct {
        const char* what;
        Bytes identification;
        int cv; // that this one of the block holds another value
        std::function<void()> before;
        int chosen;
    } cases[] = {
        {"once more", {'1', '5'}, 0, [] {}, 40},
        {"another setting", {'1', '5'}, 52, [] {}, 40},
        {"another address", {'1', '5'}, 1, [] {}, 1},
        {"the address that was written",
         {'1', '5'},
         1,
         [this] {
             state.set.table.setValue(1, 8);
             markWritten(state.set, 1);
         },
         40},
        {"another model", {'1', '6'}, 0, [] {}, 1},
        {"an offline list before", {'1', '5'}, 0, [this] { state.set.offlineItem = "mnu_KV05"; }, 1},
    };
    for (const auto& c : cases) {
        answerAs({'1', '5'}, 512);
        ASSERT_EQ(read(), ReadEnd::read);
        state.set.currentNumber = 40;
        c.before();
        Bytes block = blockOf(512);
        if (c.cv != 0) {
            ++block[static_cast<std::size_t>(c.cv) - 1];
            ++block.back();
        }
        line.replyWith(c.identification);
        line.replyWith(block);
        ASSERT_EQ(read(), ReadEnd::read) << c.what;
        EXPECT_EQ(state.set.currentNumber, c.chosen) << c.what;
        clearDisplay(bench);
    }
}

TEST_F(FullReadTest, ASecondOperationIsRefused)
{
    state.lineBusy = true;
    EXPECT_EQ(read(), std::nullopt);
    EXPECT_TRUE(journal.empty());
    EXPECT_TRUE(state.lineBusy);
}

TEST_F(FullReadTest, AFailedReadLeavesTheListAndFreesTheLine)
{
    addFile("CV_Standart172_v1_5.txt", smallDescription("Standard KV05", "Wort "));
    answerAs({'1', '5'}, 512);
    ASSERT_EQ(read(), ReadEnd::read);
    const auto list = state.set.list.size();
    EXPECT_EQ(read(), ReadEnd::noReply);
    EXPECT_EQ(state.set.list.size(), list);
    EXPECT_FALSE(state.lineBusy);
    EXPECT_EQ(journal.back(), "idle");
}

TEST_F(FullReadTest, TheButtonsFlagLastsAsLongAsItsRead)
{
    bool during = false;
    class Watch : public test::RecordingView
    {
    public:
        Watch(Journal& log, ProgramState& watched, bool& seen)
            : RecordingView(log), watched_(watched), seen_(seen)
        {
        }
        void listChanged() override { seen_ = watched_.readStartedByButton; }

    private:
        ProgramState& watched_;
        bool& seen_;
    } watch(journal, state, during);
    Workbench watched{state, line, line, prompts, watch, files, settings};
    addFile("CV_Standart172_v1_5.txt", smallDescription("Standard KV05", "Wort "));
    answerAs({'1', '5'}, 512);
    readIntoList(watched, ReadStarter::button);
    EXPECT_TRUE(during);
    EXPECT_FALSE(state.readStartedByButton);
}

TEST_F(FullReadTest, ClearingTheDisplayKeepsTheDecoderKnown)
{
    addFile("CV_Standart172_v1_5.txt", smallDescription("Standard KV05", "Wort "));
    answerAs({'1', '5'}, 512);
    ASSERT_EQ(read(), ReadEnd::read);
    clearDisplay(bench);
    EXPECT_TRUE(state.set.isEmpty());
    EXPECT_TRUE(state.link.identified);
    EXPECT_EQ(journal.back(), "list changed");
}

} // namespace
} // namespace karvo
