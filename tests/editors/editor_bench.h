// What the editors' tests share: lists of a model, short texts, and plans as a line of text.
#pragma once

#include "cvdata/cv_set.h"
#include "support/link_bench.h"
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

} // namespace karvo::test
