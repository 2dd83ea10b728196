#include "table_run.h"

namespace velmo {
namespace {

using testing::ElementsAre;

// The commands of the menus, by mouse and by their keys.
class TableMenuTest : public TableRunTest {
protected:
    void SetUp() override {
        TableRunTest::SetUp();
        OpenTable();
    }
    QStringList FirstColumn() { return Run().Column("Vedt_FlexGrid", 0); }
    void AnswerDelete() {
        Run().ExpectMessage("削除しますよろしいですか");
        Run().AnswerYes();
    }
    QString MenuText(const QString& entry) { return Run().Action(entry)["text"].toString(); }
    bool IsPossible(const QString& entry) { return Run().Action(entry)["enabled"].toBool(); }
};

TEST_F(TableMenuTest, EveryCommandHasItsKey) {
    const QList<std::pair<QString, QString>> keys = {
        {"VedtMnuEditUndo", "Ctrl+Z"},       {"VedtMnuEditRedo", "Ctrl+Y"},
        {"VedtMnuEditCut", "Ctrl+X"},        {"VedtMnuEditCopy", "Ctrl+C"},
        {"VedtMnuEditPaste", "Ctrl+V"},      {"VedtMnuEditFind", "Ctrl+F"},
        {"VedtMnuEditFindNext", "F3"},       {"VedtMnuEditFindPrevious", "Shift+F3"},
        {"VedtMnuRowAdd", "Alt+Ins"},        {"VedtMnuRowIns", "Ins"},
        {"VedtMnuRowCpy", "Ctrl+Shift+D"},   {"VedtMnuRowDel", "Ctrl+Del"},
        {"VedtMnuRowAft", "Alt+Down"},       {"VedtMnuRowBef", "Alt+Up"},
        {"VedtMnuColAdd", "Ctrl+Alt+Ins"},   {"VedtMnuColIns", "Ctrl+Shift+Ins"},
        {"VedtMnuColDel", "Ctrl+Shift+Del"}, {"VedtMnuColAft", "Alt+Right"},
        {"VedtMnuColBef", "Alt+Left"},       {"VedtMnuColRen", "Shift+F2"},
    };
    for (const auto& [entry, key] : keys)
        EXPECT_EQ(Run().Action(entry)["shortcuts"][0].toString(), key) << entry.toStdString();
}

TEST_F(TableMenuTest, MnemonicsWithinAMenuDiffer) {
    const QList<QStringList> menus = {{"VedtMnuEdit", "VedtMnuRow", "VedtMnuCol"},
                                      {"VedtMnuEditUndo", "VedtMnuEditRedo", "VedtMnuEditCut",
                                       "VedtMnuEditCopy", "VedtMnuEditPaste", "VedtMnuEditClear",
                                       "VedtMnuEditFind", "VedtMnuEditFindNext", "VedtMnuEditFindPrevious"},
                                      {"VedtMnuRowAdd", "VedtMnuRowIns", "VedtMnuRowCpy", "VedtMnuRowDel",
                                       "VedtMnuRowAft", "VedtMnuRowBef"},
                                      {"VedtMnuColAdd", "VedtMnuColIns", "VedtMnuColDel", "VedtMnuColAft",
                                       "VedtMnuColBef", "VedtMnuColRen"}};
    for (const QStringList& menu : menus) {
        QStringList letters;
        for (const QString& entry : menu) {
            const QString text = MenuText(entry);
            const qsizetype mark = text.indexOf('&');
            EXPECT_GE(mark, 0) << text.toStdString();
            letters.append(text.mid(mark + 1, 1));
        }
        EXPECT_EQ(letters.removeDuplicates(), 0) << menu.first().toStdString();
    }
}

TEST_F(TableMenuTest, RowCommandsWorkOnTheCurrentRow) {
    Click({2, 2});
    EXPECT_FALSE(IsPossible("VedtMnuRowAdd"));
    Run().Press("Insert");
    ExpectEditing({2, 1}, "");
    Run().Type("M11");
    Run().Press("Up");
    EXPECT_THAT(FirstColumn(), ElementsAre("M10", "M11", "M10", "M12", "M12"));
    Click({2, 3});
    Run().Press("Ctrl+Shift+D");
    ExpectCurrent({3, 1});
    EXPECT_THAT(FirstColumn(), ElementsAre("M10", "M11", "M11", "M10", "M12", "M12"));
    Run().Press("Alt+Down");
    ExpectCurrent({4, 1});
    EXPECT_THAT(FirstColumn(), ElementsAre("M10", "M11", "M10", "M11", "M12", "M12"));
    Run().Press("Alt+Up");
    ExpectCurrent({3, 1});
    Run().Press("Ctrl+Delete");
    AnswerDelete();
    ExpectCurrent({3, 1});
    EXPECT_THAT(FirstColumn(), ElementsAre("M10", "M11", "M10", "M12", "M12"));
    Run().Press("Ctrl+End");
    EXPECT_TRUE(IsPossible("VedtMnuRowAdd"));
    Run().Press("Alt+Insert");
    ExpectEditing({6, 1}, "");
    Run().Press("Escape");
    EXPECT_EQ(TableRows().size(), 6);
}

TEST_F(TableMenuTest, ColumnCommandsWorkOnTheCurrentColumn) {
    Click({3, 2});
    EXPECT_FALSE(IsPossible("VedtMnuColAdd"));
    Run().Press("Alt+Right");
    EXPECT_THAT(Headers(), ElementsAre("呼び", "L", "d"));
    ExpectCurrent({3, 3});
    Run().Press("Alt+Left");
    EXPECT_THAT(Headers(), ElementsAre("呼び", "d", "L"));
    ExpectCurrent({3, 2});
    Run().Press("Shift+F2");
    ExpectEditing({0, 2}, "d");
    Run().Type("D");
    Run().Press("Return");
    EXPECT_THAT(Headers(), ElementsAre("呼び", "D", "L"));
    Run().Press("Ctrl+Shift+Insert");
    Run().WaitFor("the list", [this] { return Run().IsVisible("Vedt_Combo"); });
    Run().Press("Return");
    EXPECT_THAT(Headers(), ElementsAre("呼び", "材質", "D", "L"));
    EXPECT_EQ(Current().second, 2);
    Run().Press("Ctrl+Shift+Delete");
    AnswerDelete();
    EXPECT_THAT(Headers(), ElementsAre("呼び", "D", "L"));
    Click({1, 3});
    EXPECT_TRUE(IsPossible("VedtMnuColAdd"));
    Run().Press("Ctrl+Alt+Insert");
    Run().WaitFor("the list", [this] { return Run().IsVisible("Vedt_Combo"); });
    Run().Press("Return");
    EXPECT_THAT(Headers(), ElementsAre("呼び", "D", "L", "材質"));
}

TEST_F(TableMenuTest, TheMenusEntriesDoTheSame) {
    Click({4, 3});
    Run().ClickMenu("VedtMnuRowAdd");
    ExpectEditing({5, 1}, "");
    Run().Press("Escape");
    Run().ClickMenu("VedtMnuRowDel");
    AnswerDelete();
    EXPECT_EQ(TableRows().size(), 4);
    Click({1, 1});
    Run().ClickMenu("VedtMnuRowAft");
    ExpectCurrent({2, 1});
    Run().ClickMenu("VedtMnuRowCpy");
    ExpectCurrent({3, 1});
    Run().ClickMenu("VedtMnuColAft");
    EXPECT_THAT(Headers(), ElementsAre("d", "呼び", "L"));
    Run().ClickMenu("VedtMnuColRen");
    ExpectEditing({0, 2}, "呼び");
    Run().Press("Escape");
    Run().ClickMenu("VedtMnuColIns");
    Run().WaitFor("the list", [this] { return Run().IsVisible("Vedt_Combo"); });
    Run().Press("Escape");
    EXPECT_THAT(Headers(), ElementsAre("d", "呼び", "L"));
    EXPECT_THAT(TableRows(), ElementsAre(ElementsAre("10", "M10", "60"), ElementsAre("10", "M10", "50"),
                                         ElementsAre("10", "M10", "50"), ElementsAre("12", "M12", "50"),
                                         ElementsAre("12", "M12", "80")));
}

TEST_F(TableMenuTest, EveryStepIsUndoneAndDoneAgain) {
    QList<QList<QStringList>> tables;
    QList<QStringList> headers;
    QList<QStringList> columns;
    QStringList names;
    const auto note = [&](const QString& name) {
        names.append(name);
        tables.append(TableRows());
        headers.append(Headers());
        columns.append(ColumnsOfVariables());
    };
    note({});
    Enter({1, 2}, "11");
    note("セルの入力");
    ChooseOnRow(4, "VedtHdrPopAdd");
    Run().Press("Escape");
    note("行の追加");
    ChooseOnRow(2, "VedtHdrPopIns");
    Run().Press("Escape");
    note("行の挿入");
    ChooseOnRow(1, "VedtHdrPopCpy");
    note("行の複写");
    ChooseOnRow(4, "VedtHdrPopAft");
    note("行の移動");
    ChooseOnRow(1, "VedtHdrPopDel");
    AnswerDelete();
    note("行の削除");
    ChooseOnColumn(1, "VedtHdrPopAft");
    note("列の移動");
    ChooseOnColumn(1, "VedtHdrPopRen");
    Run().Type("D");
    Run().Press("Return");
    note("名前の変更");
    ChooseOnColumn(2, "VedtHdrPopDel");
    AnswerDelete();
    note("列の削除");
    ChooseOnColumn(1, "VedtHdrPopIns");
    Run().Press("Down");
    Run().Press("Return");
    note("列の追加");
    SelectBlock({1, 1}, {2, 2});
    Run().Press("Delete");
    note("クリア");
    const qsizetype last = names.size() - 1;
    for (qsizetype step = last; step > 0; --step) {
        EXPECT_EQ(MenuText("VedtMnuEditUndo"), "元に戻す(&U) " + names[step]);
        Run().Press("Ctrl+Z");
        EXPECT_EQ(TableRows(), tables[step - 1]) << names[step].toStdString();
        EXPECT_EQ(Headers(), headers[step - 1]) << names[step].toStdString();
        EXPECT_EQ(ColumnsOfVariables(), columns[step - 1]) << names[step].toStdString();
    }
    EXPECT_FALSE(IsPossible("VedtMnuEditUndo"));
    EXPECT_EQ(MenuText("VedtMnuEditUndo"), QString("元に戻す(&U)"));
    EXPECT_FALSE(IsChanged());
    for (qsizetype step = 1; step <= last; ++step) {
        EXPECT_EQ(MenuText("VedtMnuEditRedo"), "やり直し(&R) " + names[step]);
        Run().Press(step % 2 == 0 ? "Ctrl+Y" : "Ctrl+Shift+Z");
        EXPECT_EQ(TableRows(), tables[step]) << names[step].toStdString();
        EXPECT_EQ(Headers(), headers[step]) << names[step].toStdString();
        EXPECT_EQ(ColumnsOfVariables(), columns[step]) << names[step].toStdString();
    }
    EXPECT_FALSE(IsPossible("VedtMnuEditRedo"));
    EXPECT_TRUE(IsChanged());
}

TEST_F(TableMenuTest, UndoGoesToWhereTheChangeWas) {
    Enter({4, 2}, "13");
    Click({1, 1});
    Run().Press("Ctrl+Z");
    ExpectCurrent({4, 2});
    Click({1, 1});
    Run().Press("Ctrl+Y");
    ExpectCurrent({4, 2});
}

TEST_F(TableMenuTest, UndoEntersWhatIsBeingTypedFirst) {
    Enter({1, 2}, "11");
    Click({2, 2});
    Run().Type("12");
    Run().ClickMenu("VedtMnuEditUndo");
    EXPECT_EQ(TableText(1, 2), QString("11"));
    EXPECT_EQ(TableText(2, 2), QString("10"));
    EXPECT_EQ(MenuText("VedtMnuEditRedo"), QString("やり直し(&R) セルの入力"));
}

TEST_F(TableMenuTest, ANewStepForgetsWhatWasUndone) {
    Enter({1, 2}, "11");
    Run().Press("Ctrl+Z");
    Enter({1, 2}, "14");
    EXPECT_FALSE(IsPossible("VedtMnuEditRedo"));
    EXPECT_EQ(TableText(1, 2), QString("14"));
}

TEST_F(TableMenuTest, TheMenusOpenByTheirLetters) {
    Click({2, 1});
    Run().Press("Alt+W");
    Run().WaitFor("the menu", [this] { return Run().Action("VedtMnuRowCpy")["shown"].toBool(); });
    Run().Press("C");
    Run().WaitFor("the copy", [this] { return TableRows().size() == 5; });
    ExpectCurrent({3, 1});
}

} // namespace
} // namespace velmo
