#include "symbol_sample.h"
#include "variables/variable_answer.h"

namespace velmo {
namespace {

class VariableAnswerTest : public testing::Test {
protected:
    VariableAnswerTest() {
        symbol.Define({QStringLiteral("V1=PRO(\"A\",10)"), QStringLiteral("V2=PRO(\"B\", 20)"),
                       QStringLiteral("V3=PRO(\"C\",\"x\")")});
        symbol.Load();
    }

    SymbolSample symbol;
};

TEST_F(VariableAnswerTest, WritesEveryVariableAndTheChoice) {
    symbol.state.UserLibrary = true;
    WriteAnswer(symbol.state, symbol.variables);
    EXPECT_EQ(symbol.folder.Read("velmo.ret"), "3\r\nV1(A)\r\n10\r\nV2(B)\r\n 20\r\nV3(C)\r\n\"x\"\r\n");
    EXPECT_EQ(symbol.folder.Read("velmo.ret2"), symbol.state.SymbolFile.toLatin1() + "\r\nVELMO\r\n");
    symbol.state.UserLibrary = false;
    WriteAnswer(symbol.state, symbol.variables);
    EXPECT_EQ(symbol.folder.Read("velmo.ret2"), symbol.state.SymbolFile.toLatin1() + "\r\nTOLVIKS\r\n");
}

TEST_F(VariableAnswerTest, WithoutVariablesTheCountIsZero) {
    symbol.variables.BecomeMessage(QStringLiteral("変数がありません"));
    WriteAnswer(symbol.state, symbol.variables);
    EXPECT_EQ(symbol.folder.Read("velmo.ret"), "0\r\n");
    EXPECT_EQ(FirstRowWithoutValue(symbol.variables), 0);
    EXPECT_FALSE(FindForeignCharacter(symbol.state, symbol.variables));
}

TEST_F(VariableAnswerTest, FindsTheFirstRowWithoutAValue) {
    EXPECT_EQ(FirstRowWithoutValue(symbol.variables), 0);
    symbol.variables.SetText(3, 1, u"");
    EXPECT_EQ(FirstRowWithoutValue(symbol.variables), 3);
    symbol.variables.SetText(2, 1, u"");
    EXPECT_EQ(FirstRowWithoutValue(symbol.variables), 2);
    symbol.variables.SetText(2, 1, u" ");
    EXPECT_EQ(FirstRowWithoutValue(symbol.variables), 3) << "a blank is a value";
}

TEST_F(VariableAnswerTest, FindsACharacterThatTheFilesCannotHold) {
    EXPECT_FALSE(FindForeignCharacter(symbol.state, symbol.variables));
    symbol.variables.SetText(2, 1, u"1é😀");
    std::optional<ForeignCharacter> found = FindForeignCharacter(symbol.state, symbol.variables);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->character, QStringLiteral("é"));
    EXPECT_EQ(found->row, 2);
    EXPECT_EQ(found->column, 1);
    EXPECT_EQ(found->field, QStringLiteral("V2(B)"));

    symbol.variables.SetText(1, 0, u"V1(\uFFFD)");
    found = FindForeignCharacter(symbol.state, symbol.variables);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->row, 1);
    EXPECT_EQ(found->column, 0);

    symbol.state.SymbolFile += u'é';
    found = FindForeignCharacter(symbol.state, symbol.variables);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->row, 0);
    EXPECT_EQ(found->field, symbol.state.SymbolFile);
}

} // namespace
} // namespace velmo
