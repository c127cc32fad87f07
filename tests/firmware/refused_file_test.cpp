// What the person is told of a firmware file that can not be sent: the message, the line and the reason.
#include "firmware/interface_update.h"
#include "firmware/upload.h"
#include "support/hex_file.h"
#include "support/test_bench.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using test::Journal;

const std::string first = ":020000020000FC\r\n";
const std::string end = ":00000001FF\r\n";
const std::string record = ":1000000102030405060708090A0B0C0D0E0F\r\n";
const std::string longLine(10U * 1024 * 1024, '0');

std::string binary()
{
    std::string content;
    for (int i = 0; i < 1024; ++i)
        content += static_cast<char>(i % 256);
    return content;
}

struct RefusedFile {
    const char* name;
    const char* file;
    std::string content;
    std::string told;
};

void PrintTo(const RefusedFile& refused, std::ostream* out)
{
    *out << refused.name;
}

class RefusedFileTest : public testing::TestWithParam<RefusedFile>, public test::TestBench
{
protected:
    // Each text is its own number.
    RefusedFileTest()
    {
        test::setText(state.texts, 36, u"m36");
        test::setText(state.texts, 850, u"m850 {1} line {2}: {3}");
        for (int caption = 600; caption <= 615; ++caption)
            test::setCaption(state.texts, caption, u"c" + textFromNumber(caption));
        addFile(GetParam().file, GetParam().content);
    }
};

TEST_P(RefusedFileTest, IsToldWithItsLineAndReason)
{
    const auto path = state.programFolder / GetParam().file;
    if (path.extension() == ".hex") {
        EXPECT_FALSE(readHexFile(bench, path));
    } else
        EXPECT_FALSE(readUpdateFile(bench, path));
    EXPECT_EQ(journal, (Journal{"message " + GetParam().told}));
}

const RefusedFile refusedFiles[] = {
    {"EmptyHex", "a.hex", "", "m36!"},
    {"CutHex", "a.hex", first + test::hexLine(0, {1, 2, 3}).substr(0, 13), "m850 program/a.hex line 2: c601"},
    {"CutHexBehindALine", "a.hex", first + test::hexLine(0, {1, 2}), "m850 program/a.hex line 2: c608"},
    {"WrongChecksum", "a.hex", first + test::hexLine(0, {1}) + ":0100010001FF\r\n" + end,
     "m850 program/a.hex line 3: c602"},
    {"CarriageReturnsOnlyHex", "a.hex", ":020000020000FC\r:00000001FF\r", "m36!"},
    {"OneLineTooMany", "a.hex", test::hexFile(2049), "m850 program/a.hex line 2050: c606"},
    {"LongLineHex", "a.hex", first + ":" + longLine + "\r\n" + end, "m850 program/a.hex line 2: c601"},
    {"LongFirstLine", "a.hex", longLine, "m36!"},
    {"BinaryHex", "a.hex", binary(), "m36!"},
    {"BinaryBehindTheFirstLine", "a.hex", first + binary(), "m850 program/a.hex line 2: c600"},
    {"EmptyUhx", "a.uhx", "", "m850 program/a.uhx line 1: c612"},
    {"CutUhx", "a.uhx", "1F80\r\nUpdate Ende\r\n" + record + record.substr(0, 10),
     "m850 program/a.uhx line 4: c614"},
    {"CutUhxHeader", "a.uhx", "1F80\r\nUpdate En", "m850 program/a.uhx line 2: c612"},
    {"CarriageReturnsOnlyUhx", "a.uhx", "1F80\rUpdate Ende\r" + record.substr(0, 37) + "\r",
     "m850 program/a.uhx line 1: c612"},
    {"LongLineUhx", "a.uhx", "1F80\r\nUpdate Ende\r\n" + longLine + "0\r\n",
     "m850 program/a.uhx line 3: c615"},
    {"LongHeaderUhx", "a.uhx", longLine, "m850 program/a.uhx line 1: c612"},
    {"BinaryUhx", "a.uhx", binary(), "m850 program/a.uhx line 4: c611"},
    {"BinaryRecord", "a.uhx", "1F80\r\nUpdate Ende\r\n" + record + binary(),
     "m850 program/a.uhx line 4: c614"},
};

INSTANTIATE_TEST_SUITE_P(Files, RefusedFileTest, testing::ValuesIn(refusedFiles),
                         [](const auto& tested) { return tested.param.name; });

class FirmwareDialogTest : public testing::Test, public test::TestBench
{
protected:
    FirmwareDialogTest()
    {
        test::setText(state.texts, 223, u"m223");
        test::setCaption(state.texts, 636, u"HEX");
        test::setCaption(state.texts, 637, u"UHX");
    }
};

TEST_F(FirmwareDialogTest, ProposesTheImageAndTakesNoOtherNameThanOneForUnchosen)
{
    const char* const opened = "open HEX (*.hex *.HEX) in folder: KV07_29August2022_Alle_Versionen.hex";
    for (const std::optional<std::filesystem::path>& unchosen :
         {std::optional<std::filesystem::path>(), std::optional<std::filesystem::path>("*.kvr")}) {
        prompts.chooseFile(unchosen);
        EXPECT_EQ(chooseImage(bench, "folder"), std::nullopt);
        EXPECT_EQ(journal, (Journal{opened, "message m223"}));
        journal.clear();
    }
    prompts.chooseFile("folder/KV07_29August2022_Alle_Versionen.hex");
    EXPECT_EQ(chooseImage(bench, "folder"), "folder/KV07_29August2022_Alle_Versionen.hex");
    EXPECT_EQ(journal, (Journal{opened}));
}

TEST_F(FirmwareDialogTest, ProposesThePatternOfUpdateFiles)
{
    prompts.chooseFile("folder/a.uhx");
    EXPECT_EQ(chooseUpdate(bench, "folder"), "folder/a.uhx");
    EXPECT_EQ(journal, (Journal{"open UHX (*.uhx *.UHX) in folder: *.uhx"}));
}

} // namespace
} // namespace karvo
