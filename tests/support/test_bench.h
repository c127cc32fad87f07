// A whole workbench on scripted seams, with a small program folder in memory.
#pragma once

#include "support/link_bench.h"
#include "support/memory_files.h"
#include "workbench/workbench.h"

namespace karvo::test
{

inline std::string smallDescription(const std::string& header, const std::string& word, int rows = 176)
{
    std::string content = header + "\r\n";
    for (int row = 1; row <= rows; ++row) {
        const auto number = std::to_string(row);
        content += number + ";" + (row == 153 ? "" : "1") + ";" + word + number + ";0;255;1;;;;;;;;;;;\r\n";
    }
    return content + "Anfang FS\r\nFS1 = 3\r\n\r\n";
}

struct TestBench : ScriptedSeams {
    MemoryFiles files;
    MemorySettings settings;
    ProgramState state;
    Workbench bench{state, line, line, prompts, view, files, settings};

    TestBench()
    {
        state.programFolder = "program";
        addTexts(state.texts, "link/texts.txt");
        addTexts(state.texts, "workbench/texts.txt");
    }

    void addFile(const std::string& name, const std::string& content)
    {
        files.content[state.programFolder / name] = bytesOf(content);
    }
};

} // namespace karvo::test
