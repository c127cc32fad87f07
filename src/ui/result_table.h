#pragma once

#include <QTableWidget>

namespace karvo
{

// A table of rows to read: rows are chosen as a whole, and Tab leaves it.
QTableWidget* resultTable(const char* name, QWidget* parent, const QString& spoken,
                          const QStringList& headings);

// Appends a row; what does not fit its cell is its tool tip. Returns its number.
int appendRow(QTableWidget& table, const QStringList& cells);

} // namespace karvo
