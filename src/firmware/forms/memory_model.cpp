#include "firmware/forms/memory_model.h"

#include "ui/captions.h"

#include <QColor>
#include <QFont>
#include <QStringList>

namespace karvo
{

namespace
{

constexpr QColor differsTint(255, 160, 0, 70); // over the table's own, light or dark
constexpr int columns = static_cast<int>(bytesInRow);

QFont boldFont()
{
    QFont font;
    font.setBold(true);
    return font;
}

} // namespace

MemoryModel::MemoryModel(const MemoryView& view, const CvSet& set, const LanguageTables& texts,
                         QObject* parent)
    : QAbstractTableModel(parent), view_(view), set_(set), texts_(texts)
{
}

int MemoryModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(view_.rowCount());
}

int MemoryModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : columns;
}

std::size_t MemoryModel::addressOf(const QModelIndex& index)
{
    return index.isValid() ? static_cast<std::size_t>(index.row() * columns + index.column()) : 0;
}

QModelIndex MemoryModel::indexOf(std::size_t address) const
{
    return index(static_cast<int>(address / bytesInRow), static_cast<int>(address % bytesInRow));
}

QVariant MemoryModel::data(const QModelIndex& index, int role) const
{
    const auto address = addressOf(index);
    switch (role) {
    case Qt::DisplayRole:
        return qtText(view_.cellText(address));
    case Qt::TextAlignmentRole:
        return Qt::AlignCenter;
    case Qt::FontRole:
        return view_.differs(address) ? QVariant(boldFont()) : QVariant();
    case Qt::BackgroundRole:
        return view_.differs(address) ? QVariant(differsTint) : QVariant();
    case Qt::ToolTipRole:
    case Qt::AccessibleTextRole: {
        QStringList lines;
        for (const Text& line : byteDetails(view_, address, set_, texts_))
            lines.append(qtText(line));
        return lines.join(role == Qt::ToolTipRole ? QStringLiteral("\n") : QStringLiteral("; "));
    }
    default:
        return {};
    }
}

QVariant MemoryModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole)
        return {};
    if (orientation == Qt::Horizontal)
        return QString::number(section, view_.isHexadecimal() ? 16 : 10).toUpper();
    const auto address = static_cast<std::size_t>(section) * bytesInRow;
    return QStringLiteral("%1  CV%2").arg(qtText(view_.addressText(address))).arg(cvAtAddress(address));
}

} // namespace karvo
