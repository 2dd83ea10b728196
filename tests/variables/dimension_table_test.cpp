#include "platform/files.h"
#include "support/other_user.h"
#include "symbol_sample.h"
#include "variables/dimension_table.h"

namespace velmo {
namespace {

const QString Comment = QStringLiteral("ｺﾒﾝﾄ");

// Two variables, W (V12) and H (V3).
class DimensionTableTest : public testing::Test {
protected:
    DimensionTableTest() {
        symbol.Define({QStringLiteral("V12=PRO(\"W\",100)"), QStringLiteral("V3=PRO(\"H\",20)")});
    }

    void ExpectMessage() {
        EXPECT_TRUE(symbol.table.cells.IsMessage());
        EXPECT_EQ(SymbolSample::Texts(symbol.table.cells), Rows{{QStringLiteral("テーブルはありません")}});
        EXPECT_EQ(symbol.table.rows, 0);
    }
    void ExpectNewTable() {
        const Rows expected{{"", QStringLiteral("呼び"), "W", "H"}, {"1", "", "", ""}};
        EXPECT_EQ(SymbolSample::Texts(symbol.table.cells), expected);
        EXPECT_EQ(symbol.table.rows, 1);
    }
    Rows Shown() const { return SymbolSample::Texts(symbol.table.cells); }
    Rows Stored(int fields) const { return symbol.WorkRows(QStringLiteral("PmnTable"), fields); }
    void EditTable() { symbol.state.RunMode = run_mode::UserLibrary; }

    const QList<SymbolSample::Column> columns{{Comment, 4, QStringLiteral("呼び"), 7},
                                              {"V0012", 5, QStringLiteral("幅"), 1},
                                              {"V3", 3, QStringLiteral("高"), 2}};
    SymbolSample symbol;
};

TEST_F(DimensionTableTest, StandsBesideTheDefinition) {
    EXPECT_EQ(DimensionTablePath(QStringLiteral("D:\\lib\\M10.txt")), QStringLiteral("D:\\lib\\M10.PMN"));
    EXPECT_EQ(DimensionTablePath(QStringLiteral(".txt")), QStringLiteral(".PMN"));
    EXPECT_EQ(ErrorOf([] { DimensionTablePath(QStringLiteral("txt")); }).Number(),
              ErrorNumber::InvalidArgument);
}

TEST_F(DimensionTableTest, ShowsColumnsAndRows) {
    symbol.WriteTable(columns, {QStringLiteral(" M10  100 20"), QStringLiteral("M12   1.5  7")});
    symbol.Load();
    const Rows shown{{"", QStringLiteral("呼び"), QStringLiteral("幅"), QStringLiteral("高")},
                     {"1", "M10", "100", "20"},
                     {"2", "M12", "1.5", "7"}};
    EXPECT_EQ(Shown(), shown);
    EXPECT_EQ(symbol.table.rows, 2);
    const Rows stored{{"1", "M10", "100", "20"}, {"2", "M12", "1.5", "7"}};
    EXPECT_EQ(Stored(4), stored);
}

TEST_F(DimensionTableTest, RowsMayBeAsWideAsTheirColumns) {
    constexpr int widest = 32'767;
    QList<SymbolSample::Column> wide{columns.first()};
    QString row = QStringLiteral(" M10");
    for (int i = 0; i < 40; ++i) {
        wide << SymbolSample::Column{QStringLiteral("V%1").arg(100 + i), widest, QString::number(i)};
        row += QString::number(i).rightJustified(widest);
    }
    symbol.WriteTable(wide, {row});
    symbol.Load();
    EXPECT_TRUE(symbol.table.whole);
    EXPECT_EQ(Shown().last().last(), "39");
}

TEST_F(DimensionTableTest, LinksVariablesToTheirColumns) {
    symbol.WriteTable(columns, {QStringLiteral("M10 100   20 ")});
    symbol.Load();
    const Rows expected{{"0", "0", QStringLiteral("呼び"), "1", "4", "7"},
                        {"1", "12", QStringLiteral("幅"), "2", "5", "1"},
                        {"2", "3", QStringLiteral("高"), "3", "3", "2"}};
    EXPECT_EQ(symbol.NowTable(), expected);
    EXPECT_EQ(symbol.variables.Text(1, 0), QStringLiteral("V12(W)"))
        << "the label keeps the definition's name";
    EXPECT_EQ(symbol.variables.Text(1, 1), QStringLiteral("100"));
}

TEST_F(DimensionTableTest, GivesItsNamesToTheVariableGridWhenItIsEdited) {
    EditTable();
    symbol.WriteTable(columns, {QStringLiteral("M10 100   20 ")});
    symbol.Load();
    EXPECT_EQ(symbol.CurrentValues(), (QStringList{QStringLiteral("幅"), QStringLiteral("高")}));
    EXPECT_EQ(symbol.variables.Text(0, 1), QString()) << "the comment column has no row there";
}

TEST_F(DimensionTableTest, AColumnOfAnUnknownVariableIsShownAndLinksNothing) {
    symbol.WriteTable({{"V9", 3, QStringLiteral("他")}}, {QStringLiteral("5")});
    symbol.Load();
    EXPECT_EQ(Shown(), (Rows{{"", QStringLiteral("他")}, {"1", "5"}}));
    for (const QStringList& row : symbol.NowTable())
        EXPECT_EQ(row[3], QStringLiteral("0"));
}

TEST_F(DimensionTableTest, OneRowPerGroupIsShownAndEveryRowStored) {
    symbol.WriteTable({{Comment, 4, "N"}, {"V12", 4, "W"}},
                      {QStringLiteral("M10   1"), QStringLiteral(" M10  2"), QStringLiteral("m10   3")});
    symbol.Load();
    EXPECT_EQ(Shown(), (Rows{{"", "N", "W"}, {"1", "M10", "1"}, {"2", "m10", "3"}}));
    EXPECT_EQ(Stored(3).size(), 3);
    EXPECT_EQ(symbol.table.rows, 2);
    EditTable();
    symbol.Load();
    EXPECT_EQ(Shown(), (Rows{{"", "N", "W"}, {"1", "M10", "1"}, {"2", "M10", "2"}, {"3", "m10", "3"}}));
    EXPECT_EQ(Stored(3).size(), 3);
}

TEST_F(DimensionTableTest, RowsOfAGroupStandTogetherWhenItIsEdited) {
    EditTable();
    symbol.WriteTable({{Comment, 1, "N"}, {"V12", 2, "W"}},
                      {QStringLiteral("A 1"), QStringLiteral("B 2"), QStringLiteral("A 3")});
    symbol.Load();
    EXPECT_EQ(Shown(), (Rows{{"", "N", "W"}, {"1", "A", "1"}, {"2", "A", "3"}, {"3", "B", "2"}}));
    EXPECT_EQ(Stored(3), (Rows{{"1", "A", "1"}, {"2", "B", "2"}, {"3", "A", "3"}}))
        << "stored as in the file";
}

TEST_F(DimensionTableTest, WidthsCountCharacters) {
    symbol.WriteTable({{Comment, 4, "N"}, {"V12", 3, "W"}}, {QStringLiteral("呼び径全角３ｱ")});
    symbol.Load();
    EXPECT_EQ(Shown()[1], (QStringList{"1", QStringLiteral("呼び径全"), QStringLiteral("角３ｱ")}));
}

TEST_F(DimensionTableTest, AShortLineHasEmptyFields) {
    symbol.WriteTable(columns, {QStringLiteral("M1"), QString()});
    symbol.Load();
    EXPECT_EQ(Shown()[1], (QStringList{"1", "M1", "", ""}));
    EXPECT_EQ(Shown()[2], (QStringList{"2", "", "", ""}));
}

TEST_F(DimensionTableTest, OnlyBlanksAreTrimmed) {
    symbol.WriteTable({{Comment, 3, "N"}}, {QStringLiteral(" 　x")});
    symbol.Load();
    EXPECT_EQ(Shown()[1][1], QStringLiteral("　x"));
}

TEST_F(DimensionTableTest, BytesThatMeanNothingAreReadAsReplacements) {
    symbol.folder.Write(QStringLiteral("S1.PMN"), "\r\n1\r\n1\r\nV12\r\n3\r\n0\r\nW\r\n1\r\n\xA0"
                                                  "1\r\n");
    symbol.Load();
    EXPECT_EQ(Shown()[1][1], QStringLiteral("\uFFFD1"));
}

TEST_F(DimensionTableTest, WithoutAFileTheGridSaysSo) {
    symbol.Load();
    ExpectMessage();
    symbol.state.RunMode = run_mode::ReturnFromMeasure;
    symbol.Load();
    ExpectMessage();
}

TEST_F(DimensionTableTest, WithoutAFileANewTableIsPreparedForEditing) {
    EditTable();
    symbol.Load();
    ExpectNewTable();
    const Rows expected{{"0", "0", QStringLiteral("呼び"), "1", "10", "0"},
                        {"1", "12", "W", "2", "10", "0"},
                        {"2", "3", "H", "3", "10", "0"}};
    EXPECT_EQ(symbol.NowTable(), expected);
    EXPECT_FALSE(symbol.folder.Exists(QStringLiteral("S1.PMN")));
    Database database = symbol.work.Open(Database::Access::Read);
    EXPECT_THROW(SelectTableRows(database), RuntimeError);
}

TEST_F(DimensionTableTest, WithoutVariablesThereIsNothingToPrepare) {
    EditTable();
    symbol.Define({});
    symbol.Load();
    ExpectMessage();
}

TEST_F(DimensionTableTest, WithoutRowsModeTwoSaysSo) {
    symbol.WriteTable(columns, {});
    symbol.Load();
    ExpectMessage();
}

TEST_F(DimensionTableTest, WithoutRowsTheOtherModesShowOneEmptyRow) {
    symbol.WriteTable(columns, {});
    for (const std::int16_t mode : {run_mode::UserLibrary, run_mode::ReturnFromMeasure}) {
        symbol.state.RunMode = mode;
        symbol.Load();
        EXPECT_EQ(Shown(), (Rows{{"", QStringLiteral("呼び"), QStringLiteral("幅"), QStringLiteral("高")},
                                 {"1", "", "", ""}}));
        EXPECT_EQ(symbol.table.rows, 1);
        EXPECT_TRUE(Stored(4).isEmpty());
    }
}

TEST_F(DimensionTableTest, AFileCutShortShowsTheRowsBefore) {
    QStringList lines =
        SymbolSample::TableLines(columns, {QStringLiteral("M10 100   20 "), QStringLiteral("M12 120   24 ")});
    lines[17] = QStringLiteral("9");
    symbol.WriteTableLines(lines);
    symbol.Load();
    EXPECT_EQ(symbol.table.rows, 2);
    EXPECT_EQ(Shown()[2], (QStringList{"2", "M12", "120", "24"}));
    EXPECT_EQ(Stored(4).size(), 2);
}

TEST_F(DimensionTableTest, AFileCutShortBeforeItsRowsIsNoTable) {
    const QStringList whole = SymbolSample::TableLines(columns, {QStringLiteral("M10 100   20 ")});
    for (qsizetype kept = 0; kept + 1 < whole.size(); ++kept) {
        symbol.state.RunMode = run_mode::VariableInput;
        symbol.WriteTableLines(whole.first(kept));
        symbol.Load();
        ExpectMessage();
        EditTable();
        symbol.Load();
        EXPECT_EQ(symbol.table.rows, 1);
        EXPECT_EQ(symbol.table.cells.Cols(), 4);
        EXPECT_EQ(symbol.table.cells.Text(0, 1), QStringLiteral("呼び"));
    }
}

TEST_F(DimensionTableTest, NumbersThatAreNoneEndTheReading) {
    const QStringList whole = SymbolSample::TableLines(columns, {QStringLiteral("M10 100   20 ")});
    for (const qsizetype line : {1, 2, 4, 5, 9, 17}) {
        for (const QString& wrong : {QStringLiteral("x"), QString(), QStringLiteral("99999")}) {
            QStringList lines = whole;
            lines[line] = wrong;
            symbol.WriteTableLines(lines);
            symbol.Load();
            ExpectMessage();
        }
    }
}

TEST_F(DimensionTableTest, AKeyWithoutANumberEndsTheReading) {
    for (const QString& key : {QString(), QStringLiteral("V"), QStringLiteral("コメント")}) {
        symbol.WriteTable({{key, 3, "W"}}, {QStringLiteral("1")});
        symbol.Load();
        ExpectMessage();
    }
}

TEST_F(DimensionTableTest, AWrongColumnIndexEndsTheColumns) {
    QStringList lines = SymbolSample::TableLines(columns, {QStringLiteral("M10 100   20 ")});
    lines[7] = QStringLiteral("5");
    symbol.WriteTableLines(lines);
    symbol.Load();
    ExpectMessage();
}

TEST_F(DimensionTableTest, ARowThatNamesAMissingColumnIsShownAsFarAsItWasRead) {
    // After the wrong index of column 2 the file goes on with a row count and rows.
    symbol.WriteTableLines({"", "3", "1", "V12", "4", "0", "W", "7", "2", " M10 5", " M12 6"});
    symbol.Load();
    EXPECT_EQ(Shown(), (Rows{{"", "W", "", ""}, {"1", "M10", "", ""}}));
    EXPECT_EQ(symbol.table.rows, 1);
    EXPECT_TRUE(Stored(2).isEmpty()) << "the row was not saved";
}

TEST_F(DimensionTableTest, ANegativeWidthEndsTheReading) {
    symbol.WriteTable({{Comment, -1, "N"}}, {QStringLiteral("M10")});
    symbol.Load();
    ExpectMessage();
    symbol.WriteTable({{Comment, 3, "N"}, {"V12", -1, "W"}}, {QStringLiteral("M10")});
    symbol.Load();
    EXPECT_EQ(Shown(), (Rows{{"", "N", "W"}, {"1", "M10", ""}}));
}

TEST_F(DimensionTableTest, AValueIsAtMost255CharactersLong) {
    const QString row = QStringLiteral("M%1").arg(1) + QString(255, u'x');
    symbol.WriteTable({{Comment, 2, "N"}, {"V12", 256, "W"}}, {row, row + u'x', row});
    symbol.Load();
    EXPECT_EQ(symbol.table.rows, 1) << "the second row is of the same group and not shown";
    EXPECT_EQ(Stored(3).size(), 1);
    EditTable();
    symbol.Load();
    ASSERT_EQ(symbol.table.rows, 2);
    EXPECT_EQ(symbol.table.cells.Text(2, 1), QStringLiteral("M1"));
    EXPECT_EQ(symbol.table.cells.Text(2, 2), QString());
}

TEST_F(DimensionTableTest, AColumnNameIsAtMost255CharactersLongWhenItNamesAVariable) {
    symbol.WriteTable({{"V12", 3, QString(256, u'x')}}, {QStringLiteral("1")});
    symbol.Load();
    ExpectMessage();
    symbol.WriteTable({{"V9", 3, QString(256, u'x')}}, {QStringLiteral("1")});
    symbol.Load();
    EXPECT_EQ(symbol.table.rows, 1);
}

TEST_F(DimensionTableTest, HoldsFiveHundredAndOneColumnsAndNoMore) {
    QList<SymbolSample::Column> many;
    for (int i = 1; i <= 501; ++i)
        many << SymbolSample::Column{QStringLiteral("V%1").arg(i + 1000), 1, QStringLiteral("N%1").arg(i)};
    symbol.WriteTable(many, {QString(501, u'7')});
    symbol.Load();
    EXPECT_EQ(symbol.table.cells.Cols(), 502);
    EXPECT_EQ(symbol.table.cells.Text(1, 501), QStringLiteral("7"));
    many << SymbolSample::Column{"V9999", 1, "N502"};
    symbol.WriteTable(many, {QString(502, u'7')});
    symbol.Load();
    ExpectMessage();
}

TEST_F(DimensionTableTest, WithoutColumnsThereIsNothingToShow) {
    for (const char* count : {"0", "-3"}) {
        symbol.WriteTableLines({"", count, "2", "a", "b"});
        symbol.Load();
        ExpectMessage();
    }
}

TEST_F(DimensionTableTest, ANegativeRowCountIsNoRow) {
    QStringList lines = SymbolSample::TableLines(columns, {});
    lines.last() = QStringLiteral("-1");
    symbol.WriteTableLines(lines);
    symbol.Load();
    ExpectMessage();
}

TEST_F(DimensionTableTest, WhenItsTableCannotBeMadeTheHeaderStays) {
    symbol.WriteTable(columns, {QStringLiteral("M10 100   20 ")});
    symbol.count = ReadSymbolDefinition(symbol.state, symbol.work, symbol.variables, [](const QString&) {});
    {
        Database database = symbol.work.Open(Database::Access::Write);
        database.Execute(QStringLiteral("CREATE TABLE PmnTable (ValID COUNTER);"));
    }
    symbol.table = LoadDimensionTable(symbol.state, symbol.work, symbol.count, symbol.variables);
    EXPECT_EQ(Shown(), (Rows{{"", QStringLiteral("呼び"), QStringLiteral("幅"), QStringLiteral("高")}}));
    EXPECT_EQ(symbol.table.rows, 0);
    EXPECT_FALSE(symbol.table.whole);
    EXPECT_EQ(symbol.NowTable()[1][3], QStringLiteral("2")) << "the variables stay linked";
}

TEST_F(DimensionTableTest, AFailureOfTheWorkDatabaseIsNotPassedOver) {
    symbol.WriteTable(columns, {QStringLiteral("M10 100   20 ")});
    symbol.work.CreateWorkDatabase([](const QString&) {});
    {
        Database database = symbol.work.Open(Database::Access::Write);
        database.Execute(QStringLiteral("DROP TABLE NowTable"));
    }
    const RuntimeError error =
        ErrorOf([&] { LoadDimensionTable(symbol.state, symbol.work, 2, symbol.variables); });
    EXPECT_EQ(error.File(), symbol.work.Path());
}

TEST_F(DimensionTableTest, TellsHowFarItHasRead) {
    QStringList rows;
    for (int i = 0; i < 2500; ++i)
        rows << QStringLiteral("%1").arg(i, 4);
    symbol.WriteTable({{Comment, 4, "N"}}, rows);
    symbol.count = ReadSymbolDefinition(symbol.state, symbol.work, symbol.variables, [](const QString&) {});
    QList<qint64> told;
    symbol.table = LoadDimensionTable(symbol.state, symbol.work, symbol.count, symbol.variables,
                                      [&](qint64 done, qint64 size) {
                                          EXPECT_LE(done, size);
                                          told << done;
                                      });
    EXPECT_EQ(told.size(), 3);
    EXPECT_LT(told[0], told[2]);
    EXPECT_EQ(symbol.table.rows, 2500);
}

TEST_F(DimensionTableTest, OfTwoColumnsOfOneVariableTheLastIsItsColumn) {
    symbol.WriteTable({{Comment, 1, "N"}, {"V12", 2, "W1"}, {"V12", 3, "W2"}, {Comment, 1, "M"}},
                      {QStringLiteral("A 1  2B")});
    symbol.Load();
    EXPECT_EQ(Shown(), (Rows{{"", "N", "W1", "W2", "M"}, {"1", "A", "1", "2", "B"}}));
    EXPECT_EQ(symbol.NowTable()[0], (QStringList{"0", "0", "M", "4", "1", "0"}));
    EXPECT_EQ(symbol.NowTable()[1], (QStringList{"1", "12", "W2", "3", "3", "0"}));
}

TEST_F(DimensionTableTest, TheKeyOfVariableZeroFindsTheCommentRow) {
    EditTable();
    symbol.WriteTable({{"V0", 2, "Z"}}, {QStringLiteral("x")});
    symbol.Load();
    EXPECT_EQ(symbol.NowTable()[0], (QStringList{"0", "0", "Z", "1", "2", "0"}));
    EXPECT_EQ(symbol.variables.Text(0, 1), QString()) << "no header is a variable's name";
}

TEST_F(DimensionTableTest, ATableBrokenAfterItsColumnsIsPreparedAnewForEditing) {
    EditTable();
    symbol.WriteTableLines(SymbolSample::TableLines(columns, {}).mid(0, 2 + 5 * 3) + QStringList{"x"});
    symbol.Load();
    EXPECT_EQ(Shown(), (Rows{{"", QStringLiteral("呼び"), QStringLiteral("幅"), QStringLiteral("高")},
                             {"1", "", "", ""}}));
    EXPECT_EQ(symbol.table.rows, 1);
    EXPECT_EQ(symbol.NowTable()[1], (QStringList{"1", "12", QStringLiteral("幅"), "2", "10", "0"}));
    EXPECT_EQ(symbol.CurrentValues(), (QStringList{QStringLiteral("幅"), QStringLiteral("高")}));
}

TEST_F(DimensionTableTest, AFileCutShortAfterRowsIsEditedAsFarAsItGoes) {
    EditTable();
    const QStringList lines = SymbolSample::TableLines(columns, {"M10 100   20 ", "M12 110   21 ", "cut"});
    symbol.WriteTableLines(lines.mid(0, lines.size() - 1));
    symbol.Load();
    EXPECT_EQ(symbol.table.rows, 2);
    EXPECT_EQ(Shown().size(), 3);
    EXPECT_EQ(Shown()[2], (QStringList{"2", "M12", "110", "21"}));
}

TEST_F(DimensionTableTest, TellsWhetherTheFileWasReadWhole) {
    const QStringList whole = SymbolSample::TableLines(columns, {"M10 100   20 ", "M12 110   21 "});
    for (const std::int16_t mode : {run_mode::VariableInput, run_mode::UserLibrary}) {
        symbol.state.RunMode = mode;
        symbol.Load();
        EXPECT_TRUE(symbol.table.whole) << "no file, nothing to lose";
        symbol.WriteTableLines(whole);
        symbol.Load();
        EXPECT_TRUE(symbol.table.whole);
        symbol.WriteTableLines(SymbolSample::TableLines(columns, {}));
        symbol.Load();
        EXPECT_TRUE(symbol.table.whole) << "a table without rows";
        for (qsizetype kept = 0; kept < whole.size(); ++kept) {
            symbol.WriteTableLines(whole.first(kept));
            symbol.Load();
            EXPECT_FALSE(symbol.table.whole) << kept;
        }
        QFile::remove(NativePath(symbol.folder.Path("S1.PMN")));
    }
}

TEST_F(DimensionTableTest, WhatStandsBehindColumnsAndRowsIsNotRead) {
    const QStringList whole = SymbolSample::TableLines(columns, {"M10 100   20 ", "M12 110   21 "});
    const auto isWhole = [this](const QStringList& lines) {
        symbol.WriteTableLines(lines);
        symbol.Load();
        return symbol.table.whole;
    };
    EXPECT_TRUE(isWhole(whole + QStringList{"", "   "})) << "blanks are nothing";
    EXPECT_FALSE(isWhole(whole + QStringList{"", "M16 120   22 "}));
    QStringList longer = whole;
    longer[longer.size() - 2] += QStringLiteral("   ");
    EXPECT_TRUE(isWhole(longer));
    longer[longer.size() - 2] += QStringLiteral("x");
    EXPECT_FALSE(isWhole(longer));
}

// As old programs end a file.
TEST_F(DimensionTableTest, AnEndMarkIsNoPartOfTheTable) {
    const QStringList rows{"M10 100   20 ", QStringLiteral("呼び12110   21 ")};
    for (const std::int16_t mode : {run_mode::VariableInput, run_mode::UserLibrary}) {
        symbol.state.RunMode = mode;
        symbol.WriteTable(columns, rows);
        const QByteArray table = symbol.folder.Read("S1.PMN");
        // Behind the last line, and behind its values with more or fewer blanks.
        for (const qsizetype cut : {0, 2, 3, 4}) {
            for (const char* mark : {"\x1A", "\x1A\x1A\x1A", "\x1A\r\n"}) {
                symbol.folder.Write("S1.PMN", table.chopped(cut) + mark);
                symbol.Load();
                EXPECT_TRUE(symbol.table.whole) << cut;
                ASSERT_EQ(symbol.table.rows, 2);
                EXPECT_EQ(Shown()[2],
                          (QStringList{"2", QStringLiteral("呼び12"), "110", cut < 4 ? "21" : "2"}));
            }
        }
        symbol.folder.Write("S1.PMN", table + "\x1A\r\nM16 120   22 \r\n");
        symbol.Load();
        EXPECT_FALSE(symbol.table.whole) << "there it ends nothing";
        symbol.WriteTable(columns, {});
        symbol.folder.Write("S1.PMN", symbol.folder.Read("S1.PMN").chopped(2) + "\x1A");
        symbol.Load();
        EXPECT_TRUE(symbol.table.whole) << "a table without rows";
    }
}

TEST_F(DimensionTableTest, AWrongColumnIndexIsNotTheWholeFile) {
    symbol.WriteTableLines({"", "2", "1", "V12", "4", "0", "W", "7", "0"});
    symbol.Load();
    EXPECT_FALSE(symbol.table.whole) << "what follows reads as a table without rows";
    EditTable();
    symbol.Load();
    EXPECT_FALSE(symbol.table.whole);
}

TEST_F(DimensionTableTest, AFileThatCannotBeOpenedIsNotRead) {
    symbol.WriteTable(columns, {"M10 100   20 "});
    if (!OtherUser::IsPossible())
        GTEST_SKIP() << "only the superuser can be another user";
    symbol.Load();
    ASSERT_TRUE(symbol.table.whole);
    QFile::setPermissions(NativePath(symbol.folder.Path("S1.PMN")), {});
    QFile::setPermissions(NativePath(symbol.work.Path()), QFile::ReadGroup | QFile::WriteGroup);
    {
        const OtherUser other(NativePath(symbol.folder.Path()));
        ASSERT_TRUE(other.Changed());
        symbol.table = LoadDimensionTable(symbol.state, symbol.work, symbol.count, symbol.variables);
    }
    ExpectMessage();
    EXPECT_FALSE(symbol.table.whole);
}

} // namespace
} // namespace velmo
