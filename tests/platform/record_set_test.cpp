#include "platform/files.h"
#include "platform/record_set.h"
#include "platform/runtime_error.h"
#include "support/failure.h"
#include "support/other_user.h"
#include "support/temp_folder.h"

#include <QFile>
#include <gtest/gtest.h>

#include <limits>
#include <optional>

namespace velmo {
namespace {

class RecordSetTest : public testing::Test {
protected:
    RecordSetTest() : database_(Database::Create(folder_.Path("test.mdb"))) {
        database_.Execute("CREATE TABLE T (ID COUNTER, Name TEXT, Number integer);");
        for (const char* name : {"one", "two", "three"})
            Add(QString::fromLatin1(name));
    }

    void Add(const QString& name) {
        RecordSet rows(database_, "T");
        rows.AddNew();
        rows.Set(u"Name", name);
        rows.SetNumber(u"number", name.size());
        rows.Update();
    }

    QStringList Names(const QString& statement) {
        QStringList names;
        for (RecordSet rows(database_, statement); !rows.Eof(); rows.MoveNext())
            names << rows.Text(u"Name");
        return names;
    }

    TempFolder folder_;
    Database database_;
};

TEST_F(RecordSetTest, WalksRowsInTheOrderTheyWereAdded) {
    EXPECT_EQ(Names("SELECT * FROM T"), (QStringList{"one", "two", "three"}));
    EXPECT_EQ(Names("T"), (QStringList{"one", "two", "three"}));
    EXPECT_EQ(Names("SELECT * FROM T  WHERE Number=3;"), (QStringList{"one", "two"}));
    EXPECT_EQ(Names("SELECT * FROM T WHERE Number=9"), QStringList());
}

TEST_F(RecordSetTest, AFileBearsItsMakersNumber) {
    EXPECT_EQ(database_.Token(), 0);
    {
        const Transaction undone(database_);
        database_.SetToken(5);
        EXPECT_EQ(database_.Token(), 5);
    }
    EXPECT_EQ(database_.Token(), 0) << "what is not committed does not count";
    database_.SetToken(std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(Database(folder_.Path("test.mdb"), Database::Access::Read).Token(),
              std::numeric_limits<std::int32_t>::max());
}

TEST_F(RecordSetTest, AnEmptySetHasNoCurrentRow) {
    RecordSet rows(database_, "SELECT * FROM T WHERE ID=", 99);
    EXPECT_TRUE(rows.Eof());
    EXPECT_EQ(Failure([&] { rows.Text(u"Name"); }), ErrorNumber::NoCurrentRecord);
    EXPECT_EQ(Failure([&] { rows.MoveNext(); }), ErrorNumber::NoCurrentRecord);
    EXPECT_EQ(Failure([&] { rows.Edit(); }), ErrorNumber::NoCurrentRecord);
    EXPECT_EQ(Failure([&] { rows.Delete(); }), ErrorNumber::NoCurrentRecord);
}

TEST_F(RecordSetTest, CountersNumberFromOneAndNeverReuseANumber) {
    RecordSet last(database_, "SELECT * FROM T WHERE ID=", 3);
    EXPECT_EQ(last.Text(u"Name"), "three");
    last.Delete();
    Add("four");
    EXPECT_EQ(database_.LastAddedId(), 4);
    EXPECT_EQ(RecordSet(database_, "SELECT * FROM T WHERE ID=", 4).Text(u"Name"), "four");
}

TEST_F(RecordSetTest, FieldsAreFoundRegardlessOfCaseAndByOrdinal) {
    const RecordSet rows(database_, "T");
    EXPECT_EQ(rows.Text(u"NAME"), "one");
    EXPECT_EQ(rows.Text(1), "one");
    EXPECT_EQ(rows.Integer(u"number"), 3);
    EXPECT_EQ(Failure([&] { rows.Text(u"Nothing"); }), ErrorNumber::ItemNotInCollection);
    EXPECT_EQ(Failure([&] { rows.Text(3); }), ErrorNumber::ItemNotInCollection);
}

TEST_F(RecordSetTest, FindsFirstAndNext) {
    RecordSet rows(database_, "T");
    rows.FindFirst("Number = 3");
    EXPECT_EQ(rows.Text(u"Name"), "one");
    rows.FindNext();
    EXPECT_EQ(rows.Text(u"Name"), "two");
    rows.FindNext();
    EXPECT_TRUE(rows.NoMatch());
    rows.FindFirst("NUMBER = 99");
    EXPECT_TRUE(rows.NoMatch());
    rows.MoveFirst();
    EXPECT_EQ(rows.Text(u"Name"), "one");
}

TEST_F(RecordSetTest, FindsWithinTheSetOnly) {
    RecordSet rows(database_, "SELECT * FROM T WHERE Number=5 OR Number=3");
    rows.FindFirst("Name = 'three' OR Name = 'nobody'");
    EXPECT_EQ(rows.Text(u"Name"), "three");
    RecordSet others(database_, "SELECT * FROM T WHERE Number=3");
    others.FindFirst("Name = 'three'");
    EXPECT_TRUE(others.NoMatch());
}

TEST_F(RecordSetTest, EditChangesTheCurrentRowOnly) {
    RecordSet rows(database_, "T");
    rows.FindFirst("ID = 2");
    rows.Edit();
    rows.Set(u"Name", u"TWO");
    rows.SetNumber(u"Number", 22);
    rows.Update();
    EXPECT_EQ(Names("T"), (QStringList{"one", "TWO", "three"}));
    EXPECT_EQ(Failure([&] { rows.Update(); }), ErrorNumber::NoCurrentRecord) << "each Update needs its Edit";
}

TEST_F(RecordSetTest, TextsHoldAtMost255Characters) {
    Add(QString(255, u'あ'));
    EXPECT_EQ(Failure([&] { Add(QString(256, u'a')); }), ErrorNumber::TextTooLong);
    EXPECT_EQ(Names("T").size(), 4);
}

TEST_F(RecordSetTest, AQuoteInANameBreaksTheStatement) {
    Add("it's");
    EXPECT_EQ(RecordSet(database_, "SELECT * FROM T WHERE Name='", "two", "' AND Number=3").Integer(u"ID"),
              2);
    EXPECT_TRUE(RecordSet(database_, "SELECT * FROM T WHERE Name='", "TWO", "'").Eof());
    EXPECT_EQ(Failure([&] { RecordSet rows(database_, "SELECT * FROM T WHERE Name='", "it's", "'"); }),
              ErrorNumber::QuerySyntax);
}

TEST_F(RecordSetTest, ANumberBeyondSixteenBitsIsAnOverflow) {
    RecordSet rows(database_, "T");
    rows.Edit();
    rows.SetNumber(u"Number", 40000);
    rows.Update();
    const RecordSet again(database_, "T");
    EXPECT_EQ(Failure([&] { again.Integer(u"Number"); }), ErrorNumber::Overflow);
}

TEST_F(RecordSetTest, JapaneseTextComparesWithoutCaseKanaAndWidth) {
    database_.Execute("CREATE TABLE J (Name TEXT COLLATE JAPANESE);");
    {
        RecordSet rows(database_, "J");
        rows.AddNew();
        rows.Set(u"Name", u"ボルト M10");
        rows.Update();
    }
    for (const char16_t* same : {u"ボルト M10", u"ぼると m10", u"ﾎﾞﾙﾄ Ｍ１０"})
        EXPECT_FALSE(
            RecordSet(database_, "SELECT * FROM J WHERE Name='", QString::fromUtf16(same), "'").Eof());
    for (const char16_t* other : {u"ホルト M10", u"ボルトM10", u"ボルト M1"})
        EXPECT_TRUE(
            RecordSet(database_, "SELECT * FROM J WHERE Name='", QString::fromUtf16(other), "'").Eof());
}

TEST_F(RecordSetTest, AFileThatCanOnlyBeReadIsOpenedForReadingOnly) {
    if (!OtherUser::IsPossible())
        GTEST_SKIP() << "only the superuser can be another user";
    const QString path = folder_.Path("test.mdb");
    ASSERT_TRUE(
        QFile::setPermissions(NativePath(path), QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther));
    const OtherUser other(NativePath(folder_.Path()));
    ASSERT_TRUE(other.Changed());
    try {
        const Database database(path, Database::Access::Write);
        ADD_FAILURE() << "no error";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), ErrorNumber::DatabaseReadOnly);
        EXPECT_EQ(error.File(), path);
    }
    Database database(path, Database::Access::Read);
    EXPECT_EQ(RecordSet(database, "T").Text(u"Name"), "one");
}

TEST_F(RecordSetTest, ATransactionCountsOnlyWhenCommitted) {
    {
        const Transaction transaction(database_);
        Add("lost");
    }
    EXPECT_EQ(Names("T").size(), 3);
    Transaction transaction(database_);
    Add("kept");
    transaction.Commit();
    EXPECT_EQ(Names("T").size(), 4);
}

TEST_F(RecordSetTest, AnotherProgramsLockIsAnErrorThatNamesTheFile) {
    Database other(folder_.Path("test.mdb"), Database::Access::Write);
    other.Execute("BEGIN EXCLUSIVE");
    try {
        RecordSet rows(database_, "T");
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), ErrorNumber::DatabaseLocked);
        EXPECT_EQ(error.File(), folder_.Path("test.mdb"));
    }
}

// A database whose last rows lie on a page that is damaged.
class DamagedRowsTest : public testing::Test {
protected:
    DamagedRowsTest() {
        {
            Database database = Database::Create(folder_.Path("test.mdb"));
            database.Execute("CREATE TABLE T (ID COUNTER, Name TEXT);");
            database.Execute("INSERT INTO T (Name) SELECT hex(zeroblob(100)) FROM (WITH RECURSIVE n(i) AS "
                             "(SELECT 1 UNION ALL SELECT i+1 FROM n LIMIT 100) SELECT * FROM n)");
        }
        QByteArray bytes = folder_.Read("test.mdb");
        constexpr int page = 4096;
        bytes.replace(bytes.size() - page, page, QByteArray(page, 'x'));
        folder_.Write("test.mdb", bytes);
        database_.emplace(folder_.Path("test.mdb"), Database::Access::Write);
    }

    TempFolder folder_;
    std::optional<Database> database_;
};

TEST_F(DamagedRowsTest, AfterAStepThatFailedThereIsNoCurrentRow) {
    RecordSet rows(*database_, "T");
    int read = 0;
    EXPECT_EQ(Failure([&] {
                  for (; !rows.Eof(); rows.MoveNext())
                      ++read;
              }),
              ErrorNumber::NotADatabase);
    EXPECT_GT(read, 10);
    EXPECT_LT(read, 100);
    EXPECT_TRUE(rows.Eof());
    EXPECT_TRUE(rows.NoMatch());
    EXPECT_EQ(Failure([&] { rows.Text(u"Name"); }), ErrorNumber::NoCurrentRecord);
    EXPECT_EQ(Failure([&] { rows.Text(0); }), ErrorNumber::NoCurrentRecord);
    EXPECT_EQ(Failure([&] { rows.Integer(u"ID"); }), ErrorNumber::NoCurrentRecord);
    EXPECT_EQ(Failure([&] { rows.MoveNext(); }), ErrorNumber::NoCurrentRecord);
    EXPECT_EQ(Failure([&] { rows.Edit(); }), ErrorNumber::NoCurrentRecord);
    EXPECT_EQ(Failure([&] { rows.Delete(); }), ErrorNumber::NoCurrentRecord);
    rows.FindNext();
    EXPECT_TRUE(rows.NoMatch());

    rows.MoveFirst();
    EXPECT_EQ(rows.Integer(u"ID"), 1);
    EXPECT_EQ(Failure([&] { rows.FindFirst("Name='nobody'"); }), ErrorNumber::NotADatabase);
    EXPECT_TRUE(rows.NoMatch());
    rows.FindFirst("ID=2");
    EXPECT_EQ(rows.Integer(u"ID"), 2);
    EXPECT_EQ(RecordSet(*database_, "SELECT * FROM T WHERE ID=", 3).Integer(u"ID"), 3);
}

TEST_F(RecordSetTest, AStatementThatFailedWorksOnceItsCauseIsGone) {
    database_.Execute("PRAGMA busy_timeout=0");
    RecordSet before(database_, "T");
    std::optional<Database> other;
    before.MoveFirst();
    while (!before.Eof())
        before.MoveNext();
    other.emplace(folder_.Path("test.mdb"), Database::Access::Write);
    other->Execute("BEGIN EXCLUSIVE");
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(Failure([&] { Names("SELECT * FROM T WHERE Number=3"); }), ErrorNumber::DatabaseLocked);
        EXPECT_EQ(Failure([&] { before.MoveFirst(); }), ErrorNumber::DatabaseLocked);
        EXPECT_TRUE(before.Eof());
        EXPECT_EQ(Failure([&] { Add("lost"); }), ErrorNumber::DatabaseLocked);
        EXPECT_EQ(Failure([&] { database_.Execute("DELETE FROM T"); }), ErrorNumber::DatabaseLocked);
        EXPECT_EQ(Failure([&] { const Transaction transaction(database_); }), ErrorNumber::DatabaseLocked);
    }
    other->Execute("ROLLBACK");
    before.MoveFirst();
    EXPECT_EQ(before.Text(u"Name"), "one");
    EXPECT_EQ(Names("SELECT * FROM T WHERE Number=3"), (QStringList{"one", "two"}));
    Add("kept");
    EXPECT_EQ(Names("T").last(), "kept");
}

TEST_F(RecordSetTest, ARowThatWasRefusedLeavesNothingToTheNext) {
    database_.Execute("CREATE UNIQUE INDEX OneOfEach ON T (Name)");
    RecordSet rows(database_, "T");
    rows.AddNew();
    rows.Set(u"Name", u"two");
    rows.SetNumber(u"Number", 7);
    EXPECT_EQ(Failure([&] { rows.Update(); }), ErrorNumber::DatabaseFailed);
    EXPECT_EQ(Failure([&] { rows.Update(); }), ErrorNumber::NoCurrentRecord)
        << "each Update needs its AddNew";
    rows.AddNew();
    rows.Set(u"Name", u"four");
    rows.Update();
    EXPECT_EQ(RecordSet(database_, "SELECT * FROM T WHERE Name='", "four", "'").Text(u"Number"), "");

    rows.MoveFirst();
    rows.Edit();
    rows.Set(u"Name", u"two");
    EXPECT_EQ(Failure([&] { rows.Update(); }), ErrorNumber::DatabaseFailed);
    EXPECT_EQ(rows.Text(u"Name"), "one") << "still the current row";
    rows.Edit();
    rows.SetNumber(u"Number", 8);
    rows.Update();
    EXPECT_EQ(Names("SELECT * FROM T WHERE Number=8"), QStringList{"one"});
}

TEST(Database, FilesThatAreNoDatabasesAreRefusedAndLeftAlone) {
    const TempFolder folder;
    const QByteArray bytes(5000, 'x');
    folder.Write("no.mdb", bytes);
    EXPECT_EQ(Failure([&] { Database database(folder.Path("no.mdb"), Database::Access::Write); }),
              ErrorNumber::NotADatabase);
    EXPECT_EQ(folder.Read("no.mdb"), bytes);
    EXPECT_EQ(Failure([&] { Database database(folder.Path("none.mdb"), Database::Access::Read); }),
              ErrorNumber::FileNotFound);
    EXPECT_EQ(Failure([&] { Database::Create(folder.Path("none\\none.mdb")); }), ErrorNumber::PathNotFound);
}

TEST(Database, AMissingTableNamesTheFile) {
    const TempFolder folder;
    Database database = Database::Create(folder.Path("a.mdb"));
    try {
        RecordSet rows(database, "SELECT * FROM FolderTable");
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), ErrorNumber::TableNotFound);
        EXPECT_EQ(error.File(), folder.Path("a.mdb"));
    }
}

TEST(Database, ReadingTakesBackWhatAKilledWriterLeftHalfDone) {
    const TempFolder folder;
    {
        Database database = Database::Create(folder.Path("a.mdb"));
        database.Execute("CREATE TABLE T (ID COUNTER, Name TEXT);");
        database.Execute("INSERT INTO T (Name) VALUES ('before')");
        // The change is in the file before it is committed; what lies on disk now is what a kill would leave.
        database.Execute("PRAGMA cache_size=1");
        const Transaction transaction(database);
        database.Execute("UPDATE T SET Name='half'");
        database.Execute(
            "INSERT INTO T (Name) SELECT hex(zeroblob(500)) FROM "
            "(WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n LIMIT 100) SELECT * FROM n)");
        folder.Write("b.mdb", folder.Read("a.mdb"));
        folder.Write("b.mdb-journal", folder.Read("a.mdb-journal"));
    }
    ASSERT_TRUE(folder.Read("b.mdb").contains("half")) << "the sample must really be half done";
    Database reader(folder.Path("b.mdb"), Database::Access::Read);
    RecordSet rows(reader, "T");
    EXPECT_EQ(rows.Text(u"Name"), "before");
    rows.MoveNext();
    EXPECT_TRUE(rows.Eof());
}

TEST(Database, ReadingLeavesAReadOnlyFileAlone) {
    const TempFolder folder;
    Database::Create(folder.Path("a.mdb")).Execute("CREATE TABLE T (ID COUNTER);");
    Database database(folder.Path("A.MDB"), Database::Access::Read);
    EXPECT_EQ(Failure([&] { database.Execute("INSERT INTO T VALUES (1)"); }), ErrorNumber::DatabaseReadOnly);
}

} // namespace
} // namespace velmo
