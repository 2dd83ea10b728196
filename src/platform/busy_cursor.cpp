#include "platform/busy_cursor.h"

#include <QGuiApplication>
#include <QTimer>

namespace velmo {

void ShowBusyCursor() {
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    QTimer::singleShot(0, [] { QGuiApplication::restoreOverrideCursor(); });
}

} // namespace velmo
