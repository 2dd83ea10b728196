#include "platform/code_page.h"
#include "platform/files.h"
#include "support/failing_disk.h"
#include "support/failure.h"
#include "support/other_user.h"
#include "symbol_sample.h"
#include "variables/table_file.h"

#include <QDir>

namespace velmo {
namespace {

const QString Comment = QStringLiteral("ｺﾒﾝﾄ");

// A table of W (V12) and H (V3) behind a comment column.
class TableFileTest : public testing::Test {
protected:
    TableFileTest() {
        symbol.state.RunMode = run_mode::UserLibrary;
        symbol.Define({"V12=PRO(\"W\",100)", "V3=PRO(\"H\",20)"});
    }

    void Load(const QList<SymbolSample::Column>& columns, const QStringList& rows) {
        symbol.WriteTable(columns, rows);
        symbol.Load();
    }
    bool Save() {
        told.clear();
        return SaveDimensionTable(symbol.state, symbol.work, symbol.table.cells, [this](const QString& text) {
            told << text;
            toldAtWork = symbol.folder.Read("S1.PMN");
        });
    }
    QByteArray Saved() {
        EXPECT_TRUE(Save());
        EXPECT_EQ(told, QStringList());
        EXPECT_FALSE(symbol.folder.Exists("S1.TMP"));
        return symbol.folder.Read("S1.PMN");
    }
    // Fields of NowTable that no reading gives.
    void Change(int variableRow, QStringView field, int value) const {
        Database database = symbol.work.Open(Database::Access::Write);
        RecordSet variables = SelectVariables(database);
        FindVariableRow(variables, variableRow);
        variables.Edit();
        variables.SetNumber(field, value);
        variables.Update();
    }
    QByteArray Lines(const QStringList& lines) const {
        QByteArray bytes;
        for (const QString& line : lines)
            bytes += EncodeCodePage(line) + "\r\n";
        return bytes;
    }
    void ExpectOldTable(const QByteArray& old) const {
        EXPECT_EQ(symbol.folder.Read("S1.PMN"), old);
        EXPECT_FALSE(symbol.folder.Exists("S1.TMP"));
    }

    const QList<SymbolSample::Column> columns{
        {Comment, 4, QStringLiteral("呼び"), 7}, {"V0012", 5, "W", 1}, {"V3", 3, QStringLiteral("高"), -2}};
    SymbolSample symbol;
    QStringList told;
    QByteArray toldAtWork;
};

TEST_F(TableFileTest, WritesEveryByteOfTheLayout) {
    Load(columns, {"M10 100  20 ", "M12 1.5   7 "});
    EXPECT_EQ(Saved(), "\r\n3\r\n"
                       "1\r\n\xBA\xD2\xDD\xC4\r\n4\r\n7\r\n\x8C\xC4\x82\xD1\r\n"
                       "2\r\nV0012\r\n5\r\n1\r\nW\r\n"
                       "3\r\nV0003\r\n3\r\n-2\r\n\x8D\x82\r\n"
                       "2\r\n M10  100 20\r\n M12  1.5  7\r\n");
}

TEST_F(TableFileTest, TheFirstLineOfTheOldFileIsNotCarriedOver) {
    QStringList lines = SymbolSample::TableLines(columns, {"M10 100  20 "});
    lines[0] = QStringLiteral("a line of another program");
    symbol.WriteTableLines(lines);
    symbol.Load();
    EXPECT_TRUE(Saved().startsWith("\r\n3\r\n"));
}

TEST_F(TableFileTest, WhatWasSavedIsReadAsItWas) {
    Load(columns, {"M10 100  20 ", "M12 1.5   7 ", "M10 90   30 "});
    const QList<QStringList> shown = SymbolSample::Texts(symbol.table.cells);
    const QList<QStringList> variables = symbol.NowTable();
    const QByteArray saved = Saved();
    symbol.Load();
    EXPECT_EQ(SymbolSample::Texts(symbol.table.cells), shown);
    EXPECT_EQ(symbol.NowTable(), variables);
    EXPECT_EQ(Saved(), saved);
}

TEST_F(TableFileTest, WidthsAreCountedInCharacters) {
    Load({{"V12", 5, "W"}}, {"x"});
    symbol.table.cells.SetText(1, 1, u"大小");
    EXPECT_TRUE(Saved().endsWith("\r\n   \x91\xE5\x8F\xAC\r\n"));
    symbol.table.cells.SetText(1, 1, u"大小大小大");
    EXPECT_TRUE(Saved().endsWith("1\r\n\x91\xE5\x8F\xAC\x91\xE5\x8F\xAC\x91\xE5\r\n"));
}

TEST_F(TableFileTest, AnEmptyCellIsBlanks) {
    Load(columns, {"M10 100  20 "});
    symbol.table.cells.SetText(1, 2, u"");
    EXPECT_TRUE(Saved().endsWith("\r\n M10      20\r\n"));
}

TEST_F(TableFileTest, WithoutRowsItEndsAtTheirCount) {
    Load(columns, {"M10 100  20 "});
    symbol.table.cells.SetRows(1);
    EXPECT_TRUE(Saved().endsWith("\r\n-2\r\n\x8D\x82\r\n0\r\n"));
}

TEST_F(TableFileTest, WithoutColumnsTheRowsAreEmptyLines) {
    Load(columns, {"M10 100  20 ", "M12 100  20 "});
    symbol.table.cells.SetCols(1);
    EXPECT_EQ(Saved(), "\r\n0\r\n2\r\n\r\n\r\n");
}

TEST_F(TableFileTest, NumbersOfVariablesHaveFourDigits) {
    Load({{"V12", 2, "W"}, {"V3", 2, "H"}}, {"1 2 "});
    const QList<std::pair<int, QByteArray>> keys{{0, "V0000"},    {7, "V0007"},     {123, "V0123"},
                                                 {9999, "V9999"}, {12345, "V2345"}, {22767, "V2767"},
                                                 {-1, "V9999"}};
    for (const auto& [number, key] : keys) {
        Change(1, u"ValNo", number);
        EXPECT_EQ(Saved().split('\n')[3], key + '\r') << number;
    }
    Change(1, u"ValNo", 22768);
    const QByteArray old = symbol.folder.Read("S1.PMN");
    EXPECT_EQ(Failure([&] { Save(); }), ErrorNumber::Overflow);
    ExpectOldTable(old);
}

TEST_F(TableFileTest, TheCommentColumnIsTheOneOfRowZero) {
    Load({{Comment, 2, "N"}}, {"1"});
    Change(0, u"ValNo", 5);
    EXPECT_EQ(Saved().split('\n')[3], "\xBA\xD2\xDD\xC4\r");
}

TEST_F(TableFileTest, OfAColumnWithoutAVariableOnlyTheIndexIsWritten) {
    Load({{Comment, 4, "N"}, {"V9", 3, "?"}, {"V3", 3, "H"}}, {"M10 abc 20"});
    EXPECT_EQ(Saved(), Lines({"", "3", "1", Comment, "4", "0", "N", "2", "3", "V0003", "3", "0", "H", "1",
                              " M10 20"}));
}

TEST_F(TableFileTest, VariablesAreWrittenInTheOrderOfTheirColumns) {
    Load({{"V12", 2, "W"}, {"V3", 3, "H"}}, {"1 2  "});
    Change(1, u"ValDis", 2);
    Change(2, u"ValDis", 1);
    EXPECT_EQ(Saved(),
              Lines({"", "2", "1", "V0003", "3", "0", "H", "2", "V0012", "2", "0", "W", "1", "  1 2"}));
    Change(1, u"ValDis", 0);
    EXPECT_EQ(Saved(), Lines({"", "2", "1", "V0003", "3", "0", "H", "2", "1", "  1"}));
    Change(1, u"ValDis", 3);
    EXPECT_EQ(Saved(), Lines({"", "2", "1", "V0003", "3", "0", "H", "2", "1", "  1"}))
        << "a column that the table does not have";
}

TEST_F(TableFileTest, OfTwoVariablesOfAColumnTheFirstIsWritten) {
    Load({{"V12", 2, "W"}}, {"1"});
    Change(2, u"ValDis", 1);
    EXPECT_EQ(Saved().split('\n')[3], "V0012\r");
}

TEST_F(TableFileTest, WithoutAnOldFileTheTableIsNew) {
    symbol.Load();
    for (int column = 1; column <= 3; ++column)
        symbol.table.cells.SetText(1, column, QString::number(column));
    EXPECT_EQ(Saved(),
              Lines({"", "3", "1", Comment, "10", "0", QStringLiteral("呼び"), "2", "V0012", "10", "0", "W",
                     "3", "V0003", "10", "0", "H", "1", "         1         2         3"}));
}

TEST_F(TableFileTest, AnEmptyOldFileIsReplaced) {
    symbol.folder.Write("S1.PMN", "");
    symbol.Load();
    EXPECT_TRUE(Saved().startsWith("\r\n3\r\n"));
}

TEST_F(TableFileTest, AFileOfAnotherCaseIsReplaced) {
    symbol.folder.WriteLines("s1.pmn", SymbolSample::TableLines(columns, {"M10 100  20 "}));
    symbol.Load();
    EXPECT_TRUE(Save());
    EXPECT_TRUE(symbol.folder.Read("s1.pmn").startsWith("\r\n3\r\n"));
    EXPECT_FALSE(symbol.folder.Exists("S1.PMN"));
}

TEST_F(TableFileTest, AWorkFileThatCannotBeMadeIsTold) {
    Load(columns, {"M10 100  20 "});
    const QByteArray old = symbol.folder.Read("S1.PMN");
    symbol.folder.Write("S1.TMP\\x", "");
    EXPECT_FALSE(Save());
    EXPECT_EQ(told, QStringList{QStringLiteral("作業ファイルが作成できません")});
    EXPECT_EQ(symbol.folder.Read("S1.PMN"), old);
    EXPECT_EQ(toldAtWork, old);
}

TEST_F(TableFileTest, WhoMayReplaceTheTableIsAskedWhenNobodyElseCan) {
    Load(columns, {"M10"});
    const QByteArray old = symbol.folder.Read("S1.PMN");
    symbol.table.cells.SetText(1, 1, u"M12");
    const auto saveIf = [this](const MayReplace& mayReplace) {
        return SaveDimensionTable(
            symbol.state, symbol.work, symbol.table.cells,
            [](const QString& text) { ADD_FAILURE() << text.toStdString(); }, mayReplace);
    };
    for (const bool answer : {false, true}) {
        int asked = 0;
        EXPECT_EQ(saveIf([&] {
                      ++asked;
                      EXPECT_EQ(symbol.folder.Read("S1.PMN"), old);
                      EXPECT_FALSE(Save()) << "another's save";
                      EXPECT_EQ(told, QStringList{QStringLiteral("作業ファイルが作成できません")});
                      EXPECT_EQ(symbol.folder.Read("S1.PMN"), old);
                      return answer;
                  }),
                  answer);
        EXPECT_EQ(asked, 1);
        EXPECT_EQ(symbol.folder.Read("S1.PMN") == old, !answer);
        EXPECT_FALSE(symbol.folder.Exists("S1.TMP"));
    }
    // Nor is anything left of a question that failed.
    EXPECT_EQ(ErrorOf([&] { saveIf([]() -> bool { throw RuntimeError(ErrorNumber::DeviceIo); }); }).Number(),
              ErrorNumber::DeviceIo);
    EXPECT_FALSE(symbol.folder.Exists("S1.TMP"));
}

TEST_F(TableFileTest, AFolderThatCannotBeWrittenIsTold) {
    if (!OtherUser::IsPossible())
        GTEST_SKIP() << "only the superuser can be another user";
    symbol.state.SymbolFile = symbol.folder.Path("sub\\S1.TXT");
    symbol.folder.WriteLines("sub\\S1.TXT", {"$VAR", "V12=PRO(\"W\",100)"});
    symbol.Load();
    {
        const OtherUser other(NativePath(symbol.folder.Path()));
        ASSERT_TRUE(other.Changed());
        told.clear();
        EXPECT_FALSE(SaveDimensionTable(symbol.state, symbol.work, symbol.table.cells,
                                        [this](const QString& text) { told << text; }));
    }
    EXPECT_EQ(told, QStringList{QStringLiteral("作業ファイルが作成できません")});
    EXPECT_EQ(QDir(NativePath(symbol.folder.Path("sub"))).entryList(QDir::Files), QStringList{"S1.TXT"});
}

TEST_F(TableFileTest, AFullDiskIsAnErrorThatNamesTheTable) {
    QStringList rows;
    for (int i = 0; i < 1000; ++i)
        rows << QStringLiteral("M%1").arg(i);
    Load(columns, rows);
    const QByteArray old = symbol.folder.Read("S1.PMN");
    {
        const FailingDisk disk(4096);
        const RuntimeError error = ErrorOf([&] { Save(); });
        EXPECT_EQ(error.Number(), ErrorNumber::DiskFull);
        EXPECT_EQ(error.File(), symbol.folder.Path("S1.PMN"));
    }
    ExpectOldTable(old);
    EXPECT_NE(Saved(), old);
}

TEST_F(TableFileTest, AFolderInTheTablesPlaceIsAnError) {
    symbol.Load();
    symbol.folder.Write("S1.PMN\\x", "");
    const RuntimeError error = ErrorOf([&] { Save(); });
    EXPECT_EQ(error.Number(), ErrorNumber::PathFileAccess);
    EXPECT_EQ(error.File(), symbol.folder.Path("S1.PMN"));
    EXPECT_FALSE(symbol.folder.Exists("S1.TMP"));
}

TEST_F(TableFileTest, AValueLongerThanItsColumnIsAnErrorBeforeAnythingIsWritten) {
    Load(columns, {"M10 100  20 ", "M12 1.5   7 "});
    const QByteArray old = symbol.folder.Read("S1.PMN");
    symbol.table.cells.SetText(2, 3, u"1234");
    const RuntimeError error = ErrorOf([&] { Save(); });
    EXPECT_EQ(error.Number(), ErrorNumber::InvalidArgument);
    EXPECT_EQ(error.Detail(),
              QStringLiteral("2 行 3 列 (高) の値は 4 文字あり、列の幅 3 文字に入りません。"));
    EXPECT_EQ(error.File(), symbol.folder.Path("S1.PMN"));
    ExpectOldTable(old);
}

TEST_F(TableFileTest, ACharacterThatTheFileCannotHoldIsAnErrorBeforeAnythingIsWritten) {
    Load(columns, {"M10 100  20 "});
    const QByteArray old = symbol.folder.Read("S1.PMN");
    symbol.table.cells.SetText(1, 2, u"é");
    EXPECT_TRUE(ErrorOf([&] { Save(); }).Detail().contains(QStringLiteral("「é」")));
    ExpectOldTable(old);
    symbol.table.cells.SetText(1, 2, u"1\n2");
    EXPECT_TRUE(ErrorOf([&] { Save(); }).Detail().contains(QStringLiteral("改行")));
    ExpectOldTable(old);
}

TEST_F(TableFileTest, HoldsAsManyRowsAndColumnsAsCanBeRead) {
    Load({{"V12", 1, "W"}}, {"1"});
    const QByteArray old = symbol.folder.Read("S1.PMN");
    symbol.table.cells.SetRows(32'767 + 2);
    EXPECT_EQ(Failure([&] { Save(); }), ErrorNumber::Overflow);
    ExpectOldTable(old);
    symbol.table.cells.SetRows(32'767 + 1);
    EXPECT_EQ(Saved().count('\n'), 8 + 32'767);

    Change(1, u"ValLen", 32'767);
    EXPECT_EQ(Failure([&] { Save(); }), ErrorNumber::Overflow) << "a gigabyte of blanks";

    symbol.table.cells.SetRows(1);
    symbol.table.cells.SetCols(503);
    EXPECT_EQ(Failure([&] { Save(); }), ErrorNumber::SubscriptOutOfRange);
    symbol.table.cells.SetCols(502);
    EXPECT_TRUE(Saved().startsWith("\r\n501\r\n"));
}

TEST_F(TableFileTest, AMessageIsNoTable) {
    symbol.Define({});
    symbol.Load();
    EXPECT_EQ(Failure([&] { Save(); }), ErrorNumber::InvalidArgument);
    EXPECT_FALSE(symbol.folder.Exists("S1.PMN"));
}

TEST_F(TableFileTest, ASymbolWithoutAnExtensionCannotBeSaved) {
    symbol.Load();
    symbol.state.SymbolFile = QStringLiteral("TXT");
    EXPECT_EQ(Failure([&] { Save(); }), ErrorNumber::InvalidArgument);
}

TEST_F(TableFileTest, TheDefinitionItselfIsNeverOverwritten) {
    symbol.Load();
    for (const char* name : {"S1.tmp", "S1.Pmn"}) {
        symbol.folder.Write(name, "$VAR");
        symbol.state.SymbolFile = symbol.folder.Path(name);
        EXPECT_EQ(Failure([&] { Save(); }), ErrorNumber::InvalidArgument);
        EXPECT_EQ(symbol.folder.Read(name), "$VAR");
    }
}

TEST_F(TableFileTest, AFailureOfTheWorkDatabaseIsAnErrorOfItsOwn) {
    Load(columns, {"M10 100  20 "});
    const QByteArray old = symbol.folder.Read("S1.PMN");
    DeleteFile(symbol.work.Path());
    EXPECT_EQ(ErrorOf([&] { Save(); }).File(), symbol.work.Path());
    ExpectOldTable(old);
}

} // namespace
} // namespace velmo
