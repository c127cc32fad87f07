#include "platform/qt_files.h"

#include "platform/qt_clock.h"
#include "platform/text_conversion.h"

#include <QDateTime>
#include <QFile>
#include <QTemporaryDir>

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

class QtFilesTest : public testing::Test
{
protected:
    std::filesystem::path pathOf(const char* name) const
    {
        return toPath(folder_.filePath(QString::fromUtf8(name)));
    }

    std::filesystem::path write(const char* name, const QByteArray& content) const
    {
        QFile file(folder_.filePath(QString::fromUtf8(name)));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(content), content.size());
        return pathOf(name);
    }

    QtFiles files_;

private:
    QTemporaryDir folder_;
};

TEST_F(QtFilesTest, ReadsEveryByteAsItStands)
{
    const auto path = write("bytes \xC3\xA4.txt", QByteArray("\r\n\0\x1A\xFF\x80\n", 7));
    EXPECT_EQ(files_.readWhole(path, 100), (Bytes{13, 10, 0, 26, 255, 128, 10}));
    EXPECT_EQ(files_.readWhole(write("empty.txt", {}), 100), Bytes{});
}

TEST_F(QtFilesTest, RefusesWhatIsLargerThanTheLimit)
{
    const auto path = write("five.txt", "12345");
    EXPECT_EQ(files_.readWhole(path, 4), std::nullopt);
    ASSERT_TRUE(files_.readWhole(path, 5));
    EXPECT_EQ(files_.readWhole(path, 5)->size(), 5U);
}

TEST_F(QtFilesTest, RefusesWhatIsNoRegularFile)
{
    EXPECT_EQ(files_.readWhole(pathOf("missing.txt"), 100), std::nullopt);
    EXPECT_EQ(files_.readWhole(pathOf("."), 100), std::nullopt);
    EXPECT_EQ(files_.readWhole({}, 100), std::nullopt);
#ifdef Q_OS_UNIX
    EXPECT_EQ(files_.readWhole("/dev/zero", 100), std::nullopt);
    const auto pipe = pathOf("pipe");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(files_.readWhole(pipe, 100), std::nullopt) << "and does not wait for a writer";
#endif
}

TEST_F(QtFilesTest, SavesInPlaceOfTheOldFileAndLeavesNothingBeside)
{
    const auto path = write("bus \xC3\xA4.kvr", "old and longer");
    EXPECT_EQ(files_.saveAtomically(path, {13, 0, 255}), std::nullopt);
    EXPECT_EQ(files_.readWhole(path, 100), (Bytes{13, 0, 255}));
    EXPECT_FALSE(files_.exists(pathOf("new.kvr")));
    EXPECT_FALSE(files_.changedAt(pathOf("new.kvr")));
    EXPECT_EQ(files_.saveAtomically(pathOf("new.kvr"), {}), std::nullopt);
    EXPECT_EQ(files_.changedAt(pathOf("new.kvr"))->year, QtClock().now().year);
    EXPECT_EQ(files_.readWhole(pathOf("new.kvr"), 100), Bytes{});
    ASSERT_EQ(files_.list(pathOf(".")).size(), 2U);
}

TEST_F(QtFilesTest, AFailedSaveSaysWhyAndKeepsTheOldFile)
{
    EXPECT_TRUE(files_.saveAtomically(pathOf("missing/a.kvr"), {1}));
    EXPECT_TRUE(files_.saveAtomically(pathOf("."), {1}));
    EXPECT_TRUE(files_.saveAtomically({}, {1}));
#ifdef Q_OS_UNIX
    const auto pipe = pathOf("pipe");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_TRUE(files_.saveAtomically(pipe, {1})) << "a device is no place for a file";
    // A full disk: no file of this process may grow beyond a few bytes.
    const auto path = write("bus.kvr", "old");
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
    const rlimit small{16, before.rlim_max};
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    const auto reason = files_.saveAtomically(path, Bytes(100'000, 7));
    ::setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    ASSERT_TRUE(reason);
    EXPECT_FALSE(reason->empty());
    EXPECT_EQ(files_.readWhole(path, 100), (Bytes{'o', 'l', 'd'}));
    EXPECT_EQ(files_.list(pathOf(".")).size(), 2U);
#endif
}

#ifdef Q_OS_UNIX
TEST_F(QtFilesTest, AReadOnlyFolderIsToldAndStaysAsItWas)
{
    const auto path = write("bus.kvr", "old");
    const auto folder = pathOf(".");
    ASSERT_EQ(::chmod(folder.c_str(), 0555), 0);
    constexpr uid_t nobody = 65534;
    const bool isRoot = ::geteuid() == 0; // whom no folder is read-only
    if (isRoot) {
        ASSERT_EQ(::seteuid(nobody), 0);
    }
    const auto reason = files_.saveAtomically(path, {1});
    const auto reasonForNew = files_.saveAtomically(pathOf("new.kvr"), {1});
    const bool canWrite = files_.canWriteInto(folder);
    if (isRoot) {
        ASSERT_EQ(::seteuid(0), 0);
    }
    ASSERT_EQ(::chmod(folder.c_str(), 0755), 0);
    EXPECT_TRUE(reason && !reason->empty());
    EXPECT_TRUE(reasonForNew && !reasonForNew->empty());
    EXPECT_FALSE(canWrite);
    EXPECT_EQ(files_.readWhole(path, 100), (Bytes{'o', 'l', 'd'}));
    EXPECT_EQ(files_.list(folder).size(), 1U);
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
    const auto path = write("bus.kvr", QByteArray(size, '\0'));
    bool anySaved = false;
    for (int round = 0; round < 12; ++round) {
        const pid_t child = startSaving(files_, path, size);
        ASSERT_GT(child, 0);
        std::this_thread::sleep_for(std::chrono::milliseconds(5 + 7 * round));
        ASSERT_EQ(::kill(child, SIGKILL), 0);
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFSIGNALED(status)) << "it saved until it was killed";
        const auto content = files_.readWhole(path, size);
        ASSERT_TRUE(content);
        ASSERT_EQ(content->size(), size);
        EXPECT_EQ(std::count(content->begin(), content->end(), content->front()), size);
        anySaved = anySaved || content->front() != 0;
    }
    EXPECT_TRUE(anySaved);
    EXPECT_EQ(files_.saveAtomically(path, {1}), std::nullopt);
    EXPECT_EQ(files_.list(pathOf(".")).size(), 1U);
}

// Of this computer's names only those of processes that have ended go; folders as well as files.
TEST_F(QtFilesTest, OnlyWhatEndedProcessesLeftIsCleared)
{
    const pid_t ended = ::fork();
    if (ended == 0)
        ::_exit(0);
    ASSERT_EQ(::waitpid(ended, nullptr, 0), ended);
    const std::string own = files_.temporaryPath(pathOf(".")).filename().string();
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
        write(name.c_str(), "x");
    ASSERT_EQ(files_.makeFolder(pathOf(left.c_str()) / "deep"), std::nullopt);
    write((left + "/deep/a.txt").c_str(), "x");
    EXPECT_EQ(files_.saveAtomically(pathOf("bus.kvr"), {1}), std::nullopt);
    EXPECT_FALSE(files_.exists(pathOf(left.c_str())));
    for (const auto& name : kept)
        EXPECT_TRUE(files_.exists(pathOf(name.c_str()))) << name;
}

TEST_F(QtFilesTest, ALinkAndTheRightsOfAFileOutliveASave)
{
    const auto path = write("bus.kvr", "old");
    ASSERT_EQ(::chmod(path.c_str(), 0640), 0);
    std::filesystem::create_symlink("bus.kvr", pathOf("link.kvr"));
    EXPECT_EQ(files_.saveAtomically(pathOf("link.kvr"), {1}), std::nullopt);
    EXPECT_TRUE(std::filesystem::is_symlink(pathOf("link.kvr")));
    EXPECT_EQ(files_.readWhole(path, 10), Bytes{1});
    EXPECT_EQ(std::filesystem::status(path).permissions(), std::filesystem::perms(0640));
}
#endif

TEST_F(QtFilesTest, MakesListsAndRemoves)
{
    EXPECT_EQ(files_.makeFolder(pathOf("a/b")), std::nullopt);
    EXPECT_EQ(files_.makeFolder(pathOf("a/b")), std::nullopt);
    write("a/c.kvr", "x");
    const auto entries = files_.list(pathOf("a"));
    ASSERT_EQ(entries.size(), 2U);
    EXPECT_EQ(entries[0].name, "b");
    EXPECT_TRUE(entries[0].isFolder);
    EXPECT_EQ(entries[1].name, "c.kvr");
    EXPECT_FALSE(entries[1].isFolder);
    EXPECT_TRUE(files_.list(pathOf("none")).empty());
    EXPECT_TRUE(files_.makeFolder(pathOf("a/c.kvr"))) << "a file stands in its place";
    EXPECT_EQ(files_.remove(pathOf("a/c.kvr")), std::nullopt);
    EXPECT_EQ(files_.remove(pathOf("a/c.kvr")), std::nullopt);
    EXPECT_TRUE(files_.remove(pathOf("a"))) << "a folder that is not empty";
    EXPECT_EQ(files_.list(pathOf("a")).size(), 1U);
}

TEST_F(QtFilesTest, TriesWhetherAFolderTakesFiles)
{
    EXPECT_TRUE(files_.canWriteInto(pathOf(".")));
    EXPECT_TRUE(files_.list(pathOf(".")).empty());
    EXPECT_FALSE(files_.canWriteInto(pathOf("none")));
#ifdef Q_OS_LINUX
    EXPECT_FALSE(files_.canWriteInto("/proc"));
#endif
}

TEST(QtClockTest, TellsTheLocalTime)
{
    const QDateTime before = QDateTime::currentDateTime();
    const DateTime now = QtClock().now();
    const QDateTime told({now.year, now.month, now.day}, {now.hour, now.minute, now.second});
    EXPECT_LE(before.toSecsSinceEpoch(), told.toSecsSinceEpoch());
    EXPECT_LE(told, QDateTime::currentDateTime());
}

} // namespace

} // namespace karvo
