#pragma once

#include "variables/table_editor.h"

#include <QLabel>

class QStatusBar;

namespace velmo {

// The status bar's panels about the table that is edited: whether it was changed, its size, and how much of
// its column the current cell fills.
class TableStatus {
public:
    explicit TableStatus(QStatusBar& bar);

    void Show(const TableEditor& editor, int row, int column);
    // Instead of the cell's own text one of so many characters, which is being typed.
    void ShowLength(const TableEditor& editor, int row, int column, qsizetype length);

private:
    QLabel* changed_;
    QLabel* size_;
    QLabel* characters_;
};

} // namespace velmo
