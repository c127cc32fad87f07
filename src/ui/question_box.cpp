#include "ui/question_box.h"

namespace karvo
{

QuestionBox::QuestionBox(const LanguageTables& texts, const Text& question, QWidget* owner)
    : MessageBox(Question, boxTitle(texts, Caption::questionTitle), question, Yes | No, owner)
{
    setDefaultButton(No);
    setEscapeButton(No);
    nameBoxButton(*this, Yes, texts, Caption::yesButton);
    nameBoxButton(*this, No, texts, Caption::noButton);
}

} // namespace karvo
