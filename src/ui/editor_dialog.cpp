#include "ui/editor_dialog.h"

#include "ui/captions.h"
#include "ui/question_box.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QPushButton>

namespace karvo
{

EditorDialog::EditorDialog(const LanguageTables& texts, QWidget* parent) : QDialog(parent), texts_(texts)
{
}

void EditorDialog::reject()
{
    if (!holdsWork() || agreesToDiscard())
        QDialog::reject();
}

QStringList EditorDialog::entries() const
{
    QStringList held;
    for (const auto* const field : findChildren<QLineEdit*>())
        held.append(field->text());
    for (const auto* const button : findChildren<QAbstractButton*>()) {
        if (button->isCheckable())
            held.append(button->isChecked() ? QStringLiteral("1") : QStringLiteral("0"));
    }
    return held;
}

bool EditorDialog::agreesToDiscard()
{
    QMessageBox box(QMessageBox::Question, boxTitle(texts_, Caption::questionTitle),
                    qtText(texts_.message(Message::discardQuestion)), QMessageBox::NoButton, this);
    box.setObjectName(QStringLiteral("DiscardQuestion"));
    auto* const keep =
        box.addButton(buttonText(texts_.caption(Caption::keepEditingButton)), QMessageBox::RejectRole);
    const auto* const discard =
        box.addButton(buttonText(texts_.caption(Caption::discardButton)), QMessageBox::DestructiveRole);
    box.setDefaultButton(keep);
    box.setEscapeButton(keep);
    box.exec();
    return box.clickedButton() == discard;
}

} // namespace karvo
