#include "benchmarks.h"
#include "firmware/interface_update.h"
#include "firmware/upload.h"
#include "paced_bench.h"
#include "platform/qt_clock.h"

#include <limits>

namespace karvo::bench
{

namespace
{

constexpr int runs = 3;
constexpr double failed = std::numeric_limits<double>::infinity();

constexpr std::size_t pageCount = 256;
constexpr std::size_t recordCount = 64;

// A page message and its reply, 10 bits a byte.
constexpr double pagesWireSeconds = pageCount * (144 + 8) * 10.0 / 115200.0;

// Of a record the 5 ms pause and the 50 ms pause, on the wire the bytes that no pause covers: the sum and its
// reply. The other 16 bytes are on their way during the pauses. Behind each block of eight 10 ms.
constexpr double recordsSeconds =
    recordCount * (0.005 + 0.050 + 3 * 10.0 / 4800.0) + recordCount / 8.0 * 0.010;

class PageTimer : public UploadObserver
{
public:
    void showUpload(const UploadProgress& progress) override
    {
        if (progress.page == 1)
            start = Clock::now();
    }
    void showStep(const UploadStep& /*step*/) override { end = Clock::now(); }
    void showSilence(EraseState /*erase*/) override {}
    bool stopRequested() override { return false; }

    Clock::time_point start;
    Clock::time_point end;
};

// From the pause behind the first block to the one behind the last.
class RecordTimer : public UpdateObserver
{
public:
    void showHeader(const Text& /*header*/) override {}
    void showStart(const Text& /*text*/) override {}
    void showRecords(std::size_t sent, std::size_t total) override
    {
        if (sent == 8)
            start = Clock::now();
        if (sent == total)
            end = Clock::now();
    }
    void showEnd() override {}
    bool stopRequested() override { return false; }

    Clock::time_point start;
    Clock::time_point end;
};

double pagesRatio(const std::filesystem::path& programFolder)
{
    PacedBench bench(programFolder);
    bench.state.link.timeOutInterval = std::chrono::milliseconds(100); // of the erase, whose answer is short
    HexImage image;
    for (std::size_t i = 0; i < pageCount * flashPageSize; ++i)
        image.data.push_back(static_cast<std::uint8_t>(i * 7 + i / 256));
    PageTimer timer;
    const auto report = uploadImage(bench.workbench, image, timer);
    const bool whole = report.isAccepted() && bench.port.simulator().bootLoader().flash() == image.data;
    return whole ? seconds(timer.end - timer.start) / pagesWireSeconds : failed;
}

double recordsRatio(const std::filesystem::path& programFolder)
{
    PacedBench bench(programFolder);
    bench.state.link.interfaceAnswered = true;
    // A block more than is timed: the timer starts behind the first.
    std::string content = "1F80\r\nUpdate Ende\r\n";
    for (std::size_t i = 0; i < recordCount + 8; ++i)
        content += ":1000000102030405060708090A0B0C0D0E0F\r\n";
    const std::filesystem::path file = bench.folder.filePath(QStringLiteral("a.uhx")).toStdString();
    if (bench.files.saveAtomically(file, Bytes(content.begin(), content.end())))
        return failed;
    const QtClock clock;
    RecordTimer timer;
    const auto end = updateThroughInterface(
        bench.workbench, {[&] { return file; }, [](const std::filesystem::path&) {}, clock, timer});
    const bool whole = end == UpdateEnd::sent &&
                       bench.port.simulator().update().image().size() == (recordCount + 8) * updateRecordSize;
    return whole ? seconds(timer.end - timer.start) / recordsSeconds : failed;
}

} // namespace

std::vector<Row> measureFirmware(const std::filesystem::path& programFolder)
{
    std::vector<double> pages;
    std::vector<double> records;
    for (int run = 0; run < runs; ++run) {
        pages.push_back(pagesRatio(programFolder));
        records.push_back(recordsRatio(programFolder));
    }
    return {{"256 page messages over the line paced at 115200 baud / wire time of their bytes", median(pages),
             1.05, "x"},
            {"64 records of an update / their mandatory pauses and the bytes outside these", median(records),
             1.05, "x"}};
}

} // namespace karvo::bench
