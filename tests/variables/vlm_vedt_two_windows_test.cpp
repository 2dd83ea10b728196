#include "platform/files.h"
#include "window_sample.h"

#include <QAbstractItemView>
#include <QLabel>

namespace velmo {
namespace {

// A second window opens on the same exchange folder and makes the work database its own.
class VedtTwoWindowsTest : public WindowTest {
protected:
    VedtTwoWindowsTest() { WriteRows(); }

    // Its symbol has the first one's names, in another order.
    void OpenOther() {
        symbol.folder.WriteLines(QStringLiteral("S2.TXT"),
                                 {"$VAR", "V1=PRO(\"T\",7)", "V2=PRO(\"H\",8)", "V3=PRO(\"W\",9)", "$GEO"});
        otherState_ = symbol.state;
        otherState_.SymbolFile = symbol.folder.Path(QStringLiteral("S2.TXT"));
        other_ = std::make_unique<VLM_VEDT>(otherState_, settings, messages);
        other_->Load();
    }
    void OpenInMode(std::int16_t mode) {
        symbol.state.RunMode = mode;
        Open();
    }
    void ExpectTold() { messages.ExpectContaining(QStringLiteral("作業データベースがほかで作り直された")); }
    void ExpectValuesOfDefinition() const {
        EXPECT_EQ(CurrentValues(), (QStringList{"100", "20", "3"}));
        EXPECT_EQ(symbol.state.TableLast, 1);
        EXPECT_TRUE(window->isVisible());
    }
    QString Cell(int row, int column) const {
        return Table()->model()->index(row - 1, column - 1).data().toString();
    }
    QString ChangedPanel() const { return Find<QLabel>("VedtChangedPanel")->text(); }

private:
    GlobalState otherState_;
    std::unique_ptr<VLM_VEDT> other_;
};

TEST_F(VedtTwoWindowsTest, ARowIsNotTakenOver) {
    Open();
    OpenOther();
    ExpectTold();
    ClickTable(2);
    ExpectValuesOfDefinition();
}

TEST_F(VedtTwoWindowsTest, NoValueIsOfferedOrTyped) {
    Open();
    OpenOther();
    for (const int row : {1, 3}) {
        ExpectTold();
        ClickValue(row);
        EXPECT_FALSE(CurCmb()->isVisible());
        EXPECT_FALSE(CurEdit()->isVisible());
    }
    ExpectValuesOfDefinition();
}

TEST_F(VedtTwoWindowsTest, WhatWasBeingChosenIsNotEntered) {
    Open();
    Variables()->setFocus();
    Press(Qt::Key_Return);
    Press(Qt::Key_Down);
    ASSERT_TRUE(CurCmb()->isVisible());
    OpenOther();
    ExpectTold();
    Press(Qt::Key_Return);
    ExpectValuesOfDefinition();
}

TEST_F(VedtTwoWindowsTest, WhatWasBeingTypedIsNotHandedOver) {
    Open();
    ClickValue(3);
    Type("9");
    OpenOther();
    ExpectTold();
    Find<QPushButton>("Vedt_OKBtn")->click();
    ExpectValuesOfDefinition();
    EXPECT_FALSE(symbol.folder.Exists("velmo.ret"));
}

TEST_F(VedtTwoWindowsTest, TheKeyThatLeavesAnEntryTellsItOnce) {
    Open();
    ClickValue(3);
    Type("9");
    OpenOther();
    ExpectTold();
    Press(Qt::Key_Backtab);
    ExpectValuesOfDefinition();
    EXPECT_FALSE(CurEdit()->isVisible());
}

TEST_F(VedtTwoWindowsTest, ValuesTakenOverBeforeAreHandedOver) {
    Open();
    ClickTable(2);
    OpenOther();
    ClickButton("Vedt_OKBtn");
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(symbol.folder.Read("velmo.ret"), "3\r\nV12(W)\r\n12\r\nV3(H)\r\n2\r\nV5(T)\r\n3\r\n");
    EXPECT_TRUE(HasWorkDatabase()) << "the other window's";
}

TEST_F(VedtTwoWindowsTest, CancelLeavesTheOthersDatabase) {
    Open();
    OpenOther();
    ClickButton("VEdt_CanBtn");
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(symbol.folder.Read("velmo.ret2"), "NO SELECT\r\n");
    EXPECT_TRUE(HasWorkDatabase());
}

TEST_F(VedtTwoWindowsTest, OneThatIsGoneIsToldToo) {
    Open();
    DeleteFile(symbol.work.Path());
    ExpectTold();
    ClickTable(2);
    ExpectValuesOfDefinition();
    ClickButton("VEdt_CanBtn");
    EXPECT_FALSE(window->isVisible());
}

TEST_F(VedtTwoWindowsTest, NoStepOfTheTableEditorIsMade) {
    OpenInMode(run_mode::UserLibrary);
    ClickTable(1, 2);
    Type("7");
    Press(Qt::Key_Return);
    OpenOther();
    ClickTable(1, 3);
    Type("5");
    ExpectTold();
    Press(Qt::Key_Return);
    EXPECT_EQ(Cell(1, 3), QStringLiteral("1"));
    ExpectTold();
    Find<QAction>("VedtMnuEditUndo")->trigger();
    ExpectTold();
    Find<QAction>("VedtMnuEditClear")->trigger();
    ExpectTold();
    Press(Qt::Key_Insert);
    ExpectTold();
    Press(Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(Cell(1, 2), QStringLiteral("7"));
    EXPECT_EQ(Cell(1, 3), QStringLiteral("1"));
    EXPECT_EQ(Table()->model()->rowCount(), 5);
    ClickValue(1);
    Type("X");
    ExpectTold();
    Press(Qt::Key_Return);
    EXPECT_EQ(CurrentValues(), (QStringList{"W", "H", "T"}));
    Find<QAction>("VedtMnuEditCopy")->trigger();
    EXPECT_EQ(ChangedPanel(), QStringLiteral("変更あり"));
}

TEST_F(VedtTwoWindowsTest, AChangedTableIsNotSaved) {
    OpenInMode(run_mode::UserLibrary);
    const QByteArray table = symbol.folder.Read("S1.PMN");
    ClickTable(1, 2);
    Type("7");
    Press(Qt::Key_Return);
    OpenOther();
    ExpectTold();
    ClickButton("Vedt_OKBtn");
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(symbol.folder.Read("S1.PMN"), table);
    EXPECT_FALSE(symbol.folder.Exists("velmo.ret"));
    EXPECT_EQ(ChangedPanel(), QStringLiteral("変更あり"));
}

} // namespace
} // namespace velmo
