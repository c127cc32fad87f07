// A memory as the rows and columns of a table.
#pragma once

#include "firmware/memory_view.h"

#include <QAbstractTableModel>

namespace karvo
{

class MemoryModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    // `view`, `set` and `texts` outlive it.
    MemoryModel(const MemoryView& view, const CvSet& set, const LanguageTables& texts, QObject* parent);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    // `change` replaces what the view shows.
    template <typename Change>
    void replace(const Change& change)
    {
        beginResetModel();
        change();
        endResetModel();
    }

    // `change` keeps the bytes, and shows them in another way.
    template <typename Change>
    void repaint(const Change& change)
    {
        change();
        emit headerDataChanged(Qt::Vertical, 0, rowCount() - 1);
        emit headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
        emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
    }

    QModelIndex indexOf(std::size_t address) const;
    static std::size_t addressOf(const QModelIndex& index);

private:
    const MemoryView& view_;
    const CvSet& set_;
    const LanguageTables& texts_;
};

} // namespace karvo
