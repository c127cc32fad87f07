// The menu bar of the main window, built from the menu tree.
#pragma once

#include "language/language_code.h"
#include "language/language_tables.h"

#include <QObject>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class QAction;
class QActionGroup;
class QMenu;
class QMenuBar;

namespace karvo
{

struct MenuEntry;

struct OwnItem {
    std::string name;
    Text caption;
    std::optional<Text> whyNot; // it can not be chosen for this reason
};

class MainMenu : public QObject
{
    Q_OBJECT

public:
    explicit MainMenu(QMenuBar* bar);

    // An item, or what opens a menu. It must be in the menu tree.
    QAction* action(std::string_view name) const;

    void applyCaptions(const LanguageTables& texts);

    // Ticks the item of the language and clears the other four.
    void markLanguage(LanguageCode code);

    // A current CV is one of a list.
    void setAvailable(bool lineBusy, bool hasList, bool hasCurrentCv);

    // Disables an item for a reason, which it tells; without one it stays as it is and tells nothing.
    void setReason(std::string_view name, const std::optional<Text>& reason);

    // The person's own function sheets, at the end of their menu.
    void showOwnItems(const std::vector<OwnItem>& items, bool lineBusy);

signals:
    // An item that has a handler.
    void chosen(const karvo::MenuEntry& item);
    void ownChosen(const std::string& name);

protected:
    // A disabled item of the bar is never highlighted, so its reason is told when the mouse comes over it.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Item {
        const MenuEntry* entry;
        QAction* action;
        bool opensMenu;
    };

    static void addSeparator(QMenu* menu, const MenuEntry& entry);
    QMenu* addMenu(QMenuBar* bar, QMenu* parent, const MenuEntry& entry);
    void addItem(QMenuBar* bar, QMenu* parent, const MenuEntry& entry);
    void addLanguages();
    QAction* addOwnItem();

    std::vector<Item> items_;
    QActionGroup* languages_;
    QAction* ownSeparator_;
    std::vector<QAction*> ownItems_;
};

} // namespace karvo
