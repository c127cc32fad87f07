// Any bytes as a description file: no crash, everything within the table, and a list can be made of it.
#include "cvdata/cv_details.h"
#include "cvdata/description_file.h"
#include "cvdata/list_search.h"
#include "cvdata/main_list.h"
#include "fuzz_check.h"

using namespace karvo;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto description = parseDescription({data, size});
    if (!description)
        return 0;
    fuzz::check(description->lines.size() <= descriptionLineLimit);
    fuzz::check(description->rowCount >= 1);
    fuzz::check(description->rowCount + 2 <= static_cast<int>(description->lines.size()));
    const DecoderProfile profile;
    const auto list = fill_list1({description->table, profile, {}, u" of 168   ", true});
    for (const ListLine& line : list)
        fuzz::check(line.cv >= 1 && line.cv <= CvTable::lastRow);
    for (const std::size_t at : {std::size_t{0}, list.size() / 2, list.size() - 1}) {
        if (at >= list.size())
            continue;
        fuzz::check(cvDetails(description->table, list[at].cv).number == list[at].cv);
        fuzz::check(positionOf(list, list[at].cv).has_value());
    }
    const auto hit = nextHit(list, description->table, description->header(), std::nullopt);
    fuzz::check(!hit || hit->row < list.size());
    return 0;
}
