// The four ready-made speed tables that bring their own base and top speed.
#pragma once

#include "editors/speed_step_file.h"
#include "ui/form.h"
#include "workbench/workbench.h"

class QRadioButton;

namespace karvo
{

class Pre_Fahrstufen : public Form
{
    Q_OBJECT

public:
    explicit Pre_Fahrstufen(Workbench& bench, QWidget* parent = nullptr);

    // The table that was chosen, once the dialog was accepted.
    const BasedSpeedTable& table() const { return table_; }

private:
    void load();

    Workbench& bench_;
    BasedSpeedTable table_;
    QList<QRadioButton*> choices_; // in the order of basedPresets()
};

} // namespace karvo
