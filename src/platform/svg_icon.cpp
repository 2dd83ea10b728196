#include "platform/svg_icon.h"

#include <QApplication>
#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPixmapCache>
#include <QStyle>
#include <QStyleOption>
#include <QSvgRenderer>

// A static library's resources are not registered by themselves; outside any namespace, as the macro demands.
static void RegisterPlatformIcons() {
    Q_INIT_RESOURCE(platform_icons);
}

namespace velmo {

namespace {

// Sizes that the window manager is given, in pixels.
const QList<QSize> WindowIconSizes{{16, 16}, {32, 32}, {48, 48}};

QPixmap Rendered(const QString& resource, const QColor& textColour, const QSize& pixels) {
    QPixmap picture(pixels);
    picture.fill(Qt::transparent);
    QFile file(resource);
    if (!file.open(QIODevice::ReadOnly))
        return picture;
    QByteArray svg = file.readAll();
    svg.replace("currentColor", textColour.name().toLatin1());
    QSvgRenderer drawing(svg);
    QPainter painter(&picture);
    drawing.render(&painter);
    return picture;
}

QPixmap ForMode(const QPixmap& normal, QIcon::Mode mode) {
    // The row behind it says enough of a selected one.
    if (mode == QIcon::Normal || mode == QIcon::Selected)
        return normal;
    QStyleOption option;
    option.palette = QApplication::palette();
    return QApplication::style()->generatedIconPixmap(mode, normal, &option);
}

class SvgIconEngine : public QIconEngine {
public:
    explicit SvgIconEngine(const QString& resource) : resource_(resource) {}

    QIconEngine* clone() const override { return new SvgIconEngine(*this); }

    QList<QSize> availableSizes(QIcon::Mode, QIcon::State) override { return WindowIconSizes; }

    QPixmap pixmap(const QSize& pixels, QIcon::Mode mode, QIcon::State) override {
        const QColor textColour = QApplication::palette().color(QPalette::ButtonText);
        const QString key = QStringLiteral("%1 %2x%3 %4 %5")
                                .arg(resource_)
                                .arg(pixels.width())
                                .arg(pixels.height())
                                .arg(mode)
                                .arg(textColour.name());
        QPixmap picture;
        if (!QPixmapCache::find(key, &picture)) {
            picture = ForMode(Rendered(resource_, textColour, pixels), mode);
            QPixmapCache::insert(key, picture);
        }
        return picture;
    }

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
        // As large as there is room, in its own proportions.
        const int side = qMin(rect.width(), rect.height());
        QRect square(0, 0, side, side);
        square.moveCenter(rect.center());
        const QSize pixels = (QSizeF(square.size()) * painter->device()->devicePixelRatio()).toSize();
        painter->drawPixmap(square, pixmap(pixels, mode, state));
    }

private:
    QString resource_;
};

} // namespace

QIcon SvgIcon(const QString& resource) {
    return QIcon(new SvgIconEngine(resource));
}

QIcon PlatformIcon(const QString& name) {
    RegisterPlatformIcons();
    return SvgIcon(QStringLiteral(":/platform/icons/%1.svg").arg(name));
}

} // namespace velmo
