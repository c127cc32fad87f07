#include "platform/qt_files.h"

#include "platform/qt_clock.h"
#include "support/scratch_folder.h"

#include <QtGlobal>

#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
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
    const auto path = scratch_.write(u8"bytes ä.txt", std::string("\r\n\0\x1A\xFF\x80\n", 7));
    EXPECT_EQ(files_.readWhole(path, 7), (Bytes{13, 10, 0, 26, 255, 128, 10}));
    EXPECT_EQ(files_.readWhole(path, 6), std::nullopt);
    for (const auto& none : {at("missing.txt"), scratch_.path(), std::filesystem::path()})
        EXPECT_EQ(files_.readWhole(none, 100), std::nullopt) << none;
#ifdef Q_OS_UNIX
    EXPECT_EQ(files_.readWhole("/dev/zero", 100), std::nullopt);
    ASSERT_EQ(::mkfifo(at("pipe").c_str(), 0600), 0);
    EXPECT_EQ(files_.readWhole(at("pipe"), 100), std::nullopt) << "and does not wait for a writer";
    EXPECT_TRUE(files_.saveAtomically(at("pipe"), {1})) << "a device is no place for a file";
#endif
}

TEST_F(QtFilesTest, SavesInPlaceOfTheOldFileAndLeavesNothingBeside)
{
    const auto old = scratch_.write(u8"bus ä.kvr", "old and longer");
    auto saved = old;
#ifdef Q_OS_UNIX
    ASSERT_EQ(::chmod(old.c_str(), 0640), 0);
    saved = at("link.kvr");
    std::filesystem::create_symlink(old.filename(), saved);
#endif
    EXPECT_FALSE(files_.saveAtomically(saved, {13, 0, 255}));
    EXPECT_EQ(scratch_.read(old.filename()), std::string("\r\0\xFF", 3));
#ifdef Q_OS_UNIX
    EXPECT_EQ(std::filesystem::status(old).permissions(), std::filesystem::perms(0640));
    EXPECT_TRUE(std::filesystem::is_symlink(saved));
    std::filesystem::remove(saved);
#endif
    EXPECT_FALSE(files_.exists(at("new.kvr")));
    EXPECT_FALSE(files_.changedAt(at("new.kvr")));
    EXPECT_FALSE(files_.saveAtomically(at("new.kvr"), {}));
    EXPECT_EQ(files_.changedAt(at("new.kvr"))->year, QtClock().now().year);
    EXPECT_EQ(files_.saveAtomically(at("missing/a.kvr"), {1}), std::errc::no_such_file_or_directory);
    EXPECT_EQ(files_.saveAtomically(scratch_.path(), {1}), std::errc::file_exists);
    EXPECT_EQ(files_.saveAtomically({}, {1}), std::errc::invalid_argument);
    EXPECT_TRUE(files_.saveAtomically(at(std::string(300, 'x')), {1}));
    EXPECT_EQ(files_.systemWords(std::make_error_code(std::errc::no_space_on_device)),
              u"No space left on device");
    EXPECT_EQ(scratch_.listing(), "bus ä.kvr new.kvr ");
}

#ifdef Q_OS_UNIX
TEST_F(QtFilesTest, AFullDiskAndAReadOnlyFolderAreToldAndLeaveTheOldFile)
{
    scratch_.write("bus.kvr", "old");
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
    const rlimit small{16, before.rlim_max}; // bytes of each file of this process
    std::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    const auto full = files_.saveAtomically(at("bus.kvr"), Bytes(100'000, 7));
    ::setrlimit(RLIMIT_FSIZE, &before);

    ASSERT_EQ(::chmod(scratch_.path().c_str(), 0555), 0);
    const uid_t own = ::geteuid();
    constexpr uid_t nobody = 65534;
    ASSERT_EQ(::seteuid(own == 0 ? nobody : own), 0); // for the superuser no folder is read-only
    const auto readOnly = files_.saveAtomically(at("bus.kvr"), {1});
    const auto readOnlyForNew = files_.saveAtomically(at("new.kvr"), {1});
    const bool canWrite = files_.canWriteInto(scratch_.path());
    ASSERT_EQ(::seteuid(own), 0);
    ASSERT_EQ(::chmod(scratch_.path().c_str(), 0755), 0);
    EXPECT_EQ(full, std::errc::file_too_large);
    EXPECT_EQ(readOnly, std::errc::permission_denied);
    EXPECT_EQ(readOnlyForNew, std::errc::permission_denied);
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
    for (int round = 0; round < 8; ++round) {
        const pid_t child = startSaving(files_, path, size);
        std::this_thread::sleep_for(std::chrono::milliseconds(5 + 9 * round));
        ASSERT_EQ(::kill(child, SIGKILL), 0);
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFSIGNALED(status)) << "it saved until it was killed";
        ASSERT_EQ(scratch_.read("bus.kvr"), std::string(size, scratch_.read("bus.kvr").front()));
    }
    EXPECT_NE(scratch_.read("bus.kvr").front(), 0) << "any was saved";
    EXPECT_FALSE(files_.saveAtomically(path, {1}));
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
    const auto nameOf = [&](pid_t number) {
        return std::string(own).replace(own.find(process), process.size(), std::to_string(number));
    };
    const std::string left = nameOf(ended);
    const std::string kept[] = {own,
                                nameOf(1), // runs, though it is somebody else's
                                "another-" + left, left + ".kvr",
                                std::string(left).insert(left.find(".tmp"), "x")}; // of another computer
    for (const auto& name : kept)
        scratch_.write(name, "x");
    scratch_.write(left + "/deep/a.txt", "x");
    EXPECT_FALSE(files_.saveAtomically(at("bus.kvr"), {1}));
    EXPECT_FALSE(files_.exists(at(left)));
    for (const auto& name : kept)
        EXPECT_TRUE(files_.exists(at(name))) << name;
}
#endif

#ifdef Q_OS_WIN
TEST_F(QtFilesTest, AFileThatAnotherProgramHasOpenIsToldAndStays)
{
    const auto path = scratch_.write("bus.kvr", "old");
    const std::ifstream other(path);
    EXPECT_EQ(files_.saveAtomically(path, {1}), std::errc::device_or_resource_busy);
    EXPECT_EQ(scratch_.read("bus.kvr"), "old");
    constexpr int accessDenied = 5;
    const Text words = files_.systemWords({accessDenied, std::system_category()});
    EXPECT_TRUE(!words.empty() && words.find_first_of(u".\r\n") == Text::npos) << utf8FromText(words);
}
#endif

TEST_F(QtFilesTest, MakesListsTriesAndRemoves)
{
    EXPECT_FALSE(files_.makeFolder(at("a/b")));
    EXPECT_FALSE(files_.makeFolder(at("a/b")));
    scratch_.write("a/c.kvr", "x");
    std::string entries;
    for (const auto& [name, isFolder] : files_.list(at("a")))
        entries += name.string() + (isFolder ? "/ " : " ");
    EXPECT_EQ(entries, "b/ c.kvr ");
    EXPECT_TRUE(files_.list(at("none")).empty());
    EXPECT_TRUE(files_.canWriteInto(at("a")));
    EXPECT_FALSE(files_.canWriteInto(at("none")));
    EXPECT_TRUE(files_.makeFolder(at("a/c.kvr"))) << "a file stands in its place";
    EXPECT_FALSE(files_.remove(at("a/c.kvr")));
    EXPECT_FALSE(files_.remove(at("a/c.kvr")));
    EXPECT_TRUE(files_.remove(at("a"))) << "something is in it";
    EXPECT_EQ(scratch_.listing(), "a/ a/b/ ");
}

} // namespace
} // namespace karvo
