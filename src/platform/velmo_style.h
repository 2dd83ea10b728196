#pragma once

#include <QProxyStyle>

namespace velmo {

// The desktop's style with two things of the program's own: the few standard icons that bars always carry,
// sharp at every scale and readable in light and dark; and selections that tell which view has the keyboard.
class VelmoStyle : public QProxyStyle {
public:
    using QProxyStyle::polish;
    void polish(QPalette& palette) override;
    QIcon standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
};

} // namespace velmo
