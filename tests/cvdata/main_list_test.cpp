#include "cvdata/dcc_address.h"
#include "cvdata/list_search.h"
#include "cvdata/main_list.h"
#include "support/case_table.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

struct MainListBench {
    CvTable table;
    std::optional<CvValues> baseline;
    DecoderProfile profile;
    Bytes reply;
    std::string hitBefore;
    test::Steps steps;

    MainListBench()
    {
        addPreparations();
        addTexts();
        addLooks();
    }
    // The row and the CV of the hit that a search goes on from.
    void script(const std::string& answers) { hitBefore = answers; }

    void describe(int cv, const std::string& value)
    {
        table.at(cv, Column::number) = textFromNumber(cv);
        table.at(cv, Column::value) = textFromUtf8(value);
    }
    void prepare(const std::string& name, const std::function<void(const std::string&)>& act)
    {
        steps[name] = [act](const std::string& words) { return act(words), std::string(); };
    }
    void addPreparations()
    {
        prepare("model", [this](auto& words) {
            const auto name = textFromUtf8(test::wordsOf(words)[0]);
            for (int number = 0; modelName(profile.model) != name; ++number)
                profile.model = static_cast<Model>(number);
            profile.firmwareLevel = std::stoi(test::wordsOf(words)[1]);
        });
        prepare("cvs", [this](auto& values) {
            for (const auto& word : test::wordsOf(values))
                describe(std::stoi(word), word.substr(word.find('=') + 1));
        });
        prepare("range", [this](auto& words) { // "69 98 9": from CV69 to CV98, each with the value 9
            const auto ends = test::wordsOf(words);
            for (int cv = std::stoi(ends[0]); cv <= std::stoi(ends[1]); ++cv)
                describe(cv, ends[2]);
        });
        prepare("undescribe", [this](auto& cv) { table.at(std::stoi(cv), Column::number).clear(); });
        prepare("reply", [this](auto& words) { // how many bytes, the first of them, and by what each is more
            const auto numbers = test::numbersOf(words);
            reply.clear();
            for (int i = 0; i < numbers[0].first; ++i)
                reply.push_back(static_cast<std::uint8_t>(numbers[1].first + i * numbers[2].first));
        });
        prepare("baseline", [this](auto& value) { baseline.emplace().fill(textFromUtf8(value)); });
    }
    void addTexts()
    {
        for (const auto& [name, column] : {std::pair("name", Column::text), {"help", Column::explanation}}) {
            prepare(name, [this, column = column](auto& words) {
                table.at(std::stoi(words), column) = textFromUtf8(words.substr(words.find(' ') + 1));
            });
        }
    }
    MainList list() const
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
    void addLooks()
    {
        steps["lines"] = [this](auto&) {
            std::string lines;
            for (const ListLine& line : list())
                lines += utf8FromText(line.text) + ";";
            return lines;
        };
        steps["line"] = [this](auto& row) {
            const ListLine line = list().at(std::stoul(row));
            return std::to_string(line.cv) + " " + utf8FromText(line.name) + ": " + utf8FromText(line.text) +
                   (line.changed ? " !" : "");
        };
        steps["rows"] = [this](auto& cvs) {
            std::string rows;
            for (const auto& [cv, unused] : test::numbersOf(cvs)) {
                const auto row = positionOf(list(), cv);
                rows += (row ? std::to_string(*row) : "-") + " ";
            }
            return rows;
        };
        steps["speed-table"] = [this](auto&) { return std::string(hasSpeedTable(table) ? "yes" : "no"); };
        steps["find"] = [this](auto& word) {
            const auto numbers = test::numbersOf(hitBefore);
            std::optional<ListHit> before;
            if (!numbers.empty())
                before = {static_cast<std::size_t>(numbers[0].first), numbers[1].first};
            const auto hit = nextHit(list(), table, textFromUtf8(word), before);
            return hit ? std::to_string(hit->row) + " " + std::to_string(hit->cv) : "";
        };
        steps["addresses"] = [this](auto&) {
            return utf8FromText(firstAddress(table) + u" " + secondAddress(table));
        };
    }
};

TEST(MainListTest, EachStepShowsWhatItShould)
{
    test::carryOut<MainListBench>("cvdata/main_list.txt");
}

} // namespace
} // namespace karvo
