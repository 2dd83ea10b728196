#include "edited_table.h"

#include <limits>

namespace velmo {
namespace {

using TableEditorTest = EditedTable;

constexpr int MostRows = std::numeric_limits<std::int16_t>::max();

TEST_F(TableEditorTest, StartsUnchangedWithTheVariablesOfTheColumns) {
    OpenUsual();
    EXPECT_FALSE(Editor().IsChanged());
    EXPECT_EQ(Editor().DataRows(), 3);
    EXPECT_EQ(Editor().DataColumns(), 3);
    EXPECT_EQ(*Editor().VariableOf(1), (TableVariable{0, 0, QStringLiteral("呼び"), 1, 4}));
    EXPECT_EQ(*Editor().VariableOf(3), (TableVariable{2, 2, QStringLiteral("高"), 3, 3}));
    EXPECT_EQ(Editor().VariableOf(0), nullptr);
    EXPECT_EQ(Editor().VariableOf(4), nullptr);
    EXPECT_EQ(Editor().VariableOf(-1), nullptr);
    EXPECT_EQ(Editor().HiddenVariables(), (std::vector<TableVariable>{{3, 3, QStringLiteral("D"), 0, 10},
                                                                      {4, 4, QStringLiteral("T"), 0, 10}}));
}

TEST_F(TableEditorTest, EntersATextInACell) {
    OpenUsual();
    ExpectStep(QStringLiteral("セルの入力"), [&] { Editor().EnterText(2, 3, QStringLiteral("全角")); });
    EXPECT_EQ(Data()[1], (QStringList{"M12", "12", QStringLiteral("全角")}));
    ExpectStep(QStringLiteral("セルの入力"), [&] { Editor().EnterText(2, 3, QString()); });
    EXPECT_EQ(Data()[1], (QStringList{"M12", "12", ""}));
}

TEST_F(TableEditorTest, TheSameTextIsNoStep) {
    OpenUsual();
    ExpectNothing([&] { Editor().EnterText(2, 3, QStringLiteral("120")); });
    ExpectNothing([&] { Editor().EnterText(0, 1, QStringLiteral("呼び")); });
    ExpectNothing([&] { Editor().EnterName(1, QStringLiteral("幅")); });
    ExpectNothing([&] { Editor().EnterTexts({1, 1, 1, 2}, {{"M10", "10"}}, QStringLiteral("貼り付け")); });
}

TEST_F(TableEditorTest, EntersABlockAsOneNamedStep) {
    OpenUsual();
    const CellRange block{2, 2, 2, 2};
    EXPECT_EQ(Editor().Texts(block), (std::vector<QStringList>{{"12", "120"}, {"16", "160"}}));
    const std::vector<QStringList> texts{{"12", "new"}, {"", "last"}};
    ExpectStep(QStringLiteral("貼り付け"),
               [&] { Editor().EnterTexts(block, texts, QStringLiteral("貼り付け")); });
    EXPECT_EQ(Editor().Texts(block), texts);
    EXPECT_EQ(Data(), (Rows{{"M10", "10", "100"}, {"M12", "12", "new"}, {"M16", "", "last"}}));
}

TEST_F(TableEditorTest, ABlockThatReachesOutsideIsAnErrorAndChangesNothing) {
    OpenUsual();
    ExpectNothing([&] {
        for (const CellRange& range : {CellRange{3, 3, 2, 1}, CellRange{3, 3, 1, 2}})
            EXPECT_EQ(ErrorOf([&] {
                          Editor().EnterTexts(range, {{"a", "b"}, {"c", "d"}}, {});
                      }).Number(),
                      ErrorNumber::SubscriptOutOfRange);
    });
}

TEST_F(TableEditorTest, ATextTooLongForACellIsAnErrorAndChangesNothing) {
    OpenUsual();
    ExpectNothing([&] {
        EXPECT_EQ(ErrorOf([&] { Editor().EnterText(1, 1, QString(70'000, u'x')); }).Number(),
                  ErrorNumber::InvalidArgument);
    });
}

TEST_F(TableEditorTest, AppendsAnEmptyRow) {
    OpenUsual();
    ExpectStep(QStringLiteral("行の追加"), [&] { Editor().AppendRow(); });
    EXPECT_EQ(Data(), (Rows{{"M10", "10", "100"}, {"M12", "12", "120"}, {"M16", "16", "160"}, {"", "", ""}}));
}

TEST_F(TableEditorTest, InsertsAnEmptyRowInThePlaceOfAnother) {
    OpenUsual();
    ExpectStep(QStringLiteral("行の挿入"), [&] { Editor().InsertRow(1); });
    ExpectStep(QStringLiteral("行の挿入"), [&] { Editor().InsertRow(4); });
    EXPECT_EQ(
        Data(),
        (Rows{{"", "", ""}, {"M10", "10", "100"}, {"M12", "12", "120"}, {"", "", ""}, {"M16", "16", "160"}}));
}

TEST_F(TableEditorTest, CopiesARowBelowItself) {
    OpenUsual();
    ExpectStep(QStringLiteral("行の複写"), [&] { Editor().CopyRow(1); });
    ExpectStep(QStringLiteral("行の複写"), [&] { Editor().CopyRow(4); });
    EXPECT_EQ(Data(), (Rows{{"M10", "10", "100"},
                            {"M10", "10", "100"},
                            {"M12", "12", "120"},
                            {"M16", "16", "160"},
                            {"M16", "16", "160"}}));
}

TEST_F(TableEditorTest, ACopiedRowIsItsOwn) {
    OpenUsual();
    Editor().CopyRow(1);
    Editor().EnterText(2, 1, QStringLiteral("M11"));
    EXPECT_EQ(Cells().Text(1, 1), QStringLiteral("M10"));
    ExpectStep(QStringLiteral("セルの入力"), [&] { Editor().EnterText(1, 2, QStringLiteral("9")); });
    EXPECT_EQ(Cells().Text(2, 2), QStringLiteral("10"));
}

TEST_F(TableEditorTest, DeletesARow) {
    OpenUsual();
    ExpectStep(QStringLiteral("行の削除"), [&] { Editor().DeleteRow(2); });
    EXPECT_EQ(Data(), (Rows{{"M10", "10", "100"}, {"M16", "16", "160"}}));
    ExpectStep(QStringLiteral("行の削除"), [&] { Editor().DeleteRow(2); });
    EXPECT_EQ(Data(), (Rows{{"M10", "10", "100"}}));
}

TEST_F(TableEditorTest, TheOnlyRowCanBeDeletedToo) {
    OpenUsual();
    for (int row = 1; row <= 3; ++row)
        ExpectStep(QStringLiteral("行の削除"), [&] { Editor().DeleteRow(1); });
    EXPECT_EQ(Cells().Rows(), 1);
    EXPECT_EQ(symbol.table.rows, 0);
    EXPECT_EQ(Editor().DataRows(), 0);
    EXPECT_EQ(Header(), (QStringList{QStringLiteral("呼び"), QStringLiteral("幅"), QStringLiteral("高")}));
    ExpectStep(QStringLiteral("行の追加"), [&] { Editor().AppendRow(); });
    EXPECT_EQ(Data(), (Rows{{"", "", ""}}));
}

TEST_F(TableEditorTest, ARowThatIsNotThereIsAnErrorAndChangesNothing) {
    OpenUsual();
    ExpectNothing([&] {
        for (const int row : {-1, 0, 4})
            EXPECT_EQ(ErrorOf([&] { Editor().DeleteRow(row); }).Number(), ErrorNumber::SubscriptOutOfRange);
        for (const int row : {0, 5})
            EXPECT_EQ(ErrorOf([&] { Editor().InsertRow(row); }).Number(), ErrorNumber::SubscriptOutOfRange);
        EXPECT_EQ(ErrorOf([&] { Editor().MoveRow(0, Direction::After); }).Number(),
                  ErrorNumber::SubscriptOutOfRange);
        EXPECT_EQ(ErrorOf([&] { Editor().MoveRow(4, Direction::Before); }).Number(),
                  ErrorNumber::SubscriptOutOfRange);
        for (const int row : {-1, 0, 4})
            EXPECT_EQ(ErrorOf([&] { Editor().CopyRow(row); }).Number(), ErrorNumber::SubscriptOutOfRange);
    });
}

TEST_F(TableEditorTest, MovesARow) {
    OpenUsual();
    ExpectStep(QStringLiteral("行の移動"), [&] { Editor().MoveRow(1, Direction::After); });
    EXPECT_EQ(Data(), (Rows{{"M12", "12", "120"}, {"M10", "10", "100"}, {"M16", "16", "160"}}));
    ExpectStep(QStringLiteral("行の移動"), [&] { Editor().MoveRow(3, Direction::Before); });
    EXPECT_EQ(Data(), (Rows{{"M12", "12", "120"}, {"M16", "16", "160"}, {"M10", "10", "100"}}));
    ExpectNothing([&] { Editor().MoveRow(1, Direction::Before); });
    ExpectNothing([&] { Editor().MoveRow(3, Direction::After); });
}

TEST_F(TableEditorTest, MovesAColumnWithItsVariable) {
    OpenUsual();
    ExpectStep(QStringLiteral("列の移動"), [&] { Editor().MoveColumn(1, Direction::After); });
    EXPECT_EQ(Header(), (QStringList{QStringLiteral("幅"), QStringLiteral("呼び"), QStringLiteral("高")}));
    EXPECT_EQ(Data()[0], (QStringList{"10", "M10", "100"}));
    EXPECT_EQ(ShownIn(), (QStringList{"2", "1", "3", "0", "0"}));
    EXPECT_EQ(Editor().VariableOf(1)->row, 1);
    EXPECT_EQ(Editor().VariableOf(2)->row, 0);
    ExpectStep(QStringLiteral("列の移動"), [&] { Editor().MoveColumn(3, Direction::Before); });
    EXPECT_EQ(Data()[2], (QStringList{"16", "160", "M16"}));
    EXPECT_EQ(ShownIn(), (QStringList{"3", "1", "2", "0", "0"}));
    ExpectNothing([&] { Editor().MoveColumn(3, Direction::After); });
    ExpectNothing([&] { Editor().MoveColumn(1, Direction::Before); });
}

TEST_F(TableEditorTest, DeletesAColumnAndHidesItsVariable) {
    OpenUsual();
    ExpectStep(QStringLiteral("列の削除"), [&] { Editor().DeleteColumn(2); });
    EXPECT_EQ(Header(), (QStringList{QStringLiteral("呼び"), QStringLiteral("高")}));
    EXPECT_EQ(Data(), (Rows{{"M10", "100"}, {"M12", "120"}, {"M16", "160"}}));
    EXPECT_EQ(ShownIn(), (QStringList{"1", "0", "2", "0", "0"}));
    EXPECT_EQ(Editor().HiddenVariables().front().row, 1);
    ExpectStep(QStringLiteral("列の削除"), [&] { Editor().DeleteColumn(2); });
    EXPECT_EQ(ShownIn(), (QStringList{"1", "0", "0", "0", "0"}));
    ExpectStep(QStringLiteral("列の削除"), [&] { Editor().DeleteColumn(1); });
    EXPECT_EQ(Cells().Cols(), 1);
    EXPECT_EQ(ShownIn(), (QStringList{"0", "0", "0", "0", "0"}));
    EXPECT_EQ(Editor().DataRows(), 3);
}

TEST_F(TableEditorTest, AColumnThatIsNotThereIsAnErrorAndChangesNothing) {
    OpenUsual();
    ExpectNothing([&] {
        for (const int column : {-1, 0, 4})
            EXPECT_EQ(ErrorOf([&] { Editor().DeleteColumn(column); }).Number(),
                      ErrorNumber::SubscriptOutOfRange);
        for (const int column : {0, 5})
            EXPECT_EQ(ErrorOf([&] { Editor().OpenColumn(column); }).Number(),
                      ErrorNumber::SubscriptOutOfRange);
        EXPECT_FALSE(Editor().HasOpenColumn());
        EXPECT_EQ(ErrorOf([&] { Editor().MoveColumn(0, Direction::After); }).Number(),
                  ErrorNumber::SubscriptOutOfRange);
        EXPECT_EQ(ErrorOf([&] { Editor().MoveColumn(4, Direction::Before); }).Number(),
                  ErrorNumber::SubscriptOutOfRange);
    });
}

TEST_F(TableEditorTest, AnOpenColumnIsEmptyAndNoStep) {
    OpenUsual();
    const Rows variables = symbol.NowTable();
    Editor().OpenColumn(2);
    EXPECT_TRUE(Editor().HasOpenColumn());
    EXPECT_EQ(Header(),
              (QStringList{QStringLiteral("呼び"), "", QStringLiteral("幅"), QStringLiteral("高")}));
    EXPECT_EQ(Data()[0], (QStringList{"M10", "", "10", "100"}));
    EXPECT_EQ(Editor().VariableOf(2), nullptr);
    EXPECT_EQ(Editor().VariableOf(3)->row, 1);
    EXPECT_EQ(symbol.NowTable(), variables);
    EXPECT_EQ(Editor().History().count(), 0);
    EXPECT_FALSE(Editor().IsChanged());
}

TEST_F(TableEditorTest, AnOpenColumnIsTakenAwayAgain) {
    OpenUsual();
    for (const int column : {1, 2, 4}) {
        ExpectNothing([&] {
            Editor().OpenColumn(column);
            Editor().CloseColumn();
        });
        EXPECT_FALSE(Editor().HasOpenColumn());
        EXPECT_EQ(Editor().VariableOf(3)->row, 2);
    }
    ExpectNothing([&] { Editor().CloseColumn(); });
}

TEST_F(TableEditorTest, OnlyOneColumnIsOpen) {
    OpenUsual();
    Editor().OpenColumn(1);
    Editor().OpenColumn(2);
    EXPECT_EQ(Header(),
              (QStringList{QStringLiteral("呼び"), "", QStringLiteral("幅"), QStringLiteral("高")}));
    ExpectNothing([&] {
        Editor().CloseColumn();
        Editor().OpenColumn(2);
    });
}

TEST_F(TableEditorTest, ShowsAVariableInTheOpenColumn) {
    OpenUsual();
    ExpectStep(QStringLiteral("列の追加"), [&] {
        Editor().OpenColumn(4);
        Editor().ShowInOpenColumn(4);
        // Before the step, no column was open.
        EXPECT_FALSE(Editor().HasOpenColumn());
        Editor().History().undo();
        Editor().History().redo();
    });
    EXPECT_EQ(Header().back(), QStringLiteral("T"));
    EXPECT_EQ(Data()[0], (QStringList{"M10", "10", "100", ""}));
    EXPECT_EQ(ShownIn(), (QStringList{"1", "2", "3", "0", "4"}));
    EXPECT_EQ(Editor().VariableOf(4)->row, 4);
    EXPECT_EQ(Editor().HiddenVariables().size(), 1U);
}

TEST_F(TableEditorTest, WhatIsShownRightOfItMovesOn) {
    OpenUsual();
    Editor().OpenColumn(1);
    Editor().ShowInOpenColumn(3);
    EXPECT_EQ(Header(),
              (QStringList{"D", QStringLiteral("呼び"), QStringLiteral("幅"), QStringLiteral("高")}));
    EXPECT_EQ(ShownIn(), (QStringList{"2", "3", "4", "1", "0"}));
    Editor().OpenColumn(3);
    Editor().ShowInOpenColumn(4);
    EXPECT_EQ(Header(),
              (QStringList{"D", QStringLiteral("呼び"), "T", QStringLiteral("幅"), QStringLiteral("高")}));
    EXPECT_EQ(ShownIn(), (QStringList{"2", "4", "5", "1", "3"}));
    EXPECT_TRUE(Editor().HiddenVariables().empty());
    Editor().History().undo();
    EXPECT_EQ(ShownIn(), (QStringList{"2", "3", "4", "1", "0"}));
}

TEST_F(TableEditorTest, TheTextsOfAColumnComeBackWithIt) {
    OpenUsual();
    Editor().OpenColumn(2);
    Editor().ShowInOpenColumn(3);
    Editor().EnterText(2, 2, QStringLiteral("typed"));
    Editor().DeleteColumn(2);
    // The variable's next column is another one, empty.
    ExpectStep(QStringLiteral("列の追加"), [&] {
        Editor().OpenColumn(2);
        Editor().ShowInOpenColumn(3);
    });
    EXPECT_EQ(Cells().Text(2, 2), QString());
    Editor().History().setIndex(2);
    EXPECT_EQ(Cells().Text(2, 2), QStringLiteral("typed"));
    Editor().History().setIndex(0);
    EXPECT_EQ(Editor().DataColumns(), 3);
    Editor().History().setIndex(4);
    EXPECT_EQ(Cells().Text(2, 2), QString());
}

TEST_F(TableEditorTest, AVariableWithoutAWidthGetsTen) {
    Open({{QStringLiteral("V1"), 5, QStringLiteral("幅"), 1}}, {QStringLiteral("   10")});
    EXPECT_EQ(Widths(), (QStringList{"0", "5", "10", "10", "10"}));
    ExpectStep(QStringLiteral("列の追加"), [&] {
        Editor().OpenColumn(1);
        Editor().ShowInOpenColumn(0);
    });
    EXPECT_EQ(Widths(), (QStringList{"10", "5", "10", "10", "10"}));
    EXPECT_EQ(ShownIn(), (QStringList{"1", "2", "0", "0", "0"}));
    EXPECT_EQ(Header(), (QStringList{"", QStringLiteral("幅")}));
    Editor().History().undo();
    EXPECT_EQ(Widths(), (QStringList{"0", "5", "10", "10", "10"}));
}

TEST_F(TableEditorTest, AVariableKeepsItsWidthWhileItIsHidden) {
    OpenUsual();
    Editor().DeleteColumn(3);
    Editor().OpenColumn(1);
    Editor().ShowInOpenColumn(2);
    EXPECT_EQ(Widths(), (QStringList{"4", "5", "3", "10", "10"}));
    EXPECT_EQ(Column(symbol.NowTable(), 5), (QStringList{"7", "1", "2", "0", "0"}));
}

TEST_F(TableEditorTest, RenamesAVariableByItsHeader) {
    OpenUsual();
    ExpectStep(QStringLiteral("名前の変更"), [&] { Editor().EnterText(0, 2, QStringLiteral("はば")); });
    EXPECT_EQ(Header()[1], QStringLiteral("はば"));
    EXPECT_EQ(symbol.variables.Text(1, 1), QStringLiteral("はば"));
    EXPECT_EQ(Column(symbol.NowTable(), 2)[1], QStringLiteral("はば"));
    ExpectStep(QStringLiteral("名前の変更"), [&] { Editor().EnterText(0, 1, QString()); });
    EXPECT_EQ(Column(symbol.NowTable(), 2)[0], QString());
}

TEST_F(TableEditorTest, RenamesAVariableByItsRow) {
    OpenUsual();
    ExpectStep(QStringLiteral("名前の変更"), [&] { Editor().EnterName(2, QStringLiteral("たかさ")); });
    EXPECT_EQ(Header()[2], QStringLiteral("たかさ"));
    EXPECT_EQ(symbol.variables.Text(2, 1), QStringLiteral("たかさ"));
    // One that the table does not show.
    ExpectStep(QStringLiteral("名前の変更"), [&] { Editor().EnterName(3, QStringLiteral("奥行")); });
    EXPECT_EQ(symbol.variables.Text(3, 1), QStringLiteral("奥行"));
    EXPECT_EQ(Column(symbol.NowTable(), 2)[3], QStringLiteral("奥行"));
    Editor().OpenColumn(4);
    Editor().ShowInOpenColumn(3);
    EXPECT_EQ(Header()[3], QStringLiteral("奥行"));
    ExpectNothing([&] { Editor().EnterName(9, QStringLiteral("nobody")); });
}

TEST_F(TableEditorTest, ANewNameGoesWithItsColumn) {
    OpenUsual();
    Editor().MoveColumn(2, Direction::Before);
    Editor().EnterText(0, 1, QStringLiteral("はば"));
    Editor().DeleteColumn(1);
    EXPECT_EQ(symbol.variables.Text(1, 1), QStringLiteral("はば"));
    Editor().OpenColumn(2);
    Editor().ShowInOpenColumn(1);
    EXPECT_EQ(Header()[1], QStringLiteral("はば"));
    Editor().History().setIndex(1);
    EXPECT_EQ(Header()[0], QStringLiteral("幅"));
    EXPECT_EQ(symbol.variables.Text(1, 1), QStringLiteral("幅"));
}

TEST_F(TableEditorTest, ANameThatIsTooLongIsAnErrorAndChangesNothing) {
    OpenUsual();
    ExpectStep(QStringLiteral("名前の変更"), [&] { Editor().EnterName(1, QString(255, u'あ')); });
    ExpectNothing([&] {
        EXPECT_EQ(ErrorOf([&] { Editor().EnterName(1, QString(256, u'x')); }).Number(),
                  ErrorNumber::TextTooLong);
        EXPECT_EQ(ErrorOf([&] { Editor().EnterText(0, 1, QString(256, u'x')); }).Number(),
                  ErrorNumber::TextTooLong);
    });
}

TEST_F(TableEditorTest, AColumnWithoutAVariableIsEditedAllTheSame) {
    Open({{QStringLiteral("V1"), 5, QStringLiteral("幅"), 0},
          {QStringLiteral("V9"), 3, QStringLiteral("不明"), 0},
          {QStringLiteral("V2"), 3, QStringLiteral("高"), 0}},
         {QStringLiteral("   10abc 20")});
    EXPECT_EQ(Editor().VariableOf(2), nullptr);
    ExpectStep(QStringLiteral("名前の変更"), [&] { Editor().EnterText(0, 2, QStringLiteral("名")); });
    ExpectNothing([&] { Editor().EnterText(0, 2, QStringLiteral("名")); });
    ExpectStep(QStringLiteral("セルの入力"), [&] { Editor().EnterText(1, 2, QStringLiteral("x")); });
    ExpectStep(QStringLiteral("列の移動"), [&] { Editor().MoveColumn(2, Direction::After); });
    EXPECT_EQ(ShownIn(), (QStringList{"0", "1", "2", "0", "0"}));
    EXPECT_EQ(Data(), (Rows{{"10", "20", "x"}}));
    ExpectStep(QStringLiteral("列の移動"), [&] { Editor().MoveColumn(2, Direction::After); });
    EXPECT_EQ(ShownIn(), (QStringList{"0", "1", "3", "0", "0"}));
    ExpectStep(QStringLiteral("列の削除"), [&] { Editor().DeleteColumn(2); });
    EXPECT_EQ(ShownIn(), (QStringList{"0", "1", "2", "0", "0"}));
    EXPECT_EQ(Data(), (Rows{{"10", "20"}}));
}

TEST_F(TableEditorTest, TellsWhetherTheTableDiffersFromItsFile) {
    OpenUsual();
    Editor().EnterText(1, 1, QStringLiteral("x"));
    EXPECT_TRUE(Editor().IsChanged());
    Editor().History().undo();
    EXPECT_FALSE(Editor().IsChanged());
    Editor().History().redo();
    Editor().History().setClean();
    EXPECT_FALSE(Editor().IsChanged());
    Editor().History().undo();
    EXPECT_TRUE(Editor().IsChanged());
    // What was saved cannot come back any more.
    Editor().AppendRow();
    Editor().History().undo();
    EXPECT_TRUE(Editor().IsChanged());
}

TEST_F(TableEditorTest, ATableHoldsNoMoreRowsThanItsFileCanCount) {
    OpenUsual();
    symbol.table.cells.SetRows(MostRows);
    symbol.table.rows = MostRows - 1;
    Editor().InsertRow(1);
    EXPECT_EQ(Editor().DataRows(), MostRows);
    const auto tooMany = [](const RuntimeError& error) { return error.Number() == ErrorNumber::Overflow; };
    EXPECT_TRUE(tooMany(ErrorOf([&] { Editor().AppendRow(); })));
    EXPECT_TRUE(tooMany(ErrorOf([&] { Editor().InsertRow(1); })));
    EXPECT_TRUE(tooMany(ErrorOf([&] { Editor().CopyRow(2); })));
    EXPECT_EQ(Editor().History().count(), 1);
    EXPECT_EQ(Cells().Rows(), MostRows + 1);
    EXPECT_EQ(Cells().Text(2, 1), QStringLiteral("M10"));
    Editor().DeleteRow(MostRows);
    Editor().CopyRow(2);
    EXPECT_EQ(Editor().DataRows(), MostRows);
}

TEST_F(TableEditorTest, ATableHoldsNoMoreColumnsThanCanBeCounted) {
    OpenUsual();
    symbol.table.cells.SetCols(std::numeric_limits<std::int16_t>::max());
    EXPECT_EQ(ErrorOf([&] { Editor().OpenColumn(1); }).Number(), ErrorNumber::Overflow);
    EXPECT_FALSE(Editor().HasOpenColumn());
    EXPECT_EQ(Cells().Text(0, 1), QStringLiteral("呼び"));
}

TEST_F(TableEditorTest, TellsWhereAStepWent) {
    OpenUsual();
    QList<QPair<int, int>> went;
    QObject::connect(&Editor(), &TableEditor::Went, &Editor(),
                     [&](int row, int column) { went << qMakePair(row, column); });
    QObject::connect(&Editor(), &TableEditor::WentTo, &Editor(),
                     [&](const CellRange& range) { went << qMakePair(range.row, range.column); });
    const auto expect = [&](auto&& action, const QPair<int, int>& done, const QPair<int, int>& undone) {
        went.clear();
        action();
        Editor().History().undo();
        Editor().History().redo();
        EXPECT_EQ(went, (QList<QPair<int, int>>{done, undone, done}));
    };
    expect([&] { Editor().EnterText(2, 3, QStringLiteral("x")); }, {2, 3}, {2, 3});
    expect([&] { Editor().EnterText(0, 2, QStringLiteral("x")); }, {0, 2}, {0, 2});
    expect([&] { Editor().InsertRow(2); }, {2, 1}, {2, 0});
    expect([&] { Editor().AppendRow(); }, {5, 1}, {4, 0});
    expect([&] { Editor().DeleteRow(5); }, {4, 0}, {5, 0});
    expect([&] { Editor().DeleteRow(2); }, {2, 0}, {2, 0});
    expect([&] { Editor().MoveRow(1, Direction::After); }, {2, 0}, {1, 0});
    expect([&] { Editor().MoveColumn(3, Direction::Before); }, {0, 2}, {0, 3});
    expect([&] { Editor().DeleteColumn(3); }, {0, 2}, {0, 3});
    expect(
        [&] {
            Editor().OpenColumn(1);
            Editor().ShowInOpenColumn(4);
        },
        {0, 1}, {0, 1});
}

} // namespace
} // namespace velmo
