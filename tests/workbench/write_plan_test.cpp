// What a write is going to do, before a vehicle is asked for anything.
#include "workbench/write_plan.h"

#include "link/write.h"
#include "support/write_bench.h"
#include "workbench/write_preview.h"

namespace karvo::test
{

struct PlannedList {
    CvSet set;
    CvTable& table = set.table;
    CvImage block{};

    PlannedList(const std::string& cells, const std::string& held)
    {
        for (int cv = 1; cv <= 200; ++cv) {
            table.at(cv, Column::number) = textFromNumber(cv);
            table.at(cv, Column::value) = u"7";
            table.at(cv, Column::factoryValue) = u"3";
        }
        for (int cv = 1; cells == "no factory values" && cv <= 200; ++cv)
            table.at(cv, Column::factoryValue).clear();
        setCells(table, cells == "no factory values" ? "" : cells);
        block.fill(7);
        for (const std::string& word : wordsOf(held)) {
            const bool isOther = word.find('=') != std::string::npos;
            block[std::stoul(word)] = static_cast<std::uint8_t>(isOther ? numbersOf(word)[0].second : 8);
        }
    }
    WritePlan planOf(const std::string& what, const std::vector<int>& numbers)
    {
        if (what == "receiver")
            set.profile.model = Model::receiver;
        if (what == "values") {
            std::vector<CvChange> values;
            for (const int cv : numbers)
                values.push_back({cv, 7});
            return planOfValues(set, values);
        }
        if (what == "chosen")
            return planOfChosen(set, numbers);
        if (what == "rest-of-all")
            return restOf(planOfAll(set, block), numbers);
        if (what == "all")
            return planOfAll(set, block);
        if (what == "rest")
            return restOf(planOfDifferences(set, block), numbers);
        auto plan = planOfDifferences(set, block);
        for (const PlannedWrite& write : plan)
            EXPECT_EQ(write.held, block[static_cast<std::size_t>(write.cv)]);
        if (what == "vehicle") {
            const int date = numbers[0];
            DecoderProfile vehicle{.typeCode = TypeCode::receiver, .firmwareDate = {}};
            if (date != 0)
                vehicle.firmwareDate = {2000 + date / 10000, date / 100 % 100, date % 100};
            leaveOutWhatItLacks(plan, table, vehicle);
        }
        return plan;
    }
};

static std::string planText(const WritePlan& plan)
{
    LanguageTables texts;
    addTexts(texts, "workbench/write_texts.txt");
    auto text = plan.size() < 200 ? std::string() : std::to_string(plan.size()) + ":";
    for (const PlannedWrite& write : plan) {
        EXPECT_TRUE(write.value == 7 || write.value == (write.cv > 200 ? takeOverValue : 0));
        const bool isWritten = write.skip == WriteSkip::none;
        const auto reason = utf8FromText(texts.caption(captionOfSkip(write.skip)));
        if (!isWritten || plan.size() < 200)
            text += " " + std::to_string(write.cv) + (isWritten ? "" : ":" + reason);
    }
    return text + (lacksPlannedServoCv(plan) ? " lacks servos" : "");
}

TEST(WritePlanTest, EachListHasItsPlan)
{
    for (const auto& [what, cells, held, expected] : casesOf<4>("workbench/write_plans.txt")) {
        PlannedList list(cells, held);
        std::vector<int> numbers;
        const auto kind = what.substr(0, what.find(' '));
        for (const auto& [number, none] : numbersOf(what.substr(kind.size())))
            numbers.push_back(number);
        EXPECT_EQ(planText(list.planOf(kind, numbers)), expected) << what << "|" << cells << "|" << held;
    }
}

TEST(WriteVoltageTest, ABatteryBelowTheWarningLevelIsNamed)
{
    ProgramState state;
    setCaption(state.texts, 816, u"{1} below {2}");
    CvSet set;
    setCells(set.table, "153.number=153 153.factory=165");
    const std::tuple<Model, std::uint8_t, Text> cases[] = {{Model::kv08, 164, u"3,28 below 3,30"},
                                                           {Model::kv08, 165, u""},
                                                           {Model::kv08, 0, u""},
                                                           {Model::kv05, 1, u""}};
    for (const auto& [model, measured, text] : cases) {
        CvImage block{};
        block[153] = 165;
        block[505] = measured;
        DecoderProfile vehicle;
        vehicle.model = model;
        EXPECT_EQ(lowBatteryText(previewOf({}, set, block, vehicle), state), text) << measured;
    }
}

} // namespace karvo::test
