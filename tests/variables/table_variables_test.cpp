#include "symbol_sample.h"
#include "variables/table_variables.h"

namespace velmo {
namespace {

// NowTable with a comment column and variables 1, 2, 3 ... in these columns of the table.
class TableVariablesTest : public testing::Test {
protected:
    void Show(const QList<int>& columns) {
        work_.CreateWorkDatabase([](const QString& text) { ADD_FAILURE() << text.toStdString(); });
        Database database = Open();
        RecordSet variables = SelectVariables(database);
        for (int row = 0; row < columns.size(); ++row) {
            variables.AddNew();
            variables.SetNumber(u"ValNum", row);
            variables.SetNumber(u"ValNo", row + 10);
            variables.Set(u"ValName", QStringLiteral("name%1").arg(row));
            variables.SetNumber(u"ValDis", columns[row]);
            variables.SetNumber(u"ValLen", row);
            variables.Update();
        }
    }
    QList<int> Shown() const {
        QList<int> columns;
        Database database = Open();
        for (const TableVariable& variable : ReadTableVariables(database))
            columns << variable.column;
        return columns;
    }
    Database Open() const { return work_.Open(Database::Access::Write); }

private:
    TempFolder folder_;
    WorkDatabase work_{folder_.Path()};
};

TEST_F(TableVariablesTest, AreReadInTheOrderOfNowTable) {
    Show({2, 0, 1});
    Database database = Open();
    EXPECT_EQ(ReadTableVariables(database),
              (std::vector<TableVariable>{{0, 10, QStringLiteral("name0"), 2, 0},
                                          {1, 11, QStringLiteral("name1"), 0, 1},
                                          {2, 12, QStringLiteral("name2"), 1, 2}}));
}

TEST_F(TableVariablesTest, AreWrittenByTheirRows) {
    Show({1, 2, 3});
    Database database = Open();
    std::vector<TableVariable> expected = ReadTableVariables(database);
    expected[2] = {2, 12, QStringLiteral("新"), 7, 255};
    WriteTableVariables(database, {expected[2]});
    EXPECT_EQ(ReadTableVariables(database), expected);
    EXPECT_EQ(ErrorOf([&] {
                  WriteTableVariables(database, {TableVariable{9, 9, {}, 1, 1}});
              }).Number(),
              ErrorNumber::NoCurrentRecord);
}

TEST_F(TableVariablesTest, HidingMovesThoseRightOfItToTheLeft) {
    Show({1, 2, 3, 4});
    Database database = Open();
    HideColumn(database, 2, 4);
    EXPECT_EQ(Shown(), (QList<int>{1, 0, 2, 3}));
    HideColumn(database, 3, 3);
    EXPECT_EQ(Shown(), (QList<int>{1, 0, 2, 0}));
    HideColumn(database, 1, 2);
    EXPECT_EQ(Shown(), (QList<int>{0, 0, 1, 0}));
}

TEST_F(TableVariablesTest, HidingPassesOverColumnsThatShowNoVariable) {
    Show({1, 3, 5});
    Database database = Open();
    HideColumn(database, 2, 5);
    EXPECT_EQ(Shown(), (QList<int>{1, 2, 4}));
    HideColumn(database, 2, 4);
    EXPECT_EQ(Shown(), (QList<int>{1, 0, 3}));
}

TEST_F(TableVariablesTest, HidingLeavesColumnsOutsideTheTableAlone) {
    Show({1, 2, 9});
    Database database = Open();
    HideColumn(database, 1, 3);
    EXPECT_EQ(Shown(), (QList<int>{0, 1, 9}));
}

TEST_F(TableVariablesTest, OfTwoInOneColumnTheFirstIsMeant) {
    Show({1, 2, 2, 3});
    Database database = Open();
    HideColumn(database, 2, 3);
    EXPECT_EQ(Shown(), (QList<int>{1, 0, 2, 2}));
    Show({1, 2, 2, 3});
    Database again = Open();
    SwapColumnNumbers(again, 2, 3);
    EXPECT_EQ(Shown(), (QList<int>{1, 3, 2, 2}));
}

TEST_F(TableVariablesTest, SwapsTheColumnsOfTwo) {
    Show({1, 2, 3});
    Database database = Open();
    SwapColumnNumbers(database, 1, 2);
    EXPECT_EQ(Shown(), (QList<int>{2, 1, 3}));
    SwapColumnNumbers(database, 3, 2);
    EXPECT_EQ(Shown(), (QList<int>{3, 1, 2}));
}

TEST_F(TableVariablesTest, SwapsWithAColumnThatShowsNoVariable) {
    Show({1, 2, 0});
    Database database = Open();
    SwapColumnNumbers(database, 2, 3);
    EXPECT_EQ(Shown(), (QList<int>{1, 3, 0}));
    SwapColumnNumbers(database, 2, 3);
    EXPECT_EQ(Shown(), (QList<int>{1, 2, 0}));
    SwapColumnNumbers(database, 4, 5);
    EXPECT_EQ(Shown(), (QList<int>{1, 2, 0}));
}

TEST_F(TableVariablesTest, ShowingMovesThoseThereAndRightOfItToTheRight) {
    Show({1, 2, 3, 0});
    Database database = Open();
    ShowInColumn(database, 3, 2, 3);
    EXPECT_EQ(Shown(), (QList<int>{1, 3, 4, 2}));
}

TEST_F(TableVariablesTest, ShowingBehindTheLastMovesNone) {
    Show({1, 2, 0});
    Database database = Open();
    ShowInColumn(database, 2, 3, 2);
    EXPECT_EQ(Shown(), (QList<int>{1, 2, 3}));
}

TEST_F(TableVariablesTest, ShowingPassesOverColumnsThatShowNoVariable) {
    Show({0, 2, 4});
    Database database = Open();
    ShowInColumn(database, 0, 1, 5);
    EXPECT_EQ(Shown(), (QList<int>{1, 3, 5}));
}

TEST_F(TableVariablesTest, ShowingGivesAWidthOnlyToOneWithoutIt) {
    Show({0, 0});
    Database database = Open();
    ShowInColumn(database, 0, 1, 0);
    ShowInColumn(database, 1, 2, 1);
    const std::vector<TableVariable> variables = ReadTableVariables(database);
    EXPECT_EQ(variables[0].width, 10);
    EXPECT_EQ(variables[1].width, 1);
    EXPECT_EQ(ErrorOf([&] { ShowInColumn(database, 9, 1, 2); }).Number(), ErrorNumber::NoCurrentRecord);
}

TEST_F(TableVariablesTest, RenamesTheVariableOfARow) {
    Show({1, 2});
    Database database = Open();
    RenameVariable(database, 1, QStringLiteral("It's ｶﾅ"));
    EXPECT_EQ(ReadTableVariables(database)[1].name, QStringLiteral("It's ｶﾅ"));
    EXPECT_EQ(ErrorOf([&] { RenameVariable(database, 1, QString(256, u'x')); }).Number(),
              ErrorNumber::TextTooLong);
    EXPECT_EQ(ReadTableVariables(database)[1].name, QStringLiteral("It's ｶﾅ"));
}

} // namespace
} // namespace velmo
