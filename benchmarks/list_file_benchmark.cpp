#include "benchmarks.h"

#include "cvdata/batch_change.h"
#include "paced_bench.h"
#include "platform/text_conversion.h"
#include "workbench/compared_sets.h"
#include "workbench/list_files.h"
#include "workbench/offline_list.h"

#include <QFile>

#include <functional>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

namespace karvo::bench
{

namespace
{

constexpr int runs = 21;
constexpr int manyFiles = 10'000;

double medianMilliseconds(const std::function<void()>& work)
{
    std::vector<double> times;
    for (int run = 0; run < runs; ++run) {
        const auto start = Clock::now();
        work();
        times.push_back(1000 * seconds(Clock::now() - start));
    }
    return median(times);
}

// As simple as a copy that survives a power cut can be.
void copyAndSync(const std::filesystem::path& from, const std::filesystem::path& to)
{
    QtFiles files;
    const Bytes content = *files.readWhole(from, textFileLimit);
    QFile copy(pathToQString(to));
    copy.open(QIODevice::WriteOnly);
    copy.write(reinterpret_cast<const char*>(content.data()), static_cast<qint64>(content.size()));
    copy.flush();
#ifdef Q_OS_UNIX
    ::fsync(copy.handle());
#endif
}

// Preview and change, against copying the same files.
double batchAgainstCopies(PacedBench& bench, const std::filesystem::path& folder, const Bytes& list)
{
    std::vector<std::filesystem::path> paths;
    for (int i = 0; i < manyFiles; ++i) {
        paths.push_back(folder / (std::to_string(i) + ".kvr"));
        QFile file(pathToQString(paths.back()));
        file.open(QIODevice::WriteOnly);
        file.write(reinterpret_cast<const char*>(list.data()), static_cast<qint64>(list.size()));
    }
    const auto copies = folder / "copies";
    std::filesystem::create_directory(copies);
    const auto startOfCopies = Clock::now();
    for (const auto& path : paths)
        copyAndSync(path, copies / path.filename());
    const double copying = seconds(Clock::now() - startOfCopies);
    const CvChange changes[] = {{4, 99}, {52, 7}};
    const auto startOfBatch = Clock::now();
    auto batch = previewBatch(bench.files, paths, changes);
    applyBatch(bench.files, batch);
    return seconds(Clock::now() - startOfBatch) / copying;
}

} // namespace

std::vector<Row> measureListFiles(const std::filesystem::path& programFolder)
{
    PacedBench bench(programFolder);
    const auto folder = toPath(bench.folder.path());
    const auto file = folder / "bus.kvr";
    showOfflineList(bench.workbench, "mnu_kv07");
    saveListAs(bench.workbench, file);
    const double open = medianMilliseconds([&] { openList(bench.workbench, file); });
    const double save = medianMilliseconds([&] { saveListAs(bench.workbench, file); });
    ComparedSets sets(bench.workbench);
    sets.openFirst(file);
    sets.openSecond(file);
    const double compare = medianMilliseconds([&] { sets.compare(); });
    const Bytes list = *bench.files.readWhole(file, textFileLimit);
    return {{"opening a CV list file", open, 5, "ms"},
            {"comparing two CV list files", compare, 5, "ms"},
            {"saving a CV list file", save, 5, "ms"},
            {"a change in " + std::to_string(manyFiles) + " list files / copying them with a sync each",
             batchAgainstCopies(bench, folder, list), 1.5, "x"}};
}

} // namespace karvo::bench
