// What each CV of a write of many has done.
#pragma once

#include "language/language_tables.h"
#include "workbench/write_report.h"

#include <QDialog>

class QDialogButtonBox;
class QTableWidget;

namespace karvo
{

// Accepted: the person wishes to go on with the rest, which is offered where there is one.
class Schreibbericht : public QDialog
{
    Q_OBJECT

public:
    Schreibbericht(const WriteReport& report, const LanguageTables& texts, QWidget* parent);

private:
    QTableWidget* table(const WriteReport& report, const LanguageTables& texts);
    QDialogButtonBox* buttons(bool hasRest, const LanguageTables& texts);
    void copy();

    QString text_;
};

} // namespace karvo
