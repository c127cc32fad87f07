#include "workbench/forms/schreibvorschau.h"

#include "ui/captions.h"
#include "ui/usual_size.h"
#include "ui/wrapping_check_box.h"
#include "workbench/write_report.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTableWidget>
#include <QVBoxLayout>

namespace karvo
{

namespace
{

constexpr QSize usualSize(820, 560);

enum Part { cvPart, namePart, heldPart, valuePart, remarkPart, parts };

QTableWidgetItem* cell(const QString& text)
{
    auto* const item = new QTableWidgetItem(text);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    item->setToolTip(text);
    return item;
}

} // namespace

Schreibvorschau::Schreibvorschau(WritePreview& preview, const ProgramState& state, QWidget* parent)
    : QDialog(parent),
      preview_(preview),
      texts_(state.texts),
      table_(new QTableWidget(static_cast<int>(preview.rows.size()), parts, this)),
      counts_(addLabel("Anzahl", {})),
      vehiclesOwn_(new WrappingCheckBox(this)),
      askNoMore_(new WrappingCheckBox(this))
{
    build(state);
    fillTable();
    showTicks();
    resizeToUsual(*this, usualSize);
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
    setObjectName(QStringLiteral("Schreibvorschau"));
    setWindowTitle(qtText(texts_.caption(Caption::previewTitle)));
    table_->setObjectName(QStringLiteral("Vorschau"));
    table_->setAccessibleName(windowTitle());
    askNoMore_->setObjectName(QStringLiteral("Nicht_mehr_fragen"));
    askNoMore_->setText(buttonText(texts_.caption(Caption::previewAskNoMore)));
    askNoMore_->setHidden(preview_.rows.empty());
    auto* const layout = new QVBoxLayout(this);
    addNotes(layout, state);
    layout->addWidget(table_, 1);
    layout->addWidget(counts_);
    layout->addWidget(askNoMore_);
    layout->addWidget(buttons());
}

void Schreibvorschau::addNotes(QLayout* layout, const ProgramState& state)
{
    if (preview_.lowBattery)
        layout->addWidget(addLabel("Akkuspannung", qtText(lowBatteryText(preview_, state))));
    vehiclesOwn_->setObjectName(QStringLiteral("Kennung_lassen"));
    vehiclesOwn_->setHidden(!preview_.otherVehicle);
    if (!preview_.otherVehicle)
        return;
    vehiclesOwn_->setText(buttonText(texts_.caption(Caption::previewLeaveIdentity)));
    layout->addWidget(addLabel("Anderes_Fahrzeug", qtText(texts_.caption(Caption::previewOtherVehicle))));
    layout->addWidget(vehiclesOwn_);
    connect(vehiclesOwn_, &QCheckBox::toggled, this, &Schreibvorschau::leaveVehiclesOwn);
}

QLabel* Schreibvorschau::addLabel(const char* name, const QString& text)
{
    auto* const label = new QLabel(text, this);
    label->setObjectName(QString::fromLatin1(name));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

void Schreibvorschau::fillTable()
{
    table_->setHorizontalHeaderLabels(
        {qtText(texts_.caption(Caption::writeReportCv)), qtText(texts_.caption(Caption::columnName)),
         qtText(texts_.caption(Caption::columnOldValue)), qtText(texts_.caption(Caption::columnNewValue)),
         qtText(texts_.caption(Caption::columnRemark))});
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->setTabKeyNavigation(false);
    table_->verticalHeader()->hide();
    table_->horizontalHeader()->setStretchLastSection(true);
    for (int row = 0; row < table_->rowCount(); ++row) {
        const PreviewRow& shown = preview_.rows[static_cast<std::size_t>(row)];
        table_->setItem(row, cvPart, cell(QStringLiteral("CV%1").arg(shown.cv)));
        table_->setItem(row, namePart, cell(qtText(shown.name)));
        table_->setItem(row, heldPart, cell(qtText(heldText(shown.held))));
        table_->setItem(row, valuePart, cell(QString::number(shown.value)));
        table_->setItem(row, remarkPart, cell({}));
        if (shown.skip == WriteSkip::none)
            table_->item(row, cvPart)->setFlags(table_->item(row, cvPart)->flags() | Qt::ItemIsUserCheckable);
    }
    table_->setCurrentCell(0, cvPart);
    connect(table_, &QTableWidget::itemChanged, this, [this](QTableWidgetItem* item) {
        if (item->column() == cvPart)
            takeTick(item->row());
    });
}

QDialogButtonBox* Schreibvorschau::buttons()
{
    auto* const box = new QDialogButtonBox(this);
    write_ = box->addButton(buttonText(texts_.caption(Caption::previewWrite)), QDialogButtonBox::AcceptRole);
    write_->setObjectName(QStringLiteral("OKButton"));
    const auto other = preview_.rows.empty() ? Caption::closeButton : Caption::cancelButton;
    auto* const cancel = box->addButton(buttonText(texts_.caption(other)), QDialogButtonBox::RejectRole);
    cancel->setObjectName(QStringLiteral("CancelButton"));
    cancel->setDefault(true); // Enter writes nothing
    connect(box, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(box, &QDialogButtonBox::rejected, this, &QDialog::reject);
    return box;
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
        table_->item(row, remarkPart)->setText(qtText(texts_.caption(remark)));
    }
    table_->resizeColumnsToContents();
    showCounts();
}

void Schreibvorschau::showCounts()
{
    const auto written = preview_.countOfWritten();
    write_->setEnabled(written != 0);
    if (preview_.rows.empty()) {
        counts_->setText(qtText(texts_.caption(Caption::nothingToWrite)));
        return;
    }
    QStringList lines{filledCaption(texts_, Caption::previewCounts,
                                    {textFromNumber(static_cast<long long>(written)),
                                     textFromNumber(static_cast<long long>(preview_.countOfLeftOut()))})};
    for (const Text& reason : reasonsOf(preview_, texts_))
        lines.append(qtText(u"    " + reason));
    if (written == 0)
        lines.append(qtText(texts_.caption(Caption::previewNothingTicked)));
    counts_->setText(lines.join(u'\n'));
}

} // namespace karvo
