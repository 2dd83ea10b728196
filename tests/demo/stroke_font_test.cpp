#include "drawing/stroke_font.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

const QString kLetters =
    QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789.,-+=/()#×φ°±");

TEST(StrokeFont, EveryLetterHasStrokesWithinItsWidth) {
    for (const QChar letter : kLetters) {
        const QString text(letter);
        EXPECT_TRUE(StrokeFont::Has(letter)) << text.toStdString();
        const double width = StrokeFont::Width(text, 12);
        const std::vector<Points> strokes = StrokeFont::Strokes(text, {0, 0}, 12);
        EXPECT_FALSE(strokes.empty()) << text.toStdString();
        for (const Points& stroke : strokes) {
            EXPECT_GE(stroke.size(), 2u) << text.toStdString();
            for (const QPointF point : stroke) {
                EXPECT_GE(point.x(), -0.5) << text.toStdString();
                EXPECT_LE(point.x(), width + 0.5) << text.toStdString();
                EXPECT_GE(point.y(), -4.01) << text.toStdString();
                EXPECT_LE(point.y(), 13.01) << text.toStdString();
            }
        }
    }
}

TEST(StrokeFont, NoTwoLettersLookTheSame) {
    for (qsizetype i = 0; i < kLetters.size(); ++i) {
        for (qsizetype j = i + 1; j < kLetters.size(); ++j)
            EXPECT_NE(StrokeFont::Strokes(kLetters.mid(i, 1), {0, 0}, 1),
                      StrokeFont::Strokes(kLetters.mid(j, 1), {0, 0}, 1))
                << kLetters.mid(i, 1).toStdString() << kLetters.mid(j, 1).toStdString();
    }
}

TEST(StrokeFont, ScalesAndTurns) {
    // A capital I is one upright stroke as high as asked.
    const std::vector<Points> upright = StrokeFont::Strokes(QStringLiteral("I"), {5, 5}, 3);
    EXPECT_NEAR(upright[0][1].y(), 8, 1e-9);
    const std::vector<Points> turned = StrokeFont::Strokes(QStringLiteral("I"), {5, 5}, 3, 90);
    EXPECT_NEAR(turned[0][1].x(), 2, 1e-9);
    EXPECT_NEAR(turned[0][1].y(), 5, 1e-9);
}

TEST(StrokeFont, AnUnknownLetterIsABox) {
    EXPECT_FALSE(StrokeFont::Has(u'漢'));
    ASSERT_EQ(StrokeFont::Strokes(QStringLiteral("漢"), {0, 0}, 12).size(), 1u);
    EXPECT_EQ(StrokeFont::Strokes(QStringLiteral("漢"), {0, 0}, 12)[0].size(), 5u);
}

} // namespace
} // namespace velmo
