// What the program finds when it starts: its settings, and the folders with the person's files.
#include "support/test_bench.h"
#include "workbench/start.h"
#include "workbench/user_folders.h"

namespace karvo::test
{

TEST(StartTest, TakesWhatIsStoredAndLeavesAllFiveSettings)
{
    using Five = std::array<TextView, 5>; // what is empty was not stored
    const std::array<std::string, 5> keys = {"Parameter/ATMELpath", "Parameter/Com_Port", "Parameter/Expert",
                                             "Parameter/Language", "Parameter/Location"};
    const Five full = {u"D:\\hex", u"12", u"1", u"5", u"somewhere"};
    const Five usual = {u"C:\\", u"1", u"0", u"", u""};
    const struct {
        const char* what;
        Five before;
        Five after;
        std::vector<int> present = {};
    } cases[] = {
        {"the first start", {}, usual},
        {"a stored one", full, full},
        {"nonsense", {u"", u"99", u"yes", u"9", u""}, {u"C:\\", u"1", u"0", u"9", u""}},
        {"the only port", {}, {u"C:\\", u"5", u"0", u"", u""}, {5}},
        {"two ports", {}, usual, {5, 6}},
        {"a port stored by now", {u"", u"1"}, usual, {9}},
    };
    for (const auto& [what, before, after, present] : cases) {
        MemorySettings settings;
        ProgramState state;
        for (std::size_t i = 0; i < keys.size(); ++i) {
            if (!before[i].empty())
                settings.values[keys[i]] = before[i];
        }
        const auto language = readSettings(state, settings, present);
        EXPECT_EQ(language, before == full ? std::optional(LanguageCode::french) : std::nullopt) << what;
        for (std::size_t i = 0; i < keys.size(); ++i)
            EXPECT_EQ(settings.values.at(keys[i]), after[i]) << what;
        EXPECT_EQ(textFromNumber(state.link.portNumber), after[1]) << what;
        EXPECT_EQ(state.hexFolder, after[0]) << what;
        EXPECT_EQ(state.expert, after[2] == u"1") << what;
    }
}

TEST(UserFoldersTest, LieBesideTheProgramOrInTheDocumentsAndComeBeforeTheShippedOnes)
{
    MemoryFiles files;
    files.folders = {"program", "documents"};
    const auto found = [&] { return findUserFolders(files, "program", "documents"); };
    EXPECT_EQ(found().cvLists.own, "program/CV_listen");
    EXPECT_EQ(found().distances.shipped, "program/original/ABS_listen");
    EXPECT_TRUE(found().cvLists.beside.empty());
    files.folders.insert({"program/FS_Listen", "documents/cv_LISTEN"});
    files.content["program/ABS_LISTEN"] = {}; // a file of that name is no folder
    EXPECT_EQ(found().distances.own, "program/ABS_listen");
    files.readOnly = {"program"}; // but the folders in it are not
    EXPECT_EQ(found().speedSteps.own, "program/FS_Listen");
    EXPECT_EQ(found().cvLists.own, "documents/cv_LISTEN");
    EXPECT_TRUE(found().cvLists.beside.empty());
    files.readOnly.insert("program/FS_Listen");
    const UserFolder folder = found().speedSteps;
    for (const char* const newest :
         {"program/original/FS_listen/a.fcr", "program/FS_Listen/a.fcr", "documents/FS_listen/a.fcr"}) {
        files.content[newest] = {};
        EXPECT_EQ(folder.find(files, "a.fcr"), newest);
    }
    EXPECT_EQ(folder.find(files, "b.fcr"), "documents/FS_listen/b.fcr");
    EXPECT_TRUE(folder.isShipped("program/original/FS_listen/b.fcr"));
    EXPECT_FALSE(folder.isShipped("program/FS_Listen/b.fcr"));
}

} // namespace karvo::test
