#include "table_run.h"

#include <QDir>
#include <QFile>

namespace velmo {
namespace {

using testing::ElementsAre;
using testing::UnorderedElementsAre;

// Saves that do not happen: the window stays with all changes, the file as it was.
class TableRefusalTest : public TableRunTest {
protected:
    void SetUp() override {
        TableRunTest::SetUp();
        OpenTable();
        before_ = session_.ReadHome(tableFile_);
        settings_ = session_.SettingsFile();
        choice_ = session_.ReadExchange("velmo.ret2");
    }
    void ClickOk() { Run().Click("Vedt_OKBtn"); }
    void ExpectAnswered() {
        EXPECT_EQ(session_.ReadExchangeLines("velmo.ret2"), QStringList({Symbol("HEX.TXT"), "VELMO"}));
        EXPECT_TRUE(session_.ExistsInExchange("velmo.ret"));
    }
    void ExpectNothingWritten() {
        EXPECT_FALSE(session_.ExistsInExchange("velmo.ret"));
        EXPECT_EQ(session_.ReadExchange("velmo.ret2"), choice_);
        EXPECT_EQ(session_.SettingsFile(), settings_);
    }
    // Nothing of the save is left, and the table can be edited on.
    void ExpectUnsaved() {
        EXPECT_TRUE(Run().IsWindowShown("VLM_VEDT"));
        EXPECT_EQ(session_.ReadHome(tableFile_), before_);
        EXPECT_TRUE(IsChanged());
        EXPECT_EQ(session_.Setting("UsrLastPDF"), std::nullopt);
        EXPECT_TRUE(session_.ExistsInExchange("VELMONOW.mdb"));
    }

    QByteArray before_;
    QByteArray settings_;
    QByteArray choice_;
};

TEST_F(TableRefusalTest, AnEmptyCellIsAskedFor) {
    SelectBlock({3, 2}, {4, 3});
    Run().Press("Delete");
    Click({1, 1});
    ClickOk();
    const Message message = Run().ExpectMessage("値を入力してください。");
    EXPECT_EQ(message.title, QString("VELMO2"));
    EXPECT_THAT(message.buttons, ElementsAre("Ok"));
    Run().AnswerOk();
    ExpectEditing({3, 2}, "");
    ExpectAnswered();
    ExpectUnsaved();
    EXPECT_FALSE(session_.ExistsInHome("SMB\\BOLT\\HEX.TMP"));
    Run().Type("1");
    Run().Press("Tab");
    Run().Type("2");
    ClickOk();
    Run().ExpectMessage("値を入力してください。");
    Run().AnswerOk();
    ExpectEditing({4, 2}, "");
    EXPECT_EQ(TableText(3, 3), QString("2"));
    Run().Type("3");
    Run().Press("Return");
    Run().Type("4");
    Run().Press("Ctrl+Return");
    EXPECT_EQ(End(), 0);
    EXPECT_THAT(TableFile().mid(20), ElementsAre("   M12    1    2", "   M12    3    4"));
    EXPECT_EQ(session_.Setting("UsrLastPDF"), Symbol("HEX.TXT"));
}

TEST_F(TableRefusalTest, TheVeryLastCellIsLookedAtToo) {
    Click({4, 3});
    Run().Press("Delete");
    Click({1, 1});
    ClickOk();
    Run().ExpectMessage("値を入力してください。");
    Run().AnswerOk();
    ExpectEditing({4, 3}, "");
    ExpectUnsaved();
}

TEST_F(TableRefusalTest, AnEmptyCellOfAnUnchangedTableIsNot) {
    WriteColumn({"A", "", "C"});
    OpenTable();
    before_ = session_.ReadHome(tableFile_);
    Confirm();
    EXPECT_EQ(session_.ReadHome(tableFile_), before_);
}

TEST_F(TableRefusalTest, AValueWiderThanItsColumnIsShown) {
    Enter({2, 3}, "123456");
    Click({1, 1});
    ClickOk();
    Run().ExpectMessage("2 行 3 列 (L) の値は 6 文字あり、列の幅 5 文字に入りません。");
    Run().AnswerOk();
    EXPECT_EQ(Current(), Place(2, 3));
    ExpectUnsaved();
    EXPECT_FALSE(session_.ExistsInHome("SMB\\BOLT\\HEX.TMP"));
    Enter({2, 3}, "12345");
    Confirm();
    EXPECT_EQ(TableFile().at(19), QString("   M10   1012345"));
}

TEST_F(TableRefusalTest, AValueThatCouldNotBeReadAgainIsShown) {
    QStringList lines = HexTableLines();
    lines[14] = "300";
    session_.WriteHomeLines(tableFile_, lines.first(17) << "1"
                                                        << "   M10   10" + QString("50").rightJustified(300));
    before_ = session_.ReadHome(tableFile_);
    OpenTable();
    Click({1, 3});
    Run().SetClipboard(QString(256, 'x'));
    Run().Press("Ctrl+V");
    ClickOk();
    Run().ExpectMessage("1 行 3 列 (L) の値は 256 文字あり、次からは読めません (255 文字まで)。");
    Run().AnswerOk();
    EXPECT_EQ(Current(), Place(1, 3));
    ExpectUnsaved();
    Click({1, 3});
    Run().SetClipboard(QString(255, 'x'));
    Run().Press("Ctrl+V");
    Confirm();
    OpenTable();
    EXPECT_EQ(TableText(1, 3), QString(255, 'x'));
}

// The file has four digits for it.
TEST_F(TableRefusalTest, ANumberOfAVariableIsNotCutUnasked) {
    session_.WriteHomeLines("SMB\\BOLT\\HEX.TXT",
                            {"$VAR", R"(V10001=PRO("d",10))", R"(V9999=PRO("L",50))", "$GEO"});
    QStringList lines = HexTableLines();
    lines[8] = "V10001";
    lines[13] = "V9999";
    session_.WriteHomeLines(tableFile_, lines);
    before_ = session_.ReadHome(tableFile_);
    OpenTable();
    Enter({1, 2}, "11");
    const QString question = "変数番号は下 4 桁だけが保存され、次からはほかの変数の列になります: 2 列目 (d) "
                             "V10001\n\nこのまま保存してよろしいですか";
    ClickOk();
    EXPECT_THAT(Run().ExpectMessage(question).buttons, UnorderedElementsAre("Yes", "No"));
    Run().AnswerNo();
    ExpectUnsaved();
    ClickOk();
    Run().ExpectMessage(question);
    Run().AnswerYes();
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(TableFile().at(8), QString("V0001"));
}

TEST_F(TableRefusalTest, WidthsCountCharacters) {
    Enter({1, 2}, "全角五文字");
    Confirm();
    EXPECT_EQ(TableFile().at(18), QString("   M10全角五文字   50"));
}

TEST_F(TableRefusalTest, ACharacterOutsideTheCodePageStopsBeforeAnythingIsWritten) {
    Enter({2, 1}, "M10€");
    Click({1, 1});
    ClickOk();
    Run().ExpectMessage("2 行 1 列 (呼び) の文字「€」は寸法表のファイルに書けません "
                        "(コードページ 932 にない文字です)。");
    Run().AnswerOk();
    EXPECT_EQ(Current(), Place(2, 1));
    ExpectUnsaved();
    ExpectNothingWritten();
    Enter({2, 1}, "M10");
    Confirm();
    EXPECT_EQ(session_.ReadHome(tableFile_), before_);
}

TEST_F(TableRefusalTest, ACharacterOutsideTheCodePageInAName) {
    ClickVariable(2, 1);
    Run().Press("Ctrl+A");
    Run().Type("長さ€");
    ClickOk();
    Run().ExpectMessage("文字「€」は CAD に渡せません (コードページ 932 にない文字です)。\n\n項目: V2");
    Run().AnswerOk();
    ExpectUnsaved();
    ExpectNothingWritten();
    // The editor is open on the name, and typing replaces it.
    EXPECT_EQ(Run().Focus(), QString("CurEdit"));
    Run().Press("Ctrl+A");
    Run().Type("長さ");
    ClickOk();
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(TableFile().at(16), QString("長さ"));
}

TEST_F(TableRefusalTest, AnEmptyNameIsAskedFor) {
    ChooseOnColumn(2, "VedtHdrPopRen");
    Run().Press("Delete");
    Run().Press("Return");
    EXPECT_THAT(Headers(), ElementsAre("呼び", "", "L"));
    ClickOk();
    Run().ExpectMessage("値を入力してください。");
    Run().AnswerOk();
    ExpectUnsaved();
    ExpectNothingWritten();
    ASSERT_TRUE(IsEditing());
    EXPECT_EQ(Run().Focus(), QString("CurEdit"));
    EXPECT_EQ(Run().View("Vedt_NowFGrid")["current"], QJsonArray({0, 1}));
    Run().Type("軸径");
    Run().Press("Return");
    EXPECT_THAT(Headers(), ElementsAre("呼び", "軸径", "L"));
    Confirm();
    EXPECT_EQ(TableFile().at(11), QString("軸径"));
    EXPECT_EQ(session_.ReadExchangeLines("velmo.ret")->at(2), QString("軸径"));
}

TEST_F(TableRefusalTest, AFileChangedMeanwhileIsNotReplacedUnasked) {
    Enter({1, 2}, "11");
    QStringList lines = HexTableLines();
    lines[21] = "   M12   12   99";
    session_.WriteHomeLines(tableFile_, lines);
    before_ = session_.ReadHome(tableFile_);
    const QString question =
        session_.HomeDir() +
        "SMB\\BOLT\\HEX.PMN は、開いた後にほかで変更されています。\n\n置き換えてよろしいですか";
    ClickOk();
    const Message message = Run().ExpectMessage(question);
    EXPECT_EQ(message.title, QString("VELMO2"));
    EXPECT_THAT(message.buttons, UnorderedElementsAre("Yes", "No"));
    Run().AnswerNo();
    ExpectUnsaved();
    EXPECT_EQ(TableText(1, 2), QString("11"));
    ClickOk();
    Run().ExpectMessage(question);
    Run().AnswerYes();
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(TableFile().at(18), QString("   M10   11   50"));
    EXPECT_EQ(TableFile().at(21), QString("   M12   12   80"));
}

TEST_F(TableRefusalTest, ARunThatWasKilledWhileItAskedKeepsNobodyFromSaving) {
    Enter({1, 2}, "11");
    QStringList lines = HexTableLines();
    lines[21] = "   M12   12   99";
    session_.WriteHomeLines(tableFile_, lines);
    ClickOk();
    Run().WaitForMessage();
    EXPECT_TRUE(session_.ExistsInHome("SMB\\BOLT\\HEX.TMP"));
    // The run before is killed by this.
    OpenTable();
    EXPECT_EQ(TableFile(), lines);
    EXPECT_EQ(TableText(4, 3), QString("99"));
    Enter({1, 2}, "12");
    Confirm();
    EXPECT_EQ(TableFile().at(18), QString("   M10   12   50"));
    EXPECT_FALSE(session_.ExistsInHome("SMB\\BOLT\\HEX.TMP"));
}

TEST_F(TableRefusalTest, AFileThatWentIsWrittenAnew) {
    Enter({1, 2}, "11");
    ASSERT_TRUE(QFile::remove(session_.Home() + "/SMB/BOLT/HEX.PMN"));
    Confirm();
    EXPECT_EQ(TableFile().at(18), QString("   M10   11   50"));
}

TEST_F(TableRefusalTest, AWorkFileThatCannotBeMadeStopsTheSave) {
    Enter({1, 2}, "11");
    const QString work = session_.Home() + "/SMB/BOLT/HEX.TMP";
    ASSERT_TRUE(QDir().mkpath(work));
    ClickOk();
    const Message message = Run().ExpectMessage("作業ファイルが作成できません");
    EXPECT_EQ(message.title, QString("VELMO2"));
    EXPECT_THAT(message.buttons, ElementsAre("Ok"));
    Run().AnswerOk();
    ExpectAnswered();
    ExpectUnsaved();
    ASSERT_TRUE(QDir().rmdir(work));
    Confirm();
    EXPECT_EQ(TableFile().at(18), QString("   M10   11   50"));
}

TEST_F(TableRefusalTest, AnOldWorkFileIsInNobodysWay) {
    session_.WriteHome("SMB\\BOLT\\HEX.TMP", "left by a run that was killed");
    Enter({1, 2}, "11");
    Confirm();
    EXPECT_EQ(TableFile().at(18), QString("   M10   11   50"));
    EXPECT_FALSE(session_.ExistsInHome("SMB\\BOLT\\HEX.TMP"));
}

TEST_F(TableRefusalTest, ACutOffFileIsNotReplacedUnasked) {
    session_.WriteHomeLines(tableFile_, HexTableLines().first(20));
    before_ = session_.ReadHome(tableFile_);
    OpenTable();
    EXPECT_EQ(TableRows().size(), 2);
    Enter({1, 2}, "11");
    const QString question = session_.HomeDir() + "SMB\\BOLT\\HEX.PMN には、読めなかった部分があります。\n\n"
                                                  "表示されている内容で置き換えてよろしいですか";
    ClickOk();
    EXPECT_THAT(Run().ExpectMessage(question).buttons, UnorderedElementsAre("Yes", "No"));
    Run().AnswerNo();
    ExpectUnsaved();
    ClickOk();
    Run().ExpectMessage(question);
    Run().AnswerYes();
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(TableFile().mid(17), QStringList({"2", "   M10   11   50", "   M10   10   60"}));
}

TEST_F(TableRefusalTest, ATableFileThatCannotBeReadIsNotReplacedUnasked) {
    session_.WriteHome(tableFile_, "\r\nthree\r\n");
    before_ = session_.ReadHome(tableFile_);
    OpenTable();
    EXPECT_THAT(Headers(), ElementsAre("呼び", "d", "L", "材質"));
    Run().SetClipboard("A\tB\tC\tD");
    Run().Press("Ctrl+V");
    ClickOk();
    EXPECT_TRUE(Run().WaitForMessage().text.contains("読めなかった部分があります"));
    Run().AnswerNo();
    ExpectUnsaved();
}

TEST_F(TableRefusalTest, BytesThatAreNoTextAreNotLost) {
    QByteArray bytes = session_.ReadHome(tableFile_);
    bytes.replace("   M12   12   80", "   M\xff\xff   12   80");
    session_.WriteHome(tableFile_, bytes);
    OpenTable();
    before_ = bytes;
    Enter({1, 2}, "11");
    ClickOk();
    const QString text = Run().WaitForMessage().text;
    EXPECT_TRUE(text.startsWith("4 行 1 列 (呼び) に、ファイルから読めなかった文字があります"))
        << text.toStdString();
    Run().AnswerOk();
    ExpectUnsaved();
    EXPECT_EQ(Current(), Place(4, 1));
    // The user's own text takes their place.
    Enter({4, 1}, "M12");
    Confirm();
    EXPECT_EQ(TableFile().at(21), QString("   M12   12   80"));
}

TEST_F(TableRefusalTest, AColumnWithoutAVariableIsNotDroppedUnasked) {
    QStringList lines = HexTableLines();
    lines[8] = "V0009";
    session_.WriteHomeLines(tableFile_, lines);
    before_ = session_.ReadHome(tableFile_);
    OpenTable();
    Enter({1, 3}, "51");
    ClickOk();
    Run().ExpectMessage("変数のない列は保存されず、その後の表も次からは読めなくなります: 2 列目 "
                        "(d)\n\nこのまま保存してよろしいですか");
    Run().AnswerNo();
    ExpectUnsaved();
}

} // namespace
} // namespace velmo
