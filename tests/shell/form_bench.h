// A workbench with scripted boxes and files in memory, for the windows that stand on it.
#pragma once

#include "shell/controls.h"
#include "support/test_bench.h"
#include "workbench/language_change.h"

namespace karvo::test
{

inline std::string smallList(const std::string& header, const std::string& rows,
                             const char* processor = "ATmega328")
{
    return header + "\r\n" + rows + "Ende CV\r\n" + processor + "\r\nFirmware_Version: 6\r\nEnde FS\r\n";
}

struct FormBench : TestBench {
    FormBench()
    {
        addInstalledTexts(files, state.programFolder);
        EXPECT_TRUE(useLanguage(bench, LanguageCode::german));
        state.userFolders.cvLists.own = "lists";
        addFile("CV_Standart_kv07.txt", smallDescription("Standard KV07", "Wort "));
    }

    void put(const char* name, const std::string& content)
    {
        files.content["lists/" + std::string(name)] = bytesOf(content);
    }
    std::string saved(const std::string& name)
    {
        const Bytes& content = files.content["lists/" + name];
        return {content.begin(), content.end()};
    }
};

} // namespace karvo::test
