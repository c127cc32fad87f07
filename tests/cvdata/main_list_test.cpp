#include "cvdata/dcc_address.h"
#include "cvdata/list_search.h"
#include "cvdata/main_list.h"
#include "support/case_table.h"

#include <gtest/gtest.h>

#include <sstream>

namespace karvo
{
namespace
{

using Lines = std::vector<std::string>;

class MainListTest : public testing::Test
{
protected:
    MainListTest() { profile.model = Model::kv07; }

    void describe(int first, int last, TextView value, TextView name = u"")
    {
        for (int cv = first; cv <= last; ++cv) {
            table.at(cv, Column::number) = textFromNumber(cv);
            table.at(cv, Column::value) = value;
            table.at(cv, Column::text) = name;
        }
    }
    MainList fill() const
    {
        return fill_list1({.table = table,
                           .profile = profile,
                           .rawReply = reply,
                           .speedStepUnit = u" (0..168) ",
                           .decimalComma = true,
                           .baseline = baseline ? &*baseline : nullptr,
                           .changedMark = u"geändert",
                           .speedTableName = u"Tabelle"});
    }
    Lines texts() const
    {
        Lines lines;
        for (const ListLine& line : fill())
            lines.push_back(utf8FromText(line.text));
        return lines;
    }

    // Of the searches of tests/data/cvdata/searches.txt in this list.
    void expectHits(const std::string& list) const
    {
        const auto hitOf = [](const std::string& text) {
            ListHit hit{};
            return std::istringstream(text) >> hit.row >> hit.cv ? std::optional(hit) : std::nullopt;
        };
        for (const auto& [searched, word, before, hit] : test::casesOf<4>("cvdata/searches.txt")) {
            if (searched == list) {
                EXPECT_EQ(nextHit(fill(), table, textFromUtf8(word), hitOf(before)), hitOf(hit)) << word;
            }
        }
    }

    CvTable table;
    std::optional<CvValues> baseline;
    DecoderProfile profile;
    Bytes reply;
};

TEST_F(MainListTest, EachCvIsALineAndSomeAreSpecial)
{
    for (const auto& [model, level, cvs, lines] : test::casesOf<4>("cvdata/main_lists.txt")) {
        int number = 0;
        while (utf8FromText(modelName(static_cast<Model>(number))) != model)
            ++number;
        profile.model = static_cast<Model>(number);
        profile.firmwareLevel = std::stoi(level);
        table = CvTable();
        std::istringstream values(cvs);
        for (std::string value; values >> value;) {
            const int cv = std::stoi(value);
            describe(cv, cv, textFromUtf8(value.substr(value.find('=') + 1)), u"Licht\r\nzweite Zeile");
        }
        std::string shown;
        for (const auto& line : texts())
            shown += line + ";";
        EXPECT_EQ(shown, lines) << model;
        EXPECT_EQ(fill()[0].name, u"Licht");
    }
}

TEST_F(MainListTest, SpeedTableIsTwentyEightLinesFromStepOneOn)
{
    describe(69, 98, u"1");
    table.setValue(97, 103);
    table.setValue(70, 130);
    const auto lines = texts();
    ASSERT_EQ(lines.size(), 30u);
    EXPECT_EQ((Lines{lines[0], lines[1], lines[28], lines[29]}),
              (Lines{"CV69 = 1", "  1 = 103 (0..168) ", " 28 = 130 (0..168) ", "CV98 = 1"}));
    EXPECT_EQ(fill()[1].cv, 97);
    EXPECT_EQ(fill()[28].cv, 70);
    EXPECT_TRUE(hasSpeedTable(table));
    for (const int first : {70, 97}) {
        CvTable without = table;
        without.at(first, Column::number).clear();
        EXPECT_FALSE(hasSpeedTable(without));
    }
    for (int position = 1; position <= 56; ++position) // a reply that carries the speed table itself
        reply.push_back(static_cast<std::uint8_t>(position));
    EXPECT_EQ(texts()[1], "  1 = 55 (0..168) ");
    EXPECT_EQ(texts()[28], " 28 = 1 (0..168) ");
    reply.assign(513, 77);
    EXPECT_EQ(texts()[1], "  1 = 103 (0..168) ");
}

TEST_F(MainListTest, TheGroupLineOfASpeedTableStandsForAllItsCvs)
{
    describe(69, 98, u"9");
    profile.model = Model::kv05;
    table.at(80, Column::text) = u"Fahrstufe 18";
    const auto list = fill();
    EXPECT_EQ(list[1].name, u"Tabelle");
    for (const int cv : {70, 71, 97})
        EXPECT_EQ(positionOf(list, cv), 1u) << cv;
    EXPECT_EQ(positionOf(list, 98), 2u);
    expectHits("group");
}

TEST_F(MainListTest, AChangeIsMarkedByAWordBehindTheValue)
{
    baseline.emplace();
    baseline->fill(u"7");
    for (const int cv : {1, 5, 105})
        describe(cv, cv, u"7");
    describe(70, 98, u"7");
    for (const int cv : {1, 97, 105})
        table.setValue(cv, 200);
    const auto lines = texts();
    EXPECT_EQ((Lines{lines[0], lines[1], lines[2], lines[29], lines[31]}),
              (Lines{"CV1  = 200  geändert", "CV5  = 7", "  1 = 200 (0..168)   geändert", " 28 = 7 (0..168) ",
                     "CV105 = 200  geändert"}));
    EXPECT_TRUE(fill()[0].changed && !fill()[1].changed);
    profile.model = Model::kv05; // the group line is marked for any of its CVs
    for (const int changed : {70, 71, 97, 98}) {
        for (const int cv : {70, 71, 97, 98})
            table.setValue(cv, cv == changed ? 8 : 7);
        EXPECT_EQ(texts()[2], changed == 98 ? "CV70 - CV97 " : "CV70 - CV97   geändert") << changed;
    }
}

TEST_F(MainListTest, PositioningFindsTheWholeNumber)
{
    for (const int cv : {1, 10, 11, 100, 110})
        describe(cv, cv, u"0");
    describe(70, 97, u"0");
    reply.assign(1025, 196); // a line for the battery, which no CV stands on
    const std::pair<int, std::optional<std::size_t>> cases[] = {
        {1, 0}, {10, 1}, {11, 2}, {97, 3}, {70, 30}, {100, 31}, {110, 32}, {0, {}}, {101, {}}, {256, {}}};
    for (const auto& [cv, position] : cases)
        EXPECT_EQ(positionOf(fill(), cv), position) << cv;
    EXPECT_EQ(texts().back(), "Akkuspannung = 3,92 Volt (196)");
}

TEST_F(MainListTest, SearchGoesOnFromTheLastHitAndStartsOver)
{
    describe(1, 1, u"3", u"Adresse");
    describe(2, 2, u"5", u"Anfahren");
    describe(3, 3, u"4", u"Zweite ADRESSE");
    table.at(2, Column::explanation) = u"Lässt das Fahrzeug anfahren";
    expectHits("plain");
    table = CvTable();
    expectHits("empty");
}

TEST_F(MainListTest, AddressesFollowBitFiveOfCv29)
{
    for (const auto& [cv, value] : {std::pair{1, 3}, {3, 4}, {15, 0}, {16, 128}, {17, 39}, {18, 15}, {29, 6}})
        table.setValue(cv, value);
    EXPECT_EQ(firstAddress(table) + u" " + secondAddress(table), u"3 4");
    table.setValue(29, 38);
    EXPECT_EQ(firstAddress(table) + u" " + secondAddress(table), u"9999 128");
    table.at(18, Column::value).clear();
    EXPECT_EQ(firstAddress(table), u"");
}

} // namespace
} // namespace karvo
