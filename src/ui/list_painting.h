// What the lists paint beside what the toolkit paints for them.
#pragma once

#include <QColor>

class QListWidget;
class QString;
class QStyleOptionViewItem;

namespace karvo
{

// What the style itself takes for the text of a row, chosen or not: for what is painted beside that text.
QColor itemTextColor(const QStyleOptionViewItem& option);

// In the middle of a list that has no rows, in the font of the program.
void paintEmptyHint(QListWidget& list, const QString& hint);

} // namespace karvo
