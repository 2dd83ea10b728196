#include "library/category_tree.h"
#include "library/library_samples.h"
#include "support/message_queue.h"

#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

namespace velmo {
namespace {

class CategoryTreeTest : public testing::Test {
protected:
    CategoryTreeTest() {
        state_.LibraryDb = Make("user.mdb");
        state_.CurFolderID = 1;
        view_.resize(300, 300);
    }

    QString Make(const QString& name) {
        CreateLibraryFile(folder_.Path(name));
        return folder_.Path(name);
    }

    // root(1) > A(2) > B(3) > C(4); root > D(5)
    void FillSample(const QString& path, const QString& root) {
        Database database(path, Database::Access::Write);
        AddCategory(database, 0, root);
        AddCategory(database, 1, "A");
        AddCategory(database, 2, "B");
        AddCategory(database, 3, "C");
        AddCategory(database, 1, "D");
    }

    // Both libraries are shown.
    void FillBoth(const QString& userRoot, const QString& systemRoot) {
        FillSample(state_.LibraryDb, userRoot);
        state_.SystemDb = Make("system.mdb");
        FillSample(state_.SystemDb, systemRoot);
    }

    // The tree is made when it is first used, after the test has filled the libraries.
    CategoryTree& Tree() {
        if (!tree_) {
            tree_.emplace(view_, state_, messages_);
            tree_->BuildCategoryTree();
            view_.show();
            EXPECT_TRUE(QTest::qWaitForWindowExposed(&view_));
        }
        return *tree_;
    }

    QStringList Children(const QString& key) {
        QStringList texts;
        const QModelIndex parent = view_.Nodes().Find(key);
        for (int row = 0; row < view_.Nodes().rowCount(parent); ++row)
            texts << view_.Nodes().index(row, 0, parent).data().toString();
        return texts;
    }

    void Click(const QString& key) {
        QTest::mouseClick(view_.viewport(), Qt::LeftButton, Qt::NoModifier,
                          view_.visualRect(view_.Nodes().Find(key)).center());
    }

    int ErrorOf(const std::function<void()>& action) {
        try {
            action();
        } catch (const RuntimeError& error) {
            return int(error.Number());
        }
        return 0;
    }

    TempFolder folder_;
    GlobalState state_;
    MessageQueue messages_;
    KeyedTree view_;
    std::optional<CategoryTree> tree_;
};

TEST_F(CategoryTreeTest, TheRootIsOpenAndItsChildrenCarryPlaceholders) {
    FillSample(state_.LibraryDb, "R");
    Tree();
    EXPECT_EQ(view_.FirstKey(), "Nod1");
    EXPECT_TRUE(view_.IsExpanded("Nod1"));
    EXPECT_EQ(view_.Nodes().Image("Nod1"), 1);
    EXPECT_EQ(Children("Nod1"), (QStringList{"A", "D"}));
    EXPECT_EQ(view_.Nodes().Image("Nod2"), 2);
    EXPECT_FALSE(view_.IsExpanded("Nod2"));
    EXPECT_EQ(view_.FirstChildKey("Nod2"), "\\N13");
    EXPECT_EQ(view_.Text("\\N13"), "B") << "a placeholder is named like the child it stands for";
    EXPECT_EQ(view_.FirstChildKey("Nod5"), "");
}

TEST_F(CategoryTreeTest, ExpandingReplacesThePlaceholderOnce) {
    FillSample(state_.LibraryDb, "R");
    Tree();
    view_.SetExpanded("Nod2", true);
    EXPECT_EQ(view_.FirstChildKey("Nod2"), "Nod3");
    EXPECT_EQ(view_.Nodes().Image("Nod2"), 1);
    EXPECT_EQ(view_.FirstChildKey("Nod3"), "\\N14");
    view_.SetExpanded("Nod2", false);
    EXPECT_EQ(view_.Nodes().Image("Nod2"), 2);
    {
        Database database(state_.LibraryDb, Database::Access::Write);
        AddCategory(database, 2, "later");
    }
    view_.SetExpanded("Nod2", true);
    EXPECT_EQ(Children("Nod2"), QStringList{"B"}) << "a second expansion reads nothing";
}

TEST_F(CategoryTreeTest, OnlyTheFirstRootIsShown) {
    Database database(state_.LibraryDb, Database::Access::Write);
    AddCategory(database, 0, "first");
    AddCategory(database, 0, "second");
    Tree();
    EXPECT_EQ(view_.Nodes().rowCount(), 1);
    EXPECT_EQ(view_.Text("Nod1"), "first");
}

TEST_F(CategoryTreeTest, ALibraryWithoutARootIsAnError) {
    tree_.emplace(view_, state_, messages_);
    EXPECT_EQ(ErrorOf([&] { tree_->BuildCategoryTree(); }), 3021);
}

TEST_F(CategoryTreeTest, OfTwoLibrariesTheSystemLibraryStandsBelow) {
    FillBoth("user", "system");
    Tree();
    EXPECT_EQ(view_.Nodes().rowCount(), 2);
    EXPECT_EQ(view_.Text("Nod1"), "user");
    EXPECT_EQ(view_.Text("Nd21"), "system");
    EXPECT_TRUE(view_.IsExpanded("Nd21"));
    EXPECT_EQ(view_.FirstChildKey("Nd22"), "\\N23");
    view_.SetExpanded("Nd22", true);
    EXPECT_EQ(view_.FirstChildKey("Nd22"), "Nd23");
    EXPECT_EQ(view_.FirstChildKey("Nod2"), "\\N13") << "the same ID of the other library is another category";
    Click("Nd25");
    EXPECT_TRUE(state_.SystemTreeFirst);
    EXPECT_EQ(state_.CurFolderID, 5);
    Click("Nod5");
    EXPECT_FALSE(state_.SystemTreeFirst);
}

TEST_F(CategoryTreeTest, RestoresTheCategoryWithItsAncestorsOpen) {
    FillSample(state_.LibraryDb, "R");
    state_.CurFolderID = 4;
    Tree().RestoreSelection();
    EXPECT_EQ(view_.SelectedKey(), "Nod4");
    EXPECT_EQ(state_.CurFolderID, 4);
    EXPECT_TRUE(view_.IsExpanded("Nod2"));
    EXPECT_TRUE(view_.IsExpanded("Nod3"));
    EXPECT_EQ(view_.Nodes().Image("Nod4"), 1);
    EXPECT_TRUE(view_.updatesEnabled());
}

TEST_F(CategoryTreeTest, ACategoryThatIsGoneRestoresToTheFirst) {
    FillSample(state_.LibraryDb, "R");
    state_.CurFolderID = 99;
    Tree().RestoreSelection();
    EXPECT_EQ(state_.CurFolderID, 1);
    EXPECT_EQ(view_.SelectedKey(), "Nod1");
}

TEST_F(CategoryTreeTest, ARootRestoresToCategoryOne) {
    Database database(state_.LibraryDb, Database::Access::Write);
    AddCategory(database, 0, "first");
    AddCategory(database, 0, "second");
    state_.CurFolderID = 2;
    Tree().RestoreSelection();
    EXPECT_EQ(state_.CurFolderID, 1);
    EXPECT_EQ(view_.SelectedKey(), "Nod1");
}

TEST_F(CategoryTreeTest, ANodeThatIsNotInTheTreeIsAnError) {
    Database database(state_.LibraryDb, Database::Access::Write);
    AddCategory(database, 5, "stray");
    AddCategory(database, 0, "root");
    state_.CurFolderID = 2;
    Tree();
    EXPECT_EQ(ErrorOf([&] { tree_->RestoreSelection(); }), 35601) << "category 1 is not in the tree";
    EXPECT_TRUE(view_.updatesEnabled());
}

TEST_F(CategoryTreeTest, AParentThatIsGoneIsAnError) {
    Database database(state_.LibraryDb, Database::Access::Write);
    AddCategory(database, 5, "stray");
    AddCategory(database, 0, "root");
    Tree();
    EXPECT_EQ(ErrorOf([&] { tree_->RestoreSelection(); }), 3021);
}

TEST_F(CategoryTreeTest, ACategoryGoneFromTheSystemTreeRestoresToItsFirst) {
    FillBoth("user", "system");
    state_.SystemTreeFirst = true;
    state_.CurFolderID = 99;
    Tree().RestoreSelection();
    EXPECT_EQ(view_.SelectedKey(), "Nd21");
    EXPECT_EQ(state_.CurFolderID, 1);
}

TEST_F(CategoryTreeTest, TheRestoredCategoryIsScrolledIntoSight) {
    {
        Database database(state_.LibraryDb, Database::Access::Write);
        AddCategory(database, 0, "root");
        for (int i = 0; i < 200; ++i)
            AddCategory(database, 1, QString::number(i));
    }
    state_.CurFolderID = 200;
    Tree().RestoreSelection();
    EXPECT_TRUE(view_.viewport()->rect().contains(view_.visualRect(view_.Nodes().Find("Nod200")).center()));
}

TEST_F(CategoryTreeTest, RestoresTwentyOneLevelsButNotMore) {
    Database database(state_.LibraryDb, Database::Access::Write);
    int last = AddCategory(database, 0, "root");
    for (int level = 1; level <= 22; ++level)
        last = AddCategory(database, last, QString::number(level));
    state_.CurFolderID = 22;
    Tree().RestoreSelection();
    EXPECT_EQ(view_.SelectedKey(), "Nod22") << "21 levels below the root";
    tree_->BuildCategoryTree();
    state_.CurFolderID = std::int16_t(last);
    EXPECT_EQ(ErrorOf([&] { tree_->RestoreSelection(); }), 35601);
}

TEST_F(CategoryTreeTest, ParentsInACircleEndInAnError) {
    Database database(state_.LibraryDb, Database::Access::Write);
    AddCategory(database, 0, "root");
    AddCategory(database, 3, "a");
    AddCategory(database, 2, "b");
    state_.CurFolderID = 2;
    Tree();
    EXPECT_EQ(ErrorOf([&] { tree_->RestoreSelection(); }), 35601);
}

TEST_F(CategoryTreeTest, AClickMovesTheOpenFolder) {
    FillSample(state_.LibraryDb, "R");
    Tree().RestoreSelection();
    QSignalSpy chosen(&*tree_, &CategoryTree::CategoryChosen);
    Click("Nod5");
    EXPECT_EQ(chosen.size(), 1);
    EXPECT_EQ(state_.CurFolderID, 5);
    EXPECT_EQ(view_.Nodes().Image("Nod5"), 1) << "a category without children";
    EXPECT_EQ(view_.Nodes().Image("Nod1"), 1) << "the root is expanded";
    Click("Nod2");
    EXPECT_EQ(view_.Nodes().Image("Nod5"), 2);
    EXPECT_EQ(view_.Nodes().Image("Nod2"), 2) << "children, but not expanded";
}

TEST_F(CategoryTreeTest, KeysThatOpenLeaveACategoryWithoutChildrenClosed) {
    FillSample(state_.LibraryDb, "R");
    Tree().RestoreSelection();
    QTest::keyClick(&view_, Qt::Key_Asterisk);
    EXPECT_EQ(view_.Nodes().Image("Nod5"), 2);
    EXPECT_EQ(view_.FirstChildKey("Nod2").first(2), "\\N") << "what is below it is not read";
    for (const Qt::Key key : {Qt::Key_Asterisk, Qt::Key_Return}) {
        Click("Nod5");
        QTest::keyClick(&view_, key);
        EXPECT_EQ(view_.Nodes().Image("Nod5"), 1) << "it is the selected one";
        EXPECT_FALSE(view_.IsExpanded("Nod5"));
        Click("Nod2");
        EXPECT_EQ(view_.Nodes().Image("Nod5"), 2);
    }
}

TEST_F(CategoryTreeTest, ACategoryWhoseChildrenAreGoneIsNotOpen) {
    FillSample(state_.LibraryDb, "R");
    Tree().RestoreSelection();
    Database(state_.LibraryDb, Database::Access::Write).Execute("DELETE FROM FolderTable WHERE ParentID=2");
    view_.SetExpanded("Nod2", true);
    EXPECT_EQ(view_.FirstChildKey("Nod2"), "");
    EXPECT_FALSE(view_.IsExpanded("Nod2"));
    EXPECT_EQ(view_.Nodes().Image("Nod2"), 2);
}

TEST_F(CategoryTreeTest, ThePathLeavesTheRootOut) {
    FillSample(state_.LibraryDb, "R");
    state_.CurFolderID = 3;
    state_.CurFolderName = "B";
    Tree().RestoreSelection();
    EXPECT_EQ(tree_->PathText(), "A － B");
    Click("Nod1");
    state_.CurFolderName = "R";
    EXPECT_EQ(tree_->PathText(), "R") << "a root shows its own name";
}

TEST_F(CategoryTreeTest, OfTwoLibrariesThePathNamesTheRoot) {
    FillBoth("user", "system");
    state_.CurFolderID = 3;
    state_.CurFolderName = "B";
    Tree().RestoreSelection();
    EXPECT_EQ(tree_->PathText(), "user － A － B");
    state_.SystemTreeFirst = true;
    tree_->RestoreSelection();
    EXPECT_EQ(tree_->PathText(), "system － A － B");
    Click("Nd21");
    state_.CurFolderName = "system";
    EXPECT_EQ(tree_->PathText(), "system");
}

TEST_F(CategoryTreeTest, ALibraryThatIsLockedShowsAnErrorAndStaysUsable) {
    FillSample(state_.LibraryDb, "R");
    Tree().RestoreSelection();
    Database other(state_.LibraryDb, Database::Access::Write);
    other.Execute("BEGIN EXCLUSIVE");
    messages_.ExpectContaining(state_.LibraryDb);
    view_.SetExpanded("Nod2", true);
    other.Execute("COMMIT");
    EXPECT_FALSE(view_.IsExpanded("Nod2"));
    Click("Nod5");
    EXPECT_EQ(state_.CurFolderID, 5);
    view_.SetExpanded("Nod2", true);
    EXPECT_EQ(view_.FirstChildKey("Nod2"), "Nod3");
}

} // namespace
} // namespace velmo
