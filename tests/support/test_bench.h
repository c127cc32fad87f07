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

struct TestBench {
    Journal journal;
    ScriptedLine line{journal};
    ScriptedPrompts prompts{journal};
    RecordingView view{journal};
    MemoryFiles files;
    MemorySettings settings;
    ProgramState state;
    Workbench bench{state, line, line, prompts, view, files, settings};

    TestBench()
    {
        state.programFolder = "program";
        state.texts = linkTexts();
        setTexts(state.texts, {{1, u"cannot open"}, {2, u"install again"}, {299, u"old KV04"}}, {});
        setTexts(state.texts, {{301, u" of 168   "}, {600, u"no decoder yet"}, {602, u"go on?"}}, {});
        setTexts(state.texts, {{601, u"values are defaults"}, {680, u"no description: {1}"}}, {});
        setText(state.texts, 681, u"{1}: {2} lines left out, first {3}");
        setTexts(state.texts, {}, {{21, u"Firmware"}, {22, u"Sublevel"}, {29, u"{1} CVs"}, {41, u"offline"}});
    }

    void addFile(const std::string& name, const std::string& content)
    {
        files.content[state.programFolder / name] = bytesOf(content);
    }
};

} // namespace karvo::test
