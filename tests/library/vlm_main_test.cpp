#include "library/library_samples.h"
#include "library/vlm_main.h"
#include "platform/elided_label.h"
#include "platform/files.h"
#include "platform/slide_view.h"
#include "support/message_queue.h"

#include <QAccessible>
#include <QAction>
#include <QScreen>
#include <QStatusBar>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

namespace velmo {
namespace {

class BrowserTest : public testing::Test {
protected:
    BrowserTest() : settings_(NativePath(folder_.Path("velmo.ini"))) {
        state_.HomeDir = folder_.Path("home\\");
        state_.TempDir = folder_.Path("exchange\\");
        folder_.Write("exchange\\velmo.ret", "kept");
        folder_.Write("home\\SMB\\one.txt", "$VAR\r\n$GEO\r\n");
        folder_.Write("home\\SMB\\a.SLD", SampleSlide());
        CreateLibraryFile(folder_.Path("home\\Velmo2.mdb"));
        Database database(folder_.Path("home\\Velmo2.mdb"), Database::Access::Write);
        AddCategory(database, 0, "root");
        AddCategory(database, 1, "A", "SMB\\a.SLD");
        AddCategory(database, 1, "B");
        AddEntry(database, 2, "one", "SMB\\one.txt", "SMB\\a.SLD");
        AddEntry(database, 2, "gone", "SMB\\gone.txt");
    }

    VLM_MAIN& Browser() {
        if (!browser_) {
            browser_.emplace(state_, settings_, messages_, [this](VLM_MAIN& browser) {
                ++shown_;
                topmostWhenShown_ = IsTopmost();
                if (inVariableWindow_)
                    inVariableWindow_(browser);
            });
            EXPECT_TRUE(browser_->Load());
            browser_->show();
            EXPECT_TRUE(QTest::qWaitForWindowExposed(&*browser_));
        }
        return *browser_;
    }

    template <typename Control>
    Control* Find(const char* name) {
        auto* control = Browser().findChild<Control*>(QLatin1String(name));
        EXPECT_TRUE(control) << name;
        return control;
    }

    void Trigger(const char* action) { Find<QAction>(action)->trigger(); }

    void ClickNode(const QString& key) {
        auto* tree = Find<KeyedTree>("VlmTreeView");
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier,
                          tree->visualRect(tree->Nodes().Find(key)).center());
    }

    void ClickEntry(int row) {
        auto* list = Find<QListView>("VlmPdfList");
        QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                          list->visualRect(list->model()->index(row, 0)).center());
    }

    bool IsTopmost() const { return browser_->windowFlags().testFlag(Qt::WindowStaysOnTopHint); }

    QString Path() { return Find<QStatusBar>("VlmStatusBar")->findChild<QLabel*>()->text(); }

    TempFolder folder_;
    SettingsStore settings_;
    GlobalState state_;
    MessageQueue messages_;
    std::function<void(VLM_MAIN&)> inVariableWindow_;
    std::optional<VLM_MAIN> browser_;
    int shown_ = 0;
    bool topmostWhenShown_ = false;
};

TEST_F(BrowserTest, AClickedCategoryShowsSlidePathAndEntries) {
    Browser();
    ClickNode("Nod2");
    EXPECT_TRUE(Find<SlideView>("VlmTreeSlide")->HasPicture());
    EXPECT_EQ(Path(), "A");
    EXPECT_EQ(state_.CurFolderName, "A");
    EXPECT_EQ(state_.CurSldFile, folder_.Path("home\\SMB\\a.SLD"));
    EXPECT_EQ(Find<QListView>("VlmPdfList")->model()->rowCount(), 2);
    ClickNode("Nod3");
    EXPECT_FALSE(Find<SlideView>("VlmTreeSlide")->HasPicture()) << "a category without a slide clears it";
    EXPECT_EQ(state_.CurSldFile, "");
    EXPECT_EQ(Find<QListView>("VlmPdfList")->model()->rowCount(), 0);
}

TEST_F(BrowserTest, WhateverTakesTheFocusHasAName) {
    int reached = 0;
    for (QWidget* control : Browser().findChildren<QWidget*>()) {
        if (!control->isVisible() || (control->focusPolicy() & Qt::TabFocus) == 0)
            continue;
        ++reached;
        QAccessibleInterface* told = QAccessible::queryAccessibleInterface(control);
        ASSERT_TRUE(told);
        EXPECT_FALSE(told->text(QAccessible::Name).isEmpty()) << qUtf8Printable(control->objectName());
        EXPECT_NE(told->role(), QAccessible::Client) << qUtf8Printable(control->objectName());
    }
    EXPECT_GE(reached, 8);
}

TEST_F(BrowserTest, APathThatIsTooLongIsCutInTheMiddle) {
    const QString name = QString(QChar(u'長')).repeated(200);
    Database(folder_.Path("home\\Velmo2.mdb"), Database::Access::Write)
        .Execute("UPDATE FolderTable SET FolderName='" + name + "' WHERE ID=2");
    Browser();
    ClickNode("Nod2");
    EXPECT_EQ(Path(), name);
    const auto* panel = Find<QStatusBar>("VlmStatusBar")->findChild<ElidedLabel*>();
    ASSERT_TRUE(panel);
    EXPECT_LT(panel->ShownText().size(), name.size());
}

TEST_F(BrowserTest, OpenWithNothingChosenSaysSo) {
    Browser();
    messages_.Expect("シンボルを選択してください");
    Trigger("VlmMnuFileOpen");
    EXPECT_EQ(shown_, 0);
    EXPECT_TRUE(Browser().isVisible());
}

TEST_F(BrowserTest, OpenOnAMissingFileNamesIt) {
    Browser();
    ClickNode("Nod2");
    ClickEntry(1);
    messages_.Expect(folder_.Path("home\\SMB\\gone.txt") + "が見つかりません");
    Trigger("Tbar_Open");
    EXPECT_EQ(shown_, 0);
}

TEST_F(BrowserTest, ACancelledVariableWindowComesBackTopmost) {
    inVariableWindow_ = [this](VLM_MAIN& browser) {
        state_.Confirmed = false;
        browser.ForgetOpened();
    };
    Browser();
    EXPECT_TRUE(IsTopmost());
    ClickNode("Nod2");
    ClickEntry(0);
    Trigger("Tbar_Open");
    EXPECT_EQ(shown_, 1);
    EXPECT_FALSE(topmostWhenShown_) << "the variable window must be able to come to the front";
    EXPECT_TRUE(Browser().isVisible());
    EXPECT_TRUE(IsTopmost());
    Browser().close();
    EXPECT_EQ(settings_.Get("TreeLast", "unset"), "unset") << "after a cancel nothing is saved";
}

TEST_F(BrowserTest, AConfirmedVariableWindowEndsTheBrowserAndSaves) {
    inVariableWindow_ = [this](VLM_MAIN&) { state_.Confirmed = true; };
    Browser();
    ClickNode("Nod2");
    ClickEntry(0);
    Trigger("VlmMnuFileOpen");
    EXPECT_FALSE(Browser().isVisible());
    EXPECT_EQ(settings_.Get("TreeLast"), "2");
    EXPECT_EQ(settings_.Get("LastPDF"), folder_.Path("home\\SMB\\one.txt"));
    EXPECT_EQ(settings_.Get("VlmMainWidth"), QString::number(Browser().width() * 15));
    EXPECT_EQ(settings_.Get("EdtTreeLast", "unset"), "unset");
    EXPECT_EQ(settings_.Get("Tree2nd1st", "unset"), "unset");
}

TEST_F(BrowserTest, InModeThreeTheBrowserStaysAfterAConfirm) {
    CreateLibraryFile(folder_.Path("home\\VelmoUsr.mdb"));
    {
        Database user(folder_.Path("home\\VelmoUsr.mdb"), Database::Access::Write);
        AddCategory(user, 0, "user root");
    }
    state_.RunMode = 3;
    state_.UserLibrary = true;
    inVariableWindow_ = [this](VLM_MAIN&) { state_.Confirmed = true; };
    Browser();
    ClickNode("Nd22");
    ClickEntry(0);
    Trigger("Tbar_Open");
    EXPECT_EQ(shown_, 1);
    EXPECT_TRUE(Browser().isVisible());
    Browser().close();
    EXPECT_EQ(settings_.Get("EdtTreeLast"), "2");
    EXPECT_EQ(settings_.Get("Tree2nd1st"), "1");
    EXPECT_EQ(settings_.Get("UsrLastPDF"), folder_.Path("home\\SMB\\one.txt"));
    EXPECT_EQ(settings_.Get("UsrTreeLast", "unset"), "unset");
}

TEST_F(BrowserTest, BothLibrariesStayWhenTheRunModeChanges) {
    CreateLibraryFile(folder_.Path("home\\VelmoUsr.mdb"));
    {
        Database user(folder_.Path("home\\VelmoUsr.mdb"), Database::Access::Write);
        AddCategory(user, 0, "user root");
    }
    state_.RunMode = 3;
    state_.UserLibrary = true;
    inVariableWindow_ = [this](VLM_MAIN&) {
        state_.RunMode = 2;
        state_.Confirmed = true;
    };
    Browser();
    ClickNode("Nd22");
    EXPECT_EQ(Path(), "root － A");
    ClickEntry(0);
    Trigger("Tbar_Open");
    EXPECT_FALSE(Browser().isVisible()) << "values were given";
    EXPECT_EQ(settings_.Get("EdtTreeLast"), "2");
    EXPECT_EQ(settings_.Get("Tree2nd1st"), "1");
    EXPECT_EQ(settings_.Get("UsrTreeLast", "unset"), "unset") << "category 2 is none of the user library";
}

TEST_F(BrowserTest, MenuCancelAnswersThatNothingWasChosen) {
    Browser();
    Trigger("VlmMnuFileCan");
    EXPECT_FALSE(Browser().isVisible());
    EXPECT_EQ(folder_.Read("exchange\\velmo.ret2"), "NO SELECT\r\n");
    EXPECT_EQ(folder_.Read("exchange\\velmo.ret"), "kept");
    EXPECT_EQ(settings_.Get("TreeLast", "unset"), "unset");
}

TEST_F(BrowserTest, MenuCancelAfterAnOpenSavesNothing) {
    Browser();
    ClickNode("Nod2");
    ClickEntry(0);
    Trigger("Tbar_Open");
    Trigger("VlmMnuFileCan");
    EXPECT_EQ(settings_.Get("TreeLast", "unset"), "unset");
}

TEST_F(BrowserTest, TheToolBarsCancelAnswersNothing) {
    Browser();
    Trigger("Tbar_Cancel");
    EXPECT_FALSE(Browser().isVisible());
    EXPECT_FALSE(folder_.Exists("exchange\\velmo.ret2"));
}

TEST_F(BrowserTest, TheCloseBoxAnswersNothing) {
    Browser().close();
    EXPECT_FALSE(folder_.Exists("exchange\\velmo.ret2"));
    EXPECT_EQ(settings_.Get("TreeLast", "unset"), "unset");
}

TEST_F(BrowserTest, AVariableWindowLeftWithoutAnAnswerConfirmsNothing) {
    state_.Confirmed = true;
    Browser();
    ClickNode("Nod2");
    ClickEntry(0);
    Trigger("Tbar_Open");
    EXPECT_TRUE(Browser().isVisible());
    Browser().close();
    EXPECT_EQ(settings_.Get("TreeLast"), "2") << "it was left through Open";
}

TEST_F(BrowserTest, AResizeUnderTheVariableWindowDoesNotRaiseTheBrowser) {
    inVariableWindow_ = [this](VLM_MAIN& browser) {
        browser.resize(500, 450);
        QApplication::processEvents();
        EXPECT_FALSE(IsTopmost());
    };
    Browser();
    ClickNode("Nod2");
    ClickEntry(0);
    Trigger("Tbar_Open");
    EXPECT_EQ(shown_, 1);
    EXPECT_TRUE(IsTopmost());
}

TEST_F(BrowserTest, AMinimisedWindowSavesEverythingButItsPlace) {
    inVariableWindow_ = [](VLM_MAIN& browser) { browser.showMinimized(); };
    Browser();
    ClickNode("Nod2");
    ClickEntry(0);
    Trigger("Tbar_Open");
    Browser().close();
    EXPECT_EQ(settings_.Get("TreeLast"), "2");
    EXPECT_EQ(settings_.Get("VlmMainWidth", "unset"), "unset");
}

TEST_F(BrowserTest, TheUserLibraryHasKeysOfItsOwn) {
    CreateLibraryFile(folder_.Path("home\\VelmoUsr.mdb"));
    {
        Database user(folder_.Path("home\\VelmoUsr.mdb"), Database::Access::Write);
        AddCategory(user, 0, "user root");
        AddCategory(user, 1, "U");
        AddEntry(user, 2, "one", "SMB\\one.txt");
    }
    state_.UserLibrary = true;
    inVariableWindow_ = [this](VLM_MAIN&) { state_.Confirmed = true; };
    Browser();
    ClickNode("Nod2");
    ClickEntry(0);
    Trigger("Tbar_Open");
    EXPECT_EQ(settings_.Get("UsrTreeLast"), "2");
    EXPECT_EQ(settings_.Get("UsrLastPDF"), folder_.Path("home\\SMB\\one.txt"));
    EXPECT_EQ(settings_.Get("TreeLast", "unset"), "unset");
}

TEST_F(BrowserTest, ACategoryThatCannotBeReadLeavesNothingOfTheOneBefore) {
    Browser();
    ClickNode("Nod2");
    ClickEntry(0);
    {
        Database database(folder_.Path("home\\Velmo2.mdb"), Database::Access::Write);
        database.Execute("DELETE FROM FolderTable WHERE ID=3");
    }
    messages_.ExpectContaining("3021");
    ClickNode("Nod3");
    EXPECT_EQ(state_.SymbolFile, "");
    EXPECT_EQ(Find<QListView>("VlmPdfList")->model()->rowCount(), 0);
    EXPECT_EQ(Path(), "");
    ClickNode("Nod2");
    EXPECT_EQ(Path(), "A");
}

TEST_F(BrowserTest, CancelThatCannotBeWrittenKeepsTheWindow) {
    Browser();
    folder_.Write("exchange\\velmo.ret2\\in the way", "");
    messages_.ExpectContaining("velmo.ret2");
    Trigger("VlmMnuFileCan");
    EXPECT_TRUE(Browser().isVisible());
}

TEST_F(BrowserTest, ADoubleClickOnTheSlideOpensOnRelease) {
    inVariableWindow_ = [this](VLM_MAIN&) { state_.Confirmed = false; };
    Browser();
    ClickNode("Nod2");
    ClickEntry(0);
    auto* slide = Find<SlideView>("VlmPDFSlide");
    QTest::mouseClick(slide, Qt::LeftButton);
    EXPECT_EQ(shown_, 0) << "a single click does not open";
    QMouseEvent doubleClick(QEvent::MouseButtonDblClick, QPointF(5, 5), slide->mapToGlobal(QPointF(5, 5)),
                            Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(slide, &doubleClick);
    EXPECT_EQ(shown_, 0);
    QTest::mouseRelease(slide, Qt::LeftButton);
    EXPECT_EQ(shown_, 1);
    QTest::mouseRelease(slide, Qt::LeftButton);
    EXPECT_EQ(shown_, 1);
}

TEST_F(BrowserTest, RestoresCategoryAndEntry) {
    settings_.Save("TreeLast", 2);
    settings_.Save("LastPDF", folder_.Path("home\\SMB\\one.txt"));
    Browser();
    EXPECT_EQ(Find<KeyedTree>("VlmTreeView")->SelectedKey(), "Nod2");
    EXPECT_EQ(state_.SymbolFile, folder_.Path("home\\SMB\\one.txt"));
    EXPECT_EQ(Path(), "A");
    Trigger("Tbar_Open");
    EXPECT_EQ(shown_, 1) << "Open works at once";
    ClickNode("Nod2");
    EXPECT_EQ(state_.SymbolFile, "") << "after an ordinary click no entry is chosen";
}

TEST_F(BrowserTest, APlaceThatIsNoNumberIsTheDefault) {
    for (const char* key : {"VlmMainLeft", "VlmMainTop", "VlmMainWidth", "VlmMainHeight", "FrameSplitLeft"})
        settings_.Save(key, "far");
    EXPECT_EQ(Browser().pos(), QPoint(67, 67));
    EXPECT_EQ(Browser().size(), QSize(433, 433));
}

TEST_F(BrowserTest, AFirstStartHasTheDefaultPlace) {
    EXPECT_EQ(Browser().pos(), QPoint(67, 67));
    EXPECT_EQ(Browser().size(), QSize(433, 433));
}

TEST_F(BrowserTest, APlaceOffEveryScreenIsBroughtBack) {
    settings_.Save("VlmMainLeft", "900000");
    settings_.Save("VlmMainTop", "-1e300");
    settings_.Save("VlmMainWidth", "300000");
    settings_.Save("VlmMainHeight", "300000");
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    EXPECT_TRUE(screen.contains(Browser().pos()));
    EXPECT_LE(Browser().width(), screen.width());
    EXPECT_LT(Browser().height(), screen.height()) << "the title bar needs room too";
}

TEST_F(BrowserTest, ItDoesNotBecomeSmallerThanItsLeastSize) {
    Browser().resize(10, 10);
    EXPECT_EQ(Browser().size(), QSize(200, 133));
}

TEST_F(BrowserTest, TheSavedPlaceComesBack) {
    for (const auto& [key, twips] : {std::pair("VlmMainLeft", 150), std::pair("VlmMainTop", 300),
                                     std::pair("VlmMainWidth", 9000), std::pair("VlmMainHeight", 7500)})
        settings_.Save(key, twips);
    EXPECT_EQ(Browser().pos(), QPoint(10, 20));
    EXPECT_EQ(Browser().size(), QSize(600, 500));
}

TEST_F(BrowserTest, ACategoryThatCannotBeSelectedLeavesTheBrowserUsable) {
    Database database(folder_.Path("home\\Velmo2.mdb"), Database::Access::Write);
    database.Execute("UPDATE FolderTable SET ID=9 WHERE ID=1");
    database.Execute("UPDATE FolderTable SET ParentID=9 WHERE ParentID=1");
    messages_.ExpectContaining("35601");
    Browser();
    QTest::keyClick(Find<KeyedTree>("VlmTreeView"), Qt::Key_Home);
    EXPECT_EQ(Find<KeyedTree>("VlmTreeView")->SelectedKey(), "Nod9") << "the keyboard can choose as well";
    ClickNode("Nod2");
    EXPECT_EQ(Path(), "A");
}

TEST_F(BrowserTest, FailuresOfTheLoadEndTheProgram) {
    folder_.Write("home\\Velmo2.mdb", "this is no database at all, it is a text of some length");
    VLM_MAIN browser(state_, settings_, messages_, {});
    try {
        browser.Load();
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(int(error.Number()), 3343);
        EXPECT_TRUE(error.IsFatal());
        EXPECT_EQ(error.File(), folder_.Path("home\\Velmo2.mdb"));
    }
}

} // namespace
} // namespace velmo
