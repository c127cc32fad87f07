// What each CV of a write of many has done.
#pragma once

#include "language/language_tables.h"
#include "ui/form.h"
#include "workbench/write_report.h"

namespace karvo
{

// Accepted: the person wishes to go on with the rest, which is offered where there is one.
class Schreibbericht : public Form
{
    Q_OBJECT

public:
    Schreibbericht(const WriteReport& report, const LanguageTables& texts, QWidget* parent);

private:
    QWidget* table(const WriteReport& report);
    void addButtons(bool hasRest);
    void copy();

    QString text_;
};

} // namespace karvo
