#include "library_run.h"

#include <QDir>

namespace velmo {
namespace {

using testing::ElementsAre;

// The folder picker, opened from the move tool.
class PickFolderTest : public LibraryRunTest {
protected:
    void SetUp() override {
        LibraryRunTest::SetUp();
        session_.WriteHome("SMB\\BOLT\\pagefile.sys\\A.TXT", "");
        session_.WriteHome("SMB\\BOLT\\PAGEFILE.SYS\\A.TXT", "");
        StartWith("VLM_MAIN");
    }
    // The picker for an entry of a category.
    void OpenPicker(const QString& button, const QStringList& category, const QString& entry) {
        ChooseOnCategory(category, "VlmMnuPopTool");
        Run().WaitForWindow("Vlm_Tool");
        Run().Click("SelList", Item::Named(entry));
        Run().Click(button);
        Run().WaitForWindow("Vlm_SelDir");
    }
    void OpenDisk() { OpenPicker("FilMovBtn", bolts_, "アイボルト"); }
    void OpenCategories() { OpenPicker("FolDerMovBtn", bolts_, "アイボルト"); }
    void Click(const QStringList& folder) {
        Unfold(folder, "VlmDirTV");
        Run().Click("VlmDirTV", Item::Path(folder));
    }
    void Close(const QString& button) {
        Run().Click(button);
        Run().WaitUntilClosed("Vlm_SelDir");
    }
    bool IsExpanded(const QStringList& folder) {
        return Run().Describe("VlmDirTV", Item::Path(folder))["expanded"].toBool();
    }
    bool IsSelected(const QStringList& folder) {
        return Run().Describe("VlmDirTV", Item::Path(folder))["selected"].toBool();
    }
    QString Spelled(const QString& folder) const { return session_.HomeDir().toUpper() + folder; }

    const QStringList boltFolder_ = {"トルヴィク", "SMB", "BOLT"};
    const QStringList washFolder_ = {"トルヴィク", "SMB", "WASH"};
};

TEST_F(PickFolderTest, ShowsTheFoldersOfTheDisk) {
    OpenDisk();
    EXPECT_EQ(Title("Vlm_SelDir"), QString("フォルダ選択"));
    EXPECT_TRUE(Run().Window("Vlm_SelDir")["modal"].toBool());
    EXPECT_EQ(Run().Text("SelDir"), QString());
    QStringList tree = Run().Tree("VlmDirTV");
    EXPECT_EQ(tree.takeFirst(), QString("トルヴィク"));
    tree.sort();
    EXPECT_THAT(tree, ElementsAre("    sub", "    sub", "  SMB+", "  syst+"));
    Click(washFolder_);
    EXPECT_EQ(Run().Text("SelDir"), Spelled("SMB\\WASH\\"));
    Click({"トルヴィク"});
    EXPECT_EQ(Run().Text("SelDir"), Spelled(""));
}

TEST_F(PickFolderTest, PassesOverThePageFileAsItIsSpelled) {
    OpenDisk();
    Unfold(boltFolder_, "VlmDirTV");
    Run().ClickBranch("VlmDirTV", Item::Path(boltFolder_));
    const QJsonObject bolt = Run().Describe("VlmDirTV", Item::Path(boltFolder_));
    EXPECT_EQ(bolt["children"].toInt(), 1);
    EXPECT_EQ(
        Run().Describe("VlmDirTV", Item::Path(boltFolder_ + QStringList("PAGEFILE.SYS")))["text"].toString(),
        QString("PAGEFILE.SYS"));
}

TEST_F(PickFolderTest, OpensAtThePreviousFolder) {
    OpenDisk();
    Click(washFolder_);
    Close("OkBtn");
    Run().WaitUntilClosed("Vlm_Tool");
    EXPECT_TRUE(session_.ExistsInHome("SMB\\WASH\\EYE.TXT"));
    OpenPicker("FilMovBtn", bolts_, "六角ボルト");
    EXPECT_EQ(Run().Text("SelDir"), Spelled("SMB\\WASH\\"));
    EXPECT_TRUE(IsExpanded({"トルヴィク", "SMB"}));
    EXPECT_TRUE(IsSelected(washFolder_));
    EXPECT_TRUE(Run().Describe("VlmDirTV", Item::Path(washFolder_))["visible"].toBool());
    Close("OkBtn");
    Run().WaitUntilClosed("Vlm_Tool");
    EXPECT_EQ(Entries().first(), QString(R"(1|2|六角ボルト|SMB\WASH\HEX.TXT|SMB\WASH\HEX.SLD)"));
}

TEST_F(PickFolderTest, APreviousFolderThatIsGoneIsNotProposed) {
    session_.WriteHome("GONE\\A.TXT", "");
    OpenDisk();
    Click({"トルヴィク", "GONE"});
    Close("OkBtn");
    Run().WaitUntilClosed("Vlm_Tool");
    QDir(session_.Home() + "/GONE").removeRecursively();
    OpenPicker("FilMovBtn", bolts_, "六角ボルト");
    EXPECT_EQ(Run().Text("SelDir"), QString());
    Close("OkBtn");
    EXPECT_TRUE(Run().IsWindowShown("Vlm_Tool"));
    EXPECT_EQ(Entries().first(), firstEntries_.first());
}

TEST_F(PickFolderTest, OkWithoutAFolderMovesNothing) {
    OpenDisk();
    Close("OkBtn");
    EXPECT_TRUE(Run().IsWindowShown("Vlm_Tool"));
    EXPECT_EQ(Entries(), firstEntries_);
}

TEST_F(PickFolderTest, LeavingMovesNothing) {
    for (const char* button : {"FilMovBtn", "FolDerMovBtn"}) {
        OpenPicker(button, bolts_, "アイボルト");
        Click({"トルヴィク"});
        Close("CanBtn");
        EXPECT_TRUE(Run().IsWindowShown("Vlm_Tool"));
        Run().Click(button);
        Run().WaitForWindow("Vlm_SelDir");
        Click({"トルヴィク"});
        Run().CloseWindow("Vlm_SelDir");
        Run().WaitUntilClosed("Vlm_SelDir");
        Run().Click("CanBtn");
        Run().WaitUntilClosed("Vlm_Tool");
    }
    EXPECT_EQ(Entries(), firstEntries_);
}

TEST_F(PickFolderTest, ShowsTheCategories) {
    OpenCategories();
    EXPECT_EQ(Title("Vlm_SelDir"), QString("フォルダ選択"));
    EXPECT_THAT(Run().Tree("VlmDirTV"), ElementsAre("トルヴィク", "  ボルト", "  座金+", "    大形"));
    EXPECT_EQ(Run().Text("SelDir"), QString());
    Click(large_);
    const QString choice = Run().Text("SelDir");
    EXPECT_TRUE(choice.contains("座金") && choice.endsWith("大形")) << choice.toStdString();
    Close("OkBtn");
    Run().WaitUntilClosed("Vlm_Tool");
    EXPECT_EQ(Entries()[1].left(4), QString("2|4|"));
}

TEST_F(PickFolderTest, OkWithoutACategoryGivesTheNumberZero) {
    OpenCategories();
    Run().Click("OkBtn");
    Run().WaitForMessage();
    Run().AnswerYes();
    Run().WaitUntilClosed("Vlm_Tool");
    EXPECT_EQ(Entries()[1].left(4), QString("2|0|"));
    EXPECT_THAT(ListedEntries(), ElementsAre("六角ボルト", "記号"));
}

TEST_F(PickFolderTest, ACategoryChosenBeforeIsNoFolderOfTheDisk) {
    OpenCategories();
    Click(washers_);
    Close("OkBtn");
    Run().WaitUntilClosed("Vlm_Tool");
    OpenPicker("FilMovBtn", bolts_, "六角ボルト");
    EXPECT_EQ(Run().Text("SelDir"), QString());
    Click(washFolder_);
    Close("OkBtn");
    Run().WaitUntilClosed("Vlm_Tool");
    OpenPicker("FolDerMovBtn", bolts_, "六角ボルト");
    EXPECT_EQ(Run().Text("SelDir"), QString());
    EXPECT_EQ(Run().Tree("VlmDirTV").first(), QString("トルヴィク"));
    EXPECT_TRUE(Run().Tree("VlmDirTV").contains("  ボルト"));
}

TEST_F(PickFolderTest, ARightClickChoosesAndOffersTwoEntriesThatDoNothing) {
    OpenDisk();
    Unfold(washFolder_, "VlmDirTV");
    for (const char* entry : {"SelDirPopAdd", "SelDirPopRen"}) {
        Run().RightClick("VlmDirTV", Item::Path(washFolder_));
        Run().WaitForWindow("SelDirPop");
        EXPECT_TRUE(Run().Action(entry)["enabled"].toBool());
        EXPECT_EQ(Run().Text("SelDir"), Spelled("SMB\\WASH\\"));
        EXPECT_TRUE(IsSelected(washFolder_));
        Run().ClickAction(entry);
        Run().WaitUntilClosed("SelDirPop");
        EXPECT_TRUE(Run().IsWindowShown("Vlm_SelDir"));
        EXPECT_EQ(Run().Text("SelDir"), Spelled("SMB\\WASH\\"));
    }
    EXPECT_EQ(Run().MenuEntries("SelDirPop").size(), 2);
}

TEST_F(PickFolderTest, ARightClickOverACategory) {
    OpenCategories();
    Run().RightClick("VlmDirTV", Item::Path(washers_));
    Run().WaitForWindow("SelDirPop");
    Run().Press("Escape");
    Run().WaitUntilClosed("SelDirPop");
    EXPECT_TRUE(IsSelected(washers_));
    Close("OkBtn");
    Run().WaitUntilClosed("Vlm_Tool");
    EXPECT_EQ(Entries()[1].left(4), QString("2|3|"));
}

TEST_F(PickFolderTest, KeysChooseAsTheMouseDoes) {
    OpenCategories();
    Click({"トルヴィク"});
    Run().Press("Down");
    Run().Press("Down");
    EXPECT_TRUE(IsSelected(washers_));
    Run().Press("Return");
    Run().WaitUntilClosed("Vlm_SelDir");
    Run().WaitUntilClosed("Vlm_Tool");
    EXPECT_EQ(Entries()[1].left(4), QString("2|3|"));
}

TEST_F(PickFolderTest, KeepsTheSizeThatItWasGivenForTheSession) {
    OpenDisk();
    const QJsonArray first = Run().Window("Vlm_SelDir")["rect"].toArray();
    const QSize larger(first[2].toInt() + 70, first[3].toInt() + 50);
    Run().ResizeWindow("Vlm_SelDir", larger);
    Close("CanBtn");
    Run().Click("FilMovBtn");
    Run().WaitForWindow("Vlm_SelDir");
    const QJsonArray second = Run().Window("Vlm_SelDir")["rect"].toArray();
    EXPECT_EQ(QSize(second[2].toInt(), second[3].toInt()), larger);
}

} // namespace
} // namespace velmo
