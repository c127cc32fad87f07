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
        save("a.uhx", "1F80,KV08\r\nUpdate Ende\r\n:1000000102030405060708090A0B0C0D0E0F\r\n:100003\r\n");
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

struct Case {
    const char* name;
    const char* command;
    const char* file;
    const char* options;
    int exitCode;
    const char* out;
    const char* err; // a part of it
};

const Case outcomes[] = {
    // 7 + 10 * 8 + 2 * 9 + 18 + 4 * 12 + 2 * 10 + 13 bytes, and two pages of 144.
    {"FlashPlan", "flash", "a.hex", "--dry-run", 0,
     "The file is in order: 2 pages, 23 messages, 492 bytes. Nothing was sent.\n", ""},
    {"Flash", "flash", "a.hex", "--simulate kv07 --no-pace", 0, "The decoder accepted all 2 pages.\n", ""},
    {"FlashSkipped", "flash", "long.hex", "--simulate kv07 --no-pace --fault changed-byte", 7,
     "Not confirmed: page 4 (no complete reply).\nAccepted: 4 of 5 pages.\nThe old firmware is erased. "
     "Repeat the "
     "upload now: without complete firmware the decoder does not drive.\n",
     ""},
    {"FlashCutOff", "flash", "a.hex", "--simulate kv07 --no-pace --fault hang-up", 7,
     "The transfer did not run to its end.\nNot confirmed: page 1 (no complete reply).\nAccepted: 0 of 2 "
     "pages.\nThe "
     "old firmware is erased. Repeat the upload now: without complete firmware the decoder does not drive.\n",
     "The connection was lost during the transfer"},
    {"FlashDamaged", "flash", "damaged.hex", "--simulate kv07", 1, "", "line 2: The checksum"},
    {"FlashMissing", "flash", "missing.hex", "--dry-run", 1, "", "missing.hex"},
    {"UpdatePlan", "update", "a.uhx", "--dry-run", 0,
     "The file is in order: 2 data lines in 1 blocks, 36 bytes. Nothing was sent.\nHeader of the update "
     "file: 1F80, "
     "KV08\n",
     ""},
    {"Update", "update", "a.uhx", "--simulate kv08 --no-pace", 0, "",
     "The interface acknowledged all 2 records\n"},
    {"UpdateRefused", "update", "a.uhx", "--simulate kv08 --no-pace --fault refused-frame", 7, "",
     "First at: record 1, reply 15"},
    {"UpdateDeclined", "update", "a.uhx", "--simulate kv07 --no-pace", 7, "",
     "Line 1: the file names KV08, on the interface stands: KV07."},
    {"UpdateWanted", "update", "a.uhx", "--simulate kv07 --no-pace --yes", 0, "", "acknowledged all 2"},
    {"UpdateOtherModel", "update", "a.uhx", "--simulate kv04 --no-pace", 5, "",
     "a KV07, a KV08 and a receiver"},
    {"UpdateBrokenOff", "update", "a.uhx", "--simulate kv08 --no-pace --fault silent-update", 7, "",
     "switch the interface off and on again"},
    {"UpdateSilent", "update", "a.uhx", "--simulate kv07 --no-pace --fault silence", 4, "",
     "has not replied yet"},
};

TEST_F(FirmwareCommandTest, SaysWhatHappened)
{
    save("long.hex", test::hexFile(40));
    for (const Case& expected : outcomes) {
        const auto outcome = runOn(expected.command, expected.file, expected.options);
        EXPECT_EQ(outcome.exitCode, expected.exitCode) << expected.name;
        EXPECT_EQ(outcome.out.toStdString(), expected.out) << expected.name;
        EXPECT_TRUE(outcome.err.contains(QLatin1String(expected.err)))
            << expected.name << outcome.err.toStdString();
    }
}

} // namespace
} // namespace karvo
