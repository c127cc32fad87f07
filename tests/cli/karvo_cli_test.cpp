// The program itself, as it lies in the program folder, on the simulated interface.
#include "cli/program_bench.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace karvo
{
namespace
{

class KarvoCliTest : public test::ProgramBench
{
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
        {"list kv07 --variant 2 --language en", 2},
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
    const auto preset = run(QStringLiteral("list kv04-fw-09 --variant 3 --language en"));
    EXPECT_TRUE(preset.out.contains(QStringLiteral("| CV_KV04_FW_V3_09.txt\n")));
}

TEST_F(KarvoCliTest, SavesWhatItReadsInThreeForms)
{
    readInto("bus.kvr", "kv07");
    EXPECT_TRUE(contentOf("bus.kvr").startsWith("Standard KV07*6\r\n1;3;Erste Adresse (kurz);"));
    EXPECT_TRUE(
        contentOf("bus.kvr").contains("\r\nEnde CV\r\nATmega328\r\nFirmware_Version: 6\r\nAnfang FS\r\n"));
    EXPECT_TRUE(contentOf("bus.kvr").endsWith("\r\nEnde FS\r\n"));
    readInto("bus.csv", "kv07");
    EXPECT_TRUE(
        contentOf("bus.csv").startsWith("CV-Nummer;CV-Wert;CV-Text\r\n1;3;Erste Adresse (kurz)\r\n2;"));
    readInto("bus.txt", "kv07");
    EXPECT_TRUE(contentOf("bus.txt").startsWith("KV07\r\nKV07  Firmware = 6"));
    EXPECT_TRUE(contentOf("bus.txt").contains("\r\nCV1  = 3 "));
}

TEST_F(KarvoCliTest, AFileIsReplacedWithConsentOnly)
{
    readInto("bus.kvr", "kv07");
    const auto before = contentOf("bus.kvr");
    const auto line =
        QStringLiteral("read --no-pace --language en --simulate kv08 --output ") + pathOf("bus.kvr");
    const auto refused = run(line);
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_TRUE(refused.err.contains(QStringLiteral("--yes")));
    EXPECT_EQ(contentOf("bus.kvr"), before);
    EXPECT_EQ(run(line + QStringLiteral(" --yes")).exitCode, 0);
    EXPECT_TRUE(contentOf("bus.kvr").startsWith("Standard KV08*"));
    const auto nowhere =
        run(QStringLiteral("read --no-pace --language en --simulate kv08 --output /none/a.kvr"));
    EXPECT_EQ(nowhere.exitCode, 1);
    EXPECT_TRUE(nowhere.err.contains(QStringLiteral("/none/a.kvr")));
}

TEST_F(KarvoCliTest, ExportsASavedList)
{
    readInto("bus.kvr", "kv07");
    readInto("bus.csv", "kv07");
    EXPECT_EQ(
        run(QStringLiteral("export %1 %2 --language de").arg(pathOf("bus.kvr"), pathOf("out.csv"))).exitCode,
        0);
    EXPECT_EQ(contentOf("out.csv"), contentOf("bus.csv"));
    EXPECT_EQ(
        run(QStringLiteral("export %1 %2 --language de").arg(pathOf("bus.kvr"), pathOf("out.txt"))).exitCode,
        0);
    EXPECT_TRUE(contentOf("out.txt").startsWith("bus\r\nKV07  Firmware = 6 | bus.kvr\r\n\r\nCV1  = 3 "));
    EXPECT_EQ(
        run(QStringLiteral("export %1 %2 --language de").arg(pathOf("no.kvr"), pathOf("x.csv"))).exitCode, 1);
    EXPECT_FALSE(QFile::exists(pathOf("x.csv")));
}

TEST_F(KarvoCliTest, ComparesTwoLists)
{
    readInto("a.kvr", "kv07");
    readInto("b.kvr", "kv07");
    readInto("c.kvr", "kv04-2008");
    const auto line = QStringLiteral("compare %1 %2 --language en");
    const auto equal = run(line.arg(pathOf("a.kvr"), pathOf("b.kvr")));
    EXPECT_EQ(equal.exitCode, 0);
    EXPECT_TRUE(equal.out.endsWith(QStringLiteral(" equal, 0 different, 0 only left, 0 only right\n")));
    ASSERT_EQ(run(QStringLiteral("set %1 CV1=77 CV84=60 --language en").arg(pathOf("b.kvr"))).exitCode, 0);
    ASSERT_EQ(run(QStringLiteral("set %1 CV84=64 --language en").arg(pathOf("a.kvr"))).exitCode, 0);
    const auto different = run(line.arg(pathOf("a.kvr"), pathOf("b.kvr")));
    EXPECT_EQ(different.exitCode, 1);
    EXPECT_TRUE(different.out.contains(QStringLiteral("\nCV1 = 3\t77\tdifferent\tFirst address (short)\n")));
    EXPECT_TRUE(different.out.contains(QStringLiteral("\n  14 (CV84) = 64\t60\tdifferent\t")));
    const auto json = run(line.arg(pathOf("a.kvr"), pathOf("b.kvr")) + QStringLiteral(" --json"));
    EXPECT_EQ(json.exitCode, 1);
    const auto root = QJsonDocument::fromJson(json.out.toUtf8()).object();
    EXPECT_EQ(root.value(QStringLiteral("different")).toInt(), 2);
    EXPECT_EQ(root.value(QStringLiteral("lines"))
                  .toArray()
                  .at(0)
                  .toObject()
                  .value(QStringLiteral("second"))
                  .toInt(),
              77);
    const auto refused = run(line.arg(pathOf("a.kvr"), pathOf("c.kvr")));
    EXPECT_EQ(refused.exitCode, 2);
    EXPECT_TRUE(refused.err.startsWith(QStringLiteral("The file is from an ATmega168\n")));
    EXPECT_EQ(run(line.arg(pathOf("a.kvr"), pathOf("none.kvr"))).exitCode, 2);
    EXPECT_EQ(
        run(line.arg(pathOf("a.kvr"), pathOf("b.kvr")) + QStringLiteral(" --program-folder /none")).exitCode,
        2);
}

TEST_F(KarvoCliTest, ChangesManyLists)
{
    readInto("a.kvr", "kv07");
    readInto("b.kvr", "kv08");
    const auto before = contentOf("a.kvr");
    const auto line = QStringLiteral("set %1 %2 %3 CV1=99 --language en")
                          .arg(pathOf("a.kvr"), pathOf("b.kvr"), pathOf("none.kvr"));
    const auto preview = run(line + QStringLiteral(" --dry-run"));
    EXPECT_EQ(preview.exitCode, 1);
    EXPECT_EQ(preview.out, QStringLiteral("%1: CV1 3 -> 99\n%2: CV1 3 -> 99\n%3: The file cannot be read\n")
                               .arg(pathOf("a.kvr"), pathOf("b.kvr"), pathOf("none.kvr")));
    EXPECT_EQ(contentOf("a.kvr"), before);
    EXPECT_EQ(run(line).out, preview.out);
    auto expected = before;
    EXPECT_EQ(contentOf("a.kvr"), expected.replace("\r\n1;3;", "\r\n1;99;"));
    EXPECT_TRUE(contentOf("b.kvr").contains("\r\n1;99;"));
    const auto refused =
        run(QStringLiteral("set %1 CV1=127 CV2=7 --json --language en").arg(pathOf("a.kvr")));
    EXPECT_EQ(refused.exitCode, 1);
    const auto file = QJsonDocument::fromJson(refused.out.toUtf8()).array().at(0).toObject();
    EXPECT_FALSE(file.value(QStringLiteral("done")).toBool());
    const auto cvs = file.value(QStringLiteral("cvs")).toArray();
    EXPECT_EQ(cvs.at(0).toObject().value(QStringLiteral("refused")).toString(),
              QStringLiteral("CV1 may only be from 1 to 126 here"));
    EXPECT_EQ(contentOf("a.kvr"), expected);
}

} // namespace
} // namespace karvo
