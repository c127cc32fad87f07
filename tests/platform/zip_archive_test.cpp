#include "platform/zip_archive.h"

#include "support/scratch_folder.h"
#include "support/zip_maker.h"

namespace karvo
{
namespace
{

using test::makeZip;
using Kind = ArchiveEntry::Kind;

// What is handed over, "name:kind:content" in each line, and the words at the end.
class Listing : public ArchiveSink
{
public:
    explicit Listing(const std::string& content, int stopAt = 0) : left_(stopAt)
    {
        words = ZipArchive().read(scratch.write("a.zip", content), *this);
    }
    bool takeEntry(const ArchiveEntry& entry) override
    {
        const char* const kinds[] = {"file", "folder", "other"};
        text += "\n" + entry.name + (entry.encrypted ? ":secret:" : ":") +
                kinds[static_cast<int>(entry.kind)] + ":";
        return --left_ != 0;
    }
    bool takeBytes(std::span<const std::uint8_t> bytes) override
    {
        text.append(bytes.begin(), bytes.end());
        return true;
    }

    test::ScratchFolder scratch;
    std::string text;
    std::optional<Text> words;

private:
    int left_; // entries, until it ends the reading
};

TEST(ZipArchive, HandsOverEachEntryWithItsContent)
{
    const std::string zip =
        makeZip({{"docs/", {}, Kind::folder}, {"docs/a.txt", "some text"}, {"Größe", ""}});
    const Listing all(zip);
    EXPECT_EQ(all.text, "\ndocs/:folder:\ndocs/a.txt:file:some text\nGröße:file:");
    EXPECT_FALSE(all.words);
    const Listing two(zip, 2);
    EXPECT_EQ(two.text, "\ndocs/:folder:\ndocs/a.txt:file:");
    EXPECT_FALSE(two.words) << "the sink ended it";
    EXPECT_EQ(Listing(makeZip({{"link", "/etc/passwd", Kind::other}})).text, "\nlink:other:");
    const auto secret = makeZip({{"secret", "text"}}, "zip:encryption=traditional");
    EXPECT_EQ(Listing(secret, 1).text, "\nsecret:secret:file:");
}

TEST(ZipArchive, WhatIsCutOrSpoiltIsNotWhole)
{
    const std::string zip =
        makeZip({{"a.txt", std::string(5000, 'a')}, {"b.txt", "text of b"}}, "zip:compression=store");
    Listing whole(zip);
    EXPECT_FALSE(whole.words);
    for (const std::size_t length : {std::size_t{0}, std::size_t{1}, std::size_t{100}, std::size_t{3000},
                                     zip.find("PK\x01\x02"), zip.size() - 30, zip.size() - 1})
        EXPECT_TRUE(Listing(zip.substr(0, length)).words) << length;
    std::string spoilt = zip;
    spoilt[2000] = 'b';
    const auto words = Listing(spoilt).words;
    ASSERT_TRUE(words);
    EXPECT_NE(words->find(u"CRC"), Text::npos) << utf8FromText(*words);
    EXPECT_TRUE(Listing("no archive at all").words);
    EXPECT_TRUE(ZipArchive().read(whole.scratch.path() / "missing.zip", whole));
    EXPECT_TRUE(ZipArchive().read(whole.scratch.path(), whole)) << "a folder";
}

} // namespace
} // namespace karvo
