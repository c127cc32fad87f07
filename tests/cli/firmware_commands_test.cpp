// Renewing firmware and unpacking it from the command line, on simulated devices.
#include "cli/program_bench.h"
#include "support/hex_file.h"
#include "support/zip_maker.h"

#include <QDir>

namespace karvo
{
namespace
{

using FirmwareCommandTest = test::ProgramBench;

TEST_F(FirmwareCommandTest, SaysWhatHappened)
{
    save("a.hex", test::hexFile(9));
    save("long.hex", test::hexFile(40));
    save("damaged.hex", ":020000020000FC\r\n:0100000001FF\r\n:00000001FF\r\n");
    save("a.uhx", "1F80,KV08\r\nUpdate Ende\r\n:1000000102030405060708090A0B0C0D0E0F\r\n:100003\r\n");
    expect({
        // 7 + 10 * 8 + 2 * 9 + 18 + 4 * 12 + 2 * 10 + 13 bytes, and two pages of 144.
        {"flash @a.hex --dry-run", 0,
         "The file is in order: 2 pages, 23 messages, 492 bytes. Nothing was sent.\n"},
        {"flash @a.hex", 0, "The decoder accepted all 2 pages.\n"},
        {"flash @long.hex --fault changed-byte", 7, "",
         "Not confirmed: page 4 (no complete reply).\nAccepted: 4 of 5 pages.\nThe old firmware is erased. "
         "Repeat the upload now: without complete firmware the decoder does not drive.\n"},
        {"flash @a.hex --fault hang-up --json", 7, "\"accepted\": 0,\n    \"end\": \"lineLost\"",
         "The transfer did not run to its end.\nNot confirmed: page 1 (no complete reply).\n"},
        {"flash @damaged.hex", 1, "", "damaged.hex, line 2: The checksum"},
        {"flash @missing.hex --dry-run", 1, "", "missing.hex"},
        {"update @a.uhx --dry-run", 0,
         "The file is in order: 2 data lines in 1 blocks, 36 bytes. Nothing was sent.\n"
         "Header of the update file: 1F80, KV08\n"},
        {"update @a.uhx --dry-run --json", 0, "\"bytes\": 36"},
        {"update @a.uhx --simulate kv08", 0, "", "The interface acknowledged all 2 records\n"},
        {"update @a.uhx --simulate kv08 --fault refused-frame --json", 7, "\"end\": \"notConfirmed\"",
         "First at: record 1, reply 15"},
        {"update @a.uhx", 7, "", "Line 1: the file names KV08, on the interface stands: KV07."},
        {"update @a.uhx --yes", 0, "", "acknowledged all 2"},
        {"update @a.uhx --simulate kv04", 5, "", "a KV07, a KV08 and a receiver"},
        {"update @a.uhx --simulate kv08 --fault silent-update", 7, "",
         "switch the interface off and on again"},
        {"update @a.uhx --fault silence", 4, "", "has not replied yet"},
    });
}

TEST_F(FirmwareCommandTest, UnpacksAsAWholeOrNotAtAll)
{
    const std::string good = test::makeZip({{"docs/a.txt", "text"}, {"b.hex", ":00"}});
    save("cut.zip", good.substr(0, good.size() - 5));
    save("evil.zip", test::makeZip({{"a.txt", "text"}, {"../evil", "text"}}));
    save("empty.zip", test::makeZip({}));
    save("good.zip", good);
    const auto unpacked = [&] {
        return QDir(pathOf("out")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    };
    expect({
        {"unzip @cut.zip @out", 6, "", "is not a readable ZIP archive"},
        {"unzip @evil.zip @out --json", 6, "\"end\": \"nameRefused\"", "contains the name ../evil"},
        {"unzip @empty.zip @out", 6, "", "is an empty archive"},
        {"unzip @missing.zip @out", 1, "", "There is no archive"},
        {"unzip @good.zip @cut.zip", 7, ""}, // a file stands where the folder has to be
    });
    EXPECT_TRUE(unpacked().isEmpty());
    EXPECT_FALSE(QFile::exists(pathOf("evil")));
    expect({{"unzip @good.zip @out", 0, ""}});
    EXPECT_EQ(unpacked(), (QStringList{QStringLiteral("b.hex"), QStringLiteral("docs")}));
    EXPECT_EQ(contentOf("out/docs/a.txt"), "text");
}

} // namespace
} // namespace karvo
