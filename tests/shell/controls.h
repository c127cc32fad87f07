// What the benches of the windows share.
#pragma once

#include "language/language_code.h"
#include "platform/qt_files.h"
#include "support/memory_files.h"

#include <QAbstractButton>
#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QTest>

#include <functional>
#include <iterator>
#include <sstream>
#include <stdexcept>

namespace karvo::test
{

template <typename Control = QWidget>
Control& find(QWidget& window, const std::string& name)
{
    auto* const control = window.findChild<Control*>(QString::fromStdString(name));
    if (control == nullptr)
        throw std::runtime_error("no control " + name);
    return *control;
}
inline void click(QWidget& window, const std::string& name)
{
    find<QAbstractButton>(window, name).click();
}
inline void trigger(QWidget& window, const std::string& name)
{
    find<QAction>(window, name).trigger();
}
inline std::string labelOf(QWidget& window, const std::string& name)
{
    return find<QLabel>(window, name).text().toStdString();
}
inline std::string fieldOf(QWidget& window, const std::string& name)
{
    return find<QLineEdit>(window, name).text().toStdString();
}

// "Start COM" as two names.
inline std::vector<std::string> wordsOf(const std::string& text)
{
    std::istringstream stream(text);
    return {std::istream_iterator<std::string>(stream), {}};
}

// Closes a window that is expected to come.
inline std::function<void(QWidget&)> clicking(const char* name)
{
    return [name](QWidget& window) { click(window, name); };
}
inline void closeIt(QWidget& window)
{
    window.close();
}

// The language files of the build.
inline void addInstalledTexts(MemoryFiles& files, const std::filesystem::path& folder)
{
    QtFiles installed;
    for (const LanguageCode code : allLanguages) {
        const auto& names = languageFiles(code);
        for (const auto name : {names.messageFile, names.menuFile, names.captionFile})
            files.content[folder / name] =
                installed.readWhole(KARVO_PROGRAM_FOLDER / std::filesystem::path(name), textFileLimit)
                    .value();
    }
}

} // namespace karvo::test
