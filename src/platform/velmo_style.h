#pragma once

#include <QProxyStyle>

namespace velmo {

// The desktop's style with what the program has of its own: the few standard icons that bars always carry,
// sharp at every scale and readable in light and dark; selections that tell which view has the keyboard; a
// frame around dropped-down lists that is seen on every ground; room for Japanese texts in menus, buttons and
// fields; and icons that grow with the desktop's font.
class VelmoStyle : public QProxyStyle {
public:
    using QProxyStyle::polish;
    void polish(QPalette& palette) override;
    QIcon standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returned) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                           const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
};

} // namespace velmo
