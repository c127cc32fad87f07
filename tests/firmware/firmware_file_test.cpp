// Firmware files: what is read from them, what is told of one that can not be sent, and how one is chosen.
#include "firmware/interface_update.h"
#include "firmware/upload.h"
#include "support/case_table.h"
#include "support/hex_file.h"
#include "support/test_bench.h"

namespace karvo
{
namespace
{

using test::hexLine;

const std::string first = ":020000020000FC\r\n";
const std::string end = ":00000001FF\r\n";

struct FileBench : test::TestBench {
    FileBench()
    {
        test::numberEveryText(state.texts);
        test::setTexts(state.texts, {{850, u"line {2}: {3}"}, {854, u"{1} above {2}"}}, {});
    }
    // The last that is told.
    std::string told(const std::string& name, const std::string& content)
    {
        journal.clear();
        addFile(name, content);
        const auto path = state.programFolder / name;
        EXPECT_TRUE(path.extension() == ".hex" ? !readHexFile(bench, path) : !readUpdateFile(bench, path));
        return journal.empty() ? "" : test::portable(journal.back());
    }
};

std::string fullLines(std::size_t count)
{
    std::string lines = first;
    for (std::size_t i = 0; i < count; ++i)
        lines += hexLine(static_cast<unsigned>(i * 128), Bytes(128, 0x55));
    return lines + end;
}

TEST(FirmwareFile, IsRefusedWithItsLineAndReason)
{
    FileBench bench;
    for (const auto& [kind, content, told] : test::casesOf<3>("firmware/refused_files.txt"))
        EXPECT_EQ(bench.told("a." + kind, content), "message " + told) << content;
    EXPECT_EQ(bench.told("a.hex", fullLines(257)), "message line 258: c607");
    EXPECT_EQ(bench.told("a.hex", test::hexFile(2049)), "message line 2050: c606");
    test::setText(bench.state.texts, 850, u"{1}");
    for (const std::string name : {"a.hex", "a.uhx"}) {
        EXPECT_EQ(bench.told(name, first), "message program/" + name);
        EXPECT_EQ(bench.told(name, std::string(32U * 1024 * 1024 + 1, '0')),
                  "message program/" + name + " above 32");
    }
    bench.state.tellsWrongFirstLine = false;
    EXPECT_EQ(bench.told("a.hex", "hello\r\n"), "");
}

TEST(FirmwareFile, IsProposedAndOneNameStandsForNone)
{
    FileBench bench;
    const std::string opened = "open c636 (*.hex *.HEX) in folder: KV07_29August2022_Alle_Versionen.hex";
    for (const auto& chosen : {std::optional<std::filesystem::path>(), {"*.kvr"}, {"folder/a.hex"}}) {
        bench.journal.clear();
        bench.prompts.chooseFile(chosen);
        const bool counts = chosen == "folder/a.hex";
        EXPECT_EQ(chooseImage(bench.prompts, bench.state.texts, "folder"), counts ? chosen : std::nullopt);
        EXPECT_EQ(test::joined(bench.journal), opened + (counts ? "" : ", message m223"));
    }
    bench.prompts.chooseFile("folder/a.uhx");
    EXPECT_EQ(chooseUpdate(bench.prompts, bench.state.texts, "folder"), "folder/a.uhx");
    EXPECT_EQ(bench.journal.back(), "open c637 (*.uhx *.UHX) in folder: *.uhx");
}

TEST(HexImage, JoinsRecordsByAddressAndTakesWhatEditorsLeaveBehindAndAFullFlash)
{
    const auto image = parseHexImage(test::bytesOf(first + hexLine(2, {3, 4}) + hexLine(0, {1, 2}) + end));
    EXPECT_EQ(std::get<HexImage>(image).data, (Bytes{1, 2, 3, 4}));
    const std::pair<std::string, std::size_t> cases[] = {
        {first + ":020000000102FB \t\r\n:00000001FF  \r\n\r\n \t\r\n\x1A\x1A", 2},
        {":020000020000FC\n:020000000102FB\n:00000001FF\x1A", 2},
        {test::hexFile(2048), 32768},
        {fullLines(256), 32768}};
    for (const auto& [content, size] : cases) {
        const auto result = parseHexImage(test::bytesOf(content));
        ASSERT_TRUE(std::holds_alternative<HexImage>(result)) << content.substr(0, 100);
        EXPECT_EQ(std::get<HexImage>(result).data.size(), size);
    }
}

TEST(UpdateFile, HoldsHeaderItemsByCommaAndByLineAndFillsAShortRecord)
{
    const std::string content = "1F80,KV07,3\r\nV6.3\r\n5\n6\r\nUpdate Ende\r\n"
                                ":1000000102030405060708090A0B0C0D0E0F\r\n12345AB\n";
    const auto file = std::get<UpdateFile>(parseUpdateFile(test::bytesOf(content)));
    std::string items;
    for (const HeaderItem& item : file.header)
        items += utf8FromText(item.text) + " " + std::to_string(item.line) + ", ";
    EXPECT_EQ(items, "1F80 1, KV07 1, 3 1, V6.3 2, 5 3, 6 4, ");
    EXPECT_EQ(file.start, (Bytes{0x1F, 0x80}));
    UpdateRecord shortOne;
    shortOne.fill(0xFF); // erased, not what the line before holds
    shortOne[0] = 0xAB;
    EXPECT_EQ(file.records,
              (std::vector<UpdateRecord>{{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15}, shortOne}));
}

} // namespace
} // namespace karvo
