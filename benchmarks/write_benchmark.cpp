#include "benchmarks.h"
#include "paced_bench.h"
#include "workbench/full_read.h"
#include "workbench/write_many.h"

#include <limits>

namespace karvo::bench
{

namespace
{

constexpr int runs = 3;
constexpr std::size_t cvCount = 100;

// For each CV "%" and its two characters, "EWS" and the acknowledge, the frame and its acknowledge; 10 bits a
// byte.
constexpr double wireSeconds = cvCount * (1 + 2 + 3 + 1 + 3 + 1) * 10.0 / 4800.0;

// Without the series, which makes pauses, and without what asks or is known by its own rules.
std::vector<int> ordinaryCvs(const CvTable& table)
{
    std::vector<int> cvs;
    for (int cv = 1; cv < 160 && cvs.size() < cvCount; ++cv) {
        if (table.value(cv) && cv != resetCv)
            cvs.push_back(cv);
    }
    return cvs;
}

} // namespace

std::vector<Row> measureWriting(const std::filesystem::path& programFolder)
{
    std::vector<double> ratios;
    for (int run = 0; run < runs; ++run) {
        PacedBench bench(programFolder);
        readIntoList(bench.workbench, ReadStarter::other);
        const auto cvs = ordinaryCvs(bench.state.set.table);
        const auto keep = [](const CvSet&) { return KeptBackup{}; };
        const auto start = Clock::now();
        const auto report = writeChosen(bench.workbench, cvs, keep);
        const bool complete = report.countOf(WriteEnd::written) == cvCount;
        const double taken = seconds(Clock::now() - start);
        ratios.push_back(complete ? taken / wireSeconds : std::numeric_limits<double>::infinity());
    }
    return {{"writing 100 CVs over the paced line / wire time of their bytes", median(ratios), 1.05, "x"}};
}

} // namespace karvo::bench
