// A workbench with scripted boxes and files in memory, for the windows that stand on it.
#pragma once

#include "platform/qt_files.h"
#include "support/test_bench.h"
#include "workbench/language_change.h"

#include <QAction>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

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
        QtFiles installed;
        for (const LanguageCode code : allLanguages) {
            const auto& names = languageFiles(code);
            for (const auto name : {names.messageFile, names.menuFile, names.captionFile})
                files.content[state.programFolder / name] =
                    installed.readWhole(std::filesystem::path(KARVO_PROGRAM_FOLDER) / name, textFileLimit)
                        .value_or(Bytes());
        }
        EXPECT_TRUE(useLanguage(bench, LanguageCode::german));
        state.userFolders.cvLists.own = "lists";
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

template <typename Control>
Control& find(QWidget& window, const char* name)
{
    auto* const control = window.findChild<Control*>(QString::fromLatin1(name));
    if (control == nullptr)
        throw std::runtime_error(std::string("no control ") + name);
    return *control;
}

} // namespace karvo::test
