// The vehicle's CVs as they would be printed: to print, and to save in other forms.
#pragma once

#include "program/clock.h"
#include "workbench/export_files.h"

#include <QDialog>
#include <QTextDocument>

class QLabel;
class QPagedPaintDevice;
class QPrinter;
class QPrintPreviewWidget;
class QPushButton;
class QVBoxLayout;

namespace karvo
{

class FzCVdrucken : public QDialog
{
    Q_OBJECT

public:
    FzCVdrucken(Workbench& bench, const Clock& clock, QWidget* parent = nullptr);
    ~FzCVdrucken() override;

private:
    void build();
    void fillDocument();
    QPushButton* addButton(QVBoxLayout& column, const char* name, Caption caption);
    void print();
    void savePdf();
    void save(ExportForm form, Caption title);
    void showSaved(const std::filesystem::path& path);

    Workbench& bench_;
    const LanguageTables& texts_;
    const Clock& clock_;
    QTextDocument document_;
    std::unique_ptr<QPrinter> printer_;
    QPrintPreviewWidget* preview_;
    QLabel* saved_;
};

} // namespace karvo
