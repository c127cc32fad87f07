// What the person is told of a firmware file that can not be sent, and what he is asked for it.
#include "firmware/interface_update.h"
#include "firmware/upload.h"
#include "support/test_bench.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

struct FileBench : test::TestBench {
    FileBench()
    {
        test::numberEveryText(state.texts);
        test::setText(state.texts, 850, u"m850 {1} line {2}: {3}");
        test::setText(state.texts, 854, u"{1} above {2}");
    }
    // The last that is told.
    std::string told(const char* name, const std::string& content)
    {
        journal.clear();
        addFile(name, content);
        const auto path = state.programFolder / name;
        EXPECT_TRUE(path.extension() == ".hex" ? !readHexFile(bench, path) : !readUpdateFile(bench, path));
        return journal.empty() ? "" : journal.back();
    }
};

TEST(FirmwareFile, IsRefusedWithItsLineAndReason)
{
    FileBench bench;
    const std::string first = ":020000020000FC\r\n";
    const std::string longLine(10U * 1024 * 1024, '0');
    EXPECT_EQ(bench.told("a.hex", first + ":" + longLine), "message m850 program/a.hex line 2: c601");
    EXPECT_EQ(bench.told("a.hex", first + ":0100010001FF\r\n"), "message m850 program/a.hex line 2: c602");
    EXPECT_EQ(bench.told("a.uhx", "1F80\r\nUpdate Ende\r\n" + longLine + "0"),
              "message m850 program/a.uhx line 3: c615");
    EXPECT_EQ(bench.told("a.hex", "hello\r\n"), "message m36!");
    bench.state.tellsWrongFirstLine = false;
    EXPECT_EQ(bench.told("a.hex", "hello\r\n"), "");
    for (const char* const name : {"big.hex", "big.uhx"})
        EXPECT_EQ(bench.told(name, std::string(32U * 1024 * 1024 + 1, '0')),
                  "message program/" + std::string(name) + " above 32");
}

TEST(FirmwareFile, IsProposedAndOneNameStandsForNone)
{
    FileBench bench;
    const std::string opened = "open c636 (*.hex *.HEX) in folder: KV07_29August2022_Alle_Versionen.hex";
    const std::filesystem::path image = "folder/KV07_29August2022_Alle_Versionen.hex";
    const std::optional<std::filesystem::path> cases[] = {std::nullopt, "*.kvr", image};
    for (const auto& chosen : cases) {
        bench.journal.clear();
        bench.prompts.chooseFile(chosen);
        EXPECT_EQ(chooseImage(bench.bench, "folder"), chosen == image ? chosen : std::nullopt);
        EXPECT_EQ(test::joined(bench.journal), chosen == image ? opened : opened + ", message m223");
    }
    bench.prompts.chooseFile("folder/a.uhx");
    EXPECT_EQ(chooseUpdate(bench.bench, "folder"), "folder/a.uhx");
    EXPECT_EQ(bench.journal.back(), "open c637 (*.uhx *.UHX) in folder: *.uhx");
}

} // namespace
} // namespace karvo
