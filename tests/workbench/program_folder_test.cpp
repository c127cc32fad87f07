// Every file that the program may ask for lies in the program folder under exactly its name.
#include "cvdata/description_file.h"
#include "cvdata/expert_file.h"
#include "support/folder_files.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>

namespace karvo::test
{

using Names = std::set<std::string>;

const std::filesystem::path folder = KARVO_PROGRAM_FOLDER;

// data/program_folder.txt: a name a line.
Names listedNames()
{
    std::ifstream file(std::filesystem::path(KARVO_SOURCE_FOLDER) / "data" / "program_folder.txt");
    Names names;
    for (std::string line; std::getline(file, line);) {
        if (!line.empty() && !line.starts_with('#'))
            names.insert(line);
    }
    return names;
}

Names heldNames()
{
    Names names;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.is_regular_file() && entry.path().filename().string().starts_with("CV_"))
            names.insert(entry.path().filename().string());
    }
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder / "original")) {
        if (entry.is_regular_file())
            names.insert(entry.path().lexically_relative(folder).generic_string());
    }
    return names;
}

Bytes content(const std::string& name)
{
    return FolderFiles().readWhole(folder / name, textFileLimit).value_or(Bytes());
}

TEST(ProgramFolderTest, HoldsTheListedFilesAndNoOthers)
{
    EXPECT_EQ(heldNames(), listedNames());
    for (const std::string ending : {".txt", "_nl.txt", "_en.txt", "_es.txt", "_fr.txt"})
        EXPECT_EQ(content("CV_exp_receiver" + ending), content("CV_exp_Receiver" + ending))
            << "one file on Windows";
}

TEST(ProgramFolderTest, EveryDescriptionAndEveryExpertFileIsWithoutFault)
{
    for (const std::string& name : listedNames()) {
        if (name.starts_with("CV_exp")) {
            const auto file = parseExpertFile(content(name));
            ASSERT_TRUE(file) << name;
            EXPECT_TRUE(file->faultyLines.empty()) << name;
        } else if (name.starts_with("CV_")) {
            const auto description = parseDescription(content(name));
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
}

} // namespace karvo::test
