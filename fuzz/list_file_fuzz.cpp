// Any bytes as a CV list file: refused, or opened with every value sound; what is saved of it reads the same,
// and is saved the same again.
#include "cvdata/comparison.h"
#include "cvdata/csv_export.h"
#include "cvdata/list_file.h"
#include "cvdata/list_header.h"
#include "fuzz_check.h"

using namespace karvo;

namespace
{

CvSet setOf(ListFile list)
{
    CvSet set;
    if (const auto model = modelOfHeader(list.header()))
        set.profile = model->profile;
    set.table = std::move(list.table);
    set.descriptionLines = std::move(list.lines);
    set.rowCount = list.rowCount;
    set.offlineItem = openedListItem;
    return set;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    auto parsed = parseListFile({data, size});
    auto* const list = std::get_if<ListFile>(&parsed);
    if (list == nullptr)
        return 0;
    const CvTable& table = list->table;
    for (int cv = 1; cv <= CvTable::lastRow; ++cv) {
        if (!table.at(cv, Column::value).empty())
            fuzz::check(isCvValue(table.value(cv)));
    }
    for (const ListFault& fault : list->faults)
        fuzz::check(fault.line >= 2 && fault.line < static_cast<int>(list->lines.size()));
    if (!fuzz::isForWholeTables(size))
        return 0;
    CvSet set = setOf(std::move(*list));
    const Bytes saved = save_data(set);
    auto again = parseListFile(saved);
    fuzz::check(std::holds_alternative<ListFile>(again));
    CvSet second = setOf(std::move(std::get<ListFile>(again)));
    second.profile = set.profile;
    fuzz::check(save_data(second) == saved);
    if (size % 16 != 0) // what compares all CVs costs more than the files themselves
        return 0;
    const auto comparison = compare(sideOf(set, {}), sideOf(second, {}), set.table, SpeedSteps::asSteps);
    fuzz::check(comparison.isEqual());
    fuzz::check(csvExport(set.table) == csvExport(second.table));
    return 0;
}
