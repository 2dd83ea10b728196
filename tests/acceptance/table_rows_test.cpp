#include "table_run.h"

namespace velmo {
namespace {

using testing::ElementsAre;

// The pop-up of the row numbers.
class TableRowsTest : public TableRunTest {
protected:
    void SetUp() override {
        TableRunTest::SetUp();
        WriteColumn({"A", "B", "C"});
        OpenTable();
    }
    QStringList Rows() { return Run().Column("Vedt_FlexGrid", 0); }
    void ExpectNumbers() {
        const QJsonArray numbers = Run().View("Vedt_FlexGrid")["rowHeaders"].toArray();
        for (int row = 1; row <= numbers.size(); ++row)
            EXPECT_EQ(numbers[row - 1].toString(), QString::number(row));
    }
};

TEST_F(TableRowsTest, ThePopUpHasTheRowsCommands) {
    OpenRowPopUp(2);
    EXPECT_THAT(PopUpEntries(), ElementsAre("(追加(&A))", "挿入(&I)", "複写(&C)", "削除(&D)", "後へ移動(&N)",
                                            "前へ移動(&B)"));
    EXPECT_EQ(Current(), Place(2, 1));
    Run().Press("Escape");
    OpenRowPopUp(3);
    EXPECT_THAT(PopUpEntries(),
                ElementsAre("追加(&A)", "挿入(&I)", "複写(&C)", "削除(&D)", "後へ移動(&N)", "前へ移動(&B)"));
    Run().Press("Escape");
    EXPECT_FALSE(IsChanged());
}

TEST_F(TableRowsTest, AddPutsAnEmptyRowBehindTheLast) {
    ChooseOnRow(3, "VedtHdrPopAdd");
    ExpectEditing({4, 1}, "");
    EXPECT_THAT(Rows(), ElementsAre("A", "B", "C", ""));
    ExpectNumbers();
    EXPECT_TRUE(IsChanged());
    EXPECT_EQ(Run().Text("VedtSizePanel"), QString("4 行 × 1 列"));
    Run().Type("D");
    Run().Press("Return");
    EXPECT_THAT(Rows(), ElementsAre("A", "B", "C", "D"));
    Confirm();
    EXPECT_THAT(TableFile().mid(7), ElementsAre("4", "         A", "         B", "         C", "         D"));
}

TEST_F(TableRowsTest, InsertPutsAnEmptyRowBefore) {
    ChooseOnRow(2, "VedtHdrPopIns");
    ExpectEditing({2, 1}, "");
    EXPECT_THAT(Rows(), ElementsAre("A", "", "B", "C"));
    ExpectNumbers();
    // Leaving the editor keeps the row.
    Run().Press("Escape");
    ExpectCurrent({2, 1});
    EXPECT_THAT(Rows(), ElementsAre("A", "", "B", "C"));
}

TEST_F(TableRowsTest, CopyStandsBelow) {
    ChooseOnRow(2, "VedtHdrPopCpy");
    EXPECT_THAT(Rows(), ElementsAre("A", "B", "B", "C"));
    ExpectCurrent({3, 1});
    ExpectNumbers();
    EXPECT_TRUE(IsChanged());
}

TEST_F(TableRowsTest, CopyTakesEveryValue) {
    session_.WriteHomeLines(tableFile_, HexTableLines());
    OpenTable();
    Click({4, 3});
    ChooseOnRow(4, "VedtHdrPopCpy");
    EXPECT_THAT(TableRows().mid(3),
                ElementsAre(ElementsAre("M12", "12", "80"), ElementsAre("M12", "12", "80")));
    ExpectCurrent({5, 1});
}

TEST_F(TableRowsTest, DeleteAsksFirst) {
    ChooseOnRow(2, "VedtHdrPopDel");
    const Message message = Run().ExpectMessage("削除しますよろしいですか");
    EXPECT_EQ(message.title, QString("VELMO2"));
    EXPECT_THAT(message.buttons, testing::UnorderedElementsAre("Yes", "No"));
    Run().AnswerNo();
    EXPECT_THAT(Rows(), ElementsAre("A", "B", "C"));
    EXPECT_FALSE(IsChanged());
    ChooseOnRow(2, "VedtHdrPopDel");
    Run().ExpectMessage("削除しますよろしいですか");
    Run().AnswerYes();
    EXPECT_THAT(Rows(), ElementsAre("A", "C"));
    ExpectNumbers();
    ExpectCurrent({2, 1});
    EXPECT_TRUE(IsChanged());
    EXPECT_EQ(Run().Text("VedtSizePanel"), QString("2 行 × 1 列"));
}

TEST_F(TableRowsTest, EveryRowCanGo) {
    for (int row = 3; row > 0; --row) {
        ChooseOnRow(row, "VedtHdrPopDel");
        Run().ExpectMessage("削除しますよろしいですか");
        Run().AnswerYes();
    }
    EXPECT_THAT(Rows(), ElementsAre());
    EXPECT_EQ(Run().Text("VedtSizePanel"), QString("0 行 × 1 列"));
    Confirm();
    EXPECT_EQ(TableFile(), QStringList({"", "1", "1", "ｺﾒﾝﾄ", "10", "0", "呼び", "0"}));
}

TEST_F(TableRowsTest, ATableWithoutRowsGetsOneAgain) {
    WriteColumn({"A"});
    OpenTable();
    ChooseOnRow(1, "VedtHdrPopDel");
    Run().ExpectMessage("削除しますよろしいですか");
    Run().AnswerYes();
    Run().Press("Alt+Insert");
    ExpectEditing({1, 1}, "");
    Run().Type("Z");
    Run().Press("Return");
    EXPECT_THAT(Rows(), ElementsAre("Z"));
}

TEST_F(TableRowsTest, RowsMove) {
    ChooseOnRow(1, "VedtHdrPopAft");
    EXPECT_THAT(Rows(), ElementsAre("B", "A", "C"));
    ExpectCurrent({2, 1});
    ChooseOnRow(3, "VedtHdrPopBef");
    EXPECT_THAT(Rows(), ElementsAre("B", "C", "A"));
    ExpectCurrent({2, 1});
    ExpectNumbers();
    Confirm();
    EXPECT_THAT(TableFile().mid(7), ElementsAre("3", "         B", "         C", "         A"));
}

TEST_F(TableRowsTest, NoRowMovesOutOfTheTable) {
    ChooseOnRow(3, "VedtHdrPopAft");
    ExpectCurrent({3, 1});
    ChooseOnRow(1, "VedtHdrPopBef");
    ExpectCurrent({1, 1});
    EXPECT_THAT(Rows(), ElementsAre("A", "B", "C"));
    EXPECT_FALSE(IsChanged());
}

TEST_F(TableRowsTest, TheCurrentColumnStaysWhenARowMoves) {
    session_.WriteHomeLines(tableFile_, HexTableLines());
    OpenTable();
    Click({2, 3});
    ChooseOnRow(2, "VedtHdrPopAft");
    ExpectCurrent({3, 3});
    EXPECT_THAT(TableRows().mid(1, 2),
                ElementsAre(ElementsAre("M12", "12", "50"), ElementsAre("M10", "10", "60")));
}

TEST_F(TableRowsTest, ACommandCommitsWhatIsBeingTyped) {
    Click({1, 1});
    Run().Type("AA");
    ChooseOnRow(1, "VedtHdrPopCpy");
    EXPECT_THAT(Rows(), ElementsAre("AA", "AA", "B", "C"));
}

TEST_F(TableRowsTest, ManyRowsAreAddedBelowTheSight) {
    QStringList values;
    for (int row = 1; row <= 200; ++row)
        values.append(QString::number(row));
    WriteColumn(values);
    OpenTable();
    ChooseOnRow(200, "VedtHdrPopAdd");
    ExpectEditing({201, 1}, "");
    EXPECT_TRUE(Run().Describe("Vedt_FlexGrid", CellOf({201, 1}))["visible"].toBool());
    Run().Press("Escape");
    Run().Press("Ctrl+Home");
    Run().Press("Ctrl+Z");
    EXPECT_EQ(Rows().size(), 200);
}

} // namespace
} // namespace velmo
