#include "shell/main_menu.h"

#include "shell/menu_tree.h"
#include "shell/window_bench.h"

#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>

#include <fstream>

namespace karvo::test
{

// Every item below a widget, as the golden file has it; separators are counted.
static std::string menuText(const QWidget& menu, int depth, int& separators)
{
    std::string text;
    for (const QAction* action : menu.actions()) {
        const std::string name = action->objectName().toStdString();
        if (action->isSeparator()) {
            EXPECT_EQ(name, "mnu_space" + std::to_string(++separators));
            continue;
        }
        const auto caption = action->text().replace(QStringLiteral("&&"), QStringLiteral("&")).toStdString();
        text += std::string(static_cast<std::size_t>(2 * depth), ' ') + name + ": " + caption + "\n";
        if (action->menu() != nullptr)
            text += menuText(*action->menu(), depth + 1, separators);
    }
    return text;
}

// How many are told when the item is chosen; its menu and its group are among them.
struct Connections : QAction {
    static int of(const QAction& item) { return (item.*&Connections::receivers)(SIGNAL(triggered(bool))); }
};

TEST(MainMenu, StandsInDesignOrderAndWhatCanBeChosenHasAReceiver)
{
    WindowBench bench;
    int separators = 0;
    std::ifstream file(std::filesystem::path(KARVO_SOURCE_FOLDER) / "tests" / "data" / "menu.txt");
    EXPECT_EQ(menuText(*bench.window->menuBar(), 0, separators),
              std::string(std::istreambuf_iterator<char>(file), {}));
    bench.showOfflineList();
    bench.chooseCv(2);
    QMenuBar bare;
    const MainMenu unconnected(&bare);
    const auto notBuilt = bench.state.texts.caption(Caption::notAvailable);
    for (const MenuEntry& entry : menuTree()) {
        const std::string name(entry.name);
        if (name.empty() || bench.item(name).menu() != nullptr)
            continue;
        const bool isBuilt = availabilityOf(name) != Availability::notBuilt;
        const QAction& item = bench.item(name);
        EXPECT_EQ(Connections::of(item) > Connections::of(*unconnected.action(name)), isBuilt) << name;
        EXPECT_EQ(item.toolTip().toStdU16String() == notBuilt, !isBuilt) << name;
        EXPECT_EQ(item.isEnabled(), isBuilt && item.statusTip().isEmpty()) << name;
    }
}

TEST(MainMenu, EnablesWhatNeedsAListOrACvOnceOneStandsAndSaysWhyAnEditorDoesNotOpen)
{
    WindowBench bench({.language = LanguageCode::spanish});
    const auto enabled = [&] {
        std::string names;
        for (const auto& name :
             wordsOf("index cv_datei write_all write_single read_all bremsen CI46 FS_Faller Sg_Faller"))
            names += bench.item("mnu_" + name).isEnabled() ? name + " " : "";
        return names;
    };
    EXPECT_EQ(enabled(), "read_all Sg_Faller "); // the last one says itself what is missing
    EXPECT_EQ(bench.item("mnu_bremsen").toolTip(), bench.message(Message::editorNeedsList));
    bench.showOfflineList();
    EXPECT_EQ(enabled(), "index cv_datei write_all read_all bremsen CI46 FS_Faller Sg_Faller ");
    bench.chooseCv(2);
    EXPECT_TRUE(bench.item("mnu_write_single").isEnabled());
    bench.state.set.profile.model = Model::receiver;
    bench.view.listChanged();
    EXPECT_EQ(enabled(), "index cv_datei write_all write_single read_all ");
    bench.choose("mnu_english");
    EXPECT_TRUE(bench.item("mnu_english").isChecked() && !bench.item("mnu_spanisch").isChecked());
    QString shown;
    QObject::connect(bench.window->statusBar(), &QStatusBar::messageChanged,
                     [&](const QString& text) { shown = text; });
    // A menu of the bar tells nothing by itself while it is disabled.
    QMenuBar& bar = *bench.window->menuBar();
    bench.item("mnu_vergleichen").setStatusTip(bench.item("mnu_bremsen").statusTip());
    bench.item("mnu_vergleichen").setEnabled(false);
    QTest::mouseMove(&bar, bar.actionGeometry(&bench.item("mnu_vergleichen")).center());
    EXPECT_TRUE(QTest::qWaitFor([&] { return shown.startsWith(QStringLiteral("Only KV04")); }));
    bench.choose("mnu_clear");
    EXPECT_EQ(enabled(), "read_all Sg_Faller ");
}

} // namespace karvo::test
