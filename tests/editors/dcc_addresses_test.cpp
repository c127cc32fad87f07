#include "editors/dcc_addresses.h"

#include "editor_bench.h"

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
        return test::planText(std::get<WritePlan>(planned));
    }

    CvSet set;
};

constexpr auto shortForm = AddressForm::shortForm;
constexpr auto longForm = AddressForm::longForm;

TEST_F(DccAddressesTest, WhatTheTableHoldsInBothForms)
{
    const auto held = [&] {
        const auto addresses = addressesOf(set);
        return (addresses.form == longForm ? u"long " : u"short ") + addresses.first + u" " +
               addresses.second + (addresses.secondAnswers == true ? u" both" : u"");
    };
    EXPECT_EQ(held(), u"short 3 4");
    hold(29, 38);
    hold(21, 18);
    EXPECT_EQ(held(), u"long 9999 129 both");
    set.table.at(16, Column::value).clear();
    EXPECT_EQ(secondAddressOf(set.table, longForm), u"");
    set.profile.model = Model::receiver;
    EXPECT_FALSE(addressesOf(set).secondAnswers);
}

TEST_F(DccAddressesTest, EachCvInItsOrderOrWhichAddressIsWrong)
{
    const std::pair<TypedAddresses, const char*> cases[] = {
        {{shortForm, u"126", u"1", true, true, false}, "1=126 3=1 29=0 21=17 "},
        {{shortForm, u"5", u"6", false, true, true}, "3=6 29=0 21=19 "},
        {{longForm, u"128", u"9999", true, true, false}, "17=0 18=128 15=39 16=15 29=32 21=17 "},
        {{longForm, u" 256 ", u"", true, true, true}, "17=1 18=0 29=32 21=19 "},
        {{longForm, u"300", u"301", true, false, false}, "17=1 18=44 29=32 21=17 "},
        {{longForm, u"300", u"0", true, false, false}, "17=1 18=44 29=32 21=17 "},
        {{shortForm, u"5", u"0", true, false, false}, "1=5 29=0 21=17 "},
        {{shortForm, u"5", u" ", true, false, false}, "1=5 29=0 21=17 "},
        {{shortForm, u"5", u"6", true, true, {}}, "1=5 3=6 29=0 "}, // a receiver
        {{longForm, u"200", u"0"}, "message 757"},
        {{longForm, u"", u"200"}, "message 756"},
        {{shortForm, u"127", u"4", false, true}, "message 254"}, // ticked or not
        {{longForm, u"200", u"127", true, false}, "message 757"},
    };
    for (const auto& [addresses, plan] : cases)
        EXPECT_EQ(planOf(addresses), plan);
    for (const TextView wrong : {u"0", u"127", u"", u"-3", u"4x", u"3 4", u"99999999999999999999"}) {
        EXPECT_EQ(planOf({shortForm, Text(wrong), u"4"}), "message 254");
        EXPECT_EQ(planOf({shortForm, u"3", Text(wrong)}), "message 255");
    }
    for (const TextView wrong : {u"127", u"10000", u"abc", u"1.5"}) {
        EXPECT_EQ(planOf({longForm, Text(wrong), u"200"}), "message 756");
        EXPECT_EQ(planOf({longForm, u"200", Text(wrong)}), "message 757");
    }
    hold(21, 19);
    EXPECT_EQ(planOf({shortForm, u"5", u"6", false, false, false}), "29=0 21=17 ");
    EXPECT_EQ(planOf({shortForm, u"5", u"6", false, false, true}), "29=0 21=19 ");
}

TEST_F(DccAddressesTest, AsksBeforeWhatMayNotBeMeant)
{
    LanguageTables texts;
    test::setTexts(texts, {{778, u"only {1}?"}, {779, u"both {1}?"}});
    const std::pair<TypedAddresses, const char*> cases[] = {
        {{shortForm, u"5", u"6", false, false, true}, "only CV29 = 0, CV21 = 19?"},
        {{longForm, u"300", u"", false, true, {}}, "only CV29 = 32?"},
        {{longForm, u"300", u"0300", true, false, false}, "both 300?"},
        {{shortForm, u"5", u"6", true, false, false}, ""},
        {{longForm, u"300", u"", true, true, false}, ""}};
    for (const auto& [addresses, question] : cases) {
        const auto planned = planOfAddresses(addresses, set.table);
        EXPECT_EQ(
            utf8FromText(questionBefore(addresses, std::get<WritePlan>(planned), texts).value_or(Text())),
            question);
    }
}

} // namespace
} // namespace karvo
