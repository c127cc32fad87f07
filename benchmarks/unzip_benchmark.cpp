#include "benchmarks.h"
#include "firmware/unzip.h"
#include "paced_bench.h"
#include "platform/text_conversion.h"
#include "platform/zip_archive.h"

#include <QProcess>
#include <QStandardPaths>

#include <fstream>
#include <random>

namespace karvo::bench
{

namespace
{

constexpr int files = 100;
constexpr std::size_t fileSize = 1'000'000;
constexpr int runs = 5;

class Patient : public UnzipObserver
{
public:
    bool goOn(std::uint64_t) override { return true; }
};

// Half of the bytes are random: packed they are half as large, as firmware is.
void writeFiles(const std::filesystem::path& folder)
{
    std::filesystem::create_directory(folder);
    std::mt19937 random(1); // NOLINT(cert-msc51-cpp): each run packs the same bytes
    std::string content(fileSize, '\0');
    for (int file = 0; file < files; ++file) {
        for (std::size_t i = 0; i < content.size(); i += 2)
            content[i] = static_cast<char>(random());
        std::ofstream(folder / std::to_string(file), std::ios::binary) << content;
    }
}

bool bsdtar(const QStringList& arguments)
{
    return QProcess::execute(QStringLiteral("bsdtar"), arguments) == 0;
}

template <typename Act>
double timeOf(const std::filesystem::path& target, const Act& act)
{
    std::filesystem::create_directory(target);
    const auto start = Clock::now();
    const bool done = act();
    const double time = seconds(Clock::now() - start);
    std::filesystem::remove_all(target);
    return done ? time : 0;
}

} // namespace

std::vector<Row> measureUnpacking()
{
    const QTemporaryDir scratch;
    const auto folder = toPath(scratch.path());
    const auto zip = folder / "a.zip";
    const auto source = folder / "source";
    writeFiles(source);
    QStringList packing = {QStringLiteral("--format"), QStringLiteral("zip"), QStringLiteral("-cf"),
                           pathToQString(zip),         QStringLiteral("-C"),  pathToQString(source)};
    for (int file = 0; file < files; ++file)
        packing.append(QString::number(file));
    if (QStandardPaths::findExecutable(QStringLiteral("bsdtar")).isEmpty() || !bsdtar(packing))
        return {};
    std::filesystem::remove_all(source);
    std::vector<double> ratios;
    for (int run = 0; run < runs; ++run) {
        const double ours = timeOf(folder / "ours", [&] {
            ZipArchive archive;
            Patient patient;
            return unzip(archive, zip, {folder / "ours", folder / "staging"}, patient).end ==
                   UnzipEnd::unpacked;
        });
        const double theirs = timeOf(folder / "theirs", [&] {
            return bsdtar({QStringLiteral("-xf"), pathToQString(zip), QStringLiteral("-C"),
                           pathToQString(folder / "theirs")});
        });
        ratios.push_back(ours / theirs);
    }
    return {{"unpacking 100 MB in 100 files / the same with bsdtar", median(ratios), 1.1, "x"}};
}

} // namespace karvo::bench
