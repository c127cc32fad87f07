#include "editors/preset_merge.h"

#include "cvdata/changes.h"
#include "editors/list_rows.h"
#include "workbench/put_on_bench.h"

namespace karvo
{

PresetMerge::PresetMerge(Workbench& bench)
    : bench_(bench), mark_(u"  " + bench.state.texts.caption(Caption::changedMark))
{
    fillList(bench);
    lines_ = bench.state.set.list;
    for (ListLine& line : lines_) {
        if (line.changed)
            line.text.erase(line.text.size() - mark_.size());
    }
}

void PresetMerge::take(int cv, int value)
{
    CvTable& table = bench_.state.set.table;
    if (!table.describes(cv) || table.value(cv) == value)
        return;
    taken_.emplace(cv, table.at(cv, Column::value));
    table.setValue(cv, value);
}

// The list is made anew for its marks, and keeps the texts with the brackets.
int PresetMerge::finish()
{
    const int count = showTaken();
    if (count == 0)
        return count;
    CvSet& set = bench_.state.set;
    noteChange(set);
    fillList(bench_);
    for (std::size_t i = 0; i < lines_.size() && i < set.list.size(); ++i)
        set.list[i].text = lines_[i].text + (set.list[i].changed ? mark_ : Text());
    bench_.view.listChanged();
    return count;
}

int PresetMerge::showTaken()
{
    const CvTable& table = bench_.state.set.table;
    int count = 0;
    for (const auto& [cv, before] : taken_) {
        if (table.at(cv, Column::value) == before)
            continue;
        showLoadedValue(lines_, cv, *table.value(cv));
        ++count;
    }
    return count;
}

} // namespace karvo
