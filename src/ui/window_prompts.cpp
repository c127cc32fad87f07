#include "ui/window_prompts.h"

#include "ui/captions.h"
#include "ui/typed_text.h"

#include <QAbstractItemView>
#include <QCoreApplication>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

namespace karvo
{

namespace
{

QMessageBox::Icon boxIcon(PromptIcon icon)
{
    switch (icon) {
    case PromptIcon::none:
        break;
    case PromptIcon::information:
        return QMessageBox::Information;
    case PromptIcon::warning:
        return QMessageBox::Warning;
    case PromptIcon::stop:
        return QMessageBox::Critical;
    }
    return QMessageBox::NoIcon;
}

} // namespace

WindowPrompts::WindowPrompts(const LanguageTables& texts, std::function<void()> endWaits)
    : texts_(texts), endWaits_(std::move(endWaits))
{
}

void WindowPrompts::message(const Text& text, PromptIcon icon)
{
    if (ended_)
        return;
    const bool bad = icon == PromptIcon::warning || icon == PromptIcon::stop;
    QMessageBox box(boxIcon(icon), titled(bad ? Caption::errorTitle : Caption::informationTitle),
                    qtText(text), QMessageBox::Ok, parent_);
    box.setTextFormat(Qt::PlainText); // a path may look like markup
    nameButton(box, QMessageBox::Ok, Caption::okButton);
    box.exec();
}

bool WindowPrompts::question(const Text& text)
{
    if (ended_)
        return false;
    QMessageBox box(QMessageBox::Question, titled(Caption::questionTitle), qtText(text),
                    QMessageBox::Yes | QMessageBox::No, parent_);
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(QMessageBox::No);
    box.setEscapeButton(QMessageBox::No);
    nameButton(box, QMessageBox::Yes, Caption::yesButton);
    nameButton(box, QMessageBox::No, Caption::noButton);
    return box.exec() == QMessageBox::Yes && !ended_;
}

std::optional<Text> WindowPrompts::input(const Text& title, const Text& prompt, const Text& initial)
{
    if (ended_)
        return std::nullopt;
    QInputDialog dialog(parent_);
    dialog.setWindowTitle(qtText(title));
    dialog.setLabelText(buttonText(prompt));
    dialog.setTextValue(qtText(initial));
    nameButtons(dialog);
    if (auto* const field = dialog.findChild<QLineEdit*>()) {
        field->setValidator(new Windows1252Validator(field));
        field->setAccessibleName(qtText(prompt));
    }
    if (dialog.exec() != QDialog::Accepted || ended_)
        return std::nullopt;
    return typedText(dialog.textValue());
}

std::optional<std::size_t> WindowPrompts::choice(const Text& title, const Text& prompt,
                                                 const std::vector<Text>& options, std::size_t current)
{
    if (ended_ || current >= options.size())
        return std::nullopt;
    QStringList items;
    for (const Text& option : options)
        items.append(qtText(option));
    QInputDialog dialog(parent_);
    dialog.setWindowTitle(qtText(title));
    dialog.setLabelText(buttonText(prompt));
    dialog.setOption(QInputDialog::UseListViewForComboBoxItems); // all of them in view
    dialog.setComboBoxItems(items);
    dialog.setTextValue(items[static_cast<qsizetype>(current)]);
    nameButtons(dialog);
    if (auto* const list = dialog.findChild<QAbstractItemView*>())
        list->setAccessibleName(qtText(prompt));
    if (dialog.exec() != QDialog::Accepted || ended_)
        return std::nullopt;
    return static_cast<std::size_t>(items.indexOf(dialog.textValue()));
}

void WindowPrompts::endProgram()
{
    ended_ = true;
    endWaits_();
    QCoreApplication::exit();
}

void WindowPrompts::nameButton(QMessageBox& box, int button, Caption caption) const
{
    const Text text = texts_.caption(caption);
    if (!text.empty())
        box.button(static_cast<QMessageBox::StandardButton>(button))->setText(buttonText(text));
}

void WindowPrompts::nameButtons(QInputDialog& dialog) const
{
    if (const auto ok = texts_.caption(Caption::okButton); !ok.empty())
        dialog.setOkButtonText(buttonText(ok));
    if (const auto cancel = texts_.caption(Caption::cancelButton); !cancel.empty())
        dialog.setCancelButtonText(buttonText(cancel));
}

QString WindowPrompts::titled(Caption caption) const
{
    const Text text = texts_.caption(caption);
    return text.empty() ? QCoreApplication::applicationName() : qtText(text);
}

} // namespace karvo
