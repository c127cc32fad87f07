// What each CV of a write of many has done.
#pragma once

#include "language/language_tables.h"
#include "workbench/write_report.h"

#include <QDialog>

#include <filesystem>

class QDialogButtonBox;
class QTableWidget;

namespace karvo
{

class Schreibbericht : public QDialog
{
    Q_OBJECT

public:
    // `backupFolder`: where the list lies that was made of the vehicle before; empty when none was.
    Schreibbericht(const WriteReport& report, const std::filesystem::path& backupFolder,
                   const LanguageTables& texts, QWidget* parent);

private:
    QTableWidget* table(const WriteReport& report, const LanguageTables& texts);
    QDialogButtonBox* buttons(const LanguageTables& texts);
    void copy();

    QString summary_;
    QString lines_;
};

} // namespace karvo
