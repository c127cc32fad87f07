#include "benchmarks.h"
#include "paced_bench.h"
#include "workbench/full_read.h"

#include <ctime>

namespace karvo::bench
{

namespace
{

// "%" and "27", "ER" and the long block with its check byte, 10 bits a byte.
constexpr double wireSeconds = (1 + 2 + 2 + 1025) * 10.0 / 4800.0;
constexpr int runs = 5;

} // namespace

std::vector<Row> measureReading(const std::filesystem::path& programFolder)
{
    std::vector<double> ratios;
    std::vector<double> afterwards;
    for (int run = 0; run < runs; ++run) {
        PacedBench bench(programFolder, sim::Fault::none);
        const auto start = Clock::now();
        readIntoList(bench.workbench, ReadStarter::other);
        ratios.push_back(seconds(bench.view.listFilled - start) / wireSeconds);
        afterwards.push_back(seconds(bench.view.listFilled - bench.view.lastByte) * 1000);
    }
    PacedBench silent(programFolder, sim::Fault::silence);
    const auto start = Clock::now();
    const auto cpuStart = std::clock();
    readIntoList(silent.workbench, ReadStarter::other);
    const double cpu = static_cast<double>(std::clock() - cpuStart) / CLOCKS_PER_SEC;
    return {{"full read of a KV07 over the paced line / wire time of its bytes", median(ratios), 1.02, "x"},
            {"last byte to filled list", median(afterwards), 16, "ms"},
            {"processor time while a silent decoder is awaited", 100 * cpu / seconds(Clock::now() - start), 1,
             "%"}};
}

} // namespace karvo::bench
