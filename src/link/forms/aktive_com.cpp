#include "link/forms/aktive_com.h"

#include "link/port_choice.h"
#include "ui/captions.h"
#include "ui/fixed_width_list.h"
#include "ui/named.h"
#include "ui/typed_text.h"

#include <QShowEvent>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>

namespace karvo
{

Aktive_COM::Aktive_COM(LinkState& state, SerialPort& port, Settings& settings, const LanguageTables& texts,
                       ListPortDevices listDevices, ListNewPorts listNewPorts, QWidget* parent)
    : Form(texts, "Aktive_COM", Caption::portSearchTitle, parent),
      state_(state),
      port_(port),
      settings_(settings),
      listDevices_(std::move(listDevices)),
      listNewPorts_(std::move(listNewPorts)),
      heading_(named<QLabel>("Heading", this)),
      ports_(named<FixedWidthList>("Ports", this, shown(Caption::portSearchFound))),
      take_(addButton("OK", Caption::portSearchTake, ButtonRow::AcceptRole)),
      searchAgain_(addButton("SearchAgain", Caption::portSearchAgain, ButtonRow::ActionRole))
{
    build();
}

void Aktive_COM::build()
{
    setUsualSize({fontMetrics().averageCharWidth() * 64, fontMetrics().height() * 18});
    addButton("Cancel", Caption::portSearchCancel, ButtonRow::RejectRole);
    heading_->setBuddy(ports_);
    column().addWidget(heading_);
    column().addWidget(ports_, 1);
    take_->setDefault(true);
    take_->setEnabled(false);
    connect(searchAgain_, &QPushButton::clicked, this, &Aktive_COM::startSearch);
    connect(ports_, &QListWidget::itemDoubleClicked, this, &Aktive_COM::accept);
    connect(ports_, &QListWidget::currentRowChanged, this, [this](int row) { take_->setEnabled(row >= 0); });
}

void Aktive_COM::showEvent(QShowEvent* event)
{
    Form::showEvent(event);
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
    heading_->setText(onButton(Caption::portSearchRunning));
    ports_->setEmptyHint(QString());
    searchAgain_->setEnabled(false);
    setCursor(Qt::WaitCursor);
    QTimer::singleShot(50, this, &Aktive_COM::search);
}

void Aktive_COM::search()
{
    const auto present = searchPorts(state_, port_);
    showPorts(present, listNewPorts_ ? listNewPorts_() : std::vector<NewPortDevice>());
    heading_->setText(onButton(Caption::portSearchFound));
    ports_->setEmptyHint(shown(Caption::portSearchNothing));
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
    Form::accept();
}

} // namespace karvo
