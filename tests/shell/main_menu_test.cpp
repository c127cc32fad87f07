#include "shell/main_menu.h"

#include "shell/menu_tree.h"
#include "shell/window_bench.h"

#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>

#include <fstream>

namespace karvo::test
{

// Every item below a widget, as the golden file has it; the separators' names are collected.
static std::string menuText(const QWidget& menu, int depth, std::vector<std::string>& separators)
{
    std::string text;
    for (const QAction* action : menu.actions()) {
        const std::string name = action->objectName().toStdString();
        if (action->isSeparator()) {
            separators.push_back(name);
            continue;
        }
        const auto caption = action->text().replace(QStringLiteral("&&"), QStringLiteral("&")).toStdString();
        text += std::string(static_cast<std::size_t>(2 * depth), ' ') + name + ": " + caption + "\n";
        if (action->menu() != nullptr) {
            EXPECT_EQ(action->menu()->objectName().toStdString(), name);
            text += menuText(*action->menu(), depth + 1, separators);
        }
    }
    return text;
}

// How many are told when the item is chosen; its menu and its group are among them.
struct Connections : QAction {
    static int of(const QAction& item) { return (item.*&Connections::receivers)(SIGNAL(triggered(bool))); }
};

TEST(MainMenu, StandsInDesignOrderWithItsCaptions)
{
    WindowBench bench;
    std::vector<std::string> separators;
    std::ifstream file(std::filesystem::path(KARVO_SOURCE_FOLDER) / "tests" / "data" / "menu.txt");
    EXPECT_EQ(menuText(*bench.window->menuBar(), 0, separators),
              std::string(std::istreambuf_iterator<char>(file), {}));
    ASSERT_GE(separators.size(), 10U);
    for (std::size_t i = 0; i < separators.size(); ++i)
        EXPECT_EQ(separators[i], "mnu_space" + std::to_string(i + 1));
}

TEST(MainMenu, WhatCanBeChosenHasAReceiverAndWhatIsNotBuiltSaysSo)
{
    WindowBench bench;
    bench.showOfflineList();
    bench.chooseCv(2);
    QMenuBar bare;
    const MainMenu unconnected(&bare);
    const auto notBuilt = bench.state.texts.caption(Caption::notAvailable);
    const auto tree = menuTree();
    for (std::size_t i = 0; i < tree.size(); ++i) {
        const std::string name(tree[i].name);
        const bool isMenu = i + 1 < tree.size() && tree[i + 1].depth > tree[i].depth;
        if (name.empty() || isMenu)
            continue;
        const bool isBuilt = availabilityOf(name) != Availability::notBuilt;
        const QAction& item = bench.item(name);
        EXPECT_EQ(Connections::of(item) > Connections::of(*unconnected.action(name)), isBuilt) << name;
        EXPECT_EQ(item.toolTip().toStdU16String() == notBuilt, !isBuilt) << name;
        EXPECT_EQ(item.isEnabled(), isBuilt && item.statusTip().isEmpty()) << name;
    }
}

TEST(MainMenu, TellsTheReasonWhenTheMouseComesOverADisabledItemOfTheBar)
{
    WindowBench bench;
    QMenuBar& bar = *bench.window->menuBar();
    QString shown;
    QObject::connect(bench.window->statusBar(), &QStatusBar::messageChanged,
                     [&](const QString& text) { shown = text; });
    bench.item("mnu_vergleichen").setStatusTip(QStringLiteral("not now"));
    bench.item("mnu_vergleichen").setEnabled(false);
    QTest::mouseMove(&bar, bar.actionGeometry(&bench.item("mnu_vergleichen")).center());
    EXPECT_TRUE(QTest::qWaitFor([&] { return shown == QStringLiteral("not now"); }));
}

TEST(MainMenu, EnablesWhatNeedsAListOrACvOnceOneStands)
{
    WindowBench bench;
    const auto enabled = [&] {
        std::string names;
        for (const auto& name :
             wordsOf("index suchen_generell standart cv_datei write_all write_single read_all"))
            names += bench.item("mnu_" + name).isEnabled() ? name + " " : "";
        return names;
    };
    EXPECT_EQ(enabled(), "read_all ");
    bench.showOfflineList();
    EXPECT_EQ(enabled(), "index suchen_generell standart cv_datei write_all read_all ");
    bench.chooseCv(2);
    EXPECT_EQ(enabled(), "index suchen_generell standart cv_datei write_all write_single read_all ");
    bench.choose("mnu_clear");
    EXPECT_EQ(enabled(), "read_all ");
}

TEST(MainMenu, SaysWhyAnEditorDoesNotOpen)
{
    WindowBench bench;
    auto& braking = bench.item("mnu_bremsen");
    EXPECT_EQ(braking.toolTip(), bench.message(Message::editorNeedsList));
    EXPECT_TRUE(bench.item("mnu_Sg_Faller").isEnabled()) << "it says itself what is missing";
    bench.showOfflineList();
    EXPECT_TRUE(braking.isEnabled() && braking.statusTip().isEmpty());
    bench.state.set.profile.model = Model::receiver;
    bench.view.listChanged();
    EXPECT_TRUE(braking.statusTip().startsWith(QStringLiteral("Das gibt es nur bei KV04")));
    for (const auto& name : wordsOf("mnu_bremsen mnu_CI46 mnu_FS_Faller mnu_Eg_Faller mnu_fahrstufen"))
        EXPECT_FALSE(bench.item(name).isEnabled()) << name;
    EXPECT_TRUE(bench.item("mnu_dcc_adresse").isEnabled());
    bench.choose("mnu_english");
    EXPECT_TRUE(braking.toolTip().startsWith(QStringLiteral("Only KV04")));
}

TEST(MainMenu, MarksTheLanguageInUse)
{
    WindowBench bench({.language = LanguageCode::spanish});
    const auto marked = [&] {
        std::string names;
        for (const auto& name : wordsOf("mnu_german mnu_dutch mnu_english mnu_spanisch mnu_franz"))
            names += bench.item(name).isChecked() ? name : "";
        return names;
    };
    EXPECT_EQ(marked(), "mnu_spanisch");
    bench.choose("mnu_franz");
    EXPECT_EQ(marked(), "mnu_franz");
}

} // namespace karvo::test
