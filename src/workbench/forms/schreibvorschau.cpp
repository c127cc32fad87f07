#include "workbench/forms/schreibvorschau.h"

#include "ui/captions.h"
#include "ui/named.h"
#include "ui/result_table.h"
#include "ui/wrapping_check_box.h"
#include "workbench/write_report.h"

#include <QSignalBlocker>
#include <QVBoxLayout>

namespace karvo
{

namespace
{

constexpr QSize usualSize(820, 560);

constexpr int cvPart = 0;
constexpr int remarkPart = 4;

} // namespace

Schreibvorschau::Schreibvorschau(WritePreview& preview, const ProgramState& state, QWidget* parent)
    : Form(state.texts, "Schreibvorschau", Caption::previewTitle, parent),
      preview_(preview),
      table_(resultTable("Vorschau", this, windowTitle(),
                         {shown(Caption::writeReportCv), shown(Caption::columnName),
                          shown(Caption::columnOldValue), shown(Caption::columnNewValue),
                          shown(Caption::columnRemark)})),
      counts_(textLabel("Anzahl", this)),
      vehiclesOwn_(
          captioned<WrappingCheckBox>("Kennung_lassen", this, onButton(Caption::previewLeaveIdentity))),
      askNoMore_(captioned<WrappingCheckBox>("Nicht_mehr_fragen", this, onButton(Caption::previewAskNoMore)))
{
    build(state);
    fillTable();
    showTicks();
    table_->setFocus();
}

PreviewAnswer Schreibvorschau::answer() const
{
    if (result() != Accepted)
        return PreviewAnswer::cancel;
    return askNoMore_->isChecked() ? PreviewAnswer::writeAndAskNoMore : PreviewAnswer::write;
}

void Schreibvorschau::build(const ProgramState& state)
{
    setUsualSize(usualSize);
    askNoMore_->setHidden(preview_.rows.empty());
    addNotes(state);
    column().addWidget(table_, 1);
    column().addWidget(counts_);
    column().addWidget(askNoMore_);
    addButtons();
}

void Schreibvorschau::addNotes(const ProgramState& state)
{
    if (preview_.lowBattery)
        column().addWidget(textLabel("Akkuspannung", this, qtText(lowBatteryText(preview_, state))));
    vehiclesOwn_->setHidden(!preview_.otherVehicle);
    if (!preview_.otherVehicle)
        return;
    column().addWidget(textLabel("Anderes_Fahrzeug", this, shown(Caption::previewOtherVehicle)));
    column().addWidget(vehiclesOwn_);
    connect(vehiclesOwn_, &QCheckBox::toggled, this, &Schreibvorschau::leaveVehiclesOwn);
}

void Schreibvorschau::fillTable()
{
    for (const PreviewRow& row : preview_.rows) {
        const int at = appendRow(*table_, {QStringLiteral("CV%1").arg(row.cv),
                                           qtText(row.name),
                                           qtText(heldText(row.held)),
                                           QString::number(row.value),
                                           {}});
        QTableWidgetItem& tick = *table_->item(at, cvPart);
        if (row.skip == WriteSkip::none)
            tick.setFlags(tick.flags() | Qt::ItemIsUserCheckable);
    }
    table_->setCurrentCell(0, cvPart);
    connect(table_, &QTableWidget::itemChanged, this, [this](QTableWidgetItem* item) {
        if (item->column() == cvPart)
            takeTick(item->row());
    });
}

void Schreibvorschau::addButtons()
{
    write_ = addWriting("OKButton", Caption::previewWrite, ButtonRow::AcceptRole);
    const auto other = preview_.rows.empty() ? Caption::closeButton : Caption::cancelButton;
    addButton("CancelButton", other, ButtonRow::RejectRole)->setDefault(true); // Enter writes nothing
}

void Schreibvorschau::takeTick(int row)
{
    const bool ticked = table_->item(row, cvPart)->checkState() == Qt::Checked;
    tick(preview_, static_cast<std::size_t>(row), ticked);
    showTicks();
}

void Schreibvorschau::leaveVehiclesOwn(bool left)
{
    tickVehiclesOwn(preview_, !left);
    showTicks();
}

void Schreibvorschau::showTicks()
{
    const QSignalBlocker quiet(table_);
    for (int row = 0; row < table_->rowCount(); ++row) {
        const PreviewRow& shown = preview_.rows[static_cast<std::size_t>(row)];
        if (shown.skip == WriteSkip::none)
            table_->item(row, cvPart)->setCheckState(shown.ticked ? Qt::Checked : Qt::Unchecked);
        const auto unwritten = shown.skip == WriteSkip::none ? WriteSkip::unticked : shown.skip;
        const auto remark = shown.isWritten() ? Caption::willBeWritten : captionOfSkip(unwritten);
        setCell(*table_->item(row, remarkPart), this->shown(remark));
    }
    fitColumns(*table_);
    showCounts();
}

void Schreibvorschau::showCounts()
{
    const auto written = preview_.countOfWritten();
    write_->setEnabled(written != 0);
    if (preview_.rows.empty()) {
        counts_->setText(shown(Caption::nothingToWrite));
        return;
    }
    QStringList lines{filledCaption(texts_, Caption::previewCounts,
                                    {textFromNumber(static_cast<long long>(written)),
                                     textFromNumber(static_cast<long long>(preview_.countOfLeftOut()))})};
    for (const Text& reason : reasonsOf(preview_, texts_))
        lines.append(qtText(u"    " + reason));
    if (written == 0)
        lines.append(shown(Caption::previewNothingTicked));
    counts_->setText(lines.join(u'\n'));
}

} // namespace karvo
