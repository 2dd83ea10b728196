#include "library_run.h"

namespace velmo {
namespace {

using testing::ElementsAre;

// Where the maintenance commands are offered, and what they then work on.
class LibraryMenuTest : public LibraryRunTest {
protected:
    void ExpectEditor(const QString& title) {
        Run().WaitForWindow("Vlm_TBlEdt");
        EXPECT_EQ(Title("Vlm_TBlEdt"), title);
        Run().Press("Escape");
        Run().WaitUntilClosed("Vlm_TBlEdt");
    }
    void FocusTree() { ChooseCategory(bolts_); }
    void FocusEntry() {
        ChooseCategory(bolts_);
        Run().Click("VlmPdfList", Item::Named("六角ボルト"));
    }
};

TEST_F(LibraryMenuTest, TheMenuBarHoldsTheThreeCommands) {
    StartWith("VLM_MAIN");
    EXPECT_EQ(Run().Action("VlmMnuEdit")["text"].toString(), QString("編集(&E)"));
    EXPECT_EQ(Run().Action("VlmMnuEditAdd")["text"].toString(), QString("新規登録(&I)"));
    EXPECT_EQ(Run().Action("VlmMnuEditDel")["text"].toString(), QString("削除(&D)"));
    EXPECT_EQ(Run().Action("VlmMnuEditEdt")["text"].toString(), QString("変更(&E)"));
    EXPECT_EQ(Run().MenuEntries("VlmMnuEdit").size(), 3);
}

TEST_F(LibraryMenuTest, OverACategoryEverythingButSortAndPaste) {
    StartWith("VLM_MAIN");
    for (const QStringList& category : {root_, bolts_, large_}) {
        OpenPopUpOnCategory(category);
        EXPECT_THAT(Run().MenuEntries("VlmMnuPop"),
                    ElementsAre("新規登録(&I)", "削除(&D)", "変更(&E)", "ツール(&T)", "フォルダコピー(&C)",
                                "フォルダ移動(&M)", "(フォルダ貼付け(&P))", "(ソート(&S))"));
        LeavePopUp();
    }
}

TEST_F(LibraryMenuTest, PasteOnceACategoryWasRemembered) {
    StartWith("VLM_MAIN");
    for (const char* remember : {"VlmMnuPopCopy", "VlmMnuPopCut"}) {
        ChooseOnCategory(large_, remember);
        OpenPopUpOnCategory(bolts_);
        EXPECT_TRUE(Run().Action("VlmMnuPopPaste")["enabled"].toBool());
        LeavePopUp();
    }
    OpenPopUpOnEntry("六角ボルト");
    EXPECT_FALSE(Run().Action("VlmMnuPopPaste")["enabled"].toBool());
    LeavePopUp();
    EXPECT_EQ(Categories(), firstCategories_);
    EXPECT_EQ(Entries(), firstEntries_);
}

TEST_F(LibraryMenuTest, OverAnEntry) {
    StartWith("VLM_MAIN");
    ChooseCategory(bolts_);
    OpenPopUpOnEntry("アイボルト");
    EXPECT_THAT(Run().MenuEntries("VlmMnuPop"),
                ElementsAre("新規登録(&I)", "削除(&D)", "変更(&E)", "ツール(&T)", "(フォルダコピー(&C))",
                            "(フォルダ移動(&M))", "(フォルダ貼付け(&P))", "(ソート(&S))"));
    LeavePopUp();
}

TEST_F(LibraryMenuTest, OverTheEmptyPartOfTheList) {
    StartWith("VLM_MAIN");
    for (const QStringList& category : {bolts_, washers_}) {
        ChooseCategory(category);
        OpenPopUpOnEmptyPart();
        EXPECT_THAT(Run().MenuEntries("VlmMnuPop"),
                    ElementsAre("新規登録(&I)", "(削除(&D))", "(変更(&E))", "ツール(&T)",
                                "(フォルダコピー(&C))", "(フォルダ移動(&M))", "(フォルダ貼付け(&P))",
                                "(ソート(&S))"));
        LeavePopUp();
    }
}

TEST_F(LibraryMenuTest, ARightClickSelectsWhatIsUnderIt) {
    StartWith("VLM_MAIN");
    OpenPopUpOnCategory(bolts_);
    LeavePopUp();
    EXPECT_EQ(SelectedCategory(), QString("トルヴィク > ボルト"));
    EXPECT_EQ(Panel(0), QString("ボルト"));
    EXPECT_THAT(ListedEntries(), ElementsAre("六角ボルト", "アイボルト", "記号"));

    const QImage empty = Run().Picture("VlmPDFSlide");
    OpenPopUpOnEntry("アイボルト");
    LeavePopUp();
    EXPECT_EQ(SelectedEntry(), QString("アイボルト"));
    EXPECT_NE(Run().Picture("VlmPDFSlide"), empty);
    Run().ClickAction("Tbar_Open");
    Run().WaitForWindow("VLM_VEDT");
    EXPECT_THAT(Run().Column("Vedt_NowFGrid", 0), ElementsAre("V1(d)", "V7(個数)"));
}

TEST_F(LibraryMenuTest, TheMenuKeyOpensThePopUpOfThePaneWithTheFocus) {
    StartWith("VLM_MAIN");
    FocusTree();
    Run().Press("Menu");
    Run().WaitForWindow("VlmMnuPop");
    Run().ClickAction("VlmMnuPopEdt");
    ExpectEditor("Velmo分類ツリー編集");
    FocusEntry();
    Run().Press("Menu");
    Run().WaitForWindow("VlmMnuPop");
    Run().ClickAction("VlmMnuPopEdt");
    ExpectEditor("VelmoPDFリスト編集");
}

TEST_F(LibraryMenuTest, TheMenuKeyOnAListWithoutSelectionOffersWhatTheEmptyPartDoes) {
    StartWith("VLM_MAIN");
    ChooseCategory(washers_);
    Run().Click("VlmPdfList");
    Run().Press("Menu");
    Run().WaitForWindow("VlmMnuPop");
    EXPECT_FALSE(Run().Action("VlmMnuPopEdt")["enabled"].toBool());
    Run().ClickAction("VlmMnuPopAdd");
    ExpectEditor("VelmoPDFリスト登録");
}

TEST_F(LibraryMenuTest, KeysInTheTree) {
    StartWith("VLM_MAIN");
    FocusTree();
    Run().Press("Insert");
    ExpectEditor("Velmo分類ツリー登録");
    Run().Press("F2");
    ExpectEditor("Velmo分類ツリー編集");
    Run().Press("Delete");
    ExpectRefusal("PDFが登録されているため削除出来ません");
    EXPECT_EQ(Run().Focus(), QString("VlmTreeView"));
}

TEST_F(LibraryMenuTest, KeysInTheList) {
    StartWith("VLM_MAIN");
    FocusEntry();
    Run().Press("Insert");
    ExpectEditor("VelmoPDFリスト登録");
    Run().Press("F2");
    ExpectEditor("VelmoPDFリスト編集");
    Run().Press("Delete");
    ExpectQuestion("六角ボルト を削除します。よろしいですか", "VelmoPDFリスト削除");
    Run().AnswerNo();
    EXPECT_EQ(Run().Focus(), QString("VlmPdfList"));
    EXPECT_EQ(SelectedEntry(), QString("六角ボルト"));
    EXPECT_EQ(Entries(), firstEntries_);
}

TEST_F(LibraryMenuTest, KeysOnAListWithoutSelectionChangeNothing) {
    StartWith("VLM_MAIN");
    ChooseCategory(washers_);
    Run().Click("VlmPdfList");
    Run().Press("F2");
    Run().Press("Delete");
    EXPECT_FALSE(Run().IsWindowShown("Vlm_TBlEdt"));
    Run().Press("Insert");
    ExpectEditor("VelmoPDFリスト登録");
}

TEST_F(LibraryMenuTest, TheMenuBarWorksOnWhatThePopUpWasOpenedOnLast) {
    StartWith("VLM_MAIN");
    OpenPopUpOnCategory(bolts_);
    LeavePopUp();
    Run().ClickMenu("VlmMnuEditAdd");
    ExpectEditor("Velmo分類ツリー登録");
    Run().ClickMenu("VlmMnuEditEdt");
    ExpectEditor("Velmo分類ツリー編集");
    Run().ClickMenu("VlmMnuEditDel");
    ExpectRefusal("PDFが登録されているため削除出来ません");

    OpenPopUpOnEntry("記号");
    LeavePopUp();
    Run().ClickMenu("VlmMnuEditAdd");
    ExpectEditor("VelmoPDFリスト登録");
    Run().ClickMenu("VlmMnuEditEdt");
    ExpectEditor("VelmoPDFリスト編集");
    Run().ClickMenu("VlmMnuEditDel");
    ExpectQuestion("記号 を削除します。よろしいですか", "VelmoPDFリスト削除");
    Run().AnswerNo();
    EXPECT_EQ(Entries(), firstEntries_);
}

TEST_F(LibraryMenuTest, BeforeAnyPopUpTheMenuBarRegistersAnEntry) {
    StartWith("VLM_MAIN");
    Run().ClickMenu("VlmMnuEditAdd");
    ExpectEditor("VelmoPDFリスト登録");
}

TEST_F(LibraryMenuTest, TheBrowserGivesWayToADialogAndComesBack) {
    StartWith("VLM_MAIN");
    EXPECT_TRUE(Run().Window("VLM_MAIN")["onTop"].toBool());
    AddCategoryBelow(bolts_);
    EXPECT_FALSE(Run().Window("VLM_MAIN")["onTop"].toBool());
    EXPECT_TRUE(Run().Window("Vlm_TBlEdt")["onTop"].toBool());
    EXPECT_TRUE(Run().Window("Vlm_TBlEdt")["modal"].toBool());
    Run().Press("Escape");
    Run().WaitUntilClosed("Vlm_TBlEdt");
    EXPECT_TRUE(Run().Window("VLM_MAIN")["onTop"].toBool());
    ChooseOnCategory(bolts_, "VlmMnuPopTool");
    Run().WaitForWindow("Vlm_Tool");
    EXPECT_FALSE(Run().Window("VLM_MAIN")["onTop"].toBool());
    Run().Click("CanBtn");
    Run().WaitUntilClosed("Vlm_Tool");
    EXPECT_TRUE(Run().Window("VLM_MAIN")["onTop"].toBool());
}

TEST_F(LibraryMenuTest, WhereTablesAreEditedNothingIsOffered) {
    session_.Set("VlmMode", "3");
    StartWith("VLM_MAIN");
    EXPECT_FALSE(Run().Action("VlmMnuEdit")["visible"].toBool());
    Run().RightClick("VlmTreeView", Item::Path(bolts_));
    EXPECT_EQ(SelectedCategory(), QString("トルヴィク > ボルト"));
    EXPECT_FALSE(Run().IsWindowShown("VlmMnuPop"));
    for (const char* key : {"Menu", "Insert", "F2", "Delete"})
        Run().Press(key);
    Run().RightClick("VlmPdfList", Item::Named("アイボルト"));
    EXPECT_EQ(SelectedEntry(), QString("アイボルト"));
    for (const char* key : {"Menu", "Insert", "F2", "Delete"})
        Run().Press(key);
    Run().RightClickEmpty("VlmPdfList");
    EXPECT_EQ(Run().Windows().size(), 1);
    EXPECT_EQ(Categories(), firstCategories_);
    EXPECT_EQ(Entries(), firstEntries_);
}

} // namespace
} // namespace velmo
