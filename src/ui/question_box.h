// The Yes/No box, and the texts that boxes take from the language.
#pragma once

#include "language/language_tables.h"

#include <QMessageBox>

namespace karvo
{

// Texts stay as the toolkit has them where the tables have none: before a language is loaded, and with a
// short language file.
void nameBoxButton(QMessageBox& box, QMessageBox::StandardButton button, const LanguageTables& texts,
                   Caption caption);
QString boxTitle(const LanguageTables& texts, Caption caption);

// No is the default button; closing the box is No.
class QuestionBox : public QMessageBox
{
    Q_OBJECT

public:
    QuestionBox(const LanguageTables& texts, const Text& question, QWidget* owner);
};

} // namespace karvo
