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
    void showHeader(const Text& header) override { journal.push_back("header " + utf8FromText(header)); }
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
        for (const int number : {1, 2, 20, 21, 35, 232, 308, 309, 310, 311, 313, 850, 851, 857, 868, 869})
            test::setText(state.texts, number, u"m" + textFromNumber(number));
        test::setText(state.texts, 426, u"UP");
        test::setText(state.texts, 858, u"{1}, {2}, {3}");
        test::setCaption(state.texts, 664, u"{1}");
        test::setCaption(state.texts, 665, u"line {1}: {2} for {3}");
        test::setCaption(state.texts, 666, u"name: {1} for {2}");
        test::setCaption(state.texts, 667, u"line {1} is short");
        test::setCaption(state.texts, 668, u"line {1} is open");
        test::setCaption(state.texts, 670, u"all {1}");
        test::setCaption(state.texts, 671, u"record {1}");
        test::setCaption(state.texts, 672, u"announcement");
        test::setCaption(state.texts, 674, u"unconfirmed");
        state.link.interfaceAnswered = true;
        writeFile(1);
    }

    // Whole records but for the last, which has two bytes.
    void writeFile(int records)
    {
        std::string content = "1F80\r\nUpdate Ende\r\n";
        for (int i = 1; i < records; ++i)
            content += ":1000000102030405060708090A0B0C0D0E0F\r\n";
        addFile("a.uhx", content + ":10000102\r\n");
    }

    void reply(const std::string& bytes) { line.replyWith(test::bytesOf(bytes)); }

    // The letter "O" is the second write after the identification; single bytes of a record get no reply.
    void answerUpTo426(const std::string& model)
    {
        reply(model);
        line.replyInPieces({}); // "B"
        for (int i = 0; i < 4; ++i)
            reply("\x06"); // "O", "A", the two bytes, the command
    }

    void answerRecord(const std::string& bytes = "\x06")
    {
        for (int i = 0; i < 16; ++i)
            line.replyInPieces({});
        reply(bytes);
    }
    void answerAll(const std::string& model, int records)
    {
        answerUpTo426(model);
        for (int i = 0; i < records; ++i)
            answerRecord();
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
    state.set.list = {{}};
    answerAll("27", 1);
    EXPECT_EQ(update(), UpdateEnd::sent);
    EXPECT_TRUE(state.set.precedesUpdate);
    Journal expected = {"busy",         "file program/a.uhx",
                        "open 1",       "write 37",
                        "header 1F80",  "write 66",
                        "write 79",     "start m308\r\nm309\r\nm310\r\nm311",
                        "records 0/1",  "write 65",
                        "write 31 128", "write 85 80",
                        "write 1",      "write 2"};
    for (int i = 0; i < 14; ++i)
        expected.push_back("write 255");
    // 1 + 2 + 14 * 255 = 3573 = 0x0DF5; the closing block holds the 22nd of November 2026.
    for (const char* const entry : {"write 13 245", "records 1/1", "write 88 70 48 49 26 11 22 67 73", "end",
                                    "list changed", "status all 1", "idle"})
        expected.push_back(entry);
    EXPECT_EQ(journal, expected);
    // 10 ms after "B", 25 ms before "A", 5 and 50 ms in the record, 10 ms behind the block.
    EXPECT_EQ(line.now(), 100ms);
}

TEST_F(InterfaceUpdateTest, CountsEachRecordAndPausesBehindEachBlockAndTheLastRecord)
{
    writeFile(9);
    answerAll("80", 9);
    EXPECT_EQ(update(), UpdateEnd::sent);
    for (int i = 0; i <= 9; ++i) {
        const auto entry = "records " + std::to_string(i) + "/9";
        EXPECT_EQ(std::count(journal.begin(), journal.end(), entry), 1) << entry;
    }
    EXPECT_EQ(line.now(), 10ms + 25ms + 9 * 55ms + 2 * 10ms);
}

TEST_F(InterfaceUpdateTest, OneReplyThatIsNoAcknowledgementIsTold)
{
    state.set.list = {{}};
    state.set.offlineItem = "mnu_kv07"; // such a list was not read from a decoder
    writeFile(3);
    answerUpTo426("27");
    for (const char* const bytes : {"\x06!", "\x15", "!!"})
        answerRecord(bytes);
    EXPECT_EQ(update(), UpdateEnd::notConfirmed);
    EXPECT_EQ(Journal(journal.end() - 3, journal.end()),
              (Journal{"status unconfirmed", "message record 2, 15, 2", "idle"}));
    EXPECT_FALSE(state.set.precedesUpdate);
    reply("27");
    line.replyInPieces({});
    for (const char* const bytes : {"!", "\x06", "\x06", "\x06"})
        reply(bytes);
    for (int i = 0; i < 3; ++i)
        answerRecord();
    EXPECT_EQ(update(), UpdateEnd::notConfirmed);
    EXPECT_EQ(journal[journal.size() - 2], "message announcement, 21, 1");
}

// Behind an update that broke off the decoder can not be read, but the interface answers.
TEST_F(InterfaceUpdateTest, AsksAnInterfaceOnceThatHasNotAnsweredYet)
{
    state.link.interfaceAnswered = false;
    EXPECT_EQ(update(), UpdateEnd::notAnswered);
    EXPECT_EQ(journal, (Journal{"busy", "open 1", "write 37", "close", "message m20\r\nm21", "idle"}));
    journal.clear();
    reply("2");
    answerAll("27", 1);
    EXPECT_EQ(update(), UpdateEnd::sent);
    EXPECT_EQ(Journal(journal.begin(), journal.begin() + 5),
              (Journal{"busy", "open 1", "write 37", "file program/a.uhx", "write 37"}));
    line.close();
    state.link.interfaceAnswered = false;
    line.refuseToOpen({u"busy device", {}});
    prompts.answer(true);
    EXPECT_EQ(update(), UpdateEnd::portRefused);
}

TEST_F(InterfaceUpdateTest, WhatIsUnusualIsAskedAboutInOneQuestion)
{
    struct Case {
        const char* name;
        std::string content;
        const char* asked; // what stands between the header and the question; nullptr: nothing is asked
    };
    const std::string whole = ":1000000102030405060708090A0B0C0D0E0F\r\n";
    const std::string start = "1F80\r\nUpdate Ende\r\n";
    const Case cases[] = {
        {"a.uhx", start + whole + whole, nullptr},
        {"KV07_KV08.uhx", "1F80,KV 7\r\nfor kv-08\r\nV6\r\nUpdate Ende\r\n" + whole, nullptr},
        {"KV071.uhx", start + whole, nullptr},
        {"kv08.uhx", "1F80,Receiver\r\nKV08 V6\r\nUpdate Ende\r\n" + whole,
         "line 1: c673 for KV07\r\nline 2: KV08 for KV07\r\nname: KV08 for KV07\r\n"},
        {"a.uhx", start + whole + ":100001\r\n" + whole, "line 4 is short\r\n"},
        {"a.uhx", start + whole + whole.substr(0, 9), "line 4 is open\r\n"},
    };
    test::setCaption(state.texts, 673, u"c673");
    for (const Case& expected : cases) {
        addFile(expected.name, expected.content);
        setup.chooseFile = [&] { return state.programFolder / expected.name; };
        journal.clear();
        reply("27");
        if (expected.asked == nullptr) {
            EXPECT_EQ(update(), UpdateEnd::noReply) << expected.content; // to the letters
            continue;
        }
        prompts.answer(false);
        EXPECT_EQ(update(), UpdateEnd::declined);
        const auto& question = journal[journal.size() - 2];
        EXPECT_TRUE(question.starts_with("question 1F80")) << question;
        EXPECT_TRUE(question.ends_with("\r\n" + std::string(expected.asked) + "m857")) << question;
    }
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

TEST_F(InterfaceUpdateTest, OthersThanKv07Kv08AndReceiverAreRefused)
{
    for (const char* const model : {"04", "26", "81", "A7", "99", "270"}) {
        journal.clear();
        reply(model);
        EXPECT_EQ(update(), UpdateEnd::wrongModel) << model;
        EXPECT_EQ(Journal(journal.end() - 3, journal.end()), (Journal{"write 37", "message m313", "idle"}));
    }
}

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
    EXPECT_EQ(update(), UpdateEnd::portRefused);
    EXPECT_EQ(journal[3], "end program");
}

// Asked for inside a block, at its end, or inside the last one, which lets the update be closed.
TEST_F(InterfaceUpdateTest, StopsBetweenTwoBlocks)
{
    writeFile(16);
    for (const auto& [asked, sent] : {std::pair{3U, 8U}, {8U, 8U}, {9U, 16U}}) {
        journal.clear();
        watcher.lastSent = 0;
        watcher.stopsAfter = asked;
        answerAll("27", static_cast<int>(sent));
        EXPECT_EQ(update(), sent == 16 ? UpdateEnd::sent : UpdateEnd::stopped);
        const auto last = "records " + std::to_string(sent) + "/16";
        EXPECT_EQ(journal[journal.size() - 4], sent == 16 ? "write 88 70 48 49 26 11 22 67 73" : last);
        EXPECT_EQ(journal[journal.size() - 2], sent == 16 ? "status all 16" : "message m868");
    }
}

TEST_F(InterfaceUpdateTest, StopsBeforeTheLettersWithTheDecoderAsItWas)
{
    watcher.stopsAfter = 0;
    reply("27");
    EXPECT_EQ(update(), UpdateEnd::stopped);
    EXPECT_EQ(journal, (Journal{"busy", "file program/a.uhx", "open 1", "write 37", "header 1F80",
                                "message m869", "idle"}));
}

} // namespace
} // namespace karvo
