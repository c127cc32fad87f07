#include "workbench/forms/vehicle_printout.h"

#include "cvdata/text_report.h"
#include "program/path_text.h"
#include "ui/captions.h"
#include "ui/fixed_width_font.h"
#include "ui/named.h"

#include <QBuffer>
#include <QGraphicsView>
#include <QHBoxLayout>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QPrinterInfo>
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
    : Form(bench.state.texts, "FzCVdrucken", Caption::vehicleReportTitle, parent),
      bench_(bench),
      clock_(clock),
      printer_(std::make_unique<QPrinter>()),
      preview_(new QPrintPreviewWidget(printer_.get(), this)),
      saved_(textLabel("Saved", this))
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
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    setUsualSize(usualSize);
    printer_->setDocName(qtText(vehicleName(bench_.state.set)));
    preview_->setObjectName(QStringLiteral("Preview"));
    preview_->setAccessibleName(shown(Caption::reportPreview));
    connect(preview_, &QPrintPreviewWidget::paintRequested, this,
            [this](QPrinter* printer) { document_.print(printer); });
    preview_->fitToWidth();
    if (auto* const pages = preview_->findChild<QGraphicsView*>()) { // it has the keyboard
        pages->setObjectName(QStringLiteral("Pages"));
        pages->setAccessibleName(preview_->accessibleName());
    }
    auto* const sides = new QHBoxLayout;
    sides->addWidget(preview_, 1);
    sides->addLayout(actions());
    column().addLayout(sides, 1);
    addButton("Schliessen", Caption::closeButton, ButtonRow::RejectRole);
}

QVBoxLayout* FzCVdrucken::actions()
{
    auto* const below = new QVBoxLayout;
    const auto add = [&](const char* name, Caption caption, auto act) {
        auto* const button = captioned<QPushButton>(name, this, onButton(caption));
        connect(button, &QPushButton::clicked, this, act);
        below->addWidget(button);
    };
    const auto addForm = [&](const char* name, Caption caption, ExportForm form) {
        add(name, caption, [this, form, caption] { save(form, caption); });
    };
    add("Print", Caption::printButton, [this] { print(); });
    add("Pdf", Caption::pdfButton, [this] { savePdf(); });
    addForm("Report", Caption::reportButton, ExportForm::text);
    addForm("Csv", Caption::csvButton, ExportForm::csv);
    addForm("CsvClosed", Caption::csvClosedButton, ExportForm::csvClosedHeader);
    below->addWidget(saved_);
    below->addStretch();
    return below;
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
