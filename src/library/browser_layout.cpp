#include "library/browser_layout.h"

#include "platform/numbers.h"
#include "platform/window_places.h"
#include "startup/settings_keys.h"

#include <cmath>
#include <limits>

namespace velmo {

namespace {

namespace keys = settings_keys;

// Twips.
constexpr int BarThickness = 60;
constexpr int ThickestBar = 300;
// What a pane keeps, if the window is large enough for two such panes; with large fonts it is more.
constexpr int SmallestPane = 1200;
// In lines of text.
constexpr int LeastWidth = 8;
constexpr int LeastHeight = 4;

// What the panes to the left and above have of the room at first.
constexpr double LeftShare = 0.4;
constexpr double UpperLeftShare = 0.6;
constexpr double UpperRightShare = 0.5;

} // namespace

BrowserLayout::BrowserLayout(QWidget* tree, QWidget* treeSlide, QWidget* entrySlide, QWidget* entryList)
    : tree_(tree),
      treeSlide_(treeSlide),
      entrySlide_(entrySlide),
      entryList_(entryList),
      frame_(MakeSplit(Qt::Vertical, "SplitImg", "SplitPic", keys::FrameSplit, LeftShare)),
      left_(MakeSplit(Qt::Horizontal, "TreeImg", "TreePic", keys::TreeSplit, UpperLeftShare)),
      right_(MakeSplit(Qt::Horizontal, "PDFImg", "PdfPic", keys::PdfSplit, UpperRightShare)) {
    for (QWidget* pane : {tree_, treeSlide_, entrySlide_, entryList_})
        pane->setParent(this);
    frame_.bar->setAccessibleName(QStringLiteral("左右の仕切り"));
    left_.bar->setAccessibleName(QStringLiteral("分類ツリーとスライドの仕切り"));
    right_.bar->setAccessibleName(QStringLiteral("スライドと一覧の仕切り"));
    for (Split* split : {&frame_, &left_, &right_}) {
        connect(split->bar, &SplitBar::Dropped, this, [this, split](int place) {
            split->wanted = place;
            LayOut();
        });
    }
}

BrowserLayout::Split BrowserLayout::MakeSplit(Qt::Orientation orientation, const char* image,
                                              const char* picture, const QString& key, double share) {
    return {new SplitBar(orientation, image, picture, this), key, share, TwipsToPixels(BarThickness), {}};
}

void BrowserLayout::Restore(const SettingsStore& settings) {
    const auto restore = [&settings](Split& split, const char* place, const char* thickness) {
        // The others of the four follow from the layout.
        constexpr double none = std::numeric_limits<double>::quiet_NaN();
        const double wanted = ToNumberOr(settings.Get(split.key + QLatin1String(place)), none);
        if (!std::isnan(wanted))
            split.wanted = TwipsToPixels(wanted);
        const double stored = ToNumberOr(settings.Get(split.key + QLatin1String(thickness)), BarThickness);
        split.thickness = TwipsToPixels(qBound(double(BarThickness), stored, double(ThickestBar)));
    };
    restore(frame_, "Left", "Width");
    restore(left_, "Top", "Height");
    restore(right_, "Top", "Height");
    LayOut();
}

void BrowserLayout::Save(SettingsStore& settings) const {
    for (const Split* split : {&frame_, &left_, &right_}) {
        const QRect place = split->bar->geometry();
        settings.Save(split->key + QStringLiteral("Left"), PixelsToTwips(place.x()));
        settings.Save(split->key + QStringLiteral("Top"), PixelsToTwips(place.y()));
        settings.Save(split->key + QStringLiteral("Width"), PixelsToTwips(place.width()));
        settings.Save(split->key + QStringLiteral("Height"), PixelsToTwips(place.height()));
    }
}

void BrowserLayout::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    LayOut();
}

// Places a splitter in the room that it shares with both its panes, and tells how much of it the first has.
int BrowserLayout::PlaceBar(const Split& split, const QRect& room) const {
    const bool vertical = split.bar->Way() == Qt::Vertical;
    const int free = qMax(0, (vertical ? room.width() : room.height()) - split.thickness);
    const int lines = fontMetrics().height() * (vertical ? LeastWidth : LeastHeight);
    const int least = qMin(qMax(TwipsToPixels(SmallestPane), lines), free / 2);
    const int edge = qBound(least, split.wanted.value_or(qRound(free * split.share)), free - least);
    const QRect place = vertical ? QRect(room.x() + edge, room.y(), split.thickness, room.height())
                                 : QRect(room.x(), room.y() + edge, room.width(), split.thickness);
    split.bar->Place(place, least, free - least);
    return edge;
}

void BrowserLayout::LayOut() {
    const int x = PlaceBar(frame_, rect());
    LayOutColumn(left_, tree_, treeSlide_, QRect(0, 0, x, height()));
    const int right = x + frame_.thickness;
    LayOutColumn(right_, entrySlide_, entryList_, QRect(right, 0, width() - right, height()));
}

void BrowserLayout::LayOutColumn(const Split& split, QWidget* upper, QWidget* lower,
                                 const QRect& column) const {
    const int y = PlaceBar(split, column);
    upper->setGeometry(column.x(), 0, column.width(), y);
    const int below = y + split.thickness;
    lower->setGeometry(column.x(), below, column.width(), column.height() - below);
}

} // namespace velmo
