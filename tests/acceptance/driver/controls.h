#pragma once

#include <QAction>
#include <QList>
#include <QPoint>
#include <QPointer>
#include <QWidget>

namespace velmo::driver {

// A point of a widget, where the mouse goes.
struct Spot {
    QPointer<QWidget> widget;
    QPoint pos;
};

// Visible top-level windows, as a user meets them: pop-up, modal window, active window, then the others.
QList<QWidget*> VisibleWindows();

// The visible window of this name; an empty name is the one in front. Throws when there is none.
QWidget* FindWindow(const QString& name);

// The control of this name, a visible one first; null when no visible window holds one.
// An empty window name looks through all visible windows. Throws when several visible ones share the name.
QWidget* LookForWidget(const QString& name, const QString& window = {});
// The same; throws when there is none.
QWidget* FindWidget(const QString& name, const QString& window = {});

// The action with this name, or whose menu has it, in any visible window. Throws when there is none.
QAction* FindAction(const QString& name);
// The names to click one after the other to reach the action from the menu bar.
QStringList MenuPath(const QAction* action);
// Where the action can be clicked now: in an open menu, a tool bar or the menu bar; a null widget when
// nowhere.
Spot ActionSpot(QAction* action);

// Throws when a user could not click there: hidden, covered, outside its window or blocked by a modal window.
void RequireReachable(const Spot& spot);

// Whether a modal window keeps input from this top-level window.
bool IsBlocked(const QWidget* window);

// The objectName of the widget or of the nearest widget around it that has one of the program's own.
QString NearestName(const QWidget* widget);

} // namespace velmo::driver
