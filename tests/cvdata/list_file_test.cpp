#include "cvdata/list_file.h"

#include "cvdata/description_file.h"
#include "cvdata/list_header.h"
#include "support/memory_files.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace karvo
{
namespace
{

using test::bytesOf;
using Kind = ListFault::Kind;

std::string textOf(const Bytes& bytes)
{
    return std::string(bytes.begin(), bytes.end());
}

// A set as it is after a read with this description.
CvSet setOf(std::string_view description, int typeCode, int firmware, Processor processor)
{
    auto parsed = parseDescription(bytesOf(description));
    CvSet set;
    set.descriptionLines = std::move(parsed->lines);
    set.rowCount = parsed->rowCount;
    set.table = std::move(parsed->table);
    set.profile.typeCode = typeCode;
    set.profile.firmwareVersion = firmware;
    set.profile.processor = processor;
    return set;
}

// The same set once its file has been opened.
CvSet opened(const Bytes& content)
{
    auto parsed = parseListFile(content);
    auto& list = std::get<ListFile>(parsed);
    CvSet set;
    set.profile = modelOfHeader(list.header())->profile;
    set.profile.processor = list.processor.value_or(set.profile.processor);
    set.rowCount = list.rowCount;
    set.descriptionLines = std::move(list.lines);
    set.table = std::move(list.table);
    set.offlineItem = openedListItem;
    return set;
}

// The first CV that is not the same in both; 0 for none.
int firstDifference(const CvTable& one, const CvTable& other)
{
    for (int cv = 1; cv <= CvTable::lastRow; ++cv) {
        for (int column = 1; column <= CvTable::lastColumn; ++column) {
            if (one.at(cv, column) != other.at(cv, column))
                return cv;
        }
    }
    return 0;
}

std::vector<std::pair<Kind, int>> faultsOf(std::string_view content)
{
    const auto parsed = parseListFile(bytesOf(content));
    std::vector<std::pair<Kind, int>> faults;
    for (const auto& fault : std::get<ListFile>(parsed).faults)
        faults.emplace_back(fault.kind, fault.line);
    return faults;
}

TEST(ListFileTest, SavesEveryLineInItsOrder)
{
    CvSet set = setOf("Standard KV07\r\n"
                      "1;3;Adresse;1;126;3;\r\n"
                      "29;6;Konfiguration;1;255;\r\n"
                      "2;5;zwei$Zeilen;0;255;5;warum$nicht;;;;rest ohne Ende\r\n"
                      "Anfang FS\r\nFS1 = 5\r\nFS28 = 128\r\n\r\nnicht mehr\r\n",
                      7, 5, Processor::atmega328);
    set.table.at(29, Column::number) = u"29";
    set.table.at(29, Column::text) = u"Konfiguration";
    set.table.setValue(29, 38);
    set.table.setValue(1, 200);
    EXPECT_EQ(textOf(save_data(set)), "Standard KV07*5\r\n"
                                      "1;200;Adresse;1;126;3;\r\n"
                                      "29;38;Konfiguration;1;255;\r\n"
                                      "2;5;zwei$Zeilen;0;255;5;warum$nicht;;;;rest ohne Ende\r\n"
                                      "Ende CV\r\n"
                                      "ATmega328\r\n"
                                      "Firmware_Version: 5\r\n"
                                      "Anfang FS\r\nFS1 = 5\r\nFS28 = 128\r\n"
                                      "Ende FS\r\n");
    EXPECT_EQ(set.descriptionLines[1], u"Standard KV07*5");
}

TEST(ListFileTest, TheTrailerTellsProcessorReceiverAndFirmware)
{
    struct Case {
        int typeCode;
        int firmware;
        Processor processor;
        const char* trailer;
    };
    const Case cases[] = {
        {7, 4, Processor::atmega328, "ATmega328\r\nFirmware_Version: 4\r\n"},
        {0, 3, Processor::atmega168, "ATmega168\r\n \r\nFirmware_Version: 0\r\n \r\n"},
        {80, 9, Processor::atmega328, "ATmega328\r\n80\r\nFirmware_Version: 9\r\n"},
        {57, 0, Processor::atmega328, "ATmega328\r\n \r\nFirmware_Version: 0\r\n \r\n"},
    };
    for (const Case& expected : cases) {
        CvSet set = setOf("K\r\n1;3;a;\r\n", expected.typeCode, expected.firmware, expected.processor);
        EXPECT_EQ(textOf(save_data(set)), "K*" + std::to_string(expected.firmware) +
                                              "\r\n1;3;a;\r\nEnde CV\r\n" + expected.trailer + "Ende FS\r\n");
    }
}

TEST(ListFileTest, ComputedSpeedStepsReplaceTheDescriptions)
{
    std::string description = "Berechnete KV07\r\n";
    for (int row = 1; row <= 97; ++row)
        description += std::to_string(row) + ";" + std::to_string(row) + ";x;\r\n";
    CvSet set = setOf(description + "Anfang FS\r\nFS1 = 5\r\n\r\n", 7, 6, Processor::atmega328);
    const auto saved = textOf(save_data(set));
    EXPECT_NE(saved.find("Firmware_Version: 6\r\nAnfang FS\r\nFS1 = 97\r\nFS2 = 96\r\n"), std::string::npos);
    EXPECT_TRUE(saved.ends_with("FS28 = 70\r\nEnde FS\r\n"));
    EXPECT_EQ(textOf(save_data(set)), saved);
}

TEST(ListFileTest, AReadOnlyReceiverIsSavedWithoutItsLastRow)
{
    CvSet set = setOf("Standard KV05-XT\r\n1;3;a;\r\n2;4;b;\r\n", 81, 4, Processor::atmega328);
    const Bytes saved = save_data(set);
    EXPECT_EQ(textOf(saved),
              "Standard KV05-XT*4\r\n1;3;a;\r\nEnde CV\r\nATmega328\r\n80\r\nFirmware_Version: 4\r\n"
              "Ende FS\r\n");
    CvSet again = opened(saved);
    EXPECT_EQ(save_data(again), saved);
}

TEST(ListFileTest, EveryInstalledDescriptionSurvivesSaveOpenSave)
{
    int descriptions = 0;
    for (const auto& entry : std::filesystem::directory_iterator(KARVO_PROGRAM_FOLDER)) {
        const auto name = entry.path().filename().string();
        if (!name.starts_with("CV_Standart") && !name.starts_with("CV_KV"))
            continue;
        std::ifstream stream(entry.path(), std::ios::binary);
        const std::string content{std::istreambuf_iterator<char>(stream), {}};
        const int firmware = descriptions % 2 == 0 ? 3 : 255;
        CvSet set = setOf(content, 0, firmware, Processor::atmega168);
        const auto model = modelOfHeader(set.descriptionLines[1]);
        ASSERT_TRUE(model) << name;
        set.profile.typeCode = model->profile.typeCode;
        for (int cv = 1; cv <= CvTable::lastRow; ++cv) {
            if (set.table.describes(cv))
                set.table.setValue(cv, 255 - cv % 256);
        }
        const Bytes saved = save_data(set);
        CvSet again = opened(saved);
        EXPECT_EQ(again.profile.firmwareVersion, firmware) << name;
        EXPECT_EQ(again.profile.processor, Processor::atmega168) << name;
        EXPECT_EQ(save_data(again), saved) << name;
        EXPECT_EQ(firstDifference(again.table, set.table), 0) << name;
        EXPECT_TRUE(again.table.describes(167) && again.table.describes(171) && again.table.describes(176))
            << name;
        ++descriptions;
    }
    EXPECT_GT(descriptions, 200);
}

TEST(ListFileTest, WhatIsNotUnderstoodStands)
{
    const std::string content = "Linie 7 KV07*5\r\n"
                                "1;3;Adresse;1;126;3;\r\n"
                                "\r\n"
                                "Notiz von Jan\r\n"
                                "0;5;keine CV;\r\n"
                                "002; 07;sieben;\r\n"
                                "5;hundert;kein Wert;\r\n"
                                "5;9;noch einmal;\r\n"
                                "6;1\r\n"
                                "167;1;Gattung;a;b;c;d;e;f;g;h;i;j;k;l;m;n;o;\r\n"
                                "Ende CV\r\n"
                                "ATmega644\r\n"
                                "Firmware_Version: 5\r\n"
                                "Farbe: blau\r\n"
                                "Anfang FS\r\n"
                                "FS1 = 5\r\n"
                                "\r\n"
                                "FS2 = 6\r\n"
                                "Ende FS\r\n"
                                "dahinter\r\n";
    CvSet set = opened(bytesOf(content));
    EXPECT_EQ(textOf(save_data(set)), content);
    EXPECT_EQ(set.table.value(2), 7);
    EXPECT_EQ(set.table.value(5), std::nullopt);
    EXPECT_TRUE(set.table.describes(5));
    EXPECT_EQ(set.table.at(167, 16), u"m");
    EXPECT_EQ(faultsOf(content), (std::vector<std::pair<Kind, int>>{{Kind::noRow, 4},
                                                                    {Kind::numberOutOfRange, 5},
                                                                    {Kind::wrongValue, 7},
                                                                    {Kind::repeatedRow, 8},
                                                                    {Kind::wrongValue, 9},
                                                                    {Kind::unknownProcessor, 12}}));
    set.table.setValue(5, 8);
    set.table.setValue(2, 9);
    set.table.setValue(6, 4);
    const auto changed = textOf(save_data(set));
    EXPECT_NE(changed.find("\r\n002;9;sieben;\r\n5;8;kein Wert;\r\n5;9;noch einmal;\r\n6;4;1\r\n"),
              std::string::npos);
}

TEST(ListFileTest, NoRowBeyondTheTableIsSaved)
{
    const auto content =
        "Standard KV07*5\r\n256;3;a;\r\n257;4;b;\r\n999;5;c;\r\nEnde CV\r\nATmega328\r\nEnde FS\r\n";
    EXPECT_EQ(faultsOf(content),
              (std::vector<std::pair<Kind, int>>{{Kind::numberOutOfRange, 3}, {Kind::numberOutOfRange, 4}}));
    CvSet set = opened(bytesOf(content));
    EXPECT_EQ(textOf(save_data(set)), "Standard KV07*5\r\n256;3;a;\r\nEnde CV\r\nATmega328\r\nEnde FS\r\n");
}

TEST(ListFileTest, TheTrailerIsRead)
{
    struct Case {
        const char* trailer;
        std::optional<Processor> processor;
        TextView unknown;
        std::optional<int> firmware;
    };
    const Case cases[] = {
        {"ATmega168\n \nFirmware_Version: 0\n \n", Processor::atmega168, u"", std::nullopt},
        {"ATmega328\n80\nFirmware_Version: 12\n", Processor::atmega328, u"", 12},
        {"80\nFirmware_Version: 12\n", std::nullopt, u"", 12},
        {"ATmega1284\n", std::nullopt, u"ATmega1284", std::nullopt},
        {"", std::nullopt, u"", std::nullopt},
        {"ATmega168\nFirmware_Version: 256\n", Processor::atmega168, u"", std::nullopt},
        {"ATmega168\nFirmware_Version:\n", Processor::atmega168, u"", std::nullopt},
    };
    for (const Case& expected : cases) {
        const auto parsed = parseListFile(bytesOf("K\n1;3;a;\nEnde CV\n" + std::string(expected.trailer) +
                                                  "Anfang FS\nATmega168\nEnde FS\n"));
        const auto& list = std::get<ListFile>(parsed);
        EXPECT_EQ(list.processor, expected.processor) << expected.trailer;
        EXPECT_EQ(list.unknownProcessor, expected.unknown) << expected.trailer;
        EXPECT_EQ(list.firmwareVersion, expected.firmware) << expected.trailer;
    }
}

TEST(ListFileTest, AFileCutAnywhereIsOpenedWithWhatIsSoundOrRefused)
{
    CvSet set = setOf("Standard KV07\r\n1;128;a;0;255;\r\n2;64;b;0;255;\r\nAnfang FS\r\nFS1 = 5\r\n\r\n", 7,
                      5, Processor::atmega328);
    const Bytes whole = save_data(set);
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        const auto parsed = parseListFile(cut);
        const auto* const list = std::get_if<ListFile>(&parsed);
        const bool hasRow = size >= textOf(whole).find("1;128") + 2;
        ASSERT_EQ(list != nullptr, hasRow) << size;
        if (list == nullptr)
            continue;
        // Never a part of a value.
        EXPECT_TRUE(!list->table.value(1) || list->table.value(1) == 128) << size;
        EXPECT_TRUE(!list->table.value(2) || list->table.value(2) == 64) << size;
        const bool hasEnd = size >= textOf(whole).find("Ende CV") + 7;
        EXPECT_EQ(std::none_of(list->faults.begin(), list->faults.end(),
                               [](const ListFault& fault) { return fault.kind == Kind::noEnd; }),
                  hasEnd)
            << size;
        const bool hasFileEnd = size >= textOf(whole).find("Ende FS") + 7;
        EXPECT_EQ(list->faults.empty(), hasFileEnd) << size;
        CvSet again = opened(cut);
        const Bytes saved = save_data(again);
        EXPECT_TRUE(textOf(saved).ends_with("Ende FS\r\n")) << size;
        CvSet twice = opened(saved);
        EXPECT_EQ(save_data(twice), saved) << size;
    }
}

TEST(ListFileTest, LineFeedsAloneAndUtf8AreRead)
{
    for (const std::string_view mark : {"", "\xEF\xBB\xBF"}) {
        CvSet set = opened(
            bytesOf(std::string(mark) + "Standard KV07*5\n1;3;L\xC3\xA4nge;\nEnde CV\nATmega328\nEnde FS\n"));
        EXPECT_EQ(set.table.at(1, Column::text), u"Länge");
        EXPECT_EQ(textOf(save_data(set)),
                  "Standard KV07*5\r\n1;3;L\xE4nge;\r\nEnde CV\r\nATmega328\r\nEnde FS\r\n");
    }
    // What Windows-1252 lacks is not lost.
    const std::string greek = "Standard KV07*5\r\n1;3;\xCE\xA9;\r\nEnde CV\r\nATmega328\r\nEnde FS\r\n";
    CvSet set = opened(bytesOf(greek));
    EXPECT_EQ(textOf(save_data(set)), "\xEF\xBB\xBF" + greek);
}

TEST(ListFileTest, WhatIsNoListIsRefusedWithItsLine)
{
    Bytes binary(5000);
    for (std::size_t i = 0; i < binary.size(); ++i)
        binary[i] = static_cast<std::uint8_t>(i * 131);
    for (const Bytes& content : {bytesOf(""), bytesOf("\r\n"), bytesOf("Standard KV07*5\r\n"),
                                 bytesOf("Standard KV07*5\r\nEnde CV\r\nATmega328\r\nEnde FS\r\n"),
                                 bytesOf("K\r\nkein Feld\r\n"), bytesOf("K\r\n300;1;x;\r\n"), binary}) {
        const auto parsed = parseListFile(content);
        const auto* const refusal = std::get_if<ListRefusal>(&parsed);
        ASSERT_NE(refusal, nullptr);
        EXPECT_EQ(refusal->kind, ListRefusal::Kind::noRow);
        EXPECT_EQ(refusal->line, 2);
    }
}

TEST(ListFileTest, WhatIsSavedIsNeverTooLongToBeOpened)
{
    struct Case {
        const char* start;
        const char* end;
        int added; // by saving: the lines that the file lacks
    };
    for (const Case& length : {Case{"KV07\n1;1;a;\n", "", 7},
                               {"KV07\n1;1;a;\n", "Ende CV\nATmega328\nEnde FS\n", 0},
                               {"Berechnete KV07\n1;1;a;\n", "Ende CV\nATmega328\nEnde FS\n", 29}}) {
        const auto linesIn = [](std::string_view text) { return std::count(text.begin(), text.end(), '\n'); };
        const auto room = 600 - length.added - linesIn(length.start) - linesIn(length.end);
        const auto content = [&](std::ptrdiff_t lines) {
            std::string text = length.start;
            for (; lines > 0; --lines)
                text += "\n";
            return bytesOf(text + length.end);
        };
        CvSet set = opened(content(room));
        set.profile.firmwareVersion = 0;
        const Bytes saved = save_data(set);
        EXPECT_LE(linesIn(textOf(saved)), 600);
        EXPECT_GE(linesIn(textOf(saved)), 599);
        CvSet again = opened(saved);
        again.profile.firmwareVersion = 0;
        EXPECT_EQ(save_data(again), saved);
        const auto refused = parseListFile(content(room + 1));
        ASSERT_TRUE(std::holds_alternative<ListRefusal>(refused));
        EXPECT_EQ(std::get<ListRefusal>(refused).kind, ListRefusal::Kind::tooManyLines);
    }
}

TEST(ListFileTest, LinesBehindAnEmptyOneSurviveWithoutAnEnd)
{
    CvSet set =
        opened(bytesOf("KV07*5\r\n1;3;a;\r\nEnde CV\r\nATmega328\r\nAnfang FS\r\nFS1 = 5\r\n\r\nfremd\r\n"));
    EXPECT_EQ(textOf(save_data(set)),
              "KV07*5\r\n1;3;a;\r\nEnde CV\r\nATmega328\r\nAnfang FS\r\nFS1 = 5\r\n\r\nfremd\r\n"
              "Ende FS\r\n");
}

TEST(ListFileTest, WordsOfAnotherLanguageGoIntoTheTextFieldAlone)
{
    CvSet set = setOf("Standard KV04 172\r\n1;3;Adresse;1;126;3;Hilfe;\r\n", 0, 4, Processor::atmega168);
    set.table.at(1, Column::text) = u"first\r\naddress";
    set.table.at(1, Column::explanation) = u"help";
    EXPECT_NE(textOf(save_data(set)).find("\r\n1;3;first$address;1;126;3;Hilfe;\r\n"), std::string::npos);
}

} // namespace
} // namespace karvo
