#include "shell/write_report_dialog.h"

#include "ui/captions.h"
#include "ui/usual_size.h"

#include <QClipboard>
#include <QDialogButtonBox>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace karvo
{

namespace
{

constexpr QSize usualSize(820, 520);

QString summaryText(const WriteReport& report, const LanguageTables& texts)
{
    QStringList lines;
    for (const Text& line : summaryOf(report, texts))
        lines.append(qtText(line));
    return lines.join(u'\n');
}

} // namespace

Schreibbericht::Schreibbericht(const WriteReport& report, const LanguageTables& texts, QWidget* parent)
    : QDialog(parent), text_(qtText(reportText(report, texts)))
{
    setObjectName(QStringLiteral("Schreibbericht"));
    setWindowTitle(qtText(texts.caption(Caption::writeReportTitle)));
    auto* const summary = new QLabel(summaryText(report, texts), this);
    summary->setObjectName(QStringLiteral("Zusammenfassung"));
    summary->setTextFormat(Qt::PlainText);
    summary->setWordWrap(true);
    summary->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(summary);
    layout->addWidget(table(report, texts), 1);
    layout->addWidget(buttons(!report.rest().empty(), texts));
    resizeToUsual(*this, usualSize);
}

QTableWidget* Schreibbericht::table(const WriteReport& report, const LanguageTables& texts)
{
    const Caption headings[] = {Caption::writeReportCv, Caption::columnName, Caption::columnOldValue,
                                Caption::columnNewValue, Caption::writeReportOutcome};
    QStringList captions;
    for (const Caption heading : headings)
        captions.append(qtText(texts.caption(heading)));
    auto* const table =
        new QTableWidget(static_cast<int>(report.outcomes.size()), static_cast<int>(captions.size()), this);
    table->setObjectName(QStringLiteral("Ergebnisse"));
    table->setAccessibleName(windowTitle());
    table->setHorizontalHeaderLabels(captions);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setTabKeyNavigation(false);
    table->verticalHeader()->hide();
    table->horizontalHeader()->setStretchLastSection(true);
    for (int row = 0; row < table->rowCount(); ++row) {
        const WriteOutcome& outcome = report.outcomes[static_cast<std::size_t>(row)];
        const QString parts[] = {QStringLiteral("CV%1").arg(outcome.cv), qtText(outcome.name),
                                 qtText(heldText(outcome.held)), QString::number(outcome.value),
                                 qtText(outcomeText(outcome, texts))};
        for (int column = 0; column < table->columnCount(); ++column) {
            auto* const item = new QTableWidgetItem(parts[column]);
            item->setToolTip(parts[column]);
            table->setItem(row, column, item);
        }
    }
    table->resizeColumnsToContents();
    return table;
}

QDialogButtonBox* Schreibbericht::buttons(bool hasRest, const LanguageTables& texts)
{
    auto* const box = new QDialogButtonBox(this);
    auto* const close =
        box->addButton(buttonText(texts.caption(Caption::closeButton)), QDialogButtonBox::RejectRole);
    close->setObjectName(QStringLiteral("Schliessen"));
    close->setDefault(true);
    auto* const copyButton =
        box->addButton(buttonText(texts.caption(Caption::copyReport)), QDialogButtonBox::ActionRole);
    copyButton->setObjectName(QStringLiteral("Kopieren"));
    connect(copyButton, &QPushButton::clicked, this, &Schreibbericht::copy);
    connect(box, &QDialogButtonBox::rejected, this, &QDialog::reject);
    if (!hasRest)
        return box;
    auto* const goOn =
        box->addButton(buttonText(texts.caption(Caption::writeRest)), QDialogButtonBox::AcceptRole);
    goOn->setObjectName(QStringLiteral("Rest_schreiben"));
    connect(box, &QDialogButtonBox::accepted, this, &QDialog::accept);
    return box;
}

void Schreibbericht::copy()
{
    QGuiApplication::clipboard()->setText(text_);
}

} // namespace karvo
