#pragma once

#include "platform/grid.h"

#include <QPointer>

#include <memory>

namespace velmo {

// Lays a control exactly over a cell of a grid and keeps it there while the grid scrolls or its columns
// change their widths. Row 0 is the header.
class CellOverlay {
public:
    // Hides the control. It is not owned.
    explicit CellOverlay(QWidget& control);

    // Shows the control over the cell and gives it the focus.
    void Open(Grid& grid, int row, int column);
    // Hides it; the focus, if it has it, goes to the grid.
    void Close();
    bool IsOpen() const { return following_ && control_; }

    // The cell under the control, or that under it last; there must have been one.
    Grid& Below() const { return *grid_; }
    int Row() const { return row_; }
    int Column() const { return column_; }

private:
    // It may go with its grid.
    QPointer<QWidget> control_;
    Grid* grid_ = nullptr;
    int row_ = 0;
    int column_ = 0;
    // Its connections to the grid last as long as it.
    std::unique_ptr<QObject> following_;
};

} // namespace velmo
