#pragma once

#include "platform/grid_cells.h"

#include <optional>

namespace velmo {

enum class SearchDirection { Forward, Backward };
// Whether the cell that one starts from may itself be what is found first.
enum class SearchStart { AtCurrent, BeyondCurrent };

// The place of a cell as the grid counts.
struct GridPlace {
    int row = 0;
    int column = 0;

    friend bool operator==(const GridPlace&, const GridPlace&) = default;
};

struct FoundCell {
    GridPlace place;
    // Whether the search went on at the table's other end.
    bool wrapped = false;
};

// The next data cell whose text contains the needle, row by row, whatever case, width and kana type; needle
// is folded for search. Goes once round the table; the current cell comes last at the latest. From a place
// that is no data cell all of them are searched. An empty needle is found nowhere.
std::optional<FoundCell> FindInTable(const GridCells& cells, QStringView needle, GridPlace current,
                                     SearchDirection direction, SearchStart start);

} // namespace velmo
