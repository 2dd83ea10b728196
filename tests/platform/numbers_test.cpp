#include "platform/numbers.h"
#include "support/failure.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

ErrorNumber NumberOfFailure(QStringView text) {
    return Failure([&] { ToInteger(text); });
}

TEST(Numbers, BlanksAreTrimmed) {
    EXPECT_EQ(ToInteger(u" 12 "), 12);
    EXPECT_EQ(ToInteger(u"-3"), -3);
    EXPECT_EQ(TrimBlanks(u"  a b "), u"a b");
    EXPECT_EQ(TrimBlanks(u"\u3000x\t"), u"\u3000x\t") << "only U+0020 counts as a blank";
}

TEST(Numbers, FractionsRoundHalfToEven) {
    EXPECT_EQ(ToInteger(u"2.5"), 2);
    EXPECT_EQ(ToInteger(u"3.5"), 4);
    EXPECT_EQ(ToInteger(u"-2.5"), -2);
    EXPECT_EQ(ToInteger(u"2.51"), 3);
    EXPECT_EQ(ToInteger(u"32767.4"), 32767);
}

TEST(Numbers, BeyondSixteenBitsIsAnOverflow) {
    EXPECT_EQ(ToInteger(u"-32768"), -32768);
    EXPECT_EQ(NumberOfFailure(u"32768"), ErrorNumber::Overflow);
    EXPECT_EQ(NumberOfFailure(u"-32769"), ErrorNumber::Overflow);
    EXPECT_EQ(NumberOfFailure(u"32767.5"), ErrorNumber::Overflow);
}

TEST(Numbers, WhatIsNoNumberIsATypeMismatch) {
    for (const QString& text :
         {QString(), QStringLiteral(" "), QStringLiteral("abc"), QStringLiteral("1x"), QStringLiteral("nan"),
          QStringLiteral("inf"), QStringLiteral("1,000"), QStringLiteral("0x10"), QStringLiteral("1 2")})
        EXPECT_EQ(NumberOfFailure(text), ErrorNumber::TypeMismatch) << text.toStdString();
}

TEST(Numbers, FallbacksNeverFail) {
    EXPECT_EQ(ToIntegerOr(u"7", 1), 7);
    EXPECT_EQ(ToIntegerOr(u"99999", 1), 1);
    EXPECT_EQ(ToIntegerOr(u"x", 1), 1);
    EXPECT_EQ(ToNumberOr(u" 12.5 ", 0), 12.5);
    EXPECT_EQ(ToNumberOr(u"", 3), 3);
}

} // namespace
} // namespace velmo
