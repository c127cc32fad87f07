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
    const auto parsed =
        parse(QStringLiteral("--port COM5 read --map-port COM5=/dev/a --map-port com6=b --json --no-pace"));
    ASSERT_TRUE(parsed.arguments);
    EXPECT_EQ(parsed.arguments->command, CliCommand::read);
    EXPECT_EQ(parsed.arguments->port, 5);
    EXPECT_EQ(parsed.arguments->portMappings.size(), 2);
    EXPECT_TRUE(parsed.arguments->json);
    EXPECT_TRUE(parsed.arguments->unpaced);
    EXPECT_EQ(parse(QStringLiteral("list kv07")).arguments->model, QStringLiteral("kv07"));
    EXPECT_EQ(parse(QStringLiteral("ports --port 31")).arguments->port, 31);
}

TEST(CliArgumentsTest, RefusesWhatItDoesNotKnow)
{
    for (const char* const line :
         {"", "write", "read now", "list a b", "read --port COM0", "read --port COM32", "read --port ttyS0",
          "read --unknown", "read --port"}) {
        const auto parsed = parse(QString::fromLatin1(line));
        EXPECT_TRUE(parsed.wrong) << line;
        EXPECT_FALSE(parsed.arguments) << line;
        EXPECT_FALSE(parsed.text.isEmpty()) << line;
    }
}

TEST(CliArgumentsTest, HelpAndVersionAreNoMistakes)
{
    EXPECT_FALSE(parse(QStringLiteral("--help")).wrong);
    EXPECT_TRUE(parse(QStringLiteral("--help")).text.contains(QStringLiteral("Exit codes: 0 done")));
    EXPECT_TRUE(parse(QStringLiteral("--version")).text.startsWith(QStringLiteral("karvo-cli ")));
}

} // namespace
} // namespace karvo
