#include "acceptance_test.h"

namespace velmo {
namespace {

using testing::ElementsAre;

// Which values a variable of the table may have, and what choosing one does.
class ValuesTest : public AcceptanceTest {
protected:
    // HEX with other rows of its three columns (widths 6, 5 and 5).
    void OpenWithRows(const QStringList& rows) {
        session_.WriteHomeLines("SMB\\BOLT\\HEX.PMN", HexTableLines().first(17)
                                                          << QString::number(rows.size()) << rows);
        OpenHex();
    }
    void OpenHex() {
        session_.WriteExchangeLines("velmo.ret2", {session_.HomeDir() + "SMB\\BOLT\\HEX.TXT", "TOLVIKS"});
        session_.Set("VlmNxt", "1");
        StartWith("VLM_VEDT");
    }
};

TEST_F(ValuesTest, AreComparedAsNumbers) {
    OpenWithRows({"   M10   10 50.0", "   M10   11   60", "   M10   12   50"});
    ClickVariable(2, 1);
    EXPECT_THAT(Run().ComboItems("CurCmb"), ElementsAre("50.0", "60", "50"));
    Run().ChooseInCombo("CurCmb", "60");
    EXPECT_THAT(Values(), ElementsAre("11", "60", "SS400"));
    ClickVariable(2, 1);
    Run().ChooseInCombo("CurCmb", "50");
    // The first row whose number is the same.
    EXPECT_THAT(Values(), ElementsAre("10", "50.0", "SS400"));
}

TEST_F(ValuesTest, ThatAreNoNumbersAreAnError) {
    OpenWithRows({"   M10   10 長い", "   M10   11   60"});
    ClickVariable(2, 1);
    Run().ChooseInCombo("CurCmb", "60");
    ExpectError({"'13'"});
    EXPECT_TRUE(Run().IsWindowShown("VLM_VEDT"));
    EXPECT_THAT(Values(), ElementsAre("10", "50", "SS400"));
}

TEST_F(ValuesTest, GroupsAreShownAndLookedUpExactly) {
    OpenWithRows({"   M10   10   50", "   Ｍ10   11   60", "   m10   12   70"});
    EXPECT_THAT(TableRows(), ElementsAre(ElementsAre("M10", "10", "50"), ElementsAre("Ｍ10", "11", "60"),
                                         ElementsAre("m10", "12", "70")));
    ClickVariable(2, 1);
    EXPECT_THAT(Run().ComboItems("CurCmb"), ElementsAre("50"));
    Run().Press("Escape");
    ClickTable(3, 1);
    ClickVariable(2, 1);
    EXPECT_THAT(Run().ComboItems("CurCmb"), ElementsAre("70"));
}

TEST_F(ValuesTest, NamesThatDifferInCaseAreTwoVariables) {
    session_.WriteHomeLines("SMB\\BOLT\\HEX.TXT", {"$VAR", R"(V1=PRO("D",1))", R"(V2=PRO("d",2))", "$GEO"});
    QStringList lines = HexTableLines();
    lines[11] = "D";
    lines[16] = "d";
    session_.WriteHomeLines("SMB\\BOLT\\HEX.PMN", lines);
    OpenHex();
    ClickTable(2, 1);
    EXPECT_THAT(Values(), ElementsAre("12", "50"));
}

TEST_F(ValuesTest, OfTheChosenGroupAreOffered) {
    OpenHex();
    ClickVariable(2, 1);
    EXPECT_THAT(Run().ComboItems("CurCmb"), ElementsAre("50", "60"));
    Run().Press("Escape");
    ClickTable(2, 1);
    ClickVariable(1, 1);
    EXPECT_THAT(Run().ComboItems("CurCmb"), ElementsAre("12"));
}

TEST_F(ValuesTest, AGroupWithAQuoteIsAnErrorAndTheWindowStays) {
    OpenWithRows({"  1/2'   10   50"});
    ClickVariable(2, 1);
    ExpectError({"3075"});
    EXPECT_TRUE(Run().IsWindowShown("VLM_VEDT"));
    ClickTable(1, 1);
    Run().Click("Vedt_OKBtn");
    EXPECT_EQ(End(), 0);
}

TEST_F(ValuesTest, MoreThanThirtyVariablesAreTooManyForAChoice) {
    QStringList lines = {"$VAR"};
    for (int number = 1; number <= 31; ++number)
        lines << QString(R"(V%1=PRO("n%1",%1))").arg(number);
    session_.WriteHomeLines("SMB\\BOLT\\HEX.TXT", lines << "$GEO");
    OpenHex();
    ClickVariable(2, 1);
    Run().ChooseInCombo("CurCmb", "60");
    ExpectError({"'9'"});
    EXPECT_TRUE(Run().IsWindowShown("VLM_VEDT"));
    EXPECT_EQ(Values().value(1), QString("2"));
}

TEST_F(ValuesTest, ThirtyVariablesAreNotTooMany) {
    QStringList lines = {"$VAR"};
    for (int number = 1; number <= 30; ++number)
        lines << QString(R"(V%1=PRO("n%1",%1))").arg(number);
    session_.WriteHomeLines("SMB\\BOLT\\HEX.TXT", lines << "$GEO");
    OpenHex();
    ClickVariable(2, 1);
    Run().ChooseInCombo("CurCmb", "60");
    EXPECT_EQ(Values().first(3), QStringList({"10", "60", "3"}));
}

TEST_F(ValuesTest, FullWidthCharactersCountAsOne) {
    OpenWithRows({"呼び一二三四   10   50"});
    EXPECT_THAT(TableRows(), ElementsAre(ElementsAre("呼び一二三四", "10", "50")));
}

TEST_F(ValuesTest, ADefinitionIsReadByItsLines) {
    session_.WriteHomeLines("SMB\\BOLT\\EYE.TXT",
                            {"V9=PRO(\"before\",1)", "$VAR ", "$VAR", R"(V3 = 5 + PRO("D", 20) + 1)",
                             R"(V5=PRO("A,B",7))", R"(V6=PRO("X",8)", "V7=10", R"(v12=PRO("W",100))", "",
                             R"(V12=PRO("W",100))", "$GEO", R"(V13=PRO("after",1))"});
    StartWith("VLM_MAIN");
    OpenEntry({"トルヴィク", "ボルト"}, "アイボルト");
    EXPECT_THAT(Run().Texts("Vedt_NowFGrid"),
                ElementsAre(ElementsAre("V3(D)", " 20"), ElementsAre("V5(A,B)", "7"),
                            ElementsAre("V6(X)", "8"), ElementsAre("V12(W)", "100")));
    Run().Click("Vedt_OKBtn");
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(session_.ReadExchangeLines("velmo.ret"),
              QStringList({"4", "V3(D)", " 20", "V5(A,B)", "7", "V6(X)", "8", "V12(W)", "100"}));
}

TEST_F(ValuesTest, TheTablesNameOfAVariableIsTheOneThatCounts) {
    QStringList lines = HexTableLines();
    lines[11] = "呼び径";
    session_.WriteHomeLines("SMB\\BOLT\\HEX.PMN", lines);
    OpenHex();
    EXPECT_EQ(TableText(0, 2), QString("呼び径"));
    // The label stays as the definition has it.
    EXPECT_EQ(VariableText(1, 0), QString("V1(d)"));
    ClickTable(2, 1);
    EXPECT_THAT(Values(), ElementsAre("12", "50", "SS400"));
}

TEST_F(ValuesTest, TheWorkDatabaseHoldsEveryRowOfTheTable) {
    OpenHex();
    EXPECT_THAT(session_.QueryExchange("VELMONOW.mdb", "SELECT ValID, Val1, Val2, Val3 FROM PmnTable"),
                ElementsAre(ElementsAre("1", "M10", "10", "50"), ElementsAre("2", "M10", "10", "60"),
                            ElementsAre("3", "M12", "12", "50"), ElementsAre("4", "M12", "12", "80")));
    EXPECT_THAT(
        session_.QueryExchange("VELMONOW.mdb",
                               "SELECT ValNum, ValNo, ValName, ValDis, ValLen, ValSmall FROM NowTable"),
        ElementsAre(ElementsAre("0", "0", "呼び", "1", "6", "0"), ElementsAre("1", "1", "d", "2", "5", "1"),
                    ElementsAre("2", "2", "L", "3", "5", "0"),
                    ElementsAre("3", "3", "材質", "0", "10", "0")));
}

} // namespace
} // namespace velmo
