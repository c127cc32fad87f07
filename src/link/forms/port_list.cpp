#include "link/forms/port_list.h"

#include "link/port_choice.h"

#include <QEvent>
#include <QWheelEvent>

namespace karvo
{

PortList::PortList(const LanguageTables& texts, ListPortDevices listDevices, QWidget* parent)
    : QComboBox(parent), texts_(texts), listDevices_(std::move(listDevices))
{
    for (int number = 1; number <= highestPortNumber; ++number)
        addItem(portName(number));
    // The index follows from code and keys alike; the same entry chosen again only shows in `activated`.
    connect(this, &QComboBox::currentIndexChanged, this, [this](int index) { emit portChosen(index + 1); });
    connect(this, &QComboBox::activated, this, [this](int index) { emit portChosen(index + 1); });
}

void PortList::showPort(int number)
{
    const QSignalBlocker quiet(this);
    setCurrentIndex(number - 1);
}

bool PortList::isAbsent() const
{
    const auto devices = listDevices_ ? listDevices_() : std::vector<PortDevice>();
    const auto index = static_cast<std::size_t>(currentIndex());
    return index < devices.size() && devices[index].isAbsent;
}

bool PortList::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip)
        updateTips();
    return QComboBox::event(event);
}

void PortList::showPopup()
{
    updateTips();
    QComboBox::showPopup();
}

void PortList::wheelEvent(QWheelEvent* event)
{
    event->ignore();
}

void PortList::updateTips()
{
    const auto devices = listDevices_();
    for (int number = 1; number <= highestPortNumber; ++number)
        setItemData(number - 1, portTip(texts_, devices, number), Qt::ToolTipRole);
    setToolTip(itemData(currentIndex(), Qt::ToolTipRole).toString());
}

} // namespace karvo
