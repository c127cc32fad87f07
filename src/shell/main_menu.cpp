#include "shell/main_menu.h"

#include "shell/menu_tree.h"
#include "ui/captions.h"

#include <QAction>
#include <QActionGroup>
#include <QCoreApplication>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QStatusTipEvent>

#include <algorithm>

namespace karvo
{

namespace
{

QString objectNameOf(std::string_view name)
{
    return QString::fromLatin1(name.data(), static_cast<qsizetype>(name.size()));
}

constexpr std::string_view ownSheetsMenu = "mnu_fzg";

void tell(QAction& item, const QString& words)
{
    item.setStatusTip(words);
    item.setToolTip(words);
}

} // namespace

MainMenu::MainMenu(QMenuBar* bar) : QObject(bar), languages_(new QActionGroup(this))
{
    const auto tree = menuTree();
    std::vector<QMenu*> open; // the menus around the entry, outermost first
    for (std::size_t i = 0; i < tree.size(); ++i) {
        const auto depth = static_cast<std::size_t>(tree[i].depth);
        open.resize(depth);
        QMenu* const parent = open.empty() ? nullptr : open.back();
        if (tree[i].isSeparator())
            addSeparator(parent, tree[i]);
        else if (i + 1 < tree.size() && tree[i + 1].depth > tree[i].depth)
            open.push_back(addMenu(bar, parent, tree[i]));
        else
            addItem(bar, parent, tree[i]);
    }
    addLanguages();
    ownSeparator_ = action(ownSheetsMenu)->menu()->addSeparator();
    ownSeparator_->setObjectName(QStringLiteral("mnu_space_own"));
    bar->installEventFilter(this);
}

QAction* MainMenu::action(std::string_view name) const
{
    const auto found = std::find_if(items_.begin(), items_.end(),
                                    [&](const Item& item) { return item.entry->name == name; });
    Q_ASSERT(found != items_.end());
    return found->action;
}

void MainMenu::applyCaptions(const LanguageTables& texts)
{
    const QString notAvailable = qtText(texts.caption(Caption::notAvailable));
    for (const Item& item : items_) {
        item.action->setText(buttonText(texts.menuCaption(item.entry->caption)));
        const bool missing = !item.opensMenu && item.entry->handler == nullptr;
        tell(*item.action, missing ? notAvailable : QString());
    }
}

void MainMenu::markLanguage(LanguageCode code)
{
    action(languageFiles(code).menuItem)->setChecked(true);
}

void MainMenu::setAvailable(bool lineBusy, bool hasList, bool hasCurrentCv)
{
    const auto isAvailable = [&](const MenuEntry& entry) {
        switch (entry.availability) {
        case Availability::always:
            return true;
        case Availability::idle:
            return !lineBusy;
        case Availability::withList:
            return !lineBusy && hasList;
        case Availability::withCurrentCv:
            return !lineBusy && hasCurrentCv;
        }
        return false;
    };
    for (const Item& item : items_) {
        if (!item.opensMenu)
            item.action->setEnabled(item.entry->handler != nullptr && isAvailable(*item.entry));
    }
}

void MainMenu::setReason(std::string_view name, const std::optional<Text>& reason)
{
    QAction& item = *action(name);
    if (reason)
        item.setEnabled(false);
    tell(item, reason ? qtText(*reason) : QString());
}

void MainMenu::showOwnItems(const std::vector<OwnItem>& items, bool lineBusy)
{
    ownSeparator_->setVisible(!items.empty());
    while (ownItems_.size() < items.size())
        ownItems_.push_back(addOwnItem());
    for (std::size_t i = 0; i < items.size(); ++i) {
        const OwnItem& item = items[i];
        QAction& action = *ownItems_[i];
        action.setObjectName(QStringLiteral("mnu_own_") + QString::fromStdString(item.name));
        action.setText(buttonText(item.caption));
        action.setData(QByteArray::fromStdString(item.name));
        action.setEnabled(!lineBusy && !item.whyNot);
        tell(action, item.whyNot ? qtText(*item.whyNot) : QString());
    }
}

QAction* MainMenu::addOwnItem()
{
    QAction* const item = action(ownSheetsMenu)->menu()->addAction(QString());
    item->setMenuRole(QAction::NoRole);
    connect(item, &QAction::triggered, this,
            [this, item] { emit ownChosen(item->data().toByteArray().toStdString()); });
    return item;
}

bool MainMenu::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::MouseMove) {
        auto* const bar = qobject_cast<QMenuBar*>(watched);
        const QAction* const item = bar->actionAt(static_cast<QMouseEvent*>(event)->position().toPoint());
        if (item != nullptr && !item->isEnabled()) {
            QStatusTipEvent tip(item->statusTip());
            QCoreApplication::sendEvent(bar, &tip);
        }
    }
    return QObject::eventFilter(watched, event);
}

void MainMenu::addSeparator(QMenu* menu, const MenuEntry& entry)
{
    menu->addSeparator()->setObjectName(objectNameOf(entry.name));
}

QMenu* MainMenu::addMenu(QMenuBar* bar, QMenu* parent, const MenuEntry& entry)
{
    QMenu* const menu = parent != nullptr ? parent->addMenu(QString()) : bar->addMenu(QString());
    menu->setObjectName(objectNameOf(entry.name));
    menu->setToolTipsVisible(true);
    menu->menuAction()->setObjectName(objectNameOf(entry.name));
    items_.push_back({&entry, menu->menuAction(), true});
    return menu;
}

void MainMenu::addItem(QMenuBar* bar, QMenu* parent, const MenuEntry& entry)
{
    QAction* const item = parent != nullptr ? parent->addAction(QString()) : bar->addAction(QString());
    item->setObjectName(objectNameOf(entry.name));
    item->setMenuRole(QAction::NoRole); // it stays where it stands, on every system
    item->setShortcut(QKeySequence(QString::fromLatin1(entry.keys)));
    if (entry.handler != nullptr)
        connect(item, &QAction::triggered, this, [this, &entry] { emit chosen(entry); });
    items_.push_back({&entry, item, false});
}

void MainMenu::addLanguages()
{
    languages_->setExclusive(true);
    for (const LanguageCode code : allLanguages) {
        QAction* const item = action(languageFiles(code).menuItem);
        item->setCheckable(true);
        languages_->addAction(item);
    }
}

} // namespace karvo
