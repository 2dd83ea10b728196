#include "library_run.h"

#include <QDir>

namespace velmo {
namespace {

using testing::ElementsAre;

// The file picker, opened from the entry editor.
class PickFileTest : public LibraryRunTest {
protected:
    void SetUp() override {
        LibraryRunTest::SetUp();
        session_.WriteHome("SMB\\BOLT\\HEX.PDF", "document");
        session_.WriteHome("SMB\\BOLT\\lower.pdf", "document");
        session_.WriteHome("Docs\\Sub\\Plan.PDF", "document");
        session_.WriteHome("TOP.SLD", session_.ReadHome("SMB\\BOLT\\HEX.SLD"));
        StartWith("VLM_MAIN");
    }
    void Browse(const QString& button) {
        Run().Click(button);
        Run().WaitForWindow("Vlm_FileFrm");
    }
    void ChooseFolder(const QStringList& folder) {
        Unfold(folder, "VlmFileTV");
        Run().Click("VlmFileTV", Item::Path(folder));
    }
    void ChooseFile(const QString& file) { Run().Click("Vlm_File", Item::Named(file)); }
    void Accept() {
        Run().Click("Vlm_FilOKBtn");
        Run().WaitUntilClosed("Vlm_FileFrm");
    }
    void Pick(const QString& button, const QStringList& folder, const QString& file) {
        Browse(button);
        ChooseFolder(folder);
        ChooseFile(file);
        Accept();
    }
    QStringList Files() { return Run().Column("Vlm_File", 0); }
    bool IsExpanded(const QStringList& folder) {
        return Run().Describe("VlmFileTV", Item::Path(folder))["expanded"].toBool();
    }

    const QStringList boltFolder_ = {"トルヴィク", "SMB", "BOLT"};
    const QStringList washFolder_ = {"トルヴィク", "SMB", "WASH"};
};

TEST_F(PickFileTest, ASlideForACategory) {
    AddCategoryBelow(bolts_);
    Browse("Srch3");
    EXPECT_EQ(Title("Vlm_FileFrm"), QString("SLDファイル選択"));
    EXPECT_TRUE(Run().Window("Vlm_FileFrm")["modal"].toBool());
    EXPECT_FALSE(Run().Window("Vlm_TBlEdt")["onTop"].toBool());
    EXPECT_THAT(Files(), ElementsAre("TOP.SLD"));
    ChooseFolder(boltFolder_);
    EXPECT_THAT(Files(), ElementsAre("BOLT.SLD", "EYE.SLD", "HEX.SLD"));
    ChooseFile("EYE.SLD");
    EXPECT_EQ(Run().Text("Vlm_Text"), QString("EYE.SLD"));
    Accept();
    EXPECT_TRUE(Run().Window("Vlm_TBlEdt")["onTop"].toBool());
    EXPECT_EQ(Run().Text("Name3"), QString(R"(SMB\BOLT\EYE.SLD)"));
    Fill("Name2", "新");
    ConfirmEditor();
    EXPECT_EQ(Categories().last(), QString(R"(5|2|新|SMB\BOLT\EYE.SLD)"));
}

TEST_F(PickFileTest, ADocumentProposesItsSlide) {
    AddEntry(washers_);
    Browse("Srch3");
    EXPECT_EQ(Title("Vlm_FileFrm"), QString("PDFファイル選択"));
    EXPECT_THAT(Files(), ElementsAre());
    ChooseFolder(boltFolder_);
    EXPECT_THAT(Files(), ElementsAre("HEX.PDF", "lower.pdf"));
    ChooseFile("HEX.PDF");
    Accept();
    EXPECT_EQ(Run().Text("Name3"), QString(R"(SMB\BOLT\HEX.PDF)"));
    EXPECT_EQ(Run().Text("Name4"), QString(R"(SMB\BOLT\HEX.SLD)"));
    // The slide that stands there already stays.
    Pick("Srch3", boltFolder_, "lower.pdf");
    EXPECT_EQ(Run().Text("Name3"), QString(R"(SMB\BOLT\lower.pdf)"));
    EXPECT_EQ(Run().Text("Name4"), QString(R"(SMB\BOLT\HEX.SLD)"));
    Fill("Name4", "");
    Pick("Srch3", boltFolder_, "lower.pdf");
    EXPECT_EQ(Run().Text("Name4"), QString(R"(SMB\BOLT\lower.SLD)"));
}

TEST_F(PickFileTest, ASlideProposesItsDocument) {
    AddEntry(washers_);
    Browse("Srch4");
    EXPECT_EQ(Title("Vlm_FileFrm"), QString("SLDファイル選択"));
    EXPECT_TRUE(Run().Window("Vlm_TBlEdt")["onTop"].toBool());
    ChooseFile("TOP.SLD");
    Accept();
    EXPECT_EQ(Run().Text("Name4"), QString("TOP.SLD"));
    EXPECT_EQ(Run().Text("Name3"), QString("TOP.PDF"));
    Pick("Srch4", boltFolder_, "EYE.SLD");
    EXPECT_EQ(Run().Text("Name4"), QString(R"(SMB\BOLT\EYE.SLD)"));
    EXPECT_EQ(Run().Text("Name3"), QString("TOP.PDF"));
}

TEST_F(PickFileTest, LeavingThePickerChangesNoName) {
    EditEntry(bolts_, "アイボルト");
    const QList<std::function<void()>> ways = {[this] { Run().Click("Vlm_FilCanBtn"); },
                                               [this] { Run().Press("Escape"); },
                                               [this] { Run().CloseWindow("Vlm_FileFrm"); }};
    for (const auto& leave : ways) {
        Browse("Srch4");
        ChooseFolder(boltFolder_);
        ChooseFile("HEX.SLD");
        leave();
        Run().WaitUntilClosed("Vlm_FileFrm");
        EXPECT_EQ(Run().Text("Name3"), QString(R"(SMB\BOLT\EYE.TXT)"));
        EXPECT_EQ(Run().Text("Name4"), QString(R"(SMB\BOLT\EYE.SLD)"));
    }
}

TEST_F(PickFileTest, AsksForAFile) {
    AddCategoryBelow(bolts_);
    Browse("Srch3");
    Run().Click("Vlm_FilOKBtn");
    ExpectRefusal("ファイルを選択してください");
    EXPECT_TRUE(Run().IsWindowShown("Vlm_FileFrm"));
    ChooseFile("TOP.SLD");
    // Another folder forgets the file.
    ChooseFolder(washFolder_);
    Run().Click("Vlm_FilOKBtn");
    ExpectRefusal("ファイルを選択してください");
    EXPECT_TRUE(Run().IsWindowShown("Vlm_FileFrm"));
    EXPECT_EQ(Run().Text("Vlm_Text"), QString());
}

TEST_F(PickFileTest, FoldersAreReadWhenTheyAreOpened) {
    AddCategoryBelow(bolts_);
    Browse("Srch3");
    QStringList tree = Run().Tree("VlmFileTV");
    EXPECT_EQ(tree.takeFirst(), QString("トルヴィク"));
    tree.sort();
    EXPECT_THAT(tree, ElementsAre("    sub", "    sub", "    sub", "  Docs+", "  SMB+", "  syst+"));
    Run().ClickBranch("VlmFileTV", Item::Path({"トルヴィク", "SMB"}));
    EXPECT_TRUE(IsExpanded({"トルヴィク", "SMB"}));
    session_.WriteHome("SMB\\LATE\\A.SLD", "");
    Run().ClickBranch("VlmFileTV", Item::Path({"トルヴィク", "SMB"}));
    Run().ClickBranch("VlmFileTV", Item::Path({"トルヴィク", "SMB"}));
    EXPECT_EQ(Run().Describe("VlmFileTV", Item::Path({"トルヴィク", "SMB"}))["children"].toInt(), 2);
    // A folder without folders only loses the mark.
    Run().ClickBranch("VlmFileTV", Item::Path(boltFolder_));
    EXPECT_EQ(Run().Describe("VlmFileTV", Item::Path(boltFolder_))["children"].toInt(), 0);
    EXPECT_THAT(Files(), ElementsAre("TOP.SLD"));
    // A folder that appeared meanwhile is seen the next time.
    Run().Press("Escape");
    Run().WaitUntilClosed("Vlm_FileFrm");
    Browse("Srch3");
    Run().ClickBranch("VlmFileTV", Item::Path({"トルヴィク", "SMB"}));
    EXPECT_EQ(Run().Describe("VlmFileTV", Item::Path({"トルヴィク", "SMB"}))["children"].toInt(), 3);
}

TEST_F(PickFileTest, ShowsTheSlideOfAFile) {
    AddEntry(washers_);
    Browse("Srch4");
    const QImage empty = Run().Picture("Vlm_FileSlide");
    ChooseFolder(boltFolder_);
    ChooseFile("BOLT.SLD");
    const QImage bolt = Run().Picture("Vlm_FileSlide");
    EXPECT_NE(bolt, empty);
    Run().Press("Down");
    EXPECT_EQ(Run().Text("Vlm_Text"), QString("EYE.SLD"));
    const QImage eye = Run().Picture("Vlm_FileSlide");
    EXPECT_NE(eye, bolt);
    Run().Press("End");
    EXPECT_EQ(Run().Text("Vlm_Text"), QString("HEX.SLD"));
    const QImage hex = Run().Picture("Vlm_FileSlide");
    EXPECT_NE(hex, eye);
    Run().Press("Home");
    EXPECT_EQ(Run().Picture("Vlm_FileSlide"), bolt);
    Run().Press("Escape");
    Run().WaitUntilClosed("Vlm_FileFrm");

    // A document's slide is the one of the same name.
    Browse("Srch3");
    ChooseFolder(boltFolder_);
    ChooseFile("HEX.PDF");
    EXPECT_EQ(Run().Picture("Vlm_FileSlide"), hex);
    ChooseFile("lower.pdf");
    EXPECT_NE(Run().Picture("Vlm_FileSlide"), hex);
    EXPECT_EQ(Run().Text("Vlm_Text"), QString("lower.pdf"));
}

TEST_F(PickFileTest, OpensAtThePreviousChoice) {
    AddEntry(washers_);
    Pick("Srch3", {"トルヴィク", "Docs", "Sub"}, "Plan.PDF");
    EXPECT_EQ(Run().Text("Name3"), QString(R"(DOCS\SUB\Plan.PDF)"));
    Browse("Srch3");
    EXPECT_TRUE(IsExpanded({"トルヴィク", "Docs"}));
    EXPECT_FALSE(IsExpanded({"トルヴィク", "SMB"}));
    EXPECT_THAT(Files(), ElementsAre("Plan.PDF"));
    ChooseFile("Plan.PDF");
    Accept();
    EXPECT_EQ(Run().Text("Name3"), QString(R"(DOCS\SUB\Plan.PDF)"));
    // Forgotten by a cancel.
    Browse("Srch3");
    Run().Click("Vlm_FilCanBtn");
    Run().WaitUntilClosed("Vlm_FileFrm");
    Browse("Srch3");
    EXPECT_FALSE(IsExpanded({"トルヴィク", "Docs"}));
}

TEST_F(PickFileTest, APreviousChoiceWhoseFolderIsGoneOpensTheHomeFolder) {
    AddEntry(washers_);
    Pick("Srch3", {"トルヴィク", "Docs", "Sub"}, "Plan.PDF");
    QDir(session_.Home() + "/Docs").removeRecursively();
    Browse("Srch4");
    EXPECT_THAT(Files(), ElementsAre("TOP.SLD"));
    ChooseFile("TOP.SLD");
    Accept();
    EXPECT_EQ(Run().Text("Name4"), QString("TOP.SLD"));
}

TEST_F(PickFileTest, ADoubleClickPicks) {
    AddCategoryBelow(bolts_);
    Browse("Srch3");
    ChooseFolder(boltFolder_);
    Run().DoubleClick("Vlm_File", Item::Named("HEX.SLD"));
    Run().WaitUntilClosed("Vlm_FileFrm");
    EXPECT_EQ(Run().Text("Name3"), QString(R"(SMB\BOLT\HEX.SLD)"));
}

TEST_F(PickFileTest, KeysAlonePick) {
    AddCategoryBelow(bolts_);
    Browse("Srch3");
    ChooseFolder(boltFolder_);
    while (Run().Focus() != "Vlm_File")
        Run().Press("Tab");
    Run().Press("Down");
    EXPECT_EQ(Run().Text("Vlm_Text").right(4), QString(".SLD"));
    const QString file = Run().Text("Vlm_Text");
    Run().Press("Return");
    Run().WaitUntilClosed("Vlm_FileFrm");
    EXPECT_EQ(Run().Text("Name3"), R"(SMB\BOLT\)" + file);
}

TEST_F(PickFileTest, KeepsTheSizeThatItWasGivenForTheSession) {
    AddCategoryBelow(bolts_);
    Browse("Srch3");
    const QJsonArray first = Run().Window("Vlm_FileFrm")["rect"].toArray();
    const QSize other(first[2].toInt() - 80, first[3].toInt() + 60);
    Run().ResizeWindow("Vlm_FileFrm", other);
    Run().Press("Escape");
    Run().WaitUntilClosed("Vlm_FileFrm");
    Browse("Srch3");
    const QJsonArray second = Run().Window("Vlm_FileFrm")["rect"].toArray();
    EXPECT_EQ(QSize(second[2].toInt(), second[3].toInt()), other);
}

} // namespace
} // namespace velmo
