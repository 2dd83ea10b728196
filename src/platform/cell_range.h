#pragma once

namespace velmo {

// A rectangle of the data cells of a grid: its first cell, 1-based, and how far it reaches.
struct CellRange {
    int row = 1;
    int column = 1;
    int rows = 1;
    int columns = 1;

    friend bool operator==(const CellRange&, const CellRange&) = default;
};

} // namespace velmo
