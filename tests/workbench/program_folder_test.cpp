// Every file that the program may ask for lies in the program folder under exactly this name.
#include "cvdata/description_file.h"
#include "cvdata/expert_file.h"
#include "support/folder_files.h"

#include <gtest/gtest.h>

namespace karvo
{
namespace
{

using Names = std::vector<std::string>;

void add(Names& names, const std::string& stem, std::initializer_list<const char*> endings)
{
    for (const char* const ending : endings)
        names.push_back(stem + ending);
}

Names descriptionNames()
{
    Names names = {
        "CV_Standart180.txt",           "CV_Standart180_EN.txt",        "CV_Standart180_ES.txt",
        "CV_Standart180_FR.txt",        "CV_Standart180_NL.txt",        "CV_Standart180_v1.txt",
        "CV_Standart172.txt",           "CV_Standart172_v1_5.txt",      "CV_Standart172_v1_6.txt",
        "CV_Standart172_Mai10_4.txt",   "CV_Standart172_Mai10_5.txt",   "CV_Standart172_Mai10_6.txt",
        "CV_Standart_Mai10_4.txt",      "CV_Standart_Mai10_5.txt",      "CV_Standart_Mai10_6.txt",
        "CV_Standart_November12_5.txt", "CV_Standart_November12_6.txt", "CV_Standart_kv07Tacho.txt",
        "CV_Standart_kv08Tacho.txt"};
    for (const std::string model : {"kv07", "kv08"}) {
        for (const std::string generation : {"", "_F3", "_F4", "_F5", "_V1", "LC"})
            add(names, "CV_Standart_" + model + generation, {".txt", "nl.txt", "en.txt", "es.txt", "fr.txt"});
    }
    for (const std::string generation : {"", "_V1"})
        add(names, "CV_Standart_an07" + generation, {".txt", "nl.txt", "en.txt", "es.txt", "fr.txt"});
    add(names, "CV_Standart_receiver", {".txt", "_nl.txt", "_en.txt", "_es.txt", "_fr.txt"});
    return names;
}

Names automaticNames()
{
    Names names;
    for (const std::string variant : {"V1", "V2", "V3", "V4"}) {
        for (const std::string kind : {"_Bus_", "_FW_"}) {
            add(names, "CV_KV04" + kind + variant, {"_08.txt", "_09.txt"});
            for (const std::string model : {"KV05", "KV06", "KV07", "KV08"})
                names.push_back("CV_" + model + kind + variant + ".txt");
        }
    }
    return names;
}

Names expertNames()
{
    Names names = {"CV_exp_v1.txt",
                   "CV_exp_v1_5.txt",
                   "CV_exp_v1_6.txt",
                   "CV_exp_Mai10_4.txt",
                   "CV_exp_Mai10_5.txt",
                   "CV_exp_Mai10_6.txt",
                   "CV_exp_November12_5.txt",
                   "CV_exp_November12_6.txt",
                   "CV_exp_kv07Tacho.txt",
                   "CV_exp_kv08Tacho.txt",
                   "CV_exp_Receiver.txt_nl.txt",
                   "CV_exp_Receiver_270222_nl"};
    const auto capitals = {".txt", "_NL.txt", "_EN.txt", "_ES.txt", "_FR.txt"};
    const auto smalls = {".txt", "_nl.txt", "_en.txt", "_es.txt", "_fr.txt"};
    add(names, "CV_exp", capitals);
    for (const std::string model : {"kv07", "kv08"}) {
        for (const std::string generation : {"", "_F3", "_F4", "_F5", "_V1"})
            add(names, "CV_exp_" + model + generation, capitals);
        add(names, "CV_exp_" + model + "LC", {".txt", "nl.txt", "en.txt", "es.txt", "fr.txt"});
    }
    add(names, "CV_exp_an07", capitals);
    add(names, "CV_exp_an07_V1", capitals);
    for (const std::string receiver :
         {"receiver", "Receiver", "Receiver_010915", "Receiver_240216", "Receiver_270222"})
        add(names, "CV_exp_" + receiver, smalls);
    add(names, "CV_exp_Receiver_240216",
        {"_neu.txt", "_nl_neu.txt", "_en_neu.txt", "_es_neu.txt", "_fr_neu.txt"});
    return names;
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

TEST_F(ProgramFolderTest, EveryDescriptionIsThereAndWithoutFault)
{
    for (const Names& names : {descriptionNames(), automaticNames()}) {
        for (const std::string& name : names) {
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
}

TEST_F(ProgramFolderTest, EveryExpertFileIsThereAndWithoutFault)
{
    for (const std::string& name : expertNames()) {
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
