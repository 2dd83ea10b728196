#pragma once

#include "platform/grid.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QTest>
#include <gtest/gtest.h>

namespace velmo {

// A window with a variable grid and a table that is edited, whose cells tell where they are.
class TwoGridsTest : public testing::Test {
protected:
    TwoGridsTest() {
        Fill(variableCells, 4, 2);
        Fill(tableCells, 4, 4);
        auto* layout = new QHBoxLayout(&window);
        layout->addWidget(variables);
        layout->addWidget(table);
        table->MakeEditable();
        variables->CellsReplaced();
        table->CellsReplaced();
        window.resize(700, 300);
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        table->setFocus();
    }

    static void Fill(GridCells& cells, int rows, int cols) {
        cells.SetRows(rows);
        cells.SetCols(cols);
        for (int row = 0; row < rows; ++row) {
            for (int column = cells.HasRowNumbers() ? 1 : 0; column < cols; ++column)
                cells.SetText(row, column, QStringLiteral("%1,%2").arg(row).arg(column));
        }
    }

    static void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        ASSERT_TRUE(QApplication::focusWidget());
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    static void Type(const QString& text) {
        ASSERT_TRUE(QApplication::focusWidget());
        QTest::keyClicks(QApplication::focusWidget(), text);
    }
    std::pair<int, int> Current() const { return {table->Row(), table->Col()}; }

    GridCells variableCells{GridCells::FirstColumn::Texts};
    GridCells tableCells{GridCells::FirstColumn::RowNumbers};
    QWidget window;
    Grid* variables = new Grid(variableCells);
    Grid* table = new Grid(tableCells);
};

} // namespace velmo
