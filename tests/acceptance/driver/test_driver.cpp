#include "test_driver.h"

#include "describe.h"
#include "driver_error.h"
#include "items.h"

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QJsonDocument>
#include <QPixmap>
#include <QTimer>

namespace velmo::driver {

namespace {

QPoint Point(const QJsonValue& value) {
    return {value[0].toInt(), value[1].toInt()};
}

QJsonObject State() {
    const QWidget* popup = QApplication::activePopupWidget();
    const QWidget* modal = QApplication::activeModalWidget();
    const QWidget* active = QApplication::activeWindow();
    return {{"focus", NearestName(QApplication::focusWidget())},
            {"popup", popup != nullptr ? NearestName(popup) : QString()},
            {"popupOpen", popup != nullptr},
            {"modal", modal != nullptr ? modal->objectName() : QString()},
            {"active", active != nullptr ? active->objectName() : QString()},
            {"platform", QGuiApplication::platformName()}};
}

QJsonObject DescribeCombo(const QString& name) {
    const auto* combo = qobject_cast<QComboBox*>(FindWidget(name));
    if (combo == nullptr)
        throw DriverError(name + " is not a combo box");
    QJsonArray items;
    for (int item = 0; item < combo->count(); ++item)
        items.append(combo->itemText(item));
    return {{"items", items},
            {"text", combo->currentText()},
            {"index", combo->currentIndex()},
            {"open", combo->view()->isVisible()}};
}

void Grab(const QJsonObject& command) {
    const QString name = command["name"].toString();
    const QString file = command["file"].toString();
    QWidget* widget = name.isEmpty() ? FindWindow({}) : FindWidget(name);
    if (!widget->grab().save(file))
        throw DriverError("cannot write the picture " + file);
}

} // namespace

TestDriver::TestDriver(const QString& server) : input_(this) {
    connect(&socket_, &QLocalSocket::readyRead, this, &TestDriver::ReadCommands);
    // Connecting waits for the event loop, so that a connected program is one that takes input.
    QTimer::singleShot(0, this, [this, server] { socket_.connectToServer(server); });
}

void TestDriver::ReadCommands() {
    while (socket_.canReadLine()) {
        const QByteArray line = socket_.readLine();
        const QJsonObject command = QJsonDocument::fromJson(line).object();
        steps_.emplace_back([this, command] { RunCommand(command); });
    }
    PostNext();
}

void TestDriver::PostNext() {
    if (posted_ || steps_.empty())
        return;
    posted_ = true;
    QMetaObject::invokeMethod(this, &TestDriver::RunNext, Qt::QueuedConnection);
}

void TestDriver::RunNext() {
    posted_ = false;
    if (steps_.empty())
        return;
    if (!activating_ && input_.ActivateSomeWindow()) {
        // The window system gets a turn of the event loop to make the window active.
        activating_ = true;
        posted_ = true;
        QTimer::singleShot(0, this, &TestDriver::RunNext);
        return;
    }
    activating_ = false;
    if (MustWait()) {
        posted_ = true;
        QTimer::singleShot(1, this, &TestDriver::RunNext);
        return;
    }
    const Step step = std::move(steps_.front());
    steps_.pop_front();
    // The step may not return before a window that it opens is closed: the next one must already be on its
    // way.
    PostNext();
    try {
        step();
    } catch (const DriverError& error) {
        lateError_ = error.what();
    }
}

bool TestDriver::MustWait() {
    constexpr int longest = 10000; // Milliseconds.
    if (!input_.AwaitsWindowManager()) {
        windowDue_.reset();
        return false;
    }
    if (!windowDue_)
        windowDue_ = QDeadlineTimer(longest);
    return !windowDue_->hasExpired();
}

void TestDriver::RunCommand(const QJsonObject& command) {
    Outcome outcome;
    QJsonObject answer{{"id", command["id"]}};
    try {
        outcome = Execute(command);
        answer["result"] = outcome.result;
    } catch (const DriverError& error) {
        answer["error"] = error.what();
    }
    if (QMessageBox* box = OpenBox())
        answer["box"] = DescribeBox(box);
    if (!lateError_.isEmpty())
        answer["late"] = lateError_;
    lateError_.clear();
    socket_.write(QJsonDocument(answer).toJson(QJsonDocument::Compact) + '\n');
    socket_.flush();
    steps_.insert(steps_.begin(), outcome.steps.begin(), outcome.steps.end());
    PostNext();
}

TestDriver::Outcome TestDriver::Execute(const QJsonObject& command) {
    const QString verb = command["do"].toString();
    if (verb == "click" || verb == "drag" || verb == "move" || verb == "key" || verb == "type" ||
        verb == "close" || verb == "resize" || verb == "minimize")
        return {true, Act(verb, command)};
    return {Ask(verb, command), {}};
}

QJsonValue TestDriver::Ask(const QString& verb, const QJsonObject& command) const {
    const QString name = command["name"].toString();
    const QString window = command["window"].toString();
    if (verb == "state")
        return State();
    if (verb == "windows")
        return DescribeWindows();
    if (verb == "dump")
        return Dump();
    if (verb == "exists")
        return LookForWidget(name, window) != nullptr;
    if (verb == "widget")
        return DescribeWidget(FindWidget(name, window));
    if (verb == "property")
        return PropertyValue(FindWidget(name, window), command["property"].toString());
    if (verb == "view")
        return DescribeView(FindView(name, command["popup"].toBool()));
    if (verb == "tree") {
        const QAbstractItemView* view = FindView(name);
        return DescribeTree(view, view->rootIndex());
    }
    if (verb == "item") {
        const QAbstractItemView* view = FindView(name);
        return DescribeItem(view, FindItem(view, command["at"].toObject()));
    }
    if (verb == "combo")
        return DescribeCombo(name);
    if (verb == "action")
        return DescribeAction(FindAction(name));
    if (verb == "menu")
        return DescribeMenu(name);
    if (verb == "shortcuts")
        return DescribeShortcuts(FindWindow(window));
    if (verb == "menuPath")
        return QJsonArray::fromStringList(MenuPath(FindAction(name)));
    if (verb == "clipboard")
        return QGuiApplication::clipboard()->text();
    if (verb == "setClipboard") {
        QGuiApplication::clipboard()->setText(command["text"].toString());
        return true;
    }
    if (verb == "panels")
        return PanelTexts(FindWidget(name, window));
    if (verb == "grab") {
        Grab(command);
        return true;
    }
    throw DriverError("unknown command " + verb);
}

Spot TestDriver::Target(const QJsonObject& command) const {
    if (command.contains("button")) {
        const QMessageBox* box = OpenBox();
        if (box == nullptr)
            throw DriverError("no message box is open");
        QAbstractButton* button = BoxButton(box, command["button"].toString());
        return {button, button->rect().center()};
    }
    if (command.contains("action")) {
        const QString name = command["action"].toString();
        Spot spot = ActionSpot(FindAction(name));
        if (spot.widget == nullptr)
            throw DriverError(name + " cannot be clicked: its menu or tool bar is not shown");
        return spot;
    }
    const QString name = command["name"].toString();
    if (command.contains("at") || command.contains("branch")) {
        QAbstractItemView* view = FindView(name, command["popup"].toBool());
        if (command.contains("branch"))
            return BranchSpot(view, FindItem(view, command["branch"].toObject()));
        return ItemSpot(view, FindItem(view, command["at"].toObject()));
    }
    if (command.contains("border"))
        return BorderSpot(FindView(name), command["border"].toInt());
    if (command.contains("column"))
        return HeaderSpot(FindView(name), Qt::Horizontal, command["column"].toInt());
    if (command.contains("row"))
        return HeaderSpot(FindView(name), Qt::Vertical, command["row"].toInt());
    if (command["empty"].toBool())
        return EmptySpot(FindView(name));
    QWidget* widget = FindWidget(name, command["window"].toString());
    // An editable combo box is opened at its arrow.
    if (const auto* combo = qobject_cast<QComboBox*>(widget); combo != nullptr && combo->isEditable())
        return {widget, {widget->width() - 8, widget->height() / 2}};
    return {widget, command.contains("pos") ? Point(command["pos"]) : widget->rect().center()};
}

Steps TestDriver::Act(const QString& verb, const QJsonObject& command) {
    if (verb == "key")
        return input_.Key(command["key"].toString());
    if (verb == "type")
        return input_.Type(command["text"].toString());
    if (verb == "click" || verb == "drag" || verb == "move") {
        const Spot spot = Target(command);
        RequireReachable(spot);
        if (verb == "move")
            return input_.MoveTo(spot);
        if (verb == "drag")
            return input_.Drag(spot, Point(command["by"]));
        const auto modifiers = Qt::KeyboardModifiers(QFlag(command["modifiers"].toInt()));
        const bool right = command["right"].toBool();
        return input_.Click(spot, right ? Qt::RightButton : Qt::LeftButton, modifiers,
                            command["double"].toBool());
    }
    QWidget* window = FindWindow(command["window"].toString());
    if (verb == "close")
        return input_.CloseWindow(window);
    if (verb == "minimize")
        return input_.MinimizeWindow(window);
    const QPoint size = Point(command["size"]);
    return input_.ResizeWindow(window, {size.x(), size.y()});
}

} // namespace velmo::driver
