// The vehicle's CVs as they would be printed: to print, and to save in other forms.
#pragma once

#include "program/clock.h"
#include "ui/form.h"
#include "workbench/export_files.h"

#include <QTextDocument>

class QLabel;
class QPagedPaintDevice;
class QPrinter;
class QPrintPreviewWidget;
class QVBoxLayout;

namespace karvo
{

class FzCVdrucken : public Form
{
    Q_OBJECT

public:
    FzCVdrucken(Workbench& bench, const Clock& clock, QWidget* parent = nullptr);
    ~FzCVdrucken() override;

private:
    void build();
    void fillDocument();
    QVBoxLayout* actions();
    void print();
    void savePdf();
    void save(ExportForm form, Caption title);
    void showSaved(const std::filesystem::path& path);

    Workbench& bench_;
    const Clock& clock_;
    QTextDocument document_;
    std::unique_ptr<QPrinter> printer_;
    QPrintPreviewWidget* preview_;
    QLabel* saved_;
};

} // namespace karvo
