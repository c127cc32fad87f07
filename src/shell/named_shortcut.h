// A key that does what no menu item does.
#pragma once

#include <QShortcut>
#include <QWidget>

namespace karvo
{

// It works wherever the keyboard is in the widget's window, for as long as the receiver is there.
template <typename Receiver, typename Handler>
void addShortcut(QWidget& widget, const QKeySequence& keys, const char* name, Receiver* receiver,
                 Handler handler)
{
    auto* const shortcut = new QShortcut(keys, &widget);
    shortcut->setObjectName(QString::fromLatin1(name));
    QObject::connect(shortcut, &QShortcut::activated, receiver, handler);
}

} // namespace karvo
