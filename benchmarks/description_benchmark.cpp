#include "benchmarks.h"

#include "cvdata/description_file.h"
#include "cvdata/expert_file.h"
#include "cvdata/main_list.h"
#include "platform/qt_files.h"
#include "program/text_lines.h"

#include <QProcess>

#include <chrono>

namespace karvo::bench
{

namespace
{

using Clock = std::chrono::steady_clock;

constexpr int runs = 21;

double milliseconds(Clock::duration duration)
{
    return std::chrono::duration<double, std::milli>(duration).count();
}

double descriptionToList(const std::filesystem::path& file)
{
    QtFiles files;
    std::vector<double> times;
    for (int run = 0; run < runs; ++run) {
        const auto start = Clock::now();
        const auto description = parseDescription(*files.readWhole(file, textFileLimit));
        const auto list = fill_list1({description->table, DecoderProfile(), {}, u" von 168  ", true});
        times.push_back(milliseconds(Clock::now() - start));
    }
    return median(times);
}

// Each file by the parser that the program has for it.
void parse(const std::filesystem::path& path, const Bytes& content)
{
    const auto name = path.filename().string();
    if (name.starts_with("CV_exp"))
        parseExpertFile(content);
    else if (name.starts_with("CV_"))
        parseDescription(content);
    else
        linesOf(content);
}

std::vector<std::filesystem::path> textFiles(const std::filesystem::path& folder)
{
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        const auto name = entry.path().filename().string();
        if (entry.is_regular_file() && (name.starts_with("CV_") || name.ends_with(".txt")))
            paths.push_back(entry.path());
    }
    return paths;
}

double parseAll(const std::vector<std::filesystem::path>& paths)
{
    QtFiles files;
    const auto start = Clock::now();
    for (const auto& path : paths)
        parse(path, *files.readWhole(path, textFileLimit));
    return milliseconds(Clock::now() - start);
}

double catAll(const std::vector<std::filesystem::path>& paths)
{
    QStringList arguments;
    for (const auto& path : paths)
        arguments.append(QString::fromStdString(path.string()));
    QProcess cat;
    cat.setStandardOutputFile(QProcess::nullDevice());
    const auto start = Clock::now();
    cat.start(QStringLiteral("cat"), arguments);
    cat.waitForFinished();
    return milliseconds(Clock::now() - start);
}

} // namespace

std::vector<Row> measureDescriptions(const std::filesystem::path& programFolder)
{
    const auto paths = textFiles(programFolder);
    catAll(paths); // both find the files in the system's cache
    std::vector<double> ratios;
    for (int run = 0; run < 5; ++run)
        ratios.push_back(parseAll(paths) / catAll(paths));
    return {{"description file to table to list", descriptionToList(programFolder / "CV_Standart_kv07.txt"),
             2, "ms"},
            {"all " + std::to_string(paths.size()) +
                 " files of the program folder parsed / read with cat (no aim set)",
             median(ratios), 0, "x"}};
}

} // namespace karvo::bench
