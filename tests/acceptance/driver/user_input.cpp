#include "user_input.h"

#include "driver_error.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QCursor>
#include <QEvent>
#include <QInputMethodEvent>
#include <QKeySequence>
#include <QtTest/QTest>

#include <algorithm>

namespace velmo::driver {

namespace {

// Clicks lie further apart than any double-click time, in the input events' own clock (milliseconds).
constexpr int clickGap = 5000;
constexpr int eventGap = 10;

QString KeyText(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    if (modifiers.testFlag(Qt::ControlModifier) && key >= Qt::Key_A && key <= Qt::Key_Z)
        return QChar(key - Qt::Key_A + 1);
    if (key >= Qt::Key_A && key <= Qt::Key_Z)
        return QChar(modifiers.testFlag(Qt::ShiftModifier) ? key : key + ('a' - 'A'));
    if (key >= Qt::Key_Space && key < Qt::Key_AsciiTilde)
        return QChar(key);
    switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return "\r";
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        return "\t";
    case Qt::Key_Escape:
        return "\x1b";
    case Qt::Key_Backspace:
        return "\b";
    case Qt::Key_Delete:
        return "\x7f";
    default:
        return {};
    }
}

void SendKey(QEvent::Type type, int key, Qt::KeyboardModifiers modifiers, const QString& text) {
    QWindow* window = QGuiApplication::focusWindow();
    if (window == nullptr)
        throw DriverError("no window has the focus");
    qt_handleKeyEvent(window, type, key, modifiers, text);
}

void CommitText(const QString& text) {
    QObject* focus = QGuiApplication::focusObject();
    if (focus == nullptr)
        throw DriverError("nothing has the focus");
    QInputMethodQueryEvent query(Qt::ImEnabled);
    QCoreApplication::sendEvent(focus, &query);
    if (!query.value(Qt::ImEnabled).toBool())
        throw DriverError("nothing takes text from an input method");
    QInputMethodEvent composing(text, {});
    QCoreApplication::sendEvent(focus, &composing);
    // What is being composed may have moved the focus into an editor that opened for it.
    focus = QGuiApplication::focusObject();
    QInputMethodEvent commit;
    commit.setCommitString(text);
    QCoreApplication::sendEvent(focus, &commit);
}

// What the window system makes of the menu key.
void AskForContextMenu() {
    QWindow* window = QGuiApplication::focusWindow();
    if (window == nullptr)
        throw DriverError("no window has the focus");
    QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(), window->mapToGlobal(QPoint()));
    QCoreApplication::sendEvent(window, &event);
}

bool HasWindowManager() {
    return QGuiApplication::platformName() != "offscreen" && QGuiApplication::platformName() != "minimal";
}

void Append(Steps& steps, Steps more) {
    std::move(more.begin(), more.end(), std::back_inserter(steps));
}

} // namespace

UserInput::UserInput(QObject* parent) : QObject(parent) {
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, [this](QWindow* window) {
        if (window == nullptr)
            return;
        activated_.removeAll(window);
        activated_.removeAll(nullptr);
        activated_.prepend(window);
    });
    if (!HasWindowManager())
        qGuiApp->installEventFilter(this);
}

bool UserInput::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Hide && watched->isWindowType())
        QMetaObject::invokeMethod(this, &UserInput::ActivateSomeWindow, Qt::QueuedConnection);
    return false;
}

bool UserInput::ActivateSomeWindow() {
    const QWindow* focus = QGuiApplication::focusWindow();
    if (HasWindowManager() || (focus != nullptr && focus->isVisible()))
        return false;
    QWindow* next = nullptr;
    for (const QPointer<QWindow>& window : std::as_const(activated_)) {
        if (next == nullptr && window != nullptr && window->isVisible() && window->type() != Qt::ToolTip)
            next = window;
    }
    if (const QWidget* modal = QApplication::activeModalWidget(); modal != nullptr && modal->isVisible())
        next = modal->windowHandle();
    if (next == nullptr)
        return false;
    next->requestActivate();
    return true;
}

bool UserInput::AwaitsWindowManager() const {
    if (!HasWindowManager() || QApplication::activePopupWidget() != nullptr)
        return false;
    const QWindow* focus = QGuiApplication::focusWindow();
    const QWidget* modal = QApplication::activeModalWidget();
    if (modal == nullptr || !modal->isVisible()) {
        const QList<QWidget*> windows = VisibleWindows();
        return focus == nullptr && std::any_of(windows.begin(), windows.end(), [](const QWidget* window) {
                   return window->windowType() != Qt::ToolTip && !window->isMinimized();
               });
    }
    // The window manager does not see this input, and may take what it leads to for a window that nobody
    // asked for.
    if (modal->windowHandle()->isExposed() && focus != modal->windowHandle())
        modal->windowHandle()->requestActivate();
    return focus != modal->windowHandle();
}

void UserInput::SendMouse(const QPointer<QWidget>& widget, const QPoint& pos, QEvent::Type type,
                          Qt::MouseButton button, Qt::KeyboardModifiers modifiers) {
    if (widget == nullptr || widget->window()->windowHandle() == nullptr) {
        pressed_.setFlag(button, type == QEvent::MouseButtonPress);
        return;
    }
    QWindow* window = widget->window()->windowHandle();
    const QPoint local = widget->mapTo(widget->window(), pos);
    const QPoint global = window->mapToGlobal(local);
    clock_ += eventGap;
    if (type == QEvent::MouseMove) {
        QCursor::setPos(global);
    } else {
        pressed_.setFlag(button, type == QEvent::MouseButtonPress);
        const bool popup = QApplication::activePopupWidget() != nullptr;
        if (type == QEvent::MouseButtonPress && !popup && !HasWindowManager() && !window->isActive())
            window->requestActivate();
    }
    qt_handleMouseEvent(window, local, global, pressed_, button, type, modifiers, clock_);
}

Step UserInput::Mouse(const Spot& spot, QEvent::Type type, Qt::MouseButton button,
                      Qt::KeyboardModifiers modifiers) {
    return
        [this, spot, type, button, modifiers] { SendMouse(spot.widget, spot.pos, type, button, modifiers); };
}

Steps UserInput::MoveTo(const Spot& spot) {
    return {Mouse(spot, QEvent::MouseMove, Qt::NoButton, Qt::NoModifier)};
}

Steps UserInput::Click(const Spot& spot, Qt::MouseButton button, Qt::KeyboardModifiers modifiers,
                       bool twice) {
    Steps steps;
    // A dropped-down list believes a click only after the mouse has travelled over it.
    if (spot.widget->window()->windowType() == Qt::Popup)
        Append(steps, MoveTo({spot.widget, spot.widget->rect().bottomRight() - QPoint(2, 2)}));
    Append(steps, MoveTo(spot));
    steps.emplace_back([this] { clock_ += clickGap; });
    for (int click = 0; click < (twice ? 2 : 1); ++click) {
        Append(steps, Press(spot, button, modifiers));
    }
    return steps;
}

Steps UserInput::Press(const Spot& spot, Qt::MouseButton button, Qt::KeyboardModifiers modifiers) {
    const Step press = Mouse(spot, QEvent::MouseButtonPress, button, modifiers);
    const Step release = Mouse(spot, QEvent::MouseButtonRelease, button, modifiers);
    return {[this, press] {
                popUpAtPress_ = QApplication::activePopupWidget();
                press();
            },
            [this, button, release] {
                const QWidget* popUp = QApplication::activePopupWidget();
                // A context menu takes the release for a choice once the mouse has moved, and the window
                // system may report the way to the place of the click only now.
                if (button == Qt::RightButton && popUp != nullptr && popUp != popUpAtPress_)
                    pressed_.setFlag(button, false);
                else
                    release();
            }};
}

Steps UserInput::Drag(const Spot& from, const QPoint& by) {
    Steps steps = MoveTo(from);
    steps.emplace_back([this] { clock_ += clickGap; });
    steps.push_back(Mouse(from, QEvent::MouseButtonPress, Qt::LeftButton, Qt::NoModifier));
    // The widget may move along under the mouse, so the way is kept in window coordinates.
    QPointer<QWidget> window = from.widget->window();
    const QPoint start = from.widget->mapTo(window, from.pos);
    constexpr int stages = 4;
    for (int stage = 1; stage <= stages; ++stage) {
        const QPoint pos = start + by * stage / stages;
        Append(steps, MoveTo({window, pos}));
    }
    steps.push_back(Mouse({window, start + by}, QEvent::MouseButtonRelease, Qt::LeftButton, Qt::NoModifier));
    return steps;
}

Steps UserInput::KeyCombination(QKeyCombination combination, const QString& text) const {
    const Qt::KeyboardModifiers modifiers = combination.keyboardModifiers();
    const int key = combination.key();
    Steps steps;
    Steps releases;
    Qt::KeyboardModifiers held;
    const std::pair<Qt::KeyboardModifier, Qt::Key> modifierKeys[] = {{Qt::ShiftModifier, Qt::Key_Shift},
                                                                     {Qt::ControlModifier, Qt::Key_Control},
                                                                     {Qt::AltModifier, Qt::Key_Alt}};
    for (const auto& [modifier, modifierKey] : modifierKeys) {
        if (!modifiers.testFlag(modifier))
            continue;
        const Qt::Key code = modifierKey;
        steps.emplace_back([code, held] { SendKey(QEvent::KeyPress, code, held, {}); });
        held |= modifier;
        // The key that closes the last window is released into nothing.
        releases.emplace_back([code, held] {
            if (QGuiApplication::focusWindow() != nullptr)
                SendKey(QEvent::KeyRelease, code, held, {});
        });
    }
    steps.emplace_back([key, modifiers, text] { SendKey(QEvent::KeyPress, key, modifiers, text); });
    if (key == Qt::Key_Menu)
        steps.emplace_back(AskForContextMenu);
    steps.emplace_back([key, modifiers, text] {
        if (QGuiApplication::focusWindow() != nullptr)
            SendKey(QEvent::KeyRelease, key, modifiers, text);
    });
    std::move(releases.rbegin(), releases.rend(), std::back_inserter(steps));
    return steps;
}

Steps UserInput::Key(const QString& name) {
    const QKeySequence sequence = QKeySequence::fromString(name, QKeySequence::PortableText);
    if (sequence.count() != 1 || sequence[0].key() == Qt::Key_unknown)
        throw DriverError("no key " + name);
    const Qt::KeyboardModifiers modifiers = sequence[0].keyboardModifiers();
    Qt::Key key = sequence[0].key();
    if (key == Qt::Key_Tab && modifiers.testFlag(Qt::ShiftModifier))
        key = Qt::Key_Backtab;
    return KeyCombination(QKeyCombination(modifiers, key), KeyText(key, modifiers));
}

Steps UserInput::Type(const QString& text) {
    Steps steps;
    QString composed;
    const auto commit = [&steps, &composed] {
        if (!composed.isEmpty())
            steps.emplace_back([part = composed] { CommitText(part); });
        composed.clear();
    };
    for (const QChar letter : text) {
        if (letter.unicode() < ' ' || letter.unicode() > '~') {
            composed += letter;
            continue;
        }
        commit();
        const auto key = static_cast<Qt::Key>(letter.toUpper().unicode());
        const Qt::KeyboardModifiers modifiers = letter.isUpper() ? Qt::ShiftModifier : Qt::NoModifier;
        Append(steps, KeyCombination(QKeyCombination(modifiers, key), letter));
    }
    commit();
    return steps;
}

Steps UserInput::CloseWindow(QWidget* window) const {
    if (IsBlocked(window))
        throw DriverError(window->objectName() + " is behind a modal window");
    return {[handle = QPointer<QWindow>(window->windowHandle())] {
        if (handle != nullptr)
            handle->close();
    }};
}

Steps UserInput::ResizeWindow(QWidget* window, const QSize& size) const {
    return {[handle = QPointer<QWindow>(window->windowHandle()), size] {
        if (handle != nullptr)
            handle->resize(size.expandedTo(handle->minimumSize()).boundedTo(handle->maximumSize()));
    }};
}

Steps UserInput::MinimizeWindow(QWidget* window) const {
    return {[handle = QPointer<QWindow>(window->windowHandle())] {
        if (handle != nullptr)
            handle->showMinimized();
    }};
}

} // namespace velmo::driver
