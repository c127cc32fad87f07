#include "firmware/archive_names.h"
#include "firmware/unpack.h"
#include "support/scratch_folder.h"
#include "support/scripted_archive.h"
#include "support/test_bench.h"

#include <gtest/gtest.h>

#include <sstream>

namespace karvo
{
namespace
{

using test::Journal;
using Kind = ArchiveEntry::Kind;

struct UnzipBench : UnzipObserver {
    bool goOn(std::uint64_t) override { return ++calls != stopAt; }

    UnzipResult run(const UnzipLimits& limits = {})
    {
        return unzip(archive, file, {scratch.path() / "target", scratch.path() / "staging"}, *this, limits);
    }
    void add(const std::string& name, std::vector<std::string> pieces, Kind kind = Kind::file,
             bool encrypted = false)
    {
        archive.entries.push_back({{name, kind, encrypted}, std::move(pieces)});
    }
    test::ScratchFolder scratch;
    test::ScratchFolder downloads;
    std::filesystem::path file = downloads.write("any.zip", "");
    test::ScriptedArchive archive;
    int calls = 0;
    int stopAt = 0;
};

// Each name, and behind ">" the path that it stands for; the others are refused.
TEST(ArchiveNames, WhatEachSystemTakesForTheSameFile)
{
    std::istringstream names(
        "a.txt>a.txt|KV07/firm ware.hex>KV07/firm ware.hex|a\\b\\c>a/b/c|folder/>folder|.hidden>.hidden|"
        "./a>a|.\\./a/b>a/b|Größe.txt>Größe.txt|COM10.txt>COM10.txt|CONSOLE>CONSOLE|"
        "|/etc/passwd|../x|a/../b|a\\..\\b|a//b|./|./../x|.//x|a/.|C:x|a.txt:ads|\\\\host\\x|"
        "con.txt|a/NUL|lpt9.x|CONIN$|Aux.tar.gz|COM\xC2\xB9|nul .txt|a.|a /b|a?b|tab\tx|\x7F|"
        "\xC0\xAF|\xE0\x80\xAF|\xE2\x82|\xED\xA0\x80|\xF4\x90\x80\x80");
    for (std::string name; std::getline(names, name, '|');) {
        const auto arrow = name.find('>');
        const auto utf8 = pathOfEntry(name.substr(0, arrow)).value_or("").generic_u8string();
        const auto expected = arrow == std::string::npos ? "" : name.substr(arrow + 1);
        EXPECT_EQ(std::string(utf8.begin(), utf8.end()), expected) << name;
    }
    const std::string longest(255, 'x');
    const std::string deep = longest + "/" + longest + "/" + longest + "/" + longest; // 1023 bytes
    EXPECT_TRUE(pathOfEntry(longest) && pathOfEntry(deep + "/"));
    for (const std::string& name :
         {longest + "x", deep + "/x", std::string("a|b"), std::string("a>b"), std::string("a\0b", 3)})
        EXPECT_FALSE(pathOfEntry(name)) << name;
}

TEST(Unzip, PutsEverythingInPlaceAtTheEnd)
{
    UnzipBench bench;
    bench.scratch.write("target/docs/a.txt", "old");
    bench.scratch.write("target/own.txt", "stays");
    bench.add("./", {}, Kind::folder);
    bench.add("./docs/", {}, Kind::folder);
    bench.add("docs/a.txt", {"new ", "content"});
    bench.add("deep/er/b.bin", {});
    EXPECT_EQ(bench.run().end, UnzipEnd::unpacked);
    EXPECT_EQ(bench.scratch.listing(), "target/ target/deep/ target/deep/er/ target/deep/er/b.bin "
                                       "target/docs/ target/docs/a.txt target/own.txt ");
    EXPECT_EQ(bench.scratch.read("target/docs/a.txt"), "new content");
    EXPECT_EQ(bench.scratch.read("target/own.txt"), "stays");
}

// Whatever is wrong behind a good entry: the target stays as it was, and nothing is left beside it. `about`
// is the last part of what is named.
void expectRefused(UnzipEnd end, TextView about, const std::function<void(UnzipBench&)>& spoil)
{
    SCOPED_TRACE(static_cast<int>(end));
    UnzipBench bench;
    bench.scratch.write("target/a.txt", "old");
    bench.add("a.txt", {"new"});
    spoil(bench);
    const auto result = bench.run({.entries = 4});
    EXPECT_EQ(result.end, end);
    EXPECT_TRUE(about.empty() ? result.about.empty() : result.about.ends_with(about));
    EXPECT_EQ(bench.scratch.listing(), "target/ target/a.txt ");
    EXPECT_EQ(bench.scratch.read("target/a.txt"), "old");
}

TEST(Unzip, LeavesTheTargetAloneWhenAnythingIsWrong)
{
    expectRefused(UnzipEnd::notReadable, u"any.zip", [](auto& b) { b.archive.fault = u"bad sum"; });
    expectRefused(UnzipEnd::empty, u"any.zip", [](auto& b) { b.archive.entries.clear(); });
    expectRefused(UnzipEnd::empty, u"any.zip", [](auto& b) {
        b.archive.entries.clear();
        b.add("./", {}, Kind::folder);
    });
    expectRefused(UnzipEnd::missing, u"any.zip", [](auto& b) { std::filesystem::remove(b.file); });
    expectRefused(UnzipEnd::nameRefused, u"../x", [](auto& b) { b.add("../x", {"y"}); });
    expectRefused(UnzipEnd::nameRefused, u"A.TXT", [](auto& b) { b.add("A.TXT", {"y"}); });
    expectRefused(UnzipEnd::nameRefused, u"a.txt/b", [](auto& b) { b.add("a.txt/b", {"y"}); });
    expectRefused(UnzipEnd::nameRefused, u"C", [](auto& b) {
        b.add("c/d", {"y"});
        b.add("C", {"y"});
    });
    expectRefused(UnzipEnd::linkRefused, u"link", [](auto& b) { b.add("link", {}, Kind::other); });
    expectRefused(UnzipEnd::encrypted, u"", [](auto& b) { b.add("secret", {"y"}, Kind::file, true); });
    expectRefused(UnzipEnd::tooMany, u"", [](auto& b) {
        for (const char* const name : {"f1", "f2", "f3", "f4"})
            b.add(name, {}, Kind::folder);
    });
    expectRefused(UnzipEnd::stopped, u"", [](auto& b) { b.stopAt = 2; });
}

// A bomb: the bytes that come count, not those that were announced.
TEST(Unzip, MoreThanItsLimitIsRefused)
{
    EXPECT_EQ(UnzipLimits().entries, 10'000U);
    EXPECT_EQ(UnzipLimits().bytes, 1'073'741'824U);
    for (const auto& [bytes, end] : {std::pair{200U, UnzipEnd::unpacked}, {199U, UnzipEnd::tooLarge}}) {
        UnzipBench bench;
        bench.add("a", {std::string(100, 'x')});
        bench.add("b", {std::string(60, 'x'), std::string(40, 'x')});
        EXPECT_EQ(bench.run({.entries = 2, .bytes = bytes}).end, end);
        EXPECT_EQ(bench.scratch.listing(), bytes == 200 ? "target/ target/a target/b " : "target/ ");
    }
}

TEST(Unzip, WhatLeadsOutOfTheTargetOrStandsInTheWayIsRefusedBeforeAnythingIsReplaced)
{
    for (const bool link : {true, false}) {
        UnzipBench bench;
        bench.scratch.write("elsewhere/a.txt", "other");
        bench.scratch.write("target/z.txt", "old");
        const auto docs = bench.scratch.path() / "target/docs";
        if (link)
            std::filesystem::create_directory_symlink("../elsewhere", docs);
        else
            std::filesystem::create_directories(docs / "a.txt");
        bench.add("z.txt", {"new"});
        bench.add("docs/a.txt", {"new"});
        const auto before = bench.scratch.listing();
        const auto result = bench.run();
        EXPECT_EQ(result.end, UnzipEnd::notPlaced);
        EXPECT_NE(result.about.find(u"docs"), Text::npos) << utf8FromText(result.about);
        EXPECT_EQ(bench.scratch.listing(), before);
        EXPECT_EQ(bench.scratch.read("elsewhere/a.txt"), "other");
        EXPECT_EQ(bench.scratch.read("target/z.txt"), "old");
    }
    UnzipBench bench;
    bench.scratch.write("target", "a file in place of the folder");
    bench.add("a.txt", {"new"});
    const auto result = bench.run();
    EXPECT_EQ(result.end, UnzipEnd::notPlaced);
    EXPECT_FALSE(result.words.empty());
    EXPECT_TRUE(bench.archive.read_.empty()) << "not even looked into";
}

TEST(Unpack, FindsItsFolderAndItsArchive)
{
    test::TestBench bench;
    bench.state.driveC = "data/C";
    bench.files.folders = {"data/C", "data/C/Temp"};
    EXPECT_EQ(unzipFolder(bench.bench), std::filesystem::path("data/C/Temp/Zip_Ordner"));
    EXPECT_TRUE(bench.files.exists("data/C/Temp/Zip_Ordner"));
    bench.files.readOnly = {"data/C", "data/C/TEMP"};
    bench.files.folders = {"data/C"};
    test::setText(bench.state.texts, 866, u"not placed {1} {2}");
    EXPECT_FALSE(unzipFolder(bench.bench));
    EXPECT_EQ(bench.journal, (Journal{"error not placed data/C/TEMP/Zip_Ordner read-only"}));

    bench.files.content["x/b.zip"] = {};
    EXPECT_EQ(withZipEnding(bench.files, "x/a"), std::filesystem::path("x/a.ZIP"));
    EXPECT_EQ(withZipEnding(bench.files, "x/a.Zip"), std::filesystem::path("x/a.Zip"));
    EXPECT_EQ(withZipEnding(bench.files, "x/b"), std::filesystem::path("x/b.zip"));
    bench.files.content["x/b.ZIP"] = {};
    EXPECT_EQ(withZipEnding(bench.files, "x/b"), std::filesystem::path("x/b.ZIP"));
}

TEST(Unpack, SaysHowItWent)
{
    test::TestBench bench;
    test::setText(bench.state.texts, 860, u"damaged {1} ({2})");
    const UnzipRequest request = {"a.zip", "data/C/TEMP/Zip_Ordner"};
    tellUnpacked(bench.bench, request, {});
    tellUnpacked(bench.bench, {"a.zip", "C:\\Temp\\zip_ordner"}, {});
    tellUnpacked(bench.bench, request, {UnzipEnd::notReadable, u"a.zip", u"words"});
    tellUnpacked(bench.bench, request, {UnzipEnd::stopped, {}, {}});
    const std::string done = "message Unzip ist fertig. Dateien sind in Ordner C:\\Temp\\Zip_Ordner";
    EXPECT_EQ(bench.journal,
              (Journal{done + "\r\ndata/C/TEMP/Zip_Ordner", done, "error damaged a.zip (words)"}));
}

} // namespace
} // namespace karvo
