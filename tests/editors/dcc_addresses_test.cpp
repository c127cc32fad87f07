#include "editors/dcc_addresses.h"

#include "support/link_bench.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

class DccAddressesTest : public testing::Test
{
protected:
    DccAddressesTest()
    {
        for (const auto& [cv, value] :
             {std::pair{1, 3}, {3, 4}, {15, 0}, {16, 129}, {17, 39}, {18, 15}, {21, 17}, {29, 6}})
            hold(cv, value);
    }
    void hold(int cv, int value)
    {
        set.table.at(cv, Column::number) = textFromNumber(cv);
        set.table.setValue(cv, value);
    }
    std::string planOf(const TypedAddresses& addresses) const
    {
        const auto planned = planOfAddresses(addresses, set.table);
        if (const auto* const wrong = std::get_if<Message>(&planned))
            return "message " + std::to_string(static_cast<int>(*wrong));
        std::string lines;
        for (const PlannedWrite& write : std::get<WritePlan>(planned))
            lines += utf8FromText(plannedLine(write)) + "; ";
        return lines;
    }

    CvSet set;
};

constexpr auto shortForm = AddressForm::shortForm;
constexpr auto longForm = AddressForm::longForm;

TEST_F(DccAddressesTest, WhatTheTableHoldsInBothForms)
{
    auto addresses = addressesOf(set);
    EXPECT_EQ(addresses.form, shortForm);
    EXPECT_EQ(addresses.first, u"3");
    EXPECT_EQ(addresses.second, u"4");
    EXPECT_EQ(addresses.secondAnswers, false);
    hold(29, 38);
    hold(21, 18);
    addresses = addressesOf(set);
    EXPECT_EQ(addresses.form, longForm);
    EXPECT_EQ(addresses.first, u"9999");
    EXPECT_EQ(addresses.second, u"129");
    EXPECT_EQ(addresses.secondAnswers, true);
    set.table.at(16, Column::value).clear();
    EXPECT_EQ(secondAddressOf(set.table, longForm), u"");
    set.profile.model = Model::receiver;
    EXPECT_FALSE(addressesOf(set).secondAnswers);
}

TEST_F(DccAddressesTest, EachCvInItsOrder)
{
    struct Case {
        TypedAddresses addresses;
        const char* plan;
    };
    const Case cases[] = {
        {{shortForm, u"126", u"1", true, true, false}, "CV1 = 126; CV3 = 1; CV29 = 0; CV21 = 17; "},
        {{shortForm, u"5", u"6", false, true, true}, "CV3 = 6; CV29 = 0; CV21 = 19; "},
        {{shortForm, u"5", u"6", false, false, false}, "CV29 = 0; CV21 = 17; "},
        {{longForm, u"128", u"9999", true, true, false},
         "CV17 = 0; CV18 = 128; CV15 = 39; CV16 = 15; CV29 = 32; CV21 = 17; "},
        {{longForm, u" 256 ", u"", true, true, true}, "CV17 = 1; CV18 = 0; CV29 = 32; CV21 = 19; "},
        {{longForm, u"300", u"301", true, false, false}, "CV17 = 1; CV18 = 44; CV29 = 32; CV21 = 17; "},
        {{longForm, u"300", u"0", true, false, false}, "CV17 = 1; CV18 = 44; CV29 = 32; CV21 = 17; "},
        {{shortForm, u"5", u"0", true, false, false}, "CV1 = 5; CV29 = 0; CV21 = 17; "},
        {{shortForm, u"5", u" ", true, false, false}, "CV1 = 5; CV29 = 0; CV21 = 17; "},
        {{shortForm, u"5", u"6", true, true, {}}, "CV1 = 5; CV3 = 6; CV29 = 0; "}, // a receiver
    };
    for (const Case& expected : cases)
        EXPECT_EQ(planOf(expected.addresses), expected.plan);
    hold(21, 19);
    EXPECT_EQ(planOf({shortForm, u"5", u"6", false, false, false}), "CV29 = 0; CV21 = 17; ");
    EXPECT_EQ(planOf({shortForm, u"5", u"6", false, false, true}), "CV29 = 0; CV21 = 19; ");
}

TEST_F(DccAddressesTest, BothAddressesAreCheckedBeforeAnything)
{
    for (const TextView wrong : {u"0", u"127", u"", u"-3", u"4x", u"3 4", u"99999999999999999999"}) {
        EXPECT_EQ(planOf({shortForm, Text(wrong), u"4"}), "message 254");
        EXPECT_EQ(planOf({shortForm, u"3", Text(wrong)}), "message 255");
        EXPECT_EQ(planOf({shortForm, Text(wrong), u"4", false, true}), "message 254") << "ticked or not";
    }
    for (const TextView wrong : {u"127", u"10000", u"abc", u"1.5"}) {
        EXPECT_EQ(planOf({longForm, Text(wrong), u"200"}), "message 756");
        EXPECT_EQ(planOf({longForm, u"200", Text(wrong)}), "message 757");
        EXPECT_EQ(planOf({longForm, u"200", Text(wrong), true, false}), "message 757") << "ticked or not";
    }
    EXPECT_EQ(planOf({longForm, u"200", u"0"}), "message 757");
    EXPECT_EQ(planOf({longForm, u"", u"200"}), "message 756");
}

TEST_F(DccAddressesTest, AsksBeforeWhatMayNotBeMeant)
{
    LanguageTables texts;
    test::setText(texts, 778, u"only {1}?");
    test::setText(texts, 779, u"both {1}?");
    const auto asked = [&](const TypedAddresses& addresses) {
        const auto planned = planOfAddresses(addresses, set.table);
        return utf8FromText(questionBefore(addresses, std::get<WritePlan>(planned), texts).value_or(Text()));
    };
    EXPECT_EQ(asked({shortForm, u"5", u"6", false, false, true}), "only CV29 = 0, CV21 = 19?");
    EXPECT_EQ(asked({longForm, u"300", u"", false, true, {}}), "only CV29 = 32?");
    EXPECT_EQ(asked({longForm, u"300", u"0300", true, false, false}), "both 300?");
    EXPECT_EQ(asked({shortForm, u"5", u"6", true, false, false}), "");
    EXPECT_EQ(asked({longForm, u"300", u"", true, true, false}), "");
}

} // namespace
} // namespace karvo
