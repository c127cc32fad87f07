#include "benchmarks.h"

#include "shell/karvo_program.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QMainWindow>
#include <QProcess>
#include <QTimer>

#include <cstdio>
#include <cstring>

namespace karvo::bench
{

namespace
{

constexpr const char* childArgument = "--window-child";
constexpr int runs = 7;

struct Figures {
    double milliseconds = 0; // from start to end
    double printed = 0;
};

// Resident memory in kilobytes, from the system's own account of this process.
double residentKilobytes()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').first().toDouble();
    }
    return 0;
}

// Idle: the first time the event loop has nothing left to do once the window is shown.
void quitWhenIdle()
{
    QTimer::singleShot(0, [] {
        QTimer::singleShot(0, [] {
            std::printf("%.0f\n", residentKilobytes());
            QCoreApplication::quit();
        });
    });
}

Figures runChild(const QString& kind)
{
    QProcess child;
    QElapsedTimer clock;
    clock.start();
    child.start(QCoreApplication::applicationFilePath(), {QString::fromLatin1(childArgument), kind});
    child.waitForFinished();
    const auto elapsed = static_cast<double>(clock.nsecsElapsed()) / 1e6;
    return {elapsed, child.readAllStandardOutput().trimmed().toDouble()};
}

} // namespace

std::vector<Row> measureWindows(const std::filesystem::path&)
{
    std::vector<double> times;
    std::vector<double> memory;
    for (int run = 0; run < runs; ++run) {
        const Figures program = runChild(QStringLiteral("program"));
        const Figures empty = runChild(QStringLiteral("empty"));
        times.push_back(program.milliseconds / empty.milliseconds);
        memory.push_back(program.printed / empty.printed);
    }
    const double drag = runChild(QStringLiteral("drag")).printed;
    return {{"the slowest of 100 moves of a speed-step bar, with its whole window painted", drag, 16, "ms"},
            {"start to first idle window and end / the same of an empty window", median(times), 1.5, "x"},
            {"resident memory of the idle window / that of an empty window", median(memory), 1.3, "x"}};
}

int runWindowChild(int argc, char** argv, const std::filesystem::path& programFolder)
{
    QApplication application(argc, argv);
    if (std::strcmp(argv[2], "empty") == 0) {
        QMainWindow window;
        window.show();
        quitWhenIdle();
        return QApplication::exec();
    }
    if (std::strcmp(argv[2], "drag") == 0) {
        std::printf("%.2f\n", slowestDrag(programFolder));
        return 0;
    }
    ProgramSetup setup;
    setup.programFolder = programFolder;
    setup.simulated = sim::decoderByName("kv07");
    KarvoProgram program(setup);
    if (!program.start())
        return 1;
    quitWhenIdle();
    return QApplication::exec();
}

} // namespace karvo::bench
