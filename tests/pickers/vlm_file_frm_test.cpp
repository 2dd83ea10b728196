#include "disk_sample.h"
#include "pickers/file_list.h"
#include "pickers/vlm_file_frm.h"
#include "platform/folder_images.h"
#include "platform/slide_samples.h"
#include "platform/slide_view.h"
#include "support/message_queue.h"
#include "support/other_user.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QSplitter>
#include <QTest>
#include <QTimer>
#include <gmock/gmock.h>

namespace velmo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const QString chooseFirst = QStringLiteral("ファイルを選択してください");

class FilePickerTest : public testing::Test {
protected:
    FilePickerTest() { state_.HomeDir = disk_.Home(); }

    void WriteSample() {
        for (const char* file : {"TOP.SLD", "Smb\\Bolt\\HEX.SLD", "Smb\\Bolt\\EYE.SLD", "Smb\\Bolt\\HEX.PDF",
                                 "Smb\\Nut\\NUT.SLD"})
            disk_.WriteFile(file, SlideHeader() + BoxRecords());
        disk_.WriteFile("Smb\\Bolt\\HEX.TXT");
        disk_.MakeFolder("Smb\\Empty");
    }

    void Open(const QString& picked = {}, const QString& pattern = {}) {
        state_.PickedFile = picked;
        picker_ = std::make_unique<Vlm_FileFrm>(state_, messages_, nullptr);
        if (!pattern.isEmpty())
            picker_->SetPattern(pattern);
        picker_->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(picker_.get()));
    }

    template <typename Control>
    Control* Find(const char* name) const {
        auto* control = picker_->findChild<Control*>(QLatin1String(name));
        if (!control)
            ADD_FAILURE() << "no control " << name;
        return control;
    }
    KeyedTree* Tree() const { return Find<KeyedTree>("VlmFileTV"); }
    FileList* List() const { return Find<FileList>("Vlm_File"); }
    SlideView* SlideShown() const { return Find<SlideView>("Vlm_FileSlide"); }
    QString Chosen() const { return Find<QLineEdit>("Vlm_Text")->text(); }
    QStringList Files() const {
        QStringList files;
        for (int row = 0; row < List()->model()->rowCount(); ++row)
            files << List()->model()->index(row, 0).data().toString();
        return files;
    }
    QRect RectOf(const QString& file) const {
        return List()->visualRect(List()->model()->index(int(Files().indexOf(file)), 0));
    }
    void ClickFile(const QString& file) {
        QTest::mouseClick(List()->viewport(), Qt::LeftButton, {}, RectOf(file).center());
    }
    void ClickFolder(const QString& below) {
        const QModelIndex node = Tree()->Nodes().Find(disk_.Key(below));
        Tree()->scrollTo(node);
        QTest::mouseClick(Tree()->viewport(), Qt::LeftButton, {}, Tree()->visualRect(node).center());
    }
    void Click(const char* button) { QTest::mouseClick(Find<QPushButton>(button), Qt::LeftButton); }
    void Press(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }
    bool IsOpen() const { return picker_->isVisible(); }

    DiskSample disk_;
    GlobalState state_;
    MessageQueue messages_;
    std::unique_ptr<Vlm_FileFrm> picker_;
};

TEST_F(FilePickerTest, OpensAtTheHomeFolder) {
    WriteSample();
    Open();
    EXPECT_EQ(picker_->objectName(), "Vlm_FileFrm");
    EXPECT_EQ(Tree()->Text(disk_.Key()), "トルヴィク");
    EXPECT_EQ(Tree()->SelectedKey(), disk_.Key());
    EXPECT_TRUE(Tree()->IsExpanded(disk_.Key()));
    EXPECT_FALSE(Tree()->IsExpanded(disk_.Key("SMB\\")));
    EXPECT_THAT(Files(), ElementsAre("TOP.SLD"));
    EXPECT_EQ(List()->Folder(), disk_.Home());
    EXPECT_EQ(Chosen(), "");
    EXPECT_FALSE(List()->selectionModel()->hasSelection());
    EXPECT_FALSE(SlideShown()->HasPicture());
    EXPECT_TRUE(List()->hasFocus());
}

TEST_F(FilePickerTest, AHomeWithoutFoldersOrFiles) {
    Open();
    EXPECT_EQ(Tree()->FirstChildKey(disk_.Key()), "");
    EXPECT_THAT(Files(), IsEmpty());
    EXPECT_TRUE(Tree()->hasFocus());
    EXPECT_EQ(List()->accessibleDescription(), "このフォルダに\n*.SLD のファイルはありません");
    messages_.Expect(chooseFirst);
    Press(Qt::Key_Return);
    EXPECT_TRUE(IsOpen());
}

TEST_F(FilePickerTest, OpensAtThePreviousChoice) {
    WriteSample();
    Open("smb\\BOLT\\Hex.sld");
    EXPECT_EQ(Tree()->SelectedKey(), disk_.Key("SMB\\BOLT\\"));
    EXPECT_TRUE(Tree()->viewport()->rect().contains(
        Tree()->visualRect(Tree()->Nodes().Find(disk_.Key("SMB\\BOLT\\")))));
    EXPECT_TRUE(Tree()->IsExpanded(disk_.Key("SMB\\")));
    EXPECT_FALSE(Tree()->IsExpanded(disk_.Key("SMB\\NUT\\")));
    EXPECT_THAT(Files(), ElementsAre("EYE.SLD", "HEX.SLD"));
    EXPECT_EQ(List()->Folder(), disk_.Home() + "SMB\\BOLT\\");
    // It has the frame but is not chosen.
    EXPECT_EQ(List()->currentIndex().data().toString(), "HEX.SLD");
    EXPECT_EQ(Chosen(), "");
    messages_.Expect(chooseFirst);
    Click("Vlm_FilOKBtn");
    EXPECT_TRUE(IsOpen());
    EXPECT_EQ(state_.PickedFile, "smb\\BOLT\\Hex.sld");
    Press(Qt::Key_Escape);
    EXPECT_EQ(state_.PickedFile, "");
}

TEST_F(FilePickerTest, AFolderWhoseNameIsTheHomesInUpperCaseIsAnother) {
    WriteSample();
    disk_.MakeNamesake();
    Open("smb\\bolt\\EYE.SLD");
    EXPECT_THAT(Files(), ElementsAre("EYE.SLD", "HEX.SLD"));
    EXPECT_FALSE(Tree()->Nodes().Contains(disk_.Key("WRONG\\")));
    ClickFile("EYE.SLD");
    EXPECT_TRUE(SlideShown()->HasPicture());
    ClickFolder({});
    EXPECT_THAT(Files(), ElementsAre("TOP.SLD"));
    ClickFolder("SMB\\BOLT\\");
    EXPECT_THAT(Files(), ElementsAre("EYE.SLD", "HEX.SLD"));
    ClickFile("EYE.SLD");
    Click("Vlm_FilOKBtn");
    EXPECT_EQ(state_.PickedFile, "SMB\\BOLT\\EYE.SLD");
}

TEST_F(FilePickerTest, TheFoldersAboveTheHomeNeedNotBeReadable) {
    if (!OtherUser::IsPossible())
        GTEST_SKIP() << "only the superuser can be another user";
    WriteSample();
    disk_.HideHome();
    const OtherUser other(disk_.Native());
    ASSERT_TRUE(other.Changed());
    Open("Smb\\Bolt\\EYE.SLD");
    EXPECT_THAT(Files(), ElementsAre("EYE.SLD", "HEX.SLD"));
    ClickFolder({});
    EXPECT_THAT(Files(), ElementsAre("TOP.SLD"));
}

TEST_F(FilePickerTest, APreviousChoiceInTheHomeFolderOpensNoFolders) {
    WriteSample();
    Open("TOP.SLD");
    EXPECT_EQ(Tree()->SelectedKey(), disk_.Key());
    EXPECT_FALSE(Tree()->IsExpanded(disk_.Key("SMB\\")));
    ClickFile("TOP.SLD");
    Click("Vlm_FilOKBtn");
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(state_.PickedFile, "TOP.SLD");
}

TEST_F(FilePickerTest, APreviousChoiceWhoseFileIsGoneOpensItsFolder) {
    WriteSample();
    Open("Smb\\Bolt\\GONE.SLD");
    EXPECT_EQ(Tree()->SelectedKey(), disk_.Key("SMB\\BOLT\\"));
    EXPECT_FALSE(List()->selectionModel()->hasSelection());
}

TEST_F(FilePickerTest, APreviousChoiceWhoseFolderIsGoneOpensTheHomeFolder) {
    WriteSample();
    for (const char* gone : {"Smb\\Gone\\TOP.SLD", "..\\TOP.SLD", "\\TOP.SLD", "Smb\\\\Bolt\\HEX.SLD",
                             "/elsewhere/TOP.SLD", "Smb\\Bolt\\HEX.SLD\\TOP.SLD"}) {
        Open(gone);
        EXPECT_EQ(Tree()->SelectedKey(), disk_.Key()) << gone;
        EXPECT_THAT(Files(), ElementsAre("TOP.SLD")) << gone;
        EXPECT_EQ(List()->Folder(), disk_.Home()) << gone;
    }
}

TEST_F(FilePickerTest, ClickingAFolderShowsItsFiles) {
    WriteSample();
    Open();
    Tree()->SetExpanded(disk_.Key("SMB\\"), true);
    ClickFolder("SMB\\BOLT\\");
    EXPECT_THAT(Files(), ElementsAre("EYE.SLD", "HEX.SLD"));
    EXPECT_EQ(Tree()->Nodes().Image(disk_.Key("SMB\\BOLT\\")), OpenFolder);
    ClickFolder("SMB\\NUT\\");
    EXPECT_THAT(Files(), ElementsAre("NUT.SLD"));
    EXPECT_EQ(Tree()->Nodes().Image(disk_.Key("SMB\\BOLT\\")), ClosedFolder);
    // The keys choose as the mouse does.
    QTest::keyClick(Tree(), Qt::Key_Up);
    EXPECT_EQ(UpperCasePath(List()->Folder()), Tree()->SelectedKey());
    EXPECT_NE(List()->Folder(), disk_.Home() + "SMB\\NUT\\");
    ClickFolder({});
    EXPECT_THAT(Files(), ElementsAre("TOP.SLD"));
}

TEST_F(FilePickerTest, ChoosingShowsNameAndSlide) {
    WriteSample();
    Open("Smb\\Bolt\\");
    ClickFile("HEX.SLD");
    EXPECT_EQ(Chosen(), "HEX.SLD");
    EXPECT_EQ(SlideShown()->SlideFile(), disk_.Home() + "SMB\\BOLT\\HEX.SLD");
    EXPECT_TRUE(SlideShown()->HasPicture());
    Press(Qt::Key_Up);
    EXPECT_EQ(Chosen(), "EYE.SLD");
    EXPECT_EQ(SlideShown()->SlideFile(), disk_.Home() + "SMB\\BOLT\\EYE.SLD");
    EXPECT_TRUE(Find<QLineEdit>("Vlm_Text")->isReadOnly());
}

TEST_F(FilePickerTest, OneChoiceIsToldOnce) {
    WriteSample();
    Open("Smb\\Bolt\\");
    const QSignalSpy chosen(List(), &FileList::FileChosen);
    ClickFile("HEX.SLD");
    EXPECT_EQ(chosen.size(), 1);
    ClickFile("HEX.SLD");
    EXPECT_EQ(chosen.size(), 2);
    Press(Qt::Key_Up);
    EXPECT_EQ(chosen.size(), 3);
    QTest::mouseClick(List()->viewport(), Qt::LeftButton, Qt::ControlModifier, RectOf("EYE.SLD").center());
    EXPECT_EQ(Chosen(), "EYE.SLD");
    EXPECT_EQ(chosen.size(), 4);
    QTest::mouseClick(List()->viewport(), Qt::LeftButton, {},
                      List()->viewport()->rect().bottomRight() - QPoint(3, 3));
    EXPECT_EQ(Chosen(), List()->FileName());
}

TEST_F(FilePickerTest, OtherFilesShowTheSlideOfTheSameName) {
    WriteSample();
    Open("Smb\\Bolt\\", "*.pdf");
    EXPECT_THAT(Files(), ElementsAre("HEX.PDF"));
    ClickFile("HEX.PDF");
    EXPECT_EQ(Chosen(), "HEX.PDF");
    EXPECT_EQ(SlideShown()->SlideFile(), disk_.Home() + "SMB\\BOLT\\HEX.SLD");
    EXPECT_TRUE(SlideShown()->HasPicture());
    Click("Vlm_FilOKBtn");
    EXPECT_EQ(state_.PickedFile, "SMB\\BOLT\\HEX.PDF");
}

TEST_F(FilePickerTest, AFileWithoutASlideShowsNone) {
    disk_.WriteFile("A.PDF");
    disk_.WriteFile("B.SLD", "no slide");
    Open({}, "*.PDF");
    ClickFile("A.PDF");
    EXPECT_FALSE(SlideShown()->HasPicture());
    Open();
    ClickFile("B.SLD");
    EXPECT_FALSE(SlideShown()->HasPicture());
    Click("Vlm_FilOKBtn");
    EXPECT_EQ(state_.PickedFile, "B.SLD");
}

TEST_F(FilePickerTest, AShortNameHasASlideTooHowever) {
    disk_.WriteFile("AB");
    Open({}, "*");
    ClickFile("AB");
    EXPECT_EQ(SlideShown()->SlideFile(), disk_.Home() + "SLD");
}

TEST_F(FilePickerTest, AnotherFolderForgetsTheFile) {
    WriteSample();
    Open("Smb\\Bolt\\");
    ClickFile("HEX.SLD");
    // The same folder again is no change.
    ClickFolder("SMB\\BOLT\\");
    EXPECT_EQ(Chosen(), "HEX.SLD");
    ClickFolder("SMB\\NUT\\");
    EXPECT_EQ(Chosen(), "");
    EXPECT_EQ(SlideShown()->SlideFile(), "");
    EXPECT_FALSE(SlideShown()->HasPicture());
    messages_.Expect(chooseFirst);
    Click("Vlm_FilOKBtn");
    EXPECT_TRUE(IsOpen());
}

TEST_F(FilePickerTest, AFolderWithoutFilesSaysSo) {
    WriteSample();
    Open("Smb\\Nut\\");
    EXPECT_EQ(List()->accessibleDescription(), "");
    ClickFolder("SMB\\EMPTY\\");
    EXPECT_EQ(List()->accessibleDescription(), "このフォルダに\n*.SLD のファイルはありません");
    disk_.RemoveFolder("Smb\\Bolt");
    ClickFolder("SMB\\BOLT\\");
    EXPECT_THAT(Files(), IsEmpty());
    EXPECT_EQ(List()->accessibleDescription(), "このフォルダはもうありません");
}

TEST_F(FilePickerTest, OkAnswersRelativeToTheHome) {
    WriteSample();
    Open("Smb\\Bolt\\");
    ClickFile("EYE.SLD");
    Click("Vlm_FilOKBtn");
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(state_.PickedFile, "SMB\\BOLT\\EYE.SLD");
    // The answer opens the picker there again.
    Open(state_.PickedFile);
    EXPECT_EQ(List()->currentIndex().data().toString(), "EYE.SLD");
}

TEST_F(FilePickerTest, DoubleClickAndEnterOnAFileAreOk) {
    WriteSample();
    Open("Smb\\Bolt\\");
    ClickFile("EYE.SLD");
    QTest::mouseDClick(List()->viewport(), Qt::LeftButton, {}, RectOf("EYE.SLD").center());
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(state_.PickedFile, "SMB\\BOLT\\EYE.SLD");
    Open("Smb\\Bolt\\EYE.SLD");
    Press(Qt::Key_Down);
    EXPECT_EQ(Chosen(), "EYE.SLD");
    Press(Qt::Key_Down);
    EXPECT_EQ(Chosen(), "HEX.SLD");
    Press(Qt::Key_Return);
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(state_.PickedFile, "SMB\\BOLT\\HEX.SLD");
}

TEST_F(FilePickerTest, ADoubleClickBesideTheFilesOrWithTheRightButtonIsNone) {
    WriteSample();
    Open("Smb\\Bolt\\");
    ClickFile("EYE.SLD");
    const QPoint beside = List()->viewport()->rect().bottomRight() - QPoint(3, 3);
    QTest::mouseDClick(List()->viewport(), Qt::LeftButton, {}, beside);
    EXPECT_TRUE(IsOpen());
    QTest::mouseDClick(List()->viewport(), Qt::RightButton, {}, RectOf("HEX.SLD").center());
    EXPECT_TRUE(IsOpen());
    EXPECT_EQ(Chosen(), "HEX.SLD");
}

TEST_F(FilePickerTest, EveryOtherWayOutIsCancel) {
    WriteSample();
    for (const char* way : {"button", "escape", "close box"}) {
        Open("Smb\\Bolt\\EYE.SLD");
        ClickFile("HEX.SLD");
        if (way == std::string("button"))
            Click("Vlm_FilCanBtn");
        else if (way == std::string("escape"))
            Press(Qt::Key_Escape);
        else
            picker_->close();
        EXPECT_FALSE(IsOpen()) << way;
        EXPECT_EQ(state_.PickedFile, "") << way;
    }
}

TEST_F(FilePickerTest, IsShownModallyAndComesBackInItsSize) {
    WriteSample();
    for (const QSize size : {QSize(700, 450), QSize()}) {
        Vlm_FileFrm picker(state_, messages_, nullptr);
        QTimer::singleShot(0, &picker, [&] {
            EXPECT_TRUE(picker.isModal());
            if (size.isValid())
                picker.resize(size);
            else
                EXPECT_EQ(picker.size(), QSize(700, 450));
            picker.close();
        });
        picker.ShowModal();
    }
}

TEST_F(FilePickerTest, NamesOfOtherScripts) {
    disk_.WriteFile("図面\\straße\\ボルト.SLD", SlideHeader() + BoxRecords());
    disk_.WriteFile("図面\\ılık\\שלום.sld");
    Open("図面\\STRAßE\\");
    ClickFile("ボルト.SLD");
    EXPECT_TRUE(SlideShown()->HasPicture());
    Click("Vlm_FilOKBtn");
    EXPECT_EQ(state_.PickedFile, "図面\\STRAßE\\ボルト.SLD");
    Open("図面\\ılık\\שלום.sld");
    EXPECT_THAT(Files(), ElementsAre("שלום.sld"));
    EXPECT_EQ(List()->currentIndex().row(), 0);
}

TEST_F(FilePickerTest, TenThousandFilesStayFluent) {
    for (int i = 0; i < 10'000; ++i)
        disk_.WriteFile(QStringLiteral("F%1.SLD").arg(i, 5, 10, QChar('0')));
    Open("F09000.SLD");
    EXPECT_EQ(List()->model()->rowCount(), 10'000);
    EXPECT_EQ(List()->currentIndex().row(), 9'000);
    EXPECT_TRUE(List()->viewport()->rect().contains(RectOf("F09000.SLD").center()));
    EXPECT_TRUE(List()->uniformItemSizes());
    Press(Qt::Key_End);
    EXPECT_EQ(Chosen(), "F09000.SLD");
    Press(Qt::Key_End);
    EXPECT_EQ(Chosen(), "F09999.SLD");
}

TEST_F(FilePickerTest, AnEmptyHomeIsTheCurrentFolder) {
    WriteSample();
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(disk_.Native()));
    state_.HomeDir.clear();
    Open("SMB\\BOLT\\HEX.SLD");
    EXPECT_THAT(Files(), ElementsAre("EYE.SLD", "HEX.SLD"));
    ClickFile("HEX.SLD");
    Click("Vlm_FilOKBtn");
    EXPECT_EQ(state_.PickedFile, "SMB\\BOLT\\HEX.SLD");
    EXPECT_TRUE(QDir::setCurrent(before));
}

TEST_F(FilePickerTest, ControlsHaveNamesForEveryone) {
    Open();
    for (const char* name : {"VlmFileTV", "Vlm_File", "Vlm_FileSlide", "Vlm_Text"})
        EXPECT_FALSE(Find<QWidget>(name)->accessibleName().isEmpty()) << name;
    EXPECT_TRUE(Find<QPushButton>("Vlm_FilOKBtn")->isDefault());
}

TEST_F(FilePickerTest, NoPaneCanBeDraggedAway) {
    WriteSample();
    Open();
    auto* panes = picker_->findChild<QSplitter*>();
    ASSERT_TRUE(panes);
    ASSERT_EQ(panes->count(), 3);
    for (const int handle : {1, 2}) {
        for (const int far : {-5000, 5000}) {
            QWidget* bar = panes->handle(handle);
            const QPoint grip = bar->rect().center();
            QTest::mousePress(bar, Qt::LeftButton, {}, grip);
            QTest::mouseMove(bar, grip + QPoint(far, 0));
            QTest::mouseRelease(bar, Qt::LeftButton, {}, grip + QPoint(far, 0));
            EXPECT_THAT(panes->sizes(), testing::Each(testing::Gt(20))) << handle << " by " << far;
        }
    }
}

} // namespace
} // namespace velmo
