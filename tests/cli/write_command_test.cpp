// Writing from the command line, to simulated decoders.
#include "cli/program_bench.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace karvo
{
namespace
{

class WriteCommandTest : public test::ProgramBench
{
protected:
    // A program folder of the test's own: the backups are made in it.
    WriteCommandTest()
    {
        const QDir folder(QStringLiteral(KARVO_PROGRAM_FOLDER));
        const auto needed = {QStringLiteral("English_*.txt"), QStringLiteral("CV_Standart*.txt")};
        QDir().mkpath(programFolder());
        for (const QString& name : folder.entryList(needed, QDir::Files))
            EXPECT_TRUE(QFile::copy(folder.filePath(name), programFolder() + QLatin1Char('/') + name));
    }

    QString programFolder() const { return pathOf("program"); }
    QStringList backups() const
    {
        const QDir folder(programFolder() + QStringLiteral("/CV_listen"));
        return folder.entryList({QStringLiteral("*.kvr")}, QDir::Files);
    }
    test::Outcome write(const QString& line, const char* decoder = "kv07", const char* fault = "none")
    {
        return run(
            QStringLiteral("write --no-pace --language en --simulate %1 --fault %2 --program-folder %3 %4")
                .arg(QLatin1String(decoder), QLatin1String(fault), programFolder(), line));
    }
};

TEST_F(WriteCommandTest, PrintsALineForEachCvAndKeepsWhatWasThere)
{
    const auto outcome = write(QStringLiteral("CV48=5 1=17"));
    EXPECT_EQ(outcome.exitCode, 0) << outcome.err.toStdString();
    EXPECT_EQ(outcome.out, QStringLiteral("CV48 = 5  written\nCV1  = 17  written\n"));
    ASSERT_EQ(backups().size(), 1);
    EXPECT_TRUE(backups().first().startsWith(QStringLiteral("KARVO KV07 ")))
        << backups().first().toStdString();
    QFile backup(programFolder() + QStringLiteral("/CV_listen/") + backups().first());
    ASSERT_TRUE(backup.open(QIODevice::ReadOnly));
    EXPECT_TRUE(backup.readAll().contains("\r\n1;3;")); // CV1 before the write
}

TEST_F(WriteCommandTest, ExitCodesTellWhatWentWrong)
{
    struct Case {
        const char* line;
        const char* decoder;
        const char* fault;
        int exitCode;
        const char* out;
        const char* err; // a part of it
    };
    const Case cases[] = {
        {"CV48=5 CV1=127", "kv07", "none", 7, // none is written then
         "CV48 = 5  not written, ended before\nCV1  = 127  not written, ended before\n",
         "CV1 = 127: 1 to 126 are allowed"},
        {"CV1=0 --yes", "kv07", "none", 7, "CV1  = 0  not written, ended before\n", "--force limits answers"},
        {"CV1=127 --force limits", "kv07", "none", 0, "CV1  = 127  written\n", ""},
        {"CV200=1", "kv07", "none", 2, "", "is not in the list"},
        {"CV48=5 CV49=6", "kv07", "refused-frame", 7,
         "CV48 = 5  not accepted by the decoder\nCV49 = 6  not accepted by the decoder\n", "0 of 2 CVs"},
        {"CV48=5 CV49=6", "kv07", "refused-command", 7,
         "CV48 = 5  not written, decoder not ready\nCV49 = 6  not written, ended before\n",
         "The decoder is not ready"},
        {"CV161=1", "kv07", "refused-frame", 0, "CV161 = 1  sent, not acknowledged; please read again\n",
         "0 of 1 CVs"},
        {"CV3=5", "receiver-readonly", "none", 5, "CV3  = 5  not written, ended before\n",
         "Nothing was written"},
        {"CV48=5", "kv07", "silence", 4, "", "does not reply"},
        {"CV48=5", "kv07", "wrong-check-byte", 6, "", "wrong check byte"},
        {"CV59=1", "kv07", "none", 7, "CV59 = 1  not written, as you wished\n", "--yes answers"},
        {"CV59=1 --yes", "kv07", "none", 0, "CV59 = 1  written\n", "The reset command has been sent"},
        {"CV59=1 --yes", "kv07", "wrong-check-byte", 7, "CV59 = 1  not written, ended before\n",
         "--force backup answers"},
        {"CV59=1 --yes --force backup", "kv07", "wrong-check-byte", 0, "CV59 = 1  written\n",
         "The reset command has been sent"},
        {"CV59=1 --yes", "kv07", "silence", 4, "", "does not reply"},
    };
    for (const auto& [line, decoder, fault, exitCode, out, err] : cases) {
        const auto outcome = write(QLatin1String(line), decoder, fault);
        EXPECT_EQ(outcome.exitCode, exitCode) << line << ' ' << fault << '\n' << outcome.err.toStdString();
        EXPECT_EQ(outcome.out.toStdString(), out) << line << ' ' << fault;
        EXPECT_TRUE(outcome.err.contains(QLatin1String(err))) << line << ' ' << fault << '\n'
                                                              << outcome.err.toStdString();
    }
}

TEST_F(WriteCommandTest, AListIsWrittenWhereItDiffers)
{
    readInto("bus.kvr", "kv07");
    const auto same = write(QStringLiteral("--from %1").arg(pathOf("bus.kvr")));
    EXPECT_EQ(same.exitCode, 0) << same.err.toStdString();
    EXPECT_TRUE(same.out.isEmpty());
    EXPECT_TRUE(backups().isEmpty());

    ASSERT_EQ(run(QStringLiteral("set %1 CV48=5 CV7=99 --language en").arg(pathOf("bus.kvr"))).exitCode, 0);
    const auto changed = write(QStringLiteral("--from %1").arg(pathOf("bus.kvr")));
    EXPECT_EQ(changed.exitCode, 0) << changed.err.toStdString();
    EXPECT_EQ(changed.out, QStringLiteral("CV7  = 99  left out, read only\nCV48 = 5  written\n"));
    EXPECT_EQ(backups().size(), 1);

    const auto preview = write(QStringLiteral("--dry-run --from %1").arg(pathOf("bus.kvr")));
    EXPECT_EQ(preview.exitCode, 0) << preview.err.toStdString();
    EXPECT_TRUE(preview.out.startsWith(QStringLiteral("CV7  = "))) << preview.out.toStdString();
    EXPECT_TRUE(preview.out.endsWith(QStringLiteral("To be written: 1. Left out: 1.\n")));
    EXPECT_EQ(backups().size(), 1) << "a dry run writes and keeps nothing";

    const auto other = write(QStringLiteral("--from %1").arg(pathOf("bus.kvr")), "kv04");
    EXPECT_EQ(other.exitCode, 7);
    EXPECT_TRUE(other.err.contains(QStringLiteral("belongs to a KV07, but the vehicle has a KV04")));
    EXPECT_EQ(write(QStringLiteral("--from %1").arg(pathOf("none.kvr"))).exitCode, 1);
}

TEST_F(WriteCommandTest, AListForAnotherGenerationIsWrittenWhereThePersonSaysSo)
{
    readInto("lane.kvr", "kv07-lc");
    const auto line = QStringLiteral("--from %1").arg(pathOf("lane.kvr"));
    const auto asked = write(line);
    EXPECT_EQ(asked.exitCode, 7);
    EXPECT_TRUE(asked.out.isEmpty());
    EXPECT_TRUE(
        asked.err.contains(QStringLiteral("KV07 LaneControl, Firmware 6, in the vehicle: KV07 standard")))
        << asked.err.toStdString();
    EXPECT_TRUE(backups().isEmpty());
    EXPECT_EQ(write(line + QStringLiteral(" --yes")).exitCode, 7);
    EXPECT_EQ(write(line + QStringLiteral(" --force vehicle")).exitCode, 0);
    EXPECT_EQ(backups().size(), 1);
}

TEST_F(WriteCommandTest, WithoutABackupNothingIsWritten)
{
    QFile inTheWay(programFolder() + QStringLiteral("/CV_listen"));
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    const auto outcome = write(QStringLiteral("CV48=5"));
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(outcome.out, QStringLiteral("CV48 = 5  not written, ended before\n"));
    EXPECT_TRUE(outcome.err.contains(QStringLiteral("could not be kept")));
}

TEST_F(WriteCommandTest, JsonTellsEachOutcome)
{
    const auto outcome = write(QStringLiteral("CV48=5 CV49=6 --json"));
    const auto outcomes = QJsonDocument::fromJson(outcome.out.toUtf8()).array();
    ASSERT_EQ(outcomes.size(), 2);
    const auto first = outcomes.at(0).toObject();
    EXPECT_EQ(first.value(QStringLiteral("cv")).toInt(), 48);
    EXPECT_EQ(first.value(QStringLiteral("value")).toInt(), 5);
    EXPECT_TRUE(first.value(QStringLiteral("written")).toBool());
    EXPECT_EQ(first.value(QStringLiteral("outcome")).toString(), QStringLiteral("written"));

    const auto preview = write(QStringLiteral("CV48=5 CV3=200 --json --dry-run"));
    const auto object = QJsonDocument::fromJson(preview.out.toUtf8()).object();
    EXPECT_EQ(object.value(QStringLiteral("toBeWritten")).toInt(), 1);
    const auto row = object.value(QStringLiteral("cvs")).toArray().at(1).toObject();
    EXPECT_EQ(row.value(QStringLiteral("new")).toInt(), 200);
    EXPECT_FALSE(row.value(QStringLiteral("written")).toBool());
    EXPECT_EQ(backups().size(), 1);
}

} // namespace
} // namespace karvo
