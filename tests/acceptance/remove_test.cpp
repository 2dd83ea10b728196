#include "library_run.h"

namespace velmo {
namespace {

using testing::ElementsAre;

// Categories and entries that are deleted.
class RemoveTest : public LibraryRunTest {
protected:
    const QString subfolders_ = "サブフォルダが存在するため削除出来ません";
    const QString entries_ = "PDFが登録されているため削除出来ません";
    const QString askCategory_ = "VELMO分類ツリー削除";
    const QString askEntry_ = "VelmoPDFリスト削除";
    const QString spare_ =
        "INSERT INTO FolderTable (ParentID, FolderName, SLDFileName) VALUES (2, '予備', '');";
    const QStringList sparePath_ = {"トルヴィク", "ボルト", "予備"};

    void ExpectTableError() { ExpectRefusal("del Tbl Error"); }
};

TEST_F(RemoveTest, ACategoryWithSubcategoriesOrEntriesIsKept) {
    MakeLibrary("INSERT INTO FolderTable (ParentID, FolderName, SLDFileName) VALUES (4, '特大', '');");
    StartWith("VLM_MAIN");
    ChooseOnCategory(washers_, "VlmMnuPopDel");
    ExpectRefusal(subfolders_);
    ChooseOnCategory(bolts_, "VlmMnuPopDel");
    ExpectRefusal(entries_);
    // Both: the subcategories come first.
    ChooseOnCategory(large_, "VlmMnuPopDel");
    ExpectRefusal(subfolders_);
    EXPECT_EQ(Categories().size(), 5);
    EXPECT_EQ(SelectedCategory(), QString("トルヴィク > 座金 > 大形"));
}

TEST_F(RemoveTest, AnEmptyCategoryAfterTheQuestion) {
    MakeLibrary(spare_);
    StartWith("VLM_MAIN");
    ChooseOnCategory(sparePath_, "VlmMnuPopDel");
    ExpectQuestion("予備を削除します。よろしいですか", askCategory_);
    Run().AnswerNo();
    EXPECT_EQ(Categories().size(), 5);
    EXPECT_EQ(SelectedCategory(), QString("トルヴィク > ボルト > 予備"));

    const QImage slide = Run().Picture("VlmTreeSlide");
    ChooseOnCategory(sparePath_, "VlmMnuPopDel");
    ExpectQuestion("予備を削除します。よろしいですか", askCategory_);
    Run().AnswerYes();
    EXPECT_EQ(Categories(), firstCategories_);
    EXPECT_EQ(SelectedCategory(), QString("トルヴィク > ボルト"));
    EXPECT_THAT(Run().Tree("VlmTreeView"), ElementsAre("トルヴィク", "  ボルト", "  座金+", "    大形"));
    EXPECT_EQ(Panel(0), QString("ボルト"));
    EXPECT_THAT(ListedEntries(), ElementsAre("六角ボルト", "アイボルト", "記号"));
    EXPECT_NE(Run().Picture("VlmTreeSlide"), slide);
}

TEST_F(RemoveTest, TheNumberOfADeletedCategoryIsNotGivenAgain) {
    MakeLibrary(spare_);
    StartWith("VLM_MAIN");
    ChooseOnCategory(sparePath_, "VlmMnuPopDel");
    ExpectQuestion("予備を削除します。よろしいですか", askCategory_);
    Run().AnswerYes();
    AddCategoryBelow(bolts_);
    Fill("Name2", "新");
    ConfirmEditor();
    EXPECT_EQ(Categories().last(), QString("6|2|新|"));
}

TEST_F(RemoveTest, NothingNamesACategoryThatIsGone) {
    StartWith("VLM_MAIN");
    AddCategoryBelow(bolts_);
    Fill("Name2", "新");
    ConfirmEditor();
    EXPECT_EQ(Panel(1), QString("新"));
    Run().Press("Delete");
    ExpectQuestion("新を削除します。よろしいですか", askCategory_);
    Run().AnswerYes();
    EXPECT_EQ(Categories(), firstCategories_);
    EXPECT_NE(Panel(1), QString("新"));
}

TEST_F(RemoveTest, ACategoryThatIsGoneAlready) {
    MakeLibrary(spare_);
    StartWith("VLM_MAIN");
    ChooseOnCategory(sparePath_, "VlmMnuPopDel");
    ExpectQuestion("予備を削除します。よろしいですか", askCategory_);
    Execute("DELETE FROM FolderTable WHERE ID = 5");
    Run().AnswerYes();
    ExpectTableError();
    EXPECT_EQ(Categories(), firstCategories_);
    ChooseCategory(washers_);
    EXPECT_EQ(Panel(0), QString("座金"));
}

TEST_F(RemoveTest, TheListOnScreenDecidesWhetherACategoryHasEntries) {
    MakeLibrary(spare_);
    StartWith("VLM_MAIN");
    ChooseCategory(large_);
    Execute("DELETE FROM PDFFileTable WHERE FolderID = 4");
    Run().Press("Delete");
    ExpectRefusal(entries_);
    ChooseCategory(sparePath_);
    Execute("INSERT INTO PDFFileTable (FolderID, PDFName, PDFFileName, SLDFileName) VALUES (5, 'A', '', '')");
    Run().Press("Delete");
    ExpectQuestion("予備を削除します。よろしいですか", askCategory_);
    Run().AnswerYes();
    EXPECT_EQ(Categories(), firstCategories_);
}

TEST_F(RemoveTest, NeverTheLastRoot) {
    session_.WriteExchangeLines("velmo.ret2", {"NO SELECT", "VELMO"});
    StartWith("VLM_MAIN");
    ChooseOnCategory({"VELMOデータ"}, "VlmMnuPopDel");
    ExpectRefusal("最後のルートフォルダは削除出来ません");
    EXPECT_THAT(Run().Tree("VlmTreeView"), ElementsAre("VELMOデータ"));
    Run().ClickAction("Tbar_Cancel");
    EXPECT_EQ(End(), 0);
}

TEST_F(RemoveTest, AnEntryAfterTheQuestion) {
    StartWith("VLM_MAIN");
    ChooseCategory(bolts_);
    ChooseOnEntry("アイボルト", "VlmMnuPopDel");
    ExpectQuestion("アイボルト を削除します。よろしいですか", askEntry_);
    Run().AnswerNo();
    EXPECT_EQ(Entries(), firstEntries_);
    EXPECT_EQ(SelectedEntry(), QString("アイボルト"));
    const QImage eye = Run().Picture("VlmPDFSlide");

    ChooseOnEntry("アイボルト", "VlmMnuPopDel");
    ExpectQuestion("アイボルト を削除します。よろしいですか", askEntry_);
    Run().AnswerYes();
    EXPECT_THAT(Entries(), ElementsAre(firstEntries_[0], firstEntries_[2], firstEntries_[3]));
    EXPECT_THAT(ListedEntries(), ElementsAre("六角ボルト", "記号"));
    EXPECT_EQ(SelectedEntry(), QString());
    EXPECT_NE(Run().Picture("VlmPDFSlide"), eye);
    Run().ClickAction("Tbar_Open");
    ExpectRefusal("シンボルを選択してください");
    EXPECT_TRUE(session_.ExistsInHome("SMB\\BOLT\\EYE.TXT"));
}

TEST_F(RemoveTest, TheLastEntryLeavesACategoryThatCanBeDeleted) {
    StartWith("VLM_MAIN");
    ChooseCategory(large_);
    ChooseOnEntry("平座金", "VlmMnuPopDel");
    ExpectQuestion("平座金 を削除します。よろしいですか", askEntry_);
    Run().AnswerYes();
    EXPECT_THAT(ListedEntries(), ElementsAre());
    ChooseOnCategory(large_, "VlmMnuPopDel");
    ExpectQuestion("大形を削除します。よろしいですか", askCategory_);
    Run().AnswerYes();
    EXPECT_EQ(Categories(), firstCategories_.first(3));
    EXPECT_EQ(SelectedCategory(), QString("トルヴィク > 座金"));
    EXPECT_THAT(Run().Tree("VlmTreeView"), ElementsAre("トルヴィク", "  ボルト", "  座金"));
}

TEST_F(RemoveTest, OfEqualNamesTheFirst) {
    MakeLibrary("INSERT INTO PDFFileTable (FolderID, PDFName, PDFFileName, SLDFileName) VALUES "
                "(2, '記号', 'B.PDF', ''), (4, '記号', 'C.PDF', '');");
    StartWith("VLM_MAIN");
    ChooseCategory(bolts_);
    Run().RightClick("VlmPdfList", Item::Cell(3, 0));
    Run().WaitForWindow("VlmMnuPop");
    Run().ClickAction("VlmMnuPopDel");
    ExpectQuestion("記号 を削除します。よろしいですか", askEntry_);
    Run().AnswerYes();
    EXPECT_THAT(Entries(), ElementsAre(firstEntries_[0], firstEntries_[1], firstEntries_[3],
                                       "5|2|記号|B.PDF|", "6|4|記号|C.PDF|"));
}

TEST_F(RemoveTest, ANameWithAQuote) {
    MakeLibrary("INSERT INTO PDFFileTable (FolderID, PDFName, PDFFileName, SLDFileName) VALUES "
                "(2, '3/8'' bolt', 'B.PDF', '');");
    StartWith("VLM_MAIN");
    ChooseCategory(bolts_);
    OpenPopUpOnEntry("記号");
    LeavePopUp();
    Run().Click("VlmPdfList", Item::Named("3/8' bolt"));
    ExpectError({"3075"});
    Run().ClickMenu("VlmMnuEditDel");
    ExpectTableError();
    EXPECT_EQ(Entries().size(), 5);
    Run().Click("VlmPdfList", Item::Named("記号"));
    EXPECT_EQ(SelectedEntry(), QString("記号"));
}

TEST_F(RemoveTest, AnEntryThatIsGoneAlready) {
    StartWith("VLM_MAIN");
    ChooseCategory(bolts_);
    Run().Click("VlmPdfList", Item::Named("記号"));
    Execute("DELETE FROM PDFFileTable WHERE ID = 3");
    Run().Press("Delete");
    ExpectTableError();
    EXPECT_EQ(Entries().size(), 3);
}

TEST_F(RemoveTest, AnEntryThatVanishesDuringTheQuestion) {
    StartWith("VLM_MAIN");
    ChooseCategory(bolts_);
    ChooseOnEntry("記号", "VlmMnuPopDel");
    ExpectQuestion("記号 を削除します。よろしいですか", askEntry_);
    Execute("DELETE FROM PDFFileTable WHERE ID = 3");
    Run().AnswerYes();
    ExpectTableError();
    EXPECT_THAT(Entries(), ElementsAre(firstEntries_[0], firstEntries_[1], firstEntries_[3]));
}

} // namespace
} // namespace velmo
