#include "library_run.h"
#include "obey_permissions.h"

#include <QFile>
#include <QFileInfo>
#include <SQLiteCpp/SQLiteCpp.h>

namespace velmo {
namespace {

using testing::ElementsAre;

// Another program that uses the library at the same time.
class SharedLibraryTest : public LibraryRunTest {
protected:
    std::string File() const { return (session_.Home() + "/velmo2.mdb").toStdString(); }
    QString Library() const { return session_.HomeDir() + "Velmo2.mdb"; }
    void ExpectLocked() { ExpectError({"3260", Library()}); }
};

TEST_F(SharedLibraryTest, SavingWaitsForAReader) {
    StartWith("VLM_MAIN");
    AddCategoryBelow(bolts_);
    Fill("Name2", "新");
    SQLite::Database other(File(), SQLite::OPEN_READWRITE);
    other.exec("BEGIN");
    EXPECT_EQ(other.execAndGet("SELECT count(*) FROM FolderTable").getInt(), 4);
    Run().Click("OK_btn");
    // The program has begun to write and cannot end while it is read from.
    const QString journal = session_.Home() + "/velmo2.mdb-journal";
    Run().WaitFor("the journal", [&] { return QFileInfo::exists(journal); });
    other.exec("COMMIT");
    Run().WaitUntilClosed("Vlm_TBlEdt");
    EXPECT_EQ(Categories().last(), QString("5|2|新|"));
}

TEST_F(SharedLibraryTest, TheEditorKeepsWhatCouldNotBeSaved) {
    StartWith("VLM_MAIN");
    AddEntry(washers_);
    Fill("Name2", "A");
    Fill("Name3", "A.PDF");
    Fill("Name4", "A.SLD");
    {
        SQLite::Database other(File(), SQLite::OPEN_READWRITE);
        other.exec("BEGIN IMMEDIATE");
        Run().Click("OK_btn");
        ExpectLocked();
        EXPECT_TRUE(Run().IsWindowShown("Vlm_TBlEdt"));
        EXPECT_EQ(Run().Text("Name2"), QString("A"));
    }
    EXPECT_EQ(Entries(), firstEntries_);
    ConfirmEditor();
    EXPECT_EQ(Entries().last(), QString("5|3|A|A.PDF|A.SLD"));
}

TEST_F(SharedLibraryTest, DeletingSaysThatTheTableCannotBeChanged) {
    StartWith("VLM_MAIN");
    ChooseCategory(bolts_);
    ChooseOnEntry("記号", "VlmMnuPopDel");
    ExpectQuestion("記号 を削除します。よろしいですか", "VelmoPDFリスト削除");
    {
        SQLite::Database other(File(), SQLite::OPEN_READWRITE);
        other.exec("BEGIN IMMEDIATE");
        Run().AnswerYes();
        ExpectRefusal("del Tbl Error");
    }
    EXPECT_EQ(Entries(), firstEntries_);
    EXPECT_THAT(ListedEntries(), ElementsAre("六角ボルト", "アイボルト", "記号"));
}

TEST_F(SharedLibraryTest, WhatIsRememberedSurvivesAPasteThatFailed) {
    StartWith("VLM_MAIN");
    ChooseOnCategory(large_, "VlmMnuPopCut");
    {
        SQLite::Database other(File(), SQLite::OPEN_READWRITE);
        other.exec("BEGIN IMMEDIATE");
        ChooseOnCategory(bolts_, "VlmMnuPopPaste");
        ExpectLocked();
    }
    EXPECT_EQ(Categories(), firstCategories_);
    ChooseOnCategory(bolts_, "VlmMnuPopPaste");
    EXPECT_EQ(Categories()[3], QString(R"(4|2|大形|SMB\WASH\LARGE.SLD)"));
    EXPECT_EQ(Categories().size(), 4);
}

TEST_F(SharedLibraryTest, ACopyThatFailsAddsNothing) {
    StartWith("VLM_MAIN");
    ChooseOnCategory(bolts_, "VlmMnuPopCopy");
    {
        SQLite::Database other(File(), SQLite::OPEN_READWRITE);
        other.exec("BEGIN IMMEDIATE");
        ChooseOnCategory(washers_, "VlmMnuPopPaste");
        ExpectLocked();
    }
    EXPECT_EQ(Categories(), firstCategories_);
    EXPECT_EQ(Entries(), firstEntries_);
}

TEST_F(SharedLibraryTest, AMoveThatFailsLeavesFilesWhereTheLibrarySaysTheyAre) {
    session_.WriteHome("NEW\\OTHER.TXT", "");
    StartWith("VLM_MAIN");
    ChooseOnCategory(bolts_, "VlmMnuPopTool");
    Run().WaitForWindow("Vlm_Tool");
    Run().Click("SelList", Item::Named("アイボルト"));
    Run().Click("FilMovBtn");
    Run().WaitForWindow("Vlm_SelDir");
    Run().Click("VlmDirTV", Item::Path({"トルヴィク", "NEW"}));
    {
        SQLite::Database other(File(), SQLite::OPEN_READWRITE);
        other.exec("BEGIN IMMEDIATE");
        Run().Click("OkBtn");
        ExpectLocked();
    }
    EXPECT_EQ(Entries(), firstEntries_);
    EXPECT_TRUE(session_.ExistsInHome("SMB\\BOLT\\EYE.TXT"));
    EXPECT_TRUE(session_.ExistsInHome("SMB\\BOLT\\EYE.SLD"));
}

#ifdef Q_OS_LINUX
class ReadOnlyLibraryTest : public LibraryRunTest {
protected:
    void TearDown() override {
        QFile::setPermissions(session_.Home(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        LibraryRunTest::TearDown();
    }
    void StartReadOnly() {
        MakeLibrary();
        QFile::setPermissions(session_.Home() + "/velmo2.mdb", QFile::ReadOwner);
        QFile::setPermissions(session_.Home(), QFile::ReadOwner | QFile::ExeOwner);
        StartChanged(ObeyPermissions);
        Run().WaitForWindow("VLM_MAIN");
    }
    void ExpectUnwritable() { ExpectError({"3027", session_.HomeDir() + "Velmo2.mdb"}); }
    void ExpectUnchanged() {
        EXPECT_EQ(Categories(), firstCategories_);
        EXPECT_EQ(Entries(), firstEntries_);
    }
};

TEST_F(ReadOnlyLibraryTest, CanBeLookedThrough) {
    StartReadOnly();
    ChooseOnCategory(bolts_, "VlmMnuPopTool");
    Run().WaitForWindow("Vlm_Tool");
    EXPECT_THAT(Run().Column("SelList", 0), ElementsAre("六角ボルト", "アイボルト", "記号"));
    Run().Click("CanBtn");
    Run().WaitUntilClosed("Vlm_Tool");
    OpenEntry(bolts_, "アイボルト");
}

TEST_F(ReadOnlyLibraryTest, TakesNothingNew) {
    StartReadOnly();
    for (const char* command : {"VlmMnuPopAdd", "VlmMnuPopEdt"}) {
        ChooseOnCategory(bolts_, command);
        ExpectUnwritable();
        ChooseOnEntry("記号", command);
        ExpectUnwritable();
        EXPECT_FALSE(Run().IsWindowShown("Vlm_TBlEdt"));
    }
    EXPECT_TRUE(Run().Window("VLM_MAIN")["onTop"].toBool());
    ExpectUnchanged();
}

TEST_F(ReadOnlyLibraryTest, LosesNothing) {
    StartReadOnly();
    ChooseCategory(bolts_);
    ChooseOnEntry("記号", "VlmMnuPopDel");
    ExpectUnwritable();
    ChooseOnCategory(large_, "VlmMnuPopCut");
    ChooseOnCategory(bolts_, "VlmMnuPopPaste");
    ExpectUnwritable();
    ChooseOnCategory(bolts_, "VlmMnuPopTool");
    Run().WaitForWindow("Vlm_Tool");
    Run().Click("AllBtn");
    Run().Click("FolDerMovBtn");
    ExpectUnwritable();
    EXPECT_FALSE(Run().IsWindowShown("Vlm_SelDir"));
    ExpectUnchanged();
}

TEST_F(ReadOnlyLibraryTest, AMoveOfFilesLeavesThemInPlace) {
    session_.WriteHome("NEW\\OTHER.TXT", "");
    StartReadOnly();
    ChooseOnCategory(bolts_, "VlmMnuPopTool");
    Run().WaitForWindow("Vlm_Tool");
    Run().Click("SelList", Item::Named("アイボルト"));
    Run().Click("FilMovBtn");
    ExpectUnwritable();
    ExpectUnchanged();
    EXPECT_TRUE(session_.ExistsInHome("SMB\\BOLT\\EYE.TXT"));
    EXPECT_TRUE(session_.ExistsInHome("SMB\\BOLT\\EYE.SLD"));
}
#endif

} // namespace
} // namespace velmo
