#include "workbench/batch_on_bench.h"

#include "workbench/put_on_bench.h"

#include <algorithm>

namespace karvo
{

namespace
{

bool isOnBench(const CvSet& set, const BatchFile& file)
{
    return file.done && !set.listPath.empty() &&
           file.path.lexically_normal() == set.listPath.lexically_normal();
}

void takeRow(CvSet& set, const BatchRow& row)
{
    set.table.setValue(row.cv, row.newValue);
    // Of a vehicle's set the values are changes of what the vehicle holds, which the file does not alter.
    if (set.isFromFile() && set.baseline)
        (*set.baseline)[static_cast<std::size_t>(row.cv)] = set.table.at(row.cv, Column::value);
}

} // namespace

void takeBatchChanges(Workbench& bench, std::span<const BatchFile> batch)
{
    CvSet& set = bench.state.set;
    const auto file =
        std::find_if(batch.begin(), batch.end(), [&](const BatchFile& one) { return isOnBench(set, one); });
    if (bench.state.lineBusy || set.isEmpty() || file == batch.end())
        return;
    for (const BatchRow& row : file->rows)
        takeRow(set, row);
    fillList(bench);
}

} // namespace karvo
