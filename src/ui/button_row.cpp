#include "ui/button_row.h"

#include <QEvent>
#include <QKeyEvent>

namespace karvo
{

void WriteButton::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        event->accept(); // nor does it press another one
    else
        QPushButton::keyPressEvent(event);
}

QPushButton* ButtonRow::add(const char* name, const QString& text, ButtonRole role)
{
    if (text.isEmpty() && (role == AcceptRole || role == RejectRole))
        return take(*addButton(role == AcceptRole ? Ok : Cancel), name, role);
    return take(*addButton(text, role), name, role);
}

QPushButton* ButtonRow::addWriting(const char* name, const QString& text, ButtonRole role)
{
    auto* const button = new WriteButton(text, this);
    addButton(button, role);
    return take(*button, name, role);
}

QPushButton* ButtonRow::take(QPushButton& button, const char* name, ButtonRole role)
{
    button.setObjectName(QString::fromLatin1(name));
    button.setAutoDefault(false);
    if (role ==
        RejectRole) // a click does not leave the field first, which would be judged though it is given up
        button.setFocusPolicy(Qt::TabFocus);
    return &button;
}

// Past the button box's own handling, which makes one that accepts the default.
bool ButtonRow::event(QEvent* event)
{
    return event->type() == QEvent::Show ? QWidget::event(event) // NOLINT(bugprone-parent-virtual-call)
                                         : QDialogButtonBox::event(event);
}

} // namespace karvo
