#include "symbol_sample.h"
#include "variables/table_fault.h"

namespace velmo {
namespace {

using Kind = TableFault::Kind;

class TableFaultTest : public testing::Test {
protected:
    TableFaultTest() {
        symbol.state.RunMode = run_mode::UserLibrary;
        symbol.Define({"V12=PRO(\"W\",100)", "V3=PRO(\"H\",20)"});
        symbol.WriteTable({{QStringLiteral("ｺﾒﾝﾄ"), 10, QStringLiteral("呼び")},
                           {"V12", 4, "W"},
                           {"V9", 2, "?"},
                           {"V3", 3, "H"}},
                          {"M10       100 x 20", "M12       110 x 21", "M16       120 x 22"});
        symbol.Load();
    }

    TableColumns Columns() const { return ReadTableColumns(symbol.work, symbol.table.cells.Cols() - 1); }
    std::optional<TableFault> Find() const { return FindTableFault(Columns(), symbol.table.cells); }
    void Put(int row, int column, QStringView text) { symbol.table.cells.SetText(row, column, text); }
    void Rename(int variableRow, QStringView name) const {
        Database database = symbol.work.Open(Database::Access::Write);
        RecordSet variables = SelectVariables(database);
        FindVariableRow(variables, variableRow);
        variables.Edit();
        variables.Set(u"ValName", name);
        variables.Update();
    }
    void Expect(Kind kind, int row, int column, const QString& text) const {
        const std::optional<TableFault> fault = Find();
        ASSERT_TRUE(fault);
        EXPECT_EQ(fault->kind, kind);
        EXPECT_EQ(fault->row, row);
        EXPECT_EQ(fault->column, column);
        EXPECT_EQ(fault->Text(), text);
    }

    SymbolSample symbol;
};

TEST_F(TableFaultTest, ASoundTableHasNone) {
    EXPECT_FALSE(Find());
    Put(1, 1, u"呼び径１２３４５６７");
    EXPECT_FALSE(Find()) << "a value may fill its column";
    Put(2, 1, u"");
    EXPECT_FALSE(Find());
}

TEST_F(TableFaultTest, AValueThatIsTooLong) {
    Put(3, 1, u"123456789012");
    Expect(Kind::TooLong, 3, 1,
           QStringLiteral("3 行 1 列 (呼び) の値は 12 文字あり、列の幅 10 文字に入りません。"));
    EXPECT_EQ(Find()->length, 12);
    EXPECT_EQ(Find()->width, 10);
    Put(2, 4, u"大小大小");
    Expect(Kind::TooLong, 2, 4,
           QStringLiteral("2 行 4 列 (H) の値は 4 文字あり、列の幅 3 文字に入りません。"));
}

TEST_F(TableFaultTest, NamesAreToldAsTheyStand) {
    Rename(1, u"%1-%2");
    Put(3, 2, u"12345");
    Expect(Kind::TooLong, 3, 2,
           QStringLiteral("3 行 2 列 (%1-%2) の値は 5 文字あり、列の幅 4 文字に入りません。"));
}

TEST_F(TableFaultTest, AValueThatCouldNotBeReadAgain) {
    Database database = symbol.work.Open(Database::Access::Write);
    database.Execute(QStringLiteral("UPDATE NowTable SET ValLen = 300 WHERE ValNum = 1"));
    Put(2, 2, QString(255, u'W'));
    EXPECT_FALSE(Find());
    Put(2, 2, QString(256, u'W'));
    Expect(Kind::TooLongToRead, 2, 2,
           QStringLiteral("2 行 2 列 (W) の値は 256 文字あり、次からは読めません (255 文字まで)。"));
    Put(2, 2, QString(301, u'W'));
    EXPECT_EQ(Find()->kind, Kind::TooLong);
}

TEST_F(TableFaultTest, AForeignCharacter) {
    Put(2, 2, u"1é");
    Expect(
        Kind::ForeignCharacter, 2, 2,
        QStringLiteral(
            "2 行 2 列 (W) の文字「é」は寸法表のファイルに書けません (コードページ 932 にない文字です)。"));
    Put(2, 2, u"1");
    EXPECT_FALSE(Find());
    Put(3, 4, u"😀");
    EXPECT_EQ(Find()->character, QStringLiteral("😀"));
    Put(3, 4, QString(QChar(0xD83D)));
    EXPECT_EQ(Find()->kind, Kind::ForeignCharacter) << "half a character";
}

TEST_F(TableFaultTest, HalvesInNeighbouringCellsAreNoCharacter) {
    Put(1, 2, QString(QChar(0xD83D)));
    Put(1, 4, QString(QChar(0xDE00)));
    Expect(Kind::ForeignCharacter, 1, 2,
           QStringLiteral(
               "1 行 2 列 (W) の文字「%1」は寸法表のファイルに書けません (コードページ 932 にない文字です)。")
               .arg(QChar(0xD83D)));
}

TEST_F(TableFaultTest, BytesOfTheFileThatWereNoCharacters) {
    QByteArray table = symbol.folder.Read("S1.PMN");
    table.replace("M12", "M\xA0\xFD");
    symbol.folder.Write("S1.PMN", table);
    symbol.Load();
    Expect(
        Kind::UnreadBytes, 2, 1,
        QStringLiteral("2 行 1 列 (呼び) に、ファイルから読めなかった文字があります (コードページ 932 でない"
                       "バイト)。元の内容が失われるため、保存しません。"));
    Put(2, 1, u"é\uFFFD");
    EXPECT_EQ(Find()->kind, Kind::UnreadBytes);
}

TEST_F(TableFaultTest, ALineBreak) {
    for (const char16_t lineBreak : {u'\n', u'\r'}) {
        Put(1, 4, QStringLiteral("1%12").arg(QChar(lineBreak)));
        Expect(Kind::LineBreak, 1, 4,
               QStringLiteral("1 行 4 列 (H) に改行があります。寸法表のファイルには書けません。"));
    }
}

TEST_F(TableFaultTest, TheNameOfAColumn) {
    Put(1, 1, u"é");
    Rename(2, u"H\u00e9");
    Expect(Kind::ForeignCharacter, 0, 4,
           QStringLiteral("4 列の名前 (Hé) の文字「é」は寸法表のファイルに書けません "
                          "(コードページ 932 にない文字です)。"));
    Rename(2, u"\uFFFD");
    EXPECT_EQ(Find()->kind, Kind::UnreadBytes);
    Rename(2, u"a\nb");
    EXPECT_EQ(Find()->kind, Kind::LineBreak);
    Rename(2, u"A name longer than its column");
    EXPECT_EQ(Find()->row, 1);
}

TEST_F(TableFaultTest, TheFirstOfSeveral) {
    Put(1, 4, u"é");
    Put(1, 2, u"12345");
    Put(2, 1, u"\uFFFD");
    EXPECT_EQ(Find()->column, 2);
    Put(1, 2, u"1");
    EXPECT_EQ(Find()->column, 4);
    Put(1, 4, u"1");
    EXPECT_EQ(Find()->row, 2);
}

TEST_F(TableFaultTest, WhatIsNotSavedIsNotLookedAt) {
    Put(1, 3, u"much too long, and é");
    EXPECT_FALSE(Find());
    EXPECT_EQ(ColumnsWithoutVariable(Columns()), std::vector<int>{3});
    Rename(2, u"shown");
    symbol.table.cells.SetCols(4);
    EXPECT_EQ(ColumnsWithoutVariable(Columns()), std::vector<int>{3});
    symbol.table.cells.SetCols(3);
    EXPECT_TRUE(ColumnsWithoutVariable(Columns()).empty());
}

} // namespace
} // namespace velmo
