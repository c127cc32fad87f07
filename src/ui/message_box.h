// Boxes with a text and buttons, in the words of the language.
#pragma once

#include "language/language_tables.h"

#include <QMessageBox>

namespace karvo
{

// The text is shown to the letter: a path may look like markup. Where the screen has no room for all of it,
// it scrolls, and the buttons stay in sight.
class MessageBox : public QMessageBox
{
    Q_OBJECT

public:
    MessageBox(Icon icon, const QString& title, const Text& text, StandardButtons buttons, QWidget* owner);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void scrollText(QLabel& text);
};

// Texts stay as the toolkit has them where the tables have none: before a language is loaded, and with a
// short language file.
void nameBoxButton(QMessageBox& box, QMessageBox::StandardButton button, const LanguageTables& texts,
                   Caption caption);
QString boxTitle(const LanguageTables& texts, Caption caption);

} // namespace karvo
