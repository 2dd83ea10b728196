#pragma once

#include "controls.h"

#include <QObject>
#include <QWindow>

#include <functional>
#include <vector>

namespace velmo::driver {

// One thing that happens at once, as the window system would report it; it may open a window and return only
// when that closes.
using Step = std::function<void()>;
using Steps = std::vector<Step>;

// The user's hands and the window manager: mouse and keys as the window system delivers them, and, on a
// platform without a window manager, a new active window when the active one goes away.
class UserInput : public QObject {
    Q_OBJECT

public:
    explicit UserInput(QObject* parent);

    Steps Click(const Spot& spot, Qt::MouseButton button, Qt::KeyboardModifiers modifiers, bool twice);
    Steps Drag(const Spot& from, const QPoint& by);
    Steps MoveTo(const Spot& spot);
    // A key with its modifiers, named as in a menu ("Ctrl+C", "Return", "Shift+Tab"). Throws when there is no
    // such key.
    Steps Key(const QString& name);
    // ASCII text as keys, everything else as an input method commits it.
    Steps Type(const QString& text);

    // The window manager's close, size and minimise; a blocked window throws.
    Steps CloseWindow(QWidget* window) const;
    Steps ResizeWindow(QWidget* window, const QSize& size) const;
    Steps MinimizeWindow(QWidget* window) const;

    // Whether the active window was gone and another one has just been asked to take its place.
    bool ActivateSomeWindow();
    // Whether a window manager still has to make the window active that the user is to go on in.
    bool AwaitsWindowManager() const;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void SendMouse(const QPointer<QWidget>& widget, const QPoint& pos, QEvent::Type type,
                   Qt::MouseButton button, Qt::KeyboardModifiers modifiers);
    Step Mouse(const Spot& spot, QEvent::Type type, Qt::MouseButton button, Qt::KeyboardModifiers modifiers);
    // Presses and releases a button.
    Steps Press(const Spot& spot, Qt::MouseButton button, Qt::KeyboardModifiers modifiers);
    Steps KeyCombination(QKeyCombination combination, const QString& text) const;

    int clock_ = 0;
    Qt::MouseButtons pressed_;
    // The pop-up that was in front when a button was pressed last.
    QPointer<QWidget> popUpAtPress_;
    QList<QPointer<QWindow>> activated_;
};

} // namespace velmo::driver
