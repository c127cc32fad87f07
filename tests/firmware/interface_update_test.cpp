#include "firmware/interface_update.h"

#include "support/test_bench.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using namespace std::chrono_literals;
using test::Journal;

class Watcher : public UpdateObserver
{
public:
    explicit Watcher(Journal& log) : journal(log) {}
    void showStart(const Text& text) override { journal.push_back("start " + utf8FromText(text)); }
    void showRecords(std::size_t sent, std::size_t total) override
    {
        journal.push_back("records " + std::to_string(sent) + "/" + std::to_string(total));
        lastSent = sent;
    }
    void showEnd() override { journal.push_back("end"); }
    bool stopRequested() override { return stopsAfter && lastSent >= *stopsAfter; }

    Journal& journal;
    std::optional<std::size_t> stopsAfter; // records
    std::size_t lastSent = 0;
};

class InterfaceUpdateTest : public testing::Test, public test::TestBench
{
protected:
    InterfaceUpdateTest()
    {
        for (const int number : {1, 2, 20, 21, 35, 232, 308, 309, 310, 311, 313, 850, 851})
            test::setText(state.texts, number, u"m" + textFromNumber(number));
        test::setText(state.texts, 426, u"UP");
        test::setCaption(state.texts, 635, u"sent");
        state.link.interfaceAnswered = true;
        writeFile(1);
    }

    void writeFile(int records)
    {
        std::string content = "1F80\r\nUpdate Ende\r\n";
        for (int i = 0; i < records; ++i)
            content += ":10000102\r\n";
        addFile("a.uhx", content);
    }

    void reply(const std::string& bytes) { line.replyWith(test::bytesOf(bytes)); }

    // The letter "O" is the second write after the identification; single bytes of a record get no reply.
    void answerUpTo426(const std::string& model)
    {
        reply(model);
        line.replyInPieces({}); // "B"
        for (int i = 0; i < 4; ++i)
            reply("!"); // "O", "A", the two bytes, the command
    }

    void answerRecord()
    {
        for (int i = 0; i < 16; ++i)
            line.replyInPieces({});
        reply("!");
    }

    UpdateEnd update() { return updateThroughInterface(bench, setup); }

    Watcher watcher{journal};
    test::FixedClock clock;
    UpdateSetup setup{
        []() -> std::optional<std::filesystem::path> { return "program/a.uhx"; },
        [this](const std::filesystem::path& path) { journal.push_back("file " + path.string()); }, clock,
        watcher};
};

TEST_F(InterfaceUpdateTest, SendsEverythingInItsOrder)
{
    answerUpTo426("27");
    answerRecord();
    EXPECT_EQ(update(), UpdateEnd::sent);
    Journal expected = {"busy",
                        "file program/a.uhx",
                        "open 1",
                        "write 37",
                        "write 66",
                        "write 79",
                        "start m308\r\nm309\r\nm310\r\nm311",
                        "records 0/1",
                        "write 65",
                        "write 31 128",
                        "write 85 80",
                        "write 1",
                        "write 2"};
    for (int i = 0; i < 14; ++i)
        expected.push_back("write 255");
    // 1 + 2 + 14 * 255 = 3573 = 0x0DF5; the closing block holds the 22nd of November 2026.
    for (const char* const entry :
         {"write 13 245", "records 1/1", "write 88 70 48 49 26 11 22 67 73", "end", "status sent", "idle"})
        expected.push_back(entry);
    EXPECT_EQ(journal, expected);
    // 10 ms after "B", 25 ms before "A", 5 and 50 ms in the record, 10 ms behind the block.
    EXPECT_EQ(line.now(), 100ms);
}

TEST_F(InterfaceUpdateTest, CountsProgressByRecord)
{
    writeFile(9);
    answerUpTo426("80");
    for (int i = 0; i < 9; ++i)
        answerRecord();
    EXPECT_EQ(update(), UpdateEnd::sent);
    Journal progress;
    for (const auto& entry : journal) {
        if (entry.starts_with("records"))
            progress.push_back(entry);
    }
    EXPECT_EQ(progress, (Journal{"records 0/9", "records 1/9", "records 2/9", "records 3/9", "records 4/9",
                                 "records 5/9", "records 6/9", "records 7/9", "records 8/9", "records 9/9"}));
}

TEST_F(InterfaceUpdateTest, MakesAPauseBehindEachBlockAndTheLastRecord)
{
    writeFile(9);
    answerUpTo426("28");
    for (int i = 0; i < 9; ++i)
        answerRecord();
    EXPECT_EQ(update(), UpdateEnd::sent);
    EXPECT_EQ(line.now(), 10ms + 25ms + 9 * 55ms + 2 * 10ms);
}

TEST_F(InterfaceUpdateTest, AsksForAReadFirstWhenTheInterfaceHasNotAnswered)
{
    state.link.interfaceAnswered = false;
    EXPECT_EQ(update(), UpdateEnd::notAnswered);
    EXPECT_EQ(journal, (Journal{"busy", "message m20\r\nm21", "idle"}));
}

TEST_F(InterfaceUpdateTest, NoFileShowsMessage232)
{
    setup.chooseFile = [] { return std::nullopt; };
    EXPECT_EQ(update(), UpdateEnd::noFile);
    EXPECT_EQ(journal, (Journal{"busy", "message m232", "idle"}));
    journal.clear();
    setup.chooseFile = [] { return std::filesystem::path("folder/*.uhx"); };
    EXPECT_EQ(update(), UpdateEnd::noFile);
    EXPECT_EQ(journal, (Journal{"busy", "message m232", "idle"}));
}

TEST_F(InterfaceUpdateTest, AFileThatIsNotThereIsNamedBetweenMessages1And2)
{
    files.content.clear();
    EXPECT_EQ(update(), UpdateEnd::noFile);
    EXPECT_EQ(journal[2], "message m1 program/a.uhx m2");
}

class ModelTest : public InterfaceUpdateTest, public testing::WithParamInterface<const char*>
{
};

TEST_P(ModelTest, OthersThanKv07Kv08AndReceiverAreRefused)
{
    reply(GetParam());
    EXPECT_EQ(update(), UpdateEnd::wrongModel);
    EXPECT_EQ(journal.back(), "idle");
    EXPECT_EQ(journal[journal.size() - 2], "message m313");
    EXPECT_EQ(journal[journal.size() - 3], "write 37");
}

INSTANTIATE_TEST_SUITE_P(Replies, ModelTest,
                         testing::Values("04", "14", "15", "16", "24", "25", "26", "81", "A7", "99", "270"));

TEST_F(InterfaceUpdateTest, NoReplyToTheIdentificationClosesThePort)
{
    reply("2"); // one byte is not enough
    EXPECT_EQ(update(), UpdateEnd::noReply);
    EXPECT_EQ(journal, (Journal{"busy", "file program/a.uhx", "open 1", "write 37", "close",
                                "message no reply", "idle"}));
    EXPECT_EQ(line.now(), 5000ms);
}

TEST_F(InterfaceUpdateTest, NoReplyToTheLettersClosesThePort)
{
    reply("28");
    EXPECT_EQ(update(), UpdateEnd::noReply);
    EXPECT_EQ(journal[journal.size() - 3], "close");
    EXPECT_EQ(journal[journal.size() - 2], "message no reply");
}

TEST_F(InterfaceUpdateTest, SilenceInTheMiddleEndsTheProgramAfterOneMessage)
{
    answerUpTo426("27");
    EXPECT_EQ(update(), UpdateEnd::brokenOff);
    const Journal tail(journal.end() - 4, journal.end());
    EXPECT_EQ(tail, (Journal{"end", "message m851", "end program", "idle"}));
}

TEST_F(InterfaceUpdateTest, ARefusedPortAsksWhetherToGoOn)
{
    line.refuseToOpen({u"busy device", {}});
    prompts.answer(true);
    EXPECT_EQ(update(), UpdateEnd::portRefused);
    EXPECT_EQ(journal[2], "question \r\n\r\nbusy devicem35");
    EXPECT_EQ(journal.back(), "idle");
    journal.clear();
    prompts.answer(false);
    EXPECT_EQ(update(), UpdateEnd::ended);
    EXPECT_EQ(journal[3], "end program");
}

TEST_F(InterfaceUpdateTest, StopsBetweenTwoBlocks)
{
    writeFile(16);
    watcher.stopsAfter = 8;
    answerUpTo426("27");
    for (int i = 0; i < 8; ++i)
        answerRecord();
    EXPECT_EQ(update(), UpdateEnd::stopped);
    EXPECT_EQ(journal[journal.size() - 3], "records 8/16");
}

TEST_F(InterfaceUpdateTest, StopsBeforeTheLettersWithTheDecoderAsItWas)
{
    watcher.stopsAfter = 0;
    reply("27");
    EXPECT_EQ(update(), UpdateEnd::stopped);
    EXPECT_EQ(journal, (Journal{"busy", "file program/a.uhx", "open 1", "write 37", "idle"}));
}

TEST_F(InterfaceUpdateTest, AStopDuringTheLastBlockLetsTheUpdateBeClosed)
{
    watcher.stopsAfter = 1;
    answerUpTo426("27");
    answerRecord();
    EXPECT_EQ(update(), UpdateEnd::sent);
    EXPECT_EQ(journal[journal.size() - 4], "write 88 70 48 49 26 11 22 67 73");
}

} // namespace
} // namespace karvo
