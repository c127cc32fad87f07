#include "editors/forms/pre_fahrstufen.h"

#include "editors/presets.h"
#include "ui/captions.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace karvo
{

Pre_Fahrstufen::Pre_Fahrstufen(Workbench& bench, QWidget* parent)
    : QDialog(parent), bench_(bench), texts_(bench.state.texts)
{
    setObjectName(QStringLiteral("Pre_Fahrstufen"));
    setWindowTitle(qtText(texts_.caption(Caption::preTablesTitle)));
    auto* const column = new QVBoxLayout(this);
    auto* const prompt = new QLabel(qtText(texts_.caption(Caption::preTablesPrompt)), this);
    prompt->setWordWrap(true);
    column->addWidget(prompt);
    for (const BasedPreset& preset : basedPresets()) {
        auto* const choice = new QRadioButton(buttonText(texts_.caption(preset.caption)), this);
        choice->setObjectName(
            QString::fromLatin1(preset.file.data(), static_cast<qsizetype>(preset.file.size())));
        column->addWidget(choice);
        choices_.append(choice);
    }
    choices_.first()->setChecked(true);
    column->addStretch(1);
    column->addWidget(buttons());
}

QWidget* Pre_Fahrstufen::buttons()
{
    auto* const box = new QDialogButtonBox(this);
    auto* const loading =
        box->addButton(buttonText(texts_.caption(Caption::loadButton)), QDialogButtonBox::ActionRole);
    loading->setObjectName(QStringLiteral("Laden"));
    loading->setDefault(true);
    auto* const cancel =
        box->addButton(buttonText(texts_.caption(Caption::cancelButton)), QDialogButtonBox::RejectRole);
    cancel->setObjectName(QStringLiteral("Abbrechen"));
    connect(loading, &QPushButton::clicked, this, &Pre_Fahrstufen::load);
    connect(box, &QDialogButtonBox::rejected, this, &QDialog::reject);
    return box;
}

// After a file that does not fit another one can be chosen.
void Pre_Fahrstufen::load()
{
    for (std::size_t i = 0; i < basedPresets().size(); ++i) {
        if (!choices_[static_cast<qsizetype>(i)]->isChecked())
            continue;
        if (const auto table = readBasedPreset(bench_, basedPresets()[i])) {
            table_ = *table;
            accept();
        }
    }
}

} // namespace karvo
