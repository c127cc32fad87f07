#include "cvdata/changes.h"
#include "support/test_bench.h"
#include "workbench/describe.h"
#include "workbench/full_read.h"

namespace karvo::test
{

const Bytes kv05 = {'1', '5'};
const Bytes kv06 = {'1', '6'};
const Bytes kv07 = {'2', '7'};

class FullReadTest : public testing::Test, protected TestBench
{
protected:
    FullReadTest()
    {
        addFile("CV_Standart_kv07.txt", smallDescription("Standard KV07", "Wort "));
        addFile("CV_Standart172_v1_5.txt", smallDescription("Standard KV05", "Wort "));
        addFile("CV_Standart172_v1_6.txt", smallDescription("Standard KV06", "Wort "));
    }
    std::optional<ReadEnd> read(const Bytes& identification, const Bytes& block = blockOf(512))
    {
        line.replyWith(identification);
        line.replyWith(block);
        return readIntoList(bench, ReadStarter::other);
    }
    long times(const std::string& message) const
    {
        return std::count(journal.begin(), journal.end(), "message " + message);
    }
};

TEST_F(FullReadTest, TheListShowsTheBlockInTheDecodersWords)
{
    ASSERT_EQ(read(kv07, blockOf(1024)), ReadEnd::read);
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
    EXPECT_EQ(Journal(journal.end() - 4, journal.end()),
              (Journal{"no hourglass", "list changed", "status 176 CVs", "idle"}));
    clearDisplay(bench);
    EXPECT_TRUE(state.set.isEmpty());
    EXPECT_TRUE(state.link.identified) << "the decoder stays known";
    EXPECT_EQ(journal.back(), "list changed");
}

TEST_F(FullReadTest, AnOldKv04IsCalledByItsMessageAndHasItsCompanionsWords)
{
    state.language = LanguageCode::english;
    Bytes block(513, 0);
    block[6] = 1;
    block[512] = 1;
    addFile("CV_Standart180.txt", smallDescription("Standard KV04", "Wort "));
    addFile("CV_Standart180_EN.txt", smallDescription("Standard KV04", "word ", 3));
    ASSERT_EQ(read({'0', '4'}, block), ReadEnd::read);
    EXPECT_EQ(state.set.list[2].name, u"word 3");
    EXPECT_EQ(state.set.list[3].name, u"Wort 4"); // the companion does not describe it
    EXPECT_EQ(state.set.list[3].text, u"CV4  = 0");
    EXPECT_EQ(state.set.descriptionPath, "program/CV_Standart180.txt");
    EXPECT_TRUE(state.set.loadedData.starts_with(u"old KV04  Firmware = 1"));
}

TEST_F(FullReadTest, WithoutABlockOrItsDescriptionTheOldListStaysAndTheLineIsFree)
{
    state.askNoMore.emplace();
    ASSERT_EQ(read(kv07, blockOf(1024)), ReadEnd::read);
    EXPECT_FALSE(state.askNoMore) << "another vehicle";
    state.askNoMore.emplace();
    ASSERT_EQ(read(kv07, blockOf(1024)), ReadEnd::read);
    EXPECT_TRUE(state.askNoMore);
    files.content.erase("program/CV_Standart172_v1_5.txt");
    EXPECT_EQ(read(kv05), std::nullopt);
    EXPECT_EQ(journal[journal.size() - 2],
              "message cannot open program/CV_Standart172_v1_5.txt\r\ninstall again");
    EXPECT_EQ(readIntoList(bench, ReadStarter::other), ReadEnd::noReply);
    EXPECT_EQ(state.set.list.size(), 177u);
    EXPECT_EQ(state.set.modelCode, u"07");
    EXPECT_FALSE(state.lineBusy);
    EXPECT_EQ(journal.back(), "idle");
    journal.clear();
    state.lineBusy = true;
    EXPECT_EQ(readIntoList(bench, ReadStarter::other), std::nullopt) << "a second operation";
    EXPECT_TRUE(journal.empty());
    EXPECT_TRUE(state.lineBusy);
}

TEST_F(FullReadTest, WhatIsNoDescriptionOrHasFaultsIsSaidOnce)
{
    setText(state.texts, 615, u"{1} ends with line {2}");
    const std::string file = "program/CV_Standart172_v1_5.txt";
    addFile("CV_Standart172_v1_5.txt", "nonsense");
    EXPECT_EQ(read(kv05), std::nullopt);
    EXPECT_TRUE(state.set.isEmpty());
    EXPECT_EQ(journal[journal.size() - 2], "message no description: " + file);

    addFile("CV_Standart172_v1_5.txt", "K\n1;1;a;\n1;1;b;\nx;1;c;\nEnde CV\n");
    EXPECT_EQ(read(kv05), ReadEnd::read);
    EXPECT_EQ(read(kv05), ReadEnd::read);
    EXPECT_EQ(state.set.list.size(), 1u);
    EXPECT_EQ(times(file + ": 2 lines left out, first 3"), 1);

    addFile("CV_Standart172_v1_6.txt", "K\n1;1;a;\n\n3;1;c;\n");
    EXPECT_EQ(read(kv06), ReadEnd::read);
    EXPECT_EQ(times("program/CV_Standart172_v1_6.txt ends with line 4"), 1);
}

TEST_F(FullReadTest, TheSameVehicleKeepsItsChosenCvAndAnyOtherBeginsWithTheFirst)
{
    const auto nothing = [] {};
    const auto writeAddress = [this] {
        state.set.table.setValue(1, 8);
        markWritten(state.set, 1);
    };
    const struct {
        const char* what;
        Bytes identification;
        std::size_t cv; // that this one of the block holds another value
        std::function<void()> before;
        int chosen;
    } cases[] = {
        {"once more", kv05, 0, nothing, 40},
        {"another setting", kv05, 52, nothing, 40},
        {"another address", kv05, 1, nothing, 1},
        {"the address that was written", kv05, 1, writeAddress, 40},
        {"another model", kv06, 0, nothing, 1},
        {"an offline list before", kv05, 0, [this] { state.set.offlineItem = "mnu_KV05"; }, 1},
    };
    for (const auto& c : cases) {
        ASSERT_EQ(read(kv05), ReadEnd::read);
        state.set.currentNumber = 40;
        c.before();
        Bytes block = blockOf(512);
        if (c.cv != 0) {
            ++block[c.cv - 1];
            ++block.back();
        }
        ASSERT_EQ(read(c.identification, block), ReadEnd::read) << c.what;
        EXPECT_EQ(state.set.currentNumber, c.chosen) << c.what;
        clearDisplay(bench);
    }
}

TEST_F(FullReadTest, TheButtonsFlagLastsAsLongAsItsRead)
{
    for (const auto starter : {ReadStarter::button, ReadStarter::other}) {
        bool during = false;
        line.onWait([&] { during = state.readStartedByButton; });
        readIntoList(bench, starter);
        EXPECT_EQ(during, starter == ReadStarter::button);
        EXPECT_FALSE(state.readStartedByButton);
    }
}

} // namespace karvo::test
