// What the editors' tests share: lists of a model, short texts, plans as a line of text, and a bench of
// steps.
#pragma once

#include "cvdata/cv_set.h"
#include "support/write_bench.h"
#include "workbench/offline_list.h"
#include "workbench/write_plan.h"

namespace karvo::test
{

// A list of a model that uses all CVs but those; each has this value, and it is its factory value.
inline CvSet setUsing(Model model, const std::vector<int>& unused = {}, int value = 1)
{
    CvSet set;
    set.profile.model = model;
    for (int cv = 1; cv <= CvTable::lastRow; ++cv) {
        set.table.at(cv, Column::number) = textFromNumber(cv);
        set.table.at(cv, Column::factoryValue) = textFromNumber(value);
        set.table.setValue(cv, value);
    }
    for (const int cv : unused)
        set.table.at(cv, Column::factoryValue).clear();
    set.list.push_back({});
    return set;
}

// "48=1 52=96 "
inline std::string planText(const WritePlan& plan)
{
    std::string text;
    for (const PlannedWrite& write : plan)
        text += std::to_string(write.cv) + "=" + std::to_string(write.value) + " ";
    return text;
}

// The offline list of a KV07 with the value 1 in every CV but CV153, and the steps that look at it.
struct EditorBench : TestBench {
    CvTable& table = state.set.table;
    Steps steps;

    EditorBench()
    {
        numberEveryText(state.texts);
        setTexts(state.texts, {{301, u" of 168   "}, {807, u"{1} to {2}: {3}"}}, {{161, u"changed"}});
        addFile("CV_Standart_kv07.txt", smallDescription("Standard KV07", "Wort "));
        EXPECT_TRUE(showOfflineList(bench, "mnu_kv07"));
        journal.clear();
        steps["cells"] = [this](auto& cells) {
            setCells(table, cells);
            return std::string();
        };
        steps["values"] = [this](auto& cvs) {
            std::string values;
            for (const auto& [cv, unused] : numbersOf(cvs))
                values += utf8FromText(table.at(cv, Column::value)) + " ";
            return values + (state.set.unsavedChanges ? "unsaved" : "");
        };
        steps["line"] = [this](auto& cv) {
            const ListLine& shown = state.set.list[*positionOf(state.set.list, std::stoi(cv))];
            return utf8FromText(shown.text) + (shown.changed ? " !" : "");
        };
    }
    // "y" and "n" answer a question, a file is chosen, "-" chooses none.
    void script(const std::string& answers)
    {
        for (const std::string& answer : wordsOf(answers)) {
            if (answer == "y" || answer == "n")
                prompts.answer(answer == "y");
            else
                prompts.chooseFile(answer == "-" ? std::nullopt
                                                 : std::optional<std::filesystem::path>(answer));
        }
    }
    // What has happened since the last call.
    std::string passed()
    {
        const bool endsWithTheList = !journal.empty() && journal.back() == "list changed";
        std::erase(journal, "list changed");
        const auto told = joined(std::exchange(journal, {}));
        return told + (endsWithTheList ? std::string(told.empty() ? "" : ", ") + "list changed" : "");
    }
};

} // namespace karvo::test
