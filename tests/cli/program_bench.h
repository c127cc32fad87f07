// karvo-cli as a program: run it with a line of arguments, see what it prints and how it ends.
#pragma once

#include <gtest/gtest.h>

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

namespace karvo::test
{

struct Outcome {
    int exitCode;
    QString out;
    QString err;
};

// Runs karvo-cli with settings of its own.
class ProgramBench : public testing::Test
{
protected:
    Outcome run(const QString& line)
    {
        QProcess process;
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), home_.path());
        environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
        process.setProcessEnvironment(environment);
        process.start(QStringLiteral(KARVO_PROGRAM_FOLDER "/karvo-cli"), line.split(QLatin1Char(' ')));
        EXPECT_TRUE(process.waitForFinished(30000)) << line.toStdString();
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit) << line.toStdString();
        return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
                QString::fromUtf8(process.readAllStandardError())};
    }

    QString pathOf(const char* name) const { return home_.filePath(QString::fromLatin1(name)); }

    QByteArray contentOf(const char* name) const
    {
        QFile file(pathOf(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
        return file.readAll();
    }

    // Reads a simulated decoder into a file of the home folder.
    void readInto(const char* name, const char* decoder)
    {
        const auto outcome = run(QStringLiteral("read --no-pace --language de --simulate %1 --output %2")
                                     .arg(QLatin1String(decoder), pathOf(name)));
        ASSERT_EQ(outcome.exitCode, 0) << outcome.err.toStdString();
        EXPECT_TRUE(outcome.out.isEmpty());
    }

private:
    QTemporaryDir home_;
};

} // namespace karvo::test
