#include "library_run.h"

namespace velmo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Looking for categories and symbols by their names.
class FindTest : public LibraryRunTest {
protected:
    void LookFor(const QString& text) {
        Run().Press("Ctrl+F");
        Run().WaitFor("the field", [this] { return Run().Focus() == "VlmFind"; });
        if (text.isEmpty())
            Run().Press("Delete");
        else
            Run().Type(text);
    }
    QStringList Found() { return Run().Column("VlmFindList", 0); }
    // The result that is selected; empty when none is.
    QString SelectedResult() {
        const QJsonObject view = Run().View("VlmFindList");
        const QJsonArray selection = view["selection"].toArray();
        return selection.isEmpty() ? QString() : view["texts"][selection[0][0].toInt()][0].toString();
    }
    bool IsSearching() { return Run().IsVisible("VlmFindList") && !Run().IsVisible("VlmTreeView"); }
    bool ShowsTree() { return Run().IsVisible("VlmTreeView") && !Run().IsVisible("VlmFindList"); }
    QString OpenedSymbol() {
        Run().WaitForWindow("VLM_VEDT");
        return TableRows().value(0).value(0);
    }
};

TEST_F(FindTest, TypingShowsWhatIsFoundInTheTreesPlace) {
    StartWith("VLM_MAIN");
    EXPECT_EQ(Run().Focus(), QString("VlmTreeView"));
    EXPECT_TRUE(ShowsTree());
    const QImage before = Run().Picture("VlmTreeView");
    LookFor("ボルト");
    EXPECT_TRUE(IsSearching());
    EXPECT_EQ(Run().Focus(), QString("VlmFind"));
    EXPECT_THAT(Found(), ElementsAre("ボルト", "六角ボルト", "アイボルト", "記号"));
    EXPECT_EQ(Panel(0), QString("トルヴィク")) << "typing chooses nothing";
    LookFor("");
    EXPECT_TRUE(ShowsTree());
    Run().Press("Escape");
    EXPECT_EQ(Run().Focus(), QString("VlmTreeView"));
    EXPECT_EQ(Run().Picture("VlmTreeView"), before) << "nothing has become of it";
}

TEST_F(FindTest, CategoriesAndSymbolsHaveTheirPictures) {
    StartWith("VLM_MAIN");
    const auto icon = [this](const QString& view, const Item& item) {
        return Run().Describe(view, item)["icon"].toString();
    };
    const QString folder = icon("VlmTreeView", Item::Path(bolts_));
    ChooseCategory(bolts_);
    const QString symbol = icon("VlmPdfList", Item::Named("六角ボルト"));
    LookFor("ボルト");
    EXPECT_EQ(icon("VlmFindList", Item::Named("ボルト")), folder);
    EXPECT_EQ(icon("VlmFindList", Item::Named("六角ボルト")), symbol);
}

TEST_F(FindTest, WidthAndKanaDoNotMatter) {
    StartWith("VLM_MAIN");
    for (const char* text : {"ﾎﾞﾙﾄ", "ぼると", "ボルト"}) {
        LookFor(text);
        EXPECT_THAT(Found(), ElementsAre("ボルト", "六角ボルト", "アイボルト", "記号")) << text;
    }
}

TEST_F(FindTest, DigitsOfBothWidthsAreTheSame) {
    MakeLibrary("UPDATE PDFFileTable SET PDFName = 'Ｍ１０ Nut' WHERE ID = 3");
    StartWith("VLM_MAIN");
    for (const char* text : {"m10", "Ｍ１０", "NUT m１0"}) {
        LookFor(text);
        EXPECT_THAT(Found(), ElementsAre("Ｍ１０ Nut")) << text;
    }
}

TEST_F(FindTest, SeveralWordsMustAllMatchInNameOrPath) {
    StartWith("VLM_MAIN");
    LookFor("ボルト アイ");
    EXPECT_THAT(Found(), ElementsAre("アイボルト"));
    LookFor("座金　平");
    EXPECT_THAT(Found(), ElementsAre("平座金"));
    LookFor("大形 平");
    EXPECT_THAT(Found(), ElementsAre("平座金")) << "the category completes the match";
    LookFor("ボルト 座金");
    EXPECT_THAT(Found(), IsEmpty());
}

TEST_F(FindTest, SaysThatNothingIsFound) {
    StartWith("VLM_MAIN");
    LookFor("歯車");
    EXPECT_TRUE(IsSearching());
    EXPECT_THAT(Found(), IsEmpty());
    EXPECT_EQ(Run().Text("VlmFindListHint"),
              QString("一致する分類やシンボルはありません。\nEsc で検索をやめます。"));
    EXPECT_TRUE(Run().IsVisible("VlmFindListHint"));
    Run().Press("Down");
    Run().Press("Return");
    EXPECT_EQ(Panel(0), QString("トルヴィク"));
    LookFor("座金");
    EXPECT_FALSE(Run().IsVisible("VlmFindListHint"));
}

TEST_F(FindTest, ArrowsChooseWhileTheFieldKeepsTheFocus) {
    StartWith("VLM_MAIN");
    const QImage noSlide = Run().Picture("VlmPDFSlide");
    LookFor("ボルト");
    Run().Press("Down");
    EXPECT_EQ(SelectedResult(), QString("ボルト"));
    EXPECT_EQ(Panel(0), QString("ボルト"));
    EXPECT_THAT(ListedEntries(), ElementsAre("六角ボルト", "アイボルト", "記号"));
    EXPECT_EQ(SelectedEntry(), QString());
    Run().Press("Down");
    EXPECT_EQ(SelectedResult(), QString("六角ボルト"));
    EXPECT_EQ(SelectedEntry(), QString("六角ボルト"));
    const QImage hex = Run().Picture("VlmPDFSlide");
    EXPECT_NE(hex, noSlide);
    Run().Press("Down");
    EXPECT_EQ(SelectedEntry(), QString("アイボルト"));
    EXPECT_NE(Run().Picture("VlmPDFSlide"), hex);
    Run().Press("Ctrl+End");
    EXPECT_EQ(SelectedEntry(), QString("記号"));
    Run().Press("Ctrl+Home");
    EXPECT_EQ(SelectedResult(), QString("ボルト"));
    EXPECT_EQ(SelectedEntry(), QString());
    EXPECT_EQ(Run().Focus(), QString("VlmFind"));
    Run().Press("Escape");
    EXPECT_TRUE(ShowsTree());
    EXPECT_EQ(Run().Text("VlmFind"), QString());
    EXPECT_EQ(Run().Focus(), QString("VlmFind"));
    Run().Press("Escape");
    EXPECT_EQ(Run().Focus(), QString("VlmTreeView"));
    EXPECT_EQ(SelectedCategory(), QString("トルヴィク > ボルト"));
}

TEST_F(FindTest, AChosenSymbolOpensItsWayInTheTree) {
    StartWith("VLM_MAIN");
    EXPECT_THAT(Run().Tree("VlmTreeView"), ElementsAre("トルヴィク", "  ボルト", "  座金+", "    大形"));
    LookFor("平座金");
    Run().Click("VlmFindList", Item::Named("平座金"));
    EXPECT_EQ(Run().Focus(), QString("VlmFind"));
    EXPECT_EQ(Panel(0), QString("座金 － 大形"));
    EXPECT_EQ(SelectedEntry(), QString("平座金"));
    Run().Press("Escape");
    EXPECT_EQ(SelectedCategory(), QString("トルヴィク > 座金 > 大形"));
    EXPECT_TRUE(Run().Describe("VlmTreeView", Item::Path(large_))["visible"].toBool());
    EXPECT_THAT(Run().Tree("VlmTreeView"), ElementsAre("トルヴィク", "  ボルト", "  座金", "    大形"));
    // Open and what is saved go by what was found.
    Run().ClickAction("Tbar_Open");
    Run().WaitForWindow("VLM_VEDT");
    Run().Click("Vedt_OKBtn");
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(session_.Setting("TreeLast"), QString("4"));
    EXPECT_EQ(session_.Setting("LastPDF"), session_.HomeDir() + "SMB\\WASH\\WASHER.TXT");
}

TEST_F(FindTest, EnterOpensTheBestSymbolAtOnce) {
    StartWith("VLM_MAIN");
    LookFor("六角");
    Run().Press("Return");
    EXPECT_EQ(OpenedSymbol(), QString("M10"));
    EXPECT_THAT(Values(), ElementsAre("10", "50", "SS400"));
    Run().Click("VEdt_CanBtn");
    Run().WaitFor("the browser alone", [this] { return !Run().IsWindowShown("VLM_VEDT"); });
    EXPECT_TRUE(IsSearching()) << "the search goes on";
    EXPECT_EQ(Run().Focus(), QString("VlmFind"));
    EXPECT_EQ(Run().Text("VlmFind"), QString("六角"));
}

TEST_F(FindTest, ADoubleClickOpensASymbol) {
    StartWith("VLM_MAIN");
    LookFor("座金");
    Run().DoubleClick("VlmFindList", Item::Named("平座金"));
    Run().WaitForWindow("VLM_VEDT");
    EXPECT_THAT(Values(), ElementsAre("6", "1"));
}

TEST_F(FindTest, EnterOnACategoryGoesToItInTheTree) {
    StartWith("VLM_MAIN");
    LookFor("大形");
    Run().Press("Return");
    EXPECT_TRUE(ShowsTree());
    EXPECT_EQ(Run().Text("VlmFind"), QString());
    EXPECT_EQ(Run().Focus(), QString("VlmTreeView"));
    EXPECT_EQ(SelectedCategory(), QString("トルヴィク > 座金 > 大形"));
    EXPECT_EQ(Panel(0), QString("座金 － 大形"));
    EXPECT_THAT(ListedEntries(), ElementsAre("平座金"));
}

TEST_F(FindTest, TheRootIsFoundToo) {
    StartWith("VLM_MAIN");
    ChooseCategory(bolts_);
    LookFor("とるゔぃく");
    EXPECT_EQ(Found().first(), QString("トルヴィク"));
    Run().Press("Return");
    EXPECT_EQ(SelectedCategory(), QString("トルヴィク"));
    EXPECT_EQ(Panel(0), QString("トルヴィク"));
}

TEST_F(FindTest, EscapeInTheEmptyFieldGoesToTheTree) {
    StartWith("VLM_MAIN");
    Run().Press("Ctrl+F");
    EXPECT_EQ(Run().Focus(), QString("VlmFind"));
    Run().Press("Tab");
    EXPECT_EQ(Run().Focus(), QString("VlmTreeView"));
    Run().Press("Shift+Tab");
    EXPECT_EQ(Run().Focus(), QString("VlmFind"));
    Run().Press("Escape");
    EXPECT_EQ(Run().Focus(), QString("VlmTreeView"));
    EXPECT_TRUE(Run().IsWindowShown("VLM_MAIN"));
}

TEST_F(FindTest, OfTwoSymbolsOfOneNameTheOneThatWasFoundIsSelected) {
    MakeLibrary("UPDATE PDFFileTable SET PDFName = '六角ボルト' WHERE ID = 3");
    StartWith("VLM_MAIN");
    LookFor("六角");
    EXPECT_THAT(Found(), ElementsAre("六角ボルト", "六角ボルト"));
    Run().Press("Down");
    Run().Press("Down");
    EXPECT_EQ(Run().View("VlmPdfList")["selection"][0][0].toInt(), 2);
    Run().Press("Return");
    Run().WaitForWindow("VLM_VEDT");
    EXPECT_THAT(TableRows(), ElementsAre(ElementsAre("テーブルはありません")));
}

TEST_F(FindTest, WhatTheTreeDoesNotShowIsNotFound) {
    MakeLibrary("INSERT INTO FolderTable (ID, ParentID, FolderName) VALUES (10, 99, '歯車'), "
                "(11, 12, '歯車'), (12, 11, '歯車'), (13, 4, '歯車')");
    StartWith("VLM_MAIN");
    Execute("INSERT INTO FolderTable (ID, ParentID, FolderName) VALUES (70000, 1, '歯車');"
            "INSERT INTO PDFFileTable (ID, FolderID, PDFName) VALUES (70000, 2, '歯車'), (71, 2, NULL), "
            "(72, 'none', '歯車')");
    LookFor("歯車");
    EXPECT_THAT(Found(), ElementsAre("歯車"));
    Run().Press("Return");
    EXPECT_EQ(SelectedCategory(), QString("トルヴィク > 座金 > 大形 > 歯車"));
}

TEST_F(FindTest, WhatWasJustRegisteredIsFound) {
    StartWith("VLM_MAIN");
    LookFor("歯車");
    EXPECT_THAT(Found(), IsEmpty());
    LookFor("");
    AddCategoryBelow(bolts_);
    Fill("Name2", "歯車");
    ConfirmEditor();
    LookFor("歯車");
    EXPECT_THAT(Found(), ElementsAre("歯車"));
}

TEST_F(FindTest, WhatIsShownFollowsTheLibrary) {
    StartWith("VLM_MAIN");
    LookFor("ボルト");
    Run().Press("Down");
    Run().Press("Down");
    EXPECT_EQ(SelectedEntry(), QString("六角ボルト"));
    ChooseOnEntry("六角ボルト", "VlmMnuPopDel");
    Run().WaitForMessage();
    Run().AnswerYes();
    Run().WaitFor("the list without it", [this] { return Found().size() == 3; });
    EXPECT_THAT(Found(), ElementsAre("ボルト", "アイボルト", "記号"));
    EXPECT_TRUE(IsSearching());
    EXPECT_THAT(ListedEntries(), ElementsAre("アイボルト", "記号"));
}

TEST_F(FindTest, WhatAnotherProgramChangedIsFound) {
    StartWith("VLM_MAIN");
    LookFor("歯車");
    EXPECT_THAT(Found(), IsEmpty());
    Execute("INSERT INTO PDFFileTable (FolderID, PDFName) VALUES (2, '歯車')");
    LookFor("歯");
    EXPECT_THAT(Found(), ElementsAre("歯車"));
}

TEST_F(FindTest, ACategoryThatAnotherProgramAddedIsChosen) {
    StartWith("VLM_MAIN");
    ChooseCategory(bolts_);
    Execute("INSERT INTO FolderTable (ParentID, FolderName, SLDFileName) VALUES (2, '新しい分類', '')");
    LookFor("新しい");
    Run().Press("Down");
    EXPECT_EQ(Panel(0), QString("ボルト － 新しい分類"));
    EXPECT_EQ(SelectedCategory(), QString("トルヴィク > ボルト > 新しい分類"));
}

TEST_F(FindTest, ACategoryThatAnotherProgramRemovedIsToldByName) {
    StartWith("VLM_MAIN");
    ChooseCategory(bolts_);
    Run().Click("VlmPdfList", Item::Named("アイボルト"));
    LookFor("大形");
    Execute("DELETE FROM FolderTable WHERE FolderName='大形'");
    Run().Press("Down");
    ExpectError({"35601", "分類 (ID 4)"});
    EXPECT_TRUE(Run().IsWindowShown("VLM_MAIN"));
    // What was chosen before still is.
    EXPECT_EQ(SelectedCategory(), QString("トルヴィク > ボルト"));
    EXPECT_EQ(Panel(0), QString("ボルト"));
    EXPECT_EQ(SelectedEntry(), QString("アイボルト"));
    Run().Press("Escape");
    EXPECT_THAT(Run().Tree("VlmTreeView"), ElementsAre("トルヴィク", "  ボルト", "  座金"));
}

TEST_F(FindTest, ARemovedCategoryThatTheTreeStillShowsIsToldByNameToo) {
    StartWith("VLM_MAIN");
    ChooseCategory(large_);
    ChooseCategory(bolts_);
    Run().Click("VlmPdfList", Item::Named("アイボルト"));
    LookFor("大形");
    Execute("DELETE FROM FolderTable WHERE FolderName='大形'");
    Run().Press("Down");
    ExpectError({"35601", "分類 (ID 4)"});
    EXPECT_EQ(SelectedCategory(), QString("トルヴィク > ボルト"));
    EXPECT_EQ(Panel(0), QString("ボルト"));
    EXPECT_THAT(ListedEntries(), ElementsAre("六角ボルト", "アイボルト", "記号"));
    EXPECT_EQ(SelectedEntry(), QString("アイボルト"));
    Run().Press("Escape");
    EXPECT_THAT(Run().Tree("VlmTreeView"), ElementsAre("トルヴィク", "  ボルト", "  座金"));
}

TEST_F(FindTest, WhenTheCategoryShownIsGoneTooTheRootIsShown) {
    StartWith("VLM_MAIN");
    ChooseCategory(bolts_);
    LookFor("大形");
    Execute("DELETE FROM FolderTable WHERE ID IN (2, 4)");
    Run().Press("Down");
    ExpectError({"35601", "分類 (ID 4)"});
    EXPECT_EQ(SelectedCategory(), QString("トルヴィク"));
    EXPECT_EQ(Panel(0), QString("トルヴィク"));
    EXPECT_THAT(ListedEntries(), IsEmpty());
}

// Run mode 3: both libraries.
class FindInBothTest : public FindTest {
protected:
    void SetUp() override {
        FindTest::SetUp();
        session_.WriteExchangeLines("velmo.ret2", {"NO SELECT", "TOLVIKS"});
        session_.Set("VlmMode", "3");
        StartWith("VLM_MAIN");
        Run().ClickAction("Tbar_Cancel");
        EXPECT_EQ(End(), 0);
        session_.ExecuteHome("VelmoUsr.mdb",
                             "INSERT INTO FolderTable (ParentID, FolderName, SLDFileName) VALUES (1, "
                             "'ボルト', '');"
                             "INSERT INTO PDFFileTable (FolderID, PDFName, PDFFileName, SLDFileName) VALUES "
                             "(2, '六角ボルト', 'SMB\\WASH\\WASHER.TXT', '');");
    }
};

TEST_F(FindInBothTest, ThePathTellsTheLibrariesApart) {
    StartWith("VLM_MAIN");
    LookFor("六角");
    EXPECT_THAT(Found(), ElementsAre("六角ボルト", "六角ボルト"));
    Run().Press("Down");
    EXPECT_EQ(Panel(0), QString("VELMOデータ － ボルト"));
    EXPECT_EQ(SelectedEntry(), QString("六角ボルト"));
    Run().Press("Down");
    EXPECT_EQ(Panel(0), QString("トルヴィク － ボルト"));
    EXPECT_EQ(SelectedEntry(), QString("六角ボルト"));
    LookFor("トルヴィク 六角");
    EXPECT_THAT(Found(), ElementsAre("六角ボルト"));
    Run().Press("Return");
    Run().WaitForWindow("VLM_VEDT");
    EXPECT_THAT(Values(), ElementsAre("d", "L", "材質"));
    Run().Click("Vedt_OKBtn");
    Run().WaitFor("the browser alone", [this] { return !Run().IsWindowShown("VLM_VEDT"); });
    Run().CloseWindow("VLM_MAIN");
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(session_.Setting("EdtTreeLast"), QString("2"));
    EXPECT_EQ(session_.Setting("Tree2nd1st"), QString("1"));
}

TEST_F(FindInBothTest, ACategoryOfTheOtherLibraryIsSelectedInItsOwnTree) {
    StartWith("VLM_MAIN");
    LookFor("velmo ボルト");
    Run().Press("Return");
    EXPECT_EQ(SelectedCategory(), QString("VELMOデータ > ボルト"));
    EXPECT_THAT(ListedEntries(), ElementsAre("六角ボルト"));
    LookFor("大形");
    Run().Press("Return");
    EXPECT_EQ(SelectedCategory(), QString("トルヴィク > 座金 > 大形"));
    EXPECT_THAT(ListedEntries(), ElementsAre("平座金"));
}

TEST_F(FindInBothTest, BackFromTheVariableWindowBothLibrariesAreStillThere) {
    StartWith("VLM_MAIN");
    OpenEntry(bolts_, "アイボルト");
    Run().Click("Vedt_TreeBtn");
    Run().WaitFor("the browser alone", [this] { return !Run().IsWindowShown("VLM_VEDT"); });
    Unfold(large_);
    // Another program adds what is found, so that the tree has to be read again.
    Execute("INSERT INTO FolderTable (ParentID, FolderName, SLDFileName) VALUES (3, '新しい分類', '')");
    LookFor("新しい");
    Run().Press("Return");
    EXPECT_EQ(SelectedCategory(), QString("トルヴィク > 座金 > 新しい分類"));
    EXPECT_EQ(Panel(0), QString("トルヴィク － 座金 － 新しい分類"));
    EXPECT_EQ(Run().Tree("VlmTreeView").first(), QString("VELMOデータ"));
    ChooseCategory(large_);
    OpenShownEntry("平座金");
    Run().Click("Vedt_OKBtn");
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(session_.Setting("EdtTreeLast"), QString("4"));
    EXPECT_EQ(session_.Setting("Tree2nd1st"), QString("1"));
    EXPECT_EQ(session_.Setting("UsrTreeLast"), std::nullopt);
}

} // namespace
} // namespace velmo
