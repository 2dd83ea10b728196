#include "library/entry_editing.h"
#include "maintained_library.h"
#include "support/failing_disk.h"
#include "support/failure.h"
#include "support/other_user.h"

namespace velmo {
namespace {

class EntryEditingTest : public MaintainedLibrary {
protected:
    QStringList Load(std::int16_t editMode) {
        state.EditMode = editMode;
        const EntryTexts texts = LoadEntryTexts(state);
        return {texts.Name1, texts.Name2, texts.Name3, texts.Name4};
    }
    // "box: text", empty when the texts are good.
    QString Refusal(std::int16_t editMode, const EntryTexts& texts) {
        state.EditMode = editMode;
        const std::optional<EntryRefusal> refusal = CheckEntryTexts(state, texts);
        return refusal ? QStringLiteral("%1: %2").arg(refusal->box).arg(refusal->text) : QString();
    }
    // What the commands share must not change when nothing was stored.
    void ExpectUnchanged() {
        EXPECT_EQ(Folders(), rootFolders);
        EXPECT_EQ(Entries(), firstEntries);
        EXPECT_EQ(state.CurFolderID, 2);
        EXPECT_EQ(state.CurFolderName, "bolts");
        EXPECT_EQ(state.CurSldFile, "");
    }

    const EntryTexts good{{}, "a", "b", "c"};
};

TEST_F(EntryEditingTest, ShowsTheParentOfANewFolder) {
    EXPECT_EQ(Load(1), (QStringList{"bolts", "", "", ""}));
}

TEST_F(EntryEditingTest, ShowsAFolderAndItsParent) {
    EXPECT_EQ(Load(2), (QStringList{"root", "bolts", "B.SLD", ""}));
    state.CurFolderID = 1;
    EXPECT_EQ(Load(2), (QStringList{"ルートフォルダ", "root", "", ""}));
}

TEST_F(EntryEditingTest, ShowsTheFolderOfAnEntry) {
    EXPECT_EQ(Load(3), (QStringList{"bolts", "", "", ""}));
    state.CurPdfID = 2;
    EXPECT_EQ(Load(4), (QStringList{"bolts", "M12", "A\\M12.PDF", "A\\M12.SLD"}));
}

TEST_F(EntryEditingTest, AnyOtherModeShowsNothing) {
    EXPECT_EQ(Load(0), (QStringList{"", "", "", ""}));
    EXPECT_EQ(Load(5), (QStringList{"", "", "", ""}));
}

TEST_F(EntryEditingTest, EmptyValuesStayEmpty) {
    Execute("UPDATE FolderTable SET SLDFileName=NULL WHERE ID=2");
    Execute("UPDATE PDFFileTable SET PDFName=NULL, SLDFileName=NULL WHERE ID=1");
    EXPECT_EQ(Load(2), (QStringList{"root", "bolts", "", ""}));
    state.CurPdfID = 1;
    EXPECT_EQ(Load(4), (QStringList{"bolts", "", "A\\M10.PDF", ""}));
}

TEST_F(EntryEditingTest, AMissingRowIsAnErrorThatNamesTheLibrary) {
    state.CurPdfID = 9;
    EXPECT_EQ(Failure([&] { Load(4); }), ErrorNumber::NoCurrentRecord);
    for (const std::int16_t gone : {std::int16_t(0), std::int16_t(9), std::int16_t(-1)}) {
        state.CurFolderID = gone;
        for (const std::int16_t mode :
             {edit_mode::AddFolder, edit_mode::EditFolder, edit_mode::AddEntry, edit_mode::EditEntry})
            EXPECT_EQ(Failure([&] { Load(mode); }), ErrorNumber::NoCurrentRecord) << gone << " in " << mode;
    }
    try {
        Load(2);
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.File(), state.LibraryDb);
    }
}

TEST_F(EntryEditingTest, AFolderWhoseParentIsGoneIsAnError) {
    Execute("DELETE FROM FolderTable WHERE ID=1");
    EXPECT_EQ(Failure([&] { Load(2); }), ErrorNumber::NoCurrentRecord);
    Execute("UPDATE FolderTable SET ParentID=40000 WHERE ID=2");
    EXPECT_EQ(Failure([&] { Load(2); }), ErrorNumber::Overflow);
}

TEST_F(EntryEditingTest, AFolderThatIsItsOwnParentShowsItself) {
    Execute("UPDATE FolderTable SET ParentID=2 WHERE ID=2");
    EXPECT_EQ(Load(2), (QStringList{"bolts", "bolts", "B.SLD", ""}));
}

TEST_F(EntryEditingTest, OnlyAFoldersNameIsRequired) {
    for (const std::int16_t mode : {edit_mode::AddFolder, edit_mode::EditFolder}) {
        EXPECT_EQ(Refusal(mode, {{}, "", "", ""}), "2: フォルダ名を入力してください");
        EXPECT_EQ(Refusal(mode, {{}, "a", "", ""}), "");
        EXPECT_EQ(Refusal(mode, {{}, " ", "", ""}), "") << "a blank is a name";
    }
}

TEST_F(EntryEditingTest, AnEntryNeedsAllThreeAndTheFirstMissingIsTold) {
    for (const std::int16_t mode : {edit_mode::AddEntry, edit_mode::EditEntry}) {
        EXPECT_EQ(Refusal(mode, {{}, "", "", ""}), "2: ＰＤＦ名を入力してください");
        EXPECT_EQ(Refusal(mode, {{}, "a", "", ""}), "3: PDFファイル名を入力してください");
        EXPECT_EQ(Refusal(mode, {{}, "a", "b", ""}), "4: SLDファイル名を入力してください");
        EXPECT_EQ(Refusal(mode, good), "");
    }
}

TEST_F(EntryEditingTest, TextsHoldAtMost255Characters) {
    const QString longest(255, u'あ');
    EXPECT_EQ(Refusal(3, {{}, longest, longest, longest}), "");
    EXPECT_EQ(Refusal(3, {{}, "a", longest + "b", longest + "b"}),
              "3: PDFファイル名は 255 文字以内で入力してください (今は 256 文字です)");
    EXPECT_EQ(Refusal(2, {{}, "a", longest + "b", {}}),
              "3: SLDファイル名は 255 文字以内で入力してください (今は 256 文字です)");
    EXPECT_EQ(Refusal(3, {{}, longest + "b", "", "c"}), "3: PDFファイル名を入力してください")
        << "what is missing comes first";
    EXPECT_EQ(Refusal(1, {{}, "a", "b", longest + "b"}), "") << "a folder has no fourth text";
}

TEST_F(EntryEditingTest, ControlCharactersAreRefused) {
    for (const int unit : {0x0, 0x9, 0xA, 0xD, 0x1F, 0x7F, 0x85, 0x2028, 0x2029}) {
        const QString text = QString("a") + QChar(unit) + "b";
        const QString named = QString("U+%1").arg(QString::number(unit, 16).toUpper().rightJustified(4, '0'));
        EXPECT_EQ(Refusal(4, {{}, "a", "b", text}),
                  "4: SLDファイル名に使えない文字 (" + named + ") があります");
        EXPECT_EQ(Refusal(1, {{}, text, "", {}}), "2: フォルダ名に使えない文字 (" + named + ") があります");
    }
    for (const int unit : {0x20, 0x7E, 0xA0, 0x2027, 0x3000})
        EXPECT_EQ(Refusal(1, {{}, QString(QChar(unit)), {}, {}}), "") << unit;
}

TEST_F(EntryEditingTest, HalvesOfCharactersAreRefused) {
    EXPECT_EQ(Refusal(3, {{}, QString("a") + QChar(0xD83D), "b", "c"}),
              "2: ＰＤＦ名に使えない文字 (U+D83D) があります");
    EXPECT_EQ(Refusal(3, {{}, QString("a") + QChar(0xDE00) + "b", "b", "c"}),
              "2: ＰＤＦ名に使えない文字 (U+DE00) があります");
    EXPECT_EQ(Refusal(3, {{}, "😀", "b", "😀"}), "");
}

TEST_F(EntryEditingTest, OnlyThePdfFileMustBeTellableToTheCadSide) {
    EXPECT_EQ(Refusal(3, {{}, "a", "A\\é.PDF", "c"}),
              "3: PDFファイル名の文字「é」は CAD に渡せません (コードページ 932 にない文字です)");
    EXPECT_EQ(Refusal(4, {{}, "é", "日本.PDF", "é"}), "");
    EXPECT_EQ(Refusal(1, {{}, "é", "é", {}}), "");
}

TEST_F(EntryEditingTest, AddsAFolderUnderTheSelectedOneAndSelectsIt) {
    state.EditMode = 1;
    SaveFolderEntry(state, {"ignored", "screws", "S.SLD", "ignored"});
    EXPECT_EQ(Folders(), rootFolders + QStringList{"4|2|screws|S.SLD"});
    EXPECT_EQ(state.CurFolderID, 4);
    EXPECT_EQ(state.CurFolderName, "screws");
    EXPECT_EQ(state.CurSldFile, "S.SLD");
    EXPECT_EQ(state.EditMode, 1);
}

TEST_F(EntryEditingTest, EditsAFolderAndLeavesItWhereItIs) {
    state.EditMode = 2;
    SaveFolderEntry(state, {{}, "ボルト", "", {}});
    EXPECT_EQ(Folders(), (QStringList{"1|0|root|", "2|1|ボルト|", "3|1|nuts|N.SLD"}));
    EXPECT_EQ(state.CurFolderID, 2);
    EXPECT_EQ(state.CurFolderName, "ボルト");
    EXPECT_EQ(state.CurSldFile, "");
}

TEST_F(EntryEditingTest, AddsAnEntry) {
    state.EditMode = 3;
    state.CurFolderID = 3;
    SavePdfEntry(state, good);
    EXPECT_EQ(Entries(), firstEntries + QStringList{"3|3|a|b|c"});
    EXPECT_EQ(state.CurSldFile, "c");
    EXPECT_EQ(state.CurFolderName, "bolts") << "not touched";
    EXPECT_EQ(state.CurPdfID, 0) << "the number is not read back";
}

TEST_F(EntryEditingTest, AddingWhileAnEntryIsSelectedDoesNotChangeIt) {
    state.EditMode = 3;
    state.CurPdfID = 1;
    SavePdfEntry(state, good);
    EXPECT_EQ(Entries(), firstEntries + QStringList{"3|2|a|b|c"});
}

TEST_F(EntryEditingTest, EditsAnEntryAndLeavesItInItsFolder) {
    state.EditMode = 4;
    state.CurPdfID = 1;
    state.CurFolderID = 3;
    SavePdfEntry(state, good);
    EXPECT_EQ(Entries(), (QStringList{"1|2|a|b|c", firstEntries[1]}));
    EXPECT_EQ(state.EditMode, 4);
    EXPECT_EQ(state.CurSldFile, "c");
}

TEST_F(EntryEditingTest, AnEntryThatVanishedIsAddedAnew) {
    state.EditMode = 4;
    state.CurPdfID = 1;
    Execute("DELETE FROM PDFFileTable WHERE ID=1");
    SavePdfEntry(state, good);
    EXPECT_EQ(Entries(), (QStringList{firstEntries[1], "3|2|a|b|c"}));
    EXPECT_EQ(state.EditMode, 3);
}

TEST_F(EntryEditingTest, QuotesAreTextLikeAnyOther) {
    const QString quotes = "it's \"5%\"; DROP TABLE FolderTable --";
    state.EditMode = 2;
    SaveFolderEntry(state, {{}, quotes, quotes, {}});
    state.EditMode = 3;
    SavePdfEntry(state, {{}, quotes, quotes, quotes});
    EXPECT_EQ(Folders()[1], "2|1|" + quotes + "|" + quotes);
    EXPECT_EQ(Entries()[2], "3|2|" + quotes + "|" + quotes + "|" + quotes);
}

TEST_F(EntryEditingTest, AFolderThatIsGoneIsNeitherEditedNorAddedTo) {
    for (const std::int16_t mode : {edit_mode::AddFolder, edit_mode::EditFolder}) {
        state.EditMode = mode;
        state.CurFolderID = 0;
        EXPECT_EQ(Failure([&] { SaveFolderEntry(state, good); }), ErrorNumber::NoCurrentRecord);
        state.CurFolderID = 2;
        ExpectUnchanged();
    }
}

TEST_F(EntryEditingTest, ATextThatWasNotCheckedChangesNothing) {
    const QString tooLong(256, 'x');
    state.EditMode = 1;
    EXPECT_EQ(Failure([&] { SaveFolderEntry(state, {{}, "a", tooLong, {}}); }), ErrorNumber::TextTooLong);
    state.EditMode = 2;
    EXPECT_EQ(Failure([&] { SaveFolderEntry(state, {{}, tooLong, "b", {}}); }), ErrorNumber::TextTooLong);
    state.EditMode = 3;
    EXPECT_EQ(Failure([&] { SavePdfEntry(state, {{}, "a", "b", tooLong}); }), ErrorNumber::TextTooLong);
    ExpectUnchanged();
}

TEST_F(EntryEditingTest, NumbersBeyondSixteenBitsAreNotGiven) {
    Execute("UPDATE sqlite_sequence SET seq=32766");
    state.EditMode = 1;
    SaveFolderEntry(state, good);
    EXPECT_EQ(state.CurFolderID, 32767);
    EXPECT_EQ(Failure([&] { SaveFolderEntry(state, good); }), ErrorNumber::Overflow);
    EXPECT_EQ(Folders().size(), 4);
    EXPECT_EQ(state.CurFolderID, 32767);
    state.EditMode = 3;
    SavePdfEntry(state, good);
    EXPECT_EQ(Failure([&] { SavePdfEntry(state, good); }), ErrorNumber::Overflow);
    EXPECT_EQ(Entries().size(), 3);
}

TEST_F(EntryEditingTest, AFullDiskChangesNothing) {
    state.EditMode = 1;
    {
        const FailingDisk full(0);
        EXPECT_THROW(SaveFolderEntry(state, good), RuntimeError);
    }
    state.EditMode = 3;
    {
        const FailingDisk full(0);
        EXPECT_THROW(SavePdfEntry(state, good), RuntimeError);
    }
    ExpectUnchanged();
}

TEST_F(EntryEditingTest, ALibraryThatIsGoneIsNamed) {
    DeleteFile(state.LibraryDb);
    EXPECT_EQ(Failure([&] { Load(2); }), ErrorNumber::FileNotFound);
    EXPECT_EQ(Failure([&] { SaveFolderEntry(state, good); }), ErrorNumber::FileNotFound);
    EXPECT_EQ(Failure([&] { SavePdfEntry(state, good); }), ErrorNumber::FileNotFound);
    folder.Write("home\\VelmoUsr.mdb", QByteArray(5000, 'x'));
    EXPECT_EQ(Failure([&] { Load(2); }), ErrorNumber::NotADatabase);
    EXPECT_EQ(Failure([&] { RequireWritable(state.LibraryDb); }), ErrorNumber::NotADatabase);
}

TEST_F(EntryEditingTest, ABusyLibraryIsTold) {
    const BusyWriter other(state.LibraryDb);
    EXPECT_EQ(Load(2)[1], "bolts") << "reading goes on";
    EXPECT_EQ(Failure([&] { SaveFolderEntry(state, good); }), ErrorNumber::DatabaseLocked);
}

TEST_F(EntryEditingTest, AWritableLibraryIsFoundSoAndStaysAsItWas) {
    const QByteArray before = folder.Read("home\\VelmoUsr.mdb");
    RequireWritable(state.LibraryDb);
    EXPECT_EQ(folder.Read("home\\VelmoUsr.mdb"), before);
    EXPECT_FALSE(folder.Exists("home\\VelmoUsr.mdb-journal"));
}

TEST_F(EntryEditingTest, ALibraryThatCanOnlyBeReadIsToldBeforeAnythingIsBegun) {
    if (!OtherUser::IsPossible())
        GTEST_SKIP() << "only the superuser can be another user";
    Permit(state.LibraryDb, everyoneReads);
    const OtherUser other(NativePath(folder.Path()));
    ASSERT_TRUE(other.Changed());
    try {
        RequireWritable(state.LibraryDb);
        ADD_FAILURE() << "no error";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), ErrorNumber::DatabaseReadOnly);
        EXPECT_EQ(error.File(), state.LibraryDb);
        EXPECT_TRUE(ErrorText(error).contains("書き込めません"));
    }
    EXPECT_EQ(Failure([&] { SaveFolderEntry(state, good); }), ErrorNumber::DatabaseReadOnly);
    EXPECT_EQ(Load(2)[1], "bolts") << "reading goes on";
}

TEST_F(EntryEditingTest, AFolderThatTakesNoFilesIsToldToo) {
    if (!OtherUser::IsPossible())
        GTEST_SKIP() << "only the superuser can be another user";
    Permit(state.LibraryDb, everyoneWrites);
    const OtherUser other(NativePath(folder.Path()));
    ASSERT_TRUE(other.Changed());
    EXPECT_EQ(Failure([&] { RequireWritable(state.LibraryDb); }), ErrorNumber::DatabaseReadOnly);
}

} // namespace
} // namespace velmo
