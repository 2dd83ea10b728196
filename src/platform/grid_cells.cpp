#include "platform/grid_cells.h"

#include "platform/runtime_error.h"

#include <utility>

namespace velmo {

void GridCells::SetRows(int rows) {
    if (rows < 1)
        throw RuntimeError(ErrorNumber::InvalidArgument);
    rows_.resize(size_t(rows));
}

void GridCells::SetCols(int cols) {
    if (cols < 1)
        throw RuntimeError(ErrorNumber::InvalidArgument);
    while (int(stores_.size()) < Place(cols))
        stores_.push_back(made_++);
    while (int(stores_.size()) > Place(cols)) {
        for (CellRow& row : rows_)
            row.Forget(stores_.back());
        stores_.pop_back();
    }
    cols_ = cols;
}

void GridCells::RequireRow(int row, int first, int end) const {
    if (row < first || row >= end)
        throw RuntimeError(ErrorNumber::SubscriptOutOfRange, QString::number(row));
}

void GridCells::RequireCell(int row, int column) const {
    if (row < 0 || row >= Rows() || column < 0 || column >= cols_)
        throw RuntimeError(ErrorNumber::SubscriptOutOfRange, QStringLiteral("(%1, %2)").arg(row).arg(column));
}

void GridCells::RequireTextColumn(int column) const {
    if (Place(column) < 0 || column >= cols_)
        throw RuntimeError(ErrorNumber::SubscriptOutOfRange, QString::number(column));
}

QString GridCells::Text(int row, int column) const {
    RequireCell(row, column);
    if (Place(column) < 0)
        return row == 0 ? QString() : QString::number(row);
    return rows_[size_t(row)].Text(Index(column)).toString();
}

QStringView GridCells::TextView(int row, int column) const {
    RequireCell(row, column);
    if (Place(column) < 0)
        throw RuntimeError(ErrorNumber::InvalidArgument, QStringLiteral("(%1, %2)").arg(row).arg(column));
    return rows_[size_t(row)].Text(Index(column));
}

const std::vector<QStringView>& GridCells::RowTexts(int row, RowBuffer& buffer) const {
    RequireRow(row, 0, Rows());
    rows_[size_t(row)].GetTexts(buffer.stored, made_);
    buffer.texts.resize(stores_.size());
    for (size_t i = 0; i < stores_.size(); ++i)
        buffer.texts[i] = buffer.stored[size_t(stores_[i])];
    return buffer.texts;
}

void GridCells::SetText(int row, int column, QStringView text) {
    RequireCell(row, column);
    if (Place(column) < 0)
        throw RuntimeError(ErrorNumber::InvalidArgument, QStringLiteral("(%1, %2)").arg(row).arg(column));
    rows_[size_t(row)].SetText(Index(column), text);
}

void GridCells::InsertRow(int at, CellRow row) {
    RequireRow(at, 1, Rows() + 1);
    rows_.insert(rows_.begin() + at, std::move(row));
}

CellRow GridCells::TakeRow(int row) {
    RequireRow(row, 1, Rows());
    CellRow taken = std::move(rows_[size_t(row)]);
    rows_.erase(rows_.begin() + row);
    return taken;
}

const CellRow& GridCells::RowAt(int row) const {
    RequireRow(row, 0, Rows());
    return rows_[size_t(row)];
}

void GridCells::SwapRows(int left, int right) {
    RequireRow(left, 1, Rows());
    RequireRow(right, 1, Rows());
    std::swap(rows_[size_t(left)], rows_[size_t(right)]);
}

GridCells::ColumnStore GridCells::MakeColumn() {
    return ColumnStore(made_++);
}

void GridCells::InsertColumn(int at, ColumnStore store) {
    const int place = Place(at);
    if (place < 0 || at > cols_)
        throw RuntimeError(ErrorNumber::SubscriptOutOfRange, QString::number(at));
    stores_.insert(stores_.begin() + place, int(store));
    ++cols_;
}

GridCells::ColumnStore GridCells::TakeColumn(int column) {
    RequireTextColumn(column);
    const auto store = ColumnStore(Index(column));
    stores_.erase(stores_.begin() + Place(column));
    --cols_;
    return store;
}

void GridCells::SwapColumns(int left, int right) {
    RequireTextColumn(left);
    RequireTextColumn(right);
    std::swap(stores_[size_t(Place(left))], stores_[size_t(Place(right))]);
}

void GridCells::BecomeMessage(const QString& text) {
    message_ = true;
    cols_ = 1;
    stores_.assign(1, 0);
    made_ = 1;
    rows_.assign(1, CellRow());
    rows_.front().SetText(0, text);
}

} // namespace velmo
