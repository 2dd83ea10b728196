#include <QApplication>
#include <QFile>
#include <QGenericPlugin>
#include <QWidget>

#include <unistd.h>

namespace velmo {

namespace {

// The most memory that this process has held, in bytes.
qint64 PeakMemory() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray key = "VmHWM:";
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith(key))
            return line.mid(key.size()).simplified().split(' ').first().toLongLong() * 1024;
    }
    return 0;
}

[[noreturn]] void Report() {
    const qint64 peak = PeakMemory();
    const bool told = write(qEnvironmentVariableIntValue("VELMO_FIRST_PAINT_REPORT"), &peak, sizeof peak) ==
                      ssize_t(sizeof peak);
    _exit(told ? 0 : 1);
}

} // namespace

// Ends the process, telling its memory, when a window of a given name has painted itself for the first time.
class FirstPaint : public QObject {
    Q_OBJECT

public:
    explicit FirstPaint(QObject* parent)
        : QObject(parent), window_(qEnvironmentVariable("VELMO_FIRST_PAINT_WINDOW")) {
        QCoreApplication::instance()->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint && watched->isWidgetType() && watched->objectName() == window_) {
            // Behind the painting of the whole window, its children included.
            QMetaObject::invokeMethod(
                this, [] { Report(); }, Qt::QueuedConnection);
        }
        return false;
    }

private:
    QString window_;
};

class FirstPaintPlugin : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "first_paint.json")

public:
    QObject* create(const QString& key, const QString&) override {
        return key.compare(QLatin1String("velmofirstpaint"), Qt::CaseInsensitive) == 0 ? new FirstPaint(this)
                                                                                       : nullptr;
    }
};

} // namespace velmo

#include "first_paint.moc"
