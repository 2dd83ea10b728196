#include "library_run.h"

namespace velmo {
namespace {

using testing::ElementsAre;

// What stays as it was on the screen when the library changes, and libraries whose rows do not fit together.
class LibraryPlaceTest : public LibraryRunTest {
protected:
    // Where an item is in its view, from the top.
    int PlaceOf(const QString& view, const Item& item) {
        return Run().Describe(view, item)["rect"].toArray()[1].toInt();
    }
    QString ManyEntries() const {
        return "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 200) "
               "INSERT INTO PDFFileTable (FolderID, PDFName, PDFFileName, SLDFileName) "
               "SELECT 3, 'E' || i, 'E.PDF', 'E.SLD' FROM n;";
    }
    QString ManyCategories() const {
        return "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 200) "
               "INSERT INTO FolderTable (ParentID, FolderName, SLDFileName) "
               "SELECT 1, 'C' || i, '' FROM n;";
    }
};

TEST_F(LibraryPlaceTest, OpenCategoriesStayOpen) {
    StartWith("VLM_MAIN");
    Run().ClickBranch("VlmTreeView", Item::Path(washers_));
    AddCategoryBelow(bolts_);
    Fill("Name2", "新");
    ConfirmEditor();
    EXPECT_THAT(Run().Tree("VlmTreeView"),
                ElementsAre("トルヴィク", "  ボルト", "    新", "  座金", "    大形"));
    Run().ClickBranch("VlmTreeView", Item::Path(washers_));
    EditCategory({"トルヴィク", "ボルト", "新"});
    Fill("Name2", "改");
    ConfirmEditor();
    EXPECT_THAT(Run().Tree("VlmTreeView"),
                ElementsAre("トルヴィク", "  ボルト", "    改", "  座金+", "    大形"));
    ChooseOnCategory({"トルヴィク", "ボルト", "改"}, "VlmMnuPopDel");
    ExpectQuestion("改を削除します。よろしいですか", "VELMO分類ツリー削除");
    Run().AnswerYes();
    EXPECT_THAT(Run().Tree("VlmTreeView"), ElementsAre("トルヴィク", "  ボルト", "  座金+", "    大形"));
}

TEST_F(LibraryPlaceTest, TheTreeKeepsItsPlace) {
    MakeLibrary(ManyCategories());
    StartWith("VLM_MAIN");
    const Item middle = Item::Path({"トルヴィク", "C100"});
    Run().Click("VlmTreeView", Item::Path({"トルヴィク", "C110"}));
    Run().Click("VlmTreeView", middle);
    const int before = PlaceOf("VlmTreeView", middle);
    Run().Press("F2");
    Run().WaitForWindow("Vlm_TBlEdt");
    Fill("Name3", "A.SLD");
    ConfirmEditor();
    EXPECT_EQ(PlaceOf("VlmTreeView", middle), before);
    EXPECT_EQ(SelectedCategory(), QString("トルヴィク > C100"));
    EXPECT_EQ(Run().Focus(), QString("VlmTreeView"));
    Run().Press("Delete");
    ExpectQuestion("C100を削除します。よろしいですか", "VELMO分類ツリー削除");
    Run().AnswerNo();
    EXPECT_EQ(PlaceOf("VlmTreeView", middle), before);
    Run().Press("Down");
    EXPECT_EQ(SelectedCategory(), QString("トルヴィク > C101"));
}

TEST_F(LibraryPlaceTest, TheListKeepsItsPlace) {
    MakeLibrary(ManyEntries());
    StartWith("VLM_MAIN");
    ChooseCategory(washers_);
    Run().Click("VlmPdfList", Item::Named("E110"));
    Run().Click("VlmPdfList", Item::Named("E100"));
    const int before = PlaceOf("VlmPdfList", Item::Named("E100"));
    Run().Press("F2");
    Run().WaitForWindow("Vlm_TBlEdt");
    Fill("Name4", "F.SLD");
    ConfirmEditor();
    EXPECT_EQ(PlaceOf("VlmPdfList", Item::Named("E100")), before);
    EXPECT_EQ(SelectedEntry(), QString("E100"));
    EXPECT_EQ(Run().Focus(), QString("VlmPdfList"));
    Run().Press("Insert");
    Run().WaitForWindow("Vlm_TBlEdt");
    Fill("Name2", "NEW");
    Fill("Name3", "F.PDF");
    Fill("Name4", "F.SLD");
    ConfirmEditor();
    EXPECT_EQ(PlaceOf("VlmPdfList", Item::Named("E100")), before);
    EXPECT_EQ(SelectedEntry(), QString("E100"));
    const int neighbour = PlaceOf("VlmPdfList", Item::Named("E99"));
    Run().Press("Delete");
    ExpectQuestion("E100 を削除します。よろしいですか", "VelmoPDFリスト削除");
    Run().AnswerYes();
    EXPECT_EQ(Entries().size(), 4 + 200);
    EXPECT_EQ(PlaceOf("VlmPdfList", Item::Named("E99")), neighbour);
    EXPECT_EQ(Run().Focus(), QString("VlmPdfList"));
}

TEST_F(LibraryPlaceTest, TheEntryStaysChosenWhenTheTreeChanges) {
    StartWith("VLM_MAIN");
    ChooseCategory(bolts_);
    Run().Click("VlmPdfList", Item::Named("アイボルト"));
    ChooseOnCategory(bolts_, "VlmMnuPopCopy");
    ChooseOnEntry("記号", "VlmMnuPopTool");
    Run().WaitForWindow("Vlm_Tool");
    Run().Press("Escape");
    Run().WaitUntilClosed("Vlm_Tool");
    EXPECT_EQ(SelectedCategory(), QString("トルヴィク > ボルト"));
    EXPECT_EQ(SelectedEntry(), QString("記号"));
    EXPECT_EQ(Run().Focus(), QString("VlmPdfList"));
}

TEST_F(LibraryPlaceTest, RowsWithoutAWayToTheRoot) {
    MakeLibrary("INSERT INTO FolderTable (ID, ParentID, FolderName, SLDFileName) VALUES "
                "(9, 99, '孤', ''), (10, 11, '輪A', ''), (11, 10, '輪B', ''), (12, 12, '自', '');");
    for (const char* lost : {"9", "10", "12"}) {
        session_.Set("TreeLast", lost);
        Start();
        ExpectError({});
        Run().WaitForWindow("VLM_MAIN");
        EXPECT_THAT(Run().Tree("VlmTreeView"), ElementsAre("トルヴィク", "  ボルト", "  座金+", "    大形"));
        // Before something is selected no command has a target.
        Run().Press("Delete");
        Run().Press("F2");
        Run().Press("Insert");
        EXPECT_FALSE(Run().IsWindowShown("Vlm_TBlEdt"));
        AddCategoryBelow(bolts_);
        Fill("Name2", "新");
        ConfirmEditor();
        EXPECT_EQ(SelectedCategory(), QString("トルヴィク > ボルト > 新"));
        Run().Press("Delete");
        ExpectQuestion("新を削除します。よろしいですか", "VELMO分類ツリー削除");
        Run().AnswerYes();
        EXPECT_EQ(Categories().size(), 8);
    }
}

TEST_F(LibraryPlaceTest, ASecondRootIsOnlySeenWhenTheFirstIsGone) {
    MakeLibrary("INSERT INTO FolderTable (ID, ParentID, FolderName, SLDFileName) VALUES (9, 0, '根', '');");
    StartWith("VLM_MAIN");
    EXPECT_EQ(Run().Tree("VlmTreeView").size(), 4);
    ChooseOnCategory(root_, "VlmMnuPopCut");
    ChooseOnCategory(bolts_, "VlmMnuPopPaste");
    Run().WaitForMessage();
    Run().AnswerYes();
    ExpectError({"35601"});
    EXPECT_THAT(Run().Tree("VlmTreeView"), ElementsAre("根"));
    ChooseCategory({"根"});
    EXPECT_EQ(Panel(0), QString("根"));
}

} // namespace
} // namespace velmo
