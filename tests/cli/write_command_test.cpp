// Writing from the command line, to simulated decoders.
#include "cli/program_bench.h"

#include <QDir>

namespace karvo
{
namespace
{

class WriteCommandTest : public test::ProgramBench
{
protected:
    // A program folder of the test's own: the backups are made in it.
    WriteCommandTest()
    {
        const QDir folder(QStringLiteral(KARVO_PROGRAM_FOLDER));
        const auto needed = {QStringLiteral("English_*.txt"), QStringLiteral("CV_Standart*.txt")};
        QDir().mkpath(pathOf("program"));
        for (const QString& name : folder.entryList(needed, QDir::Files))
            EXPECT_TRUE(QFile::copy(folder.filePath(name), placed(QStringLiteral("@program/") + name)));
        usual_ += QStringLiteral("--program-folder @program ");
    }

    QStringList backups() const
    {
        return QDir(pathOf("program/CV_listen")).entryList({QStringLiteral("*.kvr")}, QDir::Files);
    }
};

TEST_F(WriteCommandTest, PrintsALineForEachCvAndKeepsWhatWasThere)
{
    expect({{"write CV48=5 1=17", 0, "CV48 = 5  written\nCV1  = 17  written\n"}});
    ASSERT_EQ(backups().size(), 1);
    EXPECT_TRUE(backups().first().startsWith(QStringLiteral("KARVO KV07 ")));
    const auto path = QStringLiteral("program/CV_listen/") + backups().first();
    EXPECT_NE(contentOf(path.toLatin1().constData()).find("\r\n1;3;"), std::string::npos);
}

TEST_F(WriteCommandTest, ExitCodesTellWhatWentWrong)
{
    expectAll("writes.txt");
}

TEST_F(WriteCommandTest, AListIsWrittenWhereItDiffers)
{
    expect({{"read --output @bus.kvr", 0, ""}, {"write --from @bus.kvr", 0, ""}});
    EXPECT_TRUE(backups().isEmpty());
    expect({
        {"set @bus.kvr CV48=5 CV7=99", 0, "@bus.kvr: CV48 "},
        {"write --from @bus.kvr", 0, "CV7  = 99  left out, read only\nCV48 = 5  written\n"},
        {"write --dry-run --from @bus.kvr", 0, "CV7  = 6 -> 99  left out, read only"},
        {"write --dry-run --from @bus.kvr", 0, "To be written: 1. Left out: 1."},
        {"write --dry-run CV1=0", 0, "CV1  = 3 -> 0  will be written", "CV1 = 0: 1 to 126 are allowed"},
        {"write --from @bus.kvr --simulate kv04", 7, "", "belongs to a KV07, but the vehicle has a KV04"},
        {"write --from @none.kvr", 1, ""},
    });
    EXPECT_EQ(backups().size(), 1) << "a dry run writes and keeps nothing";
    std::string list = contentOf("bus.kvr");
    list.replace(list.find("\r\n3;4;"), 6, "\r\n3;300;");
    save("odd.kvr", list.replace(list.find("\r\n4;"), 4, "\r\n999;"));
    expect({{"write --dry-run --from @odd.kvr", 0, "To be written: 1.", "ignored: line 5 (999)"},
            {"write --dry-run --from @odd.kvr", 0, "To be written: 1.", "without one: line 4 (300)"}});
}

TEST_F(WriteCommandTest, AListForAnotherGenerationIsWrittenWhereThePersonSaysSo)
{
    expect({{"read --output @lane.kvr --simulate kv07-lc", 0, ""},
            {"write --from @lane.kvr", 7, "", "KV07 LaneControl, Firmware 6, in the vehicle: KV07 standard"},
            {"write --from @lane.kvr --yes", 7, ""}});
    EXPECT_TRUE(backups().isEmpty());
    expect({{"write --from @lane.kvr --force vehicle", 0, "  written\nCV"}});
    EXPECT_EQ(backups().size(), 1);
}

TEST_F(WriteCommandTest, WithoutABackupNothingIsWritten)
{
    save("program/CV_listen", "a file in the way");
    expect({{"write CV48=5", 1, "CV48 = 5  not written, ended before\n", "could not be kept"}});
}

} // namespace
} // namespace karvo
