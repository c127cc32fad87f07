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
    for (int cv = 1; cv <= CvTable::lastRow; ++cv) {
        const auto value = list->table.value(cv);
        fuzz::check(value ? *value >= 0 && *value <= 255 : list->table.at(cv, Column::value).empty());
    }
    for (const ListFault& fault : list->faults)
        fuzz::check(fault.line >= 2 && fault.line < static_cast<int>(list->lines.size()));
    CvSet set = setOf(std::move(*list));
    const Bytes saved = save_data(set);
    auto again = parseListFile(saved);
    fuzz::check(std::holds_alternative<ListFile>(again));
    CvSet second = setOf(std::move(std::get<ListFile>(again)));
    second.profile = set.profile;
    const auto comparison = compare(sideOf(set, {}), sideOf(second, {}), set.table, SpeedSteps::asSteps);
    fuzz::check(comparison.isEqual());
    fuzz::check(csvExport(set.table) == csvExport(second.table));
    fuzz::check(save_data(second) == saved);
    return 0;
}
