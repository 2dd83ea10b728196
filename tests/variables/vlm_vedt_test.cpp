#include "platform/window_places.h"
#include "startup/settings_keys.h"
#include "support/failing_disk.h"
#include "variables/vlm_vedt.h"
#include "window_sample.h"

#include <QDir>
#include <QHeaderView>
#include <QSignalSpy>
#include <QTimer>

namespace velmo {
namespace {

namespace keys = settings_keys;

class VlmVedtTest : public WindowTest {
protected:
    void Remember(int tableRow) {
        settings.Save(keys::LastPDF, symbol.state.SymbolFile);
        settings.Save(keys::TBLLast, tableRow);
        settings.Save("SmbTbl1", "77");
        settings.Flush();
    }
    QString Header(Grid* grid, int section) const {
        return grid->model()->headerData(section, Qt::Horizontal).toString();
    }
    RuntimeError LoadError() {
        window = std::make_unique<VLM_VEDT>(symbol.state, settings, messages);
        return ErrorOf([this] { window->Load(); });
    }
};

TEST_F(VlmVedtTest, CaptionAndHeadersTellTheMode) {
    WriteRows();
    Open();
    EXPECT_EQ(window->windowTitle(), QStringLiteral("Velmo 変数入力"));
    EXPECT_EQ(Header(Variables(), 0), QStringLiteral("変数名(別名)"));
    EXPECT_EQ(Header(Variables(), 1), QStringLiteral("現 在 の 値 "));
    symbol.state.RunMode = run_mode::UserLibrary;
    Open();
    EXPECT_EQ(window->windowTitle(), QStringLiteral("Velmo テーブル編集"));
    EXPECT_EQ(Header(Variables(), 0), QStringLiteral("変 数 名"));
    EXPECT_EQ(Header(Variables(), 1), QStringLiteral("名  前"));
}

TEST_F(VlmVedtTest, TheVariableGridHasItsPlaceInEveryMode) {
    WriteRows();
    for (const std::int16_t mode :
         {run_mode::VariableInput, run_mode::UserLibrary, run_mode::ReturnFromMeasure}) {
        symbol.state.RunMode = mode;
        Open();
        const QRect place(TwipsToPixels(120), TwipsToPixels(600), TwipsToPixels(3860), TwipsToPixels(2775));
        EXPECT_EQ(Variables()->geometry(), place);
        EXPECT_EQ(Variables()->mapTo(window.get(), QPoint()), place.topLeft());
        EXPECT_EQ(Variables()->columnWidth(0), TwipsToPixels(1750));
        EXPECT_EQ(Variables()->columnWidth(1), TwipsToPixels(1750));
    }
}

TEST_F(VlmVedtTest, GridsShowCellsUnderTheirHeaders) {
    WriteRows();
    Open();
    EXPECT_EQ(Variables()->model()->index(0, 0).data().toString(), QStringLiteral("V12(W)"));
    EXPECT_EQ(Variables()->model()->index(2, 1).data().toString(), QStringLiteral("3"));
    EXPECT_EQ(Header(Table(), 0), QStringLiteral("呼び"));
    EXPECT_EQ(Table()->model()->index(1, 1).data().toString(), QStringLiteral("12"));
    EXPECT_EQ(Table()->model()->headerData(1, Qt::Vertical).toString(), QStringLiteral("2"));
    EXPECT_EQ(Table()->model()->rowCount(), 3) << "one row per nominal";
    EXPECT_FALSE(Variables()->verticalHeader()->isVisible());
    EXPECT_TRUE(Table()->verticalHeader()->isVisible());
}

TEST_F(VlmVedtTest, MessagesStandAloneInTheirGrids) {
    symbol.Define({});
    Open();
    for (Grid* grid : {Table(), Variables()}) {
        EXPECT_EQ(grid->model()->rowCount(), 1);
        EXPECT_EQ(grid->model()->columnCount(), 1);
        EXPECT_EQ(grid->columnWidth(0), TwipsToPixels(3600));
        EXPECT_FALSE(grid->horizontalHeader()->isVisible());
        EXPECT_FALSE(grid->verticalHeader()->isVisible());
    }
    EXPECT_EQ(Variables()->model()->index(0, 0).data().toString(), QStringLiteral("変数がありません"));
    EXPECT_EQ(Table()->model()->index(0, 0).data().toString(), QStringLiteral("テーブルはありません"));
}

TEST_F(VlmVedtTest, TheTableHasTheFocusUnlessThereIsNone) {
    WriteRows();
    Open();
    EXPECT_TRUE(Table()->hasFocus());
    symbol.folder.WriteLines("S1.PMN", {});
    Open();
    EXPECT_TRUE(Variables()->hasFocus());
}

TEST_F(VlmVedtTest, AClickOnATableRowCopiesItsValues) {
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

TEST_F(VlmVedtTest, AClickOnTheHeaderChoosesNothing) {
    WriteRows();
    Open();
    QTest::mouseClick(Table()->horizontalHeader()->viewport(), Qt::LeftButton, {}, {5, 5});
    EXPECT_EQ(symbol.state.TableLast, 1);
    EXPECT_EQ(CurrentValues()[0], QStringLiteral("100"));
}

TEST_F(VlmVedtTest, KeysMoveInTheTableAndEnterOrSpaceChooses) {
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

TEST_F(VlmVedtTest, WithoutVariablesATableRowIsNotChosen) {
    symbol.Define({});
    WriteRows();
    Open();
    ClickTable(2);
    EXPECT_EQ(symbol.state.TableLast, 1);
}

TEST_F(VlmVedtTest, WithoutATableAClickDoesNothing) {
    Open();
    QTest::mouseClick(Table()->viewport(), Qt::LeftButton, {},
                      Table()->visualRect(Table()->model()->index(0, 0)).center());
    EXPECT_EQ(symbol.state.TableLast, 1);
    EXPECT_EQ(CurrentValues(), (QStringList{"100", "20", "3"}));
}

TEST_F(VlmVedtTest, WhenTheTableIsEditedAClickCopiesNothing) {
    symbol.state.RunMode = run_mode::UserLibrary;
    WriteRows();
    Open();
    EXPECT_EQ(Table()->model()->rowCount(), 5);
    ClickTable(3);
    EXPECT_EQ(CurrentValues(), (QStringList{"W", "H", "T"}));
    EXPECT_EQ(symbol.state.TableLast, 3);
    EXPECT_EQ(Table()->selectionModel()->selectedIndexes().size(), 1);
    ClickValue(1);
    EXPECT_FALSE(CurEdit()->isVisible());
}

TEST_F(VlmVedtTest, AQuoteInAColumnNameIsShownAsAnError) {
    symbol.WriteTable({{"V12", 3, "5'"}}, {"1"});
    Open();
    messages.ExpectContaining("実行時エラー '3075'");
    ClickTable(1);
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(Table()->updatesEnabled());
}

// --- opening

TEST_F(VlmVedtTest, AnotherSymbolOpensWithRowOneAndItsOwnValues) {
    WriteRows();
    Remember(2);
    settings.Save(keys::LastPDF, "other");
    Open();
    EXPECT_EQ(symbol.state.TableLast, 1);
    EXPECT_EQ(Table()->Row(), 1);
    EXPECT_EQ(CurrentValues(), (QStringList{"100", "20", "3"}));
}

TEST_F(VlmVedtTest, TheSameSymbolOpensAsItWasLeft) {
    WriteRows();
    Remember(2);
    Open();
    EXPECT_EQ(symbol.state.TableLast, 2);
    EXPECT_EQ(Table()->Row(), 2);
    EXPECT_EQ(Table()->Col(), 1);
    EXPECT_EQ(Table()->selectionModel()->selectedIndexes().size(), 3);
    EXPECT_EQ(CurrentValues(), (QStringList{"77", "20", "3"})) << "the row is not copied again";
}

TEST_F(VlmVedtTest, ARememberedRowThatIsNotThereFallsBackToRowOne) {
    WriteRows();
    for (const int row : {4, 100, 0, -1}) {
        Remember(row);
        Open();
        EXPECT_EQ(symbol.state.TableLast, 1);
        EXPECT_EQ(Table()->Row(), 1);
    }
    symbol.folder.WriteLines("S1.PMN", {});
    Remember(2);
    Open();
    EXPECT_EQ(symbol.state.TableLast, 1);
}

TEST_F(VlmVedtTest, AReturnFromMeasuringIsAnsweredOnce) {
    WriteRows();
    Remember(2);
    settings.Save(keys::VlmMode, 4);
    settings.Save(keys::DistNo, 3);
    settings.Save(keys::VlmDist, "12.5");
    symbol.state.RunMode = run_mode::ReturnFromMeasure;
    Open();
    EXPECT_EQ(CurrentValues(), (QStringList{"77", "20", "12.5"}));
    EXPECT_EQ(Variables()->Row(), 3);
    EXPECT_EQ(symbol.state.RunMode, run_mode::VariableInput);
    EXPECT_EQ(Setting(keys::VlmMode), QStringLiteral("2"));
    EXPECT_EQ(Table()->selectionModel()->selectedIndexes().size(), 3);
    ClickValue(3);
    EXPECT_TRUE(CurEdit()->isVisible()) << "from here on it is variable input";
}

TEST_F(VlmVedtTest, AReturnFromMeasuringOfAnotherSymbolIsVariableInputToo) {
    symbol.state.RunMode = run_mode::ReturnFromMeasure;
    settings.Save(keys::VlmDist, "12.5");
    Open();
    EXPECT_EQ(symbol.state.RunMode, run_mode::VariableInput);
    EXPECT_EQ(Setting(keys::VlmMode), QStringLiteral("2"));
    EXPECT_EQ(CurrentValues(), (QStringList{"100", "20", "3"}));
}

TEST_F(VlmVedtTest, ALoadThatFailsEndsTheProgram) {
    symbol.Define({"Vx=1"});
    RuntimeError error = LoadError();
    EXPECT_TRUE(error.IsFatal());
    EXPECT_EQ(error.File(), symbol.state.SymbolFile);
    EXPECT_EQ(error.Line(), 3);

    symbol.state.SymbolFile = symbol.folder.Path("none.txt");
    error = LoadError();
    EXPECT_TRUE(error.IsFatal());
    EXPECT_EQ(error.Number(), ErrorNumber::FileNotFound);
}

TEST_F(VlmVedtTest, AWorkDatabaseThatCannotBeMadeEndsTheProgram) {
    symbol.state.TempDir = symbol.folder.Path("none\\");
    const RuntimeError error = LoadError();
    EXPECT_TRUE(error.IsFatal());
    EXPECT_EQ(error.File(), symbol.folder.Path("none\\VELMONOW.mdb"));
}

TEST_F(VlmVedtTest, AWorkTableThatCannotBeMadeIsToldBeforeTheEnd) {
    messages.Expect("NowDb Create Error");
    const FailingDisk full(4096);
    EXPECT_TRUE(LoadError().IsFatal());
}

TEST_F(VlmVedtTest, SettingsThatCannotBeWrittenEndTheLoadOfModeFour) {
    QDir().mkpath(symbol.folder.Path("Velmo2.ini").replace(u'\\', u'/'));
    symbol.state.RunMode = run_mode::ReturnFromMeasure;
    EXPECT_TRUE(LoadError().IsFatal());
}

// --- the ways out

TEST_F(VlmVedtTest, OkHandsTheValuesOver) {
    WriteRows();
    Open();
    const QSignalSpy closed(window.get(), &ModalWindow::Closed);
    ClickTable(2);
    ClickButton("Vedt_OKBtn");
    EXPECT_EQ(symbol.folder.Read("velmo.ret"), "3\r\nV12(W)\r\n12\r\nV3(H)\r\n2\r\nV5(T)\r\n3\r\n");
    EXPECT_EQ(symbol.folder.Read("velmo.ret2"), SymbolLine() + "TOLVIKS\r\n");
    EXPECT_TRUE(symbol.state.Confirmed);
    EXPECT_EQ(Setting("SmbTbl1"), QStringLiteral("12"));
    EXPECT_EQ(Setting("SmbTbl3"), QStringLiteral("3"));
    EXPECT_EQ(Setting(keys::TBLLast), QStringLiteral("2"));
    EXPECT_EQ(Setting(keys::LastPDF), symbol.state.SymbolFile);
    EXPECT_EQ(Setting(keys::VlmMode), QStringLiteral("none"));
    EXPECT_FALSE(HasWorkDatabase());
    EXPECT_EQ(closed.size(), 1);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(VlmVedtTest, OkInTheUserLibrary) {
    symbol.state.UserLibrary = true;
    Open();
    ClickButton("Vedt_OKBtn");
    EXPECT_EQ(symbol.folder.Read("velmo.ret2"), SymbolLine() + "VELMO\r\n");
    EXPECT_EQ(Setting("VlmTbl1"), QStringLiteral("100"));
    EXPECT_EQ(Setting(keys::UsrTBLLast), QStringLiteral("1"));
    EXPECT_EQ(Setting(keys::UsrLastPDF), symbol.state.SymbolFile);
    EXPECT_EQ(Setting(keys::LastPDF), QStringLiteral("none"));
}

TEST_F(VlmVedtTest, OkWithoutVariablesWritesAZero) {
    symbol.Define({});
    Open();
    ClickButton("Vedt_OKBtn");
    EXPECT_EQ(symbol.folder.Read("velmo.ret"), "0\r\n");
    EXPECT_TRUE(symbol.state.Confirmed);
}

TEST_F(VlmVedtTest, OkWhenTheTableIsEditedHandsTheNamesOver) {
    symbol.state.RunMode = run_mode::UserLibrary;
    WriteRows();
    Open();
    const QByteArray table = symbol.folder.Read("S1.PMN");
    ClickButton("Vedt_OKBtn");
    EXPECT_EQ(symbol.folder.Read("velmo.ret"), "3\r\nV12\r\nW\r\nV3\r\nH\r\nV5\r\nT\r\n");
    EXPECT_EQ(symbol.folder.Read("S1.PMN"), table);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(VlmVedtTest, OkTakesWhatIsBeingTyped) {
    Open();
    ClickValue(3);
    Type("9");
    ClickButton("Vedt_OKBtn");
    EXPECT_EQ(Setting("SmbTbl3"), QStringLiteral("9"));
}

TEST_F(VlmVedtTest, OkClosesAnOpenListUnchanged) {
    WriteRows();
    Open();
    Variables()->setFocus();
    Press(Qt::Key_Return);
    Press(Qt::Key_Down);
    ASSERT_TRUE(CurCmb()->isVisible());
    Find<QPushButton>("Vedt_OKBtn")->click();
    EXPECT_EQ(Setting("SmbTbl1"), QStringLiteral("100"));
}

TEST_F(VlmVedtTest, OkAsksForAMissingValue) {
    symbol.Define({"V1=PRO(\"A\",1)", "V2=PRO(\"B\",)", "V3=PRO(\"C\",)"});
    for (const bool measure : {false, true}) {
        Open();
        messages.Expect("値を入力してください。");
        if (measure)
            ClickMeasure();
        else
            ClickButton("Vedt_OKBtn");
        EXPECT_TRUE(window->isVisible());
        EXPECT_EQ(Variables()->Row(), 2);
        EXPECT_EQ(Variables()->Col(), 1);
        EXPECT_TRUE(CurEdit()->isVisible());
        EXPECT_EQ(CurEdit()->geometry(), Variables()->CellRect(2, 1));
        EXPECT_FALSE(symbol.folder.Exists("velmo.ret"));
        EXPECT_FALSE(symbol.folder.Exists("velmo.ret2"));
        EXPECT_EQ(Setting("SmbTbl1"), QStringLiteral("none"));
        EXPECT_FALSE(symbol.state.Confirmed);
    }
    Type("2");
    messages.Expect("値を入力してください。");
    ClickButton("Vedt_OKBtn");
    EXPECT_EQ(Variables()->Row(), 3);
    Type("3");
    ClickButton("Vedt_OKBtn");
    EXPECT_EQ(symbol.folder.Read("velmo.ret"), "3\r\nV1(A)\r\n1\r\nV2(B)\r\n2\r\nV3(C)\r\n3\r\n");
}

TEST_F(VlmVedtTest, ACharacterThatTheFilesCannotHoldIsNamed) {
    Open();
    ClickValue(2);
    Type("1");
    CurEdit()->setText(QStringLiteral("1😀"));
    Press(Qt::Key_Return);
    messages.ExpectContaining("文字「😀」");
    ClickButton("Vedt_OKBtn");
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(Variables()->Row(), 2);
    EXPECT_TRUE(CurEdit()->isVisible());
    messages.ExpectContaining("V3(H)");
    ClickMeasure();
    EXPECT_FALSE(symbol.folder.Exists("velmo.ret"));
    EXPECT_FALSE(symbol.folder.Exists("velmo.ret2"));
    EXPECT_EQ(Setting("SmbTbl1"), QStringLiteral("none"));
    EXPECT_TRUE(window->isVisible());
}

TEST_F(VlmVedtTest, ABadLabelIsNamedAndCannotBeEdited) {
    symbol.folder.Write("S1.TXT", "$VAR\r\nV1=PRO(\"\xA0\",1)\r\n");
    Open();
    messages.ExpectContaining("文字「\uFFFD」");
    ClickButton("Vedt_OKBtn");
    EXPECT_FALSE(CurEdit()->isVisible());
    EXPECT_EQ(Variables()->Col(), 0);
}

TEST_F(VlmVedtTest, AnAnswerThatCannotBeWrittenEndsTheProgram) {
    Open();
    QDir().mkpath(symbol.folder.Path("velmo.ret2").replace(u'\\', u'/'));
    messages.ExpectContaining("velmo.ret2");
    ClickButton("Vedt_OKBtn");
    EXPECT_EQ(messages.ExitStatus(), 1);
    EXPECT_FALSE(symbol.folder.Exists("velmo.ret"));
    EXPECT_EQ(Setting("SmbTbl1"), QStringLiteral("none"));
    EXPECT_EQ(settings.Get("SmbTbl1", "none"), QStringLiteral("none")) << "nor later";
    EXPECT_FALSE(symbol.state.Confirmed);
}

TEST_F(VlmVedtTest, ACancelThatCannotBeWrittenEndsTheProgram) {
    Open();
    QDir().mkpath(symbol.folder.Path("velmo.ret2").replace(u'\\', u'/'));
    messages.ExpectContaining("velmo.ret2");
    ClickButton("VEdt_CanBtn");
    EXPECT_EQ(messages.ExitStatus(), 1);
}

TEST_F(VlmVedtTest, MeasureRemembersTheVariable) {
    WriteRows();
    Open();
    ClickCell(Variables(), 3, 0);
    ClickMeasure();
    EXPECT_EQ(symbol.folder.Read("velmo.ret"), "3\r\nV12(W)\r\n100\r\nV3(H)\r\n20\r\nV5(T)\r\n3\r\n");
    EXPECT_EQ(symbol.folder.Read("velmo.ret2"), SymbolLine() + "TOLVIKS\r\n");
    EXPECT_EQ(Setting(keys::VlmMode), QStringLiteral("4"));
    EXPECT_EQ(Setting(keys::DistNo), QStringLiteral("3"));
    EXPECT_EQ(Setting("SmbTbl1"), QStringLiteral("100"));
    EXPECT_EQ(Setting(keys::LastPDF), symbol.state.SymbolFile);
    EXPECT_EQ(Setting(keys::TBLLast), QStringLiteral("1"));
    EXPECT_TRUE(symbol.state.Confirmed);
    EXPECT_TRUE(HasWorkDatabase());
    EXPECT_FALSE(window->isVisible());
}

TEST_F(VlmVedtTest, AMeasuredValueComesBackToItsVariable) {
    WriteRows();
    Open();
    ClickCell(Variables(), 3, 0);
    ClickMeasure();
    settings.Save(keys::VlmDist, "12.5");
    symbol.state.RunMode = run_mode::ReturnFromMeasure;
    Open();
    EXPECT_EQ(CurrentValues(), (QStringList{"100", "20", "12.5"}));
    EXPECT_EQ(Variables()->Row(), 3);
}

TEST_F(VlmVedtTest, MeasureWithoutVariablesNamesRowOne) {
    symbol.Define({});
    Open();
    ClickMeasure();
    EXPECT_EQ(Setting(keys::DistNo), QStringLiteral("1"));
}

TEST_F(VlmVedtTest, CancelSaysThatNothingWasChosen) {
    WriteRows();
    symbol.folder.Write("velmo.ret", "old");
    symbol.state.Confirmed = true;
    Open();
    const QSignalSpy cancelled(window.get(), &VLM_VEDT::Cancelled);
    ClickTable(2);
    ClickButton("VEdt_CanBtn");
    EXPECT_EQ(symbol.folder.Read("velmo.ret2"), "NO SELECT\r\n");
    EXPECT_EQ(symbol.folder.Read("velmo.ret"), "old");
    EXPECT_FALSE(symbol.state.Confirmed);
    EXPECT_FALSE(HasWorkDatabase());
    EXPECT_EQ(cancelled.size(), 1);
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(Setting("SmbTbl1"), QStringLiteral("none"));
    EXPECT_EQ(Setting(keys::LastPDF), QStringLiteral("none"));
}

TEST_F(VlmVedtTest, BackToTheTreeOnlyClosesTheWindow) {
    WriteRows();
    symbol.state.RunMode = run_mode::UserLibrary;
    symbol.state.Confirmed = true;
    Open();
    const QSignalSpy cancelled(window.get(), &VLM_VEDT::Cancelled);
    ClickButton("Vedt_TreeBtn");
    EXPECT_EQ(symbol.state.RunMode, run_mode::VariableInput);
    EXPECT_TRUE(symbol.state.Confirmed);
    EXPECT_FALSE(symbol.folder.Exists("velmo.ret2"));
    EXPECT_TRUE(HasWorkDatabase());
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(cancelled.size(), 0);
}

TEST_F(VlmVedtTest, TheCloseBoxWritesNothing) {
    WriteRows();
    Open();
    ClickTable(2);
    const QSignalSpy cancelled(window.get(), &VLM_VEDT::Cancelled);
    window->close();
    EXPECT_FALSE(symbol.folder.Exists("velmo.ret"));
    EXPECT_FALSE(symbol.folder.Exists("velmo.ret2"));
    EXPECT_EQ(Setting("SmbTbl1"), QStringLiteral("none"));
    EXPECT_TRUE(HasWorkDatabase());
    EXPECT_EQ(cancelled.size(), 0);
}

TEST_F(VlmVedtTest, ShownModallyItReturnsWhenItCloses) {
    WriteRows();
    window = std::make_unique<VLM_VEDT>(symbol.state, settings, messages);
    window->Load();
    QTimer::singleShot(0, window.get(), [this] { ClickButton("Vedt_OKBtn"); });
    window->ShowModal();
    EXPECT_TRUE(symbol.state.Confirmed);
}

TEST_F(VlmVedtTest, EnterOnAButtonPressesIt) {
    Open();
    Find<QPushButton>("VEdt_CanBtn")->setFocus();
    Press(Qt::Key_Return);
    EXPECT_EQ(symbol.folder.Read("velmo.ret2"), "NO SELECT\r\n");
}

TEST_F(VlmVedtTest, ControlAndEnterAcceptsFromTheKeyboardAlone) {
    WriteRows();
    Open();
    Press(Qt::Key_Down);
    Press(Qt::Key_Return);
    Press(Qt::Key_Return, Qt::ControlModifier);
    // The button shows itself pressed for a moment first.
    EXPECT_TRUE(QTest::qWaitFor([this] { return symbol.state.Confirmed; }));
    EXPECT_EQ(Setting("SmbTbl1"), QStringLiteral("12"));
}

} // namespace
} // namespace velmo
