#include "ui/question_box.h"

#include "ui/captions.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QMetaEnum>

namespace karvo
{

void nameBoxButton(QMessageBox& box, QMessageBox::StandardButton button, const LanguageTables& texts,
                   Caption caption)
{
    QAbstractButton& named = *box.button(button);
    named.setObjectName(
        QString::fromLatin1(QMetaEnum::fromType<QMessageBox::StandardButtons>().valueToKey(button)));
    const Text text = texts.caption(caption);
    if (!text.empty())
        named.setText(buttonText(text));
}

QString boxTitle(const LanguageTables& texts, Caption caption)
{
    const Text text = texts.caption(caption);
    return text.empty() ? QCoreApplication::applicationName() : qtText(text);
}

QuestionBox::QuestionBox(const LanguageTables& texts, const Text& question, QWidget* owner)
    : QMessageBox(Question, boxTitle(texts, Caption::questionTitle), qtText(question), Yes | No, owner)
{
    setTextFormat(Qt::PlainText); // a path may look like markup
    setDefaultButton(No);
    setEscapeButton(No);
    nameBoxButton(*this, Yes, texts, Caption::yesButton);
    nameBoxButton(*this, No, texts, Caption::noButton);
}

} // namespace karvo
