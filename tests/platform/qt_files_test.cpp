#include "platform/qt_files.h"

#include "platform/text_conversion.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
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

TEST_F(QtFilesTest, KnowsWhatExists)
{
    EXPECT_TRUE(files_.exists(write("here.txt", "x")));
    EXPECT_TRUE(files_.exists(pathOf(".")));
    EXPECT_FALSE(files_.exists(pathOf("there.txt")));
}

} // namespace

} // namespace karvo
