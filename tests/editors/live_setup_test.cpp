#include "editor_bench.h"
#include "editors/live_follow.h"
#include "support/case_table.h"
#include "support/test_bench.h"

#include <gtest/gtest.h>

#include <map>
#include <sstream>

namespace karvo
{
namespace
{

using test::Journal;

CvTable servoTable(int returnTime, int sweepTime)
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

TEST(LiveSetupTest, EachWindowMovesItsServo)
{
    const std::pair<LiveWindow, std::string> cases[] = {{LiveWindow::bothServos, "2:200 3:200 "},
                                                        {LiveWindow::firstServo, "2:200 3:100 "},
                                                        {LiveWindow::secondServo, "2:100 3:200 "}};
    for (const auto& [window, moved] : cases) {
        LiveSetup setup(window, servoTable(0, 0));
        EXPECT_EQ(setup.opening().channel, 1);
        EXPECT_EQ(setup.opening().value, 100);
        EXPECT_EQ(tickOf(setup), "2:100 3:100 ");
        setup.move(173, 200);
        EXPECT_EQ(tickOf(setup), moved);
        setup.move(176, 30);
        EXPECT_EQ(tickOf(setup), moved) << "the speed of travel is not followed";
        EXPECT_EQ(test::planText(setup.plan()), "172=100 173=200 176=30 ");
    }
}

TEST(LiveSetupTest, TimesGoOverOneChannelAndExcludeEachOther)
{
    // The return time is tried, unless the sweep time alone is in use.
    const std::tuple<int, int, std::string> cases[] = {
        {0, 0, "2:0 "}, {7, 0, "2:7 "}, {7, 40, "2:7 "}, {0, 40, "2:40 "}};
    for (const auto& [returnTime, sweepTime, tick] : cases)
        EXPECT_EQ(tickOf(LiveSetup(LiveWindow::times, servoTable(returnTime, sweepTime))), tick);
    LanguageTables texts;
    test::setTexts(texts, {{758, u"m758"}, {759, u"m759"}, {760, u"m760"}});
    LiveSetup setup(LiveWindow::times, servoTable(0, 40));
    EXPECT_EQ(setup.opening().value, 156) << "the position that the servo returns from";
    EXPECT_EQ(test::planText(setup.plan()), "174=0 175=40 ");
    setup.move(174, 9);
    EXPECT_EQ(setup.clearExcluded(174, texts), u"m759\r\nm760");
    EXPECT_EQ(test::planText(setup.plan()), "175=0 174=9 ") << "never both, on the way either";
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

TEST(LiveSetupTest, SaysThatAServoHasNoPower)
{
    using enum LiveWindow;
    LanguageTables texts;
    test::setText(texts, 813, u"{1}: {2}");
    const auto words = [&](LiveWindow window, int fitted, Model model = Model::kv07,
                           const std::vector<int>& unused = {}) {
        auto set = test::setUsing(model, unused);
        set.table.setValue(112, fitted);
        return utf8FromText(servoWithoutPower(window, set, texts).value_or(Text()));
    };
    const std::vector<std::string> told = {
        words(firstServo, 0),  words(firstServo, 2), words(firstServo, 1), words(secondServo, 253),
        words(secondServo, 2), words(times, 252),    words(times, 2)};
    EXPECT_EQ(told, (std::vector<std::string>{"0: 1", "2: 1", "", "253: 2", "", "252: 1, 2", ""}));
    EXPECT_EQ(words(firstServo, 0, Model::kv07, {112}) + words(firstServo, 0, Model::receiver), "")
        << "CV112 is something else there";
}

struct FollowBench : test::TestBench {
    explicit FollowBench(LiveWindow window = LiveWindow::times) : setup(window, servoTable(7, 0))
    {
        test::setText(state.texts, 810, u"line lost");
        line.open();
        journal.clear();
    }
    void answerAll(int values)
    {
        for (int i = 0; i < values; ++i) {
            for (const Bytes& reply : {Bytes{'2', '7'}, Bytes{6}, Bytes{6}})
                line.replyWith(reply);
        }
    }
    // "172=120" moves a CV's slider, "hangup=2" is a line that hangs up behind two replies.
    void act(const std::string& step)
    {
        const auto equals = step.find('=');
        const int value = equals == std::string::npos ? 0 : std::stoi(step.substr(equals + 1));
        const Bytes replies[] = {{'2', '7'}, {6}, {6}};
        if (step.starts_with("answers"))
            answerAll(value);
        else if (step.starts_with("hangup")) {
            for (int i = 0; i < value; ++i)
                line.replyWith(replies[i]);
            line.replyWith({});
        } else if (equals != std::string::npos)
            setup.move(std::stoi(step), value);
        else
            steps.at(step)();
    }
    LiveSetup setup;
    LiveFollow follow{bench, setup};
    const std::map<std::string, std::function<void()>> steps = {
        {"open", [this] { follow.open(); }},   {"tick", [this] { follow.tick(); }},
        {"moved", [this] { follow.moved(); }}, {"restore", [this] { follow.restore(); }},
        {"close", [this] { line.close(); }},   {"end", [this] { line.endWhenSilent(); }}};
};

const Journal oneSilence = {"write 37", "message no reply\r\nnothing came"};

TEST(LiveFollowTest, SendsWhatIsTriedAndTellsAFaultOnce)
{
    const std::map<std::string, LiveWindow> windows = {{"firstServo", LiveWindow::firstServo},
                                                       {"bothServos", LiveWindow::bothServos},
                                                       {"times", LiveWindow::times}};
    for (const auto& [window, before, step, passed, state] : test::casesOf<5>("editors/live_follow.txt")) {
        FollowBench bench(windows.at(window));
        std::istringstream steps(before);
        for (std::string each; steps >> each;)
            bench.act(each);
        bench.journal.clear();
        bench.act(step);
        EXPECT_EQ(test::joined(bench.journal), passed) << before << " " << step;
        EXPECT_EQ(bench.follow.isFollowing(), state == "following") << before << " " << step;
        EXPECT_EQ(bench.follow.hasLostLine(), state.starts_with("lost")) << before << " " << step;
        EXPECT_EQ(bench.follow.hasEnded(), state == "ended") << before << " " << step;
    }
}

// Movements while an exchange is under way: no second exchange, and only the newest of them is sent.
TEST(LiveFollowTest, TheNewestValueWins)
{
    FollowBench bench;
    bench.answerAll(2);
    int left = 3;
    bench.line.onWait([&] {
        if (left == 0)
            return;
        bench.setup.move(174, 50 + --left);
        bench.follow.tick();
        bench.follow.moved();
        EXPECT_TRUE(bench.follow.isUnderWay());
    });
    bench.follow.tick();
    EXPECT_EQ(test::joined(bench.journal),
              "write 37, write 69 87 77, write 2 7 9, write 37, write 69 87 77, write 2 50 52");
}

TEST(LiveFollowTest, ACancelOnAMuteLineWaitsOnceAndTellsOnce)
{
    for (const bool whileAwaiting : {true, false}) {
        FollowBench bench;
        bench.answerAll(whileAwaiting ? 1 : 2);
        bench.follow.open();
        if (!whileAwaiting)
            bench.follow.tick();
        bench.journal.clear();
        const auto before = bench.line.now();
        if (whileAwaiting) {
            bench.line.onWait([&] { bench.follow.stop(); });
            bench.follow.tick();
        }
        bench.follow.restore();
        EXPECT_EQ(bench.journal, oneSilence);
        EXPECT_EQ(bench.line.now() - before, usualTimeOut);
    }
}

} // namespace
} // namespace karvo
