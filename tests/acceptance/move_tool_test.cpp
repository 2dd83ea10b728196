#include "move_run.h"

namespace velmo {
namespace {

using testing::ElementsAre;

// The move tool itself, and moves from category to category.
class MoveToolTest : public MoveRunTest {};

TEST_F(MoveToolTest, ShowsTheEntriesOfTheCategory) {
    OpenTool(parts_);
    EXPECT_EQ(Title("Vlm_Tool"), QString("Form1"));
    EXPECT_EQ(Run().Text("MastFolder"), QString("部品"));
    EXPECT_EQ(Run().Text("AllBtn"), QString("全選択"));
    EXPECT_EQ(Run().Text("NonBtn"), QString("全解除"));
    EXPECT_EQ(Run().Text("CanBtn"), QString("キャンセル"));
    EXPECT_EQ(Run().Text("FilMovBtn"), QString("ファイル移動"));
    EXPECT_EQ(Run().Text("FolDerMovBtn"), QString("フォルダ移動"));
    const QJsonArray headers = Run().View("SelList")["columnHeaders"].toArray();
    EXPECT_EQ(headers, QJsonArray({"名前", "PDFファイル", "SLDファイル"}));
    EXPECT_THAT(Run().Texts("SelList"),
                ElementsAre(ElementsAre("ポンプ", R"(OLD\PUMP.PDF)", R"(OLD\PUMP.SLD)"),
                            ElementsAre("弁", R"(OLD\VALVE.PDF)", R"(OLD\VALVE.SLD)")));
    EXPECT_EQ(Run().Describe("SelList", Item::Named("弁"))["icon"].toString(), QString());
    EXPECT_TRUE(Run().IsEnabled("FilMovBtn"));
    EXPECT_THAT(SelectedRows(), ElementsAre());
}

TEST_F(MoveToolTest, SubcategoriesStandFirstAndKeepFilesWhereTheyAre) {
    Execute(
        "INSERT INTO PDFFileTable (FolderID, PDFName, PDFFileName, SLDFileName) VALUES (1, '表', 'A', 'B')");
    OpenTool(root_);
    EXPECT_THAT(Run().Texts("SelList"),
                ElementsAre(ElementsAre("ボルト", "", ""), ElementsAre("座金", "", ""),
                            ElementsAre("部品", "", ""), ElementsAre("表", "A", "B")));
    EXPECT_NE(Run().Describe("SelList", Item::Named("座金"))["icon"].toString(), QString());
    EXPECT_FALSE(Run().IsEnabled("FilMovBtn"));
    EXPECT_TRUE(Run().IsEnabled("FolDerMovBtn"));
}

TEST_F(MoveToolTest, SelectsWithTheButtonsAndTheMouse) {
    OpenTool(parts_);
    Run().Click("AllBtn");
    EXPECT_THAT(SelectedRows(), ElementsAre("ポンプ", "弁"));
    Run().Click("NonBtn");
    EXPECT_THAT(SelectedRows(), ElementsAre());
    Select("弁");
    Run().ControlClick("SelList", Item::Named("ポンプ"));
    EXPECT_THAT(SelectedRows(), ElementsAre("ポンプ", "弁"));
    Run().ControlClick("SelList", Item::Named("弁"));
    EXPECT_THAT(SelectedRows(), ElementsAre("ポンプ"));
    Select("ポンプ");
    Run().ShiftClick("SelList", Item::Named("弁"));
    EXPECT_THAT(SelectedRows(), ElementsAre("ポンプ", "弁"));
}

TEST_F(MoveToolTest, EnterPressesTheButtonWithTheFocusOnly) {
    OpenTool(parts_);
    Run().Press("Return");
    EXPECT_EQ(Run().Focus(), QString("SelList"));
    EXPECT_TRUE(Run().IsWindowShown("Vlm_Tool"));
    EXPECT_THAT(SelectedRows(), ElementsAre());
    Run().Press("Tab");
    ASSERT_EQ(Run().Focus(), QString("AllBtn"));
    Run().Press("Return");
    EXPECT_THAT(SelectedRows(), ElementsAre("ポンプ", "弁"));
    Run().Press("Tab");
    Run().Press("Enter");
    EXPECT_THAT(SelectedRows(), ElementsAre());
    for (int button = 0; button < 3; ++button)
        Run().Press("Tab");
    ASSERT_EQ(Run().Focus(), QString("CanBtn"));
    Run().Press("Return");
    AwaitToolClosed();
}

TEST_F(MoveToolTest, LeavingChangesNothing) {
    const QList<std::function<void()>> ways = {[this] { Run().Click("CanBtn"); },
                                               [this] { Run().Press("Escape"); },
                                               [this] { Run().CloseWindow("Vlm_Tool"); }};
    for (const auto& leave : ways) {
        OpenTool(parts_);
        Run().Click("AllBtn");
        leave();
        AwaitToolClosed();
        EXPECT_EQ(SelectedCategory(), QString("トルヴィク > 部品"));
    }
    EXPECT_EQ(PartEntries(), firstParts_);
}

TEST_F(MoveToolTest, AsksForASelection) {
    OpenTool(parts_);
    Run().Click("FilMovBtn");
    ExpectRefusal("移動させるｼﾝﾎﾞﾙを指定してください");
    Run().Click("FolDerMovBtn");
    ExpectRefusal("移動させるｼﾝﾎﾞﾙを指定してください");
    EXPECT_TRUE(Run().IsWindowShown("Vlm_Tool"));
    Run().Click("CanBtn");
    AwaitToolClosed();
    OpenTool(root_);
    Run().Click("FolDerMovBtn");
    ExpectRefusal("移動させるフォルダを指定してください");
    EXPECT_TRUE(Run().IsWindowShown("Vlm_Tool"));
}

TEST_F(MoveToolTest, ACancelledPickerLeavesTheToolAsItIs) {
    OpenTool(parts_);
    Select("弁");
    for (const char* button : {"FilMovBtn", "FolDerMovBtn"}) {
        Run().Click(button);
        Run().WaitForWindow("Vlm_SelDir");
        Run().Press("Escape");
        Run().WaitUntilClosed("Vlm_SelDir");
        EXPECT_TRUE(Run().IsWindowShown("Vlm_Tool"));
        EXPECT_THAT(SelectedRows(), ElementsAre("弁"));
    }
    EXPECT_EQ(PartEntries(), firstParts_);
}

TEST_F(MoveToolTest, MovesEntriesToAnotherCategory) {
    OpenTool(parts_);
    Select("ポンプ");
    MoveTheirCategoryTo(large_);
    AwaitToolClosed();
    EXPECT_THAT(PartEntries(), ElementsAre(R"(5|4|ポンプ|OLD\PUMP.PDF|OLD\PUMP.SLD)", firstParts_[1]));
    EXPECT_TRUE(session_.ExistsInHome("OLD\\PUMP.PDF"));
    EXPECT_EQ(SelectedCategory(), QString("トルヴィク > 部品"));
    EXPECT_THAT(ListedEntries(), ElementsAre("弁"));
    ChooseCategory(large_);
    EXPECT_THAT(ListedEntries(), ElementsAre("平座金", "ポンプ"));
}

TEST_F(MoveToolTest, MovesEverythingOfACategory) {
    Execute("UPDATE PDFFileTable SET FolderID = 3 WHERE ID IN (5, 6)");
    OpenTool(washers_);
    EXPECT_THAT(Run().Column("SelList", 0), ElementsAre("大形", "ポンプ", "弁"));
    Run().Click("AllBtn");
    MoveTheirCategoryTo(bolts_);
    AwaitToolClosed();
    EXPECT_EQ(Categories()[3], QString(R"(4|2|大形|SMB\WASH\LARGE.SLD)"));
    EXPECT_EQ(PartEntries().first().left(4), QString("5|2|"));
    EXPECT_EQ(PartEntries().last().left(4), QString("6|2|"));
    EXPECT_THAT(ListedEntries(), ElementsAre());
    EXPECT_THAT(Run().Tree("VlmTreeView"),
                ElementsAre("トルヴィク", "  ボルト+", "    大形", "  座金", "  部品"));
}

TEST_F(MoveToolTest, ASubcategoryAndAnEntryOfTheSameNumber) {
    Execute("UPDATE PDFFileTable SET FolderID = 3 WHERE ID IN (4, 5)");
    OpenTool(washers_);
    EXPECT_THAT(Run().Column("SelList", 0), ElementsAre("大形", "平座金", "ポンプ"));
    Run().Click("AllBtn");
    EXPECT_THAT(SelectedRows(), ElementsAre("大形", "平座金", "ポンプ"));
    Run().Click("NonBtn");
    Select("大形");
    MoveTheirCategoryTo(bolts_);
    AwaitToolClosed();
    EXPECT_EQ(Categories()[3], QString(R"(4|2|大形|SMB\WASH\LARGE.SLD)"));
    // The number alone decides, so that the entry goes along.
    EXPECT_EQ(Entries()[3].left(4), QString("4|2|"));
    EXPECT_EQ(Entries()[4].left(4), QString("5|3|"));
}

TEST_F(MoveToolTest, TheEntryChosenBeforeIsSelectedAgain) {
    ChooseCategory(bolts_);
    Run().Click("VlmPdfList", Item::Named("アイボルト"));
    ChooseOnEntry("アイボルト", "VlmMnuPopTool");
    Run().WaitForWindow("Vlm_Tool");
    EXPECT_EQ(Run().Text("MastFolder"), QString("ボルト"));
    Run().Click("CanBtn");
    AwaitToolClosed();
    EXPECT_EQ(SelectedEntry(), QString("アイボルト"));
    Run().ClickAction("Tbar_Open");
    Run().WaitForWindow("VLM_VEDT");
    EXPECT_THAT(Run().Column("Vedt_NowFGrid", 0), ElementsAre("V1(d)", "V7(個数)"));
}

TEST_F(MoveToolTest, ATargetThatWasNotChosenIsAskedAbout) {
    OpenTool(parts_);
    Select("ポンプ");
    const QString question =
        "移動先の分類が選択されていないか、ツリーにありません。\n\n"
        "移動すると、選択した分類とシンボルはツリーに表示されなくなります。移動してよろしいですか";
    const auto choose = [&] {
        Run().Click("FolDerMovBtn");
        Run().WaitForWindow("Vlm_SelDir");
        Run().Click("OkBtn");
        ExpectQuestion(question, "VELMO2");
    };
    choose();
    Run().Press("Return");
    EXPECT_TRUE(Run().IsWindowShown("Vlm_Tool"));
    EXPECT_THAT(SelectedRows(), ElementsAre("ポンプ"));
    EXPECT_EQ(PartEntries(), firstParts_);
    choose();
    Run().AnswerYes();
    AwaitToolClosed();
    EXPECT_THAT(PartEntries(), ElementsAre(R"(5|0|ポンプ|OLD\PUMP.PDF|OLD\PUMP.SLD)", firstParts_[1]));
}

TEST_F(MoveToolTest, ACategoryMovedIntoItselfIsLostAndTheBrowserStaysUsable) {
    OpenTool(root_);
    Select("部品");
    MoveTheirCategoryTo(parts_);
    const QString question =
        "移動先は、移動する分類「部品」の中にあります。\n\n移動すると、「部品」とその下の分類とシンボルは"
        "ツリーに表示されなくなります。移動してよろしいですか";
    ExpectQuestion(question, "VELMO2");
    Run().AnswerNo();
    EXPECT_THAT(SelectedRows(), ElementsAre("部品"));
    EXPECT_EQ(Categories()[4], QString("5|1|部品|"));
    MoveTheirCategoryTo(parts_);
    ExpectQuestion(question, "VELMO2");
    Run().AnswerYes();
    AwaitToolClosed();
    EXPECT_EQ(Categories()[4], QString("5|5|部品|"));
    EXPECT_THAT(Run().Tree("VlmTreeView"), ElementsAre("トルヴィク", "  ボルト", "  座金+", "    大形"));
    ChooseCategory(bolts_);
    EXPECT_EQ(ListedEntries().size(), 3);
}

} // namespace
} // namespace velmo
