#include "cli/cli_arguments.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

CliParseResult parse(const QString& line)
{
    return parseCliArguments(
        (QStringLiteral("karvo-cli ") + line).split(QLatin1Char(' '), Qt::SkipEmptyParts));
}

TEST(CliArgumentsTest, TakesCommandsAndOptionsInAnyOrder)
{
    const auto parsed = parse(
        QStringLiteral("--port COM5 read --map-port COM5=/dev/a --map-port com6=b --json --simulate kv07 "
                       "--no-pace"));
    ASSERT_TRUE(parsed.arguments);
    EXPECT_EQ(parsed.arguments->command, CliCommand::read);
    EXPECT_EQ(parsed.arguments->port, 5);
    EXPECT_EQ(parsed.arguments->portMappings.size(), 2);
    EXPECT_TRUE(parsed.arguments->json);
    EXPECT_TRUE(parsed.arguments->unpaced);
    EXPECT_EQ(parse(QStringLiteral("list kv07")).arguments->operands, QStringList(QStringLiteral("kv07")));
    EXPECT_EQ(parse(QStringLiteral("list kv07-bus --variant 4")).arguments->variant, 3);
    EXPECT_EQ(parse(QStringLiteral("ports --port 31")).arguments->port, 31);
}

TEST(CliArgumentsTest, TellsFilesFromChanges)
{
    const auto parsed = parse(QStringLiteral("set a.kvr CV3=12 b=c.kvr 256=255 cv4=0 --dry-run"));
    ASSERT_TRUE(parsed.arguments);
    EXPECT_EQ(parsed.arguments->operands, (QStringList{QStringLiteral("a.kvr"), QStringLiteral("b=c.kvr")}));
    ASSERT_EQ(parsed.arguments->changes.size(), 3U);
    EXPECT_EQ(parsed.arguments->changes[0].cv, 3);
    EXPECT_EQ(parsed.arguments->changes[0].value, 12);
    EXPECT_EQ(parsed.arguments->changes[1].cv, 256);
    EXPECT_EQ(parsed.arguments->changes[2].value, 0);
    EXPECT_TRUE(parsed.arguments->dryRun);
    EXPECT_FALSE(parse(QStringLiteral("set a.kvr CV3=12")).arguments->dryRun);
}

TEST(CliArgumentsTest, RefusesWhatItDoesNotKnow)
{
    for (const char* const line : {"",
                                   "write",
                                   "read now",
                                   "list a b",
                                   "read --port COM0",
                                   "read --port COM32",
                                   "read --port ttyS0",
                                   "read --unknown",
                                   "read --port",
                                   "read --output list.pdf",
                                   "read --output list",
                                   "export a.kvr",
                                   "export a.kvr b.kvr",
                                   "export a.kvr b.csv c.csv",
                                   "compare a.kvr",
                                   "compare a b c",
                                   "set",
                                   "set a.kvr",
                                   "set CV3=12",
                                   "set a.kvr CV0=1",
                                   "set a.kvr CV257=1",
                                   "set a.kvr CV3=256",
                                   "set a.kvr CV3=",
                                   "set a.kvr CV3=1x",
                                   "set a.kvr CV3=1 3=2",
                                   "write a.kvr",
                                   "write a.kvr CV3=1",
                                   "write CV3=1 --from a.kvr",
                                   "write CV3=256",
                                   "write CV0=1",
                                   "write CV3=1 CV3=2",
                                   "write CV3=1 --simulate=",
                                   "read --fault silence",
                                   "read --no-pace",
                                   "read --dry-run",
                                   "set a.kvr CV3=1 --from b.kvr",
                                   "write CV3=1 --output a.kvr",
                                   "list kv07 --output a.kvr",
                                   "list kv07-bus --variant 5",
                                   "list kv07-bus --variant 0",
                                   "list --variant 2",
                                   "list kv07-bus --variant x",
                                   "read --variant 2"}) {
        const auto parsed = parse(QString::fromLatin1(line));
        EXPECT_TRUE(parsed.wrong) << line;
        EXPECT_FALSE(parsed.arguments) << line;
        EXPECT_FALSE(parsed.text.isEmpty()) << line;
    }
}

TEST(CliArgumentsTest, HelpAndVersionAreNoMistakes)
{
    EXPECT_FALSE(parse(QStringLiteral("--help")).wrong);
    const QString help = parse(QStringLiteral("--help")).text.simplified(); // its lines are wrapped
    for (const char* const part : {"Exit codes: 0 done",
                                   "flash: 0 the loader accepted every page, 1 the file is damaged, 4 not "
                                   "one reply came, 7 something was",
                                   "update: 0 the interface acknowledged every record",
                                   "the decoder's firmware may be incomplete", "unzip: 0 all was unpacked"})
        EXPECT_TRUE(help.contains(QLatin1String(part))) << part;
    EXPECT_TRUE(parse(QStringLiteral("--version")).text.startsWith(QStringLiteral("karvo-cli ")));
}

} // namespace
} // namespace karvo
