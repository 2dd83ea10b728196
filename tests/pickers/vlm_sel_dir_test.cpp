#include "disk_sample.h"
#include "pickers/vlm_sel_dir.h"
#include "platform/folder_images.h"
#include "support/failure.h"
#include "support/message_queue.h"
#include "support/other_user.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <gmock/gmock.h>

namespace velmo {
namespace {

using testing::ElementsAre;

// root (1) > A (2) > B (300)
class SampleCategories : public FolderSource {
public:
    explicit SampleCategories(KeyedTree& view) : view_(view) {}
    void AddRoots() override {
        view_.Nodes().Add({}, {{"Nod1",
                                "root",
                                OpenFolder,
                                {{"Nod2", "A", ClosedFolder, {{"\\N1300", "B", ClosedFolder, {}}}}}}});
        view_.SetExpanded("Nod1", true);
    }
    void Load(const QString& key) override {
        if (key != "Nod2" || view_.FirstChildKey(key) != "\\N1300")
            return;
        view_.Nodes().Remove("\\N1300");
        view_.Nodes().Add(key, {{"Nod300", "B", ClosedFolder, {}}});
    }
    QString ChoiceText(const QString& key) const override { return "category " + view_.Text(key); }

private:
    KeyedTree& view_;
};

class FolderPickerTest : public testing::Test {
protected:
    FolderPickerTest() {
        disk_.MakeFolder("Smb\\Bolt\\Hex");
        disk_.MakeFolder("Smb\\Nut");
        state_.HomeDir = disk_.Home();
        state_.LibRoot = disk_.Home();
    }

    void Open() {
        picker_ = std::make_unique<Vlm_SelDir>(
            state_, messages_, [](KeyedTree& view) { return std::make_unique<SampleCategories>(view); },
            nullptr);
        picker_->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(picker_.get()));
    }
    void OpenDisk(const QString& preset = {}) {
        state_.PickDiskDir = true;
        state_.PickedDir = preset;
        Open();
    }
    void OpenCategories() {
        state_.PickDiskDir = false;
        Open();
    }

    template <typename Control>
    Control* Find(const char* name) const {
        auto* control = picker_->findChild<Control*>(QLatin1String(name));
        if (!control)
            ADD_FAILURE() << "no control " << name;
        return control;
    }
    KeyedTree* Tree() const { return Find<KeyedTree>("VlmDirTV"); }
    QMenu* PopUp() const { return Find<QMenu>("SelDirPop"); }
    QString Shown() const { return Find<QLineEdit>("SelDir")->text(); }
    QPoint PlaceOf(const QString& key) const {
        const QModelIndex node = Tree()->Nodes().Find(key);
        Tree()->scrollTo(node);
        return Tree()->visualRect(node).center();
    }
    void ClickNode(const QString& key, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseClick(Tree()->viewport(), button, {}, PlaceOf(key));
    }
    // As the window system asks for a menu: after the press, at the mouse.
    void RightClick(const QPoint& place) {
        QTest::mouseClick(Tree()->viewport(), Qt::RightButton, {}, place);
        QContextMenuEvent event(QContextMenuEvent::Mouse, place, Tree()->viewport()->mapToGlobal(place));
        QApplication::sendEvent(Tree()->viewport(), &event);
    }
    void Click(const char* button) { QTest::mouseClick(Find<QPushButton>(button), Qt::LeftButton); }
    bool IsOpen() const { return picker_->isVisible(); }

    DiskSample disk_;
    GlobalState state_;
    MessageQueue messages_;
    std::unique_ptr<Vlm_SelDir> picker_;
};

TEST_F(FolderPickerTest, OpensAtTheLibraryRoot) {
    OpenDisk();
    EXPECT_EQ(picker_->objectName(), "Vlm_SelDir");
    EXPECT_EQ(picker_->windowTitle(), "フォルダ選択");
    EXPECT_EQ(Tree()->FirstKey(), disk_.Key());
    EXPECT_EQ(Tree()->Text(disk_.Key()), "トルヴィク");
    EXPECT_TRUE(Tree()->IsExpanded(disk_.Key()));
    EXPECT_FALSE(Tree()->IsExpanded(disk_.Key("SMB\\")));
    EXPECT_EQ(Tree()->FirstChildKey(disk_.Key("SMB\\")), "\\\\\\" + disk_.Key("SMB\\"));
    EXPECT_EQ(Shown(), "");
    EXPECT_TRUE(Tree()->hasFocus());
}

TEST_F(FolderPickerTest, APresetFolderIsOpenedAndSelected) {
    const QString preset = disk_.Home() + "Smb\\bolt\\Hex\\";
    OpenDisk(preset);
    EXPECT_TRUE(Tree()->IsExpanded(disk_.Key("SMB\\")));
    EXPECT_TRUE(Tree()->IsExpanded(disk_.Key("SMB\\BOLT\\")));
    EXPECT_EQ(Tree()->SelectedKey(), disk_.Key("SMB\\BOLT\\HEX\\"));
    EXPECT_EQ(Shown(), preset);
    // OK without a click gives it back.
    Click("OkBtn");
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(state_.PickedDir, preset);
}

TEST_F(FolderPickerTest, AFolderWhoseNameIsTheHomesInUpperCaseIsAnother) {
    disk_.MakeNamesake();
    OpenDisk(disk_.Key("SMB\\BOLT\\"));
    EXPECT_EQ(Tree()->SelectedKey(), disk_.Key("SMB\\BOLT\\"));
    EXPECT_EQ(Shown(), disk_.Key("SMB\\BOLT\\"));
    EXPECT_FALSE(Tree()->Nodes().Contains(disk_.Key("WRONG\\")));
    ClickNode(disk_.Key("SMB\\"));
    Click("OkBtn");
    EXPECT_EQ(state_.PickedDir, disk_.Key("SMB\\"));
}

TEST_F(FolderPickerTest, TheFoldersAboveTheHomeNeedNotBeReadable) {
    if (!OtherUser::IsPossible())
        GTEST_SKIP() << "only the superuser can be another user";
    disk_.HideHome();
    const OtherUser other(disk_.Native());
    ASSERT_TRUE(other.Changed());
    OpenDisk(disk_.Key("SMB\\BOLT\\"));
    EXPECT_EQ(Tree()->SelectedKey(), disk_.Key("SMB\\BOLT\\"));
    EXPECT_TRUE(Tree()->Nodes().Contains(disk_.Key("SMB\\BOLT\\HEX\\")));
}

TEST_F(FolderPickerTest, APresetFolderMayLackItsLastBackslash) {
    OpenDisk(disk_.Home() + "Smb\\Nut");
    EXPECT_EQ(Tree()->SelectedKey(), disk_.Key("SMB\\NUT\\"));
}

TEST_F(FolderPickerTest, APresetThatIsNoFolderIsForgotten) {
    for (const QString& preset : {disk_.Home() + "Gone\\", QString("12"), QString("0"), QString("/tmp\\"),
                                  disk_.Home() + "..\\", QString("\\")}) {
        OpenDisk(preset);
        EXPECT_EQ(Shown(), "") << preset.toStdString();
        EXPECT_EQ(Tree()->SelectedKey(), "") << preset.toStdString();
        Click("OkBtn");
        EXPECT_EQ(state_.PickedDir, "") << preset.toStdString();
    }
}

TEST_F(FolderPickerTest, ALibraryRootBelowTheHomeIsOpened) {
    state_.LibRoot = disk_.Home() + "Smb\\";
    OpenDisk();
    EXPECT_TRUE(Tree()->IsExpanded(disk_.Key("SMB\\")));
    state_.LibRoot = "/elsewhere\\";
    OpenDisk(disk_.Home() + "Smb\\Bolt\\");
    EXPECT_EQ(Tree()->SelectedKey(), disk_.Key("SMB\\BOLT\\"));
}

TEST_F(FolderPickerTest, AClickShowsTheFolderAndOkAnswersIt) {
    OpenDisk();
    ClickNode(disk_.Key("SMB\\"));
    EXPECT_EQ(Shown(), disk_.Key("SMB\\"));
    EXPECT_EQ(Tree()->Nodes().Image(disk_.Key("SMB\\")), OpenFolder);
    QTest::keyClick(Tree(), Qt::Key_Up);
    EXPECT_EQ(Shown(), disk_.Key());
    QTest::keyClick(Tree(), Qt::Key_Down);
    EXPECT_FALSE(PopUp()->isVisible());
    QTest::keyClick(Tree(), Qt::Key_Return);
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(state_.PickedDir, disk_.Key("SMB\\"));
    EXPECT_TRUE(Find<QLineEdit>("SelDir")->isReadOnly());
}

TEST_F(FolderPickerTest, ADoubleClickExpands) {
    OpenDisk();
    ClickNode(disk_.Key("SMB\\"));
    QTest::mouseDClick(Tree()->viewport(), Qt::LeftButton, {}, PlaceOf(disk_.Key("SMB\\")));
    EXPECT_TRUE(IsOpen());
    EXPECT_TRUE(Tree()->IsExpanded(disk_.Key("SMB\\")));
    EXPECT_TRUE(Tree()->Nodes().Contains(disk_.Key("SMB\\NUT\\")));
}

TEST_F(FolderPickerTest, EveryOtherWayOutIsCancel) {
    for (const bool disk : {true, false}) {
        for (const char* way : {"button", "escape", "close box"}) {
            state_.PickDiskDir = disk;
            state_.PickedDir = disk_.Home() + "Smb\\";
            Open();
            if (way == std::string("button"))
                Click("CanBtn");
            else if (way == std::string("escape"))
                QTest::keyClick(Tree(), Qt::Key_Escape);
            else
                picker_->close();
            EXPECT_FALSE(IsOpen()) << way;
            EXPECT_EQ(state_.PickedDir, "") << way;
        }
    }
}

TEST_F(FolderPickerTest, ARightClickSelectsAndOpensThePopUp) {
    OpenDisk();
    RightClick(PlaceOf(disk_.Key("SMB\\")));
    EXPECT_EQ(Tree()->SelectedKey(), disk_.Key("SMB\\"));
    EXPECT_EQ(Shown(), disk_.Key("SMB\\"));
    ASSERT_TRUE(PopUp()->isVisible());
    QStringList entries;
    for (QAction* entry : PopUp()->actions()) {
        entries << entry->objectName() + ' ' + entry->text();
        EXPECT_TRUE(entry->isEnabled());
        entry->trigger();
    }
    EXPECT_THAT(entries, ElementsAre("SelDirPopAdd 新規フォルダ(&A)", "SelDirPopRen 名前の変更(&R)"));
    PopUp()->close();
    EXPECT_TRUE(IsOpen());
    EXPECT_EQ(Shown(), disk_.Key("SMB\\"));
    EXPECT_EQ(state_.PickedDir, "");
}

TEST_F(FolderPickerTest, ARightClickBesideTheNodesOpensNoPopUp) {
    OpenDisk();
    ClickNode(disk_.Key("SMB\\"));
    RightClick(Tree()->viewport()->rect().bottomRight() - QPoint(3, 3));
    EXPECT_FALSE(PopUp()->isVisible());
}

TEST_F(FolderPickerTest, TheMenuKeyOpensThePopUpOfTheSelectedFolder) {
    OpenDisk();
    QContextMenuEvent event(QContextMenuEvent::Keyboard, {}, {});
    QApplication::sendEvent(Tree(), &event);
    EXPECT_FALSE(PopUp()->isVisible());
    ClickNode(disk_.Key("SMB\\"));
    QApplication::sendEvent(Tree(), &event);
    EXPECT_TRUE(PopUp()->isVisible());
    PopUp()->close();
}

TEST_F(FolderPickerTest, CategoriesAreNamedByTheirId) {
    OpenCategories();
    EXPECT_EQ(Shown(), "");
    Tree()->SetExpanded("Nod2", true);
    ClickNode("Nod300");
    EXPECT_EQ(Shown(), "category B");
    Click("OkBtn");
    EXPECT_EQ(state_.PickedDir, "300");
}

TEST_F(FolderPickerTest, WithoutAClickTheCategoryIsZero) {
    state_.PickedDir = "17";
    OpenCategories();
    Click("OkBtn");
    EXPECT_EQ(state_.PickedDir, "0");
}

TEST_F(FolderPickerTest, APlaceholderCannotBeChosen) {
    OpenCategories();
    ClickNode("Nod2");
    // Seen only where nothing reads it.
    Tree()->blockSignals(true);
    Tree()->setExpanded(Tree()->Nodes().Find("Nod2"), true);
    Tree()->blockSignals(false);
    RightClick(PlaceOf("\\N1300"));
    EXPECT_FALSE(PopUp()->isVisible());
    EXPECT_EQ(Shown(), "category A");
    Click("OkBtn");
    EXPECT_EQ(state_.PickedDir, "2");
}

TEST_F(FolderPickerTest, CategoriesThatCannotBeReadOpenNoPicker) {
    class Broken : public SampleCategories {
    public:
        using SampleCategories::SampleCategories;
        void AddRoots() override { throw RuntimeError(ErrorNumber::NotADatabase); }
    };
    state_.PickDiskDir = false;
    EXPECT_EQ(Failure([&] {
                  const Vlm_SelDir picker(
                      state_, messages_, [](KeyedTree& view) { return std::make_unique<Broken>(view); },
                      nullptr);
              }),
              ErrorNumber::NotADatabase);
}

TEST_F(FolderPickerTest, ControlsHaveNamesForEveryone) {
    OpenDisk();
    for (const char* name : {"VlmDirTV", "SelDir"})
        EXPECT_FALSE(Find<QWidget>(name)->accessibleName().isEmpty()) << name;
    EXPECT_TRUE(Find<QPushButton>("OkBtn")->isDefault());
}

} // namespace
} // namespace velmo
