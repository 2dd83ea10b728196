#include "table_run.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace velmo {
namespace {

using testing::ElementsAre;

const QStringList bolts = {"トルヴィク", "ボルト"};

// Values, names and distances go to the symbol, the variable and the table that they belong to.
class ValuesOfSymbolsTest : public AcceptanceTest {
protected:
    QString Symbol(const QString& name) { return session_.HomeDir() + "SMB\\BOLT\\" + name; }
    // Opens a symbol at once.
    void Open(const QString& name, const QString& library) {
        session_.Set("VlmNxt", "1");
        session_.WriteExchangeLines("velmo.ret2", {Symbol(name), library});
        StartWith("VLM_VEDT");
    }
    void Confirm(const QString& name, const QString& library) {
        Open(name, library);
        Run().Click("Vedt_OKBtn");
        EXPECT_EQ(End(), 0);
    }
    void Define(const QString& name, const QStringList& variables) {
        session_.WriteHomeLines("SMB\\BOLT\\" + name, QStringList("$VAR") + variables + QStringList("$GEO"));
    }
    void DefineLongAndShort() {
        Define("A.TXT", {R"(V1=PRO("a",1))", R"(V2=PRO("b",222))", R"(V3=PRO("c",333))"});
        Define("B.TXT", {R"(V1=PRO("x",7))"});
    }
    void ExpectOwnValuesAfterGrowing(const QString& library) {
        Define("B.TXT", {R"(V1=PRO("x",7))", R"(V2=PRO("y",8))", R"(V3=PRO("z",9))"});
        Open("B.TXT", library);
        EXPECT_THAT(Values(), ElementsAre("7", "8", "9"));
    }
};

TEST_F(ValuesOfSymbolsTest, ASymbolThatGrewTakesNoneOfALongerOne) {
    DefineLongAndShort();
    Confirm("A.TXT", "TOLVIKS");
    Confirm("B.TXT", "TOLVIKS");
    ExpectOwnValuesAfterGrowing("TOLVIKS");
}

TEST_F(ValuesOfSymbolsTest, ASymbolThatGrewTakesNoNamesForValues) {
    DefineLongAndShort();
    session_.Set("VlmMode", "3");
    Confirm("A.TXT", "VELMO");
    session_.Set("VlmMode", "2");
    Confirm("B.TXT", "VELMO");
    ExpectOwnValuesAfterGrowing("VELMO");
}

TEST_F(ValuesOfSymbolsTest, EnterKeepsADistanceMeasuredForATable) {
    session_.Set("VlmMode", "3");
    Open("HEX.TXT", "VELMO");
    ClickVariable(2, 0);
    Run().ClickAction("TB_POINT");
    EXPECT_EQ(End(), 0);
    session_.Set("VlmDist", "12.5");
    StartWith("VLM_VEDT");
    EXPECT_THAT(Values(), ElementsAre("10", "12.5", "SS400"));
    Run().Press("Return");
    EXPECT_THAT(Values(), ElementsAre("10", "12.5", "SS400"));
}

TEST_F(ValuesOfSymbolsTest, ADistanceIsMeasuredForTheAnswerThatAskedForIt) {
    session_.Set("VlmMode", "3");
    StartWith("VLM_MAIN");
    OpenEntry(bolts, "六角ボルト");
    ClickVariable(2, 0);
    Run().ClickAction("TB_POINT");
    Run().WaitUntilClosed("VLM_VEDT");
    EXPECT_EQ(session_.Setting("VlmMode"), QString("4"));
    OpenEntry(bolts, "アイボルト");
    Run().Click("Vedt_OKBtn");
    Run().WaitUntilClosed("VLM_VEDT");
    EXPECT_EQ(session_.Setting("VlmMode"), QString("3")) << "another symbol was confirmed since";
    Run().CloseWindow("VLM_MAIN");
    EXPECT_EQ(End(), 0);
}

TEST_F(ValuesOfSymbolsTest, AColumnOfExactlyTheNameGoesOverOneThatIsAlike) {
    Define("C.TXT", {R"(V1=PRO("d",1))"});
    session_.WriteHomeLines("SMB\\BOLT\\C.PMN",
                            {"", "3", "1", "ｺﾒﾝﾄ", "5", "0", "呼び", "2", "V0001", "5", "0", "d", "3",
                             "V0009", "5", "0", "D", "1", "   M1   11   99"});
    Open("C.TXT", "TOLVIKS");
    ClickTable(1, 1);
    EXPECT_THAT(Values(), ElementsAre("11"));
}

TEST_F(ValuesOfSymbolsTest, WithoutVariablesAClickLeavesTheChosenRow) {
    session_.WriteHomeLines("SMB\\BOLT\\C.TXT", {"no variables"});
    session_.WriteHome("SMB\\BOLT\\C.PMN", "\r\n1\r\n1\r\nV0001\r\n5\r\n0\r\nd\r\n2\r\n   11\r\n   12\r\n");
    Open("C.TXT", "TOLVIKS");
    ClickTable(2, 1);
    EXPECT_EQ(CurrentRow("Vedt_FlexGrid"), 1);
}

TEST_F(ValuesOfSymbolsTest, AForeignWorkDatabaseIsNoFaultOfAnAnswer) {
    Open("HEX.TXT", "TOLVIKS");
    session_.WriteExchangeLines("VELMONOW.mdb", {"no database at all"});
    Run().Click("Vedt_OKBtn");
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(session_.ReadExchangeLines("velmo.ret2")->first(), Symbol("HEX.TXT"));
    EXPECT_TRUE(session_.ExistsInExchange("VELMONOW.mdb")) << "it is somebody else's";
}

TEST_F(ValuesOfSymbolsTest, ATableThatIsReachedByALinkIsHeldAsWell) {
    session_.Set("VlmMode", "3");
    const QString home = session_.Home() + "/SMB/";
    ASSERT_TRUE(QDir().mkpath(home + "LINK"));
    ASSERT_TRUE(QFile::copy(home + "BOLT/HEX.TXT", home + "LINK/HEX.TXT"));
    ASSERT_TRUE(QFile::link(home + "BOLT/HEX.PMN", home + "LINK/HEX.PMN"));
    // What is behind the table's rows is asked about while the table is held.
    session_.WriteHomeLines("SMB\\BOLT\\HEX.PMN", HexTableLines() + QStringList("more"));
    session_.Set("VlmNxt", "1");
    session_.WriteExchangeLines("velmo.ret2", {session_.HomeDir() + "SMB\\LINK\\HEX.TXT", "VELMO"});
    StartWith("VLM_VEDT");
    Run().Click("Vedt_FlexGrid", Item::Cell(0, 1));
    Run().Type("11");
    Run().Press("Return");
    Run().Click("Vedt_OKBtn");
    EXPECT_TRUE(Run().WaitForMessage().text.contains("読めなかった部分"));

    const QTemporaryDir folder;
    const VelmoSession session(session_.Home(), folder.path());
    session.Set("VlmMode", "3");
    session.Set("VlmNxt", "1");
    session.WriteExchangeLines("velmo.ret2", {Symbol("HEX.TXT"), "VELMO"});
    VelmoRun other(session.LaunchOf(VELMO_PROGRAM, TEST_PLUGIN_FOLDER));
    other.WaitForWindow("VLM_VEDT");
    other.Click("Vedt_FlexGrid", Item::Cell(1, 1));
    other.Type("22");
    other.Press("Return");
    other.Click("Vedt_OKBtn");
    other.ExpectMessage("作業ファイルが作成できません");
    other.AnswerOk();
    Run().AnswerYes();
    EXPECT_EQ(End(), 0);
    EXPECT_TRUE(QFileInfo(home + "LINK/HEX.PMN").isSymLink());
    EXPECT_EQ(QDir(home + "LINK").entryList(QDir::Files), (QStringList{"HEX.PMN", "HEX.TXT"}));
}

} // namespace
} // namespace velmo
