#include "shell/options.h"

#include <gtest/gtest.h>

namespace karvo::test
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
    EXPECT_TRUE(options.read && !options.help && !options.version);
    EXPECT_EQ(options.others, (std::vector<std::string>{"-platform", "offscreen"})) << "the window system's";
    const std::pair<std::vector<std::string>, const char*> errors[] = {
        {{"--simulated", "kv07"}, "unknown option --simulated"},
        {{"--simulate"}, "option --simulate needs a value"},
        {{"--language="}, "option --language needs a value"},
        {{"--read", "--map-port"}, "option --map-port needs a value"},
        {{"--read=yes"}, "option --read takes no value"},
    };
    for (const auto& [arguments, error] : errors)
        EXPECT_EQ(parseOptions(arguments).error, error);
    for (const char* word : {"--simulate", "--map-port", "--program-folder", "--language", "--read", "--help",
                             "--version", "kv07", "kv04-2008", "trailer", "receiver"})
        EXPECT_NE(helpText().find(word), std::string::npos) << word;
}

} // namespace karvo::test
