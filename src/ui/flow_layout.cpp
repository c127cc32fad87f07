#include "ui/flow_layout.h"

#include <algorithm>

namespace karvo
{

namespace
{

constexpr int rowGap = 4; // pixels

} // namespace

FlowLayout::FlowLayout(QWidget* parent) : QLayout(parent)
{
}

FlowLayout::~FlowLayout()
{
    for (QLayoutItem* item : items_)
        delete item;
}

void FlowLayout::addItem(QLayoutItem* item)
{
    items_.push_back(item);
}

QLayoutItem* FlowLayout::itemAt(int index) const
{
    return index >= 0 && index < count() ? items_[static_cast<std::size_t>(index)] : nullptr;
}

QLayoutItem* FlowLayout::takeAt(int index)
{
    QLayoutItem* const item = itemAt(index);
    if (item != nullptr)
        items_.erase(items_.begin() + index);
    return item;
}

int FlowLayout::heightForWidth(int width) const
{
    return flow(QRect(0, 0, width, 0), [](QLayoutItem&, const QRect&) {});
}

// All in one row.
QSize FlowLayout::sizeHint() const
{
    int width = 0;
    for (const QLayoutItem* item : items_)
        width += item->sizeHint().width() + spacing();
    return QSize(width, highestItem()).grownBy(contentsMargins());
}

// The widest item still has its place.
QSize FlowLayout::minimumSize() const
{
    QSize size;
    for (const QLayoutItem* item : items_)
        size = size.expandedTo(item->minimumSize());
    return size.grownBy(contentsMargins());
}

void FlowLayout::setGeometry(const QRect& place)
{
    QLayout::setGeometry(place);
    flow(place, [](QLayoutItem& item, const QRect& rectangle) { item.setGeometry(rectangle); });
}

template <typename Place>
int FlowLayout::flow(const QRect& area, Place place) const
{
    const QMargins margins = contentsMargins();
    const QRect inner = area.marginsRemoved(margins);
    const int rowHeight = highestItem();
    int x = inner.x();
    int y = inner.y();
    for (QLayoutItem* item : items_) {
        const int wanted = std::min(item->sizeHint().width(), inner.width());
        const int width = std::max(item->minimumSize().width(), wanted);
        if (x > inner.x() && x + width > inner.x() + inner.width()) {
            x = inner.x();
            y += rowHeight + rowGap;
        }
        place(*item, QRect(x, y, width, rowHeight));
        x += width + spacing();
    }
    return y + rowHeight + margins.bottom() - area.y();
}

int FlowLayout::highestItem() const
{
    int height = 0;
    for (const QLayoutItem* item : items_)
        height = std::max(height, item->sizeHint().height());
    return height;
}

} // namespace karvo
