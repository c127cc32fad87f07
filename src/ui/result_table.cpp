#include "ui/result_table.h"

#include "ui/named.h"

#include <QHeaderView>

namespace karvo
{

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
    return table;
}

int appendRow(QTableWidget& table, const QStringList& cells)
{
    const int row = table.rowCount();
    table.insertRow(row);
    for (int column = 0; column < cells.size(); ++column) {
        auto* const item = new QTableWidgetItem(cells[column]);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
        item->setToolTip(cells[column]);
        table.setItem(row, column, item);
    }
    return row;
}

} // namespace karvo
