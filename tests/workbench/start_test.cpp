// What the program finds when it starts: its settings, and the folders with the person's files.
#include "support/case_table.h"
#include "support/test_bench.h"
#include "workbench/start.h"
#include "workbench/user_folders.h"

#include <iterator>
#include <sstream>

namespace karvo::test
{

TEST(StartTest, TakesWhatIsStoredAndLeavesAllFiveSettings)
{
    const std::string names[] = {"Parameter/ATMELpath", "Parameter/Com_Port", "Parameter/Expert",
                                 "Parameter/Language", "Parameter/Location"};
    for (const auto& [before, ports, after] : casesOf<3>("workbench/settings.txt")) {
        MemorySettings settings;
        ProgramState state;
        std::istringstream stored(before);
        for (const auto& name : names) {
            std::string value;
            if (std::getline(stored, value, ';') && !value.empty())
                settings.values[name] = textFromUtf8(value);
        }
        std::istringstream numbers(ports);
        const std::vector<int> present(std::istream_iterator<int>(numbers), {});
        const auto language = readSettings(state, settings, present);
        EXPECT_EQ(language, before == after ? std::optional(LanguageCode::french) : std::nullopt) << after;
        std::string left;
        for (const auto& name : names)
            left += utf8FromText(settings.values.at(name)) + ";";
        EXPECT_EQ(left, after);
        const auto taken = utf8FromText(state.hexFolder) + ";" + std::to_string(state.link.portNumber) + ";" +
                           (state.expert ? "1;" : "0;");
        EXPECT_EQ(taken, after.substr(0, taken.size()));
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
