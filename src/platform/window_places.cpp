#include "platform/window_places.h"

#include <QWidget>
#include <QWindow>

namespace velmo {

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
