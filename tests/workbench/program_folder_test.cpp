// Every file that the program may ask for lies in the program folder under exactly its name.
#include "cvdata/description_file.h"
#include "cvdata/expert_file.h"
#include "support/folder_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace karvo
{
namespace
{

using Names = std::vector<std::string>;

// data/program_folder.txt: a name a line.
Names listedNames()
{
    std::ifstream file(std::filesystem::path(KARVO_SOURCE_FOLDER) / "data" / "program_folder.txt");
    Names names;
    for (std::string line; std::getline(file, line);) {
        if (!line.empty() && !line.starts_with('#'))
            names.push_back(line);
    }
    std::sort(names.begin(), names.end());
    return names;
}

Names heldNames()
{
    const std::filesystem::path folder = KARVO_PROGRAM_FOLDER;
    Names names;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.is_regular_file() && entry.path().filename().string().starts_with("CV_"))
            names.push_back(entry.path().filename().string());
    }
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder / "original")) {
        if (entry.is_regular_file())
            names.push_back(entry.path().lexically_relative(folder).generic_string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

bool isDescription(const std::string& name)
{
    return name.starts_with("CV_") && !name.starts_with("CV_exp");
}

bool isExpertFile(const std::string& name)
{
    return name.starts_with("CV_exp");
}

class ProgramFolderTest : public testing::Test
{
protected:
    std::optional<Bytes> content(const std::string& name)
    {
        return files_.readWhole(std::filesystem::path(KARVO_PROGRAM_FOLDER) / name, textFileLimit);
    }

private:
    test::FolderFiles files_;
};

TEST_F(ProgramFolderTest, HoldsTheListedFilesAndNoOthers)
{
    EXPECT_EQ(heldNames(), listedNames());
}

TEST_F(ProgramFolderTest, EveryDescriptionIsWithoutFault)
{
    for (const std::string& name : listedNames()) {
        if (!isDescription(name))
            continue;
        const auto bytes = content(name);
        ASSERT_TRUE(bytes) << name;
        const auto description = parseDescription(*bytes);
        ASSERT_TRUE(description) << name;
        EXPECT_TRUE(description->faults.empty()) << name;
        EXPECT_GE(description->rowCount, 176) << name;
        for (int row = 1; row <= description->rowCount; ++row)
            EXPECT_FALSE(description->table.at(row, Column::text).empty()) << name << " row " << row;
        for (const int cv : {100, 101}) {
            EXPECT_EQ(description->table.at(cv, Column::lowerLimit), u"0") << name;
            EXPECT_EQ(description->table.at(cv, Column::upperLimit), u"255") << name;
        }
    }
}

TEST_F(ProgramFolderTest, EveryExpertFileIsWithoutFault)
{
    for (const std::string& name : listedNames()) {
        if (!isExpertFile(name))
            continue;
        const auto bytes = content(name);
        ASSERT_TRUE(bytes) << name;
        const auto file = parseExpertFile(*bytes);
        ASSERT_TRUE(file) << name;
        EXPECT_TRUE(file->faultyLines.empty()) << name;
    }
}

TEST_F(ProgramFolderTest, NamesThatAreOneFileOnWindowsHaveTheSameContents)
{
    for (const char* const ending : {".txt", "_nl.txt", "_en.txt", "_es.txt", "_fr.txt"})
        EXPECT_EQ(content(std::string("CV_exp_receiver") + ending),
                  content(std::string("CV_exp_Receiver") + ending));
}

} // namespace
} // namespace karvo
