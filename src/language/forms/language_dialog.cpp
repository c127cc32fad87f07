#include "language/forms/language_dialog.h"

#include "ui/captions.h"

#include <QButtonGroup>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace karvo
{

namespace
{

// No language is chosen yet, so the heading speaks all five.
constexpr TextView heading = u"Sprache \u00B7 Taal \u00B7 Language \u00B7 Idioma \u00B7 Langue";

// In the order of the language codes.
constexpr std::array<const char*, 5> buttonNames = {"German", "Dutch", "English", "Spanish", "French"};

} // namespace

Language::Language(const LanguageButtonCaptions& captions, LanguageCode proposed, Prompts& prompts,
                   QWidget* parent)
    : QDialog(parent), prompts_(prompts), choices_(new QButtonGroup(this))
{
    setObjectName(QStringLiteral("Language"));
    setWindowTitle(QStringLiteral("Karvo"));
    auto* const layout = new QVBoxLayout(this);
    layout->setSizeConstraint(QLayout::SetMinimumSize);
    auto* const title = new QLabel(qtText(heading), this);
    title->setObjectName(QStringLiteral("Heading"));
    layout->addWidget(title);

    for (std::size_t i = 0; i < captions.size(); ++i) {
        auto* const choice = new QRadioButton(buttonText(captions[i]), this);
        choice->setObjectName(QString::fromLatin1(buttonNames[i]));
        choice->setChecked(allLanguages[i] == proposed);
        choices_->addButton(choice, static_cast<int>(allLanguages[i]));
        layout->addWidget(choice);
    }

    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("OK"));
    buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("Cancel"));
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &Language::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &Language::reject);
    choices_->checkedButton()->setFocus();
}

LanguageCode Language::chosen() const
{
    return static_cast<LanguageCode>(choices_->checkedId());
}

void Language::reject()
{
    prompts_.message(Text(noLanguageChosenText));
    prompts_.endProgram();
    QDialog::reject();
}

} // namespace karvo
