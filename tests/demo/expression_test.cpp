#include "drawing/expression.h"
#include "platform/runtime_error.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

DrawingNames Names() {
    DrawingNames names;
    names.DefineText(QStringLiteral("d"), QStringLiteral(" 10"));
    names.DefineText(QStringLiteral("D"), QStringLiteral("20.5"));
    names.DefineText(QStringLiteral("mat"), QStringLiteral("SS400"));
    names.Define(QStringLiteral("r_2"), 2.5);
    return names;
}

double Value(const char* text) {
    return EvaluateExpression(QString::fromUtf8(text), Names());
}

QString Failure(const char* text) {
    try {
        Value(text);
    } catch (const RuntimeError& error) {
        return error.Detail();
    }
    return QStringLiteral("no error");
}

TEST(Expression, FollowsPrecedenceFromTheLeft) {
    EXPECT_DOUBLE_EQ(Value("1+2*3"), 7);
    EXPECT_DOUBLE_EQ(Value("(1+2)*3"), 9);
    EXPECT_DOUBLE_EQ(Value("10-4-3"), 3);
    EXPECT_DOUBLE_EQ(Value("12/4/3"), 1);
    EXPECT_DOUBLE_EQ(Value("-2*-3"), 6);
    EXPECT_DOUBLE_EQ(Value("2--.5"), 2.5);
}

TEST(Expression, KnowsNamesWithTheirCase) {
    EXPECT_DOUBLE_EQ(Value("d/2"), 5);
    EXPECT_DOUBLE_EQ(Value("-D+r_2"), -18);
}

TEST(Expression, KnowsFunctionsInDegrees) {
    EXPECT_DOUBLE_EQ(Value("sqrt(16)+abs(-3)"), 7);
    EXPECT_DOUBLE_EQ(Value("min(d,4)*max(d,4)"), 40);
    EXPECT_NEAR(Value("sin(30)"), 0.5, 1e-12);
    EXPECT_NEAR(Value("cos(60)*tan(45)"), 0.5, 1e-12);
    EXPECT_DOUBLE_EQ(Value("sin(180)"), 0);
    EXPECT_DOUBLE_EQ(Value("atan2(1,-1)"), 135);
}

TEST(Expression, SaysWhatIsWrong) {
    EXPECT_EQ(Failure("x+1"), QStringLiteral("「x」という名前の変数はありません。"));
    EXPECT_EQ(Failure("mat*2"), QStringLiteral("変数「mat」の値「SS400」は数値ではありません。"));
    EXPECT_EQ(Failure("1/(d-10)"), QStringLiteral("式「1/(d-10)」: 0 で割っています。"));
    EXPECT_EQ(Failure("sqrt(-1)"), QStringLiteral("式「sqrt(-1)」: 値が計算できません。"));
    EXPECT_EQ(Failure("(1+2"), QStringLiteral("式「(1+2」: 「)」がありません。"));
    EXPECT_EQ(Failure("1+"), QStringLiteral("式「1+」: 途中で終わっています。"));
    EXPECT_EQ(Failure("1)"), QStringLiteral("式「1)」: 「)」の前までしか読めません。"));
    EXPECT_EQ(Failure("1.2.3"), QStringLiteral("式「1.2.3」: 「1.2.3」は数値ではありません。"));
    EXPECT_EQ(Failure("sinh(1)"), QStringLiteral("式「sinh(1)」: 「sinh」という関数はありません。"));
    EXPECT_EQ(Failure("min(1)"), QStringLiteral("式「min(1)」: 関数「min」の引数は 2 個です。"));
}

TEST(Expression, RefusesNestingThatWouldExhaustTheStack) {
    const QString deep = QString(100000, u'(');
    EXPECT_THROW(EvaluateExpression(deep, {}), RuntimeError);
    EXPECT_THROW(EvaluateExpression(QString(100000, u'-') + u'1', {}), RuntimeError);
}

} // namespace
} // namespace velmo
