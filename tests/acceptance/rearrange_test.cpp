#include "library_run.h"

namespace velmo {
namespace {

using testing::ElementsAre;

// Categories that are cut, copied and pasted.
class RearrangeTest : public LibraryRunTest {
protected:
    void Cut(const QStringList& path) { ChooseOnCategory(path, "VlmMnuPopCut"); }
    void Copy(const QStringList& path) { ChooseOnCategory(path, "VlmMnuPopCopy"); }
    void Paste(const QStringList& path) { ChooseOnCategory(path, "VlmMnuPopPaste"); }
    // A paste by which the tree would lose the category; the question stays open.
    void PasteLosing(const QStringList& path, const QString& lost) {
        Paste(path);
        ExpectQuestion(
            QStringLiteral(
                "移動先は、移動する分類「%1」の中にあります。\n\n移動すると、「%1」とその下の分類と"
                "シンボルはツリーに表示されなくなります。移動してよろしいですか")
                .arg(lost),
            "VELMO2");
    }
};

TEST_F(RearrangeTest, ACutCategoryMovesWithAllBelowIt) {
    StartWith("VLM_MAIN");
    Cut(washers_);
    EXPECT_EQ(Categories(), firstCategories_);
    Paste(bolts_);
    EXPECT_THAT(Categories(), ElementsAre(firstCategories_[0], firstCategories_[1],
                                          R"(3|2|座金|SMB\WASH\WASH.SLD)", firstCategories_[3]));
    EXPECT_EQ(Entries(), firstEntries_);
    EXPECT_EQ(SelectedCategory(), QString("トルヴィク > ボルト"));
    EXPECT_THAT(ListedEntries(), ElementsAre("六角ボルト", "アイボルト", "記号"));
    ChooseCategory({"トルヴィク", "ボルト", "座金", "大形"});
    EXPECT_EQ(Panel(0), QString("ボルト － 座金 － 大形"));
    EXPECT_THAT(ListedEntries(), ElementsAre("平座金"));
}

TEST_F(RearrangeTest, ACopyIsTheCategoryAloneAndItsEntriesStayWhereTheyAre) {
    StartWith("VLM_MAIN");
    Copy(washers_);
    Paste(bolts_);
    EXPECT_EQ(Categories(), firstCategories_ + QStringList(R"(5|2|座金|SMB\WASH\WASH.SLD)"));
    EXPECT_EQ(Entries(), firstEntries_);
    ChooseCategory({"トルヴィク", "ボルト", "座金"});
    EXPECT_EQ(Run().Describe("VlmTreeView", Item::Path({"トルヴィク", "ボルト", "座金"}))["children"].toInt(),
              0);
    Copy(large_);
    Paste(washers_);
    EXPECT_EQ(Categories().last(), QString(R"(6|3|大形|SMB\WASH\LARGE.SLD)"));
    EXPECT_EQ(Entries(),
              firstEntries_ + QStringList(R"(5|4|平座金|SMB\WASH\WASHER.TXT|SMB\WASH\WASHER.SLD)"));
    ChooseCategory(large_);
    EXPECT_THAT(ListedEntries(), ElementsAre("平座金", "平座金"));
    Run().Click("VlmTreeView", Item::Path(washers_));
    Run().Press("Down");
    Run().Press("Down");
    EXPECT_EQ(SelectedCategory(), QString("トルヴィク > 座金 > 大形"));
    EXPECT_THAT(ListedEntries(), ElementsAre());
}

TEST_F(RearrangeTest, CutAndCopyShowNothing) {
    StartWith("VLM_MAIN");
    ChooseCategory(bolts_);
    const QImage before = Run().Picture("VlmTreeView");
    Cut(bolts_);
    Copy(bolts_);
    EXPECT_EQ(Run().Picture("VlmTreeView"), before);
    EXPECT_EQ(Panel(0), QString("ボルト"));
}

TEST_F(RearrangeTest, TheLastOneRememberedCounts) {
    StartWith("VLM_MAIN");
    Cut(bolts_);
    Copy(large_);
    Cut(large_);
    Paste(root_);
    EXPECT_EQ(Categories()[1], firstCategories_[1]);
    EXPECT_EQ(Categories()[3], QString(R"(4|1|大形|SMB\WASH\LARGE.SLD)"));
    EXPECT_THAT(Run().Tree("VlmTreeView"), ElementsAre("トルヴィク", "  ボルト", "  座金", "  大形"));
    EXPECT_EQ(Categories().size(), 4);
}

TEST_F(RearrangeTest, ASecondPasteCopiesOnceMore) {
    StartWith("VLM_MAIN");
    Copy(large_);
    Paste(root_);
    Paste(bolts_);
    EXPECT_EQ(Categories(), firstCategories_ + QStringList({R"(5|1|大形|SMB\WASH\LARGE.SLD)",
                                                            R"(6|2|大形|SMB\WASH\LARGE.SLD)"}));
    // The second time there were two of the entry to copy.
    EXPECT_EQ(Entries().size(), firstEntries_.size() + 3);
    for (const QString& entry : Entries().mid(3))
        EXPECT_TRUE(entry.mid(1).startsWith("|4|平座金|")) << entry.toStdString();
}

TEST_F(RearrangeTest, ASecondPasteAfterACutCopies) {
    StartWith("VLM_MAIN");
    Cut(large_);
    Paste(root_);
    Paste(bolts_);
    EXPECT_THAT(Categories(),
                ElementsAre(firstCategories_[0], firstCategories_[1], firstCategories_[2],
                            R"(4|1|大形|SMB\WASH\LARGE.SLD)", R"(5|2|大形|SMB\WASH\LARGE.SLD)"));
    EXPECT_EQ(Entries().size(), firstEntries_.size() + 1);
}

TEST_F(RearrangeTest, WhatIsRememberedOutlivesOtherCommands) {
    StartWith("VLM_MAIN");
    Cut(large_);
    AddCategoryBelow(bolts_);
    Fill("Name2", "新");
    ConfirmEditor();
    EditEntry(bolts_, "記号");
    Run().Press("Escape");
    Run().WaitUntilClosed("Vlm_TBlEdt");
    Paste({"トルヴィク", "ボルト", "新"});
    EXPECT_EQ(Categories()[3], QString(R"(4|5|大形|SMB\WASH\LARGE.SLD)"));
}

TEST_F(RearrangeTest, ACopyBesideItsOriginal) {
    StartWith("VLM_MAIN");
    Copy(bolts_);
    Paste(root_);
    EXPECT_EQ(Categories().last(), QString(R"(5|1|ボルト|SMB\BOLT\BOLT.SLD)"));
    EXPECT_THAT(Run().Tree("VlmTreeView"),
                ElementsAre("トルヴィク", "  ボルト", "  座金+", "    大形", "  ボルト"));
    EXPECT_EQ(Entries().size(), firstEntries_.size() + 3);
}

TEST_F(RearrangeTest, ACategoryCopiedIntoItself) {
    StartWith("VLM_MAIN");
    Copy(bolts_);
    Paste(bolts_);
    EXPECT_EQ(Categories().last(), QString(R"(5|2|ボルト|SMB\BOLT\BOLT.SLD)"));
    ChooseCategory({"トルヴィク", "ボルト", "ボルト"});
    EXPECT_EQ(Panel(0), QString("ボルト － ボルト"));
}

TEST_F(RearrangeTest, ACategoryCutIntoItselfIsLostAndTheBrowserStaysUsable) {
    StartWith("VLM_MAIN");
    Cut(bolts_);
    PasteLosing(bolts_, "ボルト");
    Run().AnswerYes();
    ExpectError({"35601"});
    EXPECT_EQ(Categories()[1], QString(R"(2|2|ボルト|SMB\BOLT\BOLT.SLD)"));
    EXPECT_THAT(Run().Tree("VlmTreeView"), ElementsAre("トルヴィク", "  座金+", "    大形"));
    ChooseCategory(large_);
    EXPECT_EQ(Panel(0), QString("座金 － 大形"));
    EXPECT_THAT(ListedEntries(), ElementsAre("平座金"));
    AddCategoryBelow(root_);
    Fill("Name2", "新");
    ConfirmEditor();
    EXPECT_EQ(SelectedCategory(), QString("トルヴィク > 新"));
    OpenEntry(large_, "平座金");
}

TEST_F(RearrangeTest, ALossThatIsNotWantedChangesNothing) {
    StartWith("VLM_MAIN");
    Cut(washers_);
    PasteLosing(large_, "座金");
    // No is the usual answer.
    Run().Press("Return");
    EXPECT_EQ(Categories(), firstCategories_);
    EXPECT_EQ(SelectedCategory(), QString("トルヴィク > 座金 > 大形"));
    EXPECT_THAT(ListedEntries(), ElementsAre("平座金"));
    Paste(bolts_);
    EXPECT_EQ(Categories()[2], QString(R"(3|2|座金|SMB\WASH\WASH.SLD)")) << "it was still remembered";
}

TEST_F(RearrangeTest, AfterALossNoCommandWorksOnWhatIsGone) {
    StartWith("VLM_MAIN");
    Cut(bolts_);
    PasteLosing(bolts_, "ボルト");
    Run().AnswerYes();
    ExpectError({"35601"});
    EXPECT_EQ(SelectedCategory(), QString());
    EXPECT_THAT(ListedEntries(), ElementsAre());
    for (const char* key : {"Insert", "F2", "Delete"})
        Run().Press(key);
    EXPECT_FALSE(Run().IsWindowShown("Vlm_TBlEdt"));
    Run().Click("VlmPdfList");
    for (const char* key : {"Insert", "F2", "Delete"})
        Run().Press(key);
    EXPECT_FALSE(Run().IsWindowShown("Vlm_TBlEdt"));
    Run().RightClickEmpty("VlmPdfList");
    EXPECT_FALSE(Run().IsWindowShown("VlmMnuPop"));
    Run().ClickMenu("VlmMnuEdit");
    EXPECT_THAT(Run().MenuEntries("VlmMnuEdit"), ElementsAre("(新規登録(&I))", "(削除(&D))", "(変更(&E))"));
    Run().Press("Escape");
    Run().ClickAction("Tbar_Open");
    ExpectRefusal("シンボルを選択してください");
    Run().ClickAction("Tbar_Cancel");
    EXPECT_EQ(End(), 0);
}

TEST_F(RearrangeTest, ACategoryCutIntoItsOwnDescendantIsLost) {
    StartWith("VLM_MAIN");
    Cut(washers_);
    PasteLosing(large_, "座金");
    Run().AnswerYes();
    ExpectError({"35601"});
    EXPECT_EQ(Categories()[2], QString(R"(3|4|座金|SMB\WASH\WASH.SLD)"));
    EXPECT_THAT(Run().Tree("VlmTreeView"), ElementsAre("トルヴィク", "  ボルト"));
    ChooseCategory(bolts_);
    EXPECT_EQ(Panel(0), QString("ボルト"));
}

TEST_F(RearrangeTest, ACutRootLeavesNoTree) {
    StartWith("VLM_MAIN");
    Cut(root_);
    PasteLosing(bolts_, "トルヴィク");
    Run().AnswerYes();
    ExpectError({"3021"});
    EXPECT_THAT(Run().Tree("VlmTreeView"), ElementsAre());
    Run().ClickAction("Tbar_Cancel");
    EXPECT_EQ(End(), 0);
}

TEST_F(RearrangeTest, ARememberedCategoryThatIsGone) {
    StartWith("VLM_MAIN");
    Cut(large_);
    Execute("DELETE FROM FolderTable WHERE ID = 4");
    Paste(bolts_);
    EXPECT_EQ(Categories(), firstCategories_.first(3));
    EXPECT_EQ(Entries(), firstEntries_);
    // A copy takes what entries still name it.
    Paste(bolts_);
    EXPECT_EQ(Categories(), firstCategories_.first(3));
    EXPECT_EQ(Entries(),
              firstEntries_ + QStringList(R"(5|4|平座金|SMB\WASH\WASHER.TXT|SMB\WASH\WASHER.SLD)"));
}

TEST_F(RearrangeTest, ATargetThatIsGone) {
    StartWith("VLM_MAIN");
    Copy(bolts_);
    OpenPopUpOnCategory(washers_);
    Execute("DELETE FROM FolderTable WHERE ID >= 3");
    Run().ClickAction("VlmMnuPopPaste");
    // The copy hangs below what is gone, as it would below any number.
    EXPECT_EQ(Categories().last(), QString(R"(5|3|ボルト|SMB\BOLT\BOLT.SLD)"));
    EXPECT_THAT(Run().Tree("VlmTreeView"), ElementsAre("トルヴィク", "  ボルト"));
    EXPECT_EQ(SelectedCategory(), QString("トルヴィク"));
}

} // namespace
} // namespace velmo
