#include "shell/write_report_dialog.h"

#include "ui/captions.h"
#include "ui/named.h"
#include "ui/result_table.h"

#include <QClipboard>
#include <QGuiApplication>
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
    : Form(texts, "Schreibbericht", Caption::writeReportTitle, parent),
      text_(qtText(reportText(report, texts)))
{
    setUsualSize(usualSize);
    auto* const summary = textLabel("Zusammenfassung", this, summaryText(report, texts));
    summary->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    column().addWidget(summary);
    column().addWidget(table(report), 1);
    addButtons(!report.rest().empty());
}

QWidget* Schreibbericht::table(const WriteReport& report)
{
    auto* const table = resultTable("Ergebnisse", this, windowTitle(),
                                    {shown(Caption::writeReportCv), shown(Caption::columnName),
                                     shown(Caption::columnOldValue), shown(Caption::columnNewValue),
                                     shown(Caption::writeReportOutcome)});
    for (const WriteOutcome& outcome : report.outcomes)
        appendRow(*table, {QStringLiteral("CV%1").arg(outcome.cv), qtText(outcome.name),
                           qtText(heldText(outcome.held)), QString::number(outcome.value),
                           qtText(outcomeText(outcome, texts_))});
    fitColumns(*table);
    return table;
}

void Schreibbericht::addButtons(bool hasRest)
{
    addButton("Schliessen", Caption::closeButton, ButtonRow::RejectRole)->setDefault(true);
    connect(addButton("Kopieren", Caption::copyReport, ButtonRow::ActionRole), &QPushButton::clicked, this,
            &Schreibbericht::copy);
    if (hasRest)
        addWriting("Rest_schreiben", Caption::writeRest, ButtonRow::AcceptRole);
}

void Schreibbericht::copy()
{
    QGuiApplication::clipboard()->setText(text_);
}

} // namespace karvo
