#include "acceptance_test.h"

namespace velmo {
namespace {

constexpr int TwipsPerPixel = 15;
const QStringList bolts = {"トルヴィク", "ボルト"};
const QStringList splitterKeys = {"FrameSplitLeft", "FrameSplitTop", "FrameSplitWidth", "FrameSplitHeight",
                                  "TreeSplitLeft",  "TreeSplitTop",  "TreeSplitWidth",  "TreeSplitHeight",
                                  "PdfSplitLeft",   "PdfSplitTop",   "PdfSplitWidth",   "PdfSplitHeight"};

class LayoutTest : public AcceptanceTest {
protected:
    int Measure(const QString& control, const QString& property) {
        return Run().Property(control, property).toInt();
    }
    int Left(const QString& control) { return Measure(control, "x"); }
    int Top(const QString& control) { return Measure(control, "y"); }
    int Width(const QString& control) { return Measure(control, "width"); }
    int Height(const QString& control) { return Measure(control, "height"); }

    QStringList SavedSplitters() {
        QStringList values;
        for (const QString& key : splitterKeys)
            values << session_.Setting(key).value_or("none");
        return values;
    }
    QStringList ShownSplitters() {
        QStringList values;
        for (const char* splitter : {"SplitImg", "TreeImg", "PDFImg"}) {
            for (const int pixels : {Left(splitter), Top(splitter), Width(splitter), Height(splitter)})
                values << QString::number(pixels * TwipsPerPixel);
        }
        return values;
    }

    // Leaves the browser through a symbol that is confirmed.
    void LeaveThroughOpen() {
        OpenEntry(bolts, "アイボルト");
        Run().Click("Vedt_OKBtn");
        ASSERT_EQ(End(), 0);
    }
};

TEST_F(LayoutTest, AFirstStartHasTheDefaultPlaceAndUsefulPanes) {
    StartWith("VLM_MAIN");
    EXPECT_EQ(Left("VLM_MAIN"), 67);
    EXPECT_EQ(Top("VLM_MAIN"), 67);
    EXPECT_EQ(Width("VLM_MAIN"), 433);
    EXPECT_EQ(Height("VLM_MAIN"), 433);
    EXPECT_EQ(Width("SplitImg"), 4);
    for (const char* pane : {"VlmTreeView", "VlmTreeSlide", "VlmPDFSlide", "VlmPdfList"}) {
        EXPECT_GE(Width(pane), 150) << pane;
        EXPECT_GE(Height(pane), 80) << pane;
    }
    EXPECT_TRUE(Run().IsVisible("VlmToolbar"));
    EXPECT_TRUE(Run().IsVisible("VlmStatusBar"));
}

TEST_F(LayoutTest, ASplitterIsDraggedWithItsPicture) {
    StartWith("VLM_MAIN");
    const int before = Left("SplitImg");
    EXPECT_FALSE(Run().IsVisible("SplitPic"));
    Run().Drag("SplitImg", {40, 0});
    EXPECT_EQ(Left("SplitImg"), before + 40);
    EXPECT_FALSE(Run().IsVisible("SplitPic"));
    EXPECT_EQ(Left("VlmPDFSlide"), before + 44);
    const int tree = Top("TreeImg");
    Run().Drag("TreeImg", {0, -30});
    EXPECT_EQ(Top("TreeImg"), tree - 30);
    const int list = Top("PDFImg");
    Run().Drag("PDFImg", {0, 25});
    EXPECT_EQ(Top("PDFImg"), list + 25);
    EXPECT_EQ(Top("VlmPdfList"), list + 29);
}

TEST_F(LayoutTest, EverythingComesBackAfterOpen) {
    StartWith("VLM_MAIN");
    Run().ResizeWindow("VLM_MAIN", {640, 520});
    Run().Drag("SplitImg", {33, 0});
    Run().Drag("TreeImg", {0, -17});
    Run().Drag("PDFImg", {0, 21});
    const QStringList shown = ShownSplitters();
    LeaveThroughOpen();
    EXPECT_EQ(SavedSplitters(), shown);
    EXPECT_EQ(session_.Setting("VlmMainLeft"), QString::number(67 * TwipsPerPixel));
    EXPECT_EQ(session_.Setting("VlmMainTop"), QString::number(67 * TwipsPerPixel));
    EXPECT_EQ(session_.Setting("VlmMainWidth"), QString::number(640 * TwipsPerPixel));
    EXPECT_EQ(session_.Setting("VlmMainHeight"), QString::number(520 * TwipsPerPixel));

    StartWith("VLM_MAIN");
    EXPECT_EQ(Width("VLM_MAIN"), 640);
    EXPECT_EQ(Height("VLM_MAIN"), 520);
    EXPECT_EQ(ShownSplitters(), shown);
}

// Odd sizes of pixels, and twips between two pixels as another program may have written them.
TEST_F(LayoutTest, EveryPlaceComesBackToThePixel) {
    const QStringList placeKeys = {"VlmMainLeft", "VlmMainTop", "VlmMainWidth", "VlmMainHeight"};
    for (const int odd : {0, 1, 7, 8, 14}) {
        session_.Set("VlmMainLeft", QString::number(1500 + odd));
        session_.Set("VlmMainTop", QString::number(750 + odd));
        session_.Set("VlmMainWidth", QString::number(8715 + odd));
        session_.Set("VlmMainHeight", QString::number(6615 + odd));
        session_.Set("FrameSplitLeft", QString::number(3015 + odd));
        session_.Set("TreeSplitTop", QString::number(2985 + odd));
        session_.Set("PdfSplitTop", QString::number(2505 + odd));
        StartWith("VLM_MAIN");
        const int up = odd > 7 ? 1 : 0;
        EXPECT_EQ(Left("VLM_MAIN"), 100 + up);
        EXPECT_EQ(Top("VLM_MAIN"), 50 + up);
        EXPECT_EQ(Width("VLM_MAIN"), 581 + up);
        EXPECT_EQ(Height("VLM_MAIN"), 441 + up);
        EXPECT_EQ(Left("SplitImg"), 201 + up);
        EXPECT_EQ(Top("TreeImg"), 199 + up);
        EXPECT_EQ(Top("PDFImg"), 167 + up);
        const QStringList shown = ShownSplitters();
        LeaveThroughOpen();
        EXPECT_EQ(SavedSplitters(), shown);
        QStringList saved;
        for (const QString& key : placeKeys)
            saved << session_.Setting(key).value_or("none");
        EXPECT_EQ(saved, QStringList({QString::number(1500 + 15 * up), QString::number(750 + 15 * up),
                                      QString::number(8715 + 15 * up), QString::number(6615 + 15 * up)}));
        StartWith("VLM_MAIN");
        EXPECT_EQ(Left("VLM_MAIN"), 100 + up);
        EXPECT_EQ(Top("VLM_MAIN"), 50 + up);
        EXPECT_EQ(Width("VLM_MAIN"), 581 + up);
        EXPECT_EQ(Height("VLM_MAIN"), 441 + up);
        EXPECT_EQ(ShownSplitters(), shown);
        Run().ClickAction("Tbar_Cancel");
        ASSERT_EQ(End(), 0);
    }
}

TEST_F(LayoutTest, CancelAndTheCloseBoxSaveNothing) {
    StartWith("VLM_MAIN");
    Run().Drag("SplitImg", {40, 0});
    Run().ClickMenu("VlmMnuFileCan");
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(SavedSplitters(), QStringList(splitterKeys.size(), "none"));
    StartWith("VLM_MAIN");
    Run().Drag("PDFImg", {0, 40});
    Run().CloseWindow("VLM_MAIN");
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(SavedSplitters(), QStringList(splitterKeys.size(), "none"));
    EXPECT_EQ(session_.Setting("VlmMainLeft"), std::nullopt);
}

TEST_F(LayoutTest, TheDisplayMenuHidesAndShowsTheBars) {
    StartWith("VLM_MAIN");
    const int panes = Height("VlmTreeView") + Height("VlmTreeSlide");
    EXPECT_TRUE(Run().Action("VlmMnuDispSB")["checked"].toBool());
    EXPECT_TRUE(Run().Action("VlmMnuDispTB")["checked"].toBool());

    Run().ClickMenu("VlmMnuDispSB");
    EXPECT_FALSE(Run().IsVisible("VlmStatusBar"));
    EXPECT_FALSE(Run().Action("VlmMnuDispSB")["checked"].toBool());
    Run().WaitFor("taller panes", [&] { return Height("VlmTreeView") + Height("VlmTreeSlide") > panes; });
    Run().ClickMenu("VlmMnuDispTB");
    EXPECT_FALSE(Run().IsVisible("VlmToolbar"));
    EXPECT_FALSE(Run().Action("VlmMnuDispTB")["checked"].toBool());

    Run().ClickMenu("VlmMnuDispTB");
    Run().ClickMenu("VlmMnuDispSB");
    EXPECT_TRUE(Run().IsVisible("VlmToolbar"));
    EXPECT_TRUE(Run().IsVisible("VlmStatusBar"));
    EXPECT_TRUE(Run().Action("VlmMnuDispSB")["checked"].toBool());
    Run().WaitFor("the panes of before",
                  [&] { return Height("VlmTreeView") + Height("VlmTreeSlide") == panes; });
}

TEST_F(LayoutTest, RunModeThreeHasNoDisplayMenu) {
    session_.Set("VlmMode", "3");
    StartWith("VLM_MAIN");
    EXPECT_FALSE(Run().Action("VlmMnuDisp")["shown"].toBool());
}

TEST_F(LayoutTest, TheWindowIsNeverSmallerThanItsLeastSize) {
    session_.Set("VlmMainWidth", "1500");
    session_.Set("VlmMainHeight", "900");
    StartWith("VLM_MAIN");
    EXPECT_EQ(Width("VLM_MAIN"), 200);
    EXPECT_EQ(Height("VLM_MAIN"), 133);
    for (const char* pane : {"VlmTreeView", "VlmTreeSlide", "VlmPDFSlide", "VlmPdfList"})
        EXPECT_GT(Width(pane), 40) << pane;
    EXPECT_FALSE(Run().IsVisible("VlmFind")) << "the tree needs all the room";
    EXPECT_EQ(Height("VlmTreeView"), Height("VlmFindBox"));
}

TEST_F(LayoutTest, InASmallWindowTheTreeHasAllOfItsPane) {
    StartWith("VLM_MAIN");
    Run().ResizeWindow("VLM_MAIN", {200, 133});
    Run().WaitFor("the tree to fill its pane", [&] { return Height("VlmTreeView") == Height("VlmFindBox"); });
    EXPECT_EQ(Top("VlmTreeView"), 0);
    EXPECT_FALSE(Run().IsVisible("VlmFind"));
    Run().ResizeWindow("VLM_MAIN", {433, 433});
    Run().WaitFor("the search field", [&] { return Run().IsVisible("VlmFind"); });
}

TEST_F(LayoutTest, StoredSplittersOutsideTheWindowAreBroughtBack) {
    session_.Set("FrameSplitLeft", "90000");
    session_.Set("TreeSplitTop", "-300");
    StartWith("VLM_MAIN");
    EXPECT_GE(Width("VlmPdfList"), 80);
    EXPECT_GT(Height("VlmTreeView"), 40);
}

} // namespace
} // namespace velmo
