// Descriptions and saved lists: what is read of them, what is named as a fault, and what is saved.
#include "cvdata/list_file.h"

#include "cvdata/description_choice.h"
#include "cvdata/description_file.h"
#include "cvdata/list_header.h"
#include "support/case_table.h"
#include "support/memory_files.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace karvo
{
namespace
{

using test::bytesOf;
using test::golden;

std::string savedText(CvSet& set)
{
    const Bytes saved = save_data(set);
    return {saved.begin(), saved.end()};
}

// A set as it is after a read with this description.
CvSet setOf(const Bytes& description, int typeCode, int firmware, Processor processor)
{
    auto parsed = parseDescription(description);
    CvSet set;
    set.descriptionLines = std::move(parsed->lines);
    set.rowCount = parsed->rowCount;
    set.table = std::move(parsed->table);
    set.profile.typeCode = TypeCode{typeCode};
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

// "noRow 4, wrongValue 7, "
template <typename Fault>
std::string faultText(const std::vector<Fault>& faults, const std::vector<std::string>& kinds)
{
    std::string text;
    for (const Fault& fault : faults)
        text += kinds.at(static_cast<std::size_t>(fault.kind)) + " " + std::to_string(fault.line) + ", ";
    return text;
}

std::string faultsOf(const ListFile& list)
{
    return faultText(list.faults, {"noRow", "numberOutOfRange", "repeatedRow", "wrongValue", "noEnd",
                                   "noFileEnd", "unknownProcessor"});
}

TEST(ListFileTest, SavesEveryLineInItsOrderWithTheValuesAndWordsOfTheTable)
{
    CvSet set = setOf(golden("list_files/description.txt"), 7, 5, Processor::atmega328);
    set.table.setValue(29, 38);
    set.table.setValue(1, 200);
    set.table.at(1, Column::text) = u"first\r\naddress"; // of another language: only the text field takes it
    set.table.at(2, Column::explanation) = u"help";
    EXPECT_EQ(save_data(set), golden("list_files/description.saved.kvr"));
    EXPECT_EQ(set.descriptionLines[1], u"Standard KV07*5");
}

TEST(ListFileTest, TheTrailerTellsProcessorReceiverAndFirmware)
{
    for (const auto& [type, firmware, processor, trailer] : test::casesOf<4>("cvdata/trailers_saved.txt")) {
        const auto fitted = processor == "ATmega168" ? Processor::atmega168 : Processor::atmega328;
        CvSet set =
            setOf(bytesOf("KV05-XT\r\n1;3;a;\r\n2;4;b;\r\n"), std::stoi(type), std::stoi(firmware), fitted);
        const char* const lastRow = type == "81" ? "" : "2;4;b;\r\n"; // not kept of a read-only receiver
        const auto saved = savedText(set);
        EXPECT_EQ(saved, "KV05-XT*" + firmware + "\r\n1;3;a;\r\n" + lastRow + "Ende CV\r\n" + trailer +
                             "Ende FS\r\n");
        CvSet again = opened(bytesOf(saved));
        EXPECT_EQ(savedText(again), saved);
        EXPECT_EQ(again.profile.processor, fitted);
    }
}

TEST(ListFileTest, ComputedSpeedStepsReplaceTheDescriptions)
{
    std::string description = "Berechnete KV07\r\n";
    for (int row = 1; row <= 97; ++row)
        description += std::to_string(row) + ";" + std::to_string(row) + ";x;\r\n";
    CvSet set = setOf(bytesOf(description + "Anfang FS\r\nFS1 = 5\r\n\r\n"), 7, 6, Processor::atmega328);
    const auto saved = savedText(set);
    EXPECT_NE(saved.find("Firmware_Version: 6\r\nAnfang FS\r\nFS1 = 97\r\nFS2 = 96\r\n"), std::string::npos);
    EXPECT_TRUE(saved.ends_with("FS28 = 70\r\nEnde FS\r\n"));
    EXPECT_EQ(savedText(set), saved);
}

TEST(ListFileTest, EveryInstalledDescriptionSurvivesSaveOpenSave)
{
    int descriptions = 0;
    for (const auto& entry : std::filesystem::directory_iterator(KARVO_PROGRAM_FOLDER)) {
        const auto name = entry.path().filename().string();
        const auto suffix =
            utf8FromText(lowerCase(textFromUtf8(name.substr(std::max(name.size(), std::size_t{6}) - 6))));
        const bool isOtherLanguage = suffix == "nl.txt" || suffix == "en.txt" || suffix == "es.txt";
        if ((!name.starts_with("CV_Standart") && !name.starts_with("CV_KV")) || isOtherLanguage)
            continue; // German and French stand for all
        const int firmware = descriptions++ % 2 == 0 ? 3 : 255;
        CvSet set = setOf(*test::FolderFiles().readWhole(entry.path(), textFileLimit), 0, firmware,
                          Processor::atmega168);
        const auto model = modelOfHeader(set.descriptionLines[1]);
        ASSERT_TRUE(model) << name;
        const auto german = descriptionFileName(model->profile, LanguageCode::german);
        const auto french = descriptionFileName(model->profile, LanguageCode::french);
        const bool isOfModel =
            name == german || name == french || name == textCompanionName(german, LanguageCode::french);
        EXPECT_NE(isOfModel, model->isPreset) << name;
        set.profile.typeCode = model->profile.typeCode;
        for (const int cv : set.table.describedCvs())
            set.table.setValue(cv, 255 - cv % 256);
        const Bytes saved = save_data(set);
        CvSet again = opened(saved);
        EXPECT_EQ(save_data(again), saved) << name;
        for (int cv = 1; cv <= CvTable::lastRow; ++cv) {
            for (int column = 1; column <= CvTable::lastColumn; ++column)
                ASSERT_EQ(again.table.at(cv, column), set.table.at(cv, column)) << name << cv;
        }
        for (const int cv : {167, 171, 176})
            EXPECT_TRUE(again.table.describes(cv)) << name << cv;
    }
    EXPECT_GT(descriptions, 150);
}

TEST(ListFileTest, WhatIsNotUnderstoodStandsWhereItStood)
{
    for (const auto& [name, faults] : test::casesOf<2>("cvdata/list_faults.txt")) {
        const Bytes found = golden("list_files/" + name + ".found.kvr");
        CvSet set = opened(found);
        EXPECT_EQ(save_data(set), golden("list_files/" + name + ".saved.kvr")) << name;
        EXPECT_EQ(faultsOf(std::get<ListFile>(parseListFile(found))), faults) << name;
    }
    CvSet set = opened(golden("list_files/other_hands.found.kvr"));
    EXPECT_EQ(set.table.value(2), 7);
    EXPECT_EQ(set.table.value(5), std::nullopt);
    EXPECT_TRUE(set.table.describes(5));
    EXPECT_EQ(set.table.at(167, 16), u"m");
    for (const auto& [cv, value] : {std::pair(5, 8), {2, 9}, {6, 4}})
        set.table.setValue(cv, value);
    EXPECT_NE(savedText(set).find(
                  "\r\n002;9;sieben;\r\n5;8;kein Wert;\r\n5;9;noch einmal;\r\n6;4;1\r\n7; 08;\r\n8;;\r\n"),
              std::string::npos);
}

TEST(ListFileTest, TheTrailerIsRead)
{
    for (const auto& [trailer, processor, unknown, firmware] : test::casesOf<4>("cvdata/trailers_read.txt")) {
        const auto list = std::get<ListFile>(
            parseListFile(bytesOf("K\n1;3;a;\nEnde CV\n" + trailer + "Anfang FS\nATmega168\nEnde FS\n")));
        EXPECT_EQ(list.processor ? utf8FromText(processorName(*list.processor)) : "", processor) << trailer;
        EXPECT_EQ(utf8FromText(list.unknownProcessor), unknown) << trailer;
        EXPECT_EQ(list.firmwareVersion ? std::to_string(*list.firmwareVersion) : "", firmware) << trailer;
    }
}

TEST(ListFileTest, AFileCutAnywhereIsOpenedWithWhatIsSoundOrRefused)
{
    CvSet set =
        setOf(bytesOf("Standard KV07\r\n1;128;a;0;255;\r\n2;64;b;0;255;\r\nAnfang FS\r\nFS1 = 5\r\n\r\n"), 7,
              5, Processor::atmega328);
    const auto whole = savedText(set);
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const auto has = [&](const char* text, std::size_t length) {
            return size >= whole.find(text) + length;
        };
        const auto parsed = parseListFile(bytesOf(whole.substr(0, size)));
        const auto* const list = std::get_if<ListFile>(&parsed);
        ASSERT_EQ(list != nullptr, has("1;128", 2)) << size;
        if (list == nullptr)
            continue;
        // Never a part of a value.
        EXPECT_TRUE(!list->table.value(1) || list->table.value(1) == 128) << size;
        EXPECT_TRUE(!list->table.value(2) || list->table.value(2) == 64) << size;
        const auto faults = faultsOf(*list);
        EXPECT_EQ(faults.find("noEnd") == std::string::npos, has("Ende CV", 7)) << size;
        EXPECT_EQ(faults.empty(), has("Ende FS", 7)) << size;
        CvSet again = opened(bytesOf(whole.substr(0, size)));
        const auto saved = savedText(again);
        EXPECT_TRUE(saved.ends_with("Ende FS\r\n")) << size;
        CvSet twice = opened(bytesOf(saved));
        EXPECT_EQ(savedText(twice), saved) << size;
    }
}

TEST(ListFileTest, WhatIsNeitherAListNorADescriptionIsRefused)
{
    std::string binary(5000, ' ');
    for (std::size_t i = 0; i < binary.size(); ++i)
        binary[i] = static_cast<char>(i * 131);
    const std::string contents[] = {"",
                                    "\r\n",
                                    "Standard KV07*5\r\n",
                                    "Standard KV07*5\r\nEnde CV\r\nATmega328\r\nEnde FS\r\n",
                                    "K\r\nkein Feld\r\n",
                                    "K\r\nx;1;no CV;\r\n0;1;y;\r\n257;1;z;\r\n",
                                    binary};
    for (const std::string& content : contents) {
        EXPECT_FALSE(parseDescription(bytesOf(content))) << content;
        const auto parsed = parseListFile(bytesOf(content));
        const auto* const refusal = std::get_if<ListRefusal>(&parsed);
        ASSERT_NE(refusal, nullptr);
        EXPECT_EQ(refusal->kind, ListRefusal::Kind::noRow);
        EXPECT_EQ(refusal->line, 2);
    }
}

TEST(ListFileTest, WhatIsSavedIsNeverTooLongToBeOpened)
{
    // The start and the end of a file, and how many lines saving adds that it lacks.
    const std::tuple<std::string, std::string, int> cases[] = {
        {"KV07\n1;1;a;\n", "", 7},
        {"KV07\n1;1;a;\n", "Ende CV\nATmega328\nEnde FS\n", 0},
        {"Berechnete KV07\n1;1;a;\n", "Ende CV\nATmega328\nEnde FS\n", 29}};
    for (const auto& [start, end, added] : cases) {
        const auto linesIn = [](std::string_view text) { return std::count(text.begin(), text.end(), '\n'); };
        const auto room = static_cast<std::size_t>(600 - added - linesIn(start) - linesIn(end));
        CvSet set = opened(bytesOf(start + std::string(room, '\n') + end));
        set.profile.firmwareVersion = 0;
        const auto saved = savedText(set);
        EXPECT_LE(linesIn(saved), 600);
        EXPECT_GE(linesIn(saved), 599);
        CvSet again = opened(bytesOf(saved));
        again.profile.firmwareVersion = 0;
        EXPECT_EQ(savedText(again), saved);
        const auto refused = parseListFile(bytesOf(start + std::string(room + 1, '\n') + end));
        ASSERT_TRUE(std::holds_alternative<ListRefusal>(refused));
        EXPECT_EQ(std::get<ListRefusal>(refused).kind, ListRefusal::Kind::tooManyLines);
    }
}

TEST(DescriptionFileTest, FieldsFillTheColumnsOfTheRowThatTheirNumberNames)
{
    for (const std::string end : {"Anfang FS", "Ende CV"}) {
        const auto description = parseDescription(
            bytesOf("\xEF\xBB\xBFStandard KV07\r\n4;3;L\xC3\xA4nge;1;126;3;\n2;5;erste$zweite;rest\r\n" +
                    end + "\r\n5;9;no row;\r\n"));
        ASSERT_TRUE(description);
        const CvTable& table = description->table;
        EXPECT_EQ(table.describedCvs(), (std::vector{2, 4}));
        EXPECT_EQ(description->header() + u"|" + description->lines[3] + u"|" + table.at(2, 2) + u"|" +
                      table.at(2, 3) + u"|" + table.at(2, 4) + u"|" + table.at(4, Column::text) + u"|" +
                      table.at(4, Column::upperLimit),
                  u"Standard KV07|2;5;erste$zweite;rest|5|erste\r\nzweite||Länge|126")
            << "a field ends with its semicolon";
        EXPECT_EQ(description->rowCount, 2);
        EXPECT_EQ(description->lines.size(), 6u);
        EXPECT_TRUE(description->faults.empty());
    }
}

TEST(DescriptionFileTest, WhatIsLeftOutIsNamedWithItsLine)
{
    for (auto [content, faults, values] : test::casesOf<3>("cvdata/description_faults.txt")) {
        if (const auto place = content.find('@'); place != std::string::npos)
            content.replace(place, 1, std::string(547, '\n'));
        const auto description = parseDescription(bytesOf(content));
        ASSERT_TRUE(description) << content;
        const auto all = faultText(description->faults, {"tooManyLines", "rowBeyondTable", "wrongRow",
                                                         "tooManyFields", "wrongValue", "noEnd"});
        EXPECT_EQ(all.substr(0, 42), faults) << content;
        EXPECT_LE(description->lines.size(), descriptionLineLimit);
        std::string read;
        for (int cv = 2; cv <= 7; ++cv)
            read += utf8FromText(description->table.at(cv, Column::value)) + ",";
        EXPECT_EQ(read, values) << content;
        EXPECT_EQ(description->table.value(1), 1);
    }
}

} // namespace
} // namespace karvo
