#include "platform/qt_files.h"

#include "platform/qt_clock.h"
#include "support/scratch_folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <thread>

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace karvo
{
namespace
{

struct QtFilesTest : testing::Test {
    std::filesystem::path at(const std::string& name) const { return scratch_.path() / name; }

    test::ScratchFolder scratch_;
    QtFiles files_;
};

TEST_F(QtFilesTest, ReadsEveryByteOfARegularFileUpToTheLimit)
{
    const auto path = scratch_.write("bytes ä.txt", std::string("\r\n\0\x1A\xFF\x80\n", 7));
    EXPECT_EQ(files_.readWhole(path, 7), (Bytes{13, 10, 0, 26, 255, 128, 10}));
    EXPECT_EQ(files_.readWhole(path, 6), std::nullopt);
    EXPECT_EQ(files_.readWhole(scratch_.write("empty.txt", {}), 100), Bytes{});
    EXPECT_EQ(files_.readWhole(at("missing.txt"), 100), std::nullopt);
    EXPECT_EQ(files_.readWhole(scratch_.path(), 100), std::nullopt);
    EXPECT_EQ(files_.readWhole({}, 100), std::nullopt);
#ifdef Q_OS_UNIX
    EXPECT_EQ(files_.readWhole("/dev/zero", 100), std::nullopt);
    ASSERT_EQ(::mkfifo(at("pipe").c_str(), 0600), 0);
    EXPECT_EQ(files_.readWhole(at("pipe"), 100), std::nullopt) << "and does not wait for a writer";
    EXPECT_TRUE(files_.saveAtomically(at("pipe"), {1})) << "a device is no place for a file";
#endif
}

TEST_F(QtFilesTest, SavesInPlaceOfTheOldFileAndLeavesNothingBeside)
{
    scratch_.write("bus ä.kvr", "old and longer");
    EXPECT_EQ(files_.saveAtomically(at("bus ä.kvr"), {13, 0, 255}), std::nullopt);
    EXPECT_EQ(scratch_.read("bus ä.kvr"), std::string("\r\0\xFF", 3));
    EXPECT_FALSE(files_.exists(at("new.kvr")));
    EXPECT_FALSE(files_.changedAt(at("new.kvr")));
    EXPECT_EQ(files_.saveAtomically(at("new.kvr"), {}), std::nullopt);
    EXPECT_EQ(files_.changedAt(at("new.kvr"))->year, QtClock().now().year);
    for (const auto& path : {at("missing/a.kvr"), scratch_.path(), std::filesystem::path()})
        EXPECT_TRUE(files_.saveAtomically(path, {1})) << path;
    EXPECT_EQ(scratch_.listing(), "bus ä.kvr new.kvr ");
    EXPECT_EQ(scratch_.read("new.kvr"), "");
}

#ifdef Q_OS_UNIX
// No file of this process may grow beyond a few bytes.
TEST_F(QtFilesTest, AFullDiskIsToldAndLeavesTheOldFile)
{
    scratch_.write("bus.kvr", "old");
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
    const rlimit small{16, before.rlim_max};
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    const auto reason = files_.saveAtomically(at("bus.kvr"), Bytes(100'000, 7));
    ::setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_TRUE(reason && !reason->empty());
    EXPECT_EQ(scratch_.read("bus.kvr"), "old");
    EXPECT_EQ(scratch_.listing(), "bus.kvr ");
}

TEST_F(QtFilesTest, AReadOnlyFolderIsToldAndStaysAsItWas)
{
    scratch_.write("bus.kvr", "old");
    ASSERT_EQ(::chmod(scratch_.path().c_str(), 0555), 0);
    const uid_t own = ::geteuid();
    constexpr uid_t nobody = 65534;
    ASSERT_EQ(::seteuid(own == 0 ? nobody : own), 0); // for the superuser no folder is read-only
    const auto reason = files_.saveAtomically(at("bus.kvr"), {1});
    const auto reasonForNew = files_.saveAtomically(at("new.kvr"), {1});
    const bool canWrite = files_.canWriteInto(scratch_.path());
    ASSERT_EQ(::seteuid(own), 0);
    ASSERT_EQ(::chmod(scratch_.path().c_str(), 0755), 0);
    EXPECT_TRUE(reason && !reason->empty());
    EXPECT_TRUE(reasonForNew && !reasonForNew->empty());
    EXPECT_FALSE(canWrite);
    EXPECT_EQ(scratch_.read("bus.kvr"), "old");
    EXPECT_EQ(scratch_.listing(), "bus.kvr ");
}

// In a process of its own: one content after the other into the same file, until it is killed.
pid_t startSaving(QtFiles& files, const std::filesystem::path& path, std::size_t size)
{
    const pid_t child = ::fork();
    if (child != 0)
        return child;
    for (std::uint8_t content = 1;; content = static_cast<std::uint8_t>(content % 250 + 1)) {
        if (files.saveAtomically(path, Bytes(size, content)))
            ::_exit(1);
    }
}

TEST_F(QtFilesTest, AProgramThatIsKilledWhileItSavesLeavesAWholeFile)
{
    constexpr std::size_t size = 200'000;
    const auto path = scratch_.write("bus.kvr", std::string(size, '\0'));
    bool anySaved = false;
    for (int round = 0; round < 8; ++round) {
        const pid_t child = startSaving(files_, path, size);
        ASSERT_GT(child, 0);
        std::this_thread::sleep_for(std::chrono::milliseconds(5 + 9 * round));
        ASSERT_EQ(::kill(child, SIGKILL), 0);
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFSIGNALED(status)) << "it saved until it was killed";
        const std::string content = scratch_.read("bus.kvr");
        ASSERT_EQ(content.size(), size);
        EXPECT_EQ(content, std::string(size, content.front()));
        anySaved = anySaved || content.front() != 0;
    }
    EXPECT_TRUE(anySaved);
    EXPECT_EQ(files_.saveAtomically(path, {1}), std::nullopt);
    EXPECT_EQ(scratch_.listing(), "bus.kvr ");
}

// Of this computer's names only those of processes that have ended go; folders as well as files.
TEST_F(QtFilesTest, OnlyWhatEndedProcessesLeftIsCleared)
{
    const pid_t ended = ::fork();
    if (ended == 0)
        ::_exit(0);
    ASSERT_EQ(::waitpid(ended, nullptr, 0), ended);
    const std::string own = files_.temporaryPath(scratch_.path()).filename().string();
    const std::string process = std::to_string(::getpid());
    const auto nameOf = [&](const std::string& number) {
        return std::string(own).replace(own.find(process), process.size(), number);
    };
    const std::string left = nameOf(std::to_string(ended));
    const std::string kept[] = {own,
                                nameOf("1"), // runs, though it is somebody else's
                                "another-" + left,
                                left + ".kvr",
                                std::string(left).insert(left.find(".tmp"), "x"), // of another computer
                                "bus.kvr.backup",
                                "bus.kvr.UsyGyZ",
                                "Zip_Ordner.unpacking-1"};
    for (const auto& name : kept)
        scratch_.write(name, "x");
    scratch_.write(left + "/deep/a.txt", "x");
    EXPECT_EQ(files_.saveAtomically(at("bus.kvr"), {1}), std::nullopt);
    EXPECT_FALSE(files_.exists(at(left)));
    for (const auto& name : kept)
        EXPECT_TRUE(files_.exists(at(name))) << name;
}

TEST_F(QtFilesTest, ALinkAndTheRightsOfAFileOutliveASave)
{
    const auto path = scratch_.write("bus.kvr", "old");
    ASSERT_EQ(::chmod(path.c_str(), 0640), 0);
    std::filesystem::create_symlink("bus.kvr", at("link.kvr"));
    EXPECT_EQ(files_.saveAtomically(at("link.kvr"), {'x'}), std::nullopt);
    EXPECT_TRUE(std::filesystem::is_symlink(at("link.kvr")));
    EXPECT_EQ(scratch_.read("bus.kvr"), "x");
    EXPECT_EQ(std::filesystem::status(path).permissions(), std::filesystem::perms(0640));
}
#endif

TEST_F(QtFilesTest, MakesListsTriesAndRemoves)
{
    EXPECT_EQ(files_.makeFolder(at("a/b")), std::nullopt);
    EXPECT_EQ(files_.makeFolder(at("a/b")), std::nullopt);
    scratch_.write("a/c.kvr", "x");
    const auto entries = files_.list(at("a"));
    ASSERT_EQ(entries.size(), 2U);
    EXPECT_EQ(entries[0].name, "b");
    EXPECT_TRUE(entries[0].isFolder);
    EXPECT_EQ(entries[1].name, "c.kvr");
    EXPECT_FALSE(entries[1].isFolder);
    EXPECT_TRUE(files_.list(at("none")).empty());
    EXPECT_TRUE(files_.canWriteInto(at("a")));
    EXPECT_FALSE(files_.canWriteInto(at("none")));
#ifdef Q_OS_LINUX
    EXPECT_FALSE(files_.canWriteInto("/proc"));
#endif
    EXPECT_TRUE(files_.makeFolder(at("a/c.kvr"))) << "a file stands in its place";
    EXPECT_EQ(files_.remove(at("a/c.kvr")), std::nullopt);
    EXPECT_EQ(files_.remove(at("a/c.kvr")), std::nullopt);
    EXPECT_TRUE(files_.remove(at("a"))) << "a folder that is not empty";
    EXPECT_EQ(scratch_.listing(), "a/ a/b/ ");
}

} // namespace
} // namespace karvo
