#include "language/file_trouble.h"
#include "language/first_start.h"
#include "language/language_loader.h"
#include "support/case_table.h"
#include "support/memory_files.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using test::bytesOf;

class LanguageLoaderTest : public testing::Test
{
protected:
    void add(const std::string& name, std::string_view content)
    {
        for (const char* const kind : {"_var.txt", "_mnu.txt", "_cap.txt"})
            files.content[folder / (name + kind)] = bytesOf(content);
    }
    std::optional<std::string_view> load(LanguageCode code)
    {
        loaded = loadLanguage(tables, code, folder, files);
        return loaded.missing;
    }

    std::filesystem::path folder = "program";
    test::MemoryFiles files;
    LanguageTables tables;
    LoadedLanguage loaded;
};

TEST_F(LanguageLoaderTest, EntriesAreLinesFromTheirFifthCharacterOnAndLinesBeyondTheTablesAreIgnored)
{
    std::string content = "9999 Abbrechen \r\n0002\r\n\r\nabc\r\n0005ä\tTipp\n";
    for (int i = 6; i <= 1500; ++i)
        content += "----" + std::to_string(i) + "\n";
    add("Deutsch", content);
    ASSERT_FALSE(load(LanguageCode::german));
    const TextView entries[] = {u" Abbrechen ", u"", u"", u"", u"ä\tTipp", u"6"};
    for (int i = 0; i < 6; ++i)
        EXPECT_EQ(tables.message(static_cast<Message>(i + 1)), entries[i]) << i;
    EXPECT_EQ(tables.caption(static_cast<Caption>(5)), u"ä");
    EXPECT_EQ(tables.messages[0], u"");
    EXPECT_EQ(tables.messages[1000], u"----1000");
    EXPECT_EQ(tables.menuCaption(500), u"500");
    EXPECT_EQ(tables.menuCaption(501), u"");
}

TEST_F(LanguageLoaderTest, AShorterOrMissingFileLeavesEntriesInPlaceAndTheMissingOneIsNamed)
{
    add("Deutsch", "0001Eins\r\n0002Zwei\r\n0003Drei\r\n");
    add("English", "0001One\r\n0002Two\r\n");
    files.content.erase(folder / "English_cap.txt");
    ASSERT_FALSE(load(LanguageCode::german));
    EXPECT_EQ(load(LanguageCode::english), "English_cap.txt");
    EXPECT_EQ(tables.menuCaption(2), u"Two");
    EXPECT_EQ(tables.menuCaption(3), u"Drei");
    EXPECT_EQ(tables.caption(static_cast<Caption>(1)), u"Eins");
    files.content.erase(folder / "English_mnu.txt");
    EXPECT_EQ(load(LanguageCode::english), "English_mnu.txt");
    EXPECT_EQ(
        missingLanguageFileText("Franz_mnu.txt"),
        u"File [Franz_mnu.txt] not available !\r\nSet language to German.\r\n\r\nProgram will be closed");
}

TEST_F(LanguageLoaderTest, WhatHoldsNoTextIsToldInWordsThatAreThere)
{
    for (const auto& [file, content, told] : test::casesOf<3>("language/damaged.txt")) {
        add("Deutsch", "0001Eins\r\n");
        files.content[folder / "Deutsch_var.txt"] = bytesOf(std::string(649, '\n') + "0650damaged: {1}\n");
        files.content[folder / file] = bytesOf(content);
        ASSERT_FALSE(load(LanguageCode::german));
        EXPECT_EQ(loaded.damaged.size(), told.empty() ? 0U : 1U) << file;
        if (!told.empty()) {
            EXPECT_EQ(utf8FromText(damagedLanguageFileText(tables, loaded, LanguageCode::german)), told);
        }
    }
}

TEST(FirstStartTest, CaptionsFollowTheLocale)
{
    for (const auto& [locale, german, french] : test::casesOf<3>("language/first_start.txt")) {
        const LanguageButtonCaptions& captions = languageButtonCaptions(textFromUtf8(locale));
        EXPECT_EQ(utf8FromText(Text(captions.front())), german) << locale;
        EXPECT_EQ(utf8FromText(Text(captions.back())), french) << locale;
    }
}

TEST(LanguageCodeTest, NonsenseInTheSettingsIsNoLanguage)
{
    EXPECT_EQ(languageFromSetting(u"3"), LanguageCode::english);
    for (const TextView stored : {u"", u"0", u"6", u"-1", u"deutsch", u"99999999999999"})
        EXPECT_EQ(languageFromSetting(stored), std::nullopt) << utf8FromText(stored);
    EXPECT_EQ(languageFromName("es"), LanguageCode::spanish);
    EXPECT_EQ(languageFromName("5"), LanguageCode::french);
    EXPECT_EQ(languageFromName("ES"), std::nullopt);
}

TEST_F(LanguageLoaderTest, WhyAFileCannotBeHadIsToldByTheLanguageElseByTheSystem)
{
    tables.messages[652] = u"0652denied";
    tables.messages[657] = u"0657taken";
    const std::pair<std::errc, TextView> cases[] = {
        {std::errc::permission_denied, u"denied"},
        {std::errc::operation_not_permitted, u"denied"},
        {std::errc::is_a_directory, u"taken"},
        {std::errc::no_space_on_device, u"No space left on device"}, // a language without words for it
        {std::errc::invalid_argument, u"Invalid argument"}};
    for (const auto& [error, words] : cases)
        EXPECT_EQ(fileTroubleText(std::make_error_code(error), tables, files), words);
}

} // namespace
} // namespace karvo
