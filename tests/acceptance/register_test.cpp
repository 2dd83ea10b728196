#include "library_run.h"

namespace velmo {
namespace {

using testing::ElementsAre;

// Categories and entries that are registered and edited.
class RegisterTest : public LibraryRunTest {
protected:
    // Labels and boxes as they are shown, top to bottom.
    QStringList Form() {
        QStringList shown;
        for (const char* name : {"Head1", "Name1", "Head2", "Name2", "Head3", "Name3", "Head4", "Name4"}) {
            if (Run().IsVisible(name))
                shown.append(Run().Text(name));
        }
        return shown;
    }
    void Leave() {
        Run().Click("Can_Btn");
        Run().WaitUntilClosed("Vlm_TBlEdt");
    }
    QStringList TabOrder(const QString& first) {
        EXPECT_EQ(Run().Focus(), first);
        QStringList order;
        do {
            order.append(Run().Focus());
            Run().Press("Tab");
        } while (Run().Focus() != first && order.size() < 20);
        return order;
    }
};

TEST_F(RegisterTest, WhatTheFormOfACategorySays) {
    StartWith("VLM_MAIN");
    AddCategoryBelow(bolts_);
    EXPECT_EQ(Title("Vlm_TBlEdt"), QString("Velmo分類ツリー登録"));
    EXPECT_THAT(Form(), ElementsAre("親フォルダ", "ボルト", "フォルダ名", "", "SLDファイル名", ""));
    EXPECT_FALSE(Run().IsVisible("Srch4"));
    EXPECT_EQ(Run().Text("Srch3"), QString("参照"));
    EXPECT_EQ(Run().Text("OK_btn"), QString("O K"));
    EXPECT_EQ(Run().Text("Can_Btn"), QString("ｷｬﾝｾﾙ"));
    EXPECT_THAT(TabOrder("Name2"), ElementsAre("Name2", "Name3", "Srch3", "OK_btn", "Can_Btn"));
    Leave();
    EditCategory(large_);
    EXPECT_EQ(Title("Vlm_TBlEdt"), QString("Velmo分類ツリー編集"));
    EXPECT_THAT(Form(), ElementsAre("親フォルダ", "座金", "フォルダ名", "大形", "SLDファイル名",
                                    R"(SMB\WASH\LARGE.SLD)"));
    EXPECT_FALSE(Run().IsVisible("Srch4"));
    EXPECT_EQ(Run().Focus(), QString("Name2"));
    Leave();
    EditCategory(root_);
    EXPECT_THAT(Form(),
                ElementsAre("親フォルダ", "ルートフォルダ", "フォルダ名", "トルヴィク", "SLDファイル名", ""));
    Leave();
}

TEST_F(RegisterTest, TheFormsOfCategoriesAndEntriesHaveTheirOwnSizes) {
    const auto size = [this] {
        const QJsonArray rect = Run().Window("Vlm_TBlEdt")["rect"].toArray();
        return QSize(rect[2].toInt(), rect[3].toInt());
    };
    StartWith("VLM_MAIN");
    AddEntry(bolts_);
    const QSize ofEntries = size();
    Leave();
    AddCategoryBelow(bolts_);
    const QSize ofCategories = size();
    EXPECT_LT(ofCategories.height(), ofEntries.height()) << "it has a row less";
    const QSize given = ofCategories + QSize(60, 40);
    Run().ResizeWindow("Vlm_TBlEdt", given);
    Run().WaitFor("the new size", [&] { return size() == given; });
    Leave();
    EditEntry(bolts_, "アイボルト");
    EXPECT_EQ(size(), ofEntries);
    Leave();
    EditCategory(bolts_);
    EXPECT_EQ(size(), given);
    Leave();
}

TEST_F(RegisterTest, WhatTheFormOfAnEntrySays) {
    StartWith("VLM_MAIN");
    AddEntry(washers_);
    EXPECT_EQ(Title("Vlm_TBlEdt"), QString("VelmoPDFリスト登録"));
    EXPECT_THAT(Form(),
                ElementsAre("フォルダ名", "座金", "ＰＤＦ名", "", "PDFファイル名", "", "SLDファイル名", ""));
    EXPECT_EQ(Run().Text("Srch3"), QString("参照"));
    EXPECT_EQ(Run().Text("Srch4"), QString("参照"));
    EXPECT_THAT(TabOrder("Name2"),
                ElementsAre("Name2", "Name3", "Srch3", "Name4", "Srch4", "OK_btn", "Can_Btn"));
    Leave();
    EditEntry(bolts_, "アイボルト");
    EXPECT_EQ(Title("Vlm_TBlEdt"), QString("VelmoPDFリスト編集"));
    EXPECT_THAT(Form(), ElementsAre("フォルダ名", "ボルト", "ＰＤＦ名", "アイボルト", "PDFファイル名",
                                    R"(SMB\BOLT\EYE.TXT)", "SLDファイル名", R"(SMB\BOLT\EYE.SLD)"));
    Leave();
}

TEST_F(RegisterTest, ANewCategoryIsSelectedAndNamed) {
    StartWith("VLM_MAIN");
    const QImage before = Run().Picture("VlmTreeSlide");
    AddCategoryBelow(bolts_);
    Fill("Name2", "アンカー");
    Fill("Name3", R"(SMB\BOLT\HEX.SLD)");
    ConfirmEditor();
    EXPECT_EQ(Categories(), firstCategories_ + QStringList(R"(5|2|アンカー|SMB\BOLT\HEX.SLD)"));
    EXPECT_EQ(SelectedCategory(), QString("トルヴィク > ボルト > アンカー"));
    EXPECT_EQ(Panel(0), QString("ボルト － アンカー"));
    EXPECT_EQ(Panel(1), QString("アンカー"));
    EXPECT_THAT(ListedEntries(), ElementsAre());
    EXPECT_NE(Run().Picture("VlmTreeSlide"), before);
    EXPECT_EQ(Run().Focus(), QString("VlmTreeView"));
}

TEST_F(RegisterTest, ACategoryNeedsNoSlide) {
    StartWith("VLM_MAIN");
    AddCategoryBelow(root_);
    Fill("Name2", "新");
    Run().Press("Return");
    Run().WaitUntilClosed("Vlm_TBlEdt");
    EXPECT_EQ(Categories().last(), QString("5|1|新|"));
    EXPECT_THAT(Run().Tree("VlmTreeView"),
                ElementsAre("トルヴィク", "  ボルト", "  座金+", "    大形", "  新"));
}

TEST_F(RegisterTest, AnEditedCategoryKeepsItsPlace) {
    StartWith("VLM_MAIN");
    EditCategory(washers_);
    Fill("Name2", "ワッシャ");
    Fill("Name3", "");
    ConfirmEditor();
    EXPECT_EQ(Categories()[2], QString("3|1|ワッシャ|"));
    EXPECT_EQ(SelectedCategory(), QString("トルヴィク > ワッシャ"));
    EXPECT_EQ(Panel(0), QString("ワッシャ"));
    EXPECT_EQ(Panel(1), QString("ワッシャ"));
    EXPECT_EQ(Categories().size(), 4);
}

TEST_F(RegisterTest, TheRootCanBeRenamed) {
    StartWith("VLM_MAIN");
    EditCategory(root_);
    Fill("Name2", "部品");
    ConfirmEditor();
    EXPECT_EQ(Categories().first(), QString("1|0|部品|"));
    EXPECT_EQ(Run().Tree("VlmTreeView").first(), QString("部品"));
    EXPECT_EQ(SelectedCategory(), QString("部品"));
}

TEST_F(RegisterTest, ANewEntryIsListed) {
    StartWith("VLM_MAIN");
    ChooseCategory(bolts_);
    Run().Click("VlmPdfList", Item::Named("アイボルト"));
    Run().Press("Insert");
    Run().WaitForWindow("Vlm_TBlEdt");
    Fill("Name2", "蝶ボルト");
    Fill("Name3", R"(SMB\BOLT\WING.PDF)");
    Fill("Name4", R"(SMB\BOLT\HEX.SLD)");
    ConfirmEditor();
    EXPECT_EQ(Entries(), firstEntries_ + QStringList(R"(5|2|蝶ボルト|SMB\BOLT\WING.PDF|SMB\BOLT\HEX.SLD)"));
    EXPECT_THAT(ListedEntries(), ElementsAre("六角ボルト", "アイボルト", "記号", "蝶ボルト"));
    EXPECT_EQ(SelectedEntry(), QString("アイボルト"));
    Run().ClickAction("Tbar_Open");
    Run().WaitForWindow("VLM_VEDT");
    EXPECT_THAT(Run().Column("Vedt_NowFGrid", 0), ElementsAre("V1(d)", "V7(個数)"));
}

TEST_F(RegisterTest, TheFirstEntryOfACategory) {
    StartWith("VLM_MAIN");
    AddEntry(washers_);
    Fill("Name2", "ばね座金");
    Fill("Name3", R"(SMB\WASH\WASHER.TXT)");
    Fill("Name4", R"(SMB\WASH\WASHER.SLD)");
    ConfirmEditor();
    EXPECT_EQ(Entries().last(), QString(R"(5|3|ばね座金|SMB\WASH\WASHER.TXT|SMB\WASH\WASHER.SLD)"));
    EXPECT_THAT(ListedEntries(), ElementsAre("ばね座金"));
    OpenShownEntry("ばね座金");
}

TEST_F(RegisterTest, AnEditedEntryIsSelectedAgain) {
    StartWith("VLM_MAIN");
    ChooseCategory(bolts_);
    Run().Click("VlmPdfList", Item::Named("アイボルト"));
    const QImage before = Run().Picture("VlmPDFSlide");
    Run().Press("F2");
    Run().WaitForWindow("Vlm_TBlEdt");
    Fill("Name2", "吊りボルト");
    Fill("Name4", R"(SMB\BOLT\HEX.SLD)");
    ConfirmEditor();
    EXPECT_EQ(Entries()[1], QString(R"(2|2|吊りボルト|SMB\BOLT\EYE.TXT|SMB\BOLT\HEX.SLD)"));
    EXPECT_THAT(ListedEntries(), ElementsAre("六角ボルト", "吊りボルト", "記号"));
    EXPECT_EQ(SelectedEntry(), QString("吊りボルト"));
    EXPECT_NE(Run().Picture("VlmPDFSlide"), before);
    Run().ClickAction("Tbar_Open");
    Run().WaitForWindow("VLM_VEDT");
    EXPECT_THAT(Run().Column("Vedt_NowFGrid", 0), ElementsAre("V1(d)", "V7(個数)"));
}

TEST_F(RegisterTest, LeavingChangesNothing) {
    StartWith("VLM_MAIN");
    const QList<std::function<void()>> ways = {[this] { Run().Click("Can_Btn"); },
                                               [this] { Run().Press("Escape"); },
                                               [this] { Run().CloseWindow("Vlm_TBlEdt"); }};
    for (const auto& leave : ways) {
        AddCategoryBelow(bolts_);
        Fill("Name2", "新");
        leave();
        Run().WaitUntilClosed("Vlm_TBlEdt");
        EditEntry(bolts_, "記号");
        Fill("Name2", "");
        Run().Click("OK_btn");
        ExpectRefusal("ＰＤＦ名を入力してください");
        leave();
        Run().WaitUntilClosed("Vlm_TBlEdt");
        EXPECT_EQ(SelectedCategory(), QString("トルヴィク > ボルト"));
        EXPECT_EQ(SelectedEntry(), QString("記号"));
    }
    EXPECT_EQ(Categories(), firstCategories_);
    EXPECT_EQ(Entries(), firstEntries_);
}

} // namespace
} // namespace velmo
