// Where an editor opens, and what it makes of what is typed: a plan of writes, or a refusal.
#include "editors/dcc_addresses.h"
#include "editors/editor_gate.h"
#include "editors/servo_addresses.h"

#include "editor_bench.h"
#include "support/case_table.h"

#include <gtest/gtest.h>

#include <sstream>

namespace karvo
{
namespace
{

using test::casesOf;
using test::setTexts;

// A list of a model, and the first and the last of the CVs that it does not use.
CvSet setNamed(const std::string& model, const std::string& unused)
{
    std::vector<int> cvs;
    std::istringstream ends(unused);
    for (int first = 0, last = 0; ends >> first >> last;) {
        for (int cv = first; cv <= last; ++cv)
            cvs.push_back(cv);
    }
    int number = 0;
    while (!model.starts_with(utf8FromText(modelName(static_cast<Model>(number)))))
        ++number;
    return test::setUsing(static_cast<Model>(number), cvs);
}

TEST(EditorGateTest, OpensWhereModelAndDescriptionHaveWhatItNeeds)
{
    LanguageTables texts;
    setTexts(texts, {{774, u"no list"}, {775, u"{1} is not {2}"}, {776, u"{1} lacks {2}"}, {777, u"no {1}"}});
    const std::array<std::string, 10> editors = {"addresses",  "braking",       "speedTable", "baseAndTop",
                                                 "presets",    "bothServos",    "firstServo", "secondServo",
                                                 "servoTimes", "servoAddresses"};
    for (const auto& [editor, model, unused, reason] : casesOf<4>("editors/gates.txt")) {
        auto set = model == "none" ? CvSet() : setNamed(model, unused);
        if (model.ends_with("offline"))
            set.table.at(173, Column::value).clear();
        const auto number = std::find(editors.begin(), editors.end(), editor) - editors.begin();
        EXPECT_EQ(utf8FromText(whyNotOpen(static_cast<Editor>(number), set, texts).value_or(Text())), reason)
            << editor << model;
    }
}

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
    static TypedAddresses typed(const std::string& form, const std::string& first, const std::string& second,
                                const std::string& ticked, const std::string& answers)
    {
        TypedAddresses addresses{form == "long" ? AddressForm::longForm : AddressForm::shortForm,
                                 textFromUtf8(first), textFromUtf8(second), ticked.starts_with('1'),
                                 ticked.ends_with('2')};
        if (!answers.empty())
            addresses.secondAnswers = answers == "yes";
        return addresses;
    }
    std::string planOf(const TypedAddresses& addresses) const
    {
        const auto planned = planOfAddresses(addresses, set.table);
        if (const auto* const wrong = std::get_if<Message>(&planned))
            return "message " + std::to_string(static_cast<int>(*wrong));
        return test::planText(std::get<WritePlan>(planned));
    }
    Text held() const
    {
        const auto addresses = addressesOf(set);
        return (addresses.form == AddressForm::longForm ? u"long " : u"short ") + addresses.first + u" " +
               addresses.second + (addresses.secondAnswers == true ? u" both" : u"");
    }

    CvSet set;
};

TEST_F(DccAddressesTest, WhatTheTableHoldsInBothForms)
{
    EXPECT_EQ(held(), u"short 3 4");
    hold(29, 38);
    hold(21, 18);
    EXPECT_EQ(held(), u"long 9999 129 both");
    set.table.at(16, Column::value).clear();
    EXPECT_EQ(secondAddressOf(set.table, AddressForm::longForm), u"");
    set.profile.model = Model::receiver;
    EXPECT_FALSE(addressesOf(set).secondAnswers);
}

TEST_F(DccAddressesTest, EachCvInItsOrderOrWhichAddressIsWrongAndAQuestionBeforeWhatMayNotBeMeant)
{
    for (const auto& [form, first, second, ticked, answers, plan] : casesOf<6>("editors/dcc_addresses.txt"))
        EXPECT_EQ(planOf(typed(form, first, second, ticked, answers)), plan)
            << form << first << " " << second;
    LanguageTables texts;
    setTexts(texts, {{778, u"only {1}?"}, {779, u"both {1}?"}});
    for (const auto& [form, first, second, ticked, answers, question] :
         casesOf<6>("editors/address_questions.txt")) {
        const auto addresses = typed(form, first, second, ticked, answers);
        const auto planned = std::get<WritePlan>(planOfAddresses(addresses, set.table));
        EXPECT_EQ(utf8FromText(questionBefore(addresses, planned, texts).value_or(Text())), question);
    }
    hold(21, 19);
    EXPECT_EQ(planOf(typed("short", "5", "6", "", "no")), "29=0 21=17 ");
    EXPECT_EQ(planOf(typed("short", "5", "6", "", "yes")), "29=0 21=19 ");
}

TEST(ServoAddressesTest, EachCvInItsOrderAndWhatIsToldOfSuccess)
{
    for (const auto& [model, unused, first, second, expected] : casesOf<5>("editors/servo_addresses.txt")) {
        const TypedServoAddress addresses[] = {{1, textFromUtf8(first), first != "-"},
                                               {2, textFromUtf8(second), second != "-"}};
        const auto planned = planOfServoAddresses(addresses, setNamed(model, unused));
        const auto* const plan = std::get_if<WritePlan>(&planned);
        EXPECT_EQ(plan != nullptr ? test::planText(*plan) : "servo " + std::to_string(std::get<int>(planned)),
                  expected);
    }
    auto set = test::setUsing(Model::kv07, {}, 0);
    set.table.setValue(11, 39);
    set.table.setValue(12, 15);
    EXPECT_EQ(servoAddressOf(set.table, 1), u"9999");
    EXPECT_EQ(servoAddressOf(set.table, 2), u"") << "none";
    EXPECT_TRUE(hasServoAddress(set, 2));
    EXPECT_FALSE(hasServoAddress(test::setUsing(Model::receiver, {13, 14, 250}), 2));
    LanguageTables texts;
    test::setText(texts, 297, u"written");
    EXPECT_EQ(servoAddressesWritten({{11, 0}, {12, 1}, {248, 1}, {13, 0}, {14, 2}}, texts),
              u"CV11 + CV12  written\r\nCV13 + CV14  written");
}

} // namespace
} // namespace karvo
