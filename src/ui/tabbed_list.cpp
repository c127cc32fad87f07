#include "ui/tabbed_list.h"

#include "ui/list_painting.h"

#include <QApplication>
#include <QEvent>
#include <QPainter>
#include <QStyledItemDelegate>

#include <algorithm>

namespace karvo
{

namespace
{

constexpr int remarkRole = Qt::UserRole;
constexpr int markedRole = Qt::UserRole + 1;
constexpr int gapInCharacters = 3;
constexpr int margin = 4; // pixels around a line

// The parts of the text, and the remark as the last one.
QStringList partsOf(const QModelIndex& index)
{
    const QString text = index.data().toString();
    QStringList parts = QString(text).remove(u'\r').split(u'\t');
    const QString remark = index.data(remarkRole).toString();
    if (!remark.isEmpty())
        parts.append(remark.split(u'\t'));
    return parts;
}

QFont fontOf(const QModelIndex& index, QFont font)
{
    font.setBold(index.data(markedRole).toBool());
    return font;
}

class LineDelegate : public QStyledItemDelegate
{
public:
    explicit LineDelegate(TabbedList* list) : QStyledItemDelegate(list), list_(*list) {}

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        QStyleOptionViewItem background = option;
        initStyleOption(&background, index);
        background.text.clear();
        option.widget->style()->drawControl(QStyle::CE_ItemViewItem, &background, painter, option.widget);
        painter->save();
        painter->setFont(fontOf(index, option.font));
        painter->setPen(itemTextColor(option));
        paintParts(*painter, option.rect, partsOf(index));
        painter->restore();
    }

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        const QFontMetrics metrics(fontOf(index, option.font));
        const int lines = 1 + static_cast<int>(index.data().toString().count(u'\n'));
        const QStringList parts = partsOf(index);
        const auto& columns = list_.columns();
        const auto last = std::min(static_cast<std::size_t>(parts.size()), columns.size());
        const int start = parts.size() < 2 || last == 0 ? 0 : columns[last - 1];
        return {start + metrics.boundingRect(QRect(), 0, parts.back()).width() + 2 * margin,
                lines * metrics.height() + margin};
    }

private:
    void paintParts(QPainter& painter, const QRect& line, const QStringList& parts) const
    {
        const QRect inner = line.adjusted(margin, 0, -margin, 0);
        if (parts.size() < 2) {
            painter.drawText(inner, Qt::AlignLeft | Qt::AlignVCenter, parts.value(0));
            return;
        }
        const auto& columns = list_.columns();
        for (qsizetype i = 0; i < parts.size(); ++i) {
            const auto column = static_cast<std::size_t>(i);
            const QRect place = inner.adjusted(column < columns.size() ? columns[column] : 0, 0, 0, 0);
            painter.drawText(place, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, parts[i]);
        }
    }

    const TabbedList& list_;
};

} // namespace

TabbedList::TabbedList(QWidget* parent) : QListWidget(parent)
{
    setItemDelegate(new LineDelegate(this));
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
}

void TabbedList::setLines(const std::vector<Line>& lines)
{
    clear();
    for (const Line& line : lines) {
        auto* const item = new QListWidgetItem(line.text, this);
        item->setData(remarkRole, line.remark);
        item->setData(markedRole, line.marked);
        const QString spoken = line.remark.isEmpty() ? line.text : line.text + u'\t' + line.remark;
        item->setData(Qt::AccessibleTextRole, QString(spoken).replace(u'\t', QStringLiteral(", ")));
    }
    setCurrentRow(-1);
    measure();
}

void TabbedList::appendText(const QString& text)
{
    auto* const item = new QListWidgetItem(text, this);
    setCurrentItem(item);
    scrollToItem(item);
}

void TabbedList::setEmptyHint(const QString& hint)
{
    emptyHint_ = hint;
    setAccessibleDescription(count() == 0 ? hint : QString());
    viewport()->update();
}

void TabbedList::paintEvent(QPaintEvent* event)
{
    QListWidget::paintEvent(event);
    paintEmptyHint(*this, emptyHint_);
}

void TabbedList::changeEvent(QEvent* event)
{
    QListWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        measure();
}

// Bold is wider: a line may be marked or not.
void TabbedList::measure()
{
    QFont bold = font();
    bold.setBold(true);
    const QFontMetrics metrics(bold);
    std::vector<int> widths;
    for (int row = 0; row < count(); ++row) {
        const QStringList parts = partsOf(model()->index(row, 0));
        for (qsizetype i = 0; parts.size() > 1 && i < parts.size(); ++i) {
            const auto column = static_cast<std::size_t>(i);
            widths.resize(std::max(widths.size(), column + 1));
            widths[column] = std::max(widths[column], metrics.horizontalAdvance(parts[i]));
        }
    }
    columns_.assign(1, 0);
    for (const int width : widths)
        columns_.push_back(columns_.back() + width + gapInCharacters * metrics.averageCharWidth());
    scheduleDelayedItemsLayout();
}

} // namespace karvo
