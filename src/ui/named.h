// What every control of a window gets: its name in code, and one for whoever listens instead of looking.
#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QString>

namespace karvo
{

// A new control. `spoken`: where the control has no text of its own that tells what it is.
template <typename Control>
Control* named(const char* name, QWidget* parent, const QString& spoken = {})
{
    auto* const control = new Control(parent);
    control->setObjectName(QString::fromLatin1(name));
    control->setAccessibleName(spoken);
    return control;
}

// One that shows a text: a button, a check box. The text is as `buttonText` gives it.
template <typename Control>
Control* captioned(const char* name, QWidget* parent, const QString& text)
{
    auto* const control = named<Control>(name, parent);
    control->setText(text);
    return control;
}

// An entry for characters that the system's files can hold, as many as that; 0: as many as one likes.
QLineEdit* entryField(const char* name, QWidget* parent, int mostCharacters = 0);

// Plain text over as many lines as it needs: it may come from a file, and look like markup.
QLabel* textLabel(const char* name, QWidget* parent, const QString& text = {});

// The label of a control, which is spoken with it. `text` as it is shown, with a single "&" where it has one.
QLabel* labelFor(QWidget& control, const QString& text);

} // namespace karvo
