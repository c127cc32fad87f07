#include "editors/dcc_addresses.h"

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
            set(cv, value);
    }
    void set(int cv, int value)
    {
        table.at(cv, Column::number) = textFromNumber(cv);
        table.setValue(cv, value);
    }
    std::string planOf(const TypedAddresses& addresses) const
    {
        const auto planned = planOfAddresses(addresses, table);
        if (const auto* const wrong = std::get_if<Message>(&planned))
            return "message " + std::to_string(static_cast<int>(*wrong));
        std::string lines;
        for (const PlannedWrite& write : std::get<WritePlan>(planned))
            lines += utf8FromText(plannedLine(write)) + "; ";
        return lines;
    }

    CvTable table;
};

constexpr auto shortForm = AddressForm::shortForm;
constexpr auto longForm = AddressForm::longForm;

TEST_F(DccAddressesTest, WhatTheTableHoldsInBothForms)
{
    auto addresses = addressesOf(table);
    EXPECT_EQ(addresses.form, shortForm);
    EXPECT_EQ(addresses.first, u"3");
    EXPECT_EQ(addresses.second, u"4");
    EXPECT_FALSE(addresses.secondAnswers);
    set(29, 38);
    set(21, 18);
    addresses = addressesOf(table);
    EXPECT_EQ(addresses.form, longForm);
    EXPECT_EQ(addresses.first, u"9999");
    EXPECT_EQ(addresses.second, u"129");
    EXPECT_TRUE(addresses.secondAnswers);
    table.at(16, Column::value).clear();
    EXPECT_EQ(secondAddressOf(table, longForm), u"");
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
    };
    for (const Case& expected : cases)
        EXPECT_EQ(planOf(expected.addresses), expected.plan);
    set(21, 19);
    EXPECT_EQ(planOf({shortForm, u"5", u"6", false, false, false}), "CV29 = 0; CV21 = 17; ");
    EXPECT_EQ(planOf({shortForm, u"5", u"6", false, false, true}), "CV29 = 0; CV21 = 19; ");
}

TEST_F(DccAddressesTest, BothAddressesAreCheckedBeforeAnything)
{
    for (const TextView wrong : {u"0", u"127", u"", u"-3", u"4x", u"3 4", u"99999999999999999999"}) {
        EXPECT_EQ(planOf({shortForm, Text(wrong), u"4"}), "message 254");
        EXPECT_EQ(planOf({shortForm, u"3", Text(wrong)}), "message 255");
    }
    for (const TextView wrong : {u"127", u"10000", u"abc", u"1.5"}) {
        EXPECT_EQ(planOf({longForm, Text(wrong), u"200"}), "message 756");
        EXPECT_EQ(planOf({longForm, u"200", Text(wrong)}), "message 757");
    }
    EXPECT_EQ(planOf({longForm, u"", u"200"}), "message 756");
}

} // namespace
} // namespace karvo
