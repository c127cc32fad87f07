#include "editors/forms/key_map_picture.h"

#include "editors/key_map.h"
#include "ui/captions.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace karvo
{

namespace
{

constexpr int chosenRole = Qt::UserRole;

// A disc for what a key switches, a tick for a switch, and the number of a value that no text explains.
class KeyDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        const QPalette& colors = option.palette;
        const QColor text = colors.color(QPalette::Text);
        const bool enabled = (index.flags() & Qt::ItemIsEnabled) != 0;
        const bool chosen = index.data(chosenRole).toBool();
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        const double size = option.fontMetrics.height() * 0.8;
        const QRectF mark(QRectF(option.rect).center() - QPointF(size / 2, size / 2), QSizeF(size, size));
        if (chosen)
            painter->fillRect(option.rect,
                              mixed(colors.color(QPalette::Base), colors.color(QPalette::Highlight), 0.3));
        if (enabled)
            paintMark(*painter, index, mark, text, mixed(colors.color(QPalette::Base), text, 0.55));
        if ((option.state & QStyle::State_HasFocus) != 0) {
            painter->setPen(QPen(text, 2));
            painter->setBrush(Qt::NoBrush);
            painter->drawRect(QRectF(option.rect).adjusted(1, 1, -1, -1));
        }
        painter->restore();
    }

private:
    static void paintMark(QPainter& painter, const QModelIndex& index, const QRectF& mark, const QColor& text,
                          const QColor& faint)
    {
        const bool chosen = index.data(chosenRole).toBool();
        const int row = index.row();
        painter.setPen(QPen(chosen ? text : faint, chosen ? 1.6 : 1));
        if (row == KeyMapRows::otherValue) {
            painter.drawText(mark.adjusted(-20, 0, 20, 0), Qt::AlignCenter, index.data().toString());
        } else if (row > KeyMapRows::otherValue) {
            painter.drawRect(mark);
            if (chosen)
                painter.drawPolyline(
                    QPolygonF({mark.topLeft() + QPointF(mark.width() * 0.2, mark.height() * 0.5),
                               mark.topLeft() + QPointF(mark.width() * 0.42, mark.height() * 0.78),
                               mark.topLeft() + QPointF(mark.width() * 0.82, mark.height() * 0.2)}));
        } else {
            painter.drawEllipse(mark);
            painter.setBrush(text);
            if (chosen)
                painter.drawEllipse(mark.center(), mark.width() * 0.28, mark.height() * 0.28);
        }
    }
};

} // namespace

KeyMapPicture::KeyMapPicture(const PictureWords& words, QWidget* parent)
    : Picture(QStringLiteral("keys"), words, Caption::pictureKeys, parent),
      table_(new QTableWidget(KeyMapRows::count, functionKeys, this))
{
    auto* const all = new QVBoxLayout(this);
    all->setContentsMargins({});
    all->addWidget(table_);
    table_->setObjectName(QStringLiteral("key_map"));
    table_->setAccessibleName(accessibleName());
    table_->setItemDelegate(new KeyDelegate(table_));
    table_->setSelectionMode(QAbstractItemView::NoSelection);
    table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table_->setTabKeyNavigation(false);
    table_->installEventFilter(this);
    for (int row = 0; row < KeyMapRows::count; ++row)
        table_->setVerticalHeaderItem(row, new QTableWidgetItem(qtText(rowName(words, row))));
    for (int key = 0; key < functionKeys; ++key) {
        table_->setHorizontalHeaderItem(key, new QTableWidgetItem(QStringLiteral("F%1").arg(key)));
        for (int row = 0; row < KeyMapRows::count; ++row)
            table_->setItem(row, key, new QTableWidgetItem);
    }
    const int line = fontMetrics().height();
    table_->horizontalHeader()->setMinimumSectionSize(line * 8 / 5);
    table_->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    table_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table_->verticalHeader()->setDefaultSectionSize(line * 3 / 2);
    table_->verticalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    table_->horizontalHeader()->setHighlightSections(true);
    connect(table_, &QTableWidget::cellClicked, this, &KeyMapPicture::choose);
}

bool KeyMapPicture::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == table_ && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter) {
            choose(table_->currentRow(), table_->currentColumn());
            return true;
        }
    }
    return Picture::eventFilter(watched, event);
}

void KeyMapPicture::choose(int row, int key)
{
    if (const auto change = chosenAt(values(), row, key))
        emit changed(change->cv, change->value);
}

void KeyMapPicture::valuesChanged()
{
    QStringList chosen;
    std::array<bool, KeyMapRows::count> used{};
    for (int row = 0; row < KeyMapRows::count; ++row)
        for (int key = 0; key < functionKeys; ++key) {
            QTableWidgetItem& item = *table_->item(row, key);
            const bool isThis = isChosen(values(), row, key);
            const bool shown = row != KeyMapRows::otherValue || isThis;
            const QString text = qtText(placeText(words(), values(), row, key));
            item.setFlags(isPlace(values(), row, key) && shown ? Qt::ItemIsEnabled | Qt::ItemIsSelectable
                                                               : Qt::NoItemFlags);
            item.setData(chosenRole, isThis);
            item.setData(Qt::AccessibleTextRole, text);
            item.setToolTip(text);
            if (row == KeyMapRows::otherValue)
                item.setText(isThis ? QString::number(*values()(cvOfPlace(row, key))) : QString());
            used[static_cast<std::size_t>(row)] |=
                row == KeyMapRows::otherValue ? isThis : isPlace(values(), row, key);
            if (isThis)
                chosen += text;
        }
    int height = table_->horizontalHeader()->sizeHint().height() + 2 * table_->frameWidth();
    for (int row = 0; row < KeyMapRows::count; ++row) {
        table_->setRowHidden(row, !used[static_cast<std::size_t>(row)]);
        height += table_->rowHeight(row);
    }
    table_->setFixedHeight(height);
    setAccessibleDescription(spoken(chosen));
    table_->setAccessibleDescription(accessibleDescription());
}

} // namespace karvo
