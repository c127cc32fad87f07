#include "editors/live_follow.h"
#include "support/test_bench.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using test::Journal;

CvTable servoTable(int returnTime = 0, int sweepTime = 0)
{
    CvTable table;
    for (const auto& [cv, value] :
         {std::pair{172, 100}, {173, 156}, {174, returnTime}, {175, sweepTime}, {176, 10}})
        table.setValue(cv, value);
    return table;
}

// "channel:value" of a tick.
std::string tickOf(const LiveSetup& setup)
{
    std::string text;
    for (const int channel : setup.channels())
        text += std::to_string(channel) + ":" + std::to_string(setup.tried(channel).value) + " ";
    return text;
}

std::string written(const LiveSetup& setup)
{
    std::string text;
    for (const PlannedWrite& write : setup.plan())
        text += std::to_string(write.cv) + "=" + std::to_string(write.value) + " ";
    return text;
}

struct FollowBench : test::TestBench {
    explicit FollowBench(LiveWindow window = LiveWindow::times) : setup(window, servoTable(7))
    {
        line.open();
        journal.clear();
    }

    void answerAll(int values)
    {
        for (int i = 0; i < values; ++i) {
            line.replyWith({'2', '7'});
            line.replyWith({6});
            line.replyWith({6});
        }
    }
    // What was sent on the channels.
    std::string packets()
    {
        std::string text;
        for (const std::string& entry : journal) {
            const bool isPacket =
                entry.starts_with("write ") && entry != "write 37" && entry != "write 69 87 77";
            text += isPacket ? entry.substr(6) + ", " : "";
        }
        journal.clear();
        return text;
    }
    LiveSetup setup;
    LiveFollow follow{bench, setup};
};

} // namespace

TEST(LiveSetup, EachWindowMovesItsServo)
{
    struct Case {
        LiveWindow window;
        const char* atFirst;
        const char* moved;
    };
    const Case cases[] = {{LiveWindow::bothServos, "2:100 3:100 ", "2:200 3:200 "},
                          {LiveWindow::firstServo, "2:100 3:100 ", "2:200 3:100 "},
                          {LiveWindow::secondServo, "2:100 3:100 ", "2:100 3:200 "}};
    for (const Case& expected : cases) {
        LiveSetup setup(expected.window, servoTable());
        EXPECT_EQ(setup.opening().channel, 1);
        EXPECT_EQ(setup.opening().value, 100);
        EXPECT_EQ(tickOf(setup), expected.atFirst);
        setup.move(173, 200);
        EXPECT_EQ(tickOf(setup), expected.moved);
        setup.move(176, 30);
        EXPECT_EQ(tickOf(setup), expected.moved) << "the speed of travel is not followed";
        EXPECT_EQ(written(setup), "172=100 173=200 176=30 ");
        EXPECT_EQ(setup.stored(2).value, 100);
        EXPECT_EQ(setup.stored(3).value, 100);
    }
}

TEST(LiveSetup, TimesGoOverOneChannelAndExcludeEachOther)
{
    LanguageTables texts;
    test::setText(texts, 758, u"m758");
    test::setText(texts, 759, u"m759");
    test::setText(texts, 760, u"m760");
    LiveSetup setup(LiveWindow::times, servoTable(0, 40));
    EXPECT_EQ(setup.opening().value, 156) << "the position that the servo returns from";
    EXPECT_EQ(tickOf(setup), "2:40 ");
    EXPECT_EQ(written(setup), "174=0 175=40 ");
    setup.move(174, 9);
    EXPECT_EQ(setup.clearExcluded(174, texts), u"m759\r\nm760");
    EXPECT_EQ(written(setup), "175=0 174=9 ") << "never both, on the way either";
    setup.move(175, 8);
    EXPECT_EQ(tickOf(setup), "2:8 ");
    EXPECT_EQ(setup.clearExcluded(175, texts), u"m758\r\nm760");
    EXPECT_EQ(setup.valueOf(175), 0);
    EXPECT_EQ(tickOf(setup), "2:9 ");
    setup.move(174, 0);
    setup.move(175, 8);
    EXPECT_FALSE(setup.clearExcluded(175, texts));
    EXPECT_EQ(setup.stored(2).value, 40);
}

TEST(LiveFollow, SendsOnOpeningOnEachTickAndWhenCancelled)
{
    FollowBench bench(LiveWindow::firstServo);
    bench.answerAll(5);
    bench.follow.open();
    EXPECT_EQ(bench.packets(), "1 100 101, ");
    bench.setup.move(172, 120);
    bench.follow.tick();
    EXPECT_EQ(bench.packets(), "2 120 122, 3 100 103, ");
    bench.follow.restore();
    EXPECT_EQ(bench.packets(), "2 100 102, 3 100 103, ");
    bench.follow.tick();
    bench.follow.moved();
    EXPECT_EQ(bench.packets(), "") << "the window is closing";
}

// Movements while an exchange is under way: no second exchange, and only the newest of them is sent.
TEST(LiveFollow, TheNewestValueWins)
{
    FollowBench bench;
    bench.answerAll(2);
    int left = 3;
    bench.line.onWait([&] {
        if (left == 0)
            return;
        --left;
        bench.setup.move(174, 50 + left);
        bench.follow.tick();
        bench.follow.moved();
        EXPECT_TRUE(bench.follow.isUnderWay());
    });
    bench.follow.tick();
    EXPECT_EQ(bench.packets(), "2 7 9, 2 50 52, ");
}

TEST(LiveFollow, AFailureIsToldOnceAndAMovementTriesAgain)
{
    FollowBench bench;
    bench.follow.tick();
    EXPECT_EQ(bench.journal.back(), "message no reply\r\nnothing came");
    EXPECT_FALSE(bench.follow.isFollowing());
    bench.journal.clear();
    bench.follow.tick();
    EXPECT_TRUE(bench.journal.empty());
    bench.follow.restore();
    EXPECT_TRUE(bench.journal.empty()) << "nothing has been sent, nothing is to be put back";

    FollowBench again;
    again.follow.tick();
    again.answerAll(1);
    again.follow.moved();
    EXPECT_TRUE(again.follow.isFollowing());
    EXPECT_EQ(again.packets(), "2 7 9, ");
}

TEST(LiveFollow, ALostLineIsToldOnceAndOnlyAMovementOpensIt)
{
    const auto opened = [](FollowBench& bench) {
        return std::count(bench.journal.begin(), bench.journal.end(), "open 1");
    };
    struct Case {
        const char* where;
        std::vector<Bytes> replies; // to the tick, before the hang-up; empty: between two ticks
    };
    const Case cases[] = {{"before a tick", {}},
                          {"instead of a reply", {Bytes()}},
                          {"behind the announcement", {{'2', '7'}, {6}, Bytes()}},
                          {"between two channels", {{'2', '7'}, {6}, {6}, Bytes()}}};
    for (const Case& lost : cases) {
        SCOPED_TRACE(lost.where);
        FollowBench bench(LiveWindow::bothServos);
        test::setText(bench.state.texts, 810, u"line lost");
        bench.answerAll(1);
        bench.follow.open();
        bench.journal.clear();
        for (const Bytes& reply : lost.replies)
            bench.line.replyWith(reply); // no bytes: the line hangs up
        if (lost.replies.empty())
            bench.line.close();
        bench.follow.tick();
        EXPECT_EQ(bench.journal.back(), "message line lost");
        EXPECT_TRUE(bench.follow.hasLostLine());
        const auto told = bench.journal.size();
        bench.follow.tick();
        bench.follow.restore();
        EXPECT_EQ(bench.journal.size(), told) << "neither the timer nor a cancel opens or tells more";
        EXPECT_EQ(opened(bench), 0);
        FollowBench again(LiveWindow::bothServos);
        again.line.close();
        again.follow.tick();
        again.answerAll(2);
        again.follow.moved();
        EXPECT_EQ(opened(again), 1) << "a movement opens it";
        EXPECT_TRUE(again.follow.isFollowing());
    }
}

TEST(LiveFollow, ACancelOnAMuteLineWaitsOnceAndTellsOnce)
{
    FollowBench bench;
    bench.answerAll(1);
    bench.follow.open();
    bench.journal.clear();
    const auto before = bench.line.now();
    bench.line.onWait([&] { bench.follow.stop(); }); // cancelled while the reply is awaited
    bench.follow.tick();
    bench.follow.restore();
    EXPECT_EQ(bench.journal, (Journal{"write 37", "message no reply\r\nnothing came"}));
    EXPECT_EQ(bench.line.now() - before, usualTimeOut);

    FollowBench later;
    later.answerAll(1);
    later.follow.open();
    later.follow.tick();
    later.journal.clear();
    const auto told = later.line.now();
    later.follow.restore();
    EXPECT_EQ(later.journal, (Journal{"write 37", "message no reply\r\nnothing came"}));
    EXPECT_EQ(later.line.now() - told, usualTimeOut);
}

TEST(LiveSetup, SaysThatAServoHasNoPower)
{
    struct Case {
        LiveWindow window;
        int fitted;
        const char* words;
    };
    const Case cases[] = {{LiveWindow::firstServo, 0, "0: 1"}, {LiveWindow::firstServo, 2, "2: 1"},
                          {LiveWindow::firstServo, 1, ""},     {LiveWindow::secondServo, 253, "253: 2"},
                          {LiveWindow::secondServo, 2, ""},    {LiveWindow::times, 252, "252: 1/2"},
                          {LiveWindow::times, 2, ""}};
    LanguageTables texts;
    test::setText(texts, 813, u"{1}: {2}");
    CvSet set;
    const auto said = [&](LiveWindow window) {
        return utf8FromText(servoWithoutPower(window, set, texts).value_or(Text()));
    };
    set.profile.model = Model::kv07;
    set.table.at(112, Column::number) = u"112";
    set.table.at(112, Column::factoryValue) = u"0";
    for (const Case& expected : cases) {
        set.table.setValue(112, expected.fitted);
        EXPECT_EQ(said(expected.window), expected.words);
    }
    set.table.setValue(112, 0);
    set.profile.model = Model::receiver;
    EXPECT_EQ(said(LiveWindow::firstServo), "") << "CV112 is something else there";
    set.profile.model = Model::kv07;
    set.table.at(112, Column::factoryValue).clear();
    set.table.at(1, Column::factoryValue) = u"3";
    EXPECT_EQ(said(LiveWindow::firstServo), "") << "not used";
}

TEST(LiveFollow, TheEndOfTheProgramEndsIt)
{
    FollowBench bench;
    bench.answerAll(1);
    bench.follow.tick();
    bench.journal.clear();
    bench.line.endDuringNextWait();
    bench.follow.tick();
    EXPECT_TRUE(bench.follow.hasEnded());
    bench.follow.restore();
    EXPECT_EQ(bench.journal, (Journal{"write 37"}));
}

} // namespace karvo
