#include "ui/result_table.h"

#include "ui/named.h"

#include <QHeaderView>

#include <algorithm>

namespace karvo
{

namespace
{

constexpr int widestColumn = 36; // characters; a longer text goes on in a second line

} // namespace

QTableWidget* resultTable(const char* name, QWidget* parent, const QString& spoken,
                          const QStringList& headings)
{
    auto* const table = named<QTableWidget>(name, parent, spoken);
    table->setColumnCount(static_cast<int>(headings.size()));
    table->setHorizontalHeaderLabels(headings);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setTabKeyNavigation(false);
    table->verticalHeader()->hide();
    table->horizontalHeader()->setStretchLastSection(true);
    table->horizontalHeader()->setHighlightSections(false);
    return table;
}

int appendRow(QTableWidget& table, const QStringList& cells)
{
    const int row = table.rowCount();
    table.insertRow(row);
    for (int column = 0; column < cells.size(); ++column) {
        auto* const item = new QTableWidgetItem;
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
        setCell(*item, cells[column]);
        table.setItem(row, column, item);
    }
    return row;
}

void setCell(QTableWidgetItem& cell, const QString& text)
{
    cell.setText(text);
    cell.setToolTip(text);
}

void fitColumns(QTableWidget& table)
{
    const int widest = widestColumn * table.fontMetrics().averageCharWidth();
    table.resizeColumnsToContents();
    for (int column = 0; column + 1 < table.columnCount(); ++column)
        table.setColumnWidth(column, std::min(table.columnWidth(column), widest));
}

} // namespace karvo
