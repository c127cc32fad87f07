// Which decoder it is, which files describe it, and what they tell of a CV.
#include "cvdata/cv_details.h"
#include "cvdata/cv_kind.h"
#include "cvdata/cv_use.h"
#include "cvdata/description_choice.h"
#include "cvdata/description_fields.h"
#include "cvdata/expert_choice.h"
#include "cvdata/expert_file.h"
#include "cvdata/list_header.h"

#include "support/case_table.h"
#include "support/memory_files.h"

#include <gtest/gtest.h>

#include <sstream>

namespace karvo
{
namespace
{

using test::bytesOf;
using test::casesOf;

const auto generations =
    test::wordsOf("standard until2008First until2008Second until2008Last from2009 may2010 november2012 "
                  "undated v1 f3 f4 f5 tacho laneControl");

std::string nameOf(const DecoderProfile& profile)
{
    return utf8FromText(modelName(profile.model)) + " " +
           generations.at(static_cast<std::size_t>(profile.generation)) + " ";
}

DecoderProfile profileFor(const std::string& typeCode, const std::string& generation)
{
    DecoderProfile profile;
    profile.typeCode = TypeCode{std::stoi(typeCode)};
    profile.model = modelOfTypeCode(profile.typeCode);
    while (nameOf(profile).find(" " + generation + " ") == std::string::npos)
        profile.generation = static_cast<Generation>(static_cast<int>(profile.generation) + 1);
    return profile;
}

DecoderProfile profileRead(const std::string& typeCode, const std::string& identification,
                           const std::string& memory)
{
    CvImage image{};
    image[73] = 100; // a speed step
    std::istringstream values(memory);
    char equals = 0;
    for (std::size_t cv = 0, value = 0; values >> cv >> equals >> value;)
        image[cv] = static_cast<std::uint8_t>(value);
    return profileOf(TypeCode{std::stoi(typeCode)}, textFromUtf8(identification), image, {});
}

TEST(DecoderProfileTest, FollowsFromIdentificationAndMemory)
{
    for (const auto& [typeCode, identification, memory, name] : casesOf<4>("cvdata/profiles.txt")) {
        const auto profile = profileRead(typeCode, identification, memory);
        EXPECT_EQ(nameOf(profile) + utf8FromText(processorName(profile.processor)), name) << memory;
        EXPECT_EQ(profile.isOlderKv04(), identification == "04");
    }
    const auto profile = profileRead("7", "27", "7=6 497=21 499=29 500=8 501=22");
    const auto& [year, month, day] = profile.firmwareDate;
    EXPECT_EQ(
        (std::array{profile.firmwareVersion, profile.subLevel, profile.firmwareLevel, year, month, day}),
        (std::array{6, 21, 3, 2022, 8, 29}));
}

TEST(DecoderProfileTest, IsNamedByTheHeaderOfAListWhichMayBeAddedTo)
{
    for (const auto& [header, expected] : casesOf<2>("cvdata/headers.txt")) {
        const auto named = modelOfHeader(textFromUtf8(header));
        const auto profile = named ? named->profile : DecoderProfile();
        EXPECT_EQ(named ? std::to_string(numberOf(profile.typeCode)) + " " + nameOf(profile) +
                              std::to_string(profile.firmwareVersion) + (named->isPreset ? " preset" : "")
                        : "",
                  expected);
        EXPECT_EQ(profile.processor, usualProcessor(profile.model)) << header;
    }
    EXPECT_EQ(headerWithVersion(u"Standard KV07", 5), u"Standard KV07*5");
    EXPECT_EQ(headerWithVersion(u"Standard KV07*5", 5), u"Standard KV07*5") << "once only";
    EXPECT_EQ(headerWithVersion(u"Standard KV07*15", 5), u"Standard KV07*15*5");
    EXPECT_EQ(versionInHeader(u"Standard KV07*15*5"), 5);
    EXPECT_EQ(versionInHeader(u"Standard KV07*x"), std::nullopt);
}

TEST(DescriptionChoiceTest, CompanionsAndListsWithoutADecoder)
{
    for (const auto& [file, language, companion] : casesOf<3>("cvdata/companions.txt"))
        EXPECT_EQ(textCompanionName(file, *languageFromName(language)), companion) << file;
    for (const auto& [item, variant, file] : casesOf<3>("cvdata/description_files.txt")) {
        EXPECT_EQ(offlineDescriptionFileName(*offlineListOf(item), std::stoi(variant), LanguageCode::spanish),
                  file);
    }
    EXPECT_EQ(offlineListOf("mnu_open"), nullptr);
    EXPECT_EQ(modelCode(offlineListOf("mnu_KV06_FW")->model), u"06");
}

TEST(ExpertChoiceTest, FileOfEachDecoder)
{
    for (const auto& [typeCode, generation, date, sub, language, file] :
         casesOf<6>("cvdata/expert_files.txt")) {
        auto profile = profileFor(typeCode, generation);
        std::istringstream(date) >> profile.firmwareDate.year >> profile.firmwareDate.month >>
            profile.firmwareDate.day;
        profile.subLevel = sub.empty() ? 0 : std::stoi(sub);
        EXPECT_EQ(expertFileName(profile, *languageFromName(language)), file);
    }
}

TEST(ExpertChoiceTest, AnOfflineListFollowsFirmwareV1OfTheDecoderOnTheBench)
{
    for (const auto& [item, typeCode, generation, file] : casesOf<4>("cvdata/offline_lists.txt")) {
        const OfflineList& list = *offlineListOf(item);
        const auto profile = offlineProfile(list, profileFor(typeCode, generation));
        EXPECT_EQ(offlineExpertFileName(list, profile, LanguageCode::english), file) << item;
        EXPECT_EQ(profile.model, list.model);
    }
}

TEST(CvDetailsTest, EachFieldComesFromItsColumnAndBitTextsAreLinesFromWeightOneUp)
{
    CvTable table;
    for (int column = 1; column <= 9; ++column)
        table.at(29, column) = textFromNumber(column);
    table.at(29, Column::bits) = u"1\r\n\r\n3\r\n4\r\n5\r\n6\r\n7\r\n8\r\n9";
    const auto details = cvDetails(table, 29);
    EXPECT_EQ(details.number, 29);
    EXPECT_EQ(details.value + details.name + details.lowerLimit + details.upperLimit + details.factoryValue +
                  details.explanation + details.values + details.advice,
              u"23456789");
    EXPECT_EQ(details.bits, (std::array<Text, 8>{u"1", u"", u"3", u"4", u"5", u"6", u"7", u"8"}));
    EXPECT_TRUE(details.isSetOfSwitches && !cvDetails(table, 58).isSetOfSwitches);
    for (const int cv : {-1, 0, 257, 100000})
        EXPECT_EQ(cvDetails(table, cv).number, 0) << cv;
    EXPECT_EQ(valueOfBits({true, false, true, false, false, false, false, true}), 133);
    for (int value = 0; value <= 255; ++value)
        EXPECT_EQ(valueOfBits(bitsOfValue(value)), value);
}

TEST(CvUseTest, WhereOneCvHasAFactoryValueThoseWithoutAreUnused)
{
    CvTable table;
    for (const int cv : {1, 2})
        table.at(cv, Column::number) = textFromNumber(cv);
    EXPECT_TRUE(isUsed(table, 2));
    table.at(1, Column::factoryValue) = u"0";
    EXPECT_FALSE(isUsed(table, 2));
}

TEST(CvUseTest, MarksAreWordsOfTheirFieldAndNothingElseIsOne)
{
    for (const auto& [field, words] : casesOf<2>("cvdata/marks.txt")) {
        CvTable table;
        table.at(1, Column::marks) = textFromUtf8(field);
        const auto from = utf8FromText(firstFirmwareOf(table, 1));
        EXPECT_EQ(std::string(carries(table, Column::marks) ? "marks" : "") +
                      (isReadOnly(table, 1) ? " read-only" : "") + (from.empty() ? "" : " " + from),
                  words);
        EXPECT_TRUE(isReadOnly(table, 7) && isReadOnly(table, 8));
    }
}

// What the fields of kinds.txt come to.
std::string told(const CvKind& kind)
{
    std::string text;
    for (const GroupShare& share : kind.groups)
        text += utf8FromText(wordOf(share.group)) +
                (share.bits == 255 ? "" : ":" + std::to_string(share.bits)) + " ";
    for (const auto* const words : {&kind.choices, &kind.specials}) {
        text += words->empty() ? "" : words == &kind.choices ? "choice " : "special ";
        for (const NamedValue& named : *words)
            text += std::to_string(named.value) + ":" + utf8FromText(named.word) + " ";
    }
    text += kind.unit ? "unit " : "";
    for (const int value : {0, 7, 128}) {
        const Text word(kind.wordOfValue(value));
        const Text shown = !word.empty() ? word : kind.unit ? inUnit(value, *kind.unit, false) : Text();
        text += std::to_string(value) + (shown.empty() ? "" : "=" + utf8FromText(shown)) + " ";
    }
    text.pop_back();
    return text;
}

TEST(CvKindTest, TheFieldsTellGroupsWordsAndUnitAndWhatIsNotSoundIsLeftOut)
{
    for (const auto& [fields, words] : casesOf<2>("cvdata/kinds.txt")) {
        CvTable table;
        const Text line = textFromUtf8(fields + ";");
        int column = static_cast<int>(Column::groups);
        for (const TextView field : fieldsOf(line))
            table.at(1, column++) = field;
        EXPECT_EQ(told(kindOf(table, 1)), words) << fields;
    }
    EXPECT_EQ(inUnit(45, {1, 10, u"s"}, true) + inUnit(165, {20, 1, u"mV"}, true), u"4,5 s3,30 V");
}

TEST(ExpertFileTest, EntriesAreFoundByTheirNumberAndFaultsByTheirLine)
{
    const auto file = parseExpertFile(bytesOf("Head\r\n57;;Bit 7;;;;What happens$inside;;\r\n"
                                              "3;;Three;\r\n257;;x;\r\n3;;again;\r\nno field\r\n  \r\n"));
    ASSERT_TRUE(file);
    ASSERT_EQ(file->entries.size(), 2u);
    EXPECT_EQ(file->entries.at(57).name + u": " + file->entries.at(57).knowledge,
              u"Bit 7: What happens\r\ninside");
    EXPECT_EQ(file->entries.at(3).name + u": " + file->entries.at(3).knowledge, u"Three: ");
    EXPECT_EQ(file->faultyLines, (std::vector<int>{4, 5, 6}));
    for (const char* const none : {"", "only a header\r\n"})
        EXPECT_FALSE(parseExpertFile(bytesOf(none)));
    for (const auto& [knowledge, line] : casesOf<2>("cvdata/knowledge.txt")) {
        const auto whole = [](std::string text) {
            for (auto at = text.find('@'); at != std::string::npos; at = text.find('@'))
                text.replace(at, 1, std::string(30, 'a'));
            return textFromUtf8(text);
        };
        EXPECT_EQ(expertLine({u"name", whole(knowledge)}), whole(line)) << knowledge;
    }
}

} // namespace
} // namespace karvo
