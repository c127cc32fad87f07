#include "platform/zip_archive.h"

#include "support/scratch_folder.h"
#include "support/zip_maker.h"

namespace karvo
{
namespace
{

using test::makeZip;
using test::ScratchFolder;
using test::ZipItem;
using Kind = ArchiveEntry::Kind;

// What is handed over, "name:kind:content".
class Listing : public ArchiveSink
{
public:
    bool takeEntry(const ArchiveEntry& entry) override
    {
        const char* const kinds[] = {"file", "folder", "other"};
        text += "\n" + entry.name + (entry.encrypted ? ":secret:" : ":") +
                kinds[static_cast<int>(entry.kind)] + ":";
        return ++entries != stopAt;
    }
    bool takeBytes(std::span<const std::uint8_t> bytes) override
    {
        text.append(bytes.begin(), bytes.end());
        return true;
    }

    std::string text;
    int entries = 0;
    int stopAt = 0;
};

class ZipArchiveTest : public testing::Test
{
protected:
    std::string listed(const std::string& content, int stopAt = 0)
    {
        Listing listing;
        listing.stopAt = stopAt;
        words = ZipArchive().read(scratch.write("a.zip", content), listing);
        return listing.text;
    }
    ScratchFolder scratch;
    std::optional<Text> words;
};

} // namespace

TEST_F(ZipArchiveTest, HandsOverEachEntryWithItsContent)
{
    const std::string zip =
        makeZip({{"docs/", {}, Kind::folder}, {"docs/a.txt", "some text"}, {"Größe", ""}});
    EXPECT_EQ(listed(zip), "\ndocs/:folder:\ndocs/a.txt:file:some text\nGröße:file:");
    EXPECT_FALSE(words);
    EXPECT_EQ(listed(zip, 2), "\ndocs/:folder:\ndocs/a.txt:file:");
    EXPECT_FALSE(words) << "the sink ended it";
}

TEST_F(ZipArchiveTest, TellsLinksAndPasswords)
{
    EXPECT_EQ(listed(makeZip({{"link", "/etc/passwd", Kind::other}})), "\nlink:other:");
    EXPECT_EQ(listed(makeZip({{"secret", "text"}}, "zip:encryption=traditional"), 1),
              "\nsecret:secret:file:");
}

TEST_F(ZipArchiveTest, WhatIsCutOrSpoiltIsNotWhole)
{
    const std::string zip =
        makeZip({{"a.txt", std::string(5000, 'a')}, {"b.txt", "text of b"}}, "zip:compression=store");
    listed(zip);
    ASSERT_FALSE(words);
    for (const std::size_t length : {std::size_t{0}, std::size_t{1}, std::size_t{100}, std::size_t{3000},
                                     zip.find("PK\x01\x02"), zip.size() - 30, zip.size() - 1}) {
        listed(zip.substr(0, length));
        EXPECT_TRUE(words) << length;
    }
    std::string spoilt = zip;
    spoilt[2000] = 'b';
    listed(spoilt);
    ASSERT_TRUE(words);
    EXPECT_NE(words->find(u"CRC"), Text::npos) << utf8FromText(*words);
    listed("no archive at all");
    EXPECT_TRUE(words);
    Listing listing;
    EXPECT_TRUE(ZipArchive().read(scratch.path() / "missing.zip", listing));
    EXPECT_TRUE(ZipArchive().read(scratch.path(), listing)) << "a folder";
}

} // namespace karvo
