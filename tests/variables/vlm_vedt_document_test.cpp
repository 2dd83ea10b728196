#include "pickers/file_list.h"
#include "pickers/vlm_file_frm.h"
#include "window_sample.h"

#include <QMenuBar>
#include <QSignalSpy>
#include <gmock/gmock.h>

namespace velmo {
namespace {

using testing::ElementsAre;

// The File menu: the run ends with a document.
class VedtDocumentTest : public WindowTest {
protected:
    VedtDocumentTest() {
        symbol.state.HomeDir = symbol.folder.Path();
        for (const char* file : {"PDF\\A.PDF", "PDF\\B.PDF", "PDF\\A.SLD", "TOP.PDF"})
            symbol.folder.Write(file, {});
    }

    // Triggers a menu item and uses the picker that it shows.
    void Pick(const char* item, const std::function<void(Vlm_FileFrm&)>& use) {
        bool shown = false;
        QTimer::singleShot(0, window.get(), [&] {
            auto* picker = qobject_cast<Vlm_FileFrm*>(QApplication::activeModalWidget());
            ASSERT_TRUE(picker);
            shown = true;
            use(*picker);
            if (picker->isVisible())
                picker->close();
        });
        Find<QAction>(item)->trigger();
        EXPECT_TRUE(shown);
    }
    static void ClickFile(Vlm_FileFrm& picker, int row) {
        auto* list = picker.findChild<FileList*>("Vlm_File");
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                          list->visualRect(list->model()->index(row, 0)).center());
    }
    static void ClickOk(Vlm_FileFrm& picker) { picker.findChild<QPushButton*>("Vlm_FilOKBtn")->click(); }
    static void Choose(Vlm_FileFrm& picker) {
        ClickFile(picker, 0);
        ClickOk(picker);
    }
    static void GiveUp(Vlm_FileFrm& picker) { picker.findChild<QPushButton*>("Vlm_FilCanBtn")->click(); }

    void ExpectNothingWritten() const {
        for (const char* file : {"velmo.ret", "velmo.ret2", "velmo.doc"})
            EXPECT_FALSE(symbol.folder.Exists(file)) << file;
        EXPECT_EQ(Setting("LastPDF"), QStringLiteral("none"));
        EXPECT_EQ(Setting("SmbTbl1"), QStringLiteral("none"));
        EXPECT_EQ(Setting("VlmMode"), QStringLiteral("none"));
    }
    void ExpectStillOpen(std::int16_t mode) const {
        EXPECT_TRUE(window->isVisible());
        EXPECT_EQ(symbol.state.RunMode, mode);
        EXPECT_EQ(symbol.state.PickedPdf, "");
    }

    const QString question_ =
        QStringLiteral("寸法表の変更は保存されていません。破棄して閉じてよろしいですか");
};

TEST_F(VedtDocumentTest, TheFileMenuIsTheFirst) {
    WriteRows();
    for (const std::int16_t mode : {run_mode::VariableInput, run_mode::UserLibrary}) {
        symbol.state.RunMode = mode;
        Open();
        const QMenu* file = window->menuBar()->actions().first()->menu();
        EXPECT_EQ(file->objectName(), "VedtMnuFile");
        EXPECT_EQ(file->title(), "ファイル(&F)");
        QStringList entries;
        for (const QAction* entry : file->actions())
            entries << entry->objectName() + ' ' + entry->text();
        EXPECT_THAT(entries,
                    ElementsAre("VedtMnuFileOpen PDFを開く(&O)...", "VedtMnuFileWrite PDFに保存(&S)...", " ",
                                "VedtMnuFileCan キャンセル(&C)"));
        EXPECT_EQ(window->menuBar()->actions().size() > 1, mode == run_mode::UserLibrary);
    }
    EXPECT_EQ(window->menuBar()->actions().at(1)->text(), "編集(&E)");
}

TEST_F(VedtDocumentTest, ADocumentEndsTheWindow) {
    const QList<std::pair<const char*, QString>> entries = {{"VedtMnuFileOpen", "PDFファイル選択"},
                                                            {"VedtMnuFileWrite", "PDFファイル保存"}};
    for (const auto& [item, caption] : entries) {
        symbol.state.RunMode = run_mode::VariableInput;
        symbol.state.PickedPdf.clear();
        symbol.state.PickedFile.clear();
        symbol.state.Confirmed = true;
        Open();
        const QSignalSpy closed(window.get(), &ModalWindow::Closed);
        const QSignalSpy cancelled(window.get(), &VLM_VEDT::Cancelled);
        Pick(item, [&, expected = caption](Vlm_FileFrm& picker) {
            EXPECT_EQ(picker.windowTitle(), expected);
            EXPECT_EQ(picker.findChild<FileList*>("Vlm_File")->Pattern(), "*.PDF");
            Choose(picker);
        });
        EXPECT_EQ(symbol.state.RunMode, run_mode::Document);
        EXPECT_EQ(symbol.state.PickedPdf, "TOP.PDF");
        EXPECT_EQ(symbol.state.PickedFile, "TOP.PDF");
        EXPECT_TRUE(symbol.state.Confirmed) << "stays as it was";
        EXPECT_EQ(closed.size(), 1);
        EXPECT_EQ(cancelled.size(), 0);
        EXPECT_FALSE(window->isVisible());
        ExpectNothingWritten();
        EXPECT_TRUE(HasWorkDatabase());
    }
}

TEST_F(VedtDocumentTest, AGivenUpChoiceChangesNothing) {
    Open();
    Pick("VedtMnuFileOpen", GiveUp);
    ExpectStillOpen(run_mode::VariableInput);
    Pick("VedtMnuFileWrite", [](Vlm_FileFrm& picker) { picker.close(); });
    ExpectStillOpen(run_mode::VariableInput);
    ExpectNothingWritten();
}

TEST_F(VedtDocumentTest, ThePickerOpensAtThePreviousChoice) {
    symbol.state.PickedFile = QStringLiteral("PDF\\B.PDF");
    Open();
    Pick("VedtMnuFileOpen", [](Vlm_FileFrm& picker) {
        auto* list = picker.findChild<FileList*>("Vlm_File");
        EXPECT_EQ(list->model()->rowCount(), 2);
        EXPECT_EQ(list->currentIndex().data().toString(), "B.PDF");
        ClickFile(picker, 1);
        ClickOk(picker);
    });
    EXPECT_EQ(symbol.state.PickedPdf, "PDF\\B.PDF");
}

TEST_F(VedtDocumentTest, AnOpenEditorIsSettledFirst) {
    WriteRows();
    symbol.state.RunMode = run_mode::UserLibrary;
    Open();
    ClickTable(1, 2);
    Type("7");
    // What was being typed is a change to the table.
    messages.Expect(question_, false);
    Pick("VedtMnuFileOpen", [&](Vlm_FileFrm& picker) {
        EXPECT_FALSE(CurEdit()->isVisible());
        EXPECT_EQ(Table()->model()->index(0, 1).data().toString(), "7");
        Choose(picker);
    });
    ExpectStillOpen(run_mode::UserLibrary);
}

TEST_F(VedtDocumentTest, AnEntryThatFailsKeepsThePickerAway) {
    WriteRows();
    symbol.state.RunMode = run_mode::UserLibrary;
    Open();
    ClickValue(1);
    Type("X");
    Block(QStringLiteral("VELMONOW.mdb"));
    messages.ExpectContaining(QStringLiteral("VELMONOW.mdb"));
    Find<QAction>("VedtMnuFileOpen")->trigger();
    ExpectStillOpen(run_mode::UserLibrary);
    Unblock(QStringLiteral("VELMONOW.mdb"));
}

TEST_F(VedtDocumentTest, AChangedTableIsAskedAbout) {
    WriteRows();
    symbol.state.RunMode = run_mode::UserLibrary;
    const QByteArray table = symbol.folder.Read("S1.PMN");
    Open();
    ClickTable(1, 2);
    Type("7");
    Press(Qt::Key_Return);
    messages.Expect(question_, false);
    Pick("VedtMnuFileOpen", Choose);
    ExpectStillOpen(run_mode::UserLibrary);
    messages.Expect(question_, true);
    Pick("VedtMnuFileOpen", Choose);
    EXPECT_EQ(symbol.state.RunMode, run_mode::Document);
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(symbol.folder.Read("S1.PMN"), table);
    ExpectNothingWritten();
}

TEST_F(VedtDocumentTest, APathThatTheCadSideCannotReadIsRefused) {
    symbol.folder.Write(QStringLiteral("שלום.PDF"), {});
    Open();
    messages.ExpectContaining(QStringLiteral("文字「ש」は CAD に渡せません"));
    Pick("VedtMnuFileOpen", [](Vlm_FileFrm& picker) {
        ClickFile(picker, 1);
        ClickOk(picker);
    });
    ExpectStillOpen(run_mode::VariableInput);
}

TEST_F(VedtDocumentTest, TheMenusCancelIsTheButtons) {
    symbol.state.Confirmed = true;
    Open();
    const QSignalSpy cancelled(window.get(), &VLM_VEDT::Cancelled);
    Find<QAction>("VedtMnuFileCan")->trigger();
    EXPECT_EQ(cancelled.size(), 1);
    EXPECT_EQ(symbol.folder.Read("velmo.ret2"), "NO SELECT\r\n");
    EXPECT_FALSE(symbol.state.Confirmed);
    EXPECT_FALSE(HasWorkDatabase());
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(symbol.state.RunMode, run_mode::VariableInput);
}

} // namespace
} // namespace velmo
