#include "ui/item_text_color.h"

#include <QPalette>
#include <QStyle>
#include <QStyleOptionViewItem>
#include <QWidget>

namespace karvo
{

QColor itemTextColor(const QStyleOptionViewItem& option)
{
    // Windows' own style lays a light tint under a chosen row and keeps its text dark, whatever the palette
    // says.
    const bool tints = option.widget != nullptr && option.widget->style()->inherits("QWindowsVistaStyle");
    const bool chosen = option.state.testFlag(QStyle::State_Selected) && !tints;
    const auto group = option.state.testFlag(QStyle::State_Active) ? QPalette::Active : QPalette::Inactive;
    return option.palette.color(group, chosen ? QPalette::HighlightedText : QPalette::Text);
}

} // namespace karvo
