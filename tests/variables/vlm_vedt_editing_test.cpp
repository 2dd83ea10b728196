#include "startup/settings_keys.h"
#include "window_sample.h"

#include <QHeaderView>
#include <QLabel>

namespace velmo {
namespace {

namespace keys = settings_keys;

// The window in the mode in which the table is edited.
class VedtEditingTest : public WindowTest {
protected:
    VedtEditingTest() { symbol.state.RunMode = run_mode::UserLibrary; }
};

TEST_F(VedtEditingTest, AClickOnTheTableCopiesNothing) {
    WriteRows();
    Open();
    EXPECT_EQ(Table()->model()->rowCount(), 5);
    ClickTable(3);
    EXPECT_EQ(CurrentValues(), (QStringList{"W", "H", "T"}));
    EXPECT_EQ(symbol.state.TableLast, 3);
    EXPECT_EQ(Table()->selectionModel()->selectedIndexes().size(), 1);
}

TEST_F(VedtEditingTest, AClickMakesItsCellCurrent) {
    WriteRows();
    Open();
    ClickTable(3, 2);
    EXPECT_EQ(Table()->Row(), 3);
    EXPECT_EQ(Table()->Col(), 2);
    EXPECT_EQ(symbol.state.TableLast, 3);
    QTest::mouseClick(Table()->verticalHeader()->viewport(), Qt::LeftButton, {},
                      {5, Table()->verticalHeader()->sectionViewportPosition(3) + 10});
    EXPECT_EQ(Table()->Row(), 4);
    EXPECT_EQ(Table()->SelectedRange(), (CellRange{4, 1, 1, 3})) << "the whole row";
    EXPECT_EQ(symbol.state.TableLast, 4);
}

TEST_F(VedtEditingTest, AClickOnANameChangesItEverywhere) {
    WriteRows();
    Open();
    ClickValue(2);
    ASSERT_TRUE(CurEdit()->isVisible());
    CurEdit()->setText(QStringLiteral("高さ"));
    Press(Qt::Key_Return);
    EXPECT_EQ(CurrentValues(), (QStringList{"W", "高さ", "T"}));
    EXPECT_EQ(Table()->Cells().Text(0, 3), QStringLiteral("高さ"));
    EXPECT_FALSE(symbol.folder.Exists("VELMONOW.mdb-journal"));
}

TEST_F(VedtEditingTest, KeysEditANameToo) {
    WriteRows();
    Open();
    Variables()->setFocus();
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_F2, Qt::Key_A}) {
        Press(key);
        EXPECT_TRUE(CurEdit()->isVisible());
        EXPECT_FALSE(CurCmb()->isVisible());
        Press(Qt::Key_Escape);
        EXPECT_FALSE(CurEdit()->isVisible());
    }
    EXPECT_EQ(CurrentValues(), (QStringList{"W", "H", "T"}));
}

TEST_F(VedtEditingTest, TellsHowMuchOfItsColumnATextFills) {
    WriteRows();
    Open();
    const auto* panel = Find<QLabel>("VedtLengthPanel");
    ClickTable(1, 2);
    EXPECT_EQ(panel->text(), QStringLiteral("2 / 5 文字"));
    Type("1");
    Type("23");
    EXPECT_EQ(panel->text(), QStringLiteral("3 / 5 文字")) << "while typing";
    Type("456");
    EXPECT_EQ(panel->text(), QStringLiteral("6 / 5 文字 (長すぎます)"));
    Press(Qt::Key_Escape);
    EXPECT_EQ(panel->text(), QStringLiteral("2 / 5 文字"));
}

TEST_F(VedtEditingTest, TheNamesAreNotReplacedByRememberedValues) {
    WriteRows();
    settings.Save(keys::LastPDF, symbol.state.SymbolFile);
    settings.Save(keys::TBLLast, 4);
    settings.Save("SmbTbl1", "77");
    Open();
    EXPECT_EQ(CurrentValues(), (QStringList{"W", "H", "T"}));
    EXPECT_EQ(symbol.state.TableLast, 4);
    EXPECT_EQ(Table()->Row(), 4);
}

TEST_F(VedtEditingTest, OkAsksForAMissingName) {
    symbol.Define({"V1=PRO(\"A\",1)", "V2=PRO(\"\",2)"});
    Open();
    messages.Expect("値を入力してください。");
    ClickButton("Vedt_OKBtn");
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(Variables()->Row(), 2);
    ASSERT_TRUE(CurEdit()->isVisible());
    EXPECT_EQ(CurEdit()->geometry(), Variables()->CellRect(2, 1));
    EXPECT_FALSE(symbol.folder.Exists("velmo.ret"));
    Type("B");
    // The name is a change of the table, which has an empty row yet.
    messages.Expect("値を入力してください。");
    ClickButton("Vedt_OKBtn");
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(Table()->Row(), 1);
    EXPECT_EQ(Table()->Col(), 1);
    EXPECT_EQ(CurEdit()->parent(), Table()->viewport());
    EXPECT_EQ(Setting("VlmTbl2"), QStringLiteral("none"));
    EXPECT_EQ(Setting("SmbTbl2"), QStringLiteral("B"));
    EXPECT_EQ(symbol.folder.Read("velmo.ret"), "2\r\nV1\r\nA\r\nV2\r\nB\r\n");
}

} // namespace
} // namespace velmo
