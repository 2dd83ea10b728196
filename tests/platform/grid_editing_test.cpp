#include "platform/grid.h"

#include <QAbstractItemModelTester>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

namespace velmo {
namespace {

GridCells Cells(int dataRows, int dataColumns) {
    GridCells cells(GridCells::FirstColumn::RowNumbers);
    cells.SetRows(dataRows + 1);
    cells.SetCols(dataColumns + 1);
    for (int row = 0; row <= dataRows; ++row) {
        for (int column = 1; column <= dataColumns; ++column)
            cells.SetText(row, column, QStringLiteral("%1,%2").arg(row).arg(column));
    }
    return cells;
}

QStringList Texts(const QAbstractItemModel& model) {
    QStringList texts;
    for (int row = 0; row < model.rowCount(); ++row) {
        for (int column = 0; column < model.columnCount(); ++column)
            texts << model.index(row, column).data().toString();
    }
    return texts;
}

// The tester compares what stands beside a change before and after it.
class GridModelChangeTest : public testing::Test {
protected:
    GridCells cells = Cells(3, 3);
    GridModel model{cells};
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
    QSignalSpy reset{&model, &QAbstractItemModel::modelReset};
};

TEST_F(GridModelChangeTest, RowsComeAndGo) {
    const QPersistentModelIndex second = model.IndexOf(2, 1);
    const QSignalSpy numbers(&model, &QAbstractItemModel::headerDataChanged);
    cells.InsertRow(2);
    cells.InsertRow(2);
    model.RowsInserted(2, 2);
    EXPECT_EQ(model.rowCount(), 5);
    EXPECT_EQ(model.RowOf(second), 4);
    EXPECT_EQ(second.data().toString(), QStringLiteral("2,1"));
    ASSERT_EQ(numbers.size(), 1);
    EXPECT_EQ(numbers[0], (QVariantList{QVariant::fromValue(Qt::Vertical), 1, 4}));
    cells.TakeRow(1);
    model.RowsRemoved(1, 1);
    EXPECT_EQ(model.RowOf(second), 3);
    EXPECT_EQ(model.headerData(2, Qt::Vertical, Qt::DisplayRole).toString(), QStringLiteral("3"));
    EXPECT_EQ(Texts(model), (QStringList{"", "", "", "", "", "", "2,1", "2,2", "2,3", "3,1", "3,2", "3,3"}));
    for (int row = 4; row >= 1; --row) {
        cells.TakeRow(row);
        model.RowsRemoved(row, 1);
    }
    EXPECT_EQ(model.rowCount(), 0);
    cells.InsertRow(1);
    model.RowsInserted(1, 1);
    EXPECT_EQ(model.rowCount(), 1);
    EXPECT_EQ(reset.size(), 0);
}

TEST_F(GridModelChangeTest, ColumnsComeAndGo) {
    const QPersistentModelIndex second = model.IndexOf(1, 2);
    cells.InsertColumn(2, cells.MakeColumn());
    model.ColumnsInserted(2);
    EXPECT_EQ(model.ColumnOf(second), 3);
    EXPECT_EQ(second.data().toString(), QStringLiteral("1,2"));
    EXPECT_EQ(model.headerData(1, Qt::Horizontal, Qt::DisplayRole).toString(), QString());
    cells.TakeColumn(1);
    model.ColumnsRemoved(1);
    EXPECT_EQ(model.ColumnOf(second), 2);
    EXPECT_EQ(model.headerData(1, Qt::Horizontal, Qt::DisplayRole).toString(), QStringLiteral("0,2"));
    while (cells.Cols() > 1) {
        cells.TakeColumn(1);
        model.ColumnsRemoved(1);
    }
    EXPECT_EQ(model.columnCount(), 0);
    EXPECT_EQ(reset.size(), 0);
}

TEST_F(GridModelChangeTest, ColumnsChangePlaces) {
    const QPersistentModelIndex right = model.IndexOf(1, 3);
    cells.SwapColumns(2, 3);
    model.ColumnsSwapped(2);
    EXPECT_EQ(model.ColumnOf(right), 2);
    EXPECT_EQ(right.data().toString(), QStringLiteral("1,3"));
}

TEST_F(GridModelChangeTest, TellsWhichTextsChanged) {
    const QSignalSpy texts(&model, &QAbstractItemModel::dataChanged);
    const QSignalSpy headers(&model, &QAbstractItemModel::headerDataChanged);
    model.RangeChanged({2, 2, 2, 1});
    ASSERT_EQ(texts.size(), 1);
    EXPECT_EQ(texts[0][0].toModelIndex(), model.IndexOf(2, 2));
    EXPECT_EQ(texts[0][1].toModelIndex(), model.IndexOf(3, 2));
    EXPECT_EQ(headers.size(), 0);
    model.RangeChanged({0, 3, 1, 1});
    EXPECT_EQ(texts.size(), 1);
    ASSERT_EQ(headers.size(), 1);
    EXPECT_EQ(headers[0], (QVariantList{QVariant::fromValue(Qt::Horizontal), 2, 2}));
    model.RangeChanged({0, 1, 4, 3});
    EXPECT_EQ(texts[1][1].toModelIndex(), model.IndexOf(3, 3));
    EXPECT_EQ(headers.size(), 2);
}

TEST_F(GridModelChangeTest, TheMarkedRowKeepsItsMark) {
    const auto isMarked = [this](int row) { return model.IndexOf(row, 1).data(Qt::FontRole).isValid(); };
    model.MarkRow(2);
    cells.InsertRow(1);
    model.RowsInserted(1, 1);
    EXPECT_TRUE(isMarked(3));
    cells.TakeRow(3);
    model.RowsRemoved(3, 1);
    EXPECT_FALSE(isMarked(1) || isMarked(2) || isMarked(3));
}

TEST(GridModelBehind, ShowsNothingWhereTheCellsHaveNone) {
    GridCells cells = Cells(3, 3);
    const GridModel model(cells);
    cells.SetRows(2);
    cells.SetCols(2);
    EXPECT_FALSE(model.IndexOf(3, 1).data().isValid());
    EXPECT_FALSE(model.IndexOf(1, 3).data().isValid());
    EXPECT_FALSE(model.headerData(2, Qt::Horizontal, Qt::DisplayRole).isValid());
    EXPECT_FALSE(model.headerData(2, Qt::Vertical, Qt::DisplayRole).isValid());
}

class GridEditingTest : public testing::Test {
protected:
    void Show(GridCells shown) {
        cells = std::move(shown);
        grid.MakeEditable();
        grid.CellsReplaced();
        grid.resize(500, 300);
        grid.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&grid));
        grid.setFocus();
    }

    std::pair<int, int> Current() const { return {grid.Row(), grid.Col()}; }
    QPoint Center(int row, int column) const { return grid.CellRect(row, column).center(); }
    void Click(int row, int column, Qt::KeyboardModifiers modifiers = {}) {
        QTest::mouseClick(grid.viewport(), Qt::LeftButton, modifiers, Center(row, column));
    }
    void Drag(QWidget* widget, QPoint from, QPoint to) {
        QTest::mousePress(widget, Qt::LeftButton, {}, from);
        QMouseEvent move(QEvent::MouseMove, to, widget->mapToGlobal(to), Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(widget, &move);
        QTest::mouseRelease(widget, Qt::LeftButton, {}, to);
    }
    QHeaderView* Numbers() const { return grid.verticalHeader(); }
    QHeaderView* Names() const { return grid.horizontalHeader(); }
    QPoint NumberSpot(int row) const {
        return {5, Numbers()->sectionViewportPosition(row - 1) + Numbers()->sectionSize(row - 1) / 2};
    }
    QPoint NameSpot(int column) const { return grid.CellRect(0, column).center(); }
    static void RightClick(QHeaderView* header, QPoint spot) {
        QContextMenuEvent event(QContextMenuEvent::Mouse, spot, header->viewport()->mapToGlobal(spot));
        QApplication::sendEvent(header->viewport(), &event);
    }

    GridCells cells{GridCells::FirstColumn::RowNumbers};
    Grid grid{cells};
};

TEST_F(GridEditingTest, WidthsAndSightStayWhenRowsAndColumnsComeAndGo) {
    Show(Cells(200, 6));
    grid.SetColWidth(2, 3000);
    grid.SetColWidth(3, 900);
    grid.SetCurrentCell(100, 2);
    const int sight = grid.verticalScrollBar()->value();
    ASSERT_GT(sight, 0);
    cells.InsertRow(150);
    grid.RowsInserted(150, 1);
    cells.InsertColumn(3, cells.MakeColumn());
    grid.ColumnsInserted(3);
    EXPECT_EQ(grid.ColWidth(2), 3000);
    EXPECT_EQ(grid.ColWidth(4), 900);
    cells.SwapColumns(2, 3);
    grid.ColumnsSwapped(2);
    EXPECT_EQ(grid.ColWidth(3), 3000);
    EXPECT_EQ(Current(), std::pair(100, 3)) << "the current cell goes along";
    cells.TakeColumn(1);
    grid.ColumnsRemoved(1);
    cells.TakeRow(150);
    grid.RowsRemoved(150, 1);
    EXPECT_EQ(grid.ColWidth(2), 3000);
    EXPECT_EQ(grid.ColWidth(3), 900);
    EXPECT_EQ(Current(), std::pair(100, 2));
    EXPECT_EQ(grid.verticalScrollBar()->value(), sight);
}

TEST_F(GridEditingTest, SwappedColumnsTakeTheirWidthsAlong) {
    Show(Cells(3, 3));
    grid.SetColWidth(1, 1500);
    grid.SetColWidth(2, 3000);
    grid.SetColWidth(3, 2100);
    cells.SwapColumns(1, 2);
    grid.ColumnsSwapped(1);
    EXPECT_EQ(grid.ColWidth(1), 3000);
    EXPECT_EQ(grid.ColWidth(2), 1500);
    EXPECT_EQ(grid.ColWidth(3), 2100);
    EXPECT_EQ(Names()->visualIndex(0), 0);
}

TEST_F(GridEditingTest, RowNumbersGetTheRoomTheyNeed) {
    Show(Cells(9, 2));
    const int before = Numbers()->width();
    for (int row = 10; row <= 20000; ++row)
        cells.AppendRow({});
    grid.RowsInserted(10, 19991);
    EXPECT_GT(Numbers()->width(), before);
}

TEST_F(GridEditingTest, TheLastRowAndTheFirst) {
    Show(Cells(1, 2));
    cells.TakeRow(1);
    grid.RowsRemoved(1, 1);
    EXPECT_EQ(Current(), std::pair(0, 0));
    EXPECT_EQ(grid.SelectedRange(), (CellRange{0, 0, 0, 0}));
    for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Down, Qt::Key_End, Qt::Key_A})
        QTest::keyClick(&grid, key);
    QTest::mouseClick(Names()->viewport(), Qt::LeftButton, {}, NameSpot(2));
    cells.InsertRow(1);
    grid.RowsInserted(1, 1);
    grid.SetCurrentCell(1, 1);
    EXPECT_EQ(grid.SelectedRange(), (CellRange{1, 1, 1, 1}));
}

TEST_F(GridEditingTest, ADragOrShiftSelectsABlock) {
    Show(Cells(20, 4));
    EXPECT_EQ(grid.SelectedRange(), (CellRange{1, 1, 1, 1}));
    Drag(grid.viewport(), Center(4, 3), Center(2, 2));
    EXPECT_EQ(grid.SelectedRange(), (CellRange{2, 2, 3, 2}));
    QTest::keyClick(&grid, Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(grid.SelectedRange(), (CellRange{1, 2, 4, 2}));
    Click(6, 4, Qt::ShiftModifier);
    EXPECT_EQ(grid.SelectedRange(), (CellRange{4, 3, 3, 2}));
    Click(6, 4);
    EXPECT_EQ(grid.SelectedRange(), (CellRange{6, 4, 1, 1}));
    Drag(grid.viewport(), Center(6, 4), Center(7, 4));
    EXPECT_EQ(grid.SelectedRange(), (CellRange{6, 4, 2, 1})) << "it begins anew in the current cell";
    QTest::keyClick(&grid, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(grid.SelectedRange(), (CellRange{1, 1, 20, 4}));
    QTest::keyClick(&grid, Qt::Key_Up);
    EXPECT_EQ(grid.SelectedRange(), (CellRange{6, 4, 1, 1}));
}

TEST_F(GridEditingTest, ABlockBeginsInTheCellThatTheProgramMadeCurrent) {
    Show(Cells(20, 4));
    Click(2, 1);
    grid.SetCurrentCell(5, 2);
    QTest::keyClick(&grid, Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(grid.SelectedRange(), (CellRange{5, 2, 2, 1}));
    grid.SetCurrentCell(10, 1);
    Click(8, 3, Qt::ShiftModifier);
    EXPECT_EQ(grid.SelectedRange(), (CellRange{8, 1, 3, 3}));
}

TEST_F(GridEditingTest, AClickBesideTheCellsKeepsTheSelection) {
    Show(Cells(2, 2));
    Drag(grid.viewport(), Center(1, 1), Center(2, 2));
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, {450, 250});
    EXPECT_EQ(grid.SelectedRange(), (CellRange{1, 1, 2, 2}));
}

TEST_F(GridEditingTest, AHeaderSelectsItsRowOrColumn) {
    Show(Cells(200, 4));
    const QSignalSpy clicked(&grid, &Grid::CellClicked);
    QTest::mouseClick(Numbers()->viewport(), Qt::LeftButton, {}, NumberSpot(3));
    EXPECT_EQ(grid.SelectedRange(), (CellRange{3, 1, 1, 4}));
    EXPECT_EQ(Current(), std::pair(3, 1));
    ASSERT_EQ(clicked.size(), 1);
    EXPECT_EQ(clicked[0], (QVariantList{3, 0}));
    grid.SetCurrentCell(3, 1);
    EXPECT_EQ(grid.SelectedRange(), (CellRange{3, 1, 1, 4})) << "it was current already";
    Drag(Numbers()->viewport(), NumberSpot(6), NumberSpot(4));
    EXPECT_EQ(grid.SelectedRange(), (CellRange{4, 1, 3, 4}));
    QTest::mouseClick(Numbers()->viewport(), Qt::LeftButton, {}, NumberSpot(2));
    grid.verticalScrollBar()->setValue(100);
    QTest::mouseClick(Names()->viewport(), Qt::LeftButton, {}, NameSpot(2));
    EXPECT_EQ(grid.SelectedRange(), (CellRange{1, 2, 200, 1}));
    EXPECT_EQ(Current(), std::pair(1, 2));
    EXPECT_EQ(grid.verticalScrollBar()->value(), 100) << "nothing moved under the mouse";
}

TEST_F(GridEditingTest, AHeaderGivesTheCellsTheFocus) {
    Show(Cells(3, 3));
    QWidget other(&grid);
    other.setFocusPolicy(Qt::StrongFocus);
    other.show();
    other.setFocus();
    QTest::mouseClick(Names()->viewport(), Qt::LeftButton, {}, NameSpot(1));
    EXPECT_TRUE(grid.hasFocus());
}

TEST_F(GridEditingTest, TabGoesFromCellToCell) {
    Show(Cells(2, 2));
    std::vector<std::pair<int, int>> way;
    for (int i = 0; i < 4; ++i) {
        QTest::keyClick(&grid, Qt::Key_Tab);
        way.push_back(Current());
    }
    EXPECT_EQ(way, (std::vector<std::pair<int, int>>{{1, 2}, {2, 1}, {2, 2}, {2, 2}}));
    way.clear();
    for (int i = 0; i < 4; ++i) {
        QTest::keyClick(&grid, Qt::Key_Backtab, Qt::ShiftModifier);
        way.push_back(Current());
        EXPECT_EQ(grid.SelectedRange().rows * grid.SelectedRange().columns, 1);
    }
    EXPECT_EQ(way, (std::vector<std::pair<int, int>>{{2, 1}, {1, 2}, {1, 1}, {1, 1}}));
    EXPECT_TRUE(grid.hasFocus());
}

TEST_F(GridEditingTest, TabWithControlLeavesTheGrid) {
    QWidget window;
    auto* table = new Grid(cells, &window);
    auto* next = new QWidget(&window);
    next->setFocusPolicy(Qt::StrongFocus);
    next->move(0, 200);
    cells = Cells(2, 2);
    table->MakeEditable();
    table->CellsReplaced();
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    table->setFocus();
    QTest::keyClick(table, Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_TRUE(next->hasFocus());
}

TEST_F(GridEditingTest, HomeAndEnd) {
    Show(Cells(100, 4));
    grid.SetCurrentCell(50, 2);
    const auto after = [this](Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(&grid, key, modifiers);
        return Current();
    };
    EXPECT_EQ(after(Qt::Key_End), std::pair(50, 4));
    EXPECT_EQ(after(Qt::Key_Home), std::pair(50, 1));
    EXPECT_EQ(after(Qt::Key_End, Qt::ControlModifier), std::pair(100, 4));
    EXPECT_EQ(after(Qt::Key_Home, Qt::ControlModifier), std::pair(1, 1));
    EXPECT_EQ(after(Qt::Key_End, Qt::ShiftModifier), std::pair(1, 4));
    EXPECT_EQ(grid.SelectedRange(), (CellRange{1, 1, 1, 4}));
}

TEST_F(GridEditingTest, TellsOfKeysThatChangeACell) {
    Show(Cells(3, 3));
    const QSignalSpy activated(&grid, &Grid::CellActivated);
    const QSignalSpy deleted(&grid, &Grid::DeletePressed);
    QString typed;
    QObject::connect(&grid, &Grid::TypingStarted, &grid,
                     [&typed](QEvent* event) { typed += static_cast<QKeyEvent*>(event)->text(); });
    grid.SetCurrentCell(2, 3);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_F2})
        QTest::keyClick(&grid, key);
    ASSERT_EQ(activated.size(), 3);
    EXPECT_EQ(activated[2], (QVariantList{2, 3}));
    QTest::keyClick(&grid, Qt::Key_Delete);
    QTest::keyClick(&grid, Qt::Key_Backspace);
    EXPECT_EQ(deleted.size(), 2);
    QTest::keyClicks(&grid, QStringLiteral(" a"));
    EXPECT_EQ(typed, QStringLiteral(" a"));
}

TEST_F(GridEditingTest, ADoubleClickActivatesItsCellOnce) {
    Show(Cells(3, 3));
    const QSignalSpy activated(&grid, &Grid::CellActivated);
    const QSignalSpy clicked(&grid, &Grid::CellClicked);
    Click(2, 2);
    QTest::mouseDClick(grid.viewport(), Qt::LeftButton, {}, Center(2, 2));
    ASSERT_EQ(activated.size(), 1);
    EXPECT_EQ(activated[0], (QVariantList{2, 2}));
    const auto clicks = clicked.size();
    QTest::mouseDClick(grid.viewport(), Qt::RightButton, {}, Center(3, 2));
    QTest::mouseDClick(grid.viewport(), Qt::LeftButton, {}, {480, 280});
    EXPECT_EQ(activated.size(), 1);
    EXPECT_EQ(clicked.size(), clicks);
}

TEST_F(GridEditingTest, TheReleaseAfterADoubleClickIsNoClick) {
    Show(Cells(3, 3));
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, Center(2, 2));
    const QSignalSpy clicked(&grid, &Grid::CellClicked);
    const QPoint spot = Center(2, 2);
    QMouseEvent twice(QEvent::MouseButtonDblClick, spot, grid.viewport()->mapToGlobal(spot), Qt::LeftButton,
                      Qt::LeftButton, {});
    QApplication::sendEvent(grid.viewport(), &twice);
    QTest::mouseRelease(grid.viewport(), Qt::LeftButton, {}, spot);
    EXPECT_EQ(clicked.size(), 0) << "an editor that it opened would be left at once";
}

TEST_F(GridEditingTest, ARightClickOnAHeaderWantsItsMenu) {
    Show(Cells(200, 4));
    std::vector<std::pair<int, int>> current;
    QObject::connect(&grid, &Grid::HeaderMenuWanted, &grid, [&] { current.push_back(Current()); });
    const QSignalSpy wanted(&grid, &Grid::HeaderMenuWanted);
    grid.SetCurrentCell(3, 2);
    RightClick(Names(), NameSpot(4));
    RightClick(Numbers(), NumberSpot(5));
    ASSERT_EQ(wanted.size(), 2);
    EXPECT_EQ(wanted[0], (QVariantList{0, 4, Names()->viewport()->mapToGlobal(NameSpot(4))}));
    EXPECT_EQ(wanted[1], (QVariantList{5, 0, Numbers()->viewport()->mapToGlobal(NumberSpot(5))}));
    EXPECT_EQ(current, (std::vector<std::pair<int, int>>{{3, 4}, {5, 4}}));
    grid.verticalScrollBar()->setValue(100);
    RightClick(Names(), NameSpot(1));
    EXPECT_EQ(grid.verticalScrollBar()->value(), 100);
    RightClick(Names(), {Names()->length() + 5, 5});
    EXPECT_EQ(wanted.size(), 3) << "nothing is there";
}

TEST_F(GridEditingTest, TheMenuKeyMeansTheCurrentColumn) {
    Show(Cells(3, 40));
    const QSignalSpy wanted(&grid, &Grid::HeaderMenuWanted);
    grid.SetCurrentCell(2, 30);
    QTest::keyClick(&grid, Qt::Key_F10, Qt::ShiftModifier);
    QContextMenuEvent key(QContextMenuEvent::Keyboard, {}, {});
    QApplication::sendEvent(&grid, &key);
    ASSERT_EQ(wanted.size(), 2);
    EXPECT_EQ(wanted[0][0], 0);
    EXPECT_EQ(wanted[0][1], 30);
    const QPoint place = Names()->viewport()->mapFromGlobal(wanted[0][2].toPoint());
    EXPECT_EQ(place, grid.CellRect(0, 30).bottomLeft());
    EXPECT_EQ(wanted[1], wanted[0]);
    QTest::keyClick(&grid, Qt::Key_F10);
    EXPECT_EQ(wanted.size(), 2);
}

TEST_F(GridEditingTest, ARowlessTableStillHasColumnMenus) {
    Show(Cells(0, 3));
    const QSignalSpy wanted(&grid, &Grid::HeaderMenuWanted);
    RightClick(Names(), NameSpot(2));
    ASSERT_EQ(wanted.size(), 1);
    EXPECT_EQ(wanted[0][1], 2);
    QTest::keyClick(&grid, Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_EQ(wanted.size(), 1);
}

TEST_F(GridEditingTest, AHeaderCellHasItsPlaceToo) {
    Show(Cells(3, 40));
    EXPECT_EQ(grid.CellParent(0), Names()->viewport());
    EXPECT_EQ(grid.CellParent(1), grid.viewport());
    const QRect last(Names()->sectionViewportPosition(39), 0, Names()->sectionSize(39),
                     Names()->viewport()->height());
    EXPECT_EQ(grid.CellRect(0, 40), last);
    const auto isInSight = [this](int column) {
        return Names()->viewport()->rect().contains(grid.CellRect(0, column));
    };
    ASSERT_FALSE(isInSight(40));
    grid.ShowColumn(40);
    EXPECT_TRUE(isInSight(40));
    grid.ShowColumn(1);
    EXPECT_TRUE(isInSight(1));
    cells.InsertColumn(41, cells.MakeColumn());
    grid.ColumnsInserted(41);
    grid.SetColWidth(41, 6000);
    grid.ShowColumn(41);
    EXPECT_TRUE(isInSight(41)) << "though its width is new";
}

TEST_F(GridEditingTest, ADoubleClickOnABorderFitsTheColumnToAllItsTexts) {
    Show(Cells(32767, 2));
    const QString longText(60, u'8');
    cells.SetText(30000, 1, longText);
    grid.RangeChanged({30000, 1, 1, 1});
    const QPoint border(grid.CellRect(0, 1).right(), 5);
    QTest::mouseMove(Names()->viewport(), border);
    QTest::mouseDClick(Names()->viewport(), Qt::LeftButton, {}, border);
    EXPECT_GT(grid.columnWidth(0), grid.fontMetrics().horizontalAdvance(longText));
}

TEST(GridBrowsing, HeadersSelectNothingAndAskForNothing) {
    const GridCells cells = Cells(5, 3);
    Grid grid(cells);
    grid.resize(400, 300);
    grid.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&grid));
    const QSignalSpy wanted(&grid, &Grid::HeaderMenuWanted);
    const QSignalSpy deleted(&grid, &Grid::DeletePressed);
    const QPoint spot = grid.CellRect(0, 2).center();
    QTest::mouseClick(grid.horizontalHeader()->viewport(), Qt::LeftButton, {}, spot);
    QContextMenuEvent menu(QContextMenuEvent::Mouse, spot, spot);
    QApplication::sendEvent(grid.horizontalHeader()->viewport(), &menu);
    QTest::keyClick(&grid, Qt::Key_F10, Qt::ShiftModifier);
    QTest::keyClick(&grid, Qt::Key_Delete);
    QTest::keyClick(&grid, Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(wanted.size() + deleted.size(), 0);
    EXPECT_EQ(grid.SelectedRange(), (CellRange{2, 1, 1, 1}));
}

} // namespace
} // namespace velmo
