#include "library/vlm_tool.h"
#include "platform/runtime_error.h"
#include "support/dialog_queue.h"
#include "support/message_queue.h"
#include "symbol_library.h"

#include <QLineEdit>
#include <QTest>
#include <gmock/gmock.h>

namespace velmo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// The move tool on a category with the files of symbol_library.h.
class MoveToolTest : public SymbolLibrary {
protected:
    void Open(std::int16_t category, const QString& name) {
        state.CurFolderID = category;
        state.CurFolderName = name;
        tool_ = std::make_unique<Vlm_Tool>(state, messages_, nullptr);
        tool_->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(tool_.get()));
    }
    void OpenBolts() { Open(2, "bolts"); }

    template <typename Control>
    Control* Find(const char* name) const {
        auto* control = tool_->findChild<Control*>(QLatin1String(name));
        if (!control)
            ADD_FAILURE() << "no control " << name;
        return control;
    }
    QTreeView* List() const { return Find<QTreeView>("SelList"); }
    QPushButton* Button(const char* name) const { return Find<QPushButton>(name); }
    void Click(const char* name) const { QTest::mouseClick(Button(name), Qt::LeftButton); }
    bool IsOpen() const { return tool_->isVisible(); }

    QStringList Listed() const {
        QStringList rows;
        for (int row = 0; row < List()->model()->rowCount(); ++row) {
            QStringList texts;
            for (int column = 0; column < List()->model()->columnCount(); ++column)
                texts << List()->model()->index(row, column).data().toString();
            rows << texts.join('|');
        }
        return rows;
    }
    QList<int> SelectedRows() const {
        QList<int> rows;
        for (int row = 0; row < List()->model()->rowCount(); ++row) {
            if (List()->selectionModel()->isRowSelected(row))
                rows << row;
        }
        return rows;
    }
    void ClickRow(int row, Qt::KeyboardModifiers modifiers = {}) const {
        QTest::mouseClick(List()->viewport(), Qt::LeftButton, modifiers,
                          List()->visualRect(List()->model()->index(row, 0)).center());
    }

    // The folder picker opens for folders of the disk or for categories; this answer is chosen in it.
    void ExpectPicker(bool onDisk, const QString& answer) {
        dialogs_.Expect("Vlm_SelDir", [this, onDisk, answer](QDialog& picker) {
            EXPECT_EQ(state.PickDiskDir, onDisk);
            picker.accept();
            state.PickedDir = answer;
        });
    }
    void ExpectCancelledPicker(bool onDisk) {
        dialogs_.Expect("Vlm_SelDir", [this, onDisk](QDialog& picker) {
            EXPECT_EQ(state.PickDiskDir, onDisk);
            picker.reject();
        });
    }

    MessageQueue messages_;
    DialogQueue dialogs_;
    std::unique_ptr<Vlm_Tool> tool_;
    const QStringList firstFiles_ = {"A\\M10.PDF", "A\\M10.SLD", "A\\M12.PDF", "A\\M12.SLD"};
};

TEST_F(MoveToolTest, ListsSubfoldersBeforeEntries) {
    {
        Database database = MaintainedLibrary::Open();
        AddEntry(database, 1, "in root", "A\\R.PDF", "");
    }
    Open(1, "root");
    EXPECT_EQ(tool_->objectName(), "Vlm_Tool");
    EXPECT_EQ(tool_->windowTitle(), "Form1");
    EXPECT_EQ(Find<QLabel>("MastFolder")->text(), "root");
    EXPECT_THAT(Listed(), ElementsAre("bolts||", "nuts||", "in root|A\\R.PDF|"));
    EXPECT_THAT(SelectedRows(), IsEmpty());
    EXPECT_FALSE(Button("FilMovBtn")->isEnabled());
    EXPECT_EQ(Button("FilMovBtn")->toolTip(), "サブフォルダのあるフォルダでは使えません");
    EXPECT_TRUE(Button("FolDerMovBtn")->isEnabled());
    EXPECT_TRUE(List()->hasFocus());
}

TEST_F(MoveToolTest, WithoutSubfoldersFilesCanMove) {
    OpenBolts();
    EXPECT_THAT(Listed(), ElementsAre("M10|A\\M10.PDF|A\\M10.SLD", "M12|A\\M12.PDF|A\\M12.SLD"));
    EXPECT_TRUE(Button("FilMovBtn")->isEnabled());
    EXPECT_EQ(Button("FilMovBtn")->toolTip(), "");
}

TEST_F(MoveToolTest, ACategoryWithoutContentIsEmpty) {
    Open(3, "nuts");
    EXPECT_THAT(Listed(), IsEmpty());
    EXPECT_TRUE(Button("FilMovBtn")->isEnabled());
    messages_.Expect("移動させるｼﾝﾎﾞﾙを指定してください");
    Click("FolDerMovBtn");
}

TEST_F(MoveToolTest, AllAndNone) {
    OpenBolts();
    Click("AllBtn");
    EXPECT_THAT(SelectedRows(), ElementsAre(0, 1));
    Click("NonBtn");
    EXPECT_THAT(SelectedRows(), IsEmpty());
    ClickRow(0);
    ClickRow(1, Qt::ControlModifier);
    EXPECT_THAT(SelectedRows(), ElementsAre(0, 1));
    EXPECT_TRUE(IsOpen());
}

TEST_F(MoveToolTest, NothingSelectedIsTold) {
    OpenBolts();
    messages_.Expect("移動させるｼﾝﾎﾞﾙを指定してください");
    Click("FilMovBtn");
    messages_.Expect("移動させるｼﾝﾎﾞﾙを指定してください");
    Click("FolDerMovBtn");
    EXPECT_TRUE(IsOpen());
    Open(1, "root");
    messages_.Expect("移動させるフォルダを指定してください");
    Click("FolDerMovBtn");
    EXPECT_TRUE(IsOpen());
    EXPECT_EQ(Folders(), rootFolders);
    EXPECT_EQ(Entries(), firstEntries);
}

TEST_F(MoveToolTest, ACancelledPickerChangesNothing) {
    OpenBolts();
    Click("AllBtn");
    ExpectCancelledPicker(true);
    Click("FilMovBtn");
    EXPECT_TRUE(IsOpen());
    ExpectCancelledPicker(false);
    Click("FolDerMovBtn");
    EXPECT_TRUE(IsOpen());
    EXPECT_THAT(SelectedRows(), ElementsAre(0, 1)) << "what was selected stays so";
    EXPECT_EQ(Entries(), firstEntries);
    EXPECT_EQ(FileNames(), firstFiles_);
}

TEST_F(MoveToolTest, MovesTheFilesOfTheSelectedEntriesAndCloses) {
    OpenBolts();
    ClickRow(1);
    ExpectPicker(true, state.LibRoot + "N");
    Click("FilMovBtn");
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(tool_->result(), QDialog::Accepted);
    EXPECT_EQ(FileNames(), (QStringList{"A\\M10.PDF", "A\\M10.SLD", "N\\M12.PDF", "N\\M12.SLD"}));
    EXPECT_EQ(Entries(), (QStringList{firstEntries[0], "2|2|M12|N\\M12.PDF|N\\M12.SLD"}));
}

TEST_F(MoveToolTest, AsksAndTellsDuringAMove) {
    WriteFile("N\\M10.PDF", "there");
    QFile::remove(NativePath(state.LibRoot + "A\\M12.PDF"));
    OpenBolts();
    Click("AllBtn");
    ExpectPicker(true, state.LibRoot + "N");
    messages_.Expect(state.LibRoot + "N\\M10.PDFはすでに存在します\r上書きしてよろしいですか", false);
    messages_.Expect(state.LibRoot + "A\\M12.PDFが見つかりません");
    Click("FilMovBtn");
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(Entries(), (QStringList{"1|2|M10|A\\M10.PDF|N\\M10.SLD", "2|2|M12|A\\M12.PDF|N\\M12.SLD"}));
    EXPECT_EQ(folder.Read("home\\N\\M10.PDF"), "there");
}

TEST_F(MoveToolTest, AMoveThatFailedShowsWhatIsThereAndStays) {
    OpenBolts();
    ClickRow(1);
    ExpectPicker(true, state.LibRoot + "nowhere");
    messages_.ExpectContaining("76");
    Click("FilMovBtn");
    EXPECT_TRUE(IsOpen());
    EXPECT_THAT(SelectedRows(), ElementsAre(1));
    EXPECT_EQ(Entries(), firstEntries);
    EXPECT_EQ(FileNames(), firstFiles_);
}

TEST_F(MoveToolTest, AListThatChangedMeanwhileIsShownAfterAFailure) {
    OpenBolts();
    Click("AllBtn");
    dialogs_.Expect("Vlm_SelDir", [this](QDialog& picker) {
        Execute("DELETE FROM PDFFileTable WHERE ID=1");
        picker.accept();
        state.PickedDir = state.LibRoot + "nowhere";
    });
    messages_.ExpectContaining("76");
    Click("FilMovBtn");
    EXPECT_THAT(Listed(), ElementsAre("M12|A\\M12.PDF|A\\M12.SLD"));
    EXPECT_THAT(SelectedRows(), ElementsAre(0)) << "the same entry, in another row";
}

TEST_F(MoveToolTest, MovesEntriesToAnotherCategoryAndCloses) {
    OpenBolts();
    ClickRow(0);
    ExpectPicker(false, "3");
    Click("FolDerMovBtn");
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(tool_->result(), QDialog::Accepted);
    EXPECT_EQ(Entries(), (QStringList{"1|3|M10|A\\M10.PDF|A\\M10.SLD", firstEntries[1]}));
    EXPECT_EQ(FileNames(), firstFiles_) << "no file is touched";
}

TEST_F(MoveToolTest, MovesSubfoldersWithTheEntriesOfTheirNumber) {
    {
        Database database = MaintainedLibrary::Open();
        AddEntry(database, 1, "three", "A\\R.PDF", "");
        AddEntry(database, 1, "four", "A\\S.PDF", "");
    }
    Open(1, "root");
    ClickRow(1);
    ExpectPicker(false, "2");
    Click("FolDerMovBtn");
    EXPECT_EQ(Folders(), (QStringList{rootFolders[0], rootFolders[1], "3|2|nuts|N.SLD"}));
    EXPECT_EQ(Entries().mid(2), (QStringList{"3|2|three|A\\R.PDF|", "4|1|four|A\\S.PDF|"}));
}

TEST_F(MoveToolTest, ATargetThatIsNoNumberOrTooLargeIsTold) {
    OpenBolts();
    ClickRow(0);
    ExpectPicker(false, "40000");
    messages_.ExpectContaining("'6'");
    Click("FolDerMovBtn");
    EXPECT_TRUE(IsOpen());
    EXPECT_EQ(Entries(), firstEntries);
}

TEST_F(MoveToolTest, ALibraryThatIsBusyIsToldBeforeAFolderIsChosen) {
    OpenBolts();
    ClickRow(0);
    for (const char* button : {"FilMovBtn", "FolDerMovBtn"}) {
        const BusyWriter other(state.LibraryDb);
        messages_.ExpectContaining("3260");
        Click(button);
        EXPECT_TRUE(IsOpen());
    }
    EXPECT_EQ(Entries(), firstEntries);
}

TEST_F(MoveToolTest, ALibraryThatIsGoneIsAnErrorAtOnce) {
    DeleteFile(state.LibraryDb);
    EXPECT_THROW(Vlm_Tool(state, messages_, nullptr), RuntimeError);
}

TEST_F(MoveToolTest, CancelAndEscapeLeave) {
    OpenBolts();
    Click("AllBtn");
    Click("CanBtn");
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(tool_->result(), QDialog::Rejected);
    OpenBolts();
    QTest::keyClick(List(), Qt::Key_Escape);
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(Entries(), firstEntries);
    EXPECT_EQ(FileNames(), firstFiles_);
}

TEST_F(MoveToolTest, EnterPressesTheButtonWithTheFocusAndNoOther) {
    OpenBolts();
    QTest::keyClick(List(), Qt::Key_Return);
    EXPECT_TRUE(IsOpen());
    EXPECT_THAT(SelectedRows(), IsEmpty());
    Button("AllBtn")->setFocus();
    QTest::keyClick(Button("AllBtn"), Qt::Key_Return);
    EXPECT_THAT(SelectedRows(), ElementsAre(0, 1));
    Button("CanBtn")->setFocus();
    QTest::keyClick(Button("CanBtn"), Qt::Key_Enter);
    EXPECT_FALSE(IsOpen());
}

TEST_F(MoveToolTest, ComesBackInTheSizeThatItWasGiven) {
    const auto show = [this](const DialogQueue::Use& use) {
        dialogs_.Expect("Vlm_Tool", use);
        Vlm_Tool(state, messages_, nullptr).ShowModal();
    };
    QSize given;
    show([&given](QDialog& tool) {
        given = tool.size() + QSize(-77, 33);
        tool.resize(given);
        tool.reject();
    });
    show([&given](QDialog& tool) {
        EXPECT_EQ(tool.size(), given);
        tool.reject();
    });
}

} // namespace
} // namespace velmo
