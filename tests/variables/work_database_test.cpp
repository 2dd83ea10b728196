#include "platform/runtime_error.h"
#include "support/failing_disk.h"
#include "support/temp_folder.h"
#include "variables/work_database.h"

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
    CreateWorkDatabase(folder.Path(), FailOnMessage);
    EXPECT_TRUE(folder.Exists(QStringLiteral("VELMONOW.mdb")));
    Database database = OpenWorkDatabase(folder.Path(), Database::Access::Read);
    RecordSet variables = SelectVariables(database);
    EXPECT_TRUE(variables.Eof());
}

TEST(WorkDatabase, ReplacesOneLeftOver) {
    const TempFolder folder;
    CreateWorkDatabase(folder.Path(), FailOnMessage);
    {
        Database database = OpenWorkDatabase(folder.Path(), Database::Access::Write);
        RecordSet variables = SelectVariables(database);
        AddVariable(variables, 1, QStringLiteral("W"));
    }
    CreateWorkDatabase(folder.Path(), FailOnMessage);
    Database database = OpenWorkDatabase(folder.Path(), Database::Access::Read);
    RecordSet variables = SelectVariables(database);
    EXPECT_TRUE(variables.Eof());
}

TEST(WorkDatabase, ReplacesAFileThatIsNoDatabase) {
    const TempFolder folder;
    folder.Write(QStringLiteral("VELMONOW.mdb"), QByteArray(5000, 'x'));
    CreateWorkDatabase(folder.Path(), FailOnMessage);
    Database database = OpenWorkDatabase(folder.Path(), Database::Access::Read);
    RecordSet variables = SelectVariables(database);
    EXPECT_TRUE(variables.Eof());
}

TEST(WorkDatabase, FieldsAreFoundRegardlessOfCase) {
    const TempFolder folder;
    CreateWorkDatabase(folder.Path(), FailOnMessage);
    Database database = OpenWorkDatabase(folder.Path(), Database::Access::Write);
    RecordSet variables = SelectVariables(database);
    AddVariable(variables, 1, QStringLiteral("W"));
    variables.MoveFirst();
    for (const QString& field :
         {QStringLiteral("ValDis"), QStringLiteral("Valdis"), QStringLiteral("VALDIS")})
        EXPECT_EQ(variables.Integer(field), 2);
}

TEST(WorkDatabase, FindsVariables) {
    const TempFolder folder;
    CreateWorkDatabase(folder.Path(), FailOnMessage);
    Database database = OpenWorkDatabase(folder.Path(), Database::Access::Write);
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
    CreateWorkDatabase(folder.Path(), FailOnMessage);
    Database database = OpenWorkDatabase(folder.Path(), Database::Access::Write);
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
    CreateWorkDatabase(folder.Path(), FailOnMessage);
    Database database = OpenWorkDatabase(folder.Path(), Database::Access::Write);
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
    CreateWorkDatabase(folder.Path(), FailOnMessage);
    Database database = OpenWorkDatabase(folder.Path(), Database::Access::Read);
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

TEST(WorkDatabase, AFolderThatIsMissingIsAnError) {
    const TempFolder folder;
    EXPECT_THROW(CreateWorkDatabase(folder.Path(QStringLiteral("none\\")), FailOnMessage), RuntimeError);
}

TEST(WorkDatabase, AFailureAfterTheFileWasMadeIsTold) {
    const TempFolder folder;
    QStringList told;
    {
        // Room for the first page only: the file exists, the table does not fit.
        const FailingDisk full(4096);
        CreateWorkDatabase(folder.Path(), [&told](const QString& text) { told << text; });
    }
    EXPECT_EQ(told, QStringList{QStringLiteral("NowDb Create Error")});
    Database database = OpenWorkDatabase(folder.Path(), Database::Access::Read);
    EXPECT_THROW(SelectVariables(database), RuntimeError);
}

} // namespace
} // namespace velmo
