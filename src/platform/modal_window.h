#pragma once

#include <QMainWindow>

namespace velmo {

// A window with menu, tool and status bar that is shown modally: ShowModal returns when it was closed.
class ModalWindow : public QMainWindow {
    Q_OBJECT

public:
    using QMainWindow::QMainWindow;

    // Bars are shown and hidden by menus of the windows' own, or not at all.
    QMenu* createPopupMenu() override { return nullptr; }

    // Shows the window in front of the others. What is slow to fill is filled right after this: the window
    // manager needs its time to find a place for the window, and only then does it paint itself.
    void Appear();

    // Shows the window if it has not appeared yet, blocks the others, and returns when it is closed or the
    // program ends.
    void ShowModal();

    // Another window stands above this one and must stay there.
    bool IsSteppedBack() const { return steppedBack_; }

Q_SIGNALS:
    void Closed();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    friend class StepsBack;

    bool steppedBack_ = false;
};

// While it lives, a topmost window lets another come before it; then it is topmost again.
class StepsBack {
public:
    explicit StepsBack(ModalWindow& window);
    ~StepsBack();
    StepsBack(const StepsBack&) = delete;
    StepsBack& operator=(const StepsBack&) = delete;

private:
    ModalWindow& window_;
};

} // namespace velmo
