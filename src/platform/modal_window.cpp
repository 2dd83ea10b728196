#include "platform/modal_window.h"

#include <QCloseEvent>
#include <QEventLoop>

namespace velmo {

void ModalWindow::ShowModal() {
    setWindowModality(Qt::ApplicationModal);
    QEventLoop loop;
    connect(this, &ModalWindow::Closed, &loop, &QEventLoop::quit);
    show();
    raise();
    activateWindow();
    loop.exec();
    hide();
}

void ModalWindow::closeEvent(QCloseEvent* event) {
    QMainWindow::closeEvent(event);
    if (event->isAccepted())
        Q_EMIT Closed();
}

} // namespace velmo
