#include "support/memory_files.h"
#include "workbench/user_folders.h"

#include <gtest/gtest.h>

namespace karvo::test
{

class UserFoldersTest : public testing::Test
{
protected:
    UserFoldersTest() { files.folders = {"program", "documents"}; }

    UserFolders found() { return findUserFolders(files, "program", "documents"); }

    MemoryFiles files;
};

TEST_F(UserFoldersTest, LieBesideTheProgramWhateverTheirCase)
{
    EXPECT_EQ(found().cvLists.own, "program/CV_listen");
    EXPECT_EQ(found().speedSteps.own, "program/FS_listen");
    EXPECT_EQ(found().distances.shipped, "program/original/ABS_listen");
    EXPECT_TRUE(found().cvLists.beside.empty());
    files.folders.insert({"program/FS_Listen", "program/cv_LISTEN"});
    files.content["program/ABS_LISTEN"] = {}; // a file of that name is no folder
    files.readOnly = {"program"};             // but the folders in it are not
    EXPECT_EQ(found().cvLists.own, "program/cv_LISTEN");
    EXPECT_EQ(found().speedSteps.own, "program/FS_Listen");
    files.readOnly.clear();
    EXPECT_EQ(found().distances.own, "program/ABS_listen");
}

TEST_F(UserFoldersTest, AreMadeInTheDocumentsWhereTheProgramIsReadOnly)
{
    files.folders.insert({"program/FS_listen", "documents/fs_listen"});
    files.readOnly = {"program", "program/FS_listen"};
    EXPECT_EQ(found().cvLists.own, "documents/CV_listen");
    EXPECT_TRUE(found().cvLists.beside.empty());
    EXPECT_EQ(found().speedSteps.own, "documents/fs_listen");
    EXPECT_EQ(found().speedSteps.beside, "program/FS_listen");
    EXPECT_EQ(found().speedSteps.shipped, "program/original/FS_listen");
}

TEST_F(UserFoldersTest, TheUsersFilesComeBeforeTheShippedOnes)
{
    files.folders.insert("program/FS_listen");
    files.readOnly = {"program", "program/FS_listen"};
    const UserFolder folder = found().speedSteps;
    for (const char* const newest :
         {"program/original/FS_listen/a.fcr", "program/FS_listen/a.fcr", "documents/FS_listen/a.fcr"}) {
        files.content[newest] = {};
        EXPECT_EQ(folder.find(files, "a.fcr"), newest);
    }
    EXPECT_EQ(folder.find(files, "b.fcr"), "documents/FS_listen/b.fcr");
    EXPECT_TRUE(folder.isShipped("program/original/FS_listen/b.fcr"));
    EXPECT_FALSE(folder.isShipped("program/FS_listen/b.fcr"));
}

} // namespace karvo::test
