#include "platform/keyed_tree.h"
#include "platform/runtime_error.h"

#include <QAbstractItemModelTester>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

namespace velmo {
namespace {

class KeyedTreeTest : public testing::Test {
protected:
    KeyedTreeTest() : tester_(&tree_.Nodes(), QAbstractItemModelTester::FailureReportingMode::Fatal) {
        tree_.Nodes().Add({}, {NewNode{"root", "Root", 1, {}}});
        tree_.Nodes().Add("root",
                          {NewNode{"a", "A", 2, {NewNode{"hint", "H", 2, {}}}}, NewNode{"b", "B", 2, {}}});
        tree_.resize(200, 200);
        tree_.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&tree_));
        tree_.SetExpanded("root", true);
    }

    void Click(const QString& key) {
        QTest::mouseClick(tree_.viewport(), Qt::LeftButton, Qt::NoModifier,
                          tree_.visualRect(tree_.Nodes().Find(key)).center());
    }

    KeyedTree tree_;
    QAbstractItemModelTester tester_;
};

TEST_F(KeyedTreeTest, NodesAreFoundByKey) {
    EXPECT_EQ(tree_.Text("a"), "A");
    EXPECT_EQ(tree_.ParentKey("a"), "root");
    EXPECT_EQ(tree_.ParentKey("root"), "");
    EXPECT_EQ(tree_.FirstKey(), "root");
    EXPECT_EQ(tree_.FirstChildKey("a"), "hint");
    EXPECT_EQ(tree_.FirstChildKey("b"), "");
}

TEST_F(KeyedTreeTest, ItDoesNotScrollSidewaysForLongNames) {
    tree_.Nodes().Add("root", {NewNode{"long", QString("long ").repeated(30), 2, {}}});
    for (const QSize size : {QSize(300, 200), QSize(150, 200), QSize(200, 200)}) {
        tree_.resize(size);
        ASSERT_TRUE(QTest::qWaitFor([&] { return tree_.columnWidth(0) == tree_.viewport()->width(); }));
        EXPECT_FALSE(tree_.horizontalScrollBar()->isVisible());
    }
    tree_.resize(60, 30);
    ASSERT_TRUE(QTest::qWaitFor([&] { return tree_.height() == 30; }));
    EXPECT_FALSE(tree_.horizontalScrollBar()->isVisible()) << "there is hardly room for a node";
}

TEST_F(KeyedTreeTest, ADeepNodesNameCanBeRead) {
    QString deepest = "b";
    for (int i = 0; i < 12; ++i) {
        const QString key = QString("deep%1").arg(i);
        tree_.Nodes().Add(deepest, {NewNode{key, "a name of some length", 2, {}}});
        tree_.SetExpanded(deepest, true);
        deepest = key;
    }
    tree_.resize(150, 400);
    tree_.Select(deepest);
    const auto room = [&] { return tree_.visualRect(tree_.currentIndex()) & tree_.viewport()->rect(); };
    ASSERT_TRUE(QTest::qWaitFor([&] { return room().width() > 8 * tree_.fontMetrics().averageCharWidth(); }));
    EXPECT_TRUE(tree_.horizontalScrollBar()->isVisible());

    tree_.Select("root");
    EXPECT_EQ(tree_.horizontalScrollBar()->value(), 0);
    tree_.SetExpanded("b", false);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !tree_.horizontalScrollBar()->isVisible(); }));
}

TEST_F(KeyedTreeTest, TheSelectedNodeStaysInSightWhenTheTreeShrinks) {
    const int row = tree_.visualRect(tree_.Nodes().Find("b")).height();
    const auto shrink = [&](int rows) {
        tree_.resize(200, rows * row + 2 * tree_.frameWidth());
        ASSERT_TRUE(QTest::qWaitFor([&] { return tree_.viewport()->height() == rows * row; }));
    };
    tree_.Select("b");
    shrink(2);
    EXPECT_TRUE(tree_.viewport()->rect().contains(tree_.visualRect(tree_.currentIndex())));
    tree_.verticalScrollBar()->setValue(0);
    shrink(1);
    EXPECT_EQ(tree_.verticalScrollBar()->value(), 0) << "the user had scrolled it away";
}

TEST_F(KeyedTreeTest, UnknownKeysAndDoubleKeysAreErrors) {
    try {
        tree_.Select("nothing");
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(int(error.Number()), 35601);
    }
    try {
        tree_.Nodes().Add("root", {NewNode{"a", "again", 0, {}}});
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(int(error.Number()), 35602);
    }
}

TEST_F(KeyedTreeTest, RemovingTakesEverythingBelowAlong) {
    tree_.Nodes().Remove("a");
    EXPECT_FALSE(tree_.Nodes().Contains("a"));
    EXPECT_FALSE(tree_.Nodes().Contains("hint"));
    EXPECT_EQ(tree_.Nodes().Find("b").row(), 0);
}

TEST_F(KeyedTreeTest, AClickTellsTheNodeAlsoASecondTime) {
    QSignalSpy clicks(&tree_, &KeyedTree::NodeClicked);
    Click("b");
    Click("b");
    ASSERT_EQ(clicks.size(), 2);
    EXPECT_EQ(clicks[1][0].toString(), "b");
    EXPECT_EQ(tree_.SelectedKey(), "b");
}

TEST_F(KeyedTreeTest, AClickWithCtrlKeepsTheSelection) {
    Click("b");
    QTest::mouseClick(tree_.viewport(), Qt::LeftButton, Qt::ControlModifier,
                      tree_.visualRect(tree_.Nodes().Find("b")).center());
    EXPECT_EQ(tree_.SelectedKey(), "b");
}

TEST_F(KeyedTreeTest, TheKeyboardChoosesAsTheMouseDoes) {
    tree_.Select("root");
    QSignalSpy clicks(&tree_, &KeyedTree::NodeClicked);
    QTest::keyClick(&tree_, Qt::Key_Down);
    ASSERT_EQ(clicks.size(), 1);
    EXPECT_EQ(clicks[0][0].toString(), "a");
}

TEST_F(KeyedTreeTest, SelectingByTheProgramIsNoClick) {
    QSignalSpy clicks(&tree_, &KeyedTree::NodeClicked);
    tree_.Select("a");
    EXPECT_EQ(clicks.size(), 0);
    EXPECT_EQ(tree_.SelectedKey(), "a");
}

TEST_F(KeyedTreeTest, WithNothingSelectedAMovingKeyChoosesTheFramedNode) {
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_Home, Qt::Key_End, Qt::Key_PageDown}) {
        tree_.selectionModel()->clear();
        QSignalSpy clicks(&tree_, &KeyedTree::NodeClicked);
        QTest::keyClick(&tree_, key);
        ASSERT_EQ(clicks.size(), 1) << key;
        EXPECT_EQ(clicks[0][0].toString(), "root") << key;
    }
    tree_.selectionModel()->setCurrentIndex(tree_.Nodes().Find("b"), QItemSelectionModel::Clear);
    QTest::keyClick(&tree_, Qt::Key_Up);
    EXPECT_EQ(tree_.SelectedKey(), "b");
}

TEST_F(KeyedTreeTest, TheAsteriskOpensOneLevel) {
    tree_.Nodes().Add("b", {NewNode{"c", "C", 2, {}}});
    tree_.SetExpanded("root", false);
    tree_.Select("root");
    QSignalSpy expanded(&tree_, &KeyedTree::NodeExpanded);
    QTest::keyClick(&tree_, Qt::Key_Asterisk);
    EXPECT_EQ(expanded.size(), 1);
    EXPECT_EQ(tree_.ExpandedKeys(), QStringList{"root"});
    tree_.Select("c");
    expanded.clear();
    QTest::keyClick(&tree_, Qt::Key_Asterisk);
    EXPECT_FALSE(tree_.IsExpanded("c"));
    EXPECT_EQ(expanded.size(), 0);
}

TEST_F(KeyedTreeTest, ANodeThatTurnsOutToBeEmptyIsNotOpen) {
    tree_.Select("a");
    QObject::connect(&tree_, &KeyedTree::NodeExpanded, &tree_, [&] { tree_.Nodes().Remove("hint"); });
    QTest::keyClick(&tree_, Qt::Key_Right);
    EXPECT_FALSE(tree_.IsExpanded("a"));
}

TEST_F(KeyedTreeTest, ExpandingIsTold) {
    QSignalSpy expanded(&tree_, &KeyedTree::NodeExpanded);
    tree_.SetExpanded("a", true);
    ASSERT_EQ(expanded.size(), 1);
    EXPECT_EQ(expanded[0][0].toString(), "a");
    EXPECT_TRUE(tree_.IsExpanded("a"));
}

} // namespace
} // namespace velmo
