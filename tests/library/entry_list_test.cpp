#include "library/entry_list.h"
#include "library/library_samples.h"
#include "platform/empty_hint.h"
#include "platform/files.h"
#include "platform/keeps_selection.h"
#include "platform/plain_tool_tip.h"
#include "platform/slide_view.h"
#include "support/message_queue.h"

#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

namespace velmo {
namespace {

class EntryListTest : public testing::Test {
protected:
    EntryListTest() : settings_(NativePath(folder_.Path("velmo.ini"))) {
        state_.HomeDir = folder_.Path();
        state_.LibraryDb = folder_.Path("l.mdb");
        state_.CurFolderID = 2;
        CreateLibraryFile(state_.LibraryDb);
        folder_.Write("SMB\\one.SLD", SampleSlide());
        database_.emplace(state_.LibraryDb, Database::Access::Write);
        AddEntry(*database_, 2, "one", "SMB\\one.txt", "SMB\\one.SLD");
        AddEntry(*database_, 3, "elsewhere", "SMB\\e.txt");
        AddEntry(*database_, 2, "two", "SMB\\two.txt", "SMB\\none.SLD");
        AddEntry(*database_, 2, "two", "SMB\\second.txt");
        AddEntry(*database_, 2, "it's", "SMB\\q.txt");
        view_.resize(200, 200);
        view_.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&view_));
    }

    QStringList Texts() const {
        QStringList texts;
        for (int row = 0; row < view_.model()->rowCount(); ++row)
            texts << view_.model()->index(row, 0).data().toString();
        return texts;
    }

    void Click(int row) {
        QTest::mouseClick(view_.viewport(), Qt::LeftButton, Qt::NoModifier,
                          view_.visualRect(view_.model()->index(row, 0)).center());
    }

    TempFolder folder_;
    SettingsStore settings_;
    GlobalState state_;
    MessageQueue messages_;
    std::optional<Database> database_;
    KeepsSelection<QListView> view_;
    SlideView slide_;
    EntryList list_{view_, slide_, state_, settings_, messages_};
};

TEST_F(EntryListTest, ShowsTheCategorysEntriesInTheirOrder) {
    state_.SymbolFile = "before";
    list_.FillEntryList(EntryList::Restore::No);
    EXPECT_EQ(Texts(), (QStringList{"one", "two", "two", "it's"}));
    EXPECT_EQ(state_.SymbolFile, "");
    EXPECT_FALSE(view_.selectionModel()->hasSelection());
}

TEST_F(EntryListTest, ACategoryWithoutEntriesIsEmpty) {
    list_.FillEntryList(EntryList::Restore::No);
    Click(0);
    state_.CurFolderID = 77;
    list_.FillEntryList(EntryList::Restore::Yes);
    EXPECT_EQ(Texts(), QStringList());
    EXPECT_FALSE(slide_.HasPicture());
    EXPECT_EQ(state_.SymbolFile, "");
}

TEST_F(EntryListTest, AClickChoosesTheEntryAndShowsItsSlide) {
    list_.FillEntryList(EntryList::Restore::No);
    Click(0);
    EXPECT_EQ(state_.SymbolFile, folder_.Path("SMB\\one.txt"));
    EXPECT_EQ(state_.CurPdfID, 1);
    EXPECT_EQ(state_.CurPdfIndex, 0);
    EXPECT_TRUE(slide_.HasPicture());
    Click(1);
    EXPECT_EQ(state_.SymbolFile, folder_.Path("SMB\\two.txt"));
    EXPECT_FALSE(slide_.HasPicture()) << "a missing slide is an empty one";
}

TEST_F(EntryListTest, AnEmptySlideSaysWhy) {
    list_.FillEntryList(EntryList::Restore::No);
    EXPECT_EQ(slide_.EmptyText(), "一覧からシンボルを選んでください");
    Click(1);
    EXPECT_EQ(slide_.EmptyText(), "このシンボルにスライドはありません");
    state_.CurFolderID = 77;
    list_.FillEntryList(EntryList::Restore::No);
    EXPECT_EQ(slide_.EmptyText(), "シンボルのスライドがここに出ます");
}

TEST_F(EntryListTest, AListThatCouldNotBeReadClaimsNothing) {
    const auto* hint = view_.findChild<EmptyHint*>();
    state_.CurFolderID = 77;
    list_.FillEntryList(EntryList::Restore::No);
    EXPECT_TRUE(hint->Text().contains("シンボルはありません"));
    state_.CurFolderID = 2;
    list_.FillEntryList(EntryList::Restore::No);
    state_.LibraryDb = folder_.Path("gone.mdb");
    EXPECT_THROW(list_.FillEntryList(EntryList::Restore::No), RuntimeError);
    EXPECT_TRUE(hint->IsSeen());
    EXPECT_EQ(hint->Text(), "ツリーで分類を選んでください。");
    EXPECT_EQ(slide_.EmptyText(), "シンボルのスライドがここに出ます");
}

TEST_F(EntryListTest, MarkupInACaptionIsReadAsItIsWritten) {
    AddEntry(*database_, 2, "<b>x</b>", "SMB\\x.txt");
    list_.FillEntryList(EntryList::Restore::No);
    const QModelIndex last = view_.model()->index(4, 0);
    EXPECT_EQ(last.data().toString(), "<b>x</b>");
    EXPECT_EQ(last.data(Qt::ToolTipRole).toString(), PlainToolTip("<b>x</b>"));
}

TEST_F(EntryListTest, OfTwoEntriesWithOneCaptionTheFirstWins) {
    list_.FillEntryList(EntryList::Restore::No);
    Click(2);
    EXPECT_EQ(state_.SymbolFile, folder_.Path("SMB\\two.txt"));
    EXPECT_EQ(state_.CurPdfIndex, 2);
}

TEST_F(EntryListTest, AnEqualCaptionInAnotherCategoryIsAnotherEntry) {
    AddEntry(*database_, 3, "two", "SMB\\third.txt");
    state_.CurFolderID = 3;
    list_.FillEntryList(EntryList::Restore::No);
    Click(1);
    EXPECT_EQ(state_.SymbolFile, folder_.Path("SMB\\third.txt"));
    EXPECT_EQ(state_.CurPdfID, 6);
    database_->Execute("DELETE FROM PDFFileTable WHERE ID=6");
    Click(1);
    EXPECT_EQ(state_.SymbolFile, "") << "those of the other category are not taken for it";
    EXPECT_EQ(state_.CurPdfID, 0);
}

TEST_F(EntryListTest, AQuoteInACaptionBreaksTheQuery) {
    list_.FillEntryList(EntryList::Restore::No);
    Click(0);
    messages_.ExpectContaining("3075");
    Click(3);
    EXPECT_EQ(state_.SymbolFile, "") << "Open must not take the entry chosen before";
}

TEST_F(EntryListTest, AnEntryThatIsGoneChoosesNothing) {
    list_.FillEntryList(EntryList::Restore::No);
    database_->Execute("DELETE FROM PDFFileTable WHERE PDFName='one'");
    Click(0);
    EXPECT_EQ(state_.SymbolFile, "");
}

TEST_F(EntryListTest, TheKeyboardChoosesAndEnterOpens) {
    list_.FillEntryList(EntryList::Restore::No);
    Click(0);
    QTest::keyClick(&view_, Qt::Key_Down);
    EXPECT_EQ(state_.SymbolFile, folder_.Path("SMB\\two.txt"));
    QSignalSpy open(&list_, &EntryList::OpenWanted);
    QTest::keyClick(&view_, Qt::Key_Return);
    EXPECT_EQ(open.size(), 1);
}

TEST_F(EntryListTest, ADoubleClickOpens) {
    list_.FillEntryList(EntryList::Restore::No);
    QSignalSpy open(&list_, &EntryList::OpenWanted);
    Click(0);
    QTest::mouseDClick(view_.viewport(), Qt::LeftButton, Qt::NoModifier,
                       view_.visualRect(view_.model()->index(0, 0)).center());
    EXPECT_EQ(open.size(), 1);
}

TEST_F(EntryListTest, RestoresTheEntryChosenLast) {
    settings_.Save("LastPDF", folder_.Path("SMB\\second.txt"));
    settings_.Save("UsrLastPDF", folder_.Path("SMB\\one.txt"));
    list_.FillEntryList(EntryList::Restore::Yes);
    EXPECT_EQ(state_.SymbolFile, folder_.Path("SMB\\second.txt"));
    EXPECT_EQ(view_.currentIndex().row(), 1) << "the first item of that caption";
    state_.UserLibrary = true;
    list_.FillEntryList(EntryList::Restore::Yes);
    EXPECT_EQ(state_.SymbolFile, folder_.Path("SMB\\one.txt"));
    EXPECT_TRUE(view_.selectionModel()->isSelected(view_.model()->index(0, 0)));
    EXPECT_TRUE(slide_.HasPicture());
    list_.FillEntryList(EntryList::Restore::No);
    EXPECT_EQ(state_.SymbolFile, "");
}

TEST_F(EntryListTest, AFirstKeyChoosesTheFramedEntry) {
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Home, Qt::Key_Return}) {
        list_.FillEntryList(EntryList::Restore::No);
        QSignalSpy open(&list_, &EntryList::OpenWanted);
        QTest::keyClick(&view_, key);
        EXPECT_EQ(state_.SymbolFile, folder_.Path("SMB\\one.txt")) << key;
        EXPECT_EQ(view_.currentIndex().row(), 0) << key;
        EXPECT_EQ(open.size(), key == Qt::Key_Return ? 1 : 0);
    }
}

TEST_F(EntryListTest, AClickAfterTheKeyboardChoosesAgain) {
    list_.FillEntryList(EntryList::Restore::No);
    Click(0);
    QTest::keyClick(&view_, Qt::Key_Down);
    state_.SymbolFile.clear();
    Click(1);
    EXPECT_EQ(state_.SymbolFile, folder_.Path("SMB\\two.txt"));
}

TEST_F(EntryListTest, ARightDoubleClickDoesNotOpen) {
    list_.FillEntryList(EntryList::Restore::No);
    QSignalSpy open(&list_, &EntryList::OpenWanted);
    QTest::mouseDClick(view_.viewport(), Qt::RightButton, Qt::NoModifier,
                       view_.visualRect(view_.model()->index(0, 0)).center());
    EXPECT_EQ(open.size(), 0);
}

TEST_F(EntryListTest, AnIdBeyondSixteenBitsIsToldButTheSymbolIsChosen) {
    database_->Execute("UPDATE PDFFileTable SET ID=40000 WHERE ID=1");
    list_.FillEntryList(EntryList::Restore::No);
    messages_.ExpectContaining("PDFFileTable.ID");
    Click(view_.model()->rowCount() - 1);
    EXPECT_EQ(state_.SymbolFile, folder_.Path("SMB\\one.txt"));
}

TEST_F(EntryListTest, WhatIsNotInTheCategoryOrTheHomeRestoresNothing) {
    // As long as the home folder, but another one.
    const QString elsewhere = QString(folder_.Path().size() - 1, u'x') + u'\\';
    for (const QString& last : {QString("\\\\\\\\\\"), QString(), elsewhere + "SMB\\one.txt",
                                folder_.Path("SMB\\e.txt"), folder_.Path("SMB\\it's.txt")}) {
        settings_.Save("LastPDF", last);
        list_.FillEntryList(EntryList::Restore::Yes);
        EXPECT_EQ(state_.SymbolFile, "") << last.toStdString();
        EXPECT_FALSE(view_.selectionModel()->hasSelection()) << last.toStdString();
    }
}

TEST_F(EntryListTest, TheSystemTreesEntriesComeFromTheSystemLibrary) {
    state_.SystemDb = folder_.Path("s.mdb");
    CreateLibraryFile(state_.SystemDb);
    Database system(state_.SystemDb, Database::Access::Write);
    AddEntry(system, 2, "from the system", "SMB\\s.txt");
    state_.SystemTreeFirst = true;
    list_.FillEntryList(EntryList::Restore::No);
    EXPECT_EQ(Texts(), QStringList{"from the system"});
    Click(0);
    EXPECT_EQ(state_.SymbolFile, folder_.Path("SMB\\s.txt"));
}

} // namespace
} // namespace velmo
