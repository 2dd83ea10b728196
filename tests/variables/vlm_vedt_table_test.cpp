#include "window_sample.h"

#include <QHeaderView>
#include <QStatusBar>

namespace velmo {
namespace {

// Choosing in the dimension table.
class VedtTableTest : public WindowTest {};

TEST_F(VedtTableTest, AClickOnATableRowCopiesItsValues) {
    WriteRows();
    Open();
    ClickTable(2, 3);
    EXPECT_EQ(CurrentValues(), (QStringList{"12", "2", "3"}));
    EXPECT_EQ(symbol.state.TableLast, 2);
    EXPECT_EQ(Table()->Row(), 2);
    EXPECT_EQ(Table()->Col(), 1);
    EXPECT_EQ(Table()->selectionModel()->selectedIndexes().size(), 3) << "the whole row";
    QTest::mouseClick(Table()->verticalHeader()->viewport(), Qt::LeftButton, {},
                      {5, Table()->verticalHeader()->sectionViewportPosition(2) + 10});
    EXPECT_EQ(symbol.state.TableLast, 3);
    EXPECT_EQ(CurrentValues(), (QStringList{"16", "5", "3"}));
}

TEST_F(VedtTableTest, TheHintNamesTheRowAsItStands) {
    WriteRows({"M10   10   1", "%1%2  12   2"});
    Open();
    ClickTable(2);
    EXPECT_EQ(window->statusBar()->findChild<ElidedLabel*>()->text(),
              QStringLiteral("寸法表の 2 行目 (%1%2) の値を入れました。"));
}

TEST_F(VedtTableTest, AClickOnTheHeaderChoosesNothing) {
    WriteRows();
    Open();
    QTest::mouseClick(Table()->horizontalHeader()->viewport(), Qt::LeftButton, {}, {5, 5});
    EXPECT_EQ(symbol.state.TableLast, 1);
    EXPECT_EQ(CurrentValues()[0], QStringLiteral("100"));
}

TEST_F(VedtTableTest, KeysMoveInTheTableAndEnterOrSpaceChooses) {
    WriteRows();
    Open();
    Press(Qt::Key_Down);
    EXPECT_EQ(Table()->Row(), 2);
    EXPECT_EQ(symbol.state.TableLast, 1);
    EXPECT_EQ(CurrentValues()[0], QStringLiteral("100"));
    Press(Qt::Key_Return);
    EXPECT_EQ(symbol.state.TableLast, 2);
    EXPECT_EQ(CurrentValues()[0], QStringLiteral("12"));
    Press(Qt::Key_Down);
    Press(Qt::Key_Space);
    EXPECT_EQ(CurrentValues()[0], QStringLiteral("16"));
    EXPECT_TRUE(window->isVisible());
}

TEST_F(VedtTableTest, WithoutVariablesATableRowIsNotChosen) {
    symbol.Define({});
    WriteRows();
    Open();
    ClickTable(2);
    EXPECT_EQ(symbol.state.TableLast, 1);
}

TEST_F(VedtTableTest, WithoutATableAClickDoesNothing) {
    Open();
    QTest::mouseClick(Table()->viewport(), Qt::LeftButton, {},
                      Table()->visualRect(Table()->model()->index(0, 0)).center());
    EXPECT_EQ(symbol.state.TableLast, 1);
    EXPECT_EQ(CurrentValues(), (QStringList{"100", "20", "3"}));
}

TEST_F(VedtTableTest, AQuoteInAColumnNameIsShownAsAnError) {
    symbol.WriteTable({{"V12", 3, "5'"}}, {"1"});
    Open();
    messages.ExpectContaining("実行時エラー '3075'");
    ClickTable(1);
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(Table()->updatesEnabled());
}

TEST_F(VedtTableTest, ARowThatCannotBeCopiedIsNotChosen) {
    symbol.WriteTable({{"V12", 3, "W"}, {"V3", 3, "5'"}}, {"  1  2", "  3  4"});
    Open();
    messages.ExpectContaining("実行時エラー '3075'");
    ClickTable(2);
    EXPECT_EQ(CurrentValues(), (QStringList{"100", "20", "3"}));
    EXPECT_EQ(symbol.state.TableLast, 1);
    const QAbstractItemModel* rows = Table()->model();
    EXPECT_TRUE(rows->index(0, 0).data(Qt::FontRole).value<QFont>().bold());
    EXPECT_FALSE(rows->index(1, 0).data(Qt::FontRole).isValid());
    EXPECT_EQ(Table()->Row(), 1);
    EXPECT_EQ(Table()->selectionModel()->selectedRows().value(0).row(), 0);
    Press(Qt::Key_Down);
    messages.ExpectContaining("実行時エラー '3075'");
    Press(Qt::Key_Return);
    EXPECT_EQ(Table()->Row(), 1);
}

TEST_F(VedtTableTest, ARowClosesAnOpenListThoughTheFocusStays) {
    WriteRows();
    Open();
    Variables()->setFocus();
    Press(Qt::Key_Return);
    ASSERT_TRUE(CurCmb()->isVisible());
    Table()->setFocusPolicy(Qt::NoFocus);
    ClickTable(2);
    EXPECT_FALSE(CurCmb()->isVisible());
    EXPECT_EQ(CurrentValues(), (QStringList{"12", "2", "3"}));
}

TEST_F(VedtTableTest, OnlyALeftClickMovesTheHighlight) {
    WriteRows();
    Open();
    const auto spot = [this](int row) { return Table()->CellRect(row, 2).center(); };
    QWidget* cells = Table()->viewport();
    QTest::mouseClick(cells, Qt::RightButton, {}, spot(2));
    QTest::mouseClick(cells, Qt::MiddleButton, {}, spot(2));
    EXPECT_EQ(Table()->Row(), 1);
    QTest::mousePress(cells, Qt::LeftButton, {}, spot(2));
    QTest::mouseMove(cells, spot(3));
    QTest::mouseRelease(cells, Qt::LeftButton, {}, spot(3));
    EXPECT_EQ(Table()->Row(), 1);
    QHeaderView* numbers = Table()->verticalHeader();
    const auto number = [numbers](int row) {
        return QPoint(5, numbers->sectionViewportPosition(row - 1) + 5);
    };
    QTest::mousePress(numbers->viewport(), Qt::LeftButton, {}, number(2));
    QTest::mouseMove(numbers->viewport(), number(3));
    QTest::mouseRelease(numbers->viewport(), Qt::LeftButton, {}, number(3));
    EXPECT_EQ(Table()->Row(), 1);
    EXPECT_EQ(symbol.state.TableLast, 1);
    EXPECT_EQ(CurrentValues(), (QStringList{"100", "20", "3"}));
    QTest::mouseClick(cells, Qt::LeftButton, Qt::ControlModifier, spot(1));
    EXPECT_EQ(Table()->selectionModel()->selectedIndexes().size(), 3) << "the whole row stays selected";
}

TEST_F(VedtTableTest, TypingFindsARow) {
    WriteRows({"A1    10   1", "B2    11   2", "C3    12   3"});
    Open();
    Press(Qt::Key_Right);
    Type("c");
    EXPECT_EQ(Table()->Row(), 3);
    EXPECT_EQ(symbol.state.TableLast, 1) << "found, but not chosen";
    Press(Qt::Key_Return);
    EXPECT_EQ(CurrentValues(), (QStringList{"12", "3", "3"}));
}

TEST_F(VedtTableTest, AMessageCannotBeSelected) {
    Open();
    QTest::mouseClick(Table()->viewport(), Qt::LeftButton, {},
                      Table()->visualRect(Table()->model()->index(0, 0)).center());
    EXPECT_FALSE(Table()->selectionModel()->hasSelection());
}

} // namespace
} // namespace velmo
