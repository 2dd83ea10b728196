#include "platform/modal_dialog.h"

#include "platform/window_places.h"

#include <QShowEvent>

namespace velmo {

ModalDialog::ModalDialog(QWidget* parent, const char* name, QHash<QString, QSize>& sizes)
    : QDialog(parent), sizes_(sizes), sizeKey_(QLatin1String(name)) {
    setObjectName(sizeKey_);
}

void ModalDialog::ShowModal() {
    shownSize_ = QSize();
    const QSize remembered = sizes_.value(sizeKey_);
    if (remembered.isValid())
        resize(remembered);
    // A dialog without a size of its own gets one from the toolkit, which minds the screen.
    if (testAttribute(Qt::WA_Resized))
        KeepWithinScreen(this);
    exec();
}

void ModalDialog::done(int result) {
    if (shownSize_.isValid() && size() != shownSize_)
        sizes_[sizeKey_] = size();
    QDialog::done(result);
}

void ModalDialog::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    // A dialog that becomes topmost is shown a second time.
    if (!shownSize_.isValid())
        shownSize_ = size();
}

void ModalDialog::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow())
        SetTopmost(this, true);
}

} // namespace velmo
