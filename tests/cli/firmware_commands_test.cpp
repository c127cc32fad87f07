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
    expectAll("firmware.txt");
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
