#include "editors/forms/pre_fahrstufen.h"

#include "editors/presets.h"
#include "ui/named.h"

#include <QRadioButton>
#include <QVBoxLayout>

namespace karvo
{

Pre_Fahrstufen::Pre_Fahrstufen(Workbench& bench, QWidget* parent)
    : Form(bench.state.texts, "Pre_Fahrstufen", Caption::preTablesTitle, parent), bench_(bench)
{
    column().addWidget(textLabel("Prompt", this, shown(Caption::preTablesPrompt)));
    for (const BasedPreset& preset : basedPresets()) {
        const std::string name(preset.file);
        choices_.append(captioned<QRadioButton>(name.c_str(), this, onButton(preset.caption)));
        column().addWidget(choices_.last());
    }
    choices_.first()->setChecked(true);
    column().addStretch(1);
    auto* const loading = addButton("Laden", Caption::loadButton, ButtonRow::ActionRole);
    loading->setDefault(true);
    connect(loading, &QPushButton::clicked, this, &Pre_Fahrstufen::load);
    addButton("Abbrechen", Caption::cancelButton, ButtonRow::RejectRole);
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
