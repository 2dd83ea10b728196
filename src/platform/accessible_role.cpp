#include "platform/accessible_role.h"

#include <QAccessibleWidget>
#include <QVariant>
#include <QWidget>

namespace velmo {

namespace {

constexpr const char* RoleProperty = "velmoAccessibleRole";

QAccessibleInterface* MakeInterface(const QString&, QObject* object) {
    auto* control = qobject_cast<QWidget*>(object);
    const QVariant role = control ? control->property(RoleProperty) : QVariant();
    return role.isValid() ? new QAccessibleWidget(control, QAccessible::Role(role.toInt())) : nullptr;
}

} // namespace

void SetAccessibleRole(QWidget& control, QAccessible::Role role) {
    control.setProperty(RoleProperty, int(role));
    // Once is enough; the toolkit passes over what it has already.
    QAccessible::installFactory(MakeInterface);
}

} // namespace velmo
