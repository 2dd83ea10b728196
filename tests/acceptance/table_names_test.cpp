#include "table_run.h"

namespace velmo {
namespace {

using testing::ElementsAre;

// A variable's name stands in its column's header and in the variable grid.
class TableNamesTest : public TableRunTest {
protected:
    void SetUp() override {
        TableRunTest::SetUp();
        OpenTable();
    }
    QStringList NamesOfVariables() {
        QStringList names;
        const QList<QStringList> rows =
            session_.QueryExchange("VELMONOW.mdb", "SELECT ValName FROM NowTable ORDER BY ValNum");
        for (const QStringList& row : rows)
            names.append(row);
        return names;
    }
    void ExpectEditingName(int row, const QString& text) {
        ASSERT_TRUE(IsEditing());
        EXPECT_EQ(Run().Focus(), QString("CurEdit"));
        EXPECT_EQ(Run().Text("CurEdit"), text);
        EXPECT_EQ(Run().Property("CurEdit", "geometry"),
                  Run().Describe("Vedt_NowFGrid", Item::Cell(row - 1, 1))["rect"]);
    }
};

TEST_F(TableNamesTest, ANameIsChangedInTheHeader) {
    ChooseOnColumn(2, "VedtHdrPopRen");
    ExpectEditing({0, 2}, "d");
    EXPECT_EQ(Run().Property("CurEdit", "selectedText").toString(), QString("d"));
    Run().Type("軸径");
    Run().Press("Return");
    EXPECT_FALSE(IsEditing());
    EXPECT_THAT(Headers(), ElementsAre("呼び", "軸径", "L"));
    EXPECT_THAT(Values(), ElementsAre("軸径", "L", "材質"));
    EXPECT_THAT(NamesOfVariables(), ElementsAre("呼び", "軸径", "L", "材質"));
    EXPECT_TRUE(IsChanged());
    EXPECT_EQ(Current().second, 2);
}

TEST_F(TableNamesTest, ANameIsChangedInTheVariableGrid) {
    ClickVariable(2, 1);
    ExpectEditingName(2, "L");
    Run().Press("Ctrl+A");
    Run().Type("長さ");
    Run().Press("Return");
    EXPECT_FALSE(IsEditing());
    EXPECT_THAT(Headers(), ElementsAre("呼び", "d", "長さ"));
    EXPECT_THAT(Values(), ElementsAre("d", "長さ", "材質"));
    EXPECT_THAT(NamesOfVariables(), ElementsAre("呼び", "d", "長さ", "材質"));
    EXPECT_TRUE(IsChanged());
}

TEST_F(TableNamesTest, TheLabelsOfTheVariablesCannotBeChanged) {
    ClickVariable(2, 0);
    EXPECT_FALSE(IsEditing());
    EXPECT_THAT(Run().Column("Vedt_NowFGrid", 0), ElementsAre("V1", "V2", "V3"));
}

TEST_F(TableNamesTest, EscapeKeepsTheName) {
    ChooseOnColumn(2, "VedtHdrPopRen");
    Run().Type("x");
    Run().Press("Escape");
    ClickVariable(1, 1);
    Run().Type("y");
    Run().Press("Escape");
    EXPECT_FALSE(IsEditing());
    EXPECT_THAT(Headers(), ElementsAre("呼び", "d", "L"));
    EXPECT_THAT(Values(), ElementsAre("d", "L", "材質"));
    EXPECT_FALSE(IsChanged());
}

TEST_F(TableNamesTest, AClickElsewhereKeepsWhatWasTyped) {
    ChooseOnColumn(3, "VedtHdrPopRen");
    Run().Type("L2");
    Click({4, 1});
    ExpectCurrent({4, 1});
    EXPECT_THAT(Headers(), ElementsAre("呼び", "d", "L2"));
    EXPECT_THAT(Values(), ElementsAre("d", "L2", "材質"));
}

TEST_F(TableNamesTest, AVariableWithoutAColumnIsRenamedToo) {
    ClickVariable(3, 1);
    Run().Press("Ctrl+A");
    Run().Type("素材");
    Run().Press("Return");
    EXPECT_THAT(Headers(), ElementsAre("呼び", "d", "L"));
    EXPECT_THAT(NamesOfVariables(), ElementsAre("呼び", "d", "L", "素材"));
    EXPECT_TRUE(IsChanged());
    ChooseOnColumn(3, "VedtHdrPopAdd");
    EXPECT_THAT(Run().ComboItems("Vedt_Combo"), ElementsAre("素材 (V3)"));
    Run().Press("Escape");
}

TEST_F(TableNamesTest, TheCommentColumnHasANameOfItsOwn) {
    ChooseOnColumn(1, "VedtHdrPopRen");
    ExpectEditing({0, 1}, "呼び");
    Run().Type("サイズ");
    Run().Press("Return");
    EXPECT_THAT(Headers(), ElementsAre("サイズ", "d", "L"));
    EXPECT_THAT(Values(), ElementsAre("d", "L", "材質"));
    Confirm();
    EXPECT_EQ(TableFile().at(6), QString("サイズ"));
}

TEST_F(TableNamesTest, TabAndArrowsGoFromNameToName) {
    ClickVariable(1, 1);
    Run().Press("Ctrl+A");
    Run().Type("a");
    Run().Press("Tab");
    ExpectEditingName(2, "L");
    Run().Press("Ctrl+A");
    Run().Type("b");
    Run().Press("Down");
    ExpectEditingName(3, "材質");
    Run().Press("Up");
    ExpectEditingName(2, "b");
    Run().Press("Return");
    EXPECT_THAT(Values(), ElementsAre("a", "b", "材質"));
    EXPECT_THAT(Headers(), ElementsAre("呼び", "a", "b"));
}

TEST_F(TableNamesTest, RenamingIsAStepLikeOthers) {
    ClickVariable(1, 1);
    Run().Press("Ctrl+A");
    Run().Type("軸径");
    Run().Press("Return");
    EXPECT_EQ(Run().Action("VedtMnuEditUndo")["text"].toString(), QString("元に戻す(&U) 名前の変更"));
    Run().ClickMenu("VedtMnuEditUndo");
    EXPECT_THAT(Headers(), ElementsAre("呼び", "d", "L"));
    EXPECT_THAT(Values(), ElementsAre("d", "L", "材質"));
    EXPECT_THAT(NamesOfVariables(), ElementsAre("呼び", "d", "L", "材質"));
    EXPECT_FALSE(IsChanged());
    Run().ClickMenu("VedtMnuEditRedo");
    EXPECT_THAT(Headers(), ElementsAre("呼び", "軸径", "L"));
    EXPECT_THAT(Values(), ElementsAre("軸径", "L", "材質"));
}

TEST_F(TableNamesTest, NewNamesAreHandedOverAndSaved) {
    const QByteArray definition = session_.ReadHome("SMB\\BOLT\\HEX.TXT");
    ChooseOnColumn(2, "VedtHdrPopRen");
    Run().Type("軸径");
    Run().Press("Return");
    Confirm();
    EXPECT_EQ(session_.ReadExchangeLines("velmo.ret"),
              QStringList({"3", "V1", "軸径", "V2", "L", "V3", "材質"}));
    EXPECT_EQ(TableFile().at(11), QString("軸径"));
    EXPECT_EQ(session_.ReadHome("SMB\\BOLT\\HEX.TXT"), definition);
    OpenTable();
    EXPECT_THAT(Headers(), ElementsAre("呼び", "軸径", "L"));
    EXPECT_THAT(Values(), ElementsAre("軸径", "L", "材質"));
}

} // namespace
} // namespace velmo
