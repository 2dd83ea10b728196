#include "acceptance_test.h"

#include <QDir>
#include <QFile>

namespace velmo {
namespace {

using testing::ElementsAre;

const QStringList bolts = {"トルヴィク", "ボルト"};

// Definition files that cannot be used.
class BadDefinitionTest : public AcceptanceTest {
protected:
    void SetUp() override {
        AcceptanceTest::SetUp();
        session_.WriteExchangeLines("velmo.ret2", {Hex(), "TOLVIKS"});
        choice_ = session_.ReadExchange("velmo.ret2");
    }
    QString Hex() const { return session_.HomeDir() + "SMB\\BOLT\\HEX.TXT"; }
    void Define(const QByteArray& variables) const {
        session_.WriteHome("SMB\\BOLT\\HEX.TXT", "$VAR\r\n" + variables + "$GEO\r\n");
    }
    void RemoveHex() const { QFile::remove(session_.Home() + "/SMB/BOLT/HEX.TXT"); }
    // The program that opens the symbol tells what is wrong and ends; nothing was answered or saved.
    void ExpectRefused(const QStringList& parts) {
        session_.Set("VlmNxt", "1");
        const QByteArray settings = session_.SettingsFile();
        ExpectFailedStart(QStringList{Hex()} + parts);
        EXPECT_EQ(session_.SettingsFile(), settings);
        EXPECT_EQ(session_.ReadExchange("velmo.ret2"), choice_);
        EXPECT_FALSE(session_.ExistsInExchange("velmo.ret"));
    }

    QByteArray choice_;
};

TEST_F(BadDefinitionTest, MissingInTheListIsToldAndTheBrowserStays) {
    RemoveHex();
    StartWith("VLM_MAIN");
    ChooseCategory(bolts);
    Run().Click("VlmPdfList", Item::Named("六角ボルト"));
    Run().ClickAction("Tbar_Open");
    Run().ExpectMessage(Hex() + "が見つかりません");
    Run().AnswerOk();
    OpenShownEntry("アイボルト");
    Run().Click("Vedt_OKBtn");
    EXPECT_EQ(End(), 0);
}

TEST_F(BadDefinitionTest, MissingWhenReopened) {
    RemoveHex();
    ExpectRefused({"53"});
}

TEST_F(BadDefinitionTest, AFolderOfItsNameInTheList) {
    RemoveHex();
    QDir().mkpath(session_.Home() + "/SMB/BOLT/HEX.TXT");
    StartWith("VLM_MAIN");
    ChooseCategory(bolts);
    Run().Click("VlmPdfList", Item::Named("六角ボルト"));
    Run().ClickAction("Tbar_Open");
    Run().ExpectMessage(Hex() + "が見つかりません");
    Run().AnswerOk();
    EXPECT_TRUE(Run().IsWindowShown("VLM_MAIN"));
}

TEST_F(BadDefinitionTest, AFolderOfItsNameWhenReopened) {
    RemoveHex();
    QDir().mkpath(session_.Home() + "/SMB/BOLT/HEX.TXT");
    ExpectRefused({"75"});
}

TEST_F(BadDefinitionTest, AMissingFolderWhenReopened) {
    session_.Set("VlmNxt", "1");
    session_.WriteExchangeLines("velmo.ret2", {session_.HomeDir() + "NIL\\X.TXT", "TOLVIKS"});
    ExpectFailedStart({"76", session_.HomeDir() + "NIL\\X.TXT"});
}

TEST_F(BadDefinitionTest, AVariableWithoutANumber) {
    Define("V1=PRO(\"d\",10)\r\nVx=PRO(\"L\",50)\r\n");
    ExpectRefused({"13", "Vx=PRO", "行: 3"});
}

TEST_F(BadDefinitionTest, AVariableWithoutEquals) {
    Define("V1 PRO(\"d\",10)\r\n");
    ExpectRefused({"'5'", "V1 PRO", "行: 2"});
}

TEST_F(BadDefinitionTest, AVariableNumberBeyondSixteenBits) {
    Define("V40000=PRO(\"d\",10)\r\n");
    ExpectRefused({"'6'", "行: 2"});
}

TEST_F(BadDefinitionTest, AnOpenQuoteWithoutAComma) {
    Define("V1=PRO(\"d 10)\r\n");
    ExpectRefused({"'5'", "行: 2"});
}

TEST_F(BadDefinitionTest, FiveHundredVariablesAreTheMost) {
    QByteArray variables;
    for (int i = 1; i <= 500; ++i)
        variables += "V" + QByteArray::number(i) + "=PRO(\"a\",1)\r\n";
    Define(variables);
    session_.Set("VlmNxt", "1");
    StartWith("VLM_VEDT");
    EXPECT_EQ(Values().size(), 500);
    Run().CloseWindow("VLM_VEDT");
    EXPECT_EQ(End(), 0);
    Define(variables + "V501=PRO(\"a\",1)\r\n");
    ExpectRefused({"'9'", "行: 502"});
}

TEST_F(BadDefinitionTest, EndsTheProgramWhenItIsOpenedFromTheBrowser) {
    Define("V=PRO(\"d\",10)\r\n");
    StartWith("VLM_MAIN");
    const QByteArray settings = session_.SettingsFile();
    ChooseCategory(bolts);
    Run().Click("VlmPdfList", Item::Named("六角ボルト"));
    Run().ClickAction("Tbar_Open");
    ExpectError({"13", Hex(), "行: 2"});
    EXPECT_EQ(End(), 1);
    EXPECT_EQ(session_.SettingsFile(), settings);
    EXPECT_EQ(session_.ReadExchange("velmo.ret2"), choice_);
}

TEST_F(BadDefinitionTest, BytesOutsideTheCodePageAreShownAndCannotBeAnswered) {
    // No character of code page 932 ends in FF.
    Define("V1=PRO(\"d\xFF\",10)\r\n");
    session_.Set("VlmNxt", "1");
    StartWith("VLM_VEDT");
    EXPECT_EQ(VariableText(1, 0), QString("V1(d\uFFFD)"));
    Run().Click("Vedt_OKBtn");
    ExpectError({"\uFFFD", "V1(d"});
    EXPECT_FALSE(session_.ExistsInExchange("velmo.ret"));
    EXPECT_EQ(session_.ReadExchange("velmo.ret2"), choice_);
    Run().Click("VEdt_CanBtn");
    EXPECT_EQ(End(), 0);
}

TEST_F(BadDefinitionTest, AnEmptyFileHasNoVariables) {
    session_.WriteHome("SMB\\BOLT\\HEX.TXT", "");
    session_.Set("VlmNxt", "1");
    StartWith("VLM_VEDT");
    EXPECT_THAT(Run().Texts("Vedt_NowFGrid"), ElementsAre(ElementsAre("変数がありません")));
}

// Table files that cannot be read to their end: nothing is said, the grid shows what there is.
class BadTableTest : public AcceptanceTest {
protected:
    void Open(const QStringList& lines) {
        session_.WriteHomeLines("SMB\\BOLT\\HEX.PMN", lines);
        session_.WriteExchangeLines("velmo.ret2", {session_.HomeDir() + "SMB\\BOLT\\HEX.TXT", "TOLVIKS"});
        session_.Set("VlmNxt", "1");
        StartWith("VLM_VEDT");
    }
    void ExpectNoTable() {
        EXPECT_THAT(TableRows(), ElementsAre(ElementsAre("テーブルはありません")));
        EXPECT_THAT(Values(), ElementsAre("10", "50", "SS400"));
        // Values are typed then.
        EnterValue(1, "11");
        Run().Click("Vedt_OKBtn");
        EXPECT_EQ(End(), 0);
        EXPECT_EQ(session_.Setting("SmbTbl1"), QString("11"));
    }
    QStringList HexWith(int line, const QString& text) const {
        QStringList lines = HexTableLines();
        lines[line - 1] = text;
        return lines;
    }
};

TEST_F(BadTableTest, CutShortInARowShowsTheRowsBefore) {
    Open(HexTableLines().first(20));
    EXPECT_THAT(TableRows(), ElementsAre(ElementsAre("M10", "10", "50")));
    ClickTable(1, 1);
    Run().Click("Vedt_OKBtn");
    EXPECT_EQ(End(), 0);
}

TEST_F(BadTableTest, CutShortInTheMiddleOfALine) {
    QStringList lines = HexTableLines();
    lines.last() = "   M14   ";
    Open(lines);
    EXPECT_THAT(TableRows(), ElementsAre(ElementsAre("M10", "10", "50"), ElementsAre("M12", "12", "50"),
                                         ElementsAre("M14", "", "")));
}

TEST_F(BadTableTest, CutShortBeforeItsRows) {
    Open(HexTableLines().first(18));
    ExpectNoTable();
}

TEST_F(BadTableTest, CutShortInTheColumns) {
    Open(HexTableLines().first(9));
    ExpectNoTable();
}

TEST_F(BadTableTest, Empty) {
    Open({});
    ExpectNoTable();
}

TEST_F(BadTableTest, AColumnCountThatIsNoNumber) {
    Open(HexWith(2, "三"));
    ExpectNoTable();
}

TEST_F(BadTableTest, AColumnCountThatIsTooHigh) {
    Open(HexWith(2, "4"));
    ExpectNoTable();
}

TEST_F(BadTableTest, AWidthThatIsNoNumber) {
    Open(HexWith(10, "広い"));
    ExpectNoTable();
}

TEST_F(BadTableTest, AWidthBelowZero) {
    Open(HexWith(10, "-5"));
    // The row stays as far as it was read.
    EXPECT_THAT(TableRows(), ElementsAre(ElementsAre("M10", "", "")));
}

TEST_F(BadTableTest, ARowCountThatIsNoNumber) {
    Open(HexWith(18, ""));
    ExpectNoTable();
}

TEST_F(BadTableTest, ARowCountBeyondSixteenBits) {
    Open(HexWith(18, "99999"));
    ExpectNoTable();
}

TEST_F(BadTableTest, ARowCountThatIsTooHighShowsTheRowsThereAre) {
    Open(HexWith(18, "9"));
    EXPECT_THAT(TableRows(), ElementsAre(ElementsAre("M10", "10", "50"), ElementsAre("M12", "12", "50")));
}

TEST_F(BadTableTest, ARowCountOfZeroOrLess) {
    Open(HexWith(18, "-1"));
    ExpectNoTable();
}

TEST_F(BadTableTest, FiveHundredAndOneColumnsAreTheMost) {
    const auto table = [](int columns) {
        QStringList lines = {"", QString::number(columns)};
        for (int column = 1; column <= columns; ++column)
            lines << QString::number(column) << QString("V%1").arg(column + 1000) << "1"
                  << "0"
                  << "x";
        return lines << "1" << QString(columns, 'a');
    };
    Open(table(501));
    EXPECT_EQ(Run().View("Vedt_FlexGrid")["cols"].toInt(), 501);
    Run().CloseWindow("VLM_VEDT");
    EXPECT_EQ(End(), 0);
    Open(table(502));
    ExpectNoTable();
}

TEST_F(BadTableTest, AColumnOfAnUnknownVariableIsShownOnly) {
    Open(HexWith(9, "V0099"));
    EXPECT_EQ(TableText(0, 2), QString("d"));
    EXPECT_EQ(TableText(1, 2), QString("10"));
    EXPECT_THAT(Values(), ElementsAre("10", "50", "SS400"));
}

TEST_F(BadTableTest, AFolderOfItsName) {
    QFile::remove(session_.Home() + "/SMB/BOLT/EYE.PMN");
    QDir().mkpath(session_.Home() + "/SMB/BOLT/EYE.PMN");
    StartWith("VLM_MAIN");
    OpenEntry(bolts, "アイボルト");
    EXPECT_THAT(TableRows(), ElementsAre(ElementsAre("テーブルはありません")));
}

TEST_F(BadTableTest, BytesOutsideTheCodePageAreOneCharacterEach) {
    StartWith("VLM_MAIN");
    Run().ClickAction("Tbar_Cancel");
    EXPECT_EQ(End(), 0);
    QByteArray bytes = session_.ReadHome("SMB\\BOLT\\HEX.PMN");
    bytes.replace("M12", "M\xFF"
                         "2");
    session_.WriteHome("SMB\\BOLT\\HEX.PMN", bytes);
    StartWith("VLM_MAIN");
    OpenEntry(bolts, "六角ボルト");
    EXPECT_THAT(TableRows(), ElementsAre(ElementsAre("M10", "10", "50"), ElementsAre("M\uFFFD"
                                                                                     "2",
                                                                                     "12", "50")));
    ClickTable(2, 1);
    EXPECT_THAT(Values(), ElementsAre("12", "50", "SS400"));
    Run().Click("Vedt_OKBtn");
    EXPECT_EQ(End(), 0);
}

TEST_F(BadTableTest, ALongerTextThanAFieldHoldsEndsTheReadingSilently) {
    QStringList lines = HexWith(5, "300");
    lines.resize(18);
    lines << QString(300, 'M');
    Open(lines);
    EXPECT_TRUE(Run().IsWindowShown("VLM_VEDT"));
    EXPECT_THAT(Values(), ElementsAre("10", "50", "SS400"));
}

} // namespace
} // namespace velmo
