// What becomes of a command whose output can not be written, and of one that is broken off with Ctrl-C.
#include "cli/program_bench.h"
#include "support/hex_file.h"

#include <csignal>

namespace karvo
{
namespace
{

using CutShortTest = test::ProgramBench;

TEST_F(CutShortTest, AResultThatNobodyCanReadIsNone)
{
    expect(
        {{"read --output @a.kvr", 0, ""}, {"read --output @b.kvr", 0, ""}, {"set @b.kvr CV1=9", 0, "-> 9"}});
    const std::pair<const char*, int> cases[] = {
        {"-h", 1}, {"list kv07", 1}, {"read --json", 1}, {"compare @a.kvr @b.kvr", 2}, {"raed --json", 2}};
    for (const auto& [line, exitCode] : cases) {
        QProcess process;
        process.setStandardOutputFile(QStringLiteral("/dev/full"));
        start(process, QString::fromLatin1(line));
        finish(process, {line, exitCode, "", "could not be written: disk is full."});
    }
}

struct Interruption {
    test::Case expected;
    std::vector<const char*> awaited; // on standard error; behind each of them comes a Ctrl-C
};

TEST_F(CutShortTest, CtrlCEndsWithWhatWasDone)
{
    std::string update = "1F80,KV08\r\nUpdate Ende\r\n";
    for (int line = 0; line < 400; ++line) {
        update += ":1000000102030405060708090A0B0C0D0E0F\r\n";
        if (line == 40)
            save("short.uhx", update);
    }
    save("long.uhx", update);
    save("a.hex", test::hexFile(9));
    usual_ = QStringLiteral("--language en --simulate kv08 ");
    const Interruption cases[] = {
        {{"read", 130, "", "Interrupted with Ctrl+C."}, {"Read all"}},
        {{"write CV48=5 CV49=6 CV50=9", 130, "CV50 = 9  not written, ended before", "of 3 CVs written"},
         {"Writing CV48"}},
        {{"write CV48=5 CV49=6 CV50=9 --json", 130, "\"code\": \"interrupted\""}, {"Writing CV48"}},
        {{"flash @a.hex --json", 130, "\"end\": \"stopped\""}, {"Erasing"}},
        {{"update @short.uhx", 0, "", "once more breaks it off"}, {"do not switch"}},
        {{"update @long.uhx", 130, "", "has no complete firmware"},
         {"do not switch", "once more breaks it off"}},
    };
    for (const auto& [expected, awaited] : cases) {
        SCOPED_TRACE(expected.line);
        QProcess process;
        process.setReadChannel(QProcess::StandardError);
        // A test that runs in the background may have been told to ignore it.
        process.setChildProcessModifier([] { std::signal(SIGINT, SIG_DFL); });
        start(process, QString::fromStdString(expected.line));
        QByteArray err;
        for (const char* const words : awaited) {
            while (!err.contains(words) && process.waitForReadyRead(10000))
                err += process.readAll();
            ::kill(static_cast<pid_t>(process.processId()), SIGINT);
        }
        finish(process, expected, err.toStdString());
    }
}

} // namespace
} // namespace karvo
