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
    expect({
        {"write CV48=5 CV1=127", 7, // none is written then
         "CV48 = 5  not written, ended before\nCV1  = 127  not written, ended before\n",
         "CV1 = 127: 1 to 126 are allowed"},
        {"write CV1=0 --yes", 7, "CV1  = 0  not written, ended before\n", "--force limits says Yes"},
        {"write CV1=127 --force limits", 0, "CV1  = 127  written\n"},
        {"write CV200=1", 2, "", "is not in the list"},
        {"write CV48=5 CV49=6 --fault refused-frame", 7,
         "CV48 = 5  not accepted by the decoder\nCV49 = 6  not accepted by the decoder\n", "0 of 2 CVs"},
        {"write CV48=5 --fault refused-frame --json", 7,
         "\"code\": \"frameRefused\",\n            \"cv\": 48"},
        {"write CV48=5 CV49=6 --fault refused-command", 7,
         "CV48 = 5  not written, decoder not ready\nCV49 = 6  not written, ended before\n",
         "The decoder is not ready"},
        {"write CV161=1 --fault refused-frame", 0, "CV161 = 1  sent, not acknowledged; please read again\n",
         "0 of 1 CVs"},
        {"write CV3=5 --simulate receiver-readonly", 5, "CV3  = 5  not written, unknown decoder\n",
         "does not know this decoder's identification"},
        {"write CV48=5 --fault silence", 4, "", "does not reply"},
        {"write CV48=5 --fault wrong-check-byte", 6, "", "wrong check byte"},
        {"write CV59=1", 7, "CV59 = 1  not written, as you wished\n", "--yes says Yes"},
        {"write CV59=1 --yes", 0, "CV59 = 1  written\n", "The reset command has been sent"},
        {"write CV59=1 --yes --fault wrong-check-byte", 7, "CV59 = 1  not written, ended before\n",
         "--force backup says Yes"},
        {"write CV59=1 --yes --fault wrong-check-byte --force backup", 0, "CV59 = 1  written\n",
         "The reset command has been sent"},
        {"write CV59=1 --yes --fault silence", 4, "", "does not reply"},
        {"write CV48=5 CV49=6 --json", 0, "\"code\": \"written\",\n            \"cv\": 49"},
        {"write CV48=5 CV3=200 --dry-run --json", 0, "\"toBeWritten\": 1"},
        {"write CV3=200 --dry-run --json", 0, "\"code\": \"outsideLimits\""},
    });
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
