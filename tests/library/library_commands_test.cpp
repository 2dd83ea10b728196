#include "library/browser_panes.h"
#include "library/category_tree.h"
#include "library/find_box.h"
#include "library/library_commands.h"
#include "platform/slide_view.h"
#include "support/dialog_queue.h"
#include "support/message_queue.h"
#include "symbol_library.h"

#include <QAction>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTreeView>
#include <gmock/gmock.h>

namespace velmo {
namespace {

using testing::ElementsAre;

// The commands between a tree and a list that the test shows and refreshes as the browser does.
class LibraryCommandsTest : public SymbolLibrary {
protected:
    LibraryCommandsTest() : settings_(NativePath(folder.Path("velmo.ini"))) {
        WriteFile("A\\M10.SLD", SampleSlide());
        panes_.SetUp(window_, state, messages_);
        tree_.emplace(*panes_.VlmTreeView, state, messages_);
        entries_.emplace(*panes_.VlmPdfList, *panes_.VlmPDFSlide, state, settings_, messages_);
        commands_.emplace(LibraryCommands::Browser{window_, panes_, *entries_, [this] { RebuildTree(); },
                                                   [this] { return isCategoryShown_; }},
                          state, messages_);
        QObject::connect(&*tree_, &CategoryTree::CategoryChosen, &window_,
                         [this] { ShowCategory(EntryList::Restore::No); });
        QObject::connect(&*commands_, &LibraryCommands::Done, &window_, [this] { ++done_; });
        tree_->BuildCategoryTree();
        tree_->RestoreSelection();
        ShowCategory(EntryList::Restore::No);
        window_.resize(600, 500);
        window_.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window_));
    }
    // The window outlives what belongs to it.
    ~LibraryCommandsTest() override {
        commands_.reset();
        entries_.reset();
        tree_.reset();
    }

    void ShowCategory(EntryList::Restore restore) {
        Database library(state.LibraryDb, Database::Access::Read);
        state.CurFolderName = CategoryWithId(library, state.CurFolderID).Text(u"FolderName");
        entries_->FillEntryList(restore);
    }
    void RebuildTree() {
        ++rebuilt_;
        tree_->Rebuild();
        ShowCategory(EntryList::Restore::Yes);
    }

    KeyedTree* Tree() const { return panes_.VlmTreeView; }
    KeepsSelection<QListView>* List() const { return panes_.VlmPdfList; }
    QPoint PlaceOf(const QString& key) const {
        return Tree()->visualRect(Tree()->Nodes().Find(key)).center();
    }
    QPoint PlaceOf(int row) const { return List()->visualRect(List()->model()->index(row, 0)).center(); }
    void ClickNode(const QString& key) const {
        QTest::mouseClick(Tree()->viewport(), Qt::LeftButton, {}, PlaceOf(key));
    }
    void ClickEntry(int row) const {
        QTest::mouseClick(List()->viewport(), Qt::LeftButton, {}, PlaceOf(row));
    }
    // A key, for tree or list.
    void Press(QAbstractItemView* view, Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const {
        // A dialog that was closed just now was the active window, and there is no window manager.
        view->window()->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(view->window()));
        view->setFocus();
        QTest::keyClick(view, key, modifiers);
    }

    QMenu* PopUp() const {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (widget->objectName() == "VlmMnuPop" && widget->isVisible())
                return qobject_cast<QMenu*>(widget);
        }
        return nullptr;
    }
    void OpenPopUp(QAbstractItemView* view, const QPoint& place) const {
        QTest::mouseClick(view->viewport(), Qt::RightButton, {}, place);
        Q_EMIT view->customContextMenuRequested(place);
    }
    void OpenPopUpOnNode(const QString& key) const { OpenPopUp(Tree(), PlaceOf(key)); }
    void OpenPopUpOnEntry(int row) const { OpenPopUp(List(), PlaceOf(row)); }
    void OpenPopUpOnEmptyPart() const { OpenPopUp(List(), {20, List()->viewport()->height() - 5}); }
    // Clicks an entry of the open pop-up.
    void Choose(const char* name) const {
        QMenu* menu = PopUp();
        ASSERT_TRUE(menu) << name;
        auto* action = commands_->findChild<QAction*>(QLatin1String(name));
        ASSERT_TRUE(action && action->isEnabled()) << name;
        QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
    }
    // "新規登録 (削除) ...": the entries of a menu, greyed ones in parentheses.
    static QString Captions(const QMenu& menu) {
        QStringList captions;
        for (const QAction* action : menu.actions())
            captions << (action->isEnabled() ? action->text() : '(' + action->text() + ')');
        return captions.join(' ');
    }
    // What the pop-up offers now; it is closed again.
    QString Offered() const {
        QMenu* menu = PopUp();
        if (!menu)
            return "none";
        const QString offered = Captions(*menu);
        menu->close();
        return offered;
    }
    QAction* MenuAction(const char* name) { return commands_->findChild<QAction*>(QLatin1String(name)); }

    // The entry editor opens with this caption; it is filled and ended.
    void ExpectEditor(const QString& caption, const QString& name2, const QString& name3 = {},
                      const QString& name4 = {}) {
        dialogs_.Expect("Vlm_TBlEdt", [=, this](QDialog& editor) {
            EXPECT_EQ(editor.windowTitle(), caption);
            EXPECT_FALSE(window_.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
            editor.findChild<QLineEdit*>("Name2")->setText(name2);
            editor.findChild<QLineEdit*>("Name3")->setText(name3);
            editor.findChild<QLineEdit*>("Name4")->setText(name4);
            editor.findChild<QPushButton*>("OK_btn")->click();
        });
    }
    // The same, but an OK with nothing filled in is refused and the editor then cancelled.
    void ExpectCancelledEditor(const QString& caption, const QString& refusal) {
        dialogs_.Expect("Vlm_TBlEdt", [=, this](QDialog& editor) {
            EXPECT_EQ(editor.windowTitle(), caption);
            editor.findChild<QLineEdit*>("Name2")->clear();
            messages_.Expect(refusal);
            editor.findChild<QPushButton*>("OK_btn")->click();
            editor.findChild<QLineEdit*>("Name2")->setText("never stored");
            editor.findChild<QPushButton*>("Can_Btn")->click();
        });
    }

    QStringList Listed() const {
        QStringList names;
        for (int row = 0; row < List()->model()->rowCount(); ++row)
            names << List()->model()->index(row, 0).data().toString();
        return names;
    }
    // Nothing was refreshed, and everything is as it was.
    void ExpectUntouched() const {
        EXPECT_EQ(Folders(), rootFolders);
        EXPECT_EQ(Entries(), firstEntries);
        EXPECT_EQ(rebuilt_, 0);
        EXPECT_EQ(panes_.namePanel->text(), "");
    }

    SettingsStore settings_;
    MessageQueue messages_;
    ModalWindow window_;
    BrowserPanes panes_;
    std::optional<CategoryTree> tree_;
    std::optional<EntryList> entries_;
    std::optional<LibraryCommands> commands_;
    DialogQueue dialogs_;
    bool isCategoryShown_ = true;
    int rebuilt_ = 0;
    int done_ = 0;
    const QString onTree_ = "新規登録(&I) 削除(&D) 変更(&E) ツール(&T) フォルダコピー(&C) フォルダ移動(&M) "
                            "(フォルダ貼付け(&P)) (ソート(&S))";
    const QString onEntry_ = "新規登録(&I) 削除(&D) 変更(&E) ツール(&T) (フォルダコピー(&C)) "
                             "(フォルダ移動(&M)) (フォルダ貼付け(&P)) (ソート(&S))";
    const QString onEmptyPart_ = "新規登録(&I) (削除(&D)) (変更(&E)) ツール(&T) (フォルダコピー(&C)) "
                                 "(フォルダ移動(&M)) (フォルダ貼付け(&P)) (ソート(&S))";
};

TEST_F(LibraryCommandsTest, ThePopUpOffersWhatIsPossibleWhereItIsOpened) {
    OpenPopUpOnNode("Nod2");
    EXPECT_EQ(Offered(), onTree_);
    OpenPopUpOnEntry(0);
    EXPECT_EQ(Offered(), onEntry_);
    OpenPopUpOnEmptyPart();
    EXPECT_EQ(Offered(), onEmptyPart_);
    OpenPopUpOnNode("Nod2");
    Choose("VlmMnuPopCopy");
    OpenPopUpOnNode("Nod3");
    EXPECT_TRUE(Offered().contains(" フォルダ貼付け(&P) ")) << "once a folder is remembered";
}

TEST_F(LibraryCommandsTest, NoPopUpWhereNothingWasSelected) {
    // The mouse is over another node than the selected one.
    Q_EMIT Tree()->customContextMenuRequested(PlaceOf("Nod3"));
    EXPECT_EQ(Offered(), "none");
    Q_EMIT Tree()->customContextMenuRequested({20, Tree()->viewport()->height() - 5});
    EXPECT_EQ(Offered(), "none");
    isCategoryShown_ = false;
    OpenPopUpOnNode("Nod2");
    EXPECT_EQ(Offered(), "none");
    OpenPopUpOnEmptyPart();
    EXPECT_EQ(Offered(), "none");
}

TEST_F(LibraryCommandsTest, AnEntryThatCannotBeReadHasNoPopUp) {
    Execute("UPDATE PDFFileTable SET PDFName='it''s' WHERE ID=1");
    entries_->Refill();
    messages_.ExpectContaining("3075");
    OpenPopUpOnEntry(0);
    EXPECT_EQ(Offered(), "none");
    OpenPopUpOnEntry(1);
    EXPECT_EQ(Offered(), onEntry_);
}

TEST_F(LibraryCommandsTest, TheMenuKeyOpensThePopUpOnWhatIsCurrent) {
    Press(Tree(), Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_EQ(Offered(), onTree_);
    ClickEntry(1);
    Press(List(), Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_EQ(Offered(), onEntry_);
}

TEST_F(LibraryCommandsTest, TheEditMenuRepeatsThePopUpsCommands) {
    QMenu& menu = commands_->EditMenu();
    EXPECT_EQ(menu.objectName(), "VlmMnuEdit");
    EXPECT_EQ(menu.title(), "編集(&E)");
    Q_EMIT menu.aboutToShow();
    EXPECT_EQ(Captions(menu), "新規登録(&I) (削除(&D)) (変更(&E))") << "the list, without an entry";
    OpenPopUpOnNode("Nod2");
    PopUp()->close();
    Q_EMIT menu.aboutToShow();
    EXPECT_EQ(Captions(menu), "新規登録(&I) 削除(&D) 変更(&E)");
    isCategoryShown_ = false;
    Q_EMIT menu.aboutToShow();
    EXPECT_EQ(Captions(menu), "(新規登録(&I)) (削除(&D)) (変更(&E))");
    isCategoryShown_ = true;
    Q_EMIT menu.aboutToShow();

    ExpectEditor("Velmo分類ツリー登録", "new");
    MenuAction("VlmMnuEditAdd")->trigger();
    EXPECT_EQ(Folders().last(), "4|2|new|");
    ExpectEditor("Velmo分類ツリー編集", "newer");
    Q_EMIT menu.aboutToShow();
    MenuAction("VlmMnuEditEdt")->trigger();
    EXPECT_EQ(Folders().last(), "4|2|newer|");
    messages_.Expect("newerを削除します。よろしいですか", true, "VELMO分類ツリー削除");
    MenuAction("VlmMnuEditDel")->trigger();
    EXPECT_EQ(Folders(), rootFolders);
}

TEST_F(LibraryCommandsTest, ANewCategoryIsSelectedAndNamed) {
    OpenPopUpOnNode("Nod2");
    ExpectEditor("Velmo分類ツリー登録", "screws", "A\\M10.SLD");
    Choose("VlmMnuPopAdd");
    EXPECT_EQ(Folders(), rootFolders + QStringList{"4|2|screws|A\\M10.SLD"});
    EXPECT_EQ(rebuilt_, 1);
    EXPECT_EQ(done_, 1);
    EXPECT_EQ(Tree()->SelectedKey(), "Nod4");
    EXPECT_EQ(panes_.namePanel->text(), "screws");
    EXPECT_TRUE(window_.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
}

TEST_F(LibraryCommandsTest, AnEditedCategoryStaysSelectedAndIsNamed) {
    OpenPopUpOnNode("Nod3");
    ExpectEditor("Velmo分類ツリー編集", "all nuts");
    Choose("VlmMnuPopEdt");
    EXPECT_EQ(Folders().last(), "3|1|all nuts|");
    EXPECT_EQ(Tree()->SelectedKey(), "Nod3");
    EXPECT_EQ(Tree()->Text("Nod3"), "all nuts");
    EXPECT_EQ(panes_.namePanel->text(), "all nuts");
    EXPECT_EQ(rebuilt_, 1);
}

TEST_F(LibraryCommandsTest, ANewEntryIsListedAndTheSelectedOneStays) {
    ClickEntry(1);
    OpenPopUpOnEmptyPart();
    ClickEntry(1);
    OpenPopUpOnEntry(1);
    ExpectEditor("VelmoPDFリスト登録", "M16", "A\\M16.PDF", "A\\M16.SLD");
    Choose("VlmMnuPopAdd");
    EXPECT_EQ(Entries(), firstEntries + QStringList{"3|2|M16|A\\M16.PDF|A\\M16.SLD"});
    EXPECT_THAT(Listed(), ElementsAre("M10", "M12", "M16"));
    EXPECT_EQ(entries_->SelectedName(), "M12");
    EXPECT_EQ(state.SymbolFile, state.HomeDir + "A\\M12.PDF");
    EXPECT_EQ(rebuilt_, 0);
    EXPECT_EQ(done_, 1);
}

TEST_F(LibraryCommandsTest, AnEditedEntryIsChosenAgainTheFirstOneToo) {
    for (const int row : {1, 0}) {
        const QString name = QString("new name %1").arg(row);
        OpenPopUpOnEntry(row);
        ExpectEditor("VelmoPDFリスト編集", name, "A\\new.PDF", row == 0 ? "A\\M10.SLD" : "none.SLD");
        Choose("VlmMnuPopEdt");
        EXPECT_EQ(Listed()[row], name);
        EXPECT_EQ(entries_->CurrentPlace().row, row);
        EXPECT_EQ(entries_->SelectedName(), name);
        EXPECT_EQ(state.SymbolFile, state.HomeDir + "A\\new.PDF") << "Open works at once";
        EXPECT_EQ(state.CurPdfIndex, row);
        EXPECT_EQ(state.CurPdfID, row + 1);
        EXPECT_EQ(panes_.VlmPDFSlide->HasPicture(), row == 0);
    }
    EXPECT_EQ(rebuilt_, 0);
}

TEST_F(LibraryCommandsTest, AnEntryOfTheSameNameInAnotherCategoryIsLeftAlone) {
    {
        Database database = Open();
        AddEntry(database, 3, "M10", "N.PDF", "N.SLD");
    }
    ClickNode("Nod3");
    OpenPopUpOnEntry(0);
    ExpectEditor("VelmoPDFリスト編集", "M12", "N.PDF", "N.SLD");
    Choose("VlmMnuPopEdt");
    EXPECT_EQ(Entries(), firstEntries + QStringList{"3|3|M12|N.PDF|N.SLD"});
    EXPECT_EQ(state.CurPdfID, 3) << "chosen again is that of this category";
    OpenPopUpOnEntry(0);
    messages_.Expect("M12 を削除します。よろしいですか", true, "VelmoPDFリスト削除");
    Choose("VlmMnuPopDel");
    EXPECT_EQ(Entries(), firstEntries);
}

TEST_F(LibraryCommandsTest, CancelAfterARefusalChangesNothing) {
    ClickEntry(0);
    state.SymbolFile = "chosen";
    OpenPopUpOnNode("Nod2");
    ExpectCancelledEditor("Velmo分類ツリー登録", "フォルダ名を入力してください");
    Choose("VlmMnuPopAdd");
    OpenPopUpOnNode("Nod2");
    ExpectCancelledEditor("Velmo分類ツリー編集", "フォルダ名を入力してください");
    Choose("VlmMnuPopEdt");
    ExpectUntouched();
    ClickEntry(1);
    const QString chosen = state.SymbolFile;
    QSignalSpy refilled(List()->model(), &QAbstractItemModel::modelReset);
    for (const char* command : {"VlmMnuPopAdd", "VlmMnuPopEdt"}) {
        OpenPopUpOnEntry(1);
        ExpectCancelledEditor(command == QString("VlmMnuPopAdd") ? "VelmoPDFリスト登録"
                                                                 : "VelmoPDFリスト編集",
                              "ＰＤＦ名を入力してください");
        Choose(command);
        EXPECT_EQ(state.EditMode, edit_mode::Cancelled);
    }
    EXPECT_EQ(refilled.size(), 0);
    EXPECT_EQ(state.SymbolFile, chosen);
    ExpectUntouched();
    EXPECT_EQ(done_, 4) << "a command that ended is told whatever it did";
}

TEST_F(LibraryCommandsTest, AnEntryThatVanishedAndWasAddedAnewIsNotRefreshed) {
    OpenPopUpOnEntry(0);
    Execute("DELETE FROM PDFFileTable WHERE ID=1");
    messages_.ExpectContaining("3021");
    Choose("VlmMnuPopEdt");
    EXPECT_EQ(Entries(), firstEntries.mid(1));

    OpenPopUpOnEntry(1);
    dialogs_.Expect("Vlm_TBlEdt", [this](QDialog& editor) {
        Execute("DELETE FROM PDFFileTable WHERE ID=2");
        editor.findChild<QPushButton*>("OK_btn")->click();
    });
    Choose("VlmMnuPopEdt");
    EXPECT_EQ(state.EditMode, edit_mode::AddEntry);
    EXPECT_EQ(Entries(), QStringList{"3|2|M12|A\\M12.PDF|A\\M12.SLD"});
    EXPECT_THAT(Listed(), ElementsAre("M10", "M12")) << "as it was shown";
}

TEST_F(LibraryCommandsTest, DeletesWhatItIsOpenedOn) {
    OpenPopUpOnNode("Nod3");
    messages_.Expect("nutsを削除します。よろしいですか", false, "VELMO分類ツリー削除");
    Choose("VlmMnuPopDel");
    ExpectUntouched();
    OpenPopUpOnNode("Nod3");
    messages_.Expect("nutsを削除します。よろしいですか", true, "VELMO分類ツリー削除");
    Choose("VlmMnuPopDel");
    EXPECT_EQ(Folders(), rootFolders.first(2));
    EXPECT_EQ(Tree()->SelectedKey(), "Nod1");
    EXPECT_EQ(rebuilt_, 1);

    ClickNode("Nod2");
    OpenPopUpOnNode("Nod2");
    messages_.Expect("PDFが登録されているため削除出来ません");
    Choose("VlmMnuPopDel");
    OpenPopUpOnEntry(1);
    messages_.Expect("M12 を削除します。よろしいですか", true, "VelmoPDFリスト削除");
    Choose("VlmMnuPopDel");
    EXPECT_THAT(Listed(), ElementsAre("M10"));
    EXPECT_EQ(Entries(), firstEntries.first(1));
    EXPECT_EQ(rebuilt_, 1);
}

TEST_F(LibraryCommandsTest, KeysWorkOnTheViewThatHasThem) {
    ExpectEditor("Velmo分類ツリー登録", "a");
    Press(Tree(), Qt::Key_Insert);
    EXPECT_EQ(Folders().last(), "4|2|a|");
    ExpectEditor("Velmo分類ツリー編集", "b");
    Press(Tree(), Qt::Key_F2);
    EXPECT_EQ(Folders().last(), "4|2|b|");
    messages_.Expect("bを削除します。よろしいですか", true, "VELMO分類ツリー削除");
    Press(Tree(), Qt::Key_Delete);
    EXPECT_EQ(Folders(), rootFolders);

    Press(List(), Qt::Key_F2);
    Press(List(), Qt::Key_Delete);
    EXPECT_EQ(Entries(), firstEntries) << "no entry is selected";
    ExpectEditor("VelmoPDFリスト登録", "c", "c", "c");
    Press(List(), Qt::Key_Insert);
    EXPECT_EQ(Entries().last(), "3|2|c|c|c");
    ClickEntry(2);
    ExpectEditor("VelmoPDFリスト編集", "d", "d", "d");
    Press(List(), Qt::Key_F2);
    EXPECT_EQ(Entries().last(), "3|2|d|d|d");
    messages_.Expect("d を削除します。よろしいですか", true, "VelmoPDFリスト削除");
    Press(List(), Qt::Key_Delete);
    EXPECT_EQ(Entries(), firstEntries);

    isCategoryShown_ = false;
    for (const Qt::Key key : {Qt::Key_Insert, Qt::Key_F2, Qt::Key_Delete}) {
        Press(Tree(), key);
        Press(List(), key);
    }
    EXPECT_EQ(Folders(), rootFolders);
    EXPECT_EQ(Entries(), firstEntries);
}

TEST_F(LibraryCommandsTest, CopyAndCutArePastedWhereThePopUpIs) {
    OpenPopUpOnNode("Nod2");
    Choose("VlmMnuPopCopy");
    EXPECT_EQ(rebuilt_, 0);
    OpenPopUpOnNode("Nod3");
    Choose("VlmMnuPopPaste");
    EXPECT_EQ(Folders(), rootFolders + QStringList{"4|3|bolts|B.SLD"});
    EXPECT_EQ(Entries().size(), 4) << "its entries are doubled";
    EXPECT_EQ(rebuilt_, 1);

    OpenPopUpOnNode("Nod2");
    Choose("VlmMnuPopCut");
    OpenPopUpOnNode("Nod3");
    Choose("VlmMnuPopPaste");
    EXPECT_EQ(Folders()[1], "2|3|bolts|B.SLD");
    EXPECT_EQ(rebuilt_, 2);
    EXPECT_EQ(done_, 4);
}

TEST_F(LibraryCommandsTest, TheMoveToolsWorkIsShownAndTheEntryChosenAgain) {
    ClickEntry(1);
    OpenPopUpOnEntry(1);
    dialogs_.Expect("Vlm_Tool", [this](QDialog& tool) {
        EXPECT_FALSE(window_.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
        EXPECT_EQ(tool.findChild<QLabel*>("MastFolder")->text(), "bolts");
        Execute("UPDATE PDFFileTable SET PDFFileName='N\\M12.PDF' WHERE ID=2");
        tool.accept();
    });
    Choose("VlmMnuPopTool");
    EXPECT_EQ(rebuilt_, 1);
    EXPECT_EQ(entries_->CurrentPlace().row, 1);
    EXPECT_EQ(state.SymbolFile, state.HomeDir + "N\\M12.PDF");
    EXPECT_TRUE(window_.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    OpenPopUpOnEmptyPart();
    dialogs_.Expect("Vlm_Tool", [](QDialog& tool) { tool.reject(); });
    Choose("VlmMnuPopTool");
    EXPECT_EQ(rebuilt_, 2) << "after a cancel too";
}

TEST_F(LibraryCommandsTest, ABusyLibraryIsToldBeforeTheEditorOpens) {
    const BusyWriter other(state.LibraryDb);
    messages_.ExpectContaining("3260");
    Press(Tree(), Qt::Key_Insert);
    EXPECT_EQ(rebuilt_, 0);
    EXPECT_EQ(done_, 1);
}

TEST_F(LibraryCommandsTest, SwitchedOffThereIsNeitherMenuNorKey) {
    commands_->SwitchOff();
    EXPECT_FALSE(commands_->EditMenu().menuAction()->isVisible());
    EXPECT_EQ(Tree()->contextMenuPolicy(), Qt::PreventContextMenu);
    EXPECT_EQ(List()->contextMenuPolicy(), Qt::PreventContextMenu);
    ClickEntry(0);
    for (const Qt::Key key : {Qt::Key_Insert, Qt::Key_F2, Qt::Key_Delete}) {
        Press(Tree(), key);
        Press(List(), key);
    }
    Press(Tree(), Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_EQ(Offered(), "none");
    ExpectUntouched();
    EXPECT_EQ(done_, 0);
}

} // namespace
} // namespace velmo
