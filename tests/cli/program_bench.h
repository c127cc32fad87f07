// karvo-cli as a program: run it with a line of arguments, see what it prints and how it ends.
#pragma once

#include "support/case_table.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

namespace karvo::test
{

// "@name" stands for the path of a file in the home folder, in what is expected too.
struct Case {
    std::string line;
    int exitCode;
    std::string out;      // all of it where it ends with a line end, or is empty; else a part
    std::string err = {}; // a part of it
};

// Runs karvo-cli with settings of its own.
class ProgramBench : public testing::Test
{
protected:
    QString placed(const QString& text) const
    {
        static const QRegularExpression name(QStringLiteral("@([\\w./]+)"));
        return QString(text).replace(name, home_.path() + QStringLiteral("/\\1"));
    }

    void start(QProcess& process, const QString& line) const
    {
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
        process.setProcessEnvironment(environment);
        process.start(QStringLiteral(KARVO_PROGRAM_FOLDER "/karvo-cli"),
                      placed(QStringLiteral("--settings @karvo.ini ") + usual_ + line)
                          .split(QLatin1Char(' '), Qt::SkipEmptyParts));
    }

    // `err`: what was read of it meanwhile.
    void finish(QProcess& process, const Case& expected, std::string err = {}) const
    {
        EXPECT_TRUE(process.waitForFinished(30000));
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
        const QByteArray printed = process.readAllStandardOutput();
        const std::string shown =
            portable(QByteArray(printed).replace("\r\n", "\n").replace("\\\\", "\\").toStdString());
        const std::string out = placed(QString::fromStdString(expected.out)).toStdString();
        err += portable(process.readAllStandardError().replace("\r\n", "\n").toStdString());
        EXPECT_EQ(process.exitCode(), expected.exitCode) << printed.constData() << err;
        if (out.empty() || out.back() == '\n')
            EXPECT_EQ(shown, out) << err;
        else
            EXPECT_NE(shown.find(out), std::string::npos) << shown;
        EXPECT_NE(err.find(placed(QString::fromStdString(expected.err)).toStdString()), std::string::npos)
            << err;
        if (expected.line.find("--json") == std::string::npos || out.empty())
            return;
        const auto json = QJsonDocument::fromJson(printed);
        EXPECT_TRUE(json.isObject()) << printed.constData();
        EXPECT_EQ(json[QStringLiteral("error")][QStringLiteral("exit")].toInt(expected.exitCode),
                  expected.exitCode);
    }

    void expect(const std::vector<Case>& cases) const
    {
        for (const Case& expected : cases) {
            SCOPED_TRACE(expected.line);
            QProcess process;
            start(process, QString::fromStdString(expected.line));
            finish(process, expected);
        }
    }
    // The cases of a file in tests/data/cli.
    void expectAll(const std::string& name) const
    {
        for (const auto& [line, exitCode, out, err] : casesOf<4>("cli/" + name))
            expect({{line, std::stoi(exitCode), out, err}});
    }

    void save(const char* name, const std::string& content) const
    {
        QFile file(pathOf(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content.data(), static_cast<qint64>(content.size()));
    }

    QString pathOf(const char* name) const { return home_.filePath(QString::fromLatin1(name)); }

    std::string contentOf(const char* name) const
    {
        QFile file(pathOf(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
        return file.readAll().toStdString();
    }

    QString usual_ = QStringLiteral("--language en --simulate kv07 --no-pace "); // before each line

private:
    QTemporaryDir home_;
};

} // namespace karvo::test
