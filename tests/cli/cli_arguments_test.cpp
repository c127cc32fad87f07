#include "cli/cli_arguments.h"
#include "cli/cli_help.h"
#include "cli/file_patterns.h"
#include "support/case_table.h"

#include <gtest/gtest.h>

#include <iterator>
#include <sstream>

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
    std::istringstream each(line);
    const std::vector<std::string> words{std::istream_iterator<std::string>(each), {}};
    return parseCliArguments(cliWords(words), numbers());
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
    for (const auto& [line, text] : test::casesOf<2>("cli/wrong_arguments.txt")) {
        const auto parsed = parse(line.c_str());
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

TEST(FilesMeant, AreThoseThatThePatternMatches)
{
    test::MemoryFiles files;
    for (const char* const name : {"a/BUS.KVR", "a/b.kvr", "a/b.kvrx", "a/bb.kvr", "c.kvr"})
        files.content[name] = {};
    files.folders = {"a/d.kvr"};
    const std::pair<const char*, const char*> cases[] = {{"a/*.kvr", "a/BUS.KVR a/b.kvr a/bb.kvr "},
                                                         {"a/?.kvr", "a/b.kvr "},
                                                         {"a/*b*.K??", "a/BUS.KVR a/b.kvr a/bb.kvr "},
                                                         {"a/b*b*b.kvr", "a/b*b*b.kvr "},
                                                         {"*/b.kvr", "*/b.kvr "},
                                                         {"a/none.kvr", "a/none.kvr "},
                                                         {"a/**", "a/BUS.KVR a/b.kvr a/b.kvrx a/bb.kvr "}};
    for (const auto& [pattern, expected] : cases) {
        std::string meant;
        for (const auto& path : filesMeant(files, pattern))
            meant += path.generic_string() + " ";
        EXPECT_EQ(meant, expected) << pattern;
    }
}

} // namespace
} // namespace karvo
