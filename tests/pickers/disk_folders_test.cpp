#include "disk_sample.h"
#include "pickers/disk_folders.h"
#include "pickers/folder_tree.h"
#include "platform/folder_images.h"
#include "support/message_queue.h"
#include "support/other_user.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>
#include <gmock/gmock.h>

#include <optional>

namespace velmo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

// The tree is made when it is first used, after the test has filled the disk.
class DiskFoldersTest : public testing::Test {
protected:
    void Fill(const QString& way = {}) {
        tree_.Fill([&] { isThere_ = way.isEmpty() || Source().OpenWay(disk_.Home() + way); });
        view_.resize(300, 400);
        view_.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&view_));
    }
    DiskFolders& Source() { return source_; }

    QStringList ChildKeys(const QString& key) {
        QStringList keys;
        const QModelIndex parent = view_.Nodes().Find(key);
        for (int row = 0; row < view_.Nodes().rowCount(parent); ++row)
            keys << view_.Nodes().Key(view_.Nodes().index(row, 0, parent));
        return keys;
    }
    QString Placeholder(const QString& below) const { return "\\\\\\" + disk_.Key(below); }
    void Click(const QString& key) {
        view_.scrollTo(view_.Nodes().Find(key));
        QTest::mouseClick(view_.viewport(), Qt::LeftButton, {},
                          view_.visualRect(view_.Nodes().Find(key)).center());
    }

    DiskSample disk_;
    MessageQueue messages_;
    KeyedTree view_;
    DiskFolders source_{view_, disk_.Home()};
    FolderTree tree_{view_, source_, messages_};
    bool isThere_ = false;
};

TEST_F(DiskFoldersTest, RootAloneWithoutSubFolders) {
    disk_.WriteFile("A.SLD");
    Fill();
    EXPECT_EQ(view_.FirstKey(), disk_.Key());
    EXPECT_EQ(view_.Text(disk_.Key()), "トルヴィク");
    EXPECT_THAT(ChildKeys(disk_.Key()), IsEmpty());
    EXPECT_EQ(view_.Nodes().rowCount(), 1);
}

TEST_F(DiskFoldersTest, RootShowsItsFoldersEachWithAPlaceholder) {
    disk_.MakeFolder("Bolt\\Hex");
    disk_.MakeFolder("ﾎﾞﾙﾄ");
    Fill();
    EXPECT_TRUE(view_.IsExpanded(disk_.Key()));
    EXPECT_THAT(ChildKeys(disk_.Key()), UnorderedElementsAre(disk_.Key("BOLT\\"), disk_.Key("ﾎﾞﾙﾄ\\")));
    for (const QString& name : {QString("Bolt"), QString("ﾎﾞﾙﾄ")}) {
        const QString key = disk_.Key(name + "\\");
        EXPECT_EQ(view_.Text(key), name);
        EXPECT_FALSE(view_.IsExpanded(key));
        EXPECT_EQ(view_.Nodes().Image(key), ClosedFolder);
        // With or without folders below: it was not looked.
        EXPECT_THAT(ChildKeys(key), ElementsAre(Placeholder(name + "\\")));
        EXPECT_EQ(view_.Text(Placeholder(name + "\\")), "sub");
    }
}

TEST_F(DiskFoldersTest, ExpandingReadsOneLevel) {
    disk_.MakeFolder("A\\B\\C");
    Fill();
    view_.SetExpanded(disk_.Key("A\\"), true);
    EXPECT_THAT(ChildKeys(disk_.Key("A\\")), ElementsAre(disk_.Key("A\\B\\")));
    EXPECT_THAT(ChildKeys(disk_.Key("A\\B\\")), ElementsAre(Placeholder("A\\B\\")));
    EXPECT_FALSE(view_.IsExpanded(disk_.Key("A\\B\\")));
    EXPECT_EQ(view_.Nodes().Image(disk_.Key("A\\")), OpenFolder);
    view_.SetExpanded(disk_.Key("A\\"), false);
    EXPECT_EQ(view_.Nodes().Image(disk_.Key("A\\")), ClosedFolder);
}

TEST_F(DiskFoldersTest, ExpandingTwiceReadsOnce) {
    disk_.MakeFolder("A\\B");
    Fill();
    const QAbstractItemModelTester tester(&view_.Nodes());
    view_.SetExpanded(disk_.Key("A\\"), true);
    view_.SetExpanded(disk_.Key("A\\"), false);
    disk_.MakeFolder("A\\LATER");
    view_.SetExpanded(disk_.Key("A\\"), true);
    EXPECT_THAT(ChildKeys(disk_.Key("A\\")), ElementsAre(disk_.Key("A\\B\\")));
}

TEST_F(DiskFoldersTest, ExpandingAFolderWithoutFoldersTakesItsPlaceholderAway) {
    disk_.MakeFolder("A");
    Fill();
    view_.SetExpanded(disk_.Key("A\\"), true);
    EXPECT_THAT(ChildKeys(disk_.Key("A\\")), IsEmpty());
}

TEST_F(DiskFoldersTest, AFolderThatVanishedHasNoFolders) {
    disk_.MakeFolder("A\\B");
    Fill();
    disk_.RemoveFolder("A");
    view_.SetExpanded(disk_.Key("A\\"), true);
    EXPECT_THAT(ChildKeys(disk_.Key("A\\")), IsEmpty());
}

TEST_F(DiskFoldersTest, AFolderThatBecameAFileHasNoFolders) {
    disk_.MakeFolder("A\\B");
    Fill();
    disk_.RemoveFolder("A");
    disk_.WriteFile("A");
    view_.SetExpanded(disk_.Key("A\\"), true);
    EXPECT_THAT(ChildKeys(disk_.Key("A\\")), IsEmpty());
}

TEST_F(DiskFoldersTest, TheWayToAFolderIsOpened) {
    disk_.MakeFolder("Smb\\Bolt\\Hex\\Deep");
    disk_.MakeFolder("Smb\\Nut");
    Fill("SMB\\bolt\\");
    EXPECT_TRUE(isThere_);
    EXPECT_TRUE(view_.IsExpanded(disk_.Key("SMB\\")));
    EXPECT_TRUE(view_.IsExpanded(disk_.Key("SMB\\BOLT\\")));
    EXPECT_FALSE(view_.IsExpanded(disk_.Key("SMB\\BOLT\\HEX\\")));
    EXPECT_THAT(ChildKeys(disk_.Key("SMB\\")),
                UnorderedElementsAre(disk_.Key("SMB\\BOLT\\"), disk_.Key("SMB\\NUT\\")));
    EXPECT_THAT(ChildKeys(disk_.Key("SMB\\NUT\\")), ElementsAre(Placeholder("SMB\\NUT\\")));
    EXPECT_EQ(view_.Nodes().Image(disk_.Key("SMB\\BOLT\\")), OpenFolder);
}

TEST_F(DiskFoldersTest, AWayThatLeadsNowhere) {
    disk_.MakeFolder("A\\B");
    disk_.MakeFolder("pagefile.sys\\X");
    for (const char* way :
         {"A\\GONE\\", "\\A\\", "A\\\\B\\", "..\\", "A\\..\\A\\", "A/B\\", "pagefile.sys\\X\\"}) {
        Fill(way);
        EXPECT_FALSE(isThere_) << way;
    }
    tree_.Fill([&] { EXPECT_FALSE(source_.OpenWay("12")); });
    tree_.Fill([&] { EXPECT_FALSE(source_.OpenWay("/elsewhere\\A\\")); });
    Fill("A\\B");
    EXPECT_TRUE(isThere_);
}

TEST_F(DiskFoldersTest, AFolderWhoseNameIsTheHomesInUpperCaseIsAnother) {
    disk_.MakeNamesake();
    disk_.MakeFolder("Smb\\Bolt");
    Fill("Smb\\Bolt\\");
    EXPECT_TRUE(isThere_);
    EXPECT_THAT(ChildKeys(disk_.Key()), ElementsAre(disk_.Key("SMB\\")));
    EXPECT_THAT(ChildKeys(disk_.Key("SMB\\")), ElementsAre(disk_.Key("SMB\\BOLT\\")));
    EXPECT_EQ(source_.PathOf(disk_.Key("SMB\\")), disk_.Home() + "SMB\\");
    EXPECT_EQ(source_.PathOf(disk_.Key().chopped(1)), disk_.Home());
    EXPECT_EQ(source_.PathOf("/elsewhere\\A"), "/elsewhere\\A\\");
}

TEST_F(DiskFoldersTest, TheFoldersAboveTheHomeNeedNotBeReadable) {
    if (!OtherUser::IsPossible())
        GTEST_SKIP() << "only the superuser can be another user";
    disk_.MakeFolder("Smb\\Bolt");
    disk_.HideHome();
    const OtherUser other(disk_.Native());
    ASSERT_TRUE(other.Changed());
    ASSERT_THAT(QDir(disk_.Native("..")).entryList(QDir::Dirs | QDir::NoDotAndDotDot), IsEmpty());
    Fill("Smb\\");
    EXPECT_TRUE(isThere_);
    EXPECT_THAT(ChildKeys(disk_.Key("SMB\\")), ElementsAre(disk_.Key("SMB\\BOLT\\")));
}

TEST_F(DiskFoldersTest, ACircleOfLinksIsOpenedLevelByLevel) {
    disk_.MakeFolder("A");
    disk_.Link("A\\UP", disk_.Native());
    Fill("A\\UP\\A\\UP\\");
    EXPECT_TRUE(isThere_);
    view_.SetExpanded(disk_.Key("A\\UP\\A\\UP\\A\\"), true);
    EXPECT_THAT(ChildKeys(disk_.Key("A\\UP\\A\\UP\\A\\")), ElementsAre(disk_.Key("A\\UP\\A\\UP\\A\\UP\\")));
}

TEST_F(DiskFoldersTest, TheKeyThatOpensAllOpensOne) {
    disk_.MakeFolder("A");
    disk_.Link("A\\UP", disk_.Native());
    Fill();
    Click(disk_.Key("A\\"));
    QTest::keyClick(&view_, Qt::Key_Asterisk);
    EXPECT_TRUE(view_.IsExpanded(disk_.Key("A\\")));
    EXPECT_FALSE(view_.IsExpanded(disk_.Key("A\\UP\\")));
    EXPECT_THAT(ChildKeys(disk_.Key("A\\UP\\")), ElementsAre(Placeholder("A\\UP\\")));
}

TEST_F(DiskFoldersTest, ClickingMarksTheFolderAndTellsIt) {
    disk_.MakeFolder("A");
    disk_.MakeFolder("B\\C");
    Fill();
    const QSignalSpy chosen(&tree_, &FolderTree::FolderChosen);
    Click(disk_.Key("A\\"));
    ASSERT_EQ(chosen.size(), 1);
    EXPECT_EQ(chosen[0][0].toString(), disk_.Key("A\\"));
    EXPECT_EQ(view_.Nodes().Image(disk_.Key("A\\")), OpenFolder);
    Click(disk_.Key("B\\"));
    EXPECT_EQ(chosen[1][0].toString(), disk_.Key("B\\"));
    EXPECT_EQ(view_.Nodes().Image(disk_.Key("A\\")), ClosedFolder);
    EXPECT_EQ(view_.Nodes().Image(disk_.Key("B\\")), OpenFolder);
    // The keys choose as a click does.
    QTest::keyClick(&view_, Qt::Key_Up);
    EXPECT_EQ(chosen.size(), 3);
    // What is open stays marked as open.
    view_.SetExpanded(disk_.Key("B\\"), true);
    Click(disk_.Key("B\\"));
    Click(disk_.Key("A\\"));
    EXPECT_EQ(view_.Nodes().Image(disk_.Key("B\\")), OpenFolder);
}

TEST_F(DiskFoldersTest, FillingTellsNothing) {
    disk_.MakeFolder("A\\B");
    const QSignalSpy chosen(&tree_, &FolderTree::FolderChosen);
    Fill("A\\");
    tree_.Select(disk_.Key("A\\"));
    EXPECT_EQ(chosen.size(), 0);
    EXPECT_EQ(view_.SelectedKey(), disk_.Key("A\\"));
    tree_.Fill([] {});
    EXPECT_THAT(ChildKeys(disk_.Key()), ElementsAre(disk_.Key("A\\")));
    EXPECT_FALSE(view_.IsExpanded(disk_.Key("A\\")));
}

TEST_F(DiskFoldersTest, TenThousandFolders) {
    QDir home(disk_.Native());
    for (int i = 0; i < 10'000; ++i)
        ASSERT_TRUE(home.mkdir(QStringLiteral("F%1").arg(i)));
    Fill();
    EXPECT_EQ(ChildKeys(disk_.Key()).size(), 10'000);
    view_.SetExpanded(disk_.Key("F9999\\"), true);
    EXPECT_THAT(ChildKeys(disk_.Key("F9999\\")), IsEmpty());
}

TEST(EmptyHomeTest, TheCurrentFolderStandsForAnEmptyHome) {
    const DiskSample disk;
    disk.MakeFolder("A");
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(disk.Native()));
    KeyedTree view;
    DiskFolders source(view, {});
    source.AddRoots();
    EXPECT_EQ(view.FirstKey(), ".\\");
    EXPECT_EQ(view.FirstChildKey(".\\"), ".\\A\\");
    EXPECT_TRUE(QDir::setCurrent(before));
}

// A source that fails, as a library can.
class FailingSource : public FolderSource {
public:
    explicit FailingSource(KeyedTree& view) : view_(view) {}
    void AddRoots() override {
        view_.Nodes().Add({}, {{"Nod1", "root", ClosedFolder, {{"\\N12", "child", ClosedFolder, {}}}}});
    }
    void Load(const QString&) override { throw RuntimeError(ErrorNumber::DatabaseFailed); }
    QString ChoiceText(const QString& key) const override { return key; }

private:
    KeyedTree& view_;
};

TEST(FailingFolderTest, AFolderThatFailsToOpenStaysClosed) {
    KeyedTree view;
    FailingSource source(view);
    MessageQueue messages;
    FolderTree tree(view, source, messages);
    tree.Fill([] {});
    messages.ExpectContaining("3197");
    view.SetExpanded("Nod1", true);
    EXPECT_FALSE(view.IsExpanded("Nod1"));
    EXPECT_EQ(view.FirstChildKey("Nod1"), "\\N12");
    EXPECT_EQ(view.Nodes().Image("Nod1"), ClosedFolder);
}

} // namespace
} // namespace velmo
