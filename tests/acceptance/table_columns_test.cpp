#include "table_run.h"

namespace velmo {
namespace {

using testing::ElementsAre;

// The pop-up of the columns' headers and the list that a new column's variable is chosen from.
class TableColumnsTest : public TableRunTest {
protected:
    void SetUp() override {
        TableRunTest::SetUp();
        OpenTable();
    }
    void DeleteColumn(int column) {
        ChooseOnColumn(column, "VedtHdrPopDel");
        Run().ExpectMessage("削除しますよろしいですか");
        Run().AnswerYes();
    }
    void ExpectUnchanged() {
        EXPECT_THAT(Headers(), ElementsAre("呼び", "d", "L"));
        EXPECT_THAT(TableRows().first(), ElementsAre("M10", "10", "50"));
        EXPECT_THAT(ColumnsOfVariables(), ElementsAre("1", "2", "3", "0"));
        EXPECT_FALSE(IsChanged());
        EXPECT_FALSE(Run().IsVisible("Vedt_Combo"));
        EXPECT_GE(Current().first, 1);
        EXPECT_GE(Current().second, 1);
    }
    void ExpectOffered(const QStringList& items) {
        ASSERT_TRUE(Run().IsVisible("Vedt_Combo"));
        EXPECT_EQ(Run().ComboItems("Vedt_Combo"), items);
    }
};

TEST_F(TableColumnsTest, ThePopUpHasTheColumnsCommands) {
    Click({3, 1});
    OpenColumnPopUp(2);
    EXPECT_THAT(PopUpEntries(), ElementsAre("(追加(&A))", "挿入(&I)", "削除(&D)", "後へ移動(&N)",
                                            "前へ移動(&B)", "名前の変更(&R)"));
    EXPECT_EQ(Current(), Place(3, 2));
    Run().Press("Escape");
    OpenColumnPopUp(3);
    EXPECT_THAT(PopUpEntries(), ElementsAre("追加(&A)", "挿入(&I)", "削除(&D)", "後へ移動(&N)",
                                            "前へ移動(&B)", "名前の変更(&R)"));
    EXPECT_EQ(Current(), Place(3, 3));
    Run().Press("Escape");
    EXPECT_FALSE(IsChanged());
}

TEST_F(TableColumnsTest, WithoutAHiddenVariableNoColumnCanBeAdded) {
    ChooseOnColumn(3, "VedtHdrPopAdd");
    Run().Press("Return");
    OpenColumnPopUp(4);
    EXPECT_THAT(PopUpEntries(), ElementsAre("(追加(&A))", "(挿入(&I))", "削除(&D)", "後へ移動(&N)",
                                            "前へ移動(&B)", "名前の変更(&R)"));
    Run().Press("Escape");
    for (const char* entry : {"VedtMnuColAdd", "VedtMnuColIns"})
        EXPECT_FALSE(Run().Action(entry)["enabled"].toBool()) << entry;
}

TEST_F(TableColumnsTest, AddOffersTheHiddenVariables) {
    ChooseOnColumn(3, "VedtHdrPopAdd");
    ExpectOffered({"材質 (V3)"});
    EXPECT_THAT(Headers(), ElementsAre("呼び", "d", "L", ""));
    EXPECT_EQ(Current().second, 4);
    Run().ChooseInCombo("Vedt_Combo", "材質 (V3)");
    EXPECT_THAT(Headers(), ElementsAre("呼び", "d", "L", "材質"));
    EXPECT_THAT(TableRows().first(), ElementsAre("M10", "10", "50", ""));
    EXPECT_THAT(ColumnsOfVariables(), ElementsAre("1", "2", "3", "4"));
    EXPECT_FALSE(Run().IsVisible("Vedt_Combo"));
    EXPECT_EQ(Current().second, 4);
    ExpectCurrent(Current());
    EXPECT_TRUE(IsChanged());
    EXPECT_EQ(Run().Text("VedtSizePanel"), QString("4 行 × 4 列"));
    // A variable that comes into the table gets ten characters.
    EXPECT_EQ(Run().Text("VedtLengthPanel"), QString("0 / 10 文字"));
}

TEST_F(TableColumnsTest, InsertMovesTheOthersRight) {
    ChooseOnColumn(2, "VedtHdrPopIns");
    ExpectOffered({"材質 (V3)"});
    EXPECT_THAT(Headers(), ElementsAre("呼び", "", "d", "L"));
    EXPECT_EQ(Current().second, 2);
    Run().Press("Return");
    EXPECT_THAT(Headers(), ElementsAre("呼び", "材質", "d", "L"));
    EXPECT_THAT(TableRows().first(), ElementsAre("M10", "", "10", "50"));
    EXPECT_THAT(ColumnsOfVariables(), ElementsAre("1", "3", "4", "2"));
    EXPECT_EQ(Current().second, 2);
}

TEST_F(TableColumnsTest, TheListIsWorkedByKeys) {
    DeleteColumn(2);
    DeleteColumn(1);
    ChooseOnColumn(1, "VedtHdrPopAdd");
    ExpectOffered({"呼び (ｺﾒﾝﾄ)", "d (V1)", "材質 (V3)"});
    Run().Press("Down");
    Run().Press("Return");
    EXPECT_THAT(Headers(), ElementsAre("L", "d"));
    EXPECT_THAT(ColumnsOfVariables(), ElementsAre("0", "2", "1", "0"));
    ChooseOnColumn(1, "VedtHdrPopIns");
    ExpectOffered({"呼び (ｺﾒﾝﾄ)", "材質 (V3)"});
    Run().ChooseInCombo("Vedt_Combo", "呼び (ｺﾒﾝﾄ)");
    EXPECT_THAT(Headers(), ElementsAre("呼び", "L", "d"));
    EXPECT_THAT(ColumnsOfVariables(), ElementsAre("1", "3", "2", "0"));
}

TEST_F(TableColumnsTest, AVariableIsOfferedByItsNameWhateverThatHolds) {
    session_.WriteHomeLines("SMB\\BOLT\\HEX.TXT", {"$VAR", R"(V1=PRO("d",10))", R"(V2=PRO("L",50))",
                                                   R"(V3=PRO("比%1-%2%",3))", "$GEO"});
    OpenTable();
    ChooseOnColumn(3, "VedtHdrPopAdd");
    ExpectOffered({"比%1-%2% (V3)"});
}

TEST_F(TableColumnsTest, EscapeTakesTheColumnAway) {
    ChooseOnColumn(3, "VedtHdrPopAdd");
    ExpectOffered({"材質 (V3)"});
    Run().Press("Escape");
    ExpectUnchanged();
    ChooseOnColumn(1, "VedtHdrPopIns");
    ExpectOffered({"材質 (V3)"});
    Run().Press("Escape");
    ExpectUnchanged();
    EXPECT_EQ(Run().Focus(), QString("Vedt_FlexGrid"));
    EXPECT_FALSE(Run().Action("VedtMnuEditUndo")["enabled"].toBool());
}

TEST_F(TableColumnsTest, AClickBesideTheListTakesTheColumnAway) {
    ChooseOnColumn(3, "VedtHdrPopAdd");
    ExpectOffered({"材質 (V3)"});
    // The first click folds the list, as a list does.
    Click({1, 1});
    Run().WaitFor("the list to go", [this] { return !Run().IsVisible("Vedt_Combo"); });
    ExpectUnchanged();
}

TEST_F(TableColumnsTest, ACommandMeanwhileTakesTheColumnAway) {
    ChooseOnColumn(3, "VedtHdrPopAdd");
    Run().Press("Escape");
    ChooseOnColumn(2, "VedtHdrPopAft");
    EXPECT_THAT(Headers(), ElementsAre("呼び", "L", "d"));
    EXPECT_THAT(ColumnsOfVariables(), ElementsAre("1", "3", "2", "0"));
}

TEST_F(TableColumnsTest, DeleteAsksFirst) {
    ChooseOnColumn(2, "VedtHdrPopDel");
    const Message message = Run().ExpectMessage("削除しますよろしいですか");
    EXPECT_EQ(message.title, QString("VELMO2"));
    EXPECT_THAT(message.buttons, testing::UnorderedElementsAre("Yes", "No"));
    Run().AnswerNo();
    ExpectUnchanged();
    DeleteColumn(2);
    EXPECT_THAT(Headers(), ElementsAre("呼び", "L"));
    EXPECT_THAT(TableRows(), ElementsAre(ElementsAre("M10", "50"), ElementsAre("M10", "60"),
                                         ElementsAre("M12", "50"), ElementsAre("M12", "80")));
    EXPECT_THAT(ColumnsOfVariables(), ElementsAre("1", "0", "2", "0"));
    EXPECT_EQ(Current().second, 2);
    EXPECT_TRUE(IsChanged());
    // The variable keeps its row and its name.
    EXPECT_THAT(Values(), ElementsAre("d", "L", "材質"));
}

TEST_F(TableColumnsTest, TheLastColumnCanGoAndComeBack) {
    DeleteColumn(3);
    EXPECT_THAT(Headers(), ElementsAre("呼び", "d"));
    EXPECT_EQ(Current().second, 2);
    ChooseOnColumn(2, "VedtHdrPopAdd");
    ExpectOffered({"L (V2)", "材質 (V3)"});
    Run().ChooseInCombo("Vedt_Combo", "L (V2)");
    EXPECT_THAT(Headers(), ElementsAre("呼び", "d", "L"));
    EXPECT_THAT(TableRows().first(), ElementsAre("M10", "10", ""));
}

TEST_F(TableColumnsTest, EveryColumnCanGo) {
    for (int column = 3; column > 0; --column)
        DeleteColumn(column);
    EXPECT_THAT(Headers(), ElementsAre());
    EXPECT_THAT(ColumnsOfVariables(), ElementsAre("0", "0", "0", "0"));
    EXPECT_EQ(Run().Text("VedtSizePanel"), QString("4 行 × 0 列"));
    for (int column = 1; column <= 3; ++column)
        Run().Press("Ctrl+Z");
    EXPECT_THAT(Headers(), ElementsAre("呼び", "d", "L"));
    EXPECT_THAT(TableRows().first(), ElementsAre("M10", "10", "50"));
    EXPECT_THAT(ColumnsOfVariables(), ElementsAre("1", "2", "3", "0"));
}

TEST_F(TableColumnsTest, ColumnsMove) {
    ChooseOnColumn(1, "VedtHdrPopAft");
    EXPECT_THAT(Headers(), ElementsAre("d", "呼び", "L"));
    EXPECT_THAT(TableRows().first(), ElementsAre("10", "M10", "50"));
    EXPECT_THAT(ColumnsOfVariables(), ElementsAre("2", "1", "3", "0"));
    EXPECT_EQ(Current().second, 2);
    ChooseOnColumn(3, "VedtHdrPopBef");
    EXPECT_THAT(Headers(), ElementsAre("d", "L", "呼び"));
    EXPECT_THAT(ColumnsOfVariables(), ElementsAre("3", "1", "2", "0"));
    EXPECT_EQ(Current().second, 2);
    EXPECT_TRUE(IsChanged());
    Confirm();
    EXPECT_EQ(TableFile().mid(17), QStringList({"4", "   10   50   M10", "   10   60   M10",
                                                "   12   50   M12", "   12   80   M12"}));
}

TEST_F(TableColumnsTest, NoColumnMovesOutOfTheTable) {
    ChooseOnColumn(3, "VedtHdrPopAft");
    EXPECT_EQ(Current().second, 3);
    ChooseOnColumn(1, "VedtHdrPopBef");
    EXPECT_EQ(Current().second, 1);
    ExpectUnchanged();
    EXPECT_FALSE(Run().Action("VedtMnuEditUndo")["enabled"].toBool());
}

TEST_F(TableColumnsTest, AColumnWithoutAVariableCanBeChanged) {
    QStringList lines = HexTableLines();
    lines[8] = "V0009";
    session_.WriteHomeLines(tableFile_, lines);
    OpenTable();
    EXPECT_THAT(ColumnsOfVariables(), ElementsAre("1", "0", "3", "0"));
    ChooseOnColumn(2, "VedtHdrPopAft");
    EXPECT_THAT(Headers(), ElementsAre("呼び", "L", "d"));
    EXPECT_THAT(ColumnsOfVariables(), ElementsAre("1", "0", "2", "0"));
    DeleteColumn(3);
    EXPECT_THAT(Headers(), ElementsAre("呼び", "L"));
    EXPECT_THAT(ColumnsOfVariables(), ElementsAre("1", "0", "2", "0"));
}

TEST_F(TableColumnsTest, TheMenuKeyOpensThePopUpOfTheCurrentColumn) {
    Click({2, 3});
    Run().Press("Shift+F10");
    Run().WaitForWindow("VedtHdrPop");
    Run().ClickAction("VedtHdrPopBef");
    EXPECT_THAT(Headers(), ElementsAre("呼び", "L", "d"));
    EXPECT_EQ(Current().second, 2);
}

} // namespace
} // namespace velmo
