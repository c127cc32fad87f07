// Renewing firmware from the command line, on simulated devices.
#include "cli/program_bench.h"
#include "support/hex_file.h"

namespace karvo
{
namespace
{

class FirmwareCommandTest : public test::ProgramBench
{
protected:
    FirmwareCommandTest()
    {
        save("a.hex", test::hexFile(9));
        save("damaged.hex", ":020000020000FC\r\n:0100000001FF\r\n:00000001FF\r\n");
        save("other.hex", "hello\r\n");
        save("a.uhx", "1F80\r\nUpdate Ende\r\n:10000102\r\n:100003\r\n");
        save("damaged.uhx", "1F80\r\nUpdate Ende\r\n:100001023\r\n");
    }

    void save(const char* name, const std::string& content)
    {
        QFile file(pathOf(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content.data(), static_cast<qint64>(content.size()));
    }

    test::Outcome runOn(const char* command, const char* name, const char* options)
    {
        return run(QStringLiteral("%1 %2 --language en %3")
                       .arg(QLatin1String(command), pathOf(name), QLatin1String(options)));
    }
};

TEST_F(FirmwareCommandTest, FlashTellsWhatWasSent)
{
    const auto outcome = runOn("flash", "a.hex", "--simulate kv07 --no-pace");
    EXPECT_EQ(outcome.exitCode, 0) << outcome.err.toStdString();
    // 21 messages and two pages; the erase is answered shorter than its wait.
    EXPECT_EQ(outcome.out, QStringLiteral("Sent: 23 messages with 2 pages. Missing replies: 1\n"));
}

TEST_F(FirmwareCommandTest, UpdateRunsToItsEnd)
{
    const auto outcome = runOn("update", "a.uhx", "--simulate kv08 --no-pace");
    EXPECT_EQ(outcome.exitCode, 0) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.err.endsWith(QStringLiteral("The firmware has been sent completely\n")))
        << outcome.err.toStdString();
}

struct Case {
    const char* name;
    const char* command;
    const char* file;
    const char* options;
    int exitCode;
    const char* out;
    const char* err; // a part of it
};

class FirmwareOutcomeTest : public FirmwareCommandTest, public testing::WithParamInterface<Case>
{
};

TEST_P(FirmwareOutcomeTest, SaysWhatHappened)
{
    const Case& expected = GetParam();
    const auto outcome = runOn(expected.command, expected.file, expected.options);
    EXPECT_EQ(outcome.exitCode, expected.exitCode);
    EXPECT_EQ(outcome.out.toStdString(), expected.out);
    EXPECT_TRUE(outcome.err.contains(QLatin1String(expected.err))) << outcome.err.toStdString();
}

const Case outcomes[] = {
    // 7 + 10 * 8 + 2 * 9 + 18 + 4 * 12 + 2 * 10 + 13 bytes, and two pages of 144.
    {"FlashPlan", "flash", "a.hex", "--dry-run", 0,
     "The file is in order: 2 pages, 23 messages, 492 bytes. Nothing was sent.\n", ""},
    {"FlashDamaged", "flash", "damaged.hex", "--simulate kv07", 1, "", "line 2: The checksum"},
    {"FlashOther", "flash", "other.hex", "--dry-run", 1, "", "Nothing was sent!\n"},
    {"FlashMissing", "flash", "missing.hex", "--dry-run", 1, "", "missing.hex"},
    {"UpdatePlan", "update", "a.uhx", "--dry-run", 0,
     "The file is in order: 2 data lines in 1 blocks, 36 bytes. Nothing was sent.\n", ""},
    {"UpdateDamaged", "update", "damaged.uhx", "--simulate kv07 --no-pace", 1, "", "line 3: "},
    {"UpdateOtherModel", "update", "a.uhx", "--simulate kv04 --no-pace", 5, "",
     "a KV07, a KV08 and a receiver"},
    {"UpdateBrokenOff", "update", "a.uhx", "--simulate kv07 --no-pace --fault silent-update", 7, "",
     "switch the interface off and on again"},
    {"UpdateCutOff", "update", "a.uhx", "--simulate kv07 --no-pace --fault hang-up", 7, "",
     "switch the interface off and on again"},
    {"FlashCutOff", "flash", "a.hex", "--simulate kv07 --no-pace --fault hang-up", 7,
     "Sent: 22 messages with 1 pages. Missing replies: 2\n", "The connection was lost during the transfer"},
    {"UpdateSilent", "update", "a.uhx", "--simulate kv07 --no-pace --fault silence", 4, "",
     "has not replied yet"},
};

INSTANTIATE_TEST_SUITE_P(Commands, FirmwareOutcomeTest, testing::ValuesIn(outcomes),
                         [](const auto& tested) { return tested.param.name; });

} // namespace
} // namespace karvo
