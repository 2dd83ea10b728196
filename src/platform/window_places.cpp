#include "platform/window_places.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <QWindow>

namespace velmo {

namespace {

// So much of a window must be on a screen to be found and dragged.
constexpr int Grip = 32;
// What a window manager draws at a side of a window, at most.
constexpr int Border = 4;

// With room for the title bar and the borders, which no size counts.
QSize BoundedTo(const QRect& screen, const QSize& size) {
    return size.boundedTo(screen.size() - QSize(2 * Border, Grip));
}

} // namespace

QRect BroughtOntoScreen(const QRect& place) {
    const QRect titleBar(place.x(), place.y(), place.width(), Grip);
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QRect seen = titleBar & screen->availableGeometry();
        if (seen.width() >= qMin(Grip, place.width()) && seen.height() >= Grip / 2)
            return {place.topLeft(), BoundedTo(screen->availableGeometry(), place.size())};
    }
    const QRect home = QGuiApplication::primaryScreen()->availableGeometry();
    QRect brought(place.topLeft(), BoundedTo(home, place.size()));
    brought.moveLeft(qBound(home.left(), brought.left(), home.right() - brought.width() + 1));
    brought.moveTop(qBound(home.top(), brought.top(), home.bottom() - Grip - brought.height() + 1));
    return brought;
}

void KeepWithinScreen(QWidget* window) {
    window->resize(BoundedTo(window->screen()->availableGeometry(), window->size()));
}

void SetTopmost(QWidget* window, bool topmost) {
    Qt::WindowFlags flags = window->windowFlags();
    flags.setFlag(Qt::WindowStaysOnTopHint, topmost);
    if (flags == window->windowFlags())
        return;
    // Unlike setWindowFlag this does not hide the window.
    window->overrideWindowFlags(flags);
    if (QWindow* handle = window->windowHandle())
        handle->setFlags(flags);
}

} // namespace velmo
