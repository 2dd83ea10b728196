#include "variables/table_search.h"

#include "platform/text_folding.h"

namespace velmo {

std::optional<FoundCell> FindInTable(const GridCells& cells, QStringView needle, GridPlace current,
                                     SearchDirection direction, SearchStart start) {
    const int firstColumn = cells.HasRowNumbers() ? 1 : 0;
    const int columns = cells.Cols() - firstColumn;
    const int rows = cells.Rows() - 1;
    if (needle.isEmpty() || cells.IsMessage() || rows <= 0 || columns <= 0)
        return std::nullopt;

    const bool forward = direction == SearchDirection::Forward;
    const int step = forward ? 1 : -1;
    const qint64 count = qint64(rows) * columns;
    const qint64 firstSearched = forward ? 0 : count - 1;
    const bool fromCell = current.row >= 1 && current.row < cells.Rows() && current.column >= firstColumn &&
                          current.column < cells.Cols();
    qint64 at = firstSearched;
    if (fromCell) {
        at = qint64(current.row - 1) * columns + current.column - firstColumn;
        if (start == SearchStart::BeyondCurrent)
            at += step;
    }

    bool wrapped = false;
    for (qint64 searched = 0; searched < count; ++searched, at += step) {
        if (at < 0 || at >= count) {
            at = firstSearched;
            wrapped = true;
        }
        const GridPlace place{int(at / columns) + 1, int(at % columns) + firstColumn};
        if (ContainsFolded(cells.TextView(place.row, place.column), needle))
            return FoundCell{place, wrapped};
    }
    return std::nullopt;
}

} // namespace velmo
