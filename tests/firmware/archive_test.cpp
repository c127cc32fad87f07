// The maker's archive: fetching it, the names in it, and putting all of it in place or nothing.
#include "firmware/archive_names.h"
#include "firmware/download.h"
#include "firmware/unpack.h"
#include "program/path_text.h"
#include "support/case_table.h"
#include "support/scratch_folder.h"
#include "support/scripted_seams.h"
#include "support/test_bench.h"

#include <sstream>

namespace karvo
{
namespace
{

using test::Journal;
using Kind = ArchiveEntry::Kind;

struct UnzipBench : WorkObserver {
    UnzipBench()
    {
        for (const int number : {860, 861, 862, 863, 864, 865, 866, 870, 871})
            test::setText(texts, number,
                          u"m" + textFromNumber(number) + u" {1}" + (number == 866 ? u": {2}" : u""));
        test::setText(texts, 657, u"taken");
    }
    bool stopRequested() override
    {
        onTheWay = scratch.listing();
        return ++calls == stopAt;
    }

    UnzipResult run(const UnzipLimits& limits)
    {
        return unzip(archive, file, {scratch.path() / "target", scratch.path() / "staging"}, *this, limits);
    }
    // A name tells what it is.
    void add(const std::string& name, std::vector<std::string> pieces = {})
    {
        const auto kind = name.ends_with('/') ? Kind::folder : name == "link" ? Kind::other : Kind::file;
        archive.entries.push_back({{name, kind, name == "secret"}, std::move(pieces)});
    }
    LanguageTables texts;
    test::ScratchFolder scratch;
    test::ScratchFolder downloads;
    std::filesystem::path file = downloads.write("any.zip", "");
    test::ScriptedArchive archive;
    std::string onTheWay; // what stood there when it was last asked to go on
    int calls = 0;
    int stopAt = 0;
};

TEST(ArchiveNames, WhatEachSystemTakesForTheSameFile)
{
    for (const auto& [name, expected] : test::casesOf<2>("firmware/entry_names.txt")) {
        const auto utf8 = pathOfEntry(name).value_or("").generic_u8string();
        EXPECT_EQ(std::string(utf8.begin(), utf8.end()), expected) << name;
    }
    const std::string longest(255, 'x');
    const std::string deep = longest + "/" + longest + "/" + longest + "/" + longest; // 1023 bytes
    EXPECT_TRUE(pathOfEntry(longest) && pathOfEntry(deep + "/"));
    EXPECT_FALSE(pathOfEntry(longest + "x") || pathOfEntry(deep + "/x"));
}

TEST(Unzip, PutsEverythingInPlaceAtTheEnd)
{
    UnzipBench bench;
    bench.scratch.write("target/docs/a.txt", "old");
    bench.scratch.write("target/own.txt", "stays");
    bench.add("./");
    bench.add("./docs/");
    bench.add("docs/a.txt", {"new ", "content"});
    bench.add("empty/one/");
    bench.add("deep/er/b.bin", {});
    EXPECT_EQ(bench.run({.entries = 5, .bytes = 11}).end, UnzipEnd::unpacked) << "just within its limits";
    EXPECT_EQ(bench.scratch.listing(), "target/ target/deep/ target/deep/er/ target/deep/er/b.bin "
                                       "target/docs/ target/docs/a.txt target/empty/ target/empty/one/ "
                                       "target/own.txt ");
    EXPECT_EQ(bench.onTheWay, "staging/ staging/docs/ staging/docs/a.txt target/ target/docs/ "
                              "target/docs/a.txt target/own.txt ")
        << "thousands of folders would take long to make and to remove";
    EXPECT_EQ(bench.scratch.read("target/docs/a.txt"), "new content");
}

// Whatever is wrong behind a good entry: the target stays as it was, and nothing is left beside it. `about`
// is the last part of what is named.
void expectRefused(const std::string& message, const std::string& about,
                   const std::function<void(UnzipBench&)>& spoil)
{
    UnzipBench bench;
    bench.scratch.write("target/a.txt", "old");
    bench.add("a.txt", {"new"});
    spoil(bench);
    const auto before = bench.scratch.listing();
    const auto told =
        utf8FromText(messageOf(bench.run({.entries = 4, .bytes = 202}), bench.texts, test::MemoryFiles())
                         .value_or(u"nothing"));
    EXPECT_TRUE(told.starts_with(message) && told.ends_with(about)) << told << " for " << message;
    EXPECT_EQ(bench.scratch.listing(), before) << message;
    EXPECT_EQ(bench.scratch.read("target/a.txt"), "old") << message;
}

TEST(Unzip, LeavesTheTargetAloneWhenAnythingIsWrong)
{
    EXPECT_TRUE(UnzipLimits().entries == 10'000 && UnzipLimits().bytes == 1'073'741'824);
    for (const auto& [entries, message, about] : test::casesOf<3>("firmware/refused_archives.txt"))
        expectRefused(message, about, [&entries = entries](auto& b) {
            std::istringstream names(entries);
            for (std::string name; std::getline(names, name, ',');)
                b.add(name);
        });
    expectRefused("m860", "any.zip", [](auto& b) { b.archive.fault = u"bad sum"; });
    expectRefused("m870", "any.zip", [](auto& b) {
        b.archive.entries.clear();
        b.add("./");
    });
    expectRefused("m871", "any.zip", [](auto& b) { std::filesystem::remove(b.file); });
    expectRefused("nothing", "", [](auto& b) { b.stopAt = 2; });
    expectRefused("m865", "", [](auto& b) { // the bytes that come count, with the three of a.txt
        b.add("b", {std::string(100, 'x')});
        b.add("c", {std::string(60, 'x'), std::string(40, 'x')});
    });
    // Found out before anything is replaced: a link that leads out of the target, and what stands in the way.
    // On Windows only an administrator may make links.
    if (std::filesystem::path::preferred_separator == '/') {
        expectRefused("m866", "docs: taken", [](auto& b) {
            std::filesystem::create_directory(b.scratch.path() / "elsewhere");
            std::filesystem::create_directory_symlink("../elsewhere", b.scratch.path() / "target/docs");
            b.add("docs/b.txt");
        });
    }
    expectRefused("m866", "b.txt: taken", [](auto& b) {
        std::filesystem::create_directories(b.scratch.path() / "target/b.txt");
        b.add("b.txt");
    });
    expectRefused("m866", "staging: taken", [](auto& b) { b.scratch.write("staging", "another's"); });
}

TEST(Unpack, FindsItsFolderAndItsArchiveAndSaysHowItWent)
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
    EXPECT_EQ(test::portable(bench.journal.at(0)),
              "error not placed data/C/TEMP/Zip_Ordner Read-only file system");

    bench.files.content["x/b.zip"] = {};
    bench.files.content["x/c.zip"] = {};
    bench.files.content["x/c.ZIP"] = {};
    for (const auto& [typed, found] :
         {std::pair{"x/a", "x/a.ZIP"}, {"x/a.Zip", "x/a.Zip"}, {"x/b", "x/b.zip"}, {"x/c", "x/c.ZIP"}})
        EXPECT_EQ(withZipEnding(bench.files, typed), std::filesystem::path(found));

    bench.journal.clear();
    test::setText(bench.state.texts, 860, u"damaged {1} ({2})");
    const UnzipRequest request = {"a.zip", "data/C/TEMP/Zip_Ordner"};
    tellUnpacked(bench.bench, request, {});
    tellUnpacked(bench.bench, {"a.zip", "C:\\Temp\\zip_ordner"}, {});
    tellUnpacked(bench.bench, request, {UnzipEnd::notReadable, u"a.zip", u"words"});
    tellUnpacked(bench.bench, request, {UnzipEnd::stopped, {}, {}});
    const std::string done = "message Unzip ist fertig. Dateien sind in Ordner C:\\Temp\\Zip_Ordner";
    const auto folder = utf8FromText(pathText(request.folder));
    EXPECT_EQ(bench.journal, (Journal{done + "\r\n" + folder, done, "error damaged a.zip (words)"}));
}

struct Unwatched : WorkObserver {
    bool stopRequested() override { return false; }
};

TEST(Download, IsNamedByTheLastTwelveCharactersOfItsAddressAndGoesIntoTheFixedFolder)
{
    for (const TextView address : {u"", u"arvoUpd.zip", u"http://host/arvoUpd.zip",
                                   u"http://host/Kar?oUpd.zip", u"http://host/CON.karvoup"})
        EXPECT_FALSE(downloadFileName(address)) << utf8FromText(address);
    test::TestBench bench;
    test::ScriptedDownloader server;
    Unwatched observer;
    test::numberEveryText(bench.state.texts);
    bench.state.driveC = "c";
    EXPECT_FALSE(download(bench.bench, server, observer)) << "m581 is no address";
    EXPECT_TRUE(server.address.empty());
    test::setText(bench.state.texts, 581, u"http://host/KarvoUpd.zip");
    EXPECT_EQ(download(bench.bench, server, observer)->file, "c/temp/KarvoUpd.zip");
    EXPECT_TRUE(bench.files.exists("c/temp"));
    bench.files.folders = {"c", "c/TEMP"};
    const auto done = download(bench.bench, server, observer);
    EXPECT_EQ(server.address, u"http://host/KarvoUpd.zip");
    EXPECT_EQ(server.target, "c/TEMP/KarvoUpd.zip");
    tellDownloadFailed(bench.prompts);
    EXPECT_EQ(test::joined(bench.journal),
              "message m867, hourglass, no hourglass, hourglass, no hourglass, message Fehler beim Download: "
              "Entweder existiert die URL nicht, oder Sie haben einen ungültigen Dateinamen angegeben!");
    test::setCaption(bench.state.texts, 677, u"here: {1}");
    EXPECT_EQ(test::portable(utf8FromText(downloadedText(bench.state.texts, done->file))),
              "Download erfolgreich ausgeführt!\r\nhere: c/TEMP/KarvoUpd.zip");
}

} // namespace
} // namespace karvo
