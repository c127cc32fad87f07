// The buttons below a window's content, in the platform's order.
#pragma once

#include <QDialogButtonBox>
#include <QPushButton>

namespace karvo
{

// One that writes to the vehicle: Enter, which ends an entry, never presses it.
class WriteButton : public QPushButton
{
    Q_OBJECT

public:
    using QPushButton::QPushButton;

protected:
    void keyPressEvent(QKeyEvent* event) override;
};

// None of the buttons is pressed by Enter but the one that was made the default, and the one that has the
// keyboard.
class ButtonRow : public QDialogButtonBox
{
    Q_OBJECT

public:
    using QDialogButtonBox::QDialogButtonBox;

    // An empty text leaves the toolkit's own on a button that accepts or rejects.
    QPushButton* add(const char* name, const QString& text, ButtonRole role);
    QPushButton* addWriting(const char* name, const QString& text, ButtonRole role = ActionRole);

protected:
    bool event(QEvent* event) override;

private:
    QPushButton* take(QPushButton& button, const char* name, ButtonRole role);
};

} // namespace karvo
