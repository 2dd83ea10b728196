#include "support/temp_folder.h"
#include "variables/row_groups.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

// Firsts become rows of one cell that also tells their place in the file.
QStringList Grouped(const QStringList& firsts, RowGroups::Duplicates duplicates) {
    RowGroups groups;
    for (qsizetype i = 0; i < firsts.size(); ++i) {
        if (CellRow* cells = groups.Add(firsts[i], duplicates))
            cells->Append(firsts[i] + QString::number(i + 1));
    }
    GridCells cells(GridCells::FirstColumn::RowNumbers);
    cells.SetCols(2);
    groups.MoveInto(cells);
    QStringList texts;
    for (int row = 1; row < cells.Rows(); ++row)
        texts << cells.Text(row, 1);
    return texts;
}

TEST(RowGroups, KeepsTheFirstRowOfEachGroup) {
    EXPECT_EQ(Grouped({"A", "B", "A", "a", "B"}, RowGroups::Duplicates::Hidden),
              (QStringList{"A1", "B2", "a4"}));
}

TEST(RowGroups, PutsTheRowsOfAGroupTogether) {
    EXPECT_EQ(Grouped({"A", "B", "A"}, RowGroups::Duplicates::Shown), (QStringList{"A1", "A3", "B2"}));
    EXPECT_EQ(Grouped({"A", "B", "C", "B", "A", "C", "A"}, RowGroups::Duplicates::Shown),
              (QStringList{"A1", "A5", "A7", "B2", "B4", "C3", "C6"}));
}

TEST(RowGroups, NoRowsAreNoRows) {
    EXPECT_EQ(Grouped({}, RowGroups::Duplicates::Shown), QStringList());
}

} // namespace
} // namespace velmo
