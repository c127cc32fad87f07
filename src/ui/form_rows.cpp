#include "ui/form_rows.h"

#include "ui/named.h"

namespace karvo
{

namespace
{

enum Column { labelColumn, controlColumn, behindColumn, columns };

} // namespace

FormRows::FormRows()
{
    setColumnStretch(controlColumn, 1);
}

void FormRows::add(QWidget& control, const Words& words)
{
    const int row = rowCount();
    addWidget(labelFor(control, words.label), row, labelColumn);
    addWidget(&control, row, controlColumn);
    if (!words.unit.isEmpty())
        addWidget(new QLabel(words.unit, control.parentWidget()), row, behindColumn);
    control.setToolTip(words.help);
    control.setAccessibleDescription(words.help);
}

void FormRows::add(QWidget& control, const QString& label, QWidget& behind)
{
    const int row = rowCount();
    add(control, {label});
    addWidget(&behind, row, behindColumn);
}

void FormRows::addBelow(QWidget& note)
{
    addWidget(&note, rowCount(), controlColumn, 1, columns - controlColumn);
}

void FormRows::addWide(QWidget& wide)
{
    addWidget(&wide, rowCount(), 0, 1, columns);
}

} // namespace karvo
