#include "benchmarks/plain_view.h"

#include <utility>

namespace velmo::bench {

PlainModel::PlainModel(const GridCells& cells) {
    rows_.resize(size_t(cells.Rows()) - 1);
    for (int column = 1; column < cells.Cols(); ++column)
        header_.push_back(cells.Text(0, column));
    for (int row = 1; row < cells.Rows(); ++row) {
        for (int column = 1; column < cells.Cols(); ++column)
            rows_[size_t(row) - 1].push_back(cells.Text(row, column));
    }
}

void PlainModel::SetText(int row, int column, const QString& text) {
    rows_[size_t(row)][size_t(column)] = text;
    Q_EMIT dataChanged(index(row, column), index(row, column));
}

void PlainModel::InsertRow(int row) {
    beginInsertRows({}, row, row);
    rows_.insert(rows_.begin() + row, std::vector<QString>(header_.size()));
    endInsertRows();
}

void PlainModel::RemoveRow(int row) {
    beginRemoveRows({}, row, row);
    rows_.erase(rows_.begin() + row);
    endRemoveRows();
}

void PlainModel::SwapColumns(int left) {
    std::swap(header_[size_t(left)], header_[size_t(left) + 1]);
    for (std::vector<QString>& row : rows_)
        std::swap(row[size_t(left)], row[size_t(left) + 1]);
    Q_EMIT headerDataChanged(Qt::Horizontal, left, left + 1);
    Q_EMIT dataChanged(index(0, left), index(int(rows_.size()) - 1, left + 1));
}

int PlainModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(rows_.size());
}

int PlainModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(header_.size());
}

QVariant PlainModel::data(const QModelIndex& index, int role) const {
    if (role != Qt::DisplayRole)
        return {};
    return rows_[size_t(index.row())][size_t(index.column())];
}

QVariant PlainModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole)
        return {};
    return orientation == Qt::Horizontal ? QVariant(header_[size_t(section)]) : QVariant(section + 1);
}

} // namespace velmo::bench
