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

class RefusedFileTest : public testing::Test, public test::TestBench
{
protected:
    // Each text is its own number.
    RefusedFileTest()
    {
        test::setText(state.texts, 36, u"m36");
        test::setText(state.texts, 850, u"m850 {1} line {2}: {3}");
        test::setText(state.texts, 854, u"{1} above {2}");
        for (int caption = 600; caption <= 615; ++caption)
            test::setCaption(state.texts, caption, u"c" + textFromNumber(caption));
    }
    std::string told(const char* name, const std::string& content)
    {
        journal.clear();
        addFile(name, content);
        const auto path = state.programFolder / name;
        const bool refused =
            path.extension() == ".hex" ? !readHexFile(bench, path) : !readUpdateFile(bench, path);
        EXPECT_TRUE(refused) << name;
        return journal.empty() ? "" : journal.back();
    }
};

TEST_F(RefusedFileTest, IsToldWithItsLineAndReason)
{
    const std::string first = ":020000020000FC\r\n";
    const std::string longLine(10U * 1024 * 1024, '0');
    EXPECT_EQ(told("a.hex", first + ":" + longLine), "message m850 program/a.hex line 2: c601");
    EXPECT_EQ(told("a.hex", first + ":0100010001FF\r\n"), "message m850 program/a.hex line 2: c602");
    EXPECT_EQ(told("a.uhx", "1F80\r\nUpdate Ende\r\n" + longLine + "0"),
              "message m850 program/a.uhx line 3: c615");
    EXPECT_EQ(told("a.hex", "hello\r\n"), "message m36!");
    state.tellsWrongFirstLine = false;
    EXPECT_EQ(told("a.hex", "hello\r\n"), "");
    for (const char* const name : {"big.hex", "big.uhx"})
        EXPECT_EQ(told(name, std::string(32U * 1024 * 1024 + 1, '0')),
                  "message program/" + std::string(name) + " above 32");
}

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
