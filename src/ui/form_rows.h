// Rows of fields: label, control, and behind it its unit or what else belongs to it.
#pragma once

#include <QGridLayout>
#include <QString>

namespace karvo
{

class FormRows : public QGridLayout
{
    Q_OBJECT

public:
    // In a layout that has a place for it.
    FormRows();

    // The control's label is its accessible name, `help` its tool tip and what is spoken of it further.
    struct Words {
        QString label;
        QString unit = {};
        QString help = {};
    };
    void add(QWidget& control, const Words& words);
    void add(QWidget& control, const QString& label, QWidget& behind);

    // A line below a control.
    void addBelow(QWidget& note);

    // Over the whole width.
    void addWide(QWidget& wide);
};

} // namespace karvo
