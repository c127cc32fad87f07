#include "firmware/unpack.h"

#include "firmware/archive_names.h"
#include "support/scratch_folder.h"
#include "support/scripted_archive.h"
#include "support/test_bench.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using test::Journal;
using test::ScratchFolder;
using Kind = ArchiveEntry::Kind;

class Watcher : public UnzipObserver
{
public:
    bool goOn(std::uint64_t) override { return ++calls != stopAt; }

    int calls = 0;
    int stopAt = 0;
};

struct UnzipBench {
    UnzipResult run(const UnzipLimits& limits = {}) { return unzip(archive, file, place(), watcher, limits); }
    UnzipPlace place() const { return {scratch.path() / "target", scratch.path() / "staging"}; }
    void add(const std::string& name, std::vector<std::string> pieces, Kind kind = Kind::file)
    {
        archive.entries.push_back({{name, kind, false}, std::move(pieces)});
    }
    ScratchFolder scratch;
    ScratchFolder downloads;
    std::filesystem::path file = downloads.write("any.zip", "");
    test::ScriptedArchive archive;
    Watcher watcher;
};

} // namespace

TEST(ArchiveNames, WhatEachSystemTakesForTheSameFile)
{
    const std::pair<std::string, const char*> accepted[] = {{"a.txt", "a.txt"},
                                                            {"KV07/firm ware.hex", "KV07/firm ware.hex"},
                                                            {"a\\b\\c", "a/b/c"},
                                                            {"folder/", "folder"},
                                                            {".hidden", ".hidden"},
                                                            {"./a", "a"},
                                                            {".\\./a/b", "a/b"},
                                                            {"Größe.txt", "Größe.txt"},
                                                            {"COM10.txt", "COM10.txt"},
                                                            {"CONSOLE", "CONSOLE"},
                                                            {std::string(255, 'x'), nullptr}};
    for (const auto& [name, path] : accepted) {
        const auto found = pathOfEntry(name);
        ASSERT_TRUE(found) << name;
        const auto utf8 = found->generic_u8string();
        EXPECT_EQ(std::string(utf8.begin(), utf8.end()), path != nullptr ? path : name);
    }
    const std::string refused[] = {"",
                                   "/etc/passwd",
                                   "../x",
                                   "a/../b",
                                   "a\\..\\b",
                                   "a//b",
                                   "./",
                                   "./../x",
                                   ".//x",
                                   "a/.",
                                   "C:x",
                                   "a.txt:ads",
                                   "\\\\host\\x",
                                   "con.txt",
                                   "a/NUL",
                                   "Aux.tar.gz",
                                   "lpt9.x",
                                   "COM\xC2\xB9",
                                   "CONIN$",
                                   "nul .txt",
                                   "a.",
                                   "a /b",
                                   "a?b",
                                   "tab\tx",
                                   "\x7F",
                                   std::string("a\0b", 3),
                                   "\xC0\xAF",
                                   "\xED\xA0\x80",
                                   "\xE2\x82",
                                   "\xF4\x90\x80\x80",
                                   std::string(256, 'x'),
                                   std::string(1025, 'x')};
    for (const std::string& name : refused)
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

// Whatever is wrong behind a good entry: the target stays as it was, and nothing is left beside it.
TEST(Unzip, LeavesTheTargetAloneWhenAnythingIsWrong)
{
    struct Case {
        const char* what;
        std::function<void(UnzipBench&)> spoil;
        UnzipEnd end;
        TextView about;
    };
    const Case cases[] = {
        {"fault", [](UnzipBench& bench) { bench.archive.fault = u"bad sum"; }, UnzipEnd::notReadable,
         u"any.zip"},
        {"empty", [](UnzipBench& bench) { bench.archive.entries.clear(); }, UnzipEnd::empty, u"any.zip"},
        {"missing", [](UnzipBench& bench) { std::filesystem::remove(bench.file); }, UnzipEnd::missing,
         u"any.zip"},
        {"name", [](UnzipBench& bench) { bench.add("../x", {"y"}); }, UnzipEnd::nameRefused, u"../x"},
        {"twice", [](UnzipBench& bench) { bench.add("A.TXT", {"y"}); }, UnzipEnd::nameRefused, u"A.TXT"},
        {"file as folder", [](UnzipBench& bench) { bench.add("a.txt/b", {"y"}); }, UnzipEnd::nameRefused,
         u"a.txt/b"},
        {"folder as file",
         [](UnzipBench& bench) {
             bench.add("c/d", {"y"});
             bench.add("C", {"y"});
         },
         UnzipEnd::nameRefused, u"C"},
        {"link", [](UnzipBench& bench) { bench.add("link", {}, Kind::other); }, UnzipEnd::linkRefused,
         u"link"},
        {"password",
         [](UnzipBench& bench) {
             bench.archive.entries.push_back({{"secret", Kind::file, true}, {"y"}});
         },
         UnzipEnd::encrypted, u""},
        {"many",
         [](UnzipBench& bench) {
             for (int i = 0; i < 4; ++i)
                 bench.add("f" + std::to_string(i), {}, Kind::folder);
         },
         UnzipEnd::tooMany, u""},
        {"stopped", [](UnzipBench& bench) { bench.watcher.stopAt = 2; }, UnzipEnd::stopped, u""},
    };
    for (const Case& expected : cases) {
        UnzipBench bench;
        bench.scratch.write("target/a.txt", "old");
        bench.add("a.txt", {"new"});
        expected.spoil(bench);
        UnzipLimits four;
        four.entries = 4;
        const auto result = bench.run(four);
        EXPECT_EQ(result.end, expected.end) << expected.what;
        EXPECT_TRUE(expected.about.empty() ? result.about.empty() : result.about.ends_with(expected.about))
            << expected.what;
        EXPECT_EQ(bench.scratch.listing(), "target/ target/a.txt ") << expected.what;
        EXPECT_EQ(bench.scratch.read("target/a.txt"), "old") << expected.what;
    }
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
        UnzipLimits limits;
        limits.bytes = bytes;
        limits.entries = 2;
        EXPECT_EQ(bench.run(limits).end, end);
        EXPECT_EQ(bench.scratch.listing(), bytes == 200 ? "target/ target/a target/b " : "target/ ");
    }
}

TEST(Unzip, WhatLeadsOutOfTheTargetOrStandsInTheWayIsRefusedBeforeAnythingIsReplaced)
{
    UnzipBench bench;
    bench.scratch.write("elsewhere/a.txt", "other");
    bench.scratch.write("target/z.txt", "old");
    bench.add("z.txt", {"new"});
    bench.add("docs/a.txt", {"new"});
    std::filesystem::create_directory_symlink(bench.scratch.path() / "elsewhere",
                                              bench.scratch.path() / "target/docs");
    auto result = bench.run();
    EXPECT_EQ(result.end, UnzipEnd::notPlaced);
    EXPECT_TRUE(result.about.ends_with(u"docs")) << utf8FromText(result.about);
    EXPECT_EQ(bench.scratch.read("elsewhere/a.txt"), "other");
    EXPECT_EQ(bench.scratch.read("target/z.txt"), "old");

    std::filesystem::remove(bench.scratch.path() / "target/docs");
    std::filesystem::create_directories(bench.scratch.path() / "target/docs/a.txt");
    result = bench.run();
    EXPECT_EQ(result.end, UnzipEnd::notPlaced);
    EXPECT_EQ(bench.scratch.read("target/z.txt"), "old");
    EXPECT_EQ(bench.scratch.listing(),
              "elsewhere/ elsewhere/a.txt target/ target/docs/ target/docs/a.txt/ target/z.txt ");
}

TEST(Unzip, AFileInPlaceOfTheTargetFolderIsTold)
{
    UnzipBench bench;
    bench.scratch.write("target", "a file");
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
    bench.files.readOnly = {"data/C"};
    bench.files.folders = {"data/C"};
    bench.files.readOnly.insert("data/C/TEMP");
    test::setText(bench.state.texts, 866, u"not placed {1} {2}");
    EXPECT_FALSE(unzipFolder(bench.bench));
    EXPECT_EQ(bench.journal, (Journal{"error not placed data/C/TEMP/Zip_Ordner read-only"}));

    bench.files.content["x/b.zip"] = {};
    EXPECT_EQ(withZipEnding(bench.files, "x/a"), std::filesystem::path("x/a.ZIP"));
    EXPECT_EQ(withZipEnding(bench.files, "x/a.Zip"), std::filesystem::path("x/a.Zip"));
    EXPECT_EQ(withZipEnding(bench.files, "x/b"), std::filesystem::path("x/b.zip"));
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
    EXPECT_EQ(
        bench.journal,
        (Journal{
            "message Unzip ist fertig. Dateien sind in Ordner C:\\Temp\\Zip_Ordner\r\ndata/C/TEMP/Zip_Ordner",
            "message Unzip ist fertig. Dateien sind in Ordner C:\\Temp\\Zip_Ordner",
            "error damaged a.zip (words)"}));
}

} // namespace karvo
