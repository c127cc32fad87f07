#include "editors/servo_addresses.h"

#include "editor_bench.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using test::setUsing;

TEST(ServoAddressesTest, EachCvInItsOrder)
{
    const auto kv07 = setUsing(Model::kv07);
    const auto receiver = setUsing(Model::receiver);
    const std::tuple<std::vector<TypedServoAddress>, CvSet, const char*> cases[] = {
        {{{1, u"9999"}, {2, u" 256 "}}, kv07, "11=39 12=15 13=1 14=0 "},
        {{{1, u"1"}, {2, u""}}, receiver, "11=0 12=1 248=1 13=0 14=0 250=1 "},
        {{{1, u"0"}, {2, u"300"}}, setUsing(Model::receiver, {250}), "11=0 12=0 248=1 13=1 14=44 "},
        {{{1, u"x", false}, {2, u"127"}}, receiver, "13=0 14=127 250=1 "},
        {{{1, u"5", false}, {2, u"6", false}}, receiver, ""},
        {{{1, u"10000"}, {2, u"x"}}, receiver, "servo 1"},
        {{{1, u"5"}, {2, u"-1"}}, kv07, "servo 2"},
    };
    for (const auto& [addresses, set, expected] : cases) {
        const auto planned = planOfServoAddresses(addresses, set);
        const auto* const plan = std::get_if<WritePlan>(&planned);
        EXPECT_EQ(plan != nullptr ? test::planText(*plan) : "servo " + std::to_string(std::get<int>(planned)),
                  expected);
    }
}

TEST(ServoAddressesTest, WhatTheListHoldsAndWhatIsToldOfSuccess)
{
    auto set = setUsing(Model::kv07, {}, 0);
    set.table.setValue(11, 39);
    set.table.setValue(12, 15);
    EXPECT_EQ(servoAddressOf(set.table, 1), u"9999");
    EXPECT_EQ(servoAddressOf(set.table, 2), u"") << "none";
    EXPECT_TRUE(hasServoAddress(set, 2));
    EXPECT_FALSE(hasServoAddress(setUsing(Model::receiver, {13, 14, 250}), 2));
    LanguageTables texts;
    test::setText(texts, 297, u"written");
    EXPECT_EQ(servoAddressesWritten({{11, 0}, {12, 1}, {248, 1}, {13, 0}, {14, 2}}, texts),
              u"CV11 + CV12  written\r\nCV13 + CV14  written");
    EXPECT_EQ(servoAddressesWritten({{13, 0}, {14, 2}}, texts), u"CV13 + CV14  written");
}

} // namespace
} // namespace karvo
