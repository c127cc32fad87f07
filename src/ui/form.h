// What every window of the program stands on.
#pragma once

#include "language/language_tables.h"
#include "program/prompts.h"
#include "ui/button_row.h"

#include <QDialog>
#include <QHash>
#include <QSize>

#include <functional>

class QAction;
class QLineEdit;
class QMenu;
class QMenuBar;
class QVBoxLayout;

namespace karvo
{

class ContentArea;

// A column of content, which scrolls where the screen is too small, above a row of buttons, which stay in
// sight. Tab goes through all controls as the layouts hold them; Enter ends an entry and presses the default
// button, where there is one, never one that writes to the vehicle. The window with its frame fits its
// screen, and `WindowPlaces` finds it by its name.
class Form : public QDialog
{
    Q_OBJECT

public:
    // `texts` outlives it.
    Form(const LanguageTables& texts, const char* name, Caption title, QWidget* parent);
    Form(const LanguageTables& texts, const char* name, const QString& title, QWidget* parent);
    ~Form() override;

    void setVisible(bool visible) override;
    void done(int result) override;
    void reject() override;

protected:
    QVBoxLayout& column() { return *column_; }

    // Below the column. One that rejects closes the window as Escape and the frame's button do; one that
    // accepts closes it too.
    QPushButton* addButton(const char* name, Caption caption, ButtonRow::ButtonRole role);
    QPushButton* addWriting(const char* name, Caption caption,
                            ButtonRow::ButtonRole role = ButtonRow::ActionRole);

    // Above the column, in a menu bar.
    QMenu& addMenu(Caption caption);
    QAction* addItem(QMenu& menu, const char* name, Caption caption, std::function<void()> act);

    // The size that it opens in for the first time, as far as the screen has room; otherwise what its content
    // asks for.
    void setUsualSize(QSize usual) { usual_ = usual; }

    // When an entry ends: by Enter, or as the keyboard goes elsewhere. Not when the window is being closed,
    // and once for what was refused.
    void whenEntered(QLineEdit& field, std::function<void()> act);

    // Tells why a field's content can not be taken, and puts the keyboard back into the field.
    void refuse(QLineEdit& field, const Text& why, Prompts& prompts);

    QString shown(Caption caption) const;    // for labels and titles
    QString onButton(Caption caption) const; // for buttons, check boxes and menus

    // Whether closing needs no further word. False keeps the window open.
    virtual bool mayClose() { return true; }

    void keyPressEvent(QKeyEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void showEvent(QShowEvent* event) override;

    const LanguageTables& texts_;

private:
    void openInUsualSize();

    QVBoxLayout* outer_;
    QVBoxLayout* column_;
    ContentArea* area_;
    ButtonRow* buttons_;
    QMenuBar* menus_ = nullptr;
    QSize usual_;
    QHash<const QLineEdit*, QString> refused_; // what a field held when it was refused last
    bool refusing_ = false;                    // a refusal is being shown
    bool closing_ = false;
};

} // namespace karvo
