#pragma once

#include <QMainWindow>

namespace velmo {

// A window with menu, tool and status bar that is shown modally: ShowModal returns when it was closed.
class ModalWindow : public QMainWindow {
    Q_OBJECT

public:
    using QMainWindow::QMainWindow;

    // Shows the window, blocks the others, and returns when it is closed or the program ends.
    void ShowModal();

Q_SIGNALS:
    void Closed();

protected:
    void closeEvent(QCloseEvent* event) override;
};

} // namespace velmo
