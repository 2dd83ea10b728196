#include "platform/grid_model.h"

#include "platform/numbers.h"

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

void GridModel::Measure() {
    const bool message = cells_.IsMessage();
    firstRow_ = message ? 0 : 1;
    firstColumn_ = !message && cells_.HasRowNumbers() ? 1 : 0;
    rows_ = cells_.Rows() - firstRow_;
    columns_ = qMax(0, cells_.Cols() - firstColumn_);
}

void GridModel::CellsReplaced() {
    beginResetModel();
    markedRow_ = 0;
    Measure();
    endResetModel();
}

void GridModel::TextsChanged() {
    if (columns_ == 0)
        return;
    Q_EMIT headerDataChanged(Qt::Horizontal, 0, columns_ - 1);
    if (rows_ > 0)
        Q_EMIT dataChanged(index(0, 0), index(rows_ - 1, columns_ - 1));
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
    const int row = RowOf(index);
    const int column = ColumnOf(index);
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
        return cells_.Text(row, column);
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
    const int row = across ? 0 : section + firstRow_;
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
        return across || firstColumn_ > 0 ? cells_.Text(row, across ? section + firstColumn_ : 0)
                                          : QVariant();
    case Qt::FontRole:
        return across ? QVariant() : MarkedFont(row);
    default:
        return {};
    }
}

} // namespace velmo
