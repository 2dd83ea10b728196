#include "library/vlm_tbl_edt.h"
#include "platform/runtime_error.h"
#include "support/dialog_queue.h"
#include "support/failure.h"
#include "support/message_queue.h"
#include "symbol_library.h"

#include <QTest>

namespace velmo {
namespace {

// The entry editor in each of its four jobs.
class EntryEditorTest : public SymbolLibrary {
protected:
    void Open(std::int16_t editMode) {
        state.EditMode = editMode;
        editor_ = std::make_unique<Vlm_TBlEdt>(state, messages_, nullptr);
        editor_->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(editor_.get()));
    }

    template <typename Control>
    Control* Find(const char* name) const {
        auto* control = editor_->findChild<Control*>(QLatin1String(name));
        if (!control)
            ADD_FAILURE() << "no control " << name;
        return control;
    }
    QLineEdit* Box(const char* name) const { return Find<QLineEdit>(name); }
    QString Head(const char* name) const { return Find<QLabel>(name)->text(); }
    void Click(const char* name) const { QTest::mouseClick(Find<QPushButton>(name), Qt::LeftButton); }
    bool IsOpen() const { return editor_->isVisible(); }
    void Fill(const QString& name2, const QString& name3, const QString& name4 = {}) const {
        Box("Name2")->setText(name2);
        Box("Name3")->setText(name3);
        Box("Name4")->setText(name4);
    }
    // "Name1|Name2|Name3|Name4"
    QString Texts() const {
        return QStringList{Head("Name1"), Box("Name2")->text(), Box("Name3")->text(), Box("Name4")->text()}
            .join('|');
    }
    void ExpectPicker(const QString& caption, const QString& answer) {
        dialogs_.Expect("Vlm_FileFrm", [this, caption, answer](QDialog& picker) {
            EXPECT_EQ(picker.windowTitle(), caption);
            isTopmostBelowPicker_ = editor_->windowFlags().testFlag(Qt::WindowStaysOnTopHint);
            picker.reject();
            state.PickedFile = answer;
        });
    }
    void ExpectUnchanged() const {
        EXPECT_EQ(Folders(), rootFolders);
        EXPECT_EQ(Entries(), firstEntries);
    }

    MessageQueue messages_;
    DialogQueue dialogs_;
    std::unique_ptr<Vlm_TBlEdt> editor_;
    bool isTopmostBelowPicker_ = false;
};

TEST_F(EntryEditorTest, ShowsWhatItIsToDo) {
    state.CurPdfID = 2;
    struct Job {
        std::int16_t mode;
        QString caption;
        QString heads;
        QString texts;
    };
    for (const Job& job :
         {Job{1, "Velmo分類ツリー登録", "親フォルダ|フォルダ名|SLDファイル名", "bolts|||"},
          Job{2, "Velmo分類ツリー編集", "親フォルダ|フォルダ名|SLDファイル名", "root|bolts|B.SLD|"},
          Job{3, "VelmoPDFリスト登録", "フォルダ名|ＰＤＦ名|PDFファイル名", "bolts|||"},
          Job{4, "VelmoPDFリスト編集", "フォルダ名|ＰＤＦ名|PDFファイル名",
              "bolts|M12|A\\M12.PDF|A\\M12.SLD"}}) {
        Open(job.mode);
        EXPECT_EQ(editor_->objectName(), "Vlm_TBlEdt");
        EXPECT_EQ(editor_->windowTitle(), job.caption);
        EXPECT_EQ((QStringList{Head("Head1"), Head("Head2"), Head("Head3")}.join('|')), job.heads);
        EXPECT_EQ(Texts(), job.texts);
        const bool isEntry = job.mode >= 3;
        EXPECT_EQ(Find<QLabel>("Head4")->isVisible(), isEntry) << job.mode;
        EXPECT_EQ(Box("Name4")->isVisible(), isEntry) << job.mode;
        EXPECT_EQ(Find<QPushButton>("Srch4")->isVisible(), isEntry) << job.mode;
        EXPECT_EQ(Head("Head4"), "SLDファイル名");
        EXPECT_TRUE(Box("Name2")->hasFocus());
        EXPECT_TRUE(Find<QPushButton>("OK_btn")->isDefault());
    }
}

TEST_F(EntryEditorTest, ARowThatIsGoneIsAnErrorAtOnce) {
    state.EditMode = edit_mode::EditEntry;
    state.CurPdfID = 9;
    EXPECT_EQ(Failure([this] { Vlm_TBlEdt(state, messages_, nullptr); }), ErrorNumber::NoCurrentRecord);
}

TEST_F(EntryEditorTest, OkStoresEachJob) {
    Open(edit_mode::AddFolder);
    Fill("screws", "S.SLD");
    Click("OK_btn");
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(editor_->result(), QDialog::Accepted);
    EXPECT_EQ(Folders(), rootFolders + QStringList{"4|2|screws|S.SLD"});
    EXPECT_EQ(state.EditMode, edit_mode::AddFolder);
    EXPECT_EQ(state.CurFolderID, 4);
    EXPECT_EQ(state.CurFolderName, "screws");
    EXPECT_EQ(state.CurSldFile, "S.SLD");

    Open(edit_mode::EditFolder);
    Fill("nails", "");
    Click("OK_btn");
    EXPECT_EQ(Folders(), rootFolders + QStringList{"4|2|nails|"});
    EXPECT_EQ(state.EditMode, edit_mode::EditFolder);

    state.CurFolderID = 3;
    Open(edit_mode::AddEntry);
    Fill("hex", "H.PDF", "H.SLD");
    Click("OK_btn");
    EXPECT_EQ(Entries(), firstEntries + QStringList{"3|3|hex|H.PDF|H.SLD"});
    EXPECT_EQ(state.EditMode, edit_mode::AddEntry);

    state.CurPdfID = 3;
    Open(edit_mode::EditEntry);
    Fill("nut", "U.PDF", "U.SLD");
    QTest::keyClick(Box("Name4"), Qt::Key_Return);
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(Entries(), firstEntries + QStringList{"3|3|nut|U.PDF|U.SLD"});
    EXPECT_EQ(state.EditMode, edit_mode::EditEntry);
}

TEST_F(EntryEditorTest, AnEntryThatVanishedIsAddedAnew) {
    state.CurPdfID = 1;
    Open(edit_mode::EditEntry);
    Execute("DELETE FROM PDFFileTable WHERE ID=1");
    Click("OK_btn");
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(state.EditMode, edit_mode::AddEntry);
    EXPECT_EQ(Entries(), (QStringList{firstEntries[1], "3|2|M10|A\\M10.PDF|A\\M10.SLD"}));
}

TEST_F(EntryEditorTest, ARefusalGoesToItsBoxAndTheEditorStays) {
    Open(edit_mode::AddEntry);
    for (const auto& [name2, name3, name4, told, box] :
         {std::tuple("", "", "", "ＰＤＦ名を入力してください", "Name2"),
          std::tuple("a", "", "c", "PDFファイル名を入力してください", "Name3"),
          std::tuple("a", "b", "", "SLDファイル名を入力してください", "Name4")}) {
        Fill(name2, name3, name4);
        messages_.Expect(told);
        Click("OK_btn");
        EXPECT_TRUE(IsOpen());
        EXPECT_TRUE(Box(box)->hasFocus()) << box;
        EXPECT_EQ(state.EditMode, edit_mode::AddEntry);
    }
    Open(edit_mode::EditFolder);
    Fill("", "x");
    messages_.Expect("フォルダ名を入力してください");
    Click("OK_btn");
    EXPECT_TRUE(Box("Name2")->hasFocus());
    ExpectUnchanged();
}

TEST_F(EntryEditorTest, CancelAfterARefusalStoresNothing) {
    state.CurPdfID = 1;
    const auto cancel = [this] { Click("Can_Btn"); };
    const auto escape = [this] { QTest::keyClick(Box("Name2"), Qt::Key_Escape); };
    const auto closeBox = [this] { editor_->close(); };
    for (const std::function<void()>& leave :
         {std::function<void()>(cancel), std::function<void()>(escape), std::function<void()>(closeBox)}) {
        for (const std::int16_t mode :
             {edit_mode::AddFolder, edit_mode::EditFolder, edit_mode::AddEntry, edit_mode::EditEntry}) {
            Open(mode);
            Fill("", "b", "c");
            messages_.ExpectContaining("を入力してください");
            Click("OK_btn");
            Fill("good", "b", "c");
            leave();
            EXPECT_FALSE(IsOpen());
            EXPECT_EQ(editor_->result(), QDialog::Rejected);
            EXPECT_EQ(state.EditMode, edit_mode::Cancelled) << mode;
        }
    }
    ExpectUnchanged();
    EXPECT_EQ(state.CurFolderID, 2);
    EXPECT_EQ(state.CurFolderName, "bolts");
}

TEST_F(EntryEditorTest, OkAfterARefusalStores) {
    Open(edit_mode::AddFolder);
    messages_.Expect("フォルダ名を入力してください");
    Click("OK_btn");
    Fill("a", "");
    Click("OK_btn");
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(Folders().last(), "4|2|a|");
}

TEST_F(EntryEditorTest, WhatCannotBeStoredIsToldAndStays) {
    Open(edit_mode::AddFolder);
    Fill("a", "b");
    {
        const BusyWriter other(state.LibraryDb);
        messages_.ExpectContaining("3260");
        Click("OK_btn");
    }
    EXPECT_TRUE(IsOpen());
    EXPECT_EQ(Box("Name2")->text(), "a");
    ExpectUnchanged();
    Click("OK_btn");
    EXPECT_EQ(Folders().last(), "4|2|a|b");
}

TEST_F(EntryEditorTest, BrowsesForTheSlideOfAFolder) {
    Open(edit_mode::AddFolder);
    ExpectPicker("SLDファイル選択", "A\\M10.SLD");
    Click("Srch3");
    EXPECT_EQ(Texts(), "bolts||A\\M10.SLD|");
    ExpectPicker("SLDファイル選択", "");
    Click("Srch3");
    EXPECT_EQ(Texts(), "bolts||A\\M10.SLD|") << "nothing was picked";
    EXPECT_FALSE(isTopmostBelowPicker_);
    EXPECT_TRUE(editor_->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
}

TEST_F(EntryEditorTest, BrowsingForOneFileOfAnEntryFillsTheOtherWhereItIsEmpty) {
    Open(edit_mode::AddEntry);
    ExpectPicker("PDFファイル選択", "A\\M10.PDF");
    Click("Srch3");
    EXPECT_EQ(Texts(), "bolts||A\\M10.PDF|A\\M10.SLD");
    EXPECT_FALSE(isTopmostBelowPicker_);
    ExpectPicker("PDFファイル選択", "A\\M12.PDF");
    Click("Srch3");
    EXPECT_EQ(Texts(), "bolts||A\\M12.PDF|A\\M10.SLD");

    Open(edit_mode::AddEntry);
    ExpectPicker("SLDファイル選択", "A\\M12.SLD");
    Click("Srch4");
    EXPECT_EQ(Texts(), "bolts||A\\M12.PDF|A\\M12.SLD");
    ExpectPicker("SLDファイル選択", "A\\M10.SLD");
    Click("Srch4");
    EXPECT_EQ(Texts(), "bolts||A\\M12.PDF|A\\M10.SLD");
    ExpectPicker("SLDファイル選択", "");
    Click("Srch4");
    EXPECT_EQ(Texts(), "bolts||A\\M12.PDF|A\\M10.SLD");
}

TEST_F(EntryEditorTest, FoldersAndEntriesHaveASizeEach) {
    state.CurPdfID = 1;
    // The size that it comes up with; it gets this one then.
    const auto show = [this](std::int16_t mode, const QSize& given) {
        QSize shown;
        dialogs_.Expect("Vlm_TBlEdt", [&shown, &given](QDialog& editor) {
            shown = editor.size();
            editor.resize(given);
            editor.reject();
        });
        state.EditMode = mode;
        Vlm_TBlEdt(state, messages_, nullptr).ShowModal();
        return shown;
    };
    const QSize folderSize(600, 300);
    const QSize entrySize(650, 400);
    EXPECT_NE(show(edit_mode::AddFolder, folderSize), folderSize);
    const QSize firstEntrySize = show(edit_mode::AddEntry, entrySize);
    EXPECT_NE(firstEntrySize, folderSize);
    EXPECT_EQ(show(edit_mode::EditFolder, folderSize), folderSize);
    EXPECT_EQ(show(edit_mode::EditEntry, entrySize), entrySize);
}

} // namespace
} // namespace velmo
