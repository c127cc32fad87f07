#include "editors/servo_addresses.h"

#include "support/link_bench.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

// All CVs but those have a factory value.
CvSet setOf(Model model, const std::vector<int>& unused = {})
{
    CvSet set;
    set.profile.model = model;
    for (int cv = 1; cv <= CvTable::lastRow; ++cv) {
        set.table.at(cv, Column::number) = textFromNumber(cv);
        set.table.at(cv, Column::factoryValue) = u"0";
        set.table.setValue(cv, 0);
    }
    for (const int cv : unused)
        set.table.at(cv, Column::factoryValue).clear();
    return set;
}

std::string planOf(const std::vector<TypedServoAddress>& addresses, const CvSet& set)
{
    const auto planned = planOfServoAddresses(addresses, set);
    if (const auto* const servo = std::get_if<int>(&planned))
        return "servo " + std::to_string(*servo);
    std::string lines;
    for (const PlannedWrite& write : std::get<WritePlan>(planned))
        lines += std::to_string(write.cv) + "=" + std::to_string(write.value) + " ";
    return lines;
}

TEST(ServoAddresses, EachCvInItsOrder)
{
    const auto kv07 = setOf(Model::kv07);
    const auto receiver = setOf(Model::receiver);
    const auto oldReceiver = setOf(Model::receiver, {250});
    struct Case {
        std::vector<TypedServoAddress> addresses;
        const CvSet& set;
        const char* plan;
    };
    const Case cases[] = {
        {{{1, u"9999"}, {2, u" 256 "}}, kv07, "11=39 12=15 13=1 14=0 "},
        {{{1, u"1"}, {2, u""}}, receiver, "11=0 12=1 248=1 13=0 14=0 250=1 "},
        {{{1, u"0"}, {2, u"300"}}, oldReceiver, "11=0 12=0 248=1 13=1 14=44 "},
        {{{1, u"x", false}, {2, u"127"}}, receiver, "13=0 14=127 250=1 "},
        {{{1, u"5", false}, {2, u"6", false}}, receiver, ""},
        {{{1, u"10000"}, {2, u"x"}}, receiver, "servo 1"},
        {{{1, u"5"}, {2, u"-1"}}, kv07, "servo 2"},
    };
    for (const Case& expected : cases)
        EXPECT_EQ(planOf(expected.addresses, expected.set), expected.plan);
}

TEST(ServoAddresses, WhatTheListHolds)
{
    auto set = setOf(Model::kv07);
    for (const auto& [cv, value] : {std::pair{11, 39}, {12, 15}})
        set.table.setValue(cv, value);
    EXPECT_EQ(servoAddressOf(set.table, 1), u"9999");
    EXPECT_EQ(servoAddressOf(set.table, 2), u"") << "none";
    EXPECT_TRUE(hasServoAddress(set, 2));
    EXPECT_FALSE(hasServoAddress(setOf(Model::receiver, {13, 14, 250}), 2));
}

TEST(ServoAddresses, SuccessIsToldByBothCvsOfEachServo)
{
    LanguageTables texts;
    test::setText(texts, 297, u"written");
    EXPECT_EQ(servoAddressesWritten({{11, 0}, {12, 1}, {248, 1}, {13, 0}, {14, 2}}, texts),
              u"CV11 + CV12  written\r\nCV13 + CV14  written");
    EXPECT_EQ(servoAddressesWritten({{13, 0}, {14, 2}}, texts), u"CV13 + CV14  written");
}

} // namespace
} // namespace karvo
