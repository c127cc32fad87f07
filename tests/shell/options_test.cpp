#include "shell/options.h"

#include <gtest/gtest.h>

namespace karvo
{

TEST(Options, AreReadFromTheCommandLine)
{
    const auto options =
        parseOptions({"--simulate", "kv07", "--map-port", "COM5=/dev/ttyUSB0", "--map-port=COM6=/dev/ttyUSB1",
                      "--program-folder=/opt/karvo", "--read", "--language", "fr", "-platform", "offscreen"});
    EXPECT_EQ(options.error, "");
    EXPECT_EQ(options.simulate, "kv07");
    EXPECT_EQ(options.mapPorts, (std::vector<std::string>{"COM5=/dev/ttyUSB0", "COM6=/dev/ttyUSB1"}));
    EXPECT_EQ(options.programFolder, "/opt/karvo");
    EXPECT_EQ(options.language, "fr");
    EXPECT_TRUE(options.read);
    EXPECT_FALSE(options.help || options.version);
    EXPECT_EQ(options.others, (std::vector<std::string>{"-platform", "offscreen"})) << "the window system's";
}

TEST(Options, NameWhatIsWrong)
{
    const struct {
        std::vector<std::string> arguments;
        const char* error;
    } cases[] = {
        {{"--simulated", "kv07"}, "unknown option --simulated"},
        {{"--simulate"}, "option --simulate needs a value"},
        {{"--language="}, "option --language needs a value"},
        {{"--read", "--map-port"}, "option --map-port needs a value"},
        {{"--read=yes"}, "option --read takes no value"},
    };
    for (const auto& [arguments, error] : cases)
        EXPECT_EQ(parseOptions(arguments).error, error);
}

TEST(Options, HelpNamesEveryOptionAndModel)
{
    const auto help = helpText();
    for (const char* word : {"--simulate", "--map-port", "--program-folder", "--language", "--read", "--help",
                             "--version", "kv07", "kv04-2008", "trailer", "receiver"})
        EXPECT_NE(help.find(word), std::string::npos) << word;
}

} // namespace karvo
