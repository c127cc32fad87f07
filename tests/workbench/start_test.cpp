#include "support/test_bench.h"
#include "workbench/start.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

class StartTest : public testing::Test, protected test::TestBench
{
protected:
    using Values = std::map<std::string, Text>;
};

TEST_F(StartTest, TheFirstStartLeavesAllFiveSettings)
{
    EXPECT_EQ(readSettings(state, settings), std::nullopt);
    EXPECT_EQ(settings.values, (Values{{"Parameter/ATMELpath", u"C:\\"},
                                       {"Parameter/Com_Port", u"1"},
                                       {"Parameter/Expert", u"0"},
                                       {"Parameter/Language", u""},
                                       {"Parameter/Location", u""}}));
    EXPECT_EQ(state.hexFolder, u"C:\\");
    EXPECT_EQ(state.link.portNumber, 1);
    EXPECT_FALSE(state.expert);
}

TEST_F(StartTest, TheOnlyPortThatIsThereIsTakenWhereNoneIsStored)
{
    const std::pair<std::vector<int>, int> cases[] = {{{}, 1}, {{5}, 5}, {{5, 6}, 1}};
    for (const auto& [present, number] : cases) {
        settings.values.clear();
        readSettings(state, settings, present);
        EXPECT_EQ(state.link.portNumber, number);
    }
    readSettings(state, settings, {9});
    EXPECT_EQ(state.link.portNumber, 1) << "stored by now";
}

TEST_F(StartTest, WhatIsStoredIsKept)
{
    settings.values = {{"Parameter/ATMELpath", u"D:\\hex"},
                       {"Parameter/Com_Port", u"12"},
                       {"Parameter/Expert", u"1"},
                       {"Parameter/Language", u"5"},
                       {"Parameter/Location", u"somewhere"}};
    const Values before = settings.values;
    EXPECT_EQ(readSettings(state, settings), LanguageCode::french);
    EXPECT_EQ(settings.values, before);
    EXPECT_EQ(state.link.portNumber, 12);
    EXPECT_TRUE(state.expert);
    EXPECT_EQ(state.hexFolder, u"D:\\hex");
}

TEST_F(StartTest, NonsenseCountsAsNotStored)
{
    settings.values = {
        {"Parameter/Com_Port", u"99"}, {"Parameter/Expert", u"yes"}, {"Parameter/Language", u"9"}};
    EXPECT_EQ(readSettings(state, settings), std::nullopt);
    EXPECT_EQ(state.link.portNumber, 1);
    EXPECT_FALSE(state.expert);
    EXPECT_EQ(settings.values["Parameter/Com_Port"], u"1");
}

} // namespace
} // namespace karvo
