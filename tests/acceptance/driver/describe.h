#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QMessageBox>
#include <QWidget>

class QAction;

namespace velmo::driver {

// Name, class, title, state and place of every visible top-level window, the one in front first.
QJsonArray DescribeWindows();

QJsonObject DescribeWidget(const QWidget* widget);
// The same for any property of Qt's; throws when the widget has none of this name.
QJsonValue PropertyValue(const QWidget* widget, const QString& property);

QJsonObject DescribeAction(QAction* action);
// Name, text and state of a menu's visible entries, from top to bottom, without the lines between them.
QJsonArray DescribeMenu(const QString& menu);

// All keys that a window listens to: "key", "name" of what they do, and "scope", the control that must have
// the focus for it; empty when any may.
QJsonArray DescribeShortcuts(const QWidget* window);

// The message box that the user has in front; null when there is none.
QMessageBox* OpenBox();
// Its texts and buttons, and a number that tells it from every other box of this run.
QJsonObject DescribeBox(QMessageBox* box);
// The button with this standard name ("Ok", "Yes", "No", "Cancel"). Throws when the box does not have it.
QAbstractButton* BoxButton(const QMessageBox* box, const QString& name);

// The texts of a status bar's panels, left to right.
QJsonArray PanelTexts(const QWidget* statusBar);

// All visible windows with the texts of their controls, for people who read a failure.
QString Dump();

} // namespace velmo::driver
