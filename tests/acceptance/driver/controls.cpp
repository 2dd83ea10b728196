#include "controls.h"

#include "driver_error.h"

#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>

namespace velmo::driver {

namespace {

QString Describe(const QWidget* widget) {
    return NearestName(widget) + " (" + widget->metaObject()->className() + ')';
}

bool NamedSo(const QAction* action, const QString& name) {
    return action->objectName() == name ||
           (action->menu() != nullptr && action->menu()->objectName() == name);
}

// Looks among the actions and in the menus that they open; null when none has the name.
QAction* LookForAction(const QList<QAction*>& actions, const QString& name) {
    for (QAction* action : actions) {
        if (NamedSo(action, name))
            return action;
        if (action->menu() == nullptr)
            continue;
        if (QAction* inMenu = LookForAction(action->menu()->actions(), name); inMenu != nullptr)
            return inMenu;
    }
    return nullptr;
}

QString NameOf(const QAction* action) {
    if (!action->objectName().isEmpty() || action->menu() == nullptr)
        return action->objectName();
    return action->menu()->objectName();
}

bool Search(const QList<QAction*>& actions, const QAction* wanted, QStringList& path) {
    for (const QAction* action : actions) {
        if (action == wanted ||
            (action->menu() != nullptr && Search(action->menu()->actions(), wanted, path))) {
            path.prepend(NameOf(action));
            return true;
        }
    }
    return false;
}

} // namespace

QList<QWidget*> VisibleWindows() {
    QList<QWidget*> windows;
    const auto add = [&windows](QWidget* window) {
        if (window != nullptr && window->isVisible() && !windows.contains(window))
            windows.append(window);
    };
    add(QApplication::activePopupWidget());
    add(QApplication::activeModalWidget());
    add(QApplication::activeWindow());
    const QWidgetList all = QApplication::topLevelWidgets();
    for (QWidget* window : all)
        add(window);
    return windows;
}

QWidget* FindWindow(const QString& name) {
    const QList<QWidget*> windows = VisibleWindows();
    for (QWidget* window : windows) {
        if (name.isEmpty() || window->objectName() == name)
            return window;
    }
    throw DriverError("no visible window " + name);
}

QWidget* LookForWidget(const QString& name, const QString& window) {
    QWidget* hidden = nullptr;
    const QList<QWidget*> windows = window.isEmpty() ? VisibleWindows() : QList<QWidget*>{FindWindow(window)};
    for (QWidget* top : windows) {
        if (top->objectName() == name)
            return top;
        QWidget* found = nullptr;
        const QList<QWidget*> sameName = top->findChildren<QWidget*>(name);
        for (QWidget* widget : sameName) {
            // A window inside a window's family is looked at as a window of its own.
            if (widget->window() != top)
                continue;
            if (!widget->isVisible()) {
                hidden = widget;
            } else if (found != nullptr) {
                throw DriverError("several visible controls " + name + " in " + top->objectName());
            } else {
                found = widget;
            }
        }
        if (found != nullptr)
            return found;
    }
    return hidden;
}

QWidget* FindWidget(const QString& name, const QString& window) {
    QWidget* widget = LookForWidget(name, window);
    if (widget == nullptr)
        throw DriverError("no control " + name + (window.isEmpty() ? QString() : " in " + window));
    return widget;
}

QAction* FindAction(const QString& name) {
    const QList<QWidget*> windows = VisibleWindows();
    for (QWidget* window : windows) {
        QList<QAction*> actions = window->actions() + window->findChildren<QAction*>();
        const QList<QWidget*> children = window->findChildren<QWidget*>();
        for (const QWidget* child : children)
            actions += child->actions();
        if (QAction* action = LookForAction(actions, name); action != nullptr)
            return action;
    }
    throw DriverError("no menu item or tool bar button " + name);
}

QStringList MenuPath(const QAction* action) {
    const QList<QWidget*> windows = VisibleWindows();
    for (const QWidget* window : windows) {
        const QList<QMenuBar*> bars = window->findChildren<QMenuBar*>();
        for (const QMenuBar* bar : bars) {
            QStringList path;
            if (Search(bar->actions(), action, path))
                return path;
        }
    }
    return {};
}

Spot ActionSpot(QAction* action) {
    if (!action->isVisible())
        return {};
    Spot button;
    Spot title;
    const QList<QObject*> owners = action->associatedObjects();
    for (QObject* owner : owners) {
        if (auto* menu = qobject_cast<QMenu*>(owner)) {
            if (menu->isVisible())
                return {menu, menu->actionGeometry(action).center()};
        } else if (auto* bar = qobject_cast<QMenuBar*>(owner)) {
            if (bar->isVisible() && !bar->actionGeometry(action).isEmpty())
                title = {bar, bar->actionGeometry(action).center()};
        } else if (const auto* tools = qobject_cast<QToolBar*>(owner)) {
            QWidget* widget = tools->widgetForAction(action);
            if (widget != nullptr && widget->isVisible())
                button = {widget, widget->rect().center()};
        }
    }
    return button.widget != nullptr ? button : title;
}

bool IsBlocked(const QWidget* window) {
    const QWidget* modal = QApplication::activeModalWidget();
    return modal != nullptr && window != modal && !modal->isAncestorOf(window) &&
           window->windowType() != Qt::Popup && window->windowType() != Qt::ToolTip &&
           window->parentWidget() != modal;
}

void RequireReachable(const Spot& spot) {
    const QWidget* widget = spot.widget;
    if (!widget->isVisible())
        throw DriverError(Describe(widget) + " is not visible");
    const QWidget* window = widget->window();
    if (IsBlocked(window)) {
        throw DriverError(Describe(widget) + " is behind the modal window " +
                          Describe(QApplication::activeModalWidget()));
    }
    if (!widget->rect().contains(spot.pos))
        throw DriverError("the point is outside " + Describe(widget));
    const QPoint inWindow = widget->mapTo(window, spot.pos);
    if (!window->rect().contains(inWindow))
        throw DriverError(Describe(widget) + " reaches out of its window");
    const QWidget* there = window->childAt(inWindow);
    if (there != nullptr && there != widget && !widget->isAncestorOf(there))
        throw DriverError(Describe(widget) + " is covered by " + Describe(there));
    if (there == nullptr && widget != window)
        throw DriverError(Describe(widget) + " cannot be seen at the point");
}

QString NearestName(const QWidget* widget) {
    for (; widget != nullptr; widget = widget->parentWidget()) {
        if (!widget->objectName().isEmpty() && !widget->objectName().startsWith("qt_"))
            return widget->objectName();
    }
    return {};
}

} // namespace velmo::driver
