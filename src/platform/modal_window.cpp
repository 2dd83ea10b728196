#include "platform/modal_window.h"

#include "platform/window_places.h"

#include <QCloseEvent>
#include <QEventLoop>

namespace velmo {

void ModalWindow::Appear() {
    setWindowModality(Qt::ApplicationModal);
    show();
    raise();
    activateWindow();
}

void ModalWindow::ShowModal() {
    QEventLoop loop;
    connect(this, &ModalWindow::Closed, &loop, &QEventLoop::quit);
    if (!isVisible())
        Appear();
    loop.exec();
    hide();
}

void ModalWindow::closeEvent(QCloseEvent* event) {
    QMainWindow::closeEvent(event);
    if (event->isAccepted())
        Q_EMIT Closed();
}

StepsBack::StepsBack(ModalWindow& window) : window_(window) {
    window_.steppedBack_ = true;
    SetTopmost(&window_, false);
}

StepsBack::~StepsBack() {
    window_.steppedBack_ = false;
    SetTopmost(&window_, true);
}

} // namespace velmo
