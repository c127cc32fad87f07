#include "workbench/forms/vehicle_printout.h"

#include "cvdata/text_report.h"
#include "program/path_text.h"
#include "ui/captions.h"
#include "ui/fixed_width_font.h"
#include "ui/usual_size.h"

#include <QBuffer>
#include <QHBoxLayout>
#include <QLabel>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QPrinterInfo>
#include <QPushButton>
#include <QVBoxLayout>

namespace karvo
{

namespace
{

constexpr QSize usualSize(960, 720);
constexpr double fontPoints = 9; // the longest line of a list fits on a page of A4

Bytes pdfOf(const QTextDocument& document, const QPageLayout& layout)
{
    QByteArray content;
    QBuffer buffer(&content);
    buffer.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&buffer);
        writer.setPageLayout(layout);
        document.print(&writer);
    }
    return {content.begin(), content.end()};
}

} // namespace

FzCVdrucken::FzCVdrucken(Workbench& bench, const Clock& clock, QWidget* parent)
    : QDialog(parent),
      bench_(bench),
      texts_(bench.state.texts),
      clock_(clock),
      printer_(std::make_unique<QPrinter>()),
      preview_(new QPrintPreviewWidget(printer_.get(), this)),
      saved_(new QLabel(this))
{
    fillDocument();
    build();
}

FzCVdrucken::~FzCVdrucken()
{
    delete preview_; // it draws with the printer until it goes
}

void FzCVdrucken::build()
{
    setObjectName(QStringLiteral("FzCVdrucken"));
    setWindowTitle(qtText(texts_.caption(Caption::vehicleReportTitle)));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    printer_->setDocName(qtText(vehicleName(bench_.state.set)));
    preview_->setObjectName(QStringLiteral("Preview"));
    preview_->setAccessibleName(qtText(texts_.caption(Caption::reportPreview)));
    connect(preview_, &QPrintPreviewWidget::paintRequested, this,
            [this](QPrinter* printer) { document_.print(printer); });
    preview_->fitToWidth();
    saved_->setObjectName(QStringLiteral("Saved"));
    saved_->setTextFormat(Qt::PlainText);
    saved_->setWordWrap(true);

    auto* const column = new QVBoxLayout;
    connect(addButton(*column, "Print", Caption::printButton), &QPushButton::clicked, this,
            &FzCVdrucken::print);
    connect(addButton(*column, "Pdf", Caption::pdfButton), &QPushButton::clicked, this,
            &FzCVdrucken::savePdf);
    const auto addForm = [&](const char* name, Caption caption, ExportForm form) {
        connect(addButton(*column, name, caption), &QPushButton::clicked, this,
                [this, form, caption] { save(form, caption); });
    };
    addForm("Report", Caption::reportButton, ExportForm::text);
    addForm("Csv", Caption::csvButton, ExportForm::csv);
    addForm("CsvClosed", Caption::csvClosedButton, ExportForm::csvClosedHeader);
    column->addWidget(saved_);
    column->addStretch();
    connect(addButton(*column, "Schliessen", Caption::closeButton), &QPushButton::clicked, this,
            &QDialog::reject);
    auto* const layout = new QHBoxLayout(this);
    layout->addWidget(preview_, 1);
    layout->addLayout(column);
    resizeToUsual(*this, usualSize);
}

QPushButton* FzCVdrucken::addButton(QVBoxLayout& column, const char* name, Caption caption)
{
    auto* const button = new QPushButton(buttonText(texts_.caption(caption)), this);
    button->setObjectName(QString::fromLatin1(name));
    button->setAutoDefault(false);
    column.addWidget(button);
    return button;
}

void FzCVdrucken::fillDocument()
{
    QFont font = fixedWidthFont();
    font.setPointSizeF(fontPoints);
    document_.setDefaultFont(font);
    QStringList lines;
    for (const Text& line : textReport(bench_.state.set, texts_))
        lines.append(qtText(line));
    document_.setPlainText(lines.join(u'\n'));
}

void FzCVdrucken::print()
{
    if (QPrinterInfo::availablePrinterNames().isEmpty()) {
        bench_.prompts.message(texts_.message(Message::noPrinter), PromptIcon::warning);
        return;
    }
    QPrintDialog dialog(printer_.get(), this);
    dialog.setObjectName(QStringLiteral("PrintDialog"));
    dialog.setWindowTitle(windowTitle());
    if (dialog.exec() != QDialog::Accepted)
        return;
    document_.print(printer_.get());
    if (printer_->printerState() == QPrinter::Error)
        bench_.prompts.message(texts_.message(Message::cannotPrint), PromptIcon::warning);
    preview_->updatePreview();
}

// Made in memory first: a full disk leaves no half of it.
void FzCVdrucken::savePdf()
{
    Text name = reportFileName(bench_.state.set, clock_.now());
    name.replace(name.size() - 3, 3, u"pdf");
    const auto path = bench_.prompts.saveFile(
        {texts_.caption(Caption::pdfButton), bench_.state.userFolders.cvLists.own, u"*.pdf", u"pdf", name});
    if (path && saveContent(bench_, *path, pdfOf(document_, printer_->pageLayout())))
        showSaved(*path);
}

void FzCVdrucken::save(ExportForm form, Caption title)
{
    if (const auto path = exportSet(bench_, form, texts_.caption(title), clock_.now()))
        showSaved(*path);
}

void FzCVdrucken::showSaved(const std::filesystem::path& path)
{
    saved_->setText(filledCaption(texts_, Caption::fileSaved, {pathText(path)}));
}

} // namespace karvo
