#include "support/failing_disk.h"
#include "symbol_sample.h"

#include <QFileInfo>
#include <gtest/gtest.h>

namespace velmo {
namespace {

void FailOnMessage(const QString& text) {
    ADD_FAILURE() << text.toStdString();
}

void AddVariable(RecordSet& variables, int row, const QString& name) {
    variables.AddNew();
    variables.SetNumber(u"ValNum", row);
    variables.SetNumber(u"ValNo", row + 10);
    variables.Set(u"ValName", name);
    variables.SetNumber(u"Valdis", row + 1);
    variables.Update();
}

TEST(WorkDatabase, IsCreatedEmptyInTheExchangeFolder) {
    const TempFolder folder;
    WorkDatabase work(folder.Path());
    work.CreateWorkDatabase(FailOnMessage);
    EXPECT_TRUE(folder.Exists(QStringLiteral("VELMONOW.mdb")));
    Database database = work.Open(Database::Access::Read);
    RecordSet variables = SelectVariables(database);
    EXPECT_TRUE(variables.Eof());
}

TEST(WorkDatabase, ReplacesOneLeftOver) {
    const TempFolder folder;
    WorkDatabase work(folder.Path());
    work.CreateWorkDatabase(FailOnMessage);
    {
        Database database = work.Open(Database::Access::Write);
        RecordSet variables = SelectVariables(database);
        AddVariable(variables, 1, QStringLiteral("W"));
    }
    work.CreateWorkDatabase(FailOnMessage);
    Database database = work.Open(Database::Access::Read);
    RecordSet variables = SelectVariables(database);
    EXPECT_TRUE(variables.Eof());
}

TEST(WorkDatabase, ReplacesAFileThatIsNoDatabase) {
    const TempFolder folder;
    folder.Write(QStringLiteral("VELMONOW.mdb"), QByteArray(5000, 'x'));
    WorkDatabase work(folder.Path());
    work.CreateWorkDatabase(FailOnMessage);
    Database database = work.Open(Database::Access::Read);
    RecordSet variables = SelectVariables(database);
    EXPECT_TRUE(variables.Eof());
}

TEST(WorkDatabase, FieldsAreFoundRegardlessOfCase) {
    const TempFolder folder;
    WorkDatabase work(folder.Path());
    work.CreateWorkDatabase(FailOnMessage);
    Database database = work.Open(Database::Access::Write);
    RecordSet variables = SelectVariables(database);
    AddVariable(variables, 1, QStringLiteral("W"));
    variables.MoveFirst();
    for (const QString& field :
         {QStringLiteral("ValDis"), QStringLiteral("Valdis"), QStringLiteral("VALDIS")})
        EXPECT_EQ(variables.Integer(field), 2);
}

TEST(WorkDatabase, FindsVariables) {
    const TempFolder folder;
    WorkDatabase work(folder.Path());
    work.CreateWorkDatabase(FailOnMessage);
    Database database = work.Open(Database::Access::Write);
    RecordSet variables = SelectVariables(database);
    AddVariable(variables, 0, QString());
    AddVariable(variables, 1, QStringLiteral("W"));
    AddVariable(variables, 2, QStringLiteral("H"));
    FindVariableNumber(variables, 12);
    EXPECT_EQ(variables.Text(u"ValName"), QStringLiteral("H"));
    FindVariableNumber(variables, 99);
    EXPECT_TRUE(variables.NoMatch());
    FindVariableRow(variables, 1);
    EXPECT_EQ(variables.Text(u"ValName"), QStringLiteral("W"));
    FindCommentRow(variables);
    EXPECT_EQ(variables.Integer(u"ValNum"), 0);
    EXPECT_EQ(TableColumnOfRow(variables, 2), 3);
    EXPECT_EQ(TableColumnOfRow(variables, 7), 0);
}

TEST(WorkDatabase, NamesCompareAsJapaneseDoes) {
    const TempFolder folder;
    WorkDatabase work(folder.Path());
    work.CreateWorkDatabase(FailOnMessage);
    Database database = work.Open(Database::Access::Write);
    {
        RecordSet variables = SelectVariables(database);
        AddVariable(variables, 1, QStringLiteral("ｶﾅW"));
        AddVariable(variables, 2, QStringLiteral("幅"));
    }
    for (const QString& same : {QStringLiteral("カナＷ"), QStringLiteral("かなw"), QStringLiteral("ｶﾅW")}) {
        RecordSet named = SelectVariablesNamed(database, same);
        ASSERT_FALSE(named.Eof()) << same.toStdString();
        EXPECT_EQ(named.Integer(u"ValNum"), 1);
    }
    RecordSet other = SelectVariablesNamed(database, QStringLiteral("かな"));
    EXPECT_TRUE(other.Eof());
}

TEST(WorkDatabase, TableRowsCompareAsJapaneseDoesToo) {
    const TempFolder folder;
    WorkDatabase work(folder.Path());
    work.CreateWorkDatabase(FailOnMessage);
    Database database = work.Open(Database::Access::Write);
    database.Execute(QStringLiteral("CREATE TABLE PmnTable (ValID COUNTER, Val1 TEXT);"));
    RecordSet rows = SelectTableRows(database);
    rows.AddNew();
    rows.Set(1, u"Ｍ１０");
    rows.Update();
    RecordSet group = SelectGroup(database, QStringLiteral("m10"));
    EXPECT_FALSE(group.Eof());
    FindGroup(rows, QStringLiteral("M10"));
    EXPECT_FALSE(rows.NoMatch());
}

TEST(WorkDatabase, AQuoteInANameIsAnErrorOfTheStatement) {
    const TempFolder folder;
    WorkDatabase work(folder.Path());
    work.CreateWorkDatabase(FailOnMessage);
    Database database = work.Open(Database::Access::Read);
    EXPECT_THROW(
        {
            try {
                SelectVariablesNamed(database, QStringLiteral("5'x"));
            } catch (const RuntimeError& error) {
                EXPECT_EQ(error.Number(), ErrorNumber::QuerySyntax);
                throw;
            }
        },
        RuntimeError);
}

TEST(WorkDatabase, OneThatAnotherWindowMadeAnewIsRefused) {
    const TempFolder folder;
    WorkDatabase work(folder.Path());
    work.CreateWorkDatabase(FailOnMessage);
    WorkDatabase others(folder.Path());
    others.CreateWorkDatabase(FailOnMessage);
    for (const Database::Access access : {Database::Access::Read, Database::Access::Write}) {
        const RuntimeError error = ErrorOf([&] { work.Open(access); });
        EXPECT_EQ(error.Number(), ErrorNumber::DatabaseFailed);
        EXPECT_EQ(error.File(), work.Path());
        EXPECT_TRUE(error.Detail().startsWith(QStringLiteral("作業データベースがほかで作り直された")));
    }
    EXPECT_EQ(ErrorOf([&] { work.RequireOwn(); }).Number(), ErrorNumber::DatabaseFailed);
    others.RequireOwn();
    work.DeleteIfOwn();
    others.RequireOwn();
    others.DeleteIfOwn();
    EXPECT_FALSE(folder.Exists(QStringLiteral("VELMONOW.mdb")));
    EXPECT_EQ(ErrorOf([&] { others.RequireOwn(); }).Number(), ErrorNumber::DatabaseFailed) << "it is gone";
    others.DeleteIfOwn();
}

TEST(WorkDatabase, AnEmptyFileIsNobodysOwn) {
    const TempFolder folder;
    WorkDatabase work(folder.Path());
    work.CreateWorkDatabase(FailOnMessage);
    folder.Write(QStringLiteral("VELMONOW.mdb"), {});
    EXPECT_EQ(ErrorOf([&] { work.RequireOwn(); }).Number(), ErrorNumber::DatabaseFailed);
    work.DeleteIfOwn();
    EXPECT_TRUE(folder.Exists(QStringLiteral("VELMONOW.mdb")));
}

TEST(WorkDatabase, AFolderThatIsMissingIsAnError) {
    const TempFolder folder;
    WorkDatabase work(folder.Path(QStringLiteral("none\\")));
    EXPECT_THROW(work.CreateWorkDatabase(FailOnMessage), RuntimeError);
}

TEST(WorkDatabase, AFailureAfterTheFileWasMadeIsTold) {
    const TempFolder folder;
    WorkDatabase work(folder.Path());
    QStringList told;
    {
        // Room for the first page only: the file exists, the table does not fit.
        const FailingDisk full(4096);
        work.CreateWorkDatabase([&told](const QString& text) { told << text; });
    }
    EXPECT_EQ(told, QStringList{QStringLiteral("NowDb Create Error")});
    Database database = work.Open(Database::Access::Read);
    EXPECT_THROW(SelectVariables(database), RuntimeError);
}

} // namespace
} // namespace velmo
