#include "shell/write_report_dialog.h"

#include "program/path_text.h"
#include "ui/captions.h"

#include <QClipboard>
#include <QDialogButtonBox>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QTableWidget>
#include <QVBoxLayout>

namespace karvo
{

namespace
{

constexpr QSize usualSize(620, 440);

QString summaryOf(const WriteReport& report, const std::filesystem::path& backupFolder,
                  const LanguageTables& texts)
{
    QStringList lines{
        filledCaption(texts, Caption::writeSummary,
                      {textFromNumber(static_cast<long long>(report.countOf(WriteEnd::written))),
                       textFromNumber(static_cast<long long>(report.countOfWanted()))})};
    if (report.end == WriteManyEnd::stoppedByUser)
        lines.append(qtText(texts.caption(Caption::writeStoppedByUser)));
    if (report.end == WriteManyEnd::stoppedByFault)
        lines.append(qtText(texts.caption(Caption::writeStoppedByFault)));
    if (!backupFolder.empty())
        lines.append(filledCaption(texts, Caption::blockWasKept, {pathText(backupFolder)}));
    return lines.join(u'\n');
}

} // namespace

Schreibbericht::Schreibbericht(const WriteReport& report, const std::filesystem::path& backupFolder,
                               const LanguageTables& texts, QWidget* parent)
    : QDialog(parent), summary_(summaryOf(report, backupFolder, texts))
{
    setObjectName(QStringLiteral("Schreibbericht"));
    setWindowTitle(qtText(texts.caption(Caption::writeReportTitle)));
    for (const WriteOutcome& outcome : report.outcomes)
        lines_ += qtText(outcomeLine(outcome, texts)) + u'\n';
    auto* const summary = new QLabel(summary_, this);
    summary->setObjectName(QStringLiteral("Zusammenfassung"));
    summary->setTextFormat(Qt::PlainText);
    summary->setWordWrap(true);
    summary->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(summary);
    layout->addWidget(table(report, texts), 1);
    layout->addWidget(buttons(texts));
    resize(usualSize.boundedTo(screen()->availableSize()));
}

QTableWidget* Schreibbericht::table(const WriteReport& report, const LanguageTables& texts)
{
    auto* const table = new QTableWidget(static_cast<int>(report.outcomes.size()), 3, this);
    table->setObjectName(QStringLiteral("Ergebnisse"));
    table->setAccessibleName(windowTitle());
    table->setHorizontalHeaderLabels({qtText(texts.caption(Caption::writeReportCv)),
                                      qtText(texts.caption(Caption::writeReportValue)),
                                      qtText(texts.caption(Caption::writeReportOutcome))});
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setTabKeyNavigation(false);
    table->verticalHeader()->hide();
    table->horizontalHeader()->setStretchLastSection(true);
    int row = 0;
    for (const WriteOutcome& outcome : report.outcomes) {
        table->setItem(row, 0, new QTableWidgetItem(QStringLiteral("CV%1").arg(outcome.cv)));
        table->setItem(row, 1, new QTableWidgetItem(QString::number(outcome.value)));
        table->setItem(row, 2, new QTableWidgetItem(qtText(outcomeText(outcome, texts))));
        ++row;
    }
    return table;
}

QDialogButtonBox* Schreibbericht::buttons(const LanguageTables& texts)
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
    return box;
}

void Schreibbericht::copy()
{
    QGuiApplication::clipboard()->setText(summary_ + QStringLiteral("\n\n") + lines_);
}

} // namespace karvo
