#include "startup/settings_keys.h"
#include "window_sample.h"

#include <QScrollBar>
#include <QSignalSpy>
#include <QTimer>

#ifdef Q_OS_LINUX
#include "support/other_user.h"
#endif

namespace velmo {
namespace {

namespace keys = settings_keys;

// The ways out of the window and what they leave behind.
class VedtAnswerTest : public WindowTest {};

TEST_F(VedtAnswerTest, OkHandsTheValuesOver) {
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

TEST_F(VedtAnswerTest, OkInTheUserLibrary) {
    symbol.state.UserLibrary = true;
    Open();
    ClickButton("Vedt_OKBtn");
    EXPECT_EQ(symbol.folder.Read("velmo.ret2"), SymbolLine() + "VELMO\r\n");
    EXPECT_EQ(Setting("VlmTbl1"), QStringLiteral("100"));
    EXPECT_EQ(Setting(keys::UsrTBLLast), QStringLiteral("1"));
    EXPECT_EQ(Setting(keys::UsrLastPDF), symbol.state.SymbolFile);
    EXPECT_EQ(Setting(keys::LastPDF), QStringLiteral("none"));
}

TEST_F(VedtAnswerTest, OkWithoutVariablesWritesAZero) {
    symbol.Define({});
    Open();
    ClickButton("Vedt_OKBtn");
    EXPECT_EQ(symbol.folder.Read("velmo.ret"), "0\r\n");
    EXPECT_TRUE(symbol.state.Confirmed);
}

TEST_F(VedtAnswerTest, OkWhenTheTableIsEditedHandsTheNamesOver) {
    symbol.state.RunMode = run_mode::UserLibrary;
    WriteRows();
    Open();
    const QByteArray table = symbol.folder.Read("S1.PMN");
    ClickButton("Vedt_OKBtn");
    EXPECT_EQ(symbol.folder.Read("velmo.ret"), "3\r\nV12\r\nW\r\nV3\r\nH\r\nV5\r\nT\r\n");
    EXPECT_EQ(symbol.folder.Read("S1.PMN"), table);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(VedtAnswerTest, OkTakesWhatIsBeingTyped) {
    Open();
    ClickValue(3);
    Type("9");
    ClickButton("Vedt_OKBtn");
    EXPECT_EQ(Setting("SmbTbl3"), QStringLiteral("9"));
}

TEST_F(VedtAnswerTest, OkClosesAnOpenListUnchanged) {
    WriteRows();
    Open();
    Variables()->setFocus();
    Press(Qt::Key_Return);
    Press(Qt::Key_Down);
    ASSERT_TRUE(CurCmb()->isVisible());
    Find<QPushButton>("Vedt_OKBtn")->click();
    EXPECT_EQ(Setting("SmbTbl1"), QStringLiteral("100"));
}

TEST_F(VedtAnswerTest, OkAsksForAMissingValue) {
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

TEST_F(VedtAnswerTest, ACharacterThatTheFilesCannotHoldIsNamed) {
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

TEST_F(VedtAnswerTest, ABadLabelIsNamedAndCannotBeEdited) {
    symbol.folder.Write("S1.TXT", "$VAR\r\nV1=PRO(\"\xA0\",1)\r\n");
    Open();
    messages.ExpectContaining("文字「\uFFFD」");
    ClickButton("Vedt_OKBtn");
    EXPECT_FALSE(CurEdit()->isVisible());
    EXPECT_EQ(Variables()->Col(), 0);
}

TEST_F(VedtAnswerTest, AnAnswerThatCannotBeWrittenEndsTheProgram) {
    Open();
    Block("velmo.ret2");
    messages.ExpectContaining("velmo.ret2");
    ClickButton("Vedt_OKBtn");
    EXPECT_EQ(messages.ExitStatus(), 1);
    EXPECT_FALSE(symbol.folder.Exists("velmo.ret"));
    EXPECT_EQ(Setting("SmbTbl1"), QStringLiteral("none"));
    EXPECT_EQ(settings.Get("SmbTbl1", "none"), QStringLiteral("none")) << "nor later";
    EXPECT_FALSE(symbol.state.Confirmed);
}

TEST_F(VedtAnswerTest, ACancelThatCannotBeWrittenEndsTheProgram) {
    Open();
    Block("velmo.ret2");
    messages.ExpectContaining("velmo.ret2");
    ClickButton("VEdt_CanBtn");
    EXPECT_EQ(messages.ExitStatus(), 1);
}

TEST_F(VedtAnswerTest, MeasureRemembersTheVariable) {
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

TEST_F(VedtAnswerTest, AMeasuredValueComesBackToItsVariable) {
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

TEST_F(VedtAnswerTest, MeasureWithoutVariablesNamesNoRow) {
    symbol.Define({});
    Open();
    ClickMeasure();
    EXPECT_EQ(Setting(keys::DistNo), QStringLiteral("0"));
}

TEST_F(VedtAnswerTest, CancelSaysThatNothingWasChosen) {
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

TEST_F(VedtAnswerTest, BackToTheTreeOnlyClosesTheWindow) {
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

TEST_F(VedtAnswerTest, TheCloseBoxWritesNothing) {
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

TEST_F(VedtAnswerTest, ShownModallyItReturnsWhenItCloses) {
    WriteRows();
    window = std::make_unique<VLM_VEDT>(symbol.state, settings, messages);
    window->Load();
    QTimer::singleShot(0, window.get(), [this] { ClickButton("Vedt_OKBtn"); });
    window->ShowModal();
    EXPECT_TRUE(symbol.state.Confirmed);
}

TEST_F(VedtAnswerTest, EnterOnAButtonPressesIt) {
    Open();
    Find<QPushButton>("VEdt_CanBtn")->setFocus();
    Press(Qt::Key_Return);
    EXPECT_EQ(symbol.folder.Read("velmo.ret2"), "NO SELECT\r\n");
}

TEST_F(VedtAnswerTest, ControlAndEnterAcceptsFromTheKeyboardAlone) {
    WriteRows();
    Open();
    Press(Qt::Key_Down);
    Press(Qt::Key_Return);
    Press(Qt::Key_Return, Qt::ControlModifier);
    // The button shows itself pressed for a moment first.
    EXPECT_TRUE(QTest::qWaitFor([this] { return symbol.state.Confirmed; }));
    EXPECT_EQ(Setting("SmbTbl1"), QStringLiteral("12"));
}

TEST_F(VedtAnswerTest, MeasureInTheUserLibrary) {
    symbol.state.UserLibrary = true;
    WriteRows();
    Open();
    ClickTable(3);
    ClickMeasure();
    EXPECT_EQ(symbol.folder.Read("velmo.ret2"), SymbolLine() + "VELMO\r\n");
    EXPECT_EQ(Setting("VlmTbl1"), QStringLiteral("16"));
    EXPECT_EQ(Setting(keys::UsrTBLLast), QStringLiteral("3"));
    EXPECT_EQ(Setting(keys::UsrLastPDF), symbol.state.SymbolFile);
    EXPECT_EQ(Setting(keys::LastPDF), QStringLiteral("none"));
    EXPECT_EQ(Setting("SmbTbl1"), QStringLiteral("none"));
}

TEST_F(VedtAnswerTest, MeasureFromTheKeyboard) {
    Open();
    ClickValue(3);
    Type("8");
    Press(Qt::Key_M, Qt::ControlModifier);
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(Setting(keys::DistNo), QStringLiteral("3"));
    EXPECT_EQ(Setting("SmbTbl3"), QStringLiteral("8"));
}

TEST_F(VedtAnswerTest, ControlAndEnterAcceptsOutOfAnEditor) {
    WriteRows();
    Open();
    ClickValue(3);
    Type("8");
    Press(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(Setting("SmbTbl3"), QStringLiteral("8"));
    Open();
    Variables()->setFocus();
    Variables()->SetCurrentCell(1, 1);
    Press(Qt::Key_Return);
    ASSERT_TRUE(CurCmb()->isVisible());
    Press(Qt::Key_Enter, Qt::ControlModifier | Qt::KeypadModifier);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(VedtAnswerTest, SettingsThatCannotBeWrittenKeepTheWindowOpen) {
    Open();
    Block("Velmo2.ini");
    messages.ExpectContaining("Velmo2.ini");
    ClickButton("Vedt_OKBtn");
    EXPECT_TRUE(window->isVisible());
    EXPECT_FALSE(symbol.state.Confirmed);
    EXPECT_TRUE(HasWorkDatabase());
    EXPECT_EQ(messages.ExitStatus(), 0);
    Unblock("Velmo2.ini");
    ClickButton("Vedt_OKBtn");
    EXPECT_FALSE(window->isVisible());
    EXPECT_TRUE(symbol.state.Confirmed);
    EXPECT_EQ(Setting("SmbTbl1"), QStringLiteral("100"));
}

TEST_F(VedtAnswerTest, AFailedMeasureLeavesNoTrace) {
    Open();
    Block("Velmo2.ini");
    messages.ExpectContaining("Velmo2.ini");
    ClickMeasure();
    EXPECT_TRUE(window->isVisible());
    EXPECT_FALSE(symbol.state.Confirmed);
    Unblock("Velmo2.ini");
    ClickButton("VEdt_CanBtn");
    EXPECT_FALSE(window->isVisible());
    settings.Flush();
    EXPECT_EQ(Setting(keys::VlmMode), QStringLiteral("none"));
    EXPECT_EQ(Setting(keys::DistNo), QStringLiteral("none"));
    EXPECT_EQ(Setting("SmbTbl1"), QStringLiteral("none"));
}

#ifdef Q_OS_LINUX
TEST_F(VedtAnswerTest, AWorkDatabaseThatStaysIsToldAfterTheAnswer) {
    if (!OtherUser::IsPossible())
        GTEST_SKIP() << "not the superuser";
    Open();
    const OtherUser other(NativePath({}));
    ASSERT_TRUE(other.Changed());
    messages.ExpectContaining("VELMONOW.mdb");
    ClickButton("Vedt_OKBtn");
    EXPECT_TRUE(symbol.state.Confirmed);
    EXPECT_EQ(Setting(keys::LastPDF), symbol.state.SymbolFile);
    EXPECT_TRUE(symbol.folder.Exists("velmo.ret"));
    EXPECT_TRUE(HasWorkDatabase());
    EXPECT_FALSE(window->isVisible());
}

TEST_F(VedtAnswerTest, AWorkDatabaseThatStaysIsToldAfterTheCancel) {
    if (!OtherUser::IsPossible())
        GTEST_SKIP() << "not the superuser";
    symbol.state.Confirmed = true;
    Open();
    const OtherUser other(NativePath({}));
    ASSERT_TRUE(other.Changed());
    const QSignalSpy cancelled(window.get(), &VLM_VEDT::Cancelled);
    messages.ExpectContaining("VELMONOW.mdb");
    ClickButton("VEdt_CanBtn");
    EXPECT_EQ(symbol.folder.Read("velmo.ret2"), "NO SELECT\r\n");
    EXPECT_FALSE(symbol.state.Confirmed);
    EXPECT_EQ(cancelled.size(), 1);
    EXPECT_TRUE(HasWorkDatabase());
    EXPECT_FALSE(window->isVisible());
}
#endif

TEST_F(VedtAnswerTest, AMissingValueIsScrolledIntoSight) {
    QStringList lines{"V1=PRO(\"A\",)"};
    for (int i = 2; i <= 40; ++i)
        lines << QStringLiteral("V%1=PRO(\"N%1\",%1)").arg(i);
    symbol.Define(lines);
    Open();
    Variables()->verticalScrollBar()->setValue(Variables()->verticalScrollBar()->maximum());
    messages.Expect("値を入力してください。");
    ClickButton("Vedt_OKBtn");
    EXPECT_FALSE(CurEdit()->visibleRegion().isEmpty());
    EXPECT_EQ(CurEdit()->geometry(), Variables()->CellRect(1, 1));
}

} // namespace
} // namespace velmo
