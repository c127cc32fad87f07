#include "link/forms/aktive_com.h"

#include "link/port_choice.h"
#include "ui/captions.h"
#include "ui/fixed_width_list.h"
#include "ui/typed_text.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QShowEvent>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>

namespace karvo
{

Aktive_COM::Aktive_COM(LinkState& state, SerialPort& port, Settings& settings, const LanguageTables& texts,
                       ListPortDevices listDevices, ListNewPorts listNewPorts, QWidget* parent)
    : QDialog(parent),
      state_(state),
      port_(port),
      settings_(settings),
      texts_(texts),
      listDevices_(std::move(listDevices)),
      listNewPorts_(std::move(listNewPorts)),
      heading_(new QLabel(this)),
      ports_(new FixedWidthList(this)),
      searchAgain_(new QPushButton(buttonText(texts.caption(Caption::portSearchAgain)), this)),
      take_(nullptr)
{
    build();
}

void Aktive_COM::build()
{
    setObjectName(QStringLiteral("Aktive_COM"));
    setWindowTitle(qtText(texts_.caption(Caption::portSearchTitle)));
    resize(fontMetrics().averageCharWidth() * 64, fontMetrics().height() * 18);
    heading_->setObjectName(QStringLiteral("Heading"));
    heading_->setBuddy(ports_);
    ports_->setObjectName(QStringLiteral("Ports"));
    ports_->setAccessibleName(qtText(texts_.caption(Caption::portSearchFound)));
    searchAgain_->setObjectName(QStringLiteral("SearchAgain"));

    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->addButton(searchAgain_, QDialogButtonBox::ActionRole);
    take_ = buttons->button(QDialogButtonBox::Ok);
    take_->setObjectName(QStringLiteral("OK"));
    take_->setText(buttonText(texts_.caption(Caption::portSearchTake)));
    auto* const cancel = buttons->button(QDialogButtonBox::Cancel);
    cancel->setObjectName(QStringLiteral("Cancel"));
    cancel->setText(buttonText(texts_.caption(Caption::portSearchCancel)));

    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(heading_);
    layout->addWidget(ports_);
    layout->addWidget(buttons);

    connect(buttons, &QDialogButtonBox::accepted, this, &Aktive_COM::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &Aktive_COM::reject);
    connect(searchAgain_, &QPushButton::clicked, this, &Aktive_COM::startSearch);
    connect(ports_, &QListWidget::itemDoubleClicked, this, &Aktive_COM::accept);
    connect(ports_, &QListWidget::currentRowChanged, this, [this](int row) { take_->setEnabled(row >= 0); });
    take_->setEnabled(false);
}

void Aktive_COM::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    if (!event->spontaneous())
        startSearch();
}

// Opening 31 ports takes its time, in which nothing is drawn: first the window says what it is doing.
void Aktive_COM::startSearch()
{
    if (searching_)
        return;
    searching_ = true;
    showPorts({}, {});
    heading_->setText(buttonText(texts_.caption(Caption::portSearchRunning)));
    ports_->setEmptyHint(QString());
    searchAgain_->setEnabled(false);
    setCursor(Qt::WaitCursor);
    QTimer::singleShot(50, this, &Aktive_COM::search);
}

void Aktive_COM::search()
{
    const auto present = searchPorts(state_, port_);
    showPorts(present, listNewPorts_ ? listNewPorts_() : std::vector<NewPortDevice>());
    heading_->setText(buttonText(texts_.caption(Caption::portSearchFound)));
    ports_->setEmptyHint(qtText(texts_.caption(Caption::portSearchNothing)));
    searchAgain_->setEnabled(true);
    unsetCursor();
    searching_ = false;
    (ports_->count() == 0 ? static_cast<QWidget*>(searchAgain_) : ports_)->setFocus();
}

void Aktive_COM::showPorts(const std::vector<int>& present, const std::vector<NewPortDevice>& fresh)
{
    present_ = present;
    fresh_ = fresh;
    const auto devices = present.empty() ? std::vector<PortDevice>() : listDevices_();
    std::vector<FixedWidthList::Row> rows;
    rows.reserve(present.size() + fresh.size());
    for (const int number : present)
        rows.push_back({portName(number), portTip(texts_, devices, number)});
    for (const auto& [number, device] : fresh) {
        const QString words = deviceText(texts_, device, number);
        rows.push_back({portName(number), filledCaption(texts_, Caption::newPortDevice, {typedText(words)})});
    }
    ports_->setRows(rows);
    for (int row = 0; row < ports_->count(); ++row)
        ports_->item(row)->setToolTip(rows[static_cast<std::size_t>(row)].name);
    take_->setEnabled(false);
    if (rows.empty())
        return;
    const auto current = std::find(present.begin(), present.end(), state_.portNumber);
    ports_->setCurrentRow(current == present.end() ? 0 : static_cast<int>(current - present.begin()));
}

void Aktive_COM::accept()
{
    const int row = ports_->currentRow();
    if (searching_ || row < 0)
        return;
    const auto index = static_cast<std::size_t>(row);
    if (index >= present_.size()) {
        const NewPortDevice& chosen = fresh_[index - present_.size()];
        storePortDevice(settings_, chosen.number, typedText(chosen.device.device));
        choosePort(state_, port_, settings_, chosen.number);
    } else {
        choosePort(state_, port_, settings_, present_[index]);
    }
    QDialog::accept();
}

} // namespace karvo
