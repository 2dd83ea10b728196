#include "platform/grid_model.h"

#include "platform/numbers.h"
#include "platform/plain_tool_tip.h"

#include <QFont>

#include <limits>

namespace velmo {

namespace {

bool IsNumber(QStringView text) {
    constexpr double none = std::numeric_limits<double>::max();
    return ToNumberOr(text, none) != none;
}

} // namespace

GridModel::GridModel(const GridCells& cells, QObject* parent) : QAbstractTableModel(parent), cells_(cells) {
    Measure();
}

int GridModel::Shift::operator()(int place) const {
    if (place < first)
        return place;
    return count < 0 && place < first - count ? -1 : place + count;
}

void GridModel::Measure() {
    const bool message = cells_.IsMessage();
    firstRow_ = message ? 0 : 1;
    firstColumn_ = !message && cells_.HasRowNumbers() ? 1 : 0;
    rows_ = cells_.Rows() - firstRow_;
    columns_ = qMax(0, cells_.Cols() - firstColumn_);
    rowShift_ = columnShift_ = {};
}

void GridModel::CellsReplaced() {
    beginResetModel();
    markedRow_ = 0;
    Measure();
    endResetModel();
}

void GridModel::TextsChanged() {
    RangeChanged({0, firstColumn_, rows_ + firstRow_, columns_});
}

void GridModel::RangeChanged(const CellRange& range) {
    const int left = qMax(0, range.column - firstColumn_);
    const int right = qMin(columns_, range.column + range.columns - firstColumn_) - 1;
    if (left > right)
        return;
    if (range.row < firstRow_)
        Q_EMIT headerDataChanged(Qt::Horizontal, left, right);
    const int top = qMax(0, range.row - firstRow_);
    const int bottom = qMin(rows_, range.row + range.rows - firstRow_) - 1;
    if (top <= bottom)
        Q_EMIT dataChanged(index(top, left), index(bottom, right));
}

void GridModel::RowsInserted(int row, int count) {
    const int first = row - firstRow_;
    rowShift_ = {row, count};
    markedRow_ = rowShift_(markedRow_);
    beginInsertRows({}, first, first + count - 1);
    Measure();
    endInsertRows();
    Q_EMIT headerDataChanged(Qt::Vertical, first, rows_ - 1);
}

void GridModel::RowsRemoved(int row, int count) {
    const int first = row - firstRow_;
    rowShift_ = {row, -count};
    markedRow_ = qMax(0, rowShift_(markedRow_));
    beginRemoveRows({}, first, first + count - 1);
    Measure();
    endRemoveRows();
    if (first < rows_)
        Q_EMIT headerDataChanged(Qt::Vertical, first, rows_ - 1);
}

void GridModel::ColumnsInserted(int column) {
    columnShift_ = {column, 1};
    beginInsertColumns({}, Section(column), Section(column));
    Measure();
    endInsertColumns();
}

void GridModel::ColumnsRemoved(int column) {
    columnShift_ = {column, -1};
    beginRemoveColumns({}, Section(column), Section(column));
    Measure();
    endRemoveColumns();
}

void GridModel::ColumnsSwapped(int left) {
    const int section = Section(left);
    beginMoveColumns({}, section, section, {}, section + 2);
    endMoveColumns();
    Q_EMIT headerDataChanged(Qt::Horizontal, section, section + 1);
}

void GridModel::MarkRow(int row) {
    const int before = std::exchange(markedRow_, row);
    for (const int changed : {before - firstRow_, row - firstRow_}) {
        if (changed < 0 || changed >= rows_)
            continue;
        if (columns_ > 0)
            Q_EMIT dataChanged(index(changed, 0), index(changed, columns_ - 1), {Qt::FontRole});
        Q_EMIT headerDataChanged(Qt::Vertical, changed, changed);
    }
}

QModelIndex GridModel::IndexOf(int row, int column) const {
    return index(row - firstRow_, column - firstColumn_);
}

int GridModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rows_;
}

int GridModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : columns_;
}

QVariant GridModel::MarkedFont(int row) const {
    if (row != markedRow_ || row == 0)
        return {};
    QFont font;
    font.setBold(true);
    return font;
}

QVariant GridModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const int row = rowShift_(RowOf(index));
    const int column = columnShift_(ColumnOf(index));
    if (!HasCell(row, column))
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return cells_.Text(row, column);
    case Qt::ToolTipRole:
        return PlainToolTip(cells_.Text(row, column));
    case Qt::TextAlignmentRole:
        return int(Qt::AlignVCenter | (IsNumber(cells_.Text(row, column)) ? Qt::AlignRight : Qt::AlignLeft));
    case Qt::FontRole:
        return MarkedFont(row);
    default:
        return {};
    }
}

Qt::ItemFlags GridModel::flags(const QModelIndex& index) const {
    if (!index.isValid())
        return Qt::NoItemFlags;
    if (cells_.IsMessage())
        return Qt::ItemIsEnabled | Qt::ItemNeverHasChildren;
    // The view offers the input method only where something can be entered.
    return QAbstractTableModel::flags(index) | Qt::ItemIsEditable;
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    const bool across = orientation == Qt::Horizontal;
    if (cells_.IsMessage() || section < 0 || section >= (across ? columns_ : rows_))
        return {};
    const int row = across ? 0 : rowShift_(section + firstRow_);
    const int column = across ? columnShift_(section + firstColumn_) : 0;
    if (!HasCell(row, column))
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return across || firstColumn_ > 0 ? cells_.Text(row, column) : QVariant();
    case Qt::ToolTipRole:
        return across || firstColumn_ > 0 ? PlainToolTip(cells_.Text(row, column)) : QVariant();
    case Qt::FontRole:
        return across ? QVariant() : MarkedFont(row);
    default:
        return {};
    }
}

} // namespace velmo
