#include "platform/hint_text.h"

#include <QImage>
#include <gtest/gtest.h>

namespace velmo {
namespace {

// The rows of a picture of that height in which anything of the hint is seen.
std::pair<int, int> RowsOf(const QString& text, int height) {
    QImage picture(120, height, QImage::Format_RGB32);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    DrawHint(painter, picture.rect(), text);
    painter.end();
    int first = height;
    int last = -1;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixelColor(x, y) == Qt::white)
                continue;
            first = qMin(first, y);
            last = y;
        }
    }
    return {first, last};
}

TEST(HintTextTest, AShortOneStandsInTheMiddle) {
    const auto [first, last] = RowsOf("xxx", 200);
    EXPECT_NEAR((first + last) / 2, 100, 5);
}

TEST(HintTextTest, OfALongOneTheBeginningIsSeen) {
    const auto [first, last] = RowsOf(QString("xxx ").repeated(200), 100);
    const auto [firstAlone, lastAlone] = RowsOf("xxx", 100);
    EXPECT_LT(first, firstAlone);
    // A whole line, not the lower half of one.
    EXPECT_GE(first, 8);
}

} // namespace
} // namespace velmo
