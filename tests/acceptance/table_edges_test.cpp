#include "table_run.h"

#include <QDir>
#include <QFile>

#ifndef Q_OS_WIN
#include <csignal>
#include <sys/resource.h>
#endif

namespace velmo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// What happens seldom: tables without rows or columns, texts that are too long, disks that fail.
class TableEdgesTest : public TableRunTest {
protected:
    void DeleteBy(const QString& key) {
        Run().Press(key);
        Run().ExpectMessage("削除しますよろしいですか");
        Run().AnswerYes();
    }
};

TEST_F(TableEdgesTest, ATableWithoutRowsHasColumnsToChange) {
    OpenTable();
    for (int row = 1; row <= 4; ++row)
        DeleteBy("Ctrl+Delete");
    EXPECT_THAT(TableRows(), IsEmpty());
    for (const char* key :
         {"F2", "Delete", "Ctrl+C", "Ctrl+X", "Ctrl+V", "Ctrl+Shift+D", "Insert", "Alt+Up", "x"})
        Run().Press(key);
    // Nor does the key that edits a cell press the window's button.
    Run().Press("Return");
    EXPECT_TRUE(Run().IsWindowShown("VLM_VEDT"));
    EXPECT_FALSE(IsEditing());
    EXPECT_THAT(TableRows(), IsEmpty());
    ChooseOnColumn(2, "VedtHdrPopRen");
    EXPECT_EQ(Run().Text("CurEdit"), QString("d"));
    Run().Type("D");
    Run().Press("Return");
    ChooseOnColumn(3, "VedtHdrPopAdd");
    Run().Press("Return");
    EXPECT_THAT(Headers(), ElementsAre("呼び", "D", "L", "材質"));
    ChooseOnColumn(1, "VedtHdrPopAft");
    EXPECT_THAT(Headers(), ElementsAre("D", "呼び", "L", "材質"));
    Confirm();
    EXPECT_EQ(TableFile().mid(17), QStringList({"4", "V0003", "10", "0", "材質", "0"}));
}

TEST_F(TableEdgesTest, ATableWithoutColumnsGetsOneAgain) {
    OpenTable();
    for (int column = 1; column <= 3; ++column)
        DeleteBy("Ctrl+Shift+Delete");
    EXPECT_THAT(Headers(), IsEmpty());
    Run().ClickMenu("VedtMnuColAdd");
    Run().WaitFor("the list", [this] { return Run().IsVisible("Vedt_Combo"); });
    Run().Press("Escape");
    EXPECT_THAT(Headers(), IsEmpty());
    Run().ClickMenu("VedtMnuColAdd");
    Run().WaitFor("the list", [this] { return Run().IsVisible("Vedt_Combo"); });
    Run().Press("Return");
    EXPECT_THAT(Headers(), ElementsAre("呼び"));
    EXPECT_EQ(TableRows().size(), 4);
    Click({1, 1});
    ExpectCurrent({1, 1});
}

TEST_F(TableEdgesTest, ANameThatIsTooLongIsRefused) {
    OpenTable();
    ChooseOnColumn(2, "VedtHdrPopRen");
    Run().SetClipboard(QString(256, 'x'));
    Run().Press("Ctrl+V");
    Run().Press("Return");
    ExpectError({"3163"});
    EXPECT_THAT(Headers(), ElementsAre("呼び", "d", "L"));
    EXPECT_THAT(Values(), ElementsAre("d", "L", "材質"));
    EXPECT_FALSE(IsChanged());
}

TEST_F(TableEdgesTest, ANameIsOneLine) {
    OpenTable();
    ClickVariable(1, 1);
    Run().Press("Ctrl+A");
    Run().SetClipboard("a\tb\nc");
    Run().Press("Ctrl+V");
    Run().Press("Return");
    EXPECT_THAT(Headers(), ElementsAre("呼び", "a b c", "L"));
    Confirm();
    EXPECT_EQ(TableFile().at(11), QString("a b c"));
}

TEST_F(TableEdgesTest, OkTakesTheNameThatIsBeingTyped) {
    OpenTable();
    ChooseOnColumn(2, "VedtHdrPopRen");
    Run().Type("D");
    Run().Click("Vedt_OKBtn");
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(TableFile().at(11), QString("D"));
    EXPECT_EQ(session_.ReadExchangeLines("velmo.ret")->at(2), QString("D"));
}

TEST_F(TableEdgesTest, ACharacterOutsideTheCodePageInTheCommentColumnsName) {
    OpenTable();
    ChooseOnColumn(1, "VedtHdrPopRen");
    Run().Type("呼び€");
    Run().Click("Vedt_OKBtn");
    Run().ExpectMessage("1 列の名前 (呼び€) の文字「€」は寸法表のファイルに書けません "
                        "(コードページ 932 にない文字です)。");
    Run().AnswerOk();
    EXPECT_FALSE(session_.ExistsInExchange("velmo.ret"));
    EXPECT_EQ(TableFile(), HexTableLines());
    EXPECT_TRUE(IsChanged());
    EXPECT_EQ(Current().second, 1);
}

TEST_F(TableEdgesTest, TheEditorStaysOverItsCell) {
    OpenTable();
    Click({4, 3});
    Run().Type("8");
    Run().ResizeWindow("VLM_VEDT", {700, 420});
    Run().WaitFor("the new size", [this] { return Run().Picture("VLM_VEDT").width() == 700; });
    ExpectEditing({4, 3}, "8");
    // A press on the header's border is one beside the editor.
    Run().DragColumnBorder("Vedt_FlexGrid", 0, 40);
    ExpectCurrent({4, 3});
    EXPECT_EQ(TableText(4, 3), QString("8"));
}

TEST_F(TableEdgesTest, ControlTabLeavesTheTable) {
    OpenTable();
    Run().Press("Ctrl+Tab");
    EXPECT_EQ(Run().Focus(), QString("Vedt_TreeBtn"));
    Run().Press("Shift+Tab");
    EXPECT_EQ(Run().Focus(), QString("Vedt_FlexGrid"));
    Run().Press("Ctrl+Shift+Tab");
    EXPECT_EQ(Run().Focus(), QString("Vedt_NowFGrid"));
    EXPECT_EQ(Current(), Place(1, 1));
}

TEST_F(TableEdgesTest, WithoutItsWorkDatabaseNothingChanges) {
    OpenTable();
    ASSERT_TRUE(QFile::remove(session_.Exchange() + "/VELMONOW.mdb"));
    ChooseOnColumn(2, "VedtHdrPopAft");
    ExpectError({session_.TempDir() + "VELMONOW.mdb"});
    EXPECT_THAT(Headers(), ElementsAre("呼び", "d", "L"));
    ClickVariable(1, 1);
    Run().Press("Ctrl+A");
    Run().Type("D");
    Run().Press("Return");
    ExpectError({session_.TempDir() + "VELMONOW.mdb"});
    EXPECT_THAT(Headers(), ElementsAre("呼び", "d", "L"));
    EXPECT_THAT(Values(), ElementsAre("d", "L", "材質"));
    EXPECT_FALSE(IsChanged());
    // The cells could be changed without it, but not saved.
    Enter({1, 2}, "11");
    ExpectError({session_.TempDir() + "VELMONOW.mdb"});
    EXPECT_EQ(TableText(1, 2), QString("10"));
    EXPECT_FALSE(IsChanged());
    Run().Click("VEdt_CanBtn");
    EXPECT_EQ(End(), 0);
}

#ifndef Q_OS_WIN
// More than the other files of a run need.
constexpr int mostBytes = 60'000;

void LimitFileSize() {
    signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{mostBytes, mostBytes};
    setrlimit(RLIMIT_FSIZE, &limit);
}

TEST_F(TableEdgesTest, TheDiskIsFull) {
    QStringList lines{"", "1", "1", "ｺﾒﾝﾄ", "3000", "0", "呼び", "30"};
    for (int row = 0; row < 30; ++row)
        lines.append(QString("R%1").arg(row));
    session_.WriteHomeLines(tableFile_, lines);
    session_.WriteExchangeLines("velmo.ret2", {Symbol("HEX.TXT"), "VELMO"});
    StartChanged(LimitFileSize);
    Run().WaitForWindow("VLM_VEDT");
    Enter({1, 1}, "new");
    Run().Click("Vedt_OKBtn");
    ExpectError({"61", session_.HomeDir() + tableFile_});
    EXPECT_TRUE(Run().IsWindowShown("VLM_VEDT"));
    EXPECT_EQ(TableFile(), lines);
    EXPECT_EQ(QDir(session_.Home() + "/SMB/BOLT").entryList({"HEX.*"}, QDir::Files),
              QStringList({"HEX.PMN", "HEX.SLD", "HEX.TXT"}));
    EXPECT_TRUE(IsChanged());
    EXPECT_EQ(session_.Setting("UsrLastPDF"), std::nullopt);
}
#endif

} // namespace
} // namespace velmo
