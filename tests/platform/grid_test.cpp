#include "platform/grid.h"
#include "platform/runtime_error.h"
#include "platform/window_places.h"
#include "support/temp_folder.h"

#include <QAbstractItemModelTester>
#include <QHeaderView>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

namespace velmo {
namespace {

GridCells Cells(GridCells::FirstColumn firstColumn, int rows, int cols) {
    GridCells cells(firstColumn);
    cells.SetRows(rows);
    cells.SetCols(cols);
    for (int row = 0; row < rows; ++row) {
        for (int column = cells.HasRowNumbers() ? 1 : 0; column < cols; ++column)
            cells.SetText(row, column, QStringLiteral("%1,%2").arg(row).arg(column));
    }
    return cells;
}

TEST(CellRow, HoldsTextsOfAnyLength) {
    CellRow row;
    row.Append(u"a");
    row.Append(u"");
    row.Append(u"全角");
    EXPECT_EQ(row.Text(0).toString(), QStringLiteral("a"));
    EXPECT_EQ(row.Text(1).toString(), QString());
    EXPECT_EQ(row.Text(2).toString(), QStringLiteral("全角"));
    EXPECT_EQ(row.Text(9).toString(), QString());
    row.SetText(1, u"middle");
    row.SetText(0, u"");
    row.SetText(5, u"far");
    EXPECT_EQ(row.Text(1).toString(), QStringLiteral("middle"));
    EXPECT_EQ(row.Text(2).toString(), QStringLiteral("全角"));
    EXPECT_EQ(row.Text(4).toString(), QString());
    EXPECT_EQ(row.Text(5).toString(), QStringLiteral("far"));
    row.Forget(2);
    row.Forget(9);
    EXPECT_EQ(row.Text(1).toString(), QStringLiteral("middle"));
    EXPECT_EQ(row.Text(2).toString(), QString());
    row.Append(u"new");
    EXPECT_EQ(row.Text(6).toString(), QStringLiteral("new"));
    row.SetText(0, QString(65535, u'x'));
    EXPECT_EQ(row.Text(0).size(), 65535);
    EXPECT_EQ(row.Text(1).toString(), QStringLiteral("middle"));
    EXPECT_THROW(row.SetText(0, QString(65536, u'x')), RuntimeError);
}

TEST(GridCells, CountsRowsAndColumnsAndKeepsTexts) {
    GridCells cells = Cells(GridCells::FirstColumn::Texts, 3, 2);
    EXPECT_EQ(cells.Rows(), 3);
    EXPECT_EQ(cells.Cols(), 2);
    EXPECT_EQ(cells.Text(2, 1), QStringLiteral("2,1"));
    cells.SetCols(1);
    cells.SetCols(2);
    EXPECT_EQ(cells.Text(2, 1), QString()) << "a new column is empty";
    EXPECT_EQ(cells.Text(2, 0), QStringLiteral("2,0"));
    cells.SetRows(2);
    cells.SetRows(3);
    EXPECT_EQ(cells.Text(2, 0), QString());
}

TEST(GridCells, NumbersItsRows) {
    GridCells cells = Cells(GridCells::FirstColumn::RowNumbers, 3, 3);
    EXPECT_EQ(cells.Text(0, 0), QString());
    EXPECT_EQ(cells.Text(2, 0), QStringLiteral("2"));
    EXPECT_EQ(cells.Text(2, 2), QStringLiteral("2,2"));
    EXPECT_THROW(cells.SetText(1, 0, u"x"), RuntimeError);
    cells.SetCols(2);
    EXPECT_EQ(cells.Text(2, 1), QStringLiteral("2,1"));
}

TEST(GridCells, ACellOutsideIsAnError) {
    GridCells cells = Cells(GridCells::FirstColumn::Texts, 3, 2);
    for (const auto& [row, column] : {std::pair{3, 0}, {-1, 0}, {0, 2}, {0, -1}}) {
        EXPECT_THROW(cells.Text(row, column), RuntimeError);
        EXPECT_THROW(cells.SetText(row, column, u"x"), RuntimeError);
    }
    EXPECT_THROW(cells.SetRows(0), RuntimeError);
    EXPECT_THROW(cells.SetCols(0), RuntimeError);
}

TEST(GridCells, BecomesAMessage) {
    GridCells cells = Cells(GridCells::FirstColumn::RowNumbers, 3, 2);
    cells.BecomeMessage(QStringLiteral("nothing here"));
    EXPECT_TRUE(cells.IsMessage());
    EXPECT_EQ(cells.Rows(), 1);
    EXPECT_EQ(cells.Cols(), 1);
    EXPECT_EQ(cells.Text(0, 0), QStringLiteral("nothing here"));
}

TEST(GridModel, HasTheFixedCellsAsHeaders) {
    const GridCells cells = Cells(GridCells::FirstColumn::RowNumbers, 3, 3);
    GridModel model(cells);
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    EXPECT_EQ(model.rowCount(), 2);
    EXPECT_EQ(model.columnCount(), 2);
    EXPECT_EQ(model.index(0, 0).data().toString(), QStringLiteral("1,1"));
    EXPECT_EQ(model.headerData(1, Qt::Horizontal, Qt::DisplayRole).toString(), QStringLiteral("0,2"));
    EXPECT_EQ(model.headerData(1, Qt::Vertical, Qt::DisplayRole).toString(), QStringLiteral("2"));
    EXPECT_EQ(model.IndexOf(2, 1), model.index(1, 0));
    EXPECT_EQ(model.RowOf(model.index(1, 0)), 2);
    EXPECT_EQ(model.ColumnOf(model.index(1, 0)), 1);
}

TEST(GridModel, WithoutRowNumbersEveryColumnIsShown) {
    const GridCells cells = Cells(GridCells::FirstColumn::Texts, 3, 2);
    GridModel model(cells);
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    EXPECT_EQ(model.columnCount(), 2);
    EXPECT_EQ(model.index(1, 0).data().toString(), QStringLiteral("2,0"));
    EXPECT_FALSE(model.headerData(0, Qt::Vertical, Qt::DisplayRole).isValid());
}

TEST(GridModel, FollowsItsCells) {
    GridCells cells = Cells(GridCells::FirstColumn::RowNumbers, 2, 2);
    GridModel model(cells);
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    const QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
    const QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    cells = Cells(GridCells::FirstColumn::RowNumbers, 500, 30);
    model.CellsReplaced();
    EXPECT_EQ(reset.size(), 1);
    EXPECT_EQ(model.rowCount(), 499);
    cells.SetText(1, 1, u"x");
    model.TextsChanged();
    EXPECT_EQ(changed.size(), 1);
    cells.BecomeMessage(QStringLiteral("none"));
    model.CellsReplaced();
    EXPECT_EQ(model.rowCount(), 1);
    EXPECT_EQ(model.columnCount(), 1);
    EXPECT_EQ(model.index(0, 0).data().toString(), QStringLiteral("none"));
    EXPECT_FALSE(model.headerData(0, Qt::Horizontal, Qt::DisplayRole).isValid());
    cells = GridCells(GridCells::FirstColumn::RowNumbers);
    model.CellsReplaced();
    EXPECT_EQ(model.columnCount(), 0);
    model.TextsChanged();
}

TEST(GridModel, AlignsNumbersToTheRight) {
    GridCells cells = Cells(GridCells::FirstColumn::Texts, 6, 1);
    const QStringList texts{"12", " -1.5 ", "1e3", "M10", ""};
    for (int i = 0; i < texts.size(); ++i)
        cells.SetText(i + 1, 0, texts[i]);
    const GridModel model(cells);
    for (int i = 0; i < texts.size(); ++i)
        EXPECT_EQ((model.index(i, 0).data(Qt::TextAlignmentRole).toInt() & Qt::AlignRight) != 0, i < 3)
            << texts[i].toStdString();
}

TEST(GridModel, MarksARow) {
    const GridCells cells = Cells(GridCells::FirstColumn::RowNumbers, 3, 2);
    GridModel model(cells);
    model.MarkRow(2);
    EXPECT_TRUE(model.index(1, 0).data(Qt::FontRole).value<QFont>().bold());
    EXPECT_FALSE(model.index(0, 0).data(Qt::FontRole).isValid());
    model.MarkRow(0);
    EXPECT_FALSE(model.index(1, 0).data(Qt::FontRole).isValid());
}

class GridTest : public testing::Test {
protected:
    void Show(GridCells shown) {
        cells = std::move(shown);
        grid.CellsReplaced();
        grid.resize(400, 300);
        grid.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&grid));
        grid.setFocus();
    }

    GridCells cells{GridCells::FirstColumn::RowNumbers};
    Grid grid{cells};
};

TEST_F(GridTest, HasACurrentCell) {
    EXPECT_EQ(grid.Row(), 0);
    EXPECT_EQ(grid.Col(), 0);
    Show(Cells(GridCells::FirstColumn::RowNumbers, 4, 3));
    EXPECT_EQ(grid.Row(), 1);
    EXPECT_EQ(grid.Col(), 1);
    grid.SetCurrentCell(3, 2);
    EXPECT_EQ(grid.Row(), 3);
    EXPECT_EQ(grid.Col(), 2);
    for (const auto& [row, column] : {std::pair{0, 1}, {4, 1}, {1, 0}, {1, 3}}) {
        grid.SetCurrentCell(row, column);
        EXPECT_EQ(grid.Row(), 3);
        EXPECT_EQ(grid.Col(), 2);
    }
}

TEST_F(GridTest, WidthsAreTwips) {
    Show(Cells(GridCells::FirstColumn::RowNumbers, 4, 3));
    grid.SetColWidth(2, 1500);
    EXPECT_EQ(grid.columnWidth(1), 100);
    EXPECT_EQ(grid.ColWidth(2), 1500);
}

TEST_F(GridTest, ColumnsGetTheRoomTheyNeed) {
    GridCells wide = Cells(GridCells::FirstColumn::RowNumbers, 3, 4);
    wide.SetText(0, 1, u"a rather long heading");
    wide.SetText(2, 2, u"a rather long text in a cell");
    wide.SetText(1, 3, QString(1000, u'x'));
    Show(std::move(wide));
    grid.FitColumns();
    EXPECT_GE(grid.columnWidth(0), grid.fontMetrics().horizontalAdvance(cells.Text(0, 1)));
    EXPECT_GE(grid.columnWidth(1), grid.fontMetrics().horizontalAdvance(cells.Text(2, 2)));
    EXPECT_LT(grid.columnWidth(2), 400) << "one long text does not push the others out of sight";
}

TEST_F(GridTest, TellsWhichCellWasClicked) {
    Show(Cells(GridCells::FirstColumn::RowNumbers, 4, 3));
    const QSignalSpy clicked(&grid, &Grid::CellClicked);
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, grid.CellRect(2, 2).center());
    ASSERT_EQ(clicked.size(), 1);
    EXPECT_EQ(clicked[0], (QVariantList{2, 2}));
    QTest::mouseClick(grid.verticalHeader()->viewport(), Qt::LeftButton, {},
                      {3, grid.verticalHeader()->sectionViewportPosition(2) + 10});
    ASSERT_EQ(clicked.size(), 2);
    EXPECT_EQ(clicked[1], (QVariantList{3, 0}));
    QTest::mouseClick(grid.viewport(), Qt::RightButton, {}, grid.CellRect(1, 1).center());
    QTest::mouseClick(grid.horizontalHeader()->viewport(), Qt::LeftButton, {}, {3, 3});
    EXPECT_EQ(clicked.size(), 2);
}

TEST_F(GridTest, TellsOfKeys) {
    Show(Cells(GridCells::FirstColumn::RowNumbers, 4, 3));
    const QSignalSpy activated(&grid, &Grid::CellActivated);
    const QSignalSpy escaped(&grid, &Grid::EscapePressed);
    int typed = 0;
    QObject::connect(&grid, &Grid::TypingStarted, &grid, [&typed](QEvent*) { ++typed; });
    grid.SetCurrentCell(2, 1);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_F2, Qt::Key_Space})
        QTest::keyClick(&grid, key);
    EXPECT_EQ(activated.size(), 4);
    EXPECT_EQ(activated[0], (QVariantList{2, 1}));
    QTest::keyClick(&grid, Qt::Key_Escape);
    EXPECT_EQ(escaped.size(), 1);
    QTest::keyClick(&grid, Qt::Key_A);
    EXPECT_EQ(typed, 1);
    QTest::keyClick(&grid, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&grid, Qt::Key_Down);
    QTest::keyClick(&grid, Qt::Key_Shift);
    EXPECT_EQ(typed, 1);
    EXPECT_EQ(grid.Row(), 3);
}

TEST_F(GridTest, AMessageHasNoHeadersAndNothingToChoose) {
    GridCells message(GridCells::FirstColumn::RowNumbers);
    message.BecomeMessage(QStringLiteral("nothing"));
    Show(std::move(message));
    EXPECT_FALSE(grid.horizontalHeader()->isVisible());
    EXPECT_FALSE(grid.verticalHeader()->isVisible());
    EXPECT_EQ(grid.Row(), 0);
    grid.SetColWidth(0, 3600);
    EXPECT_EQ(grid.columnWidth(0), TwipsToPixels(3600));
    Show(Cells(GridCells::FirstColumn::RowNumbers, 2, 2));
    EXPECT_TRUE(grid.horizontalHeader()->isVisible());
    EXPECT_TRUE(grid.verticalHeader()->isVisible());
}

TEST_F(GridTest, ShowsAsManyRowsAsATableCanHave) {
    GridCells many(GridCells::FirstColumn::RowNumbers);
    many.SetRows(32768);
    many.SetCols(31);
    Show(std::move(many));
    grid.SetCurrentCell(32767, 30);
    EXPECT_EQ(grid.Row(), 32767);
    EXPECT_FALSE(grid.CellRect(32767, 30).isEmpty());
}

TEST_F(GridTest, TheCurrentCellIsScrolledIntoSightAgain) {
    Show(Cells(GridCells::FirstColumn::RowNumbers, 200, 3));
    grid.SetCurrentCell(2, 1);
    grid.scrollToBottom();
    ASSERT_FALSE(grid.viewport()->rect().contains(grid.CellRect(2, 1)));
    grid.SetCurrentCell(2, 1);
    EXPECT_TRUE(grid.viewport()->rect().contains(grid.CellRect(2, 1)));
}

TEST_F(GridTest, NewCellsHaveNoMarkedRow) {
    Show(Cells(GridCells::FirstColumn::RowNumbers, 4, 3));
    grid.MarkRow(2);
    Show(Cells(GridCells::FirstColumn::RowNumbers, 4, 3));
    EXPECT_FALSE(grid.model()->index(1, 0).data(Qt::FontRole).isValid());
}

TEST_F(GridTest, AHighlightedRowIsLeftOnlyByALeftClick) {
    Show(Cells(GridCells::FirstColumn::RowNumbers, 6, 3));
    const auto spot = [this](int row) { return grid.CellRect(row, 1).center(); };
    QTest::mouseClick(grid.viewport(), Qt::RightButton, {}, spot(3));
    EXPECT_EQ(grid.Row(), 3) << "a cell is made current by any button";
    grid.SetHighlight(Grid::Highlight::Row);
    grid.SetCurrentCell(1, 1);
    QTest::mouseClick(grid.viewport(), Qt::RightButton, {}, spot(3));
    EXPECT_EQ(grid.Row(), 1);
    const QSignalSpy clicked(&grid, &Grid::CellClicked);
    QTest::mousePress(grid.viewport(), Qt::LeftButton, {}, spot(2));
    QTest::mouseMove(grid.viewport(), spot(4));
    QTest::mouseRelease(grid.viewport(), Qt::LeftButton, {}, spot(4));
    EXPECT_EQ(grid.Row(), 1);
    EXPECT_EQ(clicked.size(), 0);
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, spot(4));
    EXPECT_EQ(grid.Row(), 4);
    EXPECT_EQ(clicked.size(), 1);
}

} // namespace
} // namespace velmo
