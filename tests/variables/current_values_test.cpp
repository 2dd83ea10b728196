#include "symbol_sample.h"
#include "variables/current_values.h"

namespace velmo {
namespace {

const QString Comment = QStringLiteral("ｺﾒﾝﾄ");

// Variables W (V12), H (V3) and T (V5); the table holds the nominal, W and H.
class CurrentValuesTest : public testing::Test {
protected:
    CurrentValuesTest() {
        symbol.Define({QStringLiteral("V12=PRO(\"W\",100)"), QStringLiteral("V3=PRO(\"H\",20)"),
                       QStringLiteral("V5=PRO(\"T\",3)")});
    }

    void WriteRows(const QStringList& rows) {
        symbol.WriteTable({{Comment, 4, QStringLiteral("呼び")}, {"V12", 5, "W"}, {"V3", 5, "H"}}, rows);
        symbol.Load();
    }
    ValueGrids Grids(int tableRow) { return {symbol.work, symbol.table.cells, tableRow, symbol.variables}; }

    SymbolSample symbol;
};

TEST_F(CurrentValuesTest, ARowGoesToTheVariablesOfItsColumnNames) {
    WriteRows({"M10   10   1", "M12   12   2"});
    CopyTableRow(Grids(2));
    EXPECT_EQ(symbol.CurrentValues(), (QStringList{"12", "2", "3"}));
    EXPECT_EQ(symbol.variables.Text(0, 1), QString()) << "the comment column copies nothing";
    CopyTableRow(Grids(1));
    EXPECT_EQ(symbol.CurrentValues(), (QStringList{"10", "1", "3"}));
}

TEST_F(CurrentValuesTest, AnEmptyCellIsCopiedToo) {
    WriteRows({"M10        1"});
    CopyTableRow(Grids(1));
    EXPECT_EQ(symbol.CurrentValues(), (QStringList{"", "1", "3"}));
}

TEST_F(CurrentValuesTest, AColumnWhoseNameIsNoVariablesNameCopiesNothing) {
    WriteRows({"M10   10   1"});
    symbol.table.cells.SetText(0, 2, u"renamed");
    CopyTableRow(Grids(1));
    EXPECT_EQ(symbol.CurrentValues(), (QStringList{"100", "1", "3"}));
}

TEST_F(CurrentValuesTest, NamesAreTrimmedAndCompareAsJapaneseDoes) {
    WriteRows({"M10   10   1"});
    symbol.table.cells.SetText(0, 2, u"  ｗ ");
    CopyTableRow(Grids(1));
    EXPECT_EQ(symbol.CurrentValues(), (QStringList{"10", "1", "3"}));
}

TEST_F(CurrentValuesTest, TheExactNameGoesFirst) {
    symbol.Define({QStringLiteral("V1=PRO(\"D\",1)"), QStringLiteral("V2=PRO(\"d\",2)"),
                   QStringLiteral("V3=PRO(\"Ｄ\",3)")});
    symbol.WriteTable({{Comment, 4, QStringLiteral("呼び")}, {"V2", 5, "d"}, {"V1", 5, "D"}, {"V3", 5, "Ｄ"}},
                      {"M10   20   10   30"});
    symbol.Load();
    CopyTableRow(Grids(1));
    EXPECT_EQ(symbol.CurrentValues(), (QStringList{"10", "20", "30"}));
    // Where none is exact, the first that compares equal.
    symbol.table.cells.SetText(0, 2, u"ｄ");
    symbol.table.cells.SetText(1, 2, u"99");
    symbol.table.cells.SetText(0, 3, u"other");
    CopyTableRow(Grids(1));
    EXPECT_EQ(symbol.CurrentValues(), (QStringList{"99", "20", "30"}));
}

TEST_F(CurrentValuesTest, AVariableNamedLikeTheCommentColumnIsFound) {
    symbol.Define({QStringLiteral("V12=PRO(\"呼び\",100)")});
    symbol.WriteTable({{Comment, 4, QStringLiteral("呼び")}}, {"M10"});
    symbol.Load();
    CopyTableRow(Grids(1));
    EXPECT_EQ(symbol.CurrentValues(), (QStringList{"M10"}));
}

TEST_F(CurrentValuesTest, AQuoteInAColumnNameIsAnError) {
    WriteRows({"M10   10   1"});
    symbol.table.cells.SetText(0, 2, u"5'");
    EXPECT_EQ(ErrorOf([&] { CopyTableRow(Grids(1)); }).Number(), ErrorNumber::QuerySyntax);
}

TEST_F(CurrentValuesTest, TheTableAllowsTheValuesOfTheNominalGroupOnceEach) {
    WriteRows({"M10   10   1", "M12   12   2", "M10   10   3", "M10    8   3", "m10    9   4"});
    EXPECT_EQ(AllowedValues(Grids(1), 1), (QStringList{"10", "8"}));
    EXPECT_EQ(AllowedValues(Grids(1), 2), (QStringList{"1", "3"}));
    EXPECT_EQ(AllowedValues(Grids(2), 1), (QStringList{"12"}));
    EXPECT_EQ(AllowedValues(Grids(3), 1), (QStringList{"9"})) << "case tells groups apart";
}

TEST_F(CurrentValuesTest, WithoutAnExactGroupTheOnesThatCompareEqualCount) {
    WriteRows({"M10   10   1", "m10    9   4", "M12   12   2"});
    symbol.table.cells.SetText(1, 1, u"ｍ10");
    EXPECT_EQ(AllowedValues(Grids(1), 1), (QStringList{"10", "9"}));
    ApplyAllowedValue(Grids(1), 1, "9");
    EXPECT_EQ(symbol.CurrentValues(), (QStringList{"9", "4", "3"}));
}

TEST_F(CurrentValuesTest, AChoiceTakesARowOfTheExactGroup) {
    WriteRows({"m10    x   7", "m10    8   1", "M10    9   2", "M10    8   3"});
    ApplyAllowedValue(Grids(2), 1, "8");
    EXPECT_EQ(symbol.CurrentValues(), (QStringList{"8", "3", "3"}))
        << "what is no number is not even looked at";
    ApplyAllowedValue(Grids(2), 2, "1");
    EXPECT_EQ(symbol.CurrentValues(), (QStringList{"8", "3", "3"})) << "only the other group has it";
}

TEST_F(CurrentValuesTest, EqualMeansTheSameText) {
    WriteRows({"M10   10   1", "M10 10.0   1"});
    EXPECT_EQ(AllowedValues(Grids(1), 1), (QStringList{"10", "10.0"}));
}

TEST_F(CurrentValuesTest, AVariableWithoutAColumnIsNotGoverned) {
    WriteRows({"M10   10   1"});
    EXPECT_TRUE(AllowedValues(Grids(1), 3).isEmpty());
}

TEST_F(CurrentValuesTest, ATableThatIsNoneGovernsNothing) {
    symbol.Load();
    EXPECT_TRUE(symbol.table.cells.IsMessage());
    EXPECT_TRUE(AllowedValues(Grids(1), 1).isEmpty());
}

TEST_F(CurrentValuesTest, ATableCutShortInItsColumnsGovernsNothing) {
    symbol.WriteTableLines({"", "2", "1", "V12", "4", "0", "W", "2"});
    symbol.Load();
    EXPECT_TRUE(AllowedValues(Grids(1), 1).isEmpty());
}

TEST_F(CurrentValuesTest, TheEmptyRowOfModeFourGovernsNothing) {
    symbol.state.RunMode = run_mode::ReturnFromMeasure;
    WriteRows({});
    EXPECT_EQ(symbol.table.rows, 1);
    EXPECT_TRUE(AllowedValues(Grids(1), 1).isEmpty());
}

TEST_F(CurrentValuesTest, AQuoteInTheNominalIsAnError) {
    WriteRows({"5'x    1   1"});
    EXPECT_EQ(ErrorOf([&] { AllowedValues(Grids(1), 1); }).Number(), ErrorNumber::QuerySyntax);
    EXPECT_EQ(ErrorOf([&] { ApplyAllowedValue(Grids(1), 1, "1"); }).Number(), ErrorNumber::QuerySyntax);
}

TEST_F(CurrentValuesTest, AChoiceTakesEveryGovernedVariableFromItsRow) {
    WriteRows({"M10   10   1", "M12    8   9", "M10    8   3", "M10    8   4"});
    ApplyAllowedValue(Grids(1), 1, "8");
    EXPECT_EQ(symbol.CurrentValues(), (QStringList{"8", "3", "3"}))
        << "the first row of the group that has it";
}

TEST_F(CurrentValuesTest, AChoiceComparesAsNumbers) {
    WriteRows({"M10    8   1", "M10 10.0   2"});
    ApplyAllowedValue(Grids(1), 1, " 10 ");
    EXPECT_EQ(symbol.CurrentValues(), (QStringList{"10.0", "2", "3"}));
}

TEST_F(CurrentValuesTest, AChoiceThatNoRowHasChangesNothing) {
    WriteRows({"M10    8   1"});
    ApplyAllowedValue(Grids(1), 1, "9");
    EXPECT_EQ(symbol.CurrentValues(), (QStringList{"100", "20", "3"}));
}

TEST_F(CurrentValuesTest, ValuesThatAreNoNumbersAreAnError) {
    WriteRows({"M10    x   1", "M10    8   2"});
    EXPECT_EQ(ErrorOf([&] { ApplyAllowedValue(Grids(1), 1, "8"); }).Number(), ErrorNumber::TypeMismatch);
    EXPECT_EQ(ErrorOf([&] { ApplyAllowedValue(Grids(1), 2, "x"); }).Number(), ErrorNumber::TypeMismatch);
    EXPECT_EQ(symbol.CurrentValues(), (QStringList{"100", "20", "3"}));
}

TEST_F(CurrentValuesTest, AChoiceReachesThirtyVariablesAndNoMore) {
    QStringList lines{QStringLiteral("V1=PRO(\"W\",0)")};
    for (int i = 2; i <= 30; ++i)
        lines << QStringLiteral("V%1=PRO(\"N%1\",0)").arg(i);
    symbol.Define(lines);
    symbol.WriteTable({{Comment, 4, "N"}, {"V1", 3, "W"}, {"V30", 3, "N30"}}, {"M10   7  9"});
    symbol.Load();
    ApplyAllowedValue(Grids(1), 1, "7");
    EXPECT_EQ(symbol.variables.Text(30, 1), QStringLiteral("9"));

    symbol.Define(lines << QStringLiteral("V31=PRO(\"N31\",0)"));
    symbol.Load();
    EXPECT_EQ(ErrorOf([&] { ApplyAllowedValue(Grids(1), 1, "7"); }).Number(),
              ErrorNumber::SubscriptOutOfRange);
    EXPECT_EQ(symbol.variables.Text(1, 1), QStringLiteral("0"));
}

} // namespace
} // namespace velmo
