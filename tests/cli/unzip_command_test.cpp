#include "program_bench.h"

#include "support/zip_maker.h"

#include <QDir>

namespace karvo
{
namespace
{

class UnzipCommandTest : public test::ProgramBench
{
protected:
    test::Outcome unzip(const std::string& archive, const char* target = "out")
    {
        QFile file(pathOf("a.zip"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(archive.data(), static_cast<qint64>(archive.size()));
        file.close();
        return run(QStringLiteral("unzip %1 %2 --language en").arg(pathOf("a.zip"), pathOf(target)));
    }
    QStringList unpacked() const
    {
        return QDir(pathOf("out")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    }
};

} // namespace

TEST_F(UnzipCommandTest, UnpacksIntoAFolder)
{
    const auto outcome = unzip(test::makeZip({{"docs/a.txt", "text"}, {"b.hex", ":00"}}));
    EXPECT_EQ(outcome.exitCode, 0) << outcome.err.toStdString();
    EXPECT_EQ(unpacked(), (QStringList{QStringLiteral("b.hex"), QStringLiteral("docs")}));
    EXPECT_EQ(contentOf("out/docs/a.txt"), "text");
}

TEST_F(UnzipCommandTest, SaysWhatIsWrongAndUnpacksNothing)
{
    const std::string good = test::makeZip({{"a.txt", "text"}});
    auto outcome = unzip(good.substr(0, good.size() - 5));
    EXPECT_EQ(outcome.exitCode, 6);
    EXPECT_TRUE(outcome.err.contains(QStringLiteral("is not a readable ZIP archive")))
        << outcome.err.toStdString();
    outcome = unzip(test::makeZip({{"a.txt", "text"}, {"../evil", "text"}}));
    EXPECT_EQ(outcome.exitCode, 6);
    EXPECT_TRUE(outcome.err.contains(QStringLiteral("contains the name ../evil")))
        << outcome.err.toStdString();
    EXPECT_TRUE(unpacked().isEmpty());
    EXPECT_FALSE(QFile::exists(pathOf("evil")));
    outcome = unzip(good, "a.zip");
    EXPECT_EQ(outcome.exitCode, 7) << "a file stands where the folder has to be";
    outcome = run(QStringLiteral("unzip %1 %2 --language en").arg(pathOf("missing.zip"), pathOf("out")));
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.err.startsWith(QStringLiteral("There is no archive"))) << outcome.err.toStdString();
    outcome = unzip(test::makeZip({}));
    EXPECT_EQ(outcome.exitCode, 6);
    EXPECT_TRUE(outcome.err.contains(QStringLiteral("is an empty archive"))) << outcome.err.toStdString();
    EXPECT_EQ(run(QStringLiteral("unzip onlyone.zip")).exitCode, 2);
}

} // namespace karvo
