#include "platform/modal_dialog.h"

#include "platform/window_places.h"

#include <QEvent>

namespace velmo {

ModalDialog::ModalDialog(QWidget* parent, const char* name, QHash<QString, QSize>& sizes)
    : QDialog(parent), sizes_(sizes) {
    setObjectName(QLatin1String(name));
}

void ModalDialog::ShowModal() {
    const QSize remembered = sizes_.value(objectName());
    if (remembered.isValid())
        resize(remembered);
    exec();
}

void ModalDialog::done(int result) {
    sizes_[objectName()] = size();
    QDialog::done(result);
}

void ModalDialog::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow())
        SetTopmost(this, true);
}

} // namespace velmo
