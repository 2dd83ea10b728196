#include "library/library_samples.h"
#include "library/name_index.h"
#include "platform/files.h"
#include "platform/runtime_error.h"
#include "support/failure.h"

#include <QFileInfo>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace velmo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class NameIndexTest : public testing::Test {
protected:
    NameIndexTest() {
        state.HomeDir = folder.Path();
        state.LibraryDb = Make("Velmo2.mdb");
    }

    QString Make(const QString& name) const {
        folder.Write("made", "");
        CreateLibraryFile(folder.Path(name));
        return folder.Path(name);
    }
    Database Open() const { return Database(state.LibraryDb, Database::Access::Write); }
    void Execute(const QString& statement) const { Open().Execute(statement); }
    // Long enough ago for its time to tell every change.
    void Age(const QString& library) const {
        QFile file(NativePath(library));
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        ASSERT_TRUE(
            file.setFileTime(QDateTime::currentDateTime().addDays(-1), QFileDevice::FileModificationTime));
    }

    // "way > name" of what is found, with "*" at a category.
    QStringList Found(const QString& text) {
        EXPECT_TRUE(index.Refresh(state));
        QStringList found;
        for (const int name : index.Find(text))
            found << (index.Way(name).isEmpty() ? QString() : index.Way(name) + " > ") + index.Text(name) +
                         (index.IsCategory(name) ? "*" : "");
        return found;
    }
    std::vector<FoundName> Places(const QString& text) {
        EXPECT_TRUE(index.Refresh(state));
        std::vector<FoundName> places;
        for (const int name : index.Find(text))
            places.push_back(index.Place(name));
        return places;
    }

    const TempFolder folder;
    GlobalState state;
    NameIndex index;
};

TEST_F(NameIndexTest, FindsCategoriesAndEntriesWithTheWayToThem) {
    {
        Database library = Open();
        AddCategory(library, 0, "root");
        AddCategory(library, 1, "bolts");
        AddCategory(library, 2, "hex bolts");
        AddEntry(library, 3, "hex bolt M10", "A");
        AddEntry(library, 1, "bolt of the root", "B");
    }
    EXPECT_THAT(Found("hex"), ElementsAre("bolts > hex bolts*", "bolts － hex bolts > hex bolt M10"));
    EXPECT_THAT(Places("hex"), ElementsAre(FoundName{false, {1, 2, 3}, 0}, FoundName{false, {1, 2, 3}, 1}));
    EXPECT_THAT(Found("root"), ElementsAre("root*", "root > bolt of the root", "root > bolts*"));
    EXPECT_THAT(Places("root").front(), (FoundName{false, {1}, 0}));
}

TEST_F(NameIndexTest, CaseWidthAndKanaDoNotMatter) {
    {
        Database library = Open();
        AddCategory(library, 0, "トルヴィク");
        AddCategory(library, 1, "ボルト");
        AddEntry(library, 2, "ﾎﾞﾙﾄ Ｍ１０", "A");
    }
    for (const char* text : {"ぼると", "ﾎﾞﾙﾄ", "ボルト"})
        EXPECT_THAT(Found(text), ElementsAre("トルヴィク > ボルト*", "ボルト > ﾎﾞﾙﾄ Ｍ１０")) << text;
    for (const char* text : {"m10", "Ｍ１０", "M１0"})
        EXPECT_THAT(Found(text), ElementsAre("ボルト > ﾎﾞﾙﾄ Ｍ１０")) << text;
}

TEST_F(NameIndexTest, RanksExactThenBeginningThenHoldingThenTheWay) {
    {
        Database library = Open();
        AddCategory(library, 0, "r");
        AddCategory(library, 1, "nut");
        AddEntry(library, 2, "washer", "A");
        AddEntry(library, 2, "a nut", "B");
        AddEntry(library, 2, "nut, long one", "C");
        AddEntry(library, 2, "big nut", "D");
        AddEntry(library, 2, "nut M4", "E");
        AddEntry(library, 2, "nut M3", "F");
        AddEntry(library, 2, "NUT", "G");
        AddEntry(library, 2, "pin", "H");
    }
    EXPECT_THAT(Found("nut"),
                ElementsAre("r > nut*", "nut > NUT", "nut > nut M4", "nut > nut M3", "nut > nut, long one",
                            "nut > a nut", "nut > big nut", "nut > pin", "nut > washer"));
}

TEST_F(NameIndexTest, AllWordsMustMatchInNameOrWay) {
    {
        Database library = Open();
        AddCategory(library, 0, "r");
        AddCategory(library, 1, "bolts");
        AddCategory(library, 2, "hex");
        AddEntry(library, 3, "M10 x 50", "A");
        AddEntry(library, 3, "M12 x 50", "B");
        AddEntry(library, 2, "M10 hex", "C");
        AddCategory(library, 1, "M10");
    }
    EXPECT_THAT(Found("m10 50"), ElementsAre("bolts － hex > M10 x 50"));
    EXPECT_THAT(Found("50 m10"), ElementsAre("bolts － hex > M10 x 50"));
    EXPECT_THAT(Found("　hex　 m10 "), ElementsAre("bolts > M10 hex", "bolts － hex > M10 x 50"));
    EXPECT_THAT(Found("m10\tbolts\nhex"), ElementsAre("bolts > M10 hex", "bolts － hex > M10 x 50"));
    EXPECT_THAT(Found("m10 hex 5"), ElementsAre("bolts － hex > M10 x 50"));
    EXPECT_THAT(Found("m10 m12"), IsEmpty());
    EXPECT_THAT(Found("m10 x 50").front(), "bolts － hex > M10 x 50");
}

TEST_F(NameIndexTest, AWordIsNotFoundAcrossTwoNames) {
    {
        Database library = Open();
        AddCategory(library, 0, "ab");
        AddCategory(library, 1, "cd");
        AddCategory(library, 2, "ef");
    }
    EXPECT_THAT(Found("bc"), IsEmpty());
    EXPECT_THAT(Found("de"), IsEmpty());
    EXPECT_THAT(Found("－"), IsEmpty()) << "what stands between the names of a way is not part of them";
    EXPECT_THAT(Found("cd"), ElementsAre("ab > cd*", "cd > ef*"));
}

TEST_F(NameIndexTest, TheRootsNameIsOnTheWayOnlyWhereItIsShown) {
    {
        Database library = Open();
        AddCategory(library, 0, "root");
        AddCategory(library, 1, "a");
        AddCategory(library, 2, "b");
    }
    EXPECT_THAT(Found("root"), ElementsAre("root*", "root > a*"));
    state.SystemDb = Make("System.mdb");
    {
        Database library(state.SystemDb, Database::Access::Write);
        AddCategory(library, 0, "system");
        AddCategory(library, 1, "a");
        AddCategory(library, 2, "b");
    }
    EXPECT_THAT(Found("b"), ElementsAre("root － a > b*", "system － a > b*"));
    EXPECT_THAT(Found("b system"), ElementsAre("system － a > b*"));
    EXPECT_THAT(Places("b"), ElementsAre(FoundName{false, {1, 2, 3}, 0}, FoundName{true, {1, 2, 3}, 0}));
    EXPECT_EQ(index.NameAt({true, {1, 2}, 0}), index.Find(u"system a").front());
}

TEST_F(NameIndexTest, WhatTheTreeCannotLeadToIsNotFound) {
    Execute("INSERT INTO FolderTable (ID,ParentID,FolderName) VALUES (1,0,'x root'),(2,3,'x circle'),"
            "(3,2,'x circle'),(4,77,'x orphan'),(5,5,'x itself'),(6,0,'x second root'),(7,6,'x below'),"
            "(8,9,'x before its parent'),(9,1,'x parent')");
    Execute("INSERT INTO PDFFileTable (FolderID,PDFName) VALUES (2,'x'),(4,'x'),(6,'x'),(7,'x'),(99,'x'),"
            "(8,'x of the one before its parent')");
    EXPECT_THAT(Found("x"), ElementsAre("x root*", "x root > x parent*", "x parent > x before its parent*",
                                        "x parent － x before its parent > x of the one before its parent"));
}

TEST_F(NameIndexTest, OddRowsArePassedOver) {
    Execute("INSERT INTO FolderTable (ID,ParentID,FolderName) VALUES (1,0,'root'),(40000,1,'x big'),"
            "(2,40000,'x below it'),(3,1,NULL),(4,3,'x below no name'),(5,NULL,'x no parent'),"
            "(6,'text','x text'),(7,99999999999,'x far'),(-7,1,'x minus')");
    Execute("INSERT INTO PDFFileTable (ID,FolderID,PDFName) VALUES (1,4,'x below that one'),(70000,4,'x "
            "big'),(2,NULL,'x'),"
            "(3,4,NULL),(4,'text','x'),(5,99999999999,'x'),(6,4,'')");
    EXPECT_THAT(Found("x"),
                ElementsAre("root > x minus*", "x below no name*", " － x below no name > x below that one"));
    EXPECT_THAT(Found("root"), ElementsAre("root*", "root > x minus*")) << "no name, no result";
}

TEST_F(NameIndexTest, WithoutAWordNothingIsFound) {
    AddCategory(*std::make_unique<Database>(Open()), 0, "root");
    for (const char* text : {"", " ", "　 \t"})
        EXPECT_THAT(Found(text), IsEmpty()) << '"' << text << '"';
}

TEST_F(NameIndexTest, ManyWordsAndLongNames) {
    const QString name = QString("長い名前 ").repeated(100).trimmed();
    Execute("INSERT INTO FolderTable (ID,ParentID,FolderName) VALUES (1,0,'root'),(2,1,'" + name + "')");
    EXPECT_THAT(Found(name), ElementsAre("root > " + name + "*"));
    EXPECT_THAT(Found(name + " anders"), IsEmpty());
}

TEST_F(NameIndexTest, IsReadAgainOnlyAfterAChange) {
    Execute("INSERT INTO FolderTable (ParentID,FolderName) VALUES (0,'root')");
    Age(state.LibraryDb);
    EXPECT_THAT(Found("nut"), IsEmpty());
    EXPECT_EQ(index.Reading(), 1);
    EXPECT_THAT(Found("root"), ElementsAre("root*"));
    EXPECT_EQ(index.Reading(), 1);
    Execute("INSERT INTO FolderTable (ParentID,FolderName) VALUES (1,'nut')");
    EXPECT_THAT(Found("nut"), ElementsAre("root > nut*"));
    EXPECT_EQ(index.Reading(), 2);
    Age(state.LibraryDb);
    EXPECT_THAT(Found("nut"), ElementsAre("root > nut*"));
    EXPECT_EQ(index.Reading(), 3);
    index.Forget();
    EXPECT_THAT(Found("nut"), ElementsAre("root > nut*"));
    EXPECT_EQ(index.Reading(), 4);
}

TEST_F(NameIndexTest, AChangeThatTheClockDoesNotTellIsSeen) {
    Execute("INSERT INTO FolderTable (ParentID,FolderName) VALUES (0,'root')");
    const QFileInfo file(NativePath(state.LibraryDb));
    const QDateTime before = file.lastModified();
    const qint64 size = file.size();
    EXPECT_THAT(Found("root"), ElementsAre("root*"));
    Execute("UPDATE FolderTable SET FolderName='boot'");
    QFile library(NativePath(state.LibraryDb));
    ASSERT_TRUE(library.open(QIODevice::ReadWrite));
    ASSERT_TRUE(library.setFileTime(before, QFileDevice::FileModificationTime));
    library.close();
    ASSERT_EQ(QFileInfo(library.fileName()).size(), size);
    EXPECT_THAT(Found("boot"), ElementsAre("boot*"));
}

TEST_F(NameIndexTest, WhatAnotherProgramKeepsInItsLogIsSeen) {
    Execute("INSERT INTO FolderTable (ParentID,FolderName) VALUES (0,'root')");
    SQLite::Database connection(NativePath(state.LibraryDb).toStdString(), SQLite::OPEN_READWRITE);
    connection.exec("PRAGMA wal_autocheckpoint=0");
    const std::string mode = connection.execAndGet("PRAGMA journal_mode=WAL").getString();
    ASSERT_EQ(mode, "wal");
    connection.exec("INSERT INTO FolderTable (ParentID,FolderName) VALUES (1,'pin')");
    Age(state.LibraryDb);
    Age(state.LibraryDb + "-wal");
    EXPECT_THAT(Found("pin"), ElementsAre("root > pin*"));
    EXPECT_THAT(Found("nut"), IsEmpty());
    EXPECT_EQ(index.Reading(), 1);
    connection.exec("INSERT INTO FolderTable (ParentID,FolderName) VALUES (1,'nut')");
    EXPECT_THAT(Found("nut"), ElementsAre("root > nut*"));
}

TEST_F(NameIndexTest, AStoppedOrFailedReadingKeepsWhatWasKnown) {
    {
        Database library = Open();
        Transaction transaction(library);
        AddCategory(library, 0, "root");
        for (int i = 0; i < 3000; ++i)
            AddEntry(library, 1, QString("entry %1").arg(i), "A");
        transaction.Commit();
    }
    EXPECT_EQ(Found("entry").size(), 3000);
    index.Forget();
    QList<qint64> reported;
    qint64 whole = 0;
    EXPECT_FALSE(index.Refresh(state, [&](qint64 done, qint64 all) {
        reported << done;
        whole = all;
        return reported.size() < 2;
    }));
    EXPECT_EQ(reported.size(), 2);
    EXPECT_LT(reported[0], reported[1]);
    EXPECT_LT(reported[1], whole);
    EXPECT_EQ(index.Find(u"entry").size(), 3000);
    ASSERT_TRUE(QFile::remove(NativePath(state.LibraryDb)));
    EXPECT_EQ(Failure([&] { index.Refresh(state); }), ErrorNumber::FileNotFound);
    EXPECT_EQ(index.Find(u"entry").size(), 3000);
    folder.Write("Velmo2.mdb", "no database at all, only some text that is long enough to be looked at");
    EXPECT_EQ(Failure([&] { index.Refresh(state); }), ErrorNumber::NotADatabase);
}

} // namespace
} // namespace velmo
