#include "support/test_bench.h"
#include "workbench/start.h"

namespace karvo::test
{

using Values = std::map<std::string, Text>;

Values stored(TextView folder, TextView port, TextView expert, TextView language, TextView location)
{
    return {{"Parameter/ATMELpath", Text(folder)},
            {"Parameter/Com_Port", Text(port)},
            {"Parameter/Expert", Text(expert)},
            {"Parameter/Language", Text(language)},
            {"Parameter/Location", Text(location)}};
}

TEST(StartTest, TakesWhatIsStoredAndLeavesAllFiveSettings)
{
    const struct {
        const char* what;
        Values before;
        Values after;
        std::optional<LanguageCode> language;
        int port;
        std::vector<int> present = {};
    } cases[] = {
        {"the first start", {}, stored(u"C:\\", u"1", u"0", u"", u""), std::nullopt, 1},
        {"a stored one", stored(u"D:\\hex", u"12", u"1", u"5", u"somewhere"),
         stored(u"D:\\hex", u"12", u"1", u"5", u"somewhere"), LanguageCode::french, 12},
        {"nonsense", stored(u"", u"99", u"yes", u"9", u""), stored(u"C:\\", u"1", u"0", u"9", u""),
         std::nullopt, 1},
        {"the only port", {}, stored(u"C:\\", u"5", u"0", u"", u""), std::nullopt, 5, {5}},
        {"two ports", {}, stored(u"C:\\", u"1", u"0", u"", u""), std::nullopt, 1, {5, 6}},
        {"stored by now",
         stored(u"", u"1", u"", u"", u""),
         stored(u"C:\\", u"1", u"0", u"", u""),
         std::nullopt,
         1,
         {9}},
    };
    for (const auto& [what, before, after, language, port, present] : cases) {
        MemorySettings settings;
        ProgramState state;
        settings.values = before;
        EXPECT_EQ(readSettings(state, settings, present), language) << what;
        EXPECT_EQ(settings.values, after) << what;
        EXPECT_EQ(state.link.portNumber, port) << what;
        EXPECT_EQ(state.hexFolder, after.at("Parameter/ATMELpath")) << what;
        EXPECT_EQ(state.expert, after.at("Parameter/Expert") == u"1") << what;
    }
}

} // namespace karvo::test
