#include <QApplication>
#include <QGenericPlugin>
#include <QWidget>

#include <unistd.h>

namespace velmo {

// Ends the process when a window of a given name has painted itself for the first time.
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
                this, [] { _exit(0); }, Qt::QueuedConnection);
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
