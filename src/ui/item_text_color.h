#pragma once

#include <QColor>

class QStyleOptionViewItem;

namespace karvo
{

// What the style itself takes for the text of a row, chosen or not: for what is painted beside that text.
QColor itemTextColor(const QStyleOptionViewItem& option);

} // namespace karvo
