#include "platform/busy_cursor.h"

#include "platform/database.h"

#include <QCursor>
#include <QGuiApplication>
#include <QTimer>

namespace velmo {

BusyCursor::BusyCursor() {
    QCoreApplication::instance()->installEventFilter(this);
}

bool BusyCursor::eventFilter(QObject*, QEvent* event) {
    if (event->type() != LongWaitEvent)
        return false;
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    QTimer::singleShot(0, [] { QGuiApplication::restoreOverrideCursor(); });
    return true;
}

} // namespace velmo
