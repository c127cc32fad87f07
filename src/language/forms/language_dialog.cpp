#include "language/forms/language_dialog.h"

#include "ui/captions.h"
#include "ui/named.h"

#include <QButtonGroup>
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

Language::Language(const LanguageTables& texts, const LanguageButtonCaptions& captions, LanguageCode proposed,
                   Prompts& prompts, QWidget* parent)
    : Form(texts, "Language", QStringLiteral("Karvo"), parent),
      prompts_(prompts),
      choices_(new QButtonGroup(this))
{
    column().addWidget(captioned<QLabel>("Heading", this, qtText(heading)));
    for (std::size_t i = 0; i < captions.size(); ++i) {
        auto* const choice = captioned<QRadioButton>(buttonNames[i], this, buttonText(captions[i]));
        choice->setChecked(allLanguages[i] == proposed);
        choices_->addButton(choice, static_cast<int>(allLanguages[i]));
        column().addWidget(choice);
    }
    addButton("OK", Caption::okButton, ButtonRow::AcceptRole)->setDefault(true);
    addButton("Cancel", Caption::cancelButton, ButtonRow::RejectRole);
    choices_->checkedButton()->setFocus();
}

LanguageCode Language::chosen() const
{
    return static_cast<LanguageCode>(choices_->checkedId());
}

bool Language::mayClose()
{
    prompts_.message(Text(noLanguageChosenText));
    prompts_.endProgram();
    return true;
}

} // namespace karvo
