#include "cvdata/comparison.h"
#include "cvdata/list_file.h"
#include "support/link_bench.h"
#include "support/memory_files.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using test::bytesOf;

class ComparisonTest : public testing::Test
{
protected:
    ComparisonTest()
    {
        test::setText(texts, 690, u"In der Datei ist ein ATmega168");
        test::setText(texts, 691, u"Fahrzeug hat einen ATmega328");
        test::setText(texts, 692, u"CVs können nicht verglichen werden.");
        test::setText(texts, 693, u"In der Datei ist ein ATmega328");
        test::setText(texts, 694, u"Fahrzeug hat einen ATmega168");
        test::setText(texts, 697, u"Werte aus der Datei:");
        test::setText(texts, 725, u"Liste: {1}");
        test::setCaption(texts, 26, u"nichts");
        test::setCaption(texts, 170, u"gleich");
        test::setCaption(texts, 171, u"verschieden");
        test::setCaption(texts, 172, u"nur links");
        test::setCaption(texts, 173, u"nur rechts");
        test::setCaption(texts, 174, u"{1} {2} {3} {4}");
        test::setCaption(texts, 175, u"Ergebnis");
        for (int cv = 1; cv <= 100; ++cv) {
            give(one, cv, cv);
            give(other, cv, cv);
        }
    }

    static void give(CvTable& table, int cv, int value)
    {
        table.at(cv, Column::number) = textFromNumber(cv);
        table.setValue(cv, value);
        table.at(cv, Column::text) = u"Name " + textFromNumber(cv) + u"\r\nmehr";
    }

    Comparison compared(SpeedSteps steps = SpeedSteps::asSteps) const
    {
        return compare({u"Fahrzeug", &one, {}, true}, {u"a;b.kvr", &other, {}, false}, one, steps);
    }

    LanguageTables texts;
    CvTable one;
    CvTable other;
};

TEST_F(ComparisonTest, LabelsAreExact)
{
    const std::pair<int, TextView> cvs[] = {
        {1, u"CV1 = "},   {11, u"CV11 = "}, {12, u"CV12 = "}, {13, u"CV13 = "}, {14, u"CV14 = "},
        {15, u"CV15 = "}, {17, u"CV17 = "}, {18, u"CV18 = "}, {22, u"CV22 = "}, {100, u"CV100 = "}};
    for (const auto& [cv, label] : cvs)
        EXPECT_EQ(comparedCvLabel(cv), label);
    const TextView steps[] = {u"  1  (CV97) = ",  u"  2  (CV96) = ",  u"  3  (CV95) = ",  u"  4  (CV94) = ",
                              u"  5  (CV93) = ",  u"  6  (CV92) = ",  u"  7  (CV91) = ",  u"  8  (CV90) = ",
                              u"  9  (CV89) = ",  u"  10  (CV88) = ", u"  11  (CV87) = ", u"  12  (CV86) = ",
                              u"  13  (CV85) = ", u"  14 (CV84) = ",  u"  15 (CV83) = ",  u"  16 (CV82) = ",
                              u"  17 (CV81) = ",  u"  18 (CV80) = ",  u"  19 (CV79) = ",  u"  20 (CV78) = ",
                              u"  21  (CV77) = ", u"  22  (CV76) = ", u"  23  (CV75) = ", u"  24  (CV74) = ",
                              u"  25  (CV73) = ", u"  26  (CV72) = ", u"  27  (CV71) = ", u"  28  (CV70) = "};
    for (int step = 1; step <= 28; ++step)
        EXPECT_EQ(comparedStepLabel(step), steps[step - 1]);
}

TEST_F(ComparisonTest, ACvWithoutAValueIsNotOneThatTheSideLacks)
{
    one.at(150, Column::number) = u"150";
    one.at(151, Column::number) = u"151";
    other.at(151, Column::number) = u"151";
    other.at(152, Column::number) = u"152";
    const auto comparison = compared();
    EXPECT_EQ(comparison.onlyFirst, 1);
    EXPECT_EQ(comparison.onlySecond, 1);
    EXPECT_EQ(comparison.equal, 101);
    EXPECT_FALSE(comparison.isEqual());
}

TEST_F(ComparisonTest, LinesStandInOrderWithTabsBetweenValues)
{
    give(other, 5, 200);
    const auto comparison = compared();
    ASSERT_EQ(comparison.lines.size(), 100u);
    EXPECT_EQ(comparison.lines[0].text(), u"CV1 = 1\t1");
    EXPECT_EQ(comparison.lines[4].text(), u"CV5 = 5\t200");
    EXPECT_EQ(comparison.lines[4].likeness, Likeness::different);
    EXPECT_EQ(comparison.lines[4].name, u"Name 5");
    EXPECT_EQ(comparison.lines[68].text(), u"CV69 = 69\t69");
    EXPECT_EQ(comparison.lines[69].text(), u"  1  (CV97) = 97\t97");
    EXPECT_EQ(comparison.lines[96].text(), u"  28  (CV70) = 70\t70");
    EXPECT_EQ(comparison.lines[97].text(), u"CV98 = 98\t98");
    EXPECT_EQ(compared(SpeedSteps::asRows).lines[69].text(), u"CV70 = 70\t70");
    EXPECT_EQ(speedStepsOf(Model::xtModule), SpeedSteps::asRows);
    EXPECT_EQ(speedStepsOf(Model::kv05), SpeedSteps::asSteps);
}

TEST_F(ComparisonTest, WhatOneSideLacksIsNotEqual)
{
    one.at(2, Column::number).clear();
    one.at(2, Column::value).clear();
    other.at(3, Column::value).clear();
    give(other, 180, 0);
    give(other, 4, 5);
    const auto comparison = compared();
    EXPECT_EQ(comparison.lines[1].text(), u"CV2 = ---\t2");
    EXPECT_EQ(comparison.lines[1].likeness, Likeness::onlySecond);
    EXPECT_EQ(comparison.lines[2].text(), u"CV3 = 3\t---");
    EXPECT_EQ(comparison.lines[2].likeness, Likeness::onlyFirst);
    EXPECT_EQ(comparison.lines.back().cv, 180);
    EXPECT_EQ(countsText(comparison, texts), u"97 1 1 2");
    EXPECT_FALSE(comparison.isEqual());
    other = one;
    EXPECT_TRUE(compared().isEqual());
}

TEST_F(ComparisonTest, ResultIsSavedAsTextAndCsv)
{
    one = CvTable();
    other = CvTable();
    give(one, 1, 3);
    give(other, 1, 4);
    give(one, 97, 5);
    EXPECT_EQ(comparisonReport(compared(), texts),
              (std::vector<Text>{u"Fahrzeug", u"a;b.kvr", u"0 1 1 0", u"", u"CV1 = 3\t4\tverschieden\tName 1",
                                 u"  1  (CV97) = 5\t---\tnur links\tName 97"}));
    EXPECT_EQ(comparisonCsv(compared(), texts),
              bytesOf("CV-Nummer;Fahrzeug;a,b.kvr;Ergebnis;CV-Text\r\n1;3;4;verschieden;Name 1\r\n"
                      "97;5;---;nur links;Name 97\r\n"));
}

TEST_F(ComparisonTest, DifferentProcessorsAreRefusedBothWays)
{
    const auto small = Processor::atmega168;
    const auto large = Processor::atmega328;
    struct Case {
        bool isVehicle;
        std::optional<Processor> first;
        std::optional<Processor> second;
        TextView text;
    };
    const Case cases[] = {
        {true, large, small,
         u"In der Datei ist ein ATmega168\r\nFahrzeug hat einen ATmega328\r\nCVs können nicht verglichen "
         u"werden."},
        {true, small, large,
         u"In der Datei ist ein ATmega328\r\nFahrzeug hat einen ATmega168\r\nCVs können nicht verglichen "
         u"werden."},
        {false, small, large,
         u"In der Datei ist ein ATmega328\r\nListe: ATmega168\r\nCVs können nicht verglichen werden."},
        {true, small, small, u""},
        {true, std::nullopt, small, u""},
        {true, large, std::nullopt, u""},
    };
    for (const Case& expected : cases) {
        const auto refusal = comparisonRefusal({u"", &one, expected.first, expected.isVehicle},
                                               {u"", &other, expected.second, false}, texts);
        EXPECT_EQ(refusal.value_or(u""), expected.text);
    }
}

TEST_F(ComparisonTest, TheProcessorOfASetIsKnownFromDecoderOrFileOnly)
{
    CvSet set;
    set.profile.processor = Processor::atmega168;
    EXPECT_EQ(sideOf(set, u"").processor, Processor::atmega168);
    EXPECT_TRUE(sideOf(set, u"").isVehicle);
    set.offlineItem = "mnu_KV05";
    EXPECT_EQ(sideOf(set, u"").processor, std::nullopt);
    set.offlineItem = openedListItem;
    set.fileProcessor = Processor::atmega328;
    EXPECT_EQ(sideOf(set, u"").processor, Processor::atmega328);
    EXPECT_FALSE(sideOf(set, u"").isVehicle);
}

TEST_F(ComparisonTest, LooksUpACvOrAValue)
{
    give(other, 5, 99);
    EXPECT_EQ(lookedUpValues(other, u" 99 ", texts), u"Werte aus der Datei: CV5 = 99\r\nCV99 = 99");
    EXPECT_EQ(lookedUpValues(other, u"cv5", texts), u"Werte aus der Datei: CV5 = 99");
    EXPECT_EQ(lookedUpValues(other, u"256", texts), u"Werte aus der Datei: nichts");
    EXPECT_EQ(lookedUpValues(other, u"Licht", texts), u"Werte aus der Datei: nichts");
    EXPECT_EQ(lookedUpValues(other, u"", texts), std::nullopt);
    EXPECT_EQ(lookedUpValues(other, u"  ", texts), std::nullopt);
}

} // namespace
} // namespace karvo
