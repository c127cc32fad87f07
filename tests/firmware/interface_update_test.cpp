// The update through the programming interface: what is sent, when, and what is asked and told.
#include "firmware/interface_update.h"

#include "support/case_table.h"
#include "support/test_bench.h"

namespace karvo
{
namespace
{

using namespace std::chrono_literals;

// Whole records but for the last, which has two bytes.
std::string fileOf(int records)
{
    std::string content = "1F80\r\nUpdate Ende\r\n";
    for (int i = 1; i < records; ++i)
        content += ":1000000102030405060708090A0B0C0D0E0F\r\n";
    return content + ":10000102\r\n";
}

struct UpdateBench : test::TestBench, UpdateObserver {
    void showHeader(const Text& header) override { journal.push_back("header " + utf8FromText(header)); }
    void showStart(const Text& text) override { journal.push_back("start " + utf8FromText(text)); }
    void showProgress(std::uint64_t sent, std::uint64_t total) override
    {
        journal.push_back("records " + std::to_string(sent) + "/" + std::to_string(total));
        lastSent = sent;
    }
    void showEnd() override { journal.push_back("end"); }
    bool stopRequested() override { return stopsAfter && lastSent >= *stopsAfter; }

    UpdateBench()
    {
        test::numberEveryText(state.texts);
        test::setTexts(state.texts, {{426, u"UP"}, {858, u"{1}, {2}, {3}"}},
                       {{662, u"{1} more"}, {664, u"{1}"}, {670, u"all {1}"}, {671, u"record {1}"}});
        test::setTexts(state.texts, {}, {{665, u"line {1}: {2} for {3}"}, {666, u"name: {1} for {2}"}});
        test::setTexts(state.texts, {}, {{667, u"line {1} is short"}, {668, u"line {1} is open"}});
        test::setCaption(state.texts, 669, u"line {1} of {2}");
        state.link.interfaceAnswered = true;
        writeFile(1);
    }

    void writeFile(int records) { addFile("a.uhx", fileOf(records)); }
    void reply(const std::string& bytes) { line.replyWith(test::bytesOf(bytes)); }
    // The letter "O" is the second write behind the identification.
    void answerCall(const std::string& model = "27", int odd = -1)
    {
        reply(model);
        line.replyInPieces({}); // "B"
        for (int i = 0; i < 4; ++i)
            reply(i == odd ? "!" : "\x06"); // "O", "A", the two bytes, the command
    }
    // Single bytes of a record get no reply.
    void answerRecords(const std::vector<const char*>& replies)
    {
        for (const char* const bytes : replies) {
            for (int i = 0; i < 16; ++i)
                line.replyInPieces({});
            reply(bytes);
        }
    }
    void answerAll(const std::string& model, std::size_t records)
    {
        answerCall(model);
        answerRecords(std::vector<const char*>(records, "\x06"));
    }
    UpdateEnd update() { return updateThroughInterface(bench, setup); }

    std::optional<std::size_t> stopsAfter; // records
    std::size_t lastSent = 0;
    std::optional<std::filesystem::path> chosen = "program/a.uhx";
    test::FixedClock clock;
    UpdateSetup setup{
        [this] { return chosen; },
        [this](const std::filesystem::path& path) { journal.push_back("file " + path.string()); }, clock,
        *this};
};

TEST(InterfaceUpdate, SendsEverythingInItsOrderWithItsPauses)
{
    UpdateBench bench;
    bench.state.set.list = {{}};
    bench.line.open();
    bench.state.link.lastUse = 0ms;
    bench.writeFile(9);
    bench.answerAll("80", 9);
    EXPECT_EQ(bench.update(), UpdateEnd::sent);
    test::Journal expected;
    for (const auto& [event] : test::casesOf<1>("firmware/update_events.txt"))
        expected.push_back(event);
    EXPECT_EQ(bench.journal, expected);
    EXPECT_TRUE(bench.state.set.precedesUpdate);
    EXPECT_FALSE(bench.state.link.lastUse) << "what comes next is another decoder to the program";
    // Behind "B", before "A", in each record, behind the block and the last record.
    EXPECT_EQ(bench.line.now(), 10ms + 25ms + 9 * (5ms + 50ms) + 2 * 10ms);
}

TEST(InterfaceUpdate, OneReplyThatIsNoAcknowledgementIsTold)
{
    UpdateBench bench;
    bench.state.set.list = {{}};
    bench.state.set.offlineItem = "mnu_kv07"; // such a list was not read from a decoder
    bench.writeFile(3);
    bench.answerCall();
    bench.answerRecords({"\x06!", "\x15", "!!"});
    EXPECT_EQ(bench.update(), UpdateEnd::notConfirmed);
    const std::string second = "status c674, message record 2, 15, 2, idle";
    EXPECT_EQ(test::tailOf(bench.journal, second), second);
    EXPECT_FALSE(bench.state.set.precedesUpdate);
}

TEST(InterfaceUpdate, AnOddReplyToWhatAnnouncesItIsNoRecords)
{
    for (const int odd : {0, 1, 2, 3}) {
        UpdateBench bench;
        bench.answerCall("27", odd);
        bench.answerRecords({"\x06"});
        EXPECT_EQ(bench.update(), UpdateEnd::notConfirmed);
        EXPECT_EQ(bench.journal[bench.journal.size() - 2], "message c672, 21, 1");
    }
}

// Behind an update that broke off the decoder can not be read, but the interface answers.
TEST(InterfaceUpdate, AsksAnInterfaceOnceThatHasNotAnsweredYet)
{
    UpdateBench bench;
    bench.state.link.interfaceAnswered = false;
    EXPECT_EQ(bench.update(), UpdateEnd::notAnswered);
    EXPECT_EQ(test::joined(bench.journal), "busy, open 1, write 37, close, message m20\r\nm21, idle");
    bench.journal.clear();
    bench.reply("2");
    bench.answerCall();
    bench.answerRecords({"\x06"});
    EXPECT_EQ(bench.update(), UpdateEnd::sent);
    const std::string begin = "busy, open 1, write 37, file program/a.uhx, write 37, ";
    EXPECT_TRUE(test::joined(bench.journal).starts_with(begin));
}

TEST(InterfaceUpdate, WhatIsUnusualIsAskedAboutInOneQuestion)
{
    auto cases = test::casesOf<3>("firmware/unusual_updates.txt");
    cases.push_back({"a.uhx", fileOf(4096), ""});
    cases.push_back({"a.uhx", fileOf(4097), "line 4099 of 4097\r\n"});
    for (const auto& [name, content, asked] : cases) {
        UpdateBench bench;
        bench.addFile(name, content);
        bench.chosen = bench.state.programFolder / name;
        bench.reply("27");
        if (!asked.empty())
            bench.prompts.answer(false);
        EXPECT_EQ(bench.update(), asked.empty() ? UpdateEnd::noReply : UpdateEnd::declined);
        const auto& told = bench.journal[bench.journal.size() - 2];
        EXPECT_TRUE(told.starts_with(asked.empty() ? "message m233" : "question 1F80")) << told;
        EXPECT_TRUE(asked.empty() || told.ends_with("\r\n" + asked + "m857")) << told;
    }
}

TEST(InterfaceUpdate, TellsWhyItEndsEarly)
{
    const auto expectEnd = [](UpdateEnd end, const std::string& last, std::chrono::milliseconds duration,
                              const std::function<void(UpdateBench&)>& spoil) {
        UpdateBench bench;
        spoil(bench);
        EXPECT_EQ(bench.update(), end);
        EXPECT_EQ(test::portable(test::tailOf(bench.journal, last)), last);
        EXPECT_EQ(bench.line.now(), duration) << last;
    };
    for (const auto& chosen : {std::optional<std::filesystem::path>(), {"folder/*.uhx"}})
        expectEnd(UpdateEnd::noFile, "busy, message m232, idle", 0ms, [&](auto& b) { b.chosen = chosen; });
    expectEnd(UpdateEnd::noFile, "a.uhx, message m1 program/a.uhx m2, idle", 0ms,
              [](auto& b) { b.files.content.clear(); });
    expectEnd(UpdateEnd::noReply, "a.uhx, open 1, write 37, close, message m233, idle", 5000ms,
              [](auto& b) { b.reply("2"); }); // one byte is not enough
    const auto replyBehindAnOther = [](auto& b) {
        b.line.addWaitingBytes({'x'}); // left of an exchange before
        b.reply("28");
    };
    expectEnd(UpdateEnd::noReply, "write 66, write 79, close, message m233\r\nm873, idle", 5010ms,
              replyBehindAnOther);
    expectEnd(UpdateEnd::brokenOff, "end, message m851, end program, idle", 5090ms,
              [](auto& b) { b.answerCall(); });
    for (const bool goesOn : {true, false}) {
        const auto refuse = [goesOn](auto& b) {
            b.line.refuseToOpen({u"busy device", {}});
            b.prompts.answer(goesOn);
            b.state.link.interfaceAnswered = goesOn; // else the port is opened to ask it
        };
        const std::string asked = "question \r\n\r\nbusy devicem35, ";
        expectEnd(UpdateEnd::portRefused, asked + (goesOn ? "idle" : "end program, idle"), 0ms, refuse);
    }
    for (const char* const model : {"04", "26", "81", "A7", "99", "270"})
        expectEnd(UpdateEnd::wrongModel, "write 37, message m313, idle", 0ms,
                  [&](auto& b) { b.reply(model); });
}

// Asked for before the letters, inside a block, at its end, or inside the last one, which lets the update be
// closed.
TEST(InterfaceUpdate, StopsBetweenTwoBlocks)
{
    const std::string before = "write 37, header 1F80, message m869, idle"; // the letters
    const std::string stopped = "records 8/16, end, message m868, idle";
    const std::string closed = "write 88 70 48 49 26 11 22 67 73, end, status all 16, idle";
    for (const auto& [asked, sent, last] :
         {std::tuple{0U, 0U, before}, {3U, 8U, stopped}, {8U, 8U, stopped}, {9U, 16U, closed}}) {
        UpdateBench bench;
        bench.writeFile(16);
        bench.stopsAfter = asked;
        bench.answerAll("27", sent);
        EXPECT_EQ(bench.update(), sent == 16 ? UpdateEnd::sent : UpdateEnd::stopped);
        EXPECT_EQ(test::portable(test::tailOf(bench.journal, last)), last);
    }
}

} // namespace
} // namespace karvo
