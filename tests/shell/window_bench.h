// What the windows stand on: a workbench with scripted boxes and files in memory, or the main window with
// everything it needs, which are real boxes, real waiting, a simulated interface at COM5, the installed
// language files, and descriptions that stand here.
#pragma once

#include "platform/qt_files.h"
#include "platform/qt_wait.h"
#include "platform/simulated_port.h"
#include "shell/hauptform.h"
#include "support/case_table.h"
#include "support/modal_driver.h"
#include "support/scripted_seams.h"
#include "support/test_bench.h"
#include "ui/window_prompts.h"
#include "workbench/language_change.h"

#include <QAction>
#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QTemporaryDir>
#include <QTest>

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

inline std::string listFile(const std::string& rows, const std::string& header = "Standard KV07*6",
                            const std::string& processor = "ATmega328")
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

// KV07 in `word`s: CV1 to CV176, of which CV2 and CV29 are told apart.
inline std::string kv07Description(const std::string& word)
{
    const auto two =
        "20;" + word + " two;1;200;18;explains " + word + "$second line;0 = off;only if " + word + ";;;;;;;;";
    const auto switches =
        "6;" + word + " switches;0;255;0;many;sum;;" + word + " one$two$$" + word + " eight;;;;;;;";
    std::string content = "Standard KV07\r\n";
    for (int row = 1; row <= 176; ++row) {
        const auto number = std::to_string(row);
        const auto usual = std::to_string(row % 100) + ";" + word + " " + number + ";0;255;0;;;;;;;;;;;";
        content += number + ";" + (row == 2 ? two : row == 29 ? switches : usual) + "\r\n";
    }
    return content + "Anfang FS\r\nFS1 = 3\r\n\r\n";
}

struct BenchSetup {
    LanguageCode language = LanguageCode::german;
    sim::Pace pace = sim::Pace::none;
    sim::Fault fault = sim::Fault::none;
    bool simulatedInterface = false;
    const char* decoder = "kv07";
};

struct WindowBench {
    MemoryFiles files;
    MemorySettings settings;
    QtWait wait;
    SimulatedPort port;
    ProgramState state;
    WindowPrompts prompts{state.texts, [this] { wait.endProgram(); }};
    MainWindowView view;
    FixedClock clock;
    Workbench bench{state, port, wait, prompts, view, files, settings};
    ScriptedArchive archive;
    ScriptedDownloader downloader;
    ModalDriver driver;
    std::vector<PortDevice> devices{{QStringLiteral("/dev/ttyS0"), QString()},
                                    {QStringLiteral("/dev/ttyUSB0"), QStringLiteral("USB Serial")}};
    std::vector<CvSet> kept; // what vehicles held before the first write to them
    std::unique_ptr<Hauptform> window;

    explicit WindowBench(const BenchSetup& setup = {})
        : port(sim::Simulator(*sim::decoderByName(setup.decoder), setup.pace, setup.fault), 5)
    {
        state.programFolder = "program";
        state.link.portNumber = 5;
        state.userFolders.cvLists.own = "lists";
        addInstalledTexts(files, state.programFolder);
        const auto suffixes = wordsOf(".txt nl.txt en.txt es.txt fr.txt");
        const auto words = wordsOf("deutsch nederlands english castellano francais");
        for (std::size_t i = 0; i < words.size(); ++i)
            files.content[state.programFolder / ("CV_Standart_kv07" + suffixes[i])] =
                bytesOf(kv07Description(words[i]));
        state.userFolders.sheets.own = "sheets";
        const auto sheet = [](const std::string& name, const std::string& rest) {
            return bytesOf("sheet;" + name + ";\ntext;;Blatt " + name + ";\n" + rest);
        };
        files.content[state.programFolder / "FKT_bus.txt"] =
            sheet("bus", "section;\ncv;2;\ncv;29;\nready;Pre_Licht1;CV2=30;\n");
        files.content["sheets/FKT_mein.txt"] = sheet("mein", "section;\ncv;2;\n");
        files.content["sheets/FKT_alt.txt"] = sheet("alt", "models;KV09;\n");
        port.setNotice([this] { wait.wake(); });
        EXPECT_TRUE(useLanguage(bench, setup.language));
        window = std::make_unique<Hauptform>(windowSetup(setup.simulatedInterface));
        prompts.setParentWindow(window.get());
        window->show();
    }
    MainWindowSetup windowSetup(bool simulatedInterface = false)
    {
        const auto listDevices = [this] { return devices; };
        const auto keepBackup = [this](const CvSet& set) {
            kept.push_back(set);
            return KeptBackup{"lists/kept.kvr"};
        };
        return {bench, view, listDevices, {}, clock, archive, downloader, keepBackup, simulatedInterface, {}};
    }
    ~WindowBench()
    {
        window.reset();
        for (const QWidget* left : QApplication::topLevelWidgets())
            EXPECT_FALSE(left->isVisible()) << "left open: " << left->objectName().toStdString();
    }
    WindowBench(const WindowBench&) = delete;
    WindowBench& operator=(const WindowBench&) = delete;

    template <typename Control>
    Control& find(const std::string& name)
    {
        return test::find<Control>(*window, name);
    }
    QListWidget& list() { return find<QListWidget>("List1"); }
    std::string line() { return list().currentItem()->text().toStdString(); }
    // The line of a CV, which need not be the chosen one.
    std::string lineOf(int cv)
    {
        return list().item(static_cast<int>(*positionOf(state.set.list, cv)))->text().toStdString();
    }
    std::string text(const std::string& label) { return labelOf(*window, label); }
    std::string field(const std::string& name) { return fieldOf(*window, name); }
    std::string texts(const std::string& labels)
    {
        std::string all;
        for (const auto& label : wordsOf(labels))
            all += text(label) + "|";
        return all;
    }
    QAction& item(const std::string& name) { return find<QAction>(name); }
    void choose(const std::string& menuItem) { item(menuItem).trigger(); }
    void click(const std::string& button) { test::click(*window, button); }
    bool isEnabled(const std::string& name) { return find<QWidget>(name).isEnabled(); }
    int held(int cv) { return port.simulator().decoder().memory[static_cast<std::size_t>(cv) - 1]; }
    bool hasFocus(const char* name) { return window->focusWidget() == &find<QWidget>(name); }
    void activate()
    {
        window->activateWindow(); // the offscreen platform leaves this to us after a box
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }

    // What comes next: a box with this message, any window, a box whose text has a part.
    void expectBox(Message number, const char* button = "OK")
    {
        driver.expectBox(message(number), QString::fromUtf8(button));
    }
    void expect(const char* what, std::function<void(QWidget&)> act = closeIt)
    {
        driver.expect(QString::fromUtf8(what), std::move(act));
    }
    void expectBoxWith(const std::string& part)
    {
        expect(part.c_str(), [part](QWidget& box) {
            const auto told = portable(dynamic_cast<QMessageBox&>(box).text().toStdString());
            EXPECT_NE(told.find(part), std::string::npos) << told;
            box.close();
        });
    }
    QString message(Message number) { return QString::fromStdU16String(state.texts.message(number)); }

    // The KV07's list without a decoder, past the question.
    void showOfflineList()
    {
        state.link.identified = true;
        choose("mnu_kv07");
        ASSERT_EQ(list().count(), 176);
    }
    void press(Qt::Key key)
    {
        activate();
        QTest::keyClick(window.get(), key);
    }
    void chooseCv(int number)
    {
        const auto row = positionOf(state.set.list, number);
        ASSERT_TRUE(row) << number;
        list().setCurrentRow(static_cast<int>(*row));
    }
    void key(const char* control, Qt::Key key) { QTest::keyClick(&find<QWidget>(control), key); }
    // Into a field, and nothing more.
    void type(const char* name, const char* digits)
    {
        auto& field = find<QLineEdit>(name);
        field.selectAll();
        QTest::keyClicks(&field, QString::fromLatin1(digits));
    }
    void change(int cv, int value)
    {
        chooseCv(cv);
        find<QLineEdit>("CV_Wert").setText(QString::number(value));
        click("Enter_Taste");
        ASSERT_EQ(state.set.table.value(cv), value);
    }
};

// The dialogs look at the real disk, the program at the files of the bench: a file is on both.
struct FilesBench : WindowBench {
    QTemporaryDir folder;

    FilesBench()
    {
        state.userFolders.cvLists.own = folder.path().toStdString();
        state.recovery.file = "recovery.kvr";
        put("bus.kvr", listFile("1;42;Adresse;1;126;3;\r\n48;5;x;0;255;9;\r\n"));
    }
    std::string pathOf(const std::string& name) const
    {
        return folder.filePath(QString::fromStdString(name)).toStdString();
    }
    void put(const std::string& name, const std::string& content)
    {
        QFile onDisk(QString::fromStdString(pathOf(name)));
        ASSERT_TRUE(onDisk.open(QIODevice::WriteOnly));
        onDisk.write(content.data(), static_cast<qint64>(content.size()));
        files.content[pathOf(name)] = bytesOf(content);
    }
    bool holds(const std::string& name, const std::string& part)
    {
        const Bytes& content = files.content[pathOf(name)];
        return std::string(content.begin(), content.end()).find(part) != std::string::npos;
    }
    bool isKept() const { return files.content.count("recovery.kvr") != 0; }

    // The file dialog with this filter or proposed name; nothing chosen cancels it.
    void expectDialog(const std::string& what, const std::string& chosen)
    {
        expect("file dialog", [this, what, chosen](QWidget& box) {
            auto& dialog = dynamic_cast<QFileDialog&>(box);
            EXPECT_EQ(dialog.objectName().toStdString(), "CommonDialog1");
            auto& name = test::find<QLineEdit>(dialog, "fileNameEdit");
            EXPECT_TRUE(name.text().toStdString() == what ||
                        dialog.nameFilters().contains(QString::fromStdString(what)))
                << name.text().toStdString();
            name.setText(QString::fromStdString(chosen));
            QMetaObject::invokeMethod(&dialog, chosen.empty() ? "reject" : "accept");
        });
    }
    void openBus()
    {
        expectDialog("*.kvr", "bus.kvr");
        choose("mnu_open");
    }
};

} // namespace karvo::test
