#include "link/write.h"
#include "support/link_bench.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using namespace std::chrono_literals;
using test::Journal;
using test::LinkBench;

const Bytes ack = {6};

class WriteTest : public testing::Test
{
protected:
    WriteTest() { test::addWriteTexts(bench.texts); }

    void answerAs(const char* identification)
    {
        const std::string text = identification;
        bench.line.replyWith(Bytes(text.begin(), text.end()));
    }
    void answerAll(const char* identification, const Bytes& command = ack, const Bytes& frame = ack)
    {
        answerAs(identification);
        bench.line.replyWith(command);
        bench.line.replyWith(frame);
    }
    WriteEnd write(int cv, int value, int firmwareLevel = 3)
    {
        return writeCv(bench.link, {cv, value, firmwareLevel});
    }
    LinkBench bench;
};

TEST_F(WriteTest, StepsOfAGoodWriteInTheirOrder)
{
    answerAll("27");
    EXPECT_EQ(write(100, 200), WriteEnd::written);
    EXPECT_EQ(bench.journal, (Journal{"status writing CV100", "open 1", "write 37", "write 69 87 83",
                                      "write 99 200 43", "status c873"}));
    EXPECT_TRUE(bench.line.isOpen());
    EXPECT_EQ(bench.state.typeCode, 7);
}

TEST_F(WriteTest, FrameIsCvMinusOneValueAndTheirSumModulo256)
{
    struct Case {
        int cv;
        int value;
        const char* written;
    };
    const Case cases[] = {{1, 0, "write 0 0 0"},           {1, 255, "write 0 255 255"},
                          {2, 255, "write 1 255 0"},       {29, 6, "write 28 6 34"},
                          {256, 255, "write 255 255 254"}, {256, 0, "write 255 0 255"}};
    for (const auto& [cv, value, written] : cases) {
        answerAll("15");
        EXPECT_EQ(write(cv, value), WriteEnd::written) << cv;
        EXPECT_EQ(bench.journal[bench.journal.size() - 2], written);
    }
}

TEST_F(WriteTest, EachCallIdentifiesAgainAndThePortIsOpenedOnce)
{
    answerAll("15");
    answerAll("28");
    EXPECT_EQ(write(2, 1), WriteEnd::written);
    EXPECT_EQ(write(2, 1), WriteEnd::written);
    EXPECT_EQ(std::count(bench.journal.begin(), bench.journal.end(), "write 37"), 2);
    EXPECT_EQ(std::count(bench.journal.begin(), bench.journal.end(), "open 1"), 1);
    EXPECT_EQ(bench.state.typeCode, 8);
}

TEST_F(WriteTest, SilenceAfterTheIdentificationIsNamedByTheTypeKnownBefore)
{
    const std::pair<int, const char*> cases[] = {{7, "c902"}, {8, "c902"}, {0, "c900"}, {57, "c900"}};
    for (const auto& [typeCode, status] : cases) {
        bench.journal.clear();
        bench.state.typeCode = typeCode;
        EXPECT_EQ(write(48, 1), WriteEnd::noReply);
        const Journal end(bench.journal.end() - 3, bench.journal.end());
        EXPECT_EQ(end,
                  (Journal{"write 37", "message no reply\r\nnothing came", std::string("status ") + status}));
        EXPECT_FALSE(bench.state.timeOut);
        EXPECT_TRUE(bench.line.isOpen());
    }
}

TEST_F(WriteTest, SilenceAfterTheAnnouncementIsNamedByTheTypeJustIdentified)
{
    const std::pair<const char*, const char*> cases[] = {
        {"27", "c903"}, {"28", "c903"}, {"26", "c901"}, {"80", "c901"}};
    for (const auto& [identification, status] : cases) {
        bench.journal.clear();
        answerAs(identification);
        const auto before = bench.line.now();
        EXPECT_EQ(write(48, 1), WriteEnd::noReply);
        EXPECT_EQ(bench.line.now() - before, 5000ms);
        const Journal end(bench.journal.end() - 3, bench.journal.end());
        EXPECT_EQ(end, (Journal{"write 69 87 83", "message no reply\r\nnothing came",
                                std::string("status ") + status}));
        EXPECT_TRUE(bench.line.isOpen());
    }
}

TEST_F(WriteTest, SilenceAfterTheFrameLeavesItUncertain)
{
    answerAs("27");
    bench.line.replyWith(ack);
    EXPECT_EQ(write(48, 1), WriteEnd::unacknowledged);
    const Journal end(bench.journal.end() - 3, bench.journal.end());
    EXPECT_EQ(end, (Journal{"write 47 1 48", "message no reply\r\nnothing came", "status menu 76"}));
    EXPECT_FALSE(bench.state.timeOut);
}

TEST_F(WriteTest, AnUnknownDecoderIsToldWithItsReplyAndThatNothingWasWritten)
{
    const std::pair<std::string, const char*> cases[] = {{"81", "\"81\""},
                                                         {"2", "\"2\""},
                                                         {"27\r", "0x32 0x37 0x0D"},
                                                         {"\xB2 7", "0xB2 0x20 0x37"},
                                                         {"0123456789abcdefg", "\"0123456789abcdef\" ..."}};
    for (const auto& [identification, reply] : cases) {
        bench.journal.clear();
        answerAs(identification.c_str());
        EXPECT_EQ(write(48, 1), WriteEnd::unknownDecoder) << identification;
        const Journal end(bench.journal.end() - 3, bench.journal.end());
        EXPECT_EQ(end, (Journal{"write 37", std::string("message unknown decoder\r\nreply ") + reply,
                                "message m572"}));
    }
}

TEST_F(WriteTest, ARefusedAnnouncementSendsNoFrame)
{
    for (const Bytes& refusal : {Bytes{21}, Bytes{7, 6}, Bytes{0}}) {
        answerAs("27");
        bench.line.replyWith(refusal);
        EXPECT_EQ(write(48, 1), WriteEnd::commandRefused);
        const Journal end(bench.journal.end() - 2, bench.journal.end());
        EXPECT_EQ(end, (Journal{"write 69 87 83", "message m294"}));
    }
}

TEST_F(WriteTest, ARefusedValueIsToldOnceWithItsNumber)
{
    answerAll("27", ack, {21});
    EXPECT_EQ(write(48, 1), WriteEnd::frameRefused);
    EXPECT_EQ(bench.journal.back(), "message m83\r\nCV 48 m94");
}

TEST_F(WriteTest, Cv161MayStayWithoutItsAcknowledge)
{
    answerAll("27", ack, {21});
    EXPECT_EQ(write(161, 3), WriteEnd::unconfirmed);
    EXPECT_EQ(bench.journal.back(), "write 160 3 163");
    answerAll("27");
    EXPECT_EQ(write(161, 3), WriteEnd::written);
    answerAs("27");
    bench.line.replyWith({21});
    EXPECT_EQ(write(161, 3), WriteEnd::commandRefused); // the announcement is reported as ever
    EXPECT_EQ(bench.journal.back(), "message m294");
}

TEST_F(WriteTest, Cv99NeedsFirmwareLevelThree)
{
    EXPECT_EQ(write(99, 1, 2), WriteEnd::guarded);
    EXPECT_EQ(bench.journal, (Journal{"message m296"}));
    EXPECT_EQ(write(99, 1, 0), WriteEnd::guarded);
    answerAll("27");
    EXPECT_EQ(write(99, 1, 3), WriteEnd::written);
    answerAll("27");
    EXPECT_EQ(write(98, 1, 2), WriteEnd::written);
}

TEST_F(WriteTest, TheResetAsksFirstInTheWordsOfItsKind)
{
    bench.prompts.answer(false);
    EXPECT_EQ(write(59, 1), WriteEnd::refusedByUser);
    EXPECT_EQ(bench.journal, (Journal{"question m88\r\nm89\r\nm90\r\nm92\r\nm93\r\nm91"}));
    bench.journal.clear();
    bench.state.typeCode = 80;
    bench.prompts.answer(false);
    EXPECT_EQ(write(59, 1), WriteEnd::refusedByUser);
    EXPECT_EQ(bench.journal, (Journal{"question m88\r\nm89\r\nm90\r\nm91"}));
}

TEST_F(WriteTest, TheResetEndsWithTheMessageOfItsKind)
{
    struct Case {
        const char* identification;
        Bytes frameReply;
        WriteEnd end;
        Journal messages;
    };
    const Case cases[] = {
        {"27", ack, WriteEnd::written, {"status c873", "message m87"}},
        {"27", {21}, WriteEnd::frameRefused, {"message m83\r\nCV 59 m94", "message m87"}},
        {"80", ack, WriteEnd::written, {"status c873", "message m85"}},
        {"80", {21}, WriteEnd::frameRefused, {"message m83\r\nCV 59 m94", "message m86"}},
    };
    bench.state.noticeAfterWrite = true; // a reset has no notice
    for (const auto& [identification, frameReply, end, messages] : cases) {
        bench.prompts.answer(true);
        answerAll(identification, ack, frameReply);
        EXPECT_EQ(write(59, 1), end);
        EXPECT_EQ(Journal(bench.journal.end() - 2, bench.journal.end()), messages);
    }
    bench.prompts.answer(true);
    answerAs("80");
    bench.line.replyWith(ack);
    EXPECT_EQ(write(59, 1), WriteEnd::unacknowledged); // ends where the time-out ends every write
    EXPECT_EQ(bench.journal.back(), "status menu 76");
}

TEST_F(WriteTest, TheNoticeNamesWhatHasBeenWritten)
{
    bench.state.noticeAfterWrite = true;
    const std::pair<int, const char*> cases[] = {{48, "CV 48  m297"},        {248, "CV11 + CV12  m297"},
                                                 {250, "CV13 + CV14  m297"}, {249, "CV 249  m297"},
                                                 {242, "CV 242  m297"},      {247, "CV 247  m297"}};
    for (const auto& [cv, notice] : cases) {
        answerAll("80");
        write(cv, 1);
        EXPECT_EQ(bench.journal.back(), std::string("message ") + notice);
    }
    for (const int cv : {243, 244, 245, 246}) {
        answerAll("80");
        write(cv, 1);
        EXPECT_EQ(bench.journal.back(), "status c873") << cv;
    }
}

TEST_F(WriteTest, TheNoticeKeepsSilentWhereItIsNotWanted)
{
    const auto writtenWithout = [&] {
        answerAll("27");
        write(48, 1);
        return bench.journal.back() == "status c873";
    };
    EXPECT_TRUE(writtenWithout());
    bench.state.noticeAfterWrite = true;
    EXPECT_FALSE(writtenWithout());
    bench.state.seriesUnderWay = true;
    EXPECT_TRUE(writtenWithout());
    bench.state.seriesUnderWay = false;
    bench.state.manyUnderWay = true;
    EXPECT_TRUE(writtenWithout());
    bench.state.manyUnderWay = false;
    answerAll("27", ack, {21});
    write(48, 1);
    EXPECT_EQ(bench.journal.back(), "message m83\r\nCV 48 m94");
}

TEST_F(WriteTest, AnotherDecoderThanExpectedGetsNothing)
{
    answerAs("28");
    EXPECT_EQ(writeCv(bench.link, {48, 1, 3, u"27"}), WriteEnd::otherDecoder);
    EXPECT_EQ(bench.journal.back(), "write 37");
    answerAll("27");
    EXPECT_EQ(writeCv(bench.link, {48, 1, 3, u"27"}), WriteEnd::written);
}

TEST_F(WriteTest, AHangUpIsSilenceAndTheNextWriteOpensThePortAnew)
{
    answerAs("27");
    bench.line.replyInPieces({{20ms, {}}});
    EXPECT_EQ(write(48, 1), WriteEnd::noReply);
    EXPECT_EQ(bench.line.now(), 20ms);
    answerAll("27");
    EXPECT_EQ(write(48, 1), WriteEnd::written);
    EXPECT_EQ(std::count(bench.journal.begin(), bench.journal.end(), "open 1"), 2);
}

TEST_F(WriteTest, APortThatCanNotBeOpenedEndsTheProgram)
{
    bench.line.refuseToOpen({u"Access denied", {}});
    EXPECT_EQ(write(48, 1), WriteEnd::ended);
    EXPECT_EQ(bench.journal, (Journal{"status writing CV48", "message Access denied", "end program"}));
}

TEST_F(WriteTest, ClosingTheProgramShowsNothingAtAnyStep)
{
    for (int answered = 0; answered < 3; ++answered) {
        LinkBench fresh;
        test::addWriteTexts(fresh.texts);
        if (answered > 0)
            fresh.line.replyWith({'2', '7'});
        if (answered > 1)
            fresh.line.replyWith(ack);
        fresh.line.endWhenSilent();
        EXPECT_EQ(writeCv(fresh.link, {48, 1}), WriteEnd::ended) << answered;
        const char* const lastSent[] = {"write 37", "write 69 87 83", "write 47 1 48"};
        EXPECT_EQ(fresh.journal.back(), lastSent[answered]);
        EXPECT_EQ(fresh.journal.size(), static_cast<std::size_t>(answered) + 3) << answered;
    }
}

} // namespace
} // namespace karvo
