#pragma once

#include <QProxyStyle>

namespace velmo {

// The desktop's style with the few standard icons that bars always carry as drawings of the program's own:
// sharp at every scale and readable in light and dark.
class VelmoStyle : public QProxyStyle {
public:
    QIcon standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const override;
};

} // namespace velmo
