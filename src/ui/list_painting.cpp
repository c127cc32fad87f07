#include "ui/list_painting.h"

#include <QApplication>
#include <QListWidget>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionViewItem>

namespace karvo
{

namespace
{

constexpr int hintMargin = 24; // pixels

} // namespace

QColor itemTextColor(const QStyleOptionViewItem& option)
{
    // Windows' own style lays a light tint under a chosen row and keeps its text dark, whatever the palette
    // says.
    const bool tints = option.widget != nullptr && option.widget->style()->inherits("QWindowsVistaStyle");
    const bool chosen = option.state.testFlag(QStyle::State_Selected) && !tints;
    const auto group = option.state.testFlag(QStyle::State_Active) ? QPalette::Active : QPalette::Inactive;
    return option.palette.color(group, chosen ? QPalette::HighlightedText : QPalette::Text);
}

void paintEmptyHint(QListWidget& list, const QString& hint)
{
    if (list.count() != 0 || hint.isEmpty())
        return;
    QPainter painter(list.viewport());
    painter.setFont(QApplication::font());
    painter.setPen(list.palette().color(QPalette::Text));
    painter.drawText(list.viewport()->rect().adjusted(hintMargin, hintMargin, -hintMargin, -hintMargin),
                     Qt::AlignCenter | Qt::TextWordWrap, hint);
}

} // namespace karvo
