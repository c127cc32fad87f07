// Any bytes as a speed-step table: every record and every value is sound, a fault names a line of the file,
// and what is saved of the records reads the same.
#include "editors/speed_step_file.h"
#include "fuzz_check.h"

using namespace karvo;

namespace
{

void checkSavedReadsTheSame(const SpeedStepFile& file)
{
    CvTable table;
    for (int cv = 70; cv <= 97; ++cv)
        table.setValue(cv, 0);
    for (const SpeedStepRecord& record : file.records)
        table.setValue(record.cv, record.value);
    const auto again = parseSpeedStepFile(speedStepFileContent(table));
    fuzz::check(!again.fault && again.records.size() == 28);
    for (const SpeedStepRecord& record : again.records)
        fuzz::check(table.value(record.cv) == record.value);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto file = parseSpeedStepFile({data, size});
    fuzz::check(file.records.size() <= 28);
    for (const SpeedStepRecord& record : file.records)
        fuzz::check(record.cv >= 10 && record.cv <= 99 && record.value >= 0 && record.value <= 255);
    if (file.fault)
        fuzz::check(file.fault->line >= 2 && file.fault->line <= static_cast<int>(size));
    if (fuzz::isForWholeTables(size))
        checkSavedReadsTheSame(file);
    const auto based = parseBasedSpeedTable({data, size});
    if (const auto* const whole = std::get_if<BasedSpeedTable>(&based))
        fuzz::check(whole->base >= 0 && whole->base <= 255 && whole->top >= 0 && whole->top <= 255);
    else
        fuzz::check(std::get<int>(based) >= 1 && std::get<int>(based) <= static_cast<int>(size) + 1);
    return 0;
}
