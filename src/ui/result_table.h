#pragma once

#include <QTableWidget>

namespace karvo
{

// A table of rows to read: rows are chosen as a whole, and Tab leaves it.
QTableWidget* resultTable(const char* name, QWidget* parent, const QString& spoken,
                          const QStringList& headings);

// Appends a row, and returns its number.
int appendRow(QTableWidget& table, const QStringList& cells);

// The text is the cell's tool tip too, where it does not fit.
void setCell(QTableWidgetItem& cell, const QString& text);

// Each column is as wide as what it holds, but leaves room for the last one, which takes the rest.
void fitColumns(QTableWidget& table);

} // namespace karvo
