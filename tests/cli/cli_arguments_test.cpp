#include "cli/cli_arguments.h"
#include "cli/cli_help.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

// Every text is its number and what is filled in.
LanguageTables numbers()
{
    LanguageTables texts;
    for (std::size_t i = 1; i < texts.messages.size(); ++i)
        texts.messages[i] = u"0000" + textFromNumber(static_cast<long long>(i)) + u": {1}, {2}";
    for (std::size_t i = 1; i < texts.captions.size(); ++i)
        texts.captions[i] = u"0000<" + textFromNumber(static_cast<long long>(i)) + u">";
    return texts;
}

CliParseResult parse(const char* line)
{
    return parseCliArguments(
        (QStringLiteral("karvo-cli ") + QLatin1String(line)).split(QLatin1Char(' '), Qt::SkipEmptyParts),
        numbers());
}

TEST(CliArgumentsTest, TakesCommandsOptionsFilesAndChangesInAnyOrder)
{
    const auto read =
        parse("--port COM5 read --map-port COM5=/dev/a --map-port com6=b --json --simulate kv07");
    ASSERT_TRUE(read.arguments);
    EXPECT_EQ(read.arguments->command, CliCommand::read);
    EXPECT_EQ(read.arguments->port, 5);
    EXPECT_EQ(read.arguments->portMappings.size(), 2);
    EXPECT_TRUE(read.arguments->json);
    EXPECT_EQ(parse("list kv07-bus --variant 4").arguments->variant, 3);
    EXPECT_EQ(parse("ports --port 31").arguments->port, 31);
    const auto set = parse("set a.kvr CV3=12 b=c.kvr 256=255 cv4=0 --dry-run").arguments;
    ASSERT_TRUE(set && set->changes.size() == 3);
    EXPECT_EQ(set->operands, (QStringList{QStringLiteral("a.kvr"), QStringLiteral("b=c.kvr")}));
    EXPECT_EQ(set->changes[0].value, 12);
    EXPECT_EQ(set->changes[1].cv, 256);
    EXPECT_EQ(set->changes[2].value, 0);
    EXPECT_TRUE(set->dryRun);
    EXPECT_FALSE(parse("set a.kvr CV3=12").arguments->dryRun);
}

TEST(CliArgumentsTest, SaysWhatIsWrong)
{
    const std::pair<const char*, const char*> cases[] = {
        {"", "922: ports, identify"},
        {"raed", "921: raed, read"},
        {"upd", "920: upd, ports, identify"},
        {"read --unknown", "923: --unknown, read "},
        {"read -x", "923: -x, read "},
        {"write --form a.kvr", "924: --form, --from"},
        {"read --port", "925: --port, COM5"},
        {"set a.kvr --yes=no CV3=1", "927: --yes=no, --yes"},
        {"read --dry-run", "926: --dry-run, read"},
        {"set a.kvr CV3=1 --from b.kvr", "926: --from, set"},
        {"write CV3=1 --output a.kvr", "926: --output, write"},
        {"read now", "927: now, karvo-cli read"},
        {"export a.kvr b.csv c.csv", "927: c.csv, karvo-cli export"},
        {"export a.kvr", "928: karvo-cli export LIST.kvr FILE.csv|txt"},
        {"set a.kvr", "928: karvo-cli set"},
        {"set CV3=12", "928: karvo-cli set"},
        {"set a.kvr CV3=", "929: CV3="},
        {"write a.kvr", "929: a.kvr"},
        {"set a.kvr CV0=1", "930: CV0=1, 0"},
        {"set a.kvr 257=1", "930: 257=1, 257"},
        {"write CV999=4", "930: CV999=4, 999"},
        {"write --from a.kvr CV3=300", "931: CV3=300, 300"},
        {"set a.kvr CV3=1 3=2", "932: 3=2, 3"},
        {"export a.kvr b.kvr", "933: b.kvr"},
        {"write", "934: "},
        {"write CV3=1 --from a.kvr", "934: "},
        {"list --variant 2", "935: "},
        {"list kv07-bus --variant 5", "936: "},
        {"list kv07-bus --variant 0", "936: "},
        {"read --port COM32", "937: "},
        {"read --port ttyS0", "937: "},
        {"read --output list.pdf", "938: "},
        {"write CV3=1 --force all", "939: "},
        {"write CV3=1 --simulate=", "940: "},
        {"read --fault silence", "941: "},
        {"read --no-pace", "941: "},
    };
    for (const auto& [line, text] : cases) {
        const auto parsed = parse(line);
        EXPECT_TRUE(parsed.wrong && !parsed.arguments) << line;
        EXPECT_EQ(utf8FromText(parsed.text).find(text), 0U) << line << '\n' << utf8FromText(parsed.text);
    }
}

TEST(CliArgumentsTest, HelpIsNoMistakeAndComesFromTheTable)
{
    const std::string all = utf8FromText(parse("-h").text);
    for (const Command& command : commands()) {
        const std::string word(command.word);
        EXPECT_NE(all.find("\n  " + word), std::string::npos);
        const auto parsed = parse((word + " --help").c_str());
        EXPECT_FALSE(parsed.wrong || parsed.arguments) << word;
        EXPECT_EQ(utf8FromText(parsed.text).find("<720>\n<"), 0U) << word;
    }
    const std::string unzip = utf8FromText(parse("unzip -h").text);
    EXPECT_NE(unzip.find("\n  1                           <771>\n  2"), std::string::npos) << unzip;
    EXPECT_EQ(unzip.find("--from"), std::string::npos);
    EXPECT_EQ(utf8FromText(parse("--version").text).find("karvo-cli 1."), 0U);
}

} // namespace
} // namespace karvo
