// Any bytes as a distance table: every value is sound, faults name lines of the file, and what is saved reads
// the same.
#include "editors/distance_table.h"
#include "fuzz_check.h"

using namespace karvo;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto file = parseDistanceFile({data, size});
    DistanceValues values = file.values;
    for (Text& value : values) {
        const auto number = numberFromText(value);
        fuzz::check(number ? *number >= 0 && *number <= 255 : value.empty());
        if (value.empty())
            value = u"100";
    }
    for (const int line : file.faultyLines)
        fuzz::check(line >= 2 && line <= static_cast<int>(size));
    fuzz::check(parseDistanceFile(distanceFileContent(values, {})).values == values);
    fuzz::check(parseDistanceFile(distancePresetContent(values)).values == values);
    return 0;
}
