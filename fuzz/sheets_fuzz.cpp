// Any bytes as a function sheet: what is taken of it is sound, and a fault names a line of the file.
#include "editors/sheet_file.h"
#include "fuzz_check.h"

using namespace karvo;

namespace
{

bool areSound(const std::vector<CvChange>& values)
{
    for (const CvChange& one : values) {
        if (one.cv < 1 || one.cv > CvTable::lastRow || !isCvValue(one.value))
            return false;
    }
    return !values.empty();
}

void check(const SheetField& field)
{
    for (const int cv : field.cvs)
        fuzz::check(cv >= 1 && cv <= CvTable::lastRow);
    fuzz::check(field.cvs.size() <= 3 && field.bits >= 1 && field.bits <= 255);
    fuzz::check(!field.value || isCvValue(field.value));
    for (const auto& values : field.onlyWhere)
        fuzz::check(areSound(values));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto parsed = parseSheet({data, size});
    if (const auto* const fault = std::get_if<SheetFault>(&parsed)) {
        fuzz::check(fault->line >= 1 && fault->line <= static_cast<int>(size) + 1);
        return 0;
    }
    const auto& sheet = std::get<FunctionSheet>(parsed);
    fuzz::check(!sheet.item.empty() && !sheet.window.empty() && !sheet.words.empty());
    for (const SheetSection& section : sheet.sections) {
        for (const SheetField& field : section.fields)
            check(field);
    }
    for (const auto* const sets : {&sheet.variants, &sheet.readyMade}) {
        for (const SheetValueSet& one : *sets)
            fuzz::check(areSound(one.values));
    }
    return 0;
}
