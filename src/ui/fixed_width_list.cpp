#include "ui/fixed_width_list.h"

#include "ui/fixed_width_font.h"
#include "ui/list_painting.h"

#include <QApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QStyledItemDelegate>

#include <algorithm>

namespace karvo
{

namespace
{

constexpr int nameRole = Qt::UserRole;
constexpr int gapInCharacters = 3;
constexpr int rowMargin = 2;         // pixels above and below a row's text
constexpr float mutedOpacity = 0.7F; // stands back behind the text, and still reads well on any background

QString nameOf(const QListWidgetItem& item)
{
    return item.data(nameRole).toString();
}

void fill(QListWidgetItem& item, const FixedWidthList::Row& row)
{
    item.setText(row.text);
    item.setData(nameRole, row.name);
    item.setData(Qt::AccessibleTextRole,
                 row.name.isEmpty() ? row.text : row.text + QStringLiteral(", ") + row.name);
}

QString withoutTrailingBlanks(QString text)
{
    while (text.endsWith(u' '))
        text.chop(1);
    return text;
}

class RowDelegate : public QStyledItemDelegate
{
public:
    explicit RowDelegate(FixedWidthList* list) : QStyledItemDelegate(list), list_(*list) {}

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        QStyledItemDelegate::paint(painter, option, index);
        const QString name = index.data(nameRole).toString();
        if (name.isEmpty())
            return;
        QColor color = itemTextColor(option);
        if (!option.state.testFlag(QStyle::State_Selected))
            color.setAlphaF(mutedOpacity);
        painter->save();
        painter->setPen(color);
        painter->setFont(QApplication::font());
        const QRect place = option.rect.adjusted(list_.nameColumn(), 0, 0, 0);
        painter->drawText(place, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                          painter->fontMetrics().elidedText(name, Qt::ElideRight, place.width()));
        painter->restore();
    }

    QSize sizeHint(const QStyleOptionViewItem& /*option*/, const QModelIndex& /*index*/) const override
    {
        return list_.rowSize();
    }

private:
    const FixedWidthList& list_;
};

} // namespace

FixedWidthList::FixedWidthList(QWidget* parent) : QListWidget(parent)
{
    setItemDelegate(new RowDelegate(this));
    setUniformItemSizes(true);
    useFixedFont();
}

void FixedWidthList::setRows(const std::vector<Row>& rows)
{
    const QSignalBlocker quiet(this); // none of the rows in between is chosen by anybody
    clear();
    for (const Row& row : rows)
        fill(*new QListWidgetItem(this), row);
    setCurrentRow(-1);
    measureRows();
}

void FixedWidthList::updateRows(const std::vector<Row>& rows)
{
    if (static_cast<std::size_t>(count()) != rows.size())
        return setRows(rows);
    for (int row = 0; row < count(); ++row)
        fill(*item(row), rows[static_cast<std::size_t>(row)]);
    measureRows();
}

void FixedWidthList::setEmptyHint(const QString& hint)
{
    emptyHint_ = hint;
    setAccessibleDescription(count() == 0 ? hint : QString());
    viewport()->update();
}

void FixedWidthList::paintEvent(QPaintEvent* event)
{
    QListWidget::paintEvent(event);
    paintEmptyHint(*this, emptyHint_);
}

// Digits are values here, and no search for a row that begins with them.
void FixedWidthList::keyPressEvent(QKeyEvent* event)
{
    const auto modifiers = event->modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier);
    const QString typed = event->text();
    const bool isPlain = currentRow() >= 0 && modifiers == Qt::NoModifier;
    if (isPlain && typed.size() == 1 && typed.front() >= u'0' && typed.front() <= u'9')
        emit digitTyped(typed);
    else if (isPlain &&
             (event->key() == Qt::Key_F2 || event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter))
        emit entryWanted();
    else if (isPlain && (typed == QStringLiteral("+") || typed == QStringLiteral("-")))
        emit stepWanted(typed == QStringLiteral("+") ? 1 : -1);
    else
        QListWidget::keyPressEvent(event);
}

void FixedWidthList::changeEvent(QEvent* event)
{
    QListWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        measureRows();
}

// Past the item view's own handling, which makes the first row the current one: to come by is not to choose.
void FixedWidthList::focusInEvent(QFocusEvent* event)
{
    QAbstractScrollArea::focusInEvent(event); // NOLINT(bugprone-parent-virtual-call)
    viewport()->update();
}

void FixedWidthList::useFixedFont()
{
    QFont fixed = fixedWidthFont();
    fixed.setPointSizeF(std::max(fixed.pointSizeF(), QApplication::font().pointSizeF()));
    setFont(fixed);
}

// Names stand behind the longest text that has one: a line without a name may run on as far as it likes.
void FixedWidthList::measureRows()
{
    const QFontMetrics metrics(font());
    const QFontMetrics nameMetrics(QApplication::font());
    int widestNamedText = 0;
    int widestText = 0;
    int widestName = 0;
    for (int row = 0; row < count(); ++row) {
        const QString name = nameOf(*item(row));
        const int width = metrics.horizontalAdvance(withoutTrailingBlanks(item(row)->text()));
        widestText = std::max(widestText, width);
        if (name.isEmpty())
            continue;
        widestNamedText = std::max(widestNamedText, width);
        widestName = std::max(widestName, nameMetrics.horizontalAdvance(name));
    }
    const int gap = gapInCharacters * metrics.horizontalAdvance(u'0');
    nameColumn_ = widestNamedText + gap;
    rowSize_ = {std::max(widestText, nameColumn_ + widestName) + gap,
                std::max(metrics.height(), nameMetrics.height()) + 2 * rowMargin};
    scheduleDelayedItemsLayout();
    viewport()->update();
}

} // namespace karvo
