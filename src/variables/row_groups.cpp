#include "variables/row_groups.h"

namespace velmo {

CellRow* RowGroups::Add(QStringView firstValue, Duplicates duplicates) {
    const QString key = firstValue.toString();
    auto group = groups_.constFind(key);
    if (group == groups_.constEnd())
        group = groups_.insert(key, int(groups_.size()));
    else if (duplicates == Duplicates::Hidden)
        return nullptr;
    return &rows_.emplace_back(Row{*group, {}}).cells;
}

void RowGroups::MoveInto(GridCells& cells) {
    // Counted first, each row goes straight to its place, however the groups are mixed.
    std::vector<size_t> next(size_t(groups_.size()) + 1, 0);
    for (const Row& row : rows_)
        ++next[size_t(row.group) + 1];
    for (size_t i = 1; i < next.size(); ++i)
        next[i] += next[i - 1];
    std::vector<CellRow*> order(rows_.size());
    for (Row& row : rows_)
        order[next[size_t(row.group)]++] = &row.cells;
    cells.ReserveRows(cells.Rows() + Count());
    for (CellRow* row : order)
        cells.AppendRow(std::move(*row));
    rows_.clear();
    groups_.clear();
}

} // namespace velmo
