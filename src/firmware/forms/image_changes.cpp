#include "firmware/forms/image_changes.h"

#include "cvdata/main_list.h"
#include "ui/captions.h"
#include "ui/named.h"
#include "ui/result_table.h"
#include "workbench/write_report.h"

#include <QVBoxLayout>

#include <algorithm>

namespace karvo
{

namespace
{

constexpr QSize usualSize(760, 520);

Text summaryOf(const std::vector<ImageChange>& changes, const LanguageTables& texts)
{
    if (changes.empty())
        return texts.message(Message::imageChangesNothing);
    const auto taken = std::count_if(changes.begin(), changes.end(),
                                     [](const ImageChange& change) { return change.isTaken(); });
    return texts.message(
        Message::imageChangesCount,
        {textFromNumber(taken), textFromNumber(static_cast<long long>(changes.size()) - taken)});
}

Text remarkOn(const ImageChange& change, const LanguageTables& texts)
{
    return change.isTaken() ? texts.message(Message::willBeTaken) : texts.caption(captionOfSkip(change.skip));
}

} // namespace

Abbild_Aenderungen::Abbild_Aenderungen(const std::vector<ImageChange>& changes, const ProgramState& state,
                                       QWidget* parent)
    : Form(state.texts, "Abbild_Aenderungen", Caption::imageChangesTitle, parent)
{
    setUsualSize(usualSize);
    column().addWidget(textLabel("Anzahl", this, qtText(summaryOf(changes, texts_))));
    auto* const table = resultTable("Aenderungen", this, windowTitle(),
                                    {shown(Caption::writeReportCv), shown(Caption::columnName),
                                     shown(Caption::columnOldValue), shown(Caption::columnNewValue),
                                     shown(Caption::columnRemark)});
    for (const ImageChange& change : changes)
        appendRow(*table, {QStringLiteral("CV%1").arg(change.cv),
                           qtText(nameOfCv(state.set.table, change.cv)), qtText(heldText(change.inList)),
                           QString::number(change.value), qtText(remarkOn(change, texts_))});
    table->resizeColumnsToContents();
    table->setCurrentCell(0, 0);
    column().addWidget(table, 1);
    auto* const taking = addButton("OKButton", Caption::takeImage, ButtonRow::AcceptRole);
    taking->setEnabled(std::any_of(changes.begin(), changes.end(),
                                   [](const ImageChange& change) { return change.isTaken(); }));
    addButton("CancelButton", Caption::cancelButton, ButtonRow::RejectRole)->setDefault(true);
    table->setFocus();
}

} // namespace karvo
