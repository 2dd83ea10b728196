#include "library/category_source.h"
#include "library/category_tree.h"
#include "library/library_samples.h"
#include "support/failure.h"
#include "support/message_queue.h"

#include <QScrollBar>
#include <QTest>
#include <gtest/gtest.h>

namespace velmo {
namespace {

// root(1) > A(2) > B(3) > C(4); root > D(5) > E(6); a second root X(7) > Y(8); then 60 categories below the
// root.
class CategoryRebuildTest : public testing::Test {
protected:
    CategoryRebuildTest() {
        state_.LibraryDb = folder_.Path("user.mdb");
        CreateLibraryFile(state_.LibraryDb);
        Database database(state_.LibraryDb, Database::Access::Write);
        const QList<std::pair<int, QString>> rows{{0, "root"}, {1, "A"}, {2, "B"}, {3, "C"},
                                                  {1, "D"},    {5, "E"}, {0, "X"}, {7, "Y"}};
        for (const auto& [parent, name] : rows)
            AddCategory(database, parent, name);
        for (int i = 0; i < 60; ++i)
            AddCategory(database, 1, QString("N%1").arg(i));
        state_.CurFolderID = 3;
        view_.resize(300, 300);
        view_.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&view_));
        tree_.BuildCategoryTree();
        tree_.RestoreSelection();
    }

    void Change(const QString& sql) { Database(state_.LibraryDb, Database::Access::Write).Execute(sql); }
    bool IsOpen(const QString& key) { return view_.Nodes().Contains(key) && view_.IsExpanded(key); }
    int Scrolled() { return view_.verticalScrollBar()->value(); }

    TempFolder folder_;
    GlobalState state_;
    MessageQueue messages_;
    KeyedTree view_;
    CategoryTree tree_{view_, state_, messages_};
};

TEST_F(CategoryRebuildTest, WhatWasOpenStaysOpen) {
    view_.SetExpanded("Nod5", true);
    Change("INSERT INTO FolderTable (ParentID,FolderName,SLDFileName) VALUES (5,'new','')");
    tree_.Rebuild();
    EXPECT_TRUE(IsOpen("Nod1"));
    EXPECT_TRUE(IsOpen("Nod2"));
    EXPECT_TRUE(IsOpen("Nod5"));
    EXPECT_TRUE(view_.Nodes().Contains("Nod69"));
    EXPECT_EQ(view_.Nodes().Image("Nod5"), 1);
    EXPECT_EQ(view_.SelectedKey(), "Nod3");
}

TEST_F(CategoryRebuildTest, WhatWasClosedStaysClosed) {
    tree_.Rebuild();
    EXPECT_FALSE(IsOpen("Nod5"));
    EXPECT_EQ(view_.Nodes().Image("Nod5"), 2);
}

TEST_F(CategoryRebuildTest, AnOpenCategoryThatIsGoneOrEmptyIsPassedOver) {
    view_.SetExpanded("Nod5", true);
    Change("DELETE FROM FolderTable WHERE ID=6");
    tree_.Rebuild();
    EXPECT_FALSE(IsOpen("Nod5"));
    Change("DELETE FROM FolderTable WHERE ID=5");
    tree_.Rebuild();
    EXPECT_FALSE(view_.Nodes().Contains("Nod5"));
}

TEST_F(CategoryRebuildTest, TheScrolledPlaceAndTheFocusStay) {
    state_.CurFolderID = 67;
    tree_.RestoreSelection();
    view_.setFocus();
    view_.verticalScrollBar()->setValue(view_.verticalScrollBar()->maximum() - 1);
    const int before = Scrolled();
    ASSERT_GT(before, 0);
    Change("UPDATE FolderTable SET FolderName='renamed' WHERE ID=67");
    tree_.Rebuild();
    EXPECT_EQ(Scrolled(), before);
    EXPECT_EQ(view_.Text("Nod67"), "renamed");
    EXPECT_TRUE(view_.hasFocus());
}

TEST_F(CategoryRebuildTest, TheSelectedCategoryIsBroughtIntoSight) {
    view_.verticalScrollBar()->setValue(view_.verticalScrollBar()->maximum());
    state_.CurFolderID = 2;
    tree_.Rebuild();
    const QRect seen = view_.visualRect(view_.Nodes().Find("Nod2"));
    EXPECT_TRUE(view_.viewport()->rect().contains(seen.center()));
}

TEST_F(CategoryRebuildTest, ACategoryThatIsItsOwnParentIsNotInTheTree) {
    Change("UPDATE FolderTable SET ParentID=3 WHERE ID=3");
    EXPECT_EQ(Failure([this] { tree_.Rebuild(); }), ErrorNumber::ElementNotFound);
    EXPECT_FALSE(view_.Nodes().Contains("Nod3"));
    EXPECT_TRUE(view_.Nodes().Contains("Nod2")) << "the rest of the tree is usable";
}

TEST_F(CategoryRebuildTest, ACircleOfParentsIsNotInTheTree) {
    Change("UPDATE FolderTable SET ParentID=4 WHERE ID=2");
    EXPECT_EQ(Failure([this] { tree_.Rebuild(); }), ErrorNumber::ElementNotFound);
    EXPECT_TRUE(view_.Nodes().Contains("Nod5"));
}

TEST_F(CategoryRebuildTest, ACategoryThatIsGoneIsNotChosenAndTheOneBeforeStaysSo) {
    Change("DELETE FROM FolderTable WHERE ID=6");
    EXPECT_FALSE(tree_.Choose(false, {1, 5, 6}));
    EXPECT_EQ(view_.SelectedKey(), "Nod3");
    EXPECT_EQ(state_.CurFolderID, 3);
    Change("INSERT INTO FolderTable (ParentID, FolderName) VALUES (5, 'new')");
    EXPECT_TRUE(tree_.Choose(false, {1, 5, 69}));
    EXPECT_EQ(view_.SelectedKey(), "Nod69");
}

TEST_F(CategoryRebuildTest, ACategoryThatIsGoneButStillInTheTreeIsNotChosenEither) {
    for (const char* gone : {"6", "5"}) {
        Change("INSERT OR IGNORE INTO FolderTable (ID, ParentID, FolderName) VALUES (6, 5, 'E')");
        tree_.Rebuild();
        EXPECT_TRUE(tree_.Choose(false, {1, 5, 6}));
        EXPECT_TRUE(tree_.Choose(false, {1, 2, 3}));
        ASSERT_TRUE(view_.Nodes().Contains("Nod6"));
        Change(QString("DELETE FROM FolderTable WHERE ID=%1").arg(gone));
        EXPECT_FALSE(tree_.Choose(false, {1, 5, 6})) << gone;
        EXPECT_FALSE(view_.Nodes().Contains("Nod6")) << gone;
        EXPECT_EQ(view_.SelectedKey(), "Nod3");
        EXPECT_EQ(state_.CurFolderID, 3);
    }
}

TEST_F(CategoryRebuildTest, AMissingParentIsARunTimeError) {
    Change("DELETE FROM FolderTable WHERE ID=2");
    EXPECT_EQ(Failure([this] { tree_.Rebuild(); }), ErrorNumber::NoCurrentRecord);
    EXPECT_TRUE(view_.Nodes().Contains("Nod1"));
}

class CategorySourceTest : public CategoryRebuildTest {
protected:
    KeyedTree picker_;
    CategorySource source_{picker_, state_};
};

TEST_F(CategorySourceTest, EveryRootIsShownOpenWithTheLevelBelow) {
    source_.AddRoots();
    EXPECT_EQ(picker_.Nodes().rowCount(), 2);
    EXPECT_TRUE(picker_.IsExpanded("Nod1"));
    EXPECT_TRUE(picker_.IsExpanded("Nod7"));
    EXPECT_EQ(picker_.Nodes().Image("Nod7"), 1);
    EXPECT_TRUE(picker_.Nodes().Contains("Nod8"));
    EXPECT_EQ(picker_.FirstChildKey("Nod2"), "\\N13") << "a placeholder for what is below";
}

TEST_F(CategorySourceTest, AnOpenedCategoryIsFilledOnce) {
    source_.AddRoots();
    source_.Load("Nod2");
    source_.Load("Nod2");
    EXPECT_EQ(picker_.FirstChildKey("Nod2"), "Nod3");
    EXPECT_EQ(picker_.Nodes().rowCount(picker_.Nodes().Find("Nod2")), 1);
}

TEST_F(CategorySourceTest, TheChoiceIsNamedByItsPath) {
    source_.AddRoots();
    source_.Load("Nod2");
    EXPECT_EQ(source_.ChoiceText("Nod3"), QString::fromUtf8("A － B"));
    EXPECT_EQ(source_.ChoiceText("Nod1"), "root");
    EXPECT_EQ(source_.ChoiceText("Nod8"), QString::fromUtf8("X － Y"));
}

TEST_F(CategorySourceTest, TheSystemLibraryIsReadWhenItIsTheOneInUse) {
    state_.SystemDb = folder_.Path("system.mdb");
    CreateLibraryFile(state_.SystemDb);
    {
        Database database(state_.SystemDb, Database::Access::Write);
        AddCategory(database, 0, "system");
    }
    state_.SystemTreeFirst = true;
    source_.AddRoots();
    EXPECT_EQ(picker_.Text("Nod1"), "system");
}

TEST_F(CategorySourceTest, ALibraryWithoutCategoriesIsAnEmptyTree) {
    Change("DELETE FROM FolderTable");
    source_.AddRoots();
    EXPECT_EQ(picker_.Nodes().rowCount(), 0);
}

} // namespace
} // namespace velmo
