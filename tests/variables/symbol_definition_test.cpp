#include "symbol_sample.h"
#include "variables/symbol_definition.h"

namespace velmo {
namespace {

VariableLine Parsed(const QString& line) {
    const std::optional<VariableLine> variable = ParseVariableLine(line);
    if (!variable) {
        ADD_FAILURE() << "no variable: " << line.toStdString();
        return {};
    }
    return *variable;
}

struct LineCase {
    const char* line;
    int number;
    const char* name;
    const char* value;
};

class VariableLines : public testing::TestWithParam<LineCase> {};

TEST_P(VariableLines, AreTakenApart) {
    const VariableLine variable = Parsed(QString::fromUtf8(GetParam().line));
    EXPECT_EQ(variable.number, GetParam().number);
    EXPECT_EQ(variable.name, QString::fromUtf8(GetParam().name));
    EXPECT_EQ(variable.value, QString::fromUtf8(GetParam().value));
}

INSTANTIATE_TEST_SUITE_P(
    SymbolDefinition, VariableLines,
    testing::Values(LineCase{R"(V12=PRO("W",100))", 12, "W", "100"},
                    LineCase{R"(V3 = 5 + PRO("D",20))", 3, "D", "20"},
                    LineCase{R"(V 7 =PRO("D",20)*2+(1))", 7, "D", "20"}, LineCase{R"(V4=PRO(20))", 4, "", ""},
                    LineCase{R"(V4=PRO(20,30))", 4, "", "30"}, LineCase{R"(V5=PRO("A,B",7))", 5, "A,B", "7"},
                    LineCase{R"(V6=PRO("X",7)", 6, "X", "7"}, LineCase{R"(V6=PRO("X")", 6, "X", ""},
                    LineCase{R"(V6=PRO("X"))", 6, "X", ""}, LineCase{R"(V1=PRO("W", 100))", 1, "W", " 100"},
                    LineCase{R"(V1=PRO(" W ",1 ))", 1, " W ", "1 "}, LineCase{R"(V1=PRO("W",))", 1, "W", ""},
                    LineCase{R"(V1=PRO("W,5))", 1, "W", "5"}, LineCase{R"(V1=PRO("W,)", 1, "W", ""},
                    LineCase{R"(V1=PRO("",9))", 1, "", "9"}, LineCase{R"(V-2=PRO("W",9))", -2, "W", "9"},
                    LineCase{R"(V1="PRO"+PRO("W",9),PRO("X",8))", 1, "W", "9"},
                    LineCase{R"(V1=PRO("幅 ｶﾅ","全角"))", 1, "幅 ｶﾅ", "\"全角\""},
                    LineCase{R"(V2.5=PRO("W",1))", 2, "W", "1"}));

class OtherLines : public testing::TestWithParam<const char*> {};

TEST_P(OtherLines, DeclareNoVariable) {
    EXPECT_FALSE(ParseVariableLine(QString::fromUtf8(GetParam())));
}

INSTANTIATE_TEST_SUITE_P(SymbolDefinition, OtherLines,
                         testing::Values("", " V1=PRO(\"W\",1)", "v12=PRO(\"W\",100)", "V7=10",
                                         "V7=pro(\"W\",1)", "; V1", "$END", "V1=PRO (\"W\",1)"));

struct WrongCase {
    const char* line;
    ErrorNumber number;
};

class WrongLines : public testing::TestWithParam<WrongCase> {};

TEST_P(WrongLines, AreErrors) {
    const RuntimeError error = ErrorOf([] { ParseVariableLine(QString::fromUtf8(GetParam().line)); });
    EXPECT_EQ(error.Number(), GetParam().number);
}

INSTANTIATE_TEST_SUITE_P(SymbolDefinition, WrongLines,
                         testing::Values(WrongCase{"V12", ErrorNumber::InvalidArgument},
                                         WrongCase{"Value of W", ErrorNumber::InvalidArgument},
                                         WrongCase{"V=PRO(\"W\",1)", ErrorNumber::TypeMismatch},
                                         WrongCase{"V  =10", ErrorNumber::TypeMismatch},
                                         WrongCase{"Vx=10", ErrorNumber::TypeMismatch},
                                         WrongCase{"V99999=PRO(\"W\",1)", ErrorNumber::Overflow},
                                         WrongCase{"V1=PRO(\"W)", ErrorNumber::InvalidArgument},
                                         WrongCase{"V1=PRO(1,\"W)", ErrorNumber::InvalidArgument}));

TEST(SymbolDefinition, FillsNowTableAndTheGrid) {
    SymbolSample symbol;
    symbol.Define({QStringLiteral("V12=PRO(\"W\",100)"), QStringLiteral("V7=10"), QStringLiteral("* 注釈"),
                   QString(), QStringLiteral("v12=PRO(\"w\",100)"),
                   QStringLiteral("V3 = 5 + PRO(\"D\", 20)")});
    symbol.Load();
    EXPECT_EQ(symbol.count, 2);
    EXPECT_EQ(symbol.variables.Rows(), 3);
    EXPECT_EQ(symbol.variables.Text(1, 0), QStringLiteral("V12(W)"));
    EXPECT_EQ(symbol.variables.Text(1, 1), QStringLiteral("100"));
    EXPECT_EQ(symbol.variables.Text(2, 0), QStringLiteral("V3(D)"));
    EXPECT_EQ(symbol.variables.Text(2, 1), QStringLiteral(" 20"));
    const Rows expected{
        {"0", "0", "", "0", "0", "0"}, {"1", "12", "W", "0", "10", "0"}, {"2", "3", "D", "0", "10", "0"}};
    EXPECT_EQ(symbol.NowTable(), expected);
}

TEST(SymbolDefinition, ShowsNamesWhenTheTableIsEdited) {
    SymbolSample symbol;
    symbol.state.RunMode = run_mode::UserLibrary;
    symbol.Define({QStringLiteral("V12=PRO(\"W\",100)")});
    symbol.Load();
    EXPECT_EQ(symbol.variables.Text(1, 0), QStringLiteral("V12"));
    EXPECT_EQ(symbol.variables.Text(1, 1), QStringLiteral("W"));
}

TEST(SymbolDefinition, WithoutVariablesTheGridSaysSo) {
    for (const QStringList& lines :
         {QStringList{}, QStringList{QStringLiteral("V1=PRO(\"W\",1)")},
          QStringList{QStringLiteral("$VAR "), QStringLiteral("V1=PRO(\"W\",1)")},
          QStringList{QStringLiteral("$var"), QStringLiteral("V1=PRO(\"W\",1)")},
          QStringList{QStringLiteral("$VAR"), QStringLiteral("V7=10"), QStringLiteral("$GEO")},
          QStringList{QStringLiteral("$VAR"), QStringLiteral("$GEO"), QStringLiteral("V1=PRO(\"W\",1)")}}) {
        SymbolSample symbol;
        symbol.DefineExactly(lines);
        symbol.Load();
        EXPECT_EQ(symbol.count, 0);
        EXPECT_TRUE(symbol.variables.IsMessage());
        EXPECT_EQ(SymbolSample::Texts(symbol.variables), Rows{{QStringLiteral("変数がありません")}});
        EXPECT_EQ(symbol.NowTable().size(), 1);
    }
}

TEST(SymbolDefinition, WithoutTheGeometryItIsReadToItsEnd) {
    SymbolSample symbol;
    symbol.folder.Write(QStringLiteral("S1.TXT"), "$VAR\r\nV1=PRO(\"W\",1)\r\n$GEO \r\nV2=PRO(\"H\",2)");
    symbol.Load();
    EXPECT_EQ(symbol.count, 2);
    EXPECT_EQ(symbol.variables.Text(2, 0), QStringLiteral("V2(H)"));
}

TEST(SymbolDefinition, BytesThatMeanNothingAreReadAsReplacements) {
    SymbolSample symbol;
    symbol.folder.Write(QStringLiteral("S1.TXT"), "$VAR\r\nV1=PRO(\"\xA0W\",1)\r\n");
    symbol.Load();
    EXPECT_EQ(symbol.variables.Text(1, 0), QStringLiteral("V1(\uFFFDW)"));
}

TEST(SymbolDefinition, AFileThatIsMissingIsAnErrorBeforeTheWorkDatabaseIsMade) {
    SymbolSample symbol;
    symbol.folder.Write(QStringLiteral("VELMONOW.mdb"), "old");
    const RuntimeError error = ErrorOf([&] { symbol.Load(); });
    EXPECT_EQ(error.Number(), ErrorNumber::FileNotFound);
    EXPECT_EQ(error.File(), symbol.state.SymbolFile);
    EXPECT_EQ(symbol.folder.Read(QStringLiteral("VELMONOW.mdb")), "old");
}

TEST(SymbolDefinition, AWrongLineIsNamed) {
    SymbolSample symbol;
    symbol.Define({QStringLiteral("V1=PRO(\"W\",1)"), QStringLiteral("Vx=PRO(\"H\",1)")});
    const RuntimeError error = ErrorOf([&] { symbol.Load(); });
    EXPECT_EQ(error.Number(), ErrorNumber::TypeMismatch);
    EXPECT_EQ(error.File(), symbol.state.SymbolFile);
    EXPECT_EQ(error.Line(), 4);
    EXPECT_EQ(error.Detail(), QStringLiteral("Vx=PRO(\"H\",1)"));
}

TEST(SymbolDefinition, ANameIsAtMost255CharactersLong) {
    SymbolSample symbol;
    symbol.Define({QStringLiteral("V1=PRO(\"%1\",1)").arg(QString(255, u'長'))});
    symbol.Load();
    EXPECT_EQ(symbol.count, 1);
    symbol.Define({QStringLiteral("V1=PRO(\"%1\",1)").arg(QString(256, u'長'))});
    const RuntimeError error = ErrorOf([&] { symbol.Load(); });
    EXPECT_EQ(error.Number(), ErrorNumber::TextTooLong);
    EXPECT_EQ(error.File(), symbol.state.SymbolFile);
    EXPECT_EQ(error.Line(), 3);
    EXPECT_LT(error.Detail().size(), 100);
}

TEST(SymbolDefinition, HoldsFiveHundredVariablesAndNoMore) {
    SymbolSample symbol;
    QStringList lines;
    for (int i = 1; i <= 500; ++i)
        lines << QStringLiteral("V%1=PRO(\"N%1\",%1)").arg(i);
    symbol.Define(lines);
    symbol.Load();
    EXPECT_EQ(symbol.count, 500);
    EXPECT_EQ(symbol.variables.Text(500, 0), QStringLiteral("V500(N500)"));
    EXPECT_EQ(symbol.NowTable().size(), 501);

    lines << QStringLiteral("V501=PRO(\"N501\",501)");
    symbol.Define(lines);
    const RuntimeError error = ErrorOf([&] { symbol.Load(); });
    EXPECT_EQ(error.Number(), ErrorNumber::SubscriptOutOfRange);
    EXPECT_EQ(error.Line(), 503);
}

} // namespace
} // namespace velmo
