#include "ui/editor_dialog.h"

#include "ui/captions.h"
#include "ui/message_box.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QSlider>

namespace karvo
{

QStringList EditorDialog::entries() const
{
    QStringList held;
    for (const auto* const field : findChildren<QLineEdit*>()) // those of the spin boxes too
        held.append(field->text());
    for (const auto* const text : findChildren<QPlainTextEdit*>())
        held.append(text->toPlainText());
    for (const auto* const choice : findChildren<QComboBox*>())
        held.append(QString::number(choice->currentIndex()));
    for (const auto* const slider : findChildren<QSlider*>())
        held.append(QString::number(slider->value()));
    for (const auto* const button : findChildren<QAbstractButton*>()) {
        if (button->isCheckable())
            held.append(button->isChecked() ? QStringLiteral("1") : QStringLiteral("0"));
    }
    return held;
}

bool EditorDialog::mayClose()
{
    if (asking_)
        return false;
    if (!holdsWork())
        return true;
    const QScopedValueRollback once(asking_, true);
    MessageBox box(QMessageBox::Question, boxTitle(texts_, Caption::questionTitle),
                   texts_.message(Message::discardQuestion), QMessageBox::NoButton, this);
    box.setObjectName(QStringLiteral("DiscardQuestion"));
    auto* const keep = box.addButton(onButton(Caption::keepEditingButton), QMessageBox::RejectRole);
    const auto* const discard = box.addButton(onButton(Caption::discardButton), QMessageBox::DestructiveRole);
    box.setDefaultButton(keep);
    box.setEscapeButton(keep);
    box.exec();
    return box.clickedButton() == discard;
}

} // namespace karvo
