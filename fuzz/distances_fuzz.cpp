// Any bytes as a distance table: every value is sound, faults name lines of the file, and what is saved reads
// the same.
#include "editors/distance_table.h"
#include "fuzz_check.h"

using namespace karvo;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto file = parseDistanceFile({data, size});
    for (const int line : file.faultyLines)
        fuzz::check(line >= 2 && line <= static_cast<int>(size));
    DistanceValues values = file.values;
    int taken = 0;
    for (Text& value : values) {
        taken += value.empty() ? 0 : 1;
        fuzz::check(value.empty() || isCvValue(numberFromText(value)));
        if (value.empty())
            value = u"100";
    }
    if (taken == 0)
        return 0;
    // The two forms differ in their first and last lines alone: one of them for each input.
    const Bytes saved = size % 2 == 0 ? distanceFileContent(values, {}) : distancePresetContent(values);
    fuzz::check(parseDistanceFile(saved).values == values);
    return 0;
}
