// Prints one table of everything that is measured. On a machine without a display set
// QT_QPA_PLATFORM=offscreen.
#include "benchmarks.h"

#include <QCoreApplication>
#include <QSettings>
#include <QTemporaryDir>

#include <cstring>

using namespace karvo::bench;

namespace
{

const std::filesystem::path programFolder = KARVO_PROGRAM_FOLDER;

// The windows that are measured find a stored language, and the person's own settings stay as they are.
void useOwnSettings(const QString& folder)
{
    qputenv("XDG_CONFIG_HOME", folder.toLocal8Bit());
    QSettings settings(folder + QStringLiteral("/Karvo/Karvo.conf"), QSettings::NativeFormat);
    settings.setValue(QStringLiteral("Parameter/Language"), QStringLiteral("1"));
}

void append(std::vector<Row>& rows, std::vector<Row> more)
{
    rows.insert(rows.end(), more.begin(), more.end());
}

} // namespace

int main(int argc, char** argv)
{
    if (argc == 3 && std::strcmp(argv[1], "--window-child") == 0)
        return runWindowChild(argc, argv, programFolder);
    const QTemporaryDir configuration;
    useOwnSettings(configuration.path());
    const QCoreApplication application(argc, argv);
    std::vector<Row> rows = measureReading(programFolder);
    append(rows, measureWriting(programFolder));
    append(rows, measureFirmware(programFolder));
    append(rows, measureDescriptions(programFolder));
    append(rows, measureListFiles(programFolder));
    append(rows, measureUnpacking());
    append(rows, measureWindows(programFolder));
    print(rows);
    return 0;
}
