#include "platform/grid_cells.h"

#include "platform/runtime_error.h"

namespace velmo {

void GridCells::SetRows(int rows) {
    if (rows < 1)
        throw RuntimeError(ErrorNumber::InvalidArgument);
    rows_.resize(size_t(rows));
}

void GridCells::SetCols(int cols) {
    if (cols < 1)
        throw RuntimeError(ErrorNumber::InvalidArgument);
    if (cols < cols_) {
        for (CellRow& row : rows_)
            row.Truncate(Index(cols));
    }
    cols_ = cols;
}

void GridCells::RequireCell(int row, int column) const {
    if (row < 0 || row >= Rows() || column < 0 || column >= cols_)
        throw RuntimeError(ErrorNumber::SubscriptOutOfRange, QStringLiteral("(%1, %2)").arg(row).arg(column));
}

QString GridCells::Text(int row, int column) const {
    RequireCell(row, column);
    const int index = Index(column);
    if (index < 0)
        return row == 0 ? QString() : QString::number(row);
    return rows_[size_t(row)].Text(index).toString();
}

void GridCells::SetText(int row, int column, QStringView text) {
    RequireCell(row, column);
    const int index = Index(column);
    if (index < 0)
        throw RuntimeError(ErrorNumber::InvalidArgument, QStringLiteral("(%1, %2)").arg(row).arg(column));
    rows_[size_t(row)].SetText(index, text);
}

void GridCells::BecomeMessage(const QString& text) {
    message_ = true;
    cols_ = 1;
    rows_.assign(1, CellRow());
    rows_.front().SetText(0, text);
}

} // namespace velmo
