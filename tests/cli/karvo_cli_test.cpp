// The program itself, as it lies in the program folder, on the simulated interface.
#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

namespace karvo
{
namespace
{

struct Outcome {
    int exitCode;
    QString out;
    QString err;
};

class KarvoCliTest : public testing::Test
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

private:
    QTemporaryDir home_;
};

TEST_F(KarvoCliTest, ReadsADecoderInEachLanguage)
{
    const std::pair<const char*, const char*> words[] = {{"de", "Erste Adresse (kurz)"},
                                                         {"nl", "Eerste adres (kort)"},
                                                         {"en", "First address (short)"},
                                                         {"es", "Primera dirección (corta)"},
                                                         {"fr", "Première adresse (courte)"}};
    for (const auto& [language, name] : words) {
        for (const char* const decoder : {"kv07", "kv04", "kv04-2008"}) {
            const auto outcome = run(QStringLiteral("read --no-pace --simulate %1 --language %2")
                                         .arg(QLatin1String(decoder), QLatin1String(language)));
            EXPECT_EQ(outcome.exitCode, 0) << decoder << language;
            EXPECT_TRUE(outcome.out.contains(QStringLiteral("CV1  = 3 "))) << decoder << language;
            EXPECT_TRUE(outcome.out.contains(QString::fromUtf8(name))) << decoder << language;
            EXPECT_TRUE(outcome.out.contains(QStringLiteral("\n  1 = "))) << decoder << language;
        }
    }
}

TEST_F(KarvoCliTest, ExitCodesTellWhatWentWrong)
{
    const std::pair<const char*, int> cases[] = {
        {"read --simulate kv07 --no-pace --fault unknown-identification --language en", 5},
        {"read --simulate kv07 --no-pace --fault wrong-check-byte --language en", 6},
        {"read --simulate kv07 --fault hang-up --language en", 4},
        {"identify --simulate kv07 --fault silence --language en", 4},
        {"read --map-port COM7=/nowhere/at/all --port COM7 --language en", 3},
        {"read --simulate kv99", 2},
        {"read --simulate kv07 --fault nonsense", 2},
        {"read --map-port nonsense", 2},
        {"read --language xx", 2},
        {"list kv99 --language en", 2},
        {"list kv07 --program-folder /nowhere/at/all --language en", 1},
    };
    for (const auto& [line, exitCode] : cases) {
        const auto outcome = run(QString::fromLatin1(line));
        EXPECT_EQ(outcome.exitCode, exitCode) << line;
        EXPECT_FALSE(outcome.err.trimmed().isEmpty()) << line;
        EXPECT_TRUE(outcome.out.isEmpty()) << line;
    }
}

TEST_F(KarvoCliTest, AMissingLanguageFileIsNamed)
{
    const auto outcome = run(QStringLiteral("list kv07 --program-folder /nowhere/at/all --language fr"));
    EXPECT_EQ(outcome.err, QStringLiteral("File [Franz_var.txt] not available !\nSet language to German.\n\n"
                                          "Program will be closed\n"));
}

TEST_F(KarvoCliTest, JsonCarriesEveryCv)
{
    const auto outcome = run(QStringLiteral("read --no-pace --simulate kv07 --language en --json"));
    const auto root = QJsonDocument::fromJson(outcome.out.toUtf8()).object();
    const auto decoder = root.value(QStringLiteral("decoder")).toObject();
    EXPECT_EQ(decoder.value(QStringLiteral("model")).toString(), QStringLiteral("KV07"));
    EXPECT_EQ(decoder.value(QStringLiteral("firmware")).toInt(), 6);
    const auto cvs = root.value(QStringLiteral("cvs")).toArray();
    ASSERT_GE(cvs.size(), 176);
    EXPECT_EQ(cvs.at(0).toObject().value(QStringLiteral("value")).toInt(), 3);
    EXPECT_EQ(cvs.at(0).toObject().value(QStringLiteral("upper")).toInt(), 126);
}

TEST_F(KarvoCliTest, IdentifiesAndListsWithoutReading)
{
    EXPECT_EQ(run(QStringLiteral("identify --no-pace --simulate trailer --language en")).out,
              QStringLiteral("AN07 (A7)\n"));
    const auto names = run(QStringLiteral("list --language en")).out.split(QLatin1Char('\n'));
    EXPECT_EQ(names.first(), QStringLiteral("kv07"));
    EXPECT_TRUE(names.contains(QStringLiteral("kv04-fw-08")));
    const auto list = run(QStringLiteral("list KV04 --language en"));
    EXPECT_EQ(list.exitCode, 0);
    EXPECT_TRUE(list.out.contains(QStringLiteral("| CV_Standart180.txt\n")));
}

} // namespace
} // namespace karvo
