#include "platform/elided_label.h"
#include "platform/window_places.h"
#include "startup/settings_keys.h"
#include "support/failing_disk.h"
#include "window_sample.h"

#include <QHeaderView>
#include <QSplitter>
#include <QStatusBar>

#ifdef Q_OS_LINUX
#include "support/other_user.h"
#endif

namespace velmo {
namespace {

namespace keys = settings_keys;

// What the window shows when it opens.
class VedtOpeningTest : public WindowTest {
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

TEST_F(VedtOpeningTest, CaptionAndHeadersTellTheMode) {
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

TEST_F(VedtOpeningTest, ATableThatCannotBeReadInFullIsToldInTheStatusLine) {
    const auto hint = [this] { return window->statusBar()->findChild<ElidedLabel*>()->text(); };
    const QString path = symbol.folder.Path("S1.PMN");
    WriteRows();
    Open();
    EXPECT_FALSE(hint().contains(path));
    const QByteArray table = symbol.folder.Read("S1.PMN");
    symbol.folder.Write("S1.PMN", table.chopped(20));
    Open();
    EXPECT_EQ(hint(), QStringLiteral("寸法表のファイルに読めない部分があります: ") + path);
    EXPECT_EQ(Table()->model()->rowCount(), 2);
}

TEST_F(VedtOpeningTest, TheVariableGridHasItsPlaceInEveryMode) {
    WriteRows();
    for (const std::int16_t mode :
         {run_mode::VariableInput, run_mode::UserLibrary, run_mode::ReturnFromMeasure}) {
        symbol.state.RunMode = mode;
        Open();
        const QRect place(TwipsToPixels(120), TwipsToPixels(600), TwipsToPixels(3860), TwipsToPixels(2775));
        EXPECT_EQ(Variables()->geometry(), place);
        EXPECT_EQ(Variables()->mapTo(window->centralWidget(), QPoint()), place.topLeft());
        EXPECT_EQ(Variables()->columnWidth(0), TwipsToPixels(1750));
        EXPECT_EQ(Variables()->columnWidth(1), TwipsToPixels(1750));
    }
}

TEST_F(VedtOpeningTest, LargeFontsCutNothingOff) {
    const auto restore = qScopeGuard([font = QApplication::font()] { QApplication::setFont(font); });
    QFont large = QApplication::font();
    large.setPointSize(30);
    QApplication::setFont(large);
    WriteRows();
    Open();
    const QHeaderView* header = Variables()->horizontalHeader();
    EXPECT_GT(header->sectionSizeHint(0), TwipsToPixels(1750)) << "the font is large enough for this test";
    for (int column = 0; column < 2; ++column)
        EXPECT_GE(header->sectionSize(column), header->sectionSizeHint(column));
    EXPECT_GE(Variables()->viewport()->width(), header->length());
    const auto* bar = Find<QToolBar>("Vedt_Toolbar");
    EXPECT_GE(bar->height(), bar->sizeHint().height());

    symbol.Define({});
    Open();
    for (Grid* grid : {Table(), Variables()}) {
        const QString message = grid->model()->index(0, 0).data().toString();
        EXPECT_GT(grid->columnWidth(0), grid->fontMetrics().horizontalAdvance(message))
            << qUtf8Printable(message);
        EXPECT_GE(grid->viewport()->width(), grid->columnWidth(0));
    }
}

TEST_F(VedtOpeningTest, GridsShowCellsUnderTheirHeaders) {
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

TEST_F(VedtOpeningTest, MessagesStandAloneInTheirGrids) {
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

TEST_F(VedtOpeningTest, TheTableHasTheFocusUnlessThereIsNone) {
    WriteRows();
    Open();
    EXPECT_TRUE(Table()->hasFocus());
    symbol.folder.WriteLines("S1.PMN", {});
    Open();
    EXPECT_TRUE(Variables()->hasFocus());
}

TEST_F(VedtOpeningTest, AnotherSymbolOpensWithRowOneAndItsOwnValues) {
    WriteRows();
    Remember(2);
    settings.Save(keys::LastPDF, "other");
    Open();
    EXPECT_EQ(symbol.state.TableLast, 1);
    EXPECT_EQ(Table()->Row(), 1);
    EXPECT_EQ(CurrentValues(), (QStringList{"100", "20", "3"}));
}

TEST_F(VedtOpeningTest, TheSameSymbolOpensAsItWasLeft) {
    WriteRows();
    Remember(2);
    Open();
    EXPECT_EQ(symbol.state.TableLast, 2);
    EXPECT_EQ(Table()->Row(), 2);
    EXPECT_EQ(Table()->Col(), 1);
    EXPECT_EQ(Table()->selectionModel()->selectedIndexes().size(), 3);
    EXPECT_EQ(CurrentValues(), (QStringList{"77", "20", "3"})) << "the row is not copied again";
}

TEST_F(VedtOpeningTest, ARememberedRowThatIsNotThereFallsBackToRowOne) {
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

TEST_F(VedtOpeningTest, AReturnFromMeasuringIsAnsweredOnce) {
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

TEST_F(VedtOpeningTest, AReturnFromMeasuringOfAnotherSymbolIsVariableInputToo) {
    symbol.state.RunMode = run_mode::ReturnFromMeasure;
    settings.Save(keys::VlmDist, "12.5");
    Open();
    EXPECT_EQ(symbol.state.RunMode, run_mode::VariableInput);
    EXPECT_EQ(Setting(keys::VlmMode), QStringLiteral("2"));
    EXPECT_EQ(CurrentValues(), (QStringList{"100", "20", "3"}));
}

TEST_F(VedtOpeningTest, AMeasurementIsAnsweredOnceThoughTheSymbolCannotBeRead) {
    settings.Save(keys::VlmMode, 4);
    settings.Flush();
    symbol.state.RunMode = run_mode::ReturnFromMeasure;
    symbol.Define({"Vx=1"});
    EXPECT_TRUE(LoadError().IsFatal());
    EXPECT_EQ(Setting(keys::VlmMode), QStringLiteral("2"));
    EXPECT_EQ(symbol.state.RunMode, run_mode::VariableInput);
}

TEST_F(VedtOpeningTest, NoDocumentIsLeftOfAnEarlierWindow) {
    symbol.state.PickedPdf = QStringLiteral("A.PDF");
    Open();
    EXPECT_EQ(symbol.state.PickedPdf, QString());
}

TEST_F(VedtOpeningTest, EnterKeepsRestoredValuesAndGoesOnToThem) {
    WriteRows();
    Remember(2);
    Open();
    ASSERT_TRUE(Table()->hasFocus());
    Press(Qt::Key_Return);
    EXPECT_EQ(CurrentValues(), (QStringList{"77", "20", "3"}));
    EXPECT_TRUE(Variables()->hasFocus());
    // A click takes the row over, whatever the values are.
    ClickTable(2);
    EXPECT_EQ(CurrentValues(), (QStringList{"12", "2", "3"}));
}

TEST_F(VedtOpeningTest, WithNothingRestoredEnterTakesTheFirstRow) {
    WriteRows();
    Remember(1);
    settings.Save(keys::SmbTblOf, "another");
    Open();
    Press(Qt::Key_Return);
    EXPECT_EQ(CurrentValues(), (QStringList{"10", "1", "3"}));
    EXPECT_TRUE(Table()->hasFocus());
    Press(Qt::Key_Return);
    EXPECT_TRUE(Variables()->hasFocus()) << "it is taken";
}

TEST_F(VedtOpeningTest, ALoadThatFailsEndsTheProgram) {
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

TEST_F(VedtOpeningTest, AWorkDatabaseThatCannotBeMadeEndsTheProgram) {
    symbol.state.TempDir = symbol.folder.Path("none\\");
    const RuntimeError error = LoadError();
    EXPECT_TRUE(error.IsFatal());
    EXPECT_EQ(error.File(), symbol.folder.Path("none\\VELMONOW.mdb"));
}

TEST_F(VedtOpeningTest, AWorkTableThatCannotBeMadeIsToldBeforeTheEnd) {
    messages.Expect("NowDb Create Error");
    const FailingDisk full(4096);
    EXPECT_TRUE(LoadError().IsFatal());
}

TEST_F(VedtOpeningTest, SettingsThatCannotBeWrittenEndTheLoadOfModeFour) {
    Block("Velmo2.ini");
    symbol.state.RunMode = run_mode::ReturnFromMeasure;
    EXPECT_TRUE(LoadError().IsFatal());
}

#ifdef Q_OS_LINUX
TEST_F(VedtOpeningTest, AnOldWorkDatabaseThatCannotBeDeletedEndsTheProgram) {
    if (!OtherUser::IsPossible())
        GTEST_SKIP() << "not the superuser";
    symbol.folder.Write("VELMONOW.mdb", "old");
    const OtherUser other(NativePath({}));
    ASSERT_TRUE(other.Changed());
    const RuntimeError error = LoadError();
    EXPECT_TRUE(error.IsFatal());
    EXPECT_EQ(error.Number(), ErrorNumber::PermissionDenied);
    EXPECT_EQ(error.File(), symbol.folder.Path("VELMONOW.mdb"));
    EXPECT_EQ(symbol.folder.Read("VELMONOW.mdb"), "old");
}
#endif

TEST_F(VedtOpeningTest, ADefinitionThatIsAFolderEndsTheProgram) {
    Block("S1.TXT");
    const RuntimeError error = LoadError();
    EXPECT_TRUE(error.IsFatal());
    EXPECT_EQ(error.File(), symbol.state.SymbolFile);
}

TEST_F(VedtOpeningTest, TheWindowHasAnIcon) {
    Open();
    EXPECT_FALSE(window->windowIcon().pixmap(16).isNull());
}

TEST_F(VedtOpeningTest, NeitherPaneCanBeDraggedAway) {
    Open();
    auto* panes = window->findChild<QSplitter*>();
    ASSERT_TRUE(panes);
    for (const int far : {-5000, 5000}) {
        QWidget* bar = panes->handle(1);
        const QPoint grip = bar->rect().center();
        QTest::mousePress(bar, Qt::LeftButton, {}, grip);
        QTest::mouseMove(bar, grip + QPoint(0, far));
        QTest::mouseRelease(bar, Qt::LeftButton, {}, grip + QPoint(0, far));
        EXPECT_THAT(panes->sizes(), testing::Each(testing::Gt(20))) << far;
    }
}

} // namespace
} // namespace velmo
