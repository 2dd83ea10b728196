#include "describe.h"

#include "controls.h"
#include "driver_error.h"
#include "items.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMetaProperty>
#include <QPushButton>
#include <QShortcut>
#include <QStatusBar>

#include <algorithm>

namespace velmo::driver {

namespace {

struct ButtonName {
    QMessageBox::StandardButton button;
    const char* name;
};

constexpr ButtonName buttonNames[] = {
    {QMessageBox::Ok, "Ok"},         {QMessageBox::Yes, "Yes"},       {QMessageBox::No, "No"},
    {QMessageBox::Cancel, "Cancel"}, {QMessageBox::Close, "Close"},   {QMessageBox::Abort, "Abort"},
    {QMessageBox::Retry, "Retry"},   {QMessageBox::Ignore, "Ignore"},
};

QString TextOf(const QWidget* widget) {
    for (const char* property : {"text", "currentText", "plainText", "title"}) {
        if (widget->metaObject()->indexOfProperty(property) >= 0)
            return widget->property(property).toString();
    }
    return widget->isWindow() ? widget->windowTitle() : QString();
}

QJsonArray Rect(const QRect& rect) {
    return {rect.x(), rect.y(), rect.width(), rect.height()};
}

QString DumpWidget(const QWidget* widget, const QString& indent) {
    QString line =
        indent + NearestName(widget) + " [" + widget->metaObject()->className() + "] " + TextOf(widget);
    if (!widget->isEnabled())
        line += " (disabled)";
    if (widget->hasFocus())
        line += " (focus)";
    line += '\n';
    const auto* view = qobject_cast<const QAbstractItemView*>(widget);
    if (view == nullptr || view->model() == nullptr)
        return line;
    const QAbstractItemModel* model = view->model();
    constexpr int mostRows = 30;
    for (int row = 0; row < std::min(model->rowCount(), mostRows); ++row) {
        QStringList cells;
        for (int col = 0; col < model->columnCount(); ++col)
            cells.append(model->index(row, col).data().toString());
        line += indent + "    | " + cells.join(" | ") + '\n';
    }
    return line;
}

// Before that nobody could click its buttons.
bool IsLaidOut(const QMessageBox* box) {
    const QList<QAbstractButton*> buttons = box->buttons();
    return std::all_of(buttons.begin(), buttons.end(), [](const QAbstractButton* button) {
        return button->isVisible() && !button->rect().isEmpty();
    });
}

} // namespace

QJsonArray DescribeWindows() {
    QJsonArray windows;
    const QList<QWidget*> visible = VisibleWindows();
    for (const QWidget* window : visible) {
        QJsonObject one = DescribeWidget(window);
        one["title"] = window->windowTitle();
        one["modal"] = window->isModal();
        one["active"] = window->isActiveWindow();
        one["minimized"] = window->isMinimized();
        one["blocked"] = IsBlocked(window);
        windows.append(one);
    }
    return windows;
}

QJsonObject DescribeWidget(const QWidget* widget) {
    const QWidget* window = widget->window();
    const QRect inWindow(widget->mapTo(window, QPoint()), widget->size());
    return {{"name", widget->objectName()},
            {"class", widget->metaObject()->className()},
            {"window", window->objectName()},
            {"visible", widget->isVisible()},
            {"enabled", widget->isEnabled()},
            {"focus", QApplication::focusWidget() != nullptr &&
                          (widget->hasFocus() || widget->isAncestorOf(QApplication::focusWidget()))},
            {"text", TextOf(widget)},
            {"rect", Rect(widget->isWindow() ? widget->geometry() : inWindow)},
            {"onTop", window->windowFlags().testFlag(Qt::WindowStaysOnTopHint)},
            {"windowType", static_cast<int>(window->windowType())}};
}

QJsonValue PropertyValue(const QWidget* widget, const QString& property) {
    const QMetaObject* meta = widget->metaObject();
    const int at = meta->indexOfProperty(property.toUtf8().constData());
    const QVariant value =
        at >= 0 ? meta->property(at).read(widget) : widget->property(property.toUtf8().constData());
    if (!value.isValid())
        throw DriverError(widget->objectName() + " has no property " + property);
    switch (value.userType()) {
    case QMetaType::QRect:
        return Rect(value.toRect());
    case QMetaType::QSize:
        return QJsonArray{value.toSize().width(), value.toSize().height()};
    case QMetaType::QPoint:
        return QJsonArray{value.toPoint().x(), value.toPoint().y()};
    default:
        break;
    }
    if (at >= 0 && meta->property(at).isEnumType())
        return value.toInt();
    return QJsonValue::fromVariant(value);
}

QJsonObject DescribeAction(QAction* action) {
    QJsonArray shortcuts;
    const QList<QKeySequence> sequences = action->shortcuts();
    for (const QKeySequence& shortcut : sequences)
        shortcuts.append(shortcut.toString(QKeySequence::PortableText));
    return {{"text", action->text()},
            {"shortcuts", shortcuts},
            {"visible", action->isVisible()},
            {"enabled", action->isEnabled()},
            {"checkable", action->isCheckable()},
            {"checked", action->isChecked()},
            {"icon", !action->icon().isNull()},
            {"shown", ActionSpot(action).widget != nullptr}};
}

QJsonArray DescribeMenu(const QString& menu) {
    const QMenu* found = nullptr;
    const QWidgetList all = QApplication::allWidgets();
    for (const QWidget* widget : all) {
        const auto* one = qobject_cast<const QMenu*>(widget);
        if (one != nullptr && one->objectName() == menu && (found == nullptr || one->isVisible()))
            found = one;
    }
    if (found == nullptr)
        throw DriverError("no menu " + menu);
    QJsonArray entries;
    const QList<QAction*> actions = found->actions();
    for (QAction* action : actions) {
        if (action->isSeparator() || !action->isVisible())
            continue;
        QJsonObject entry = DescribeAction(action);
        entry["name"] = action->objectName();
        entries.append(entry);
    }
    return entries;
}

QJsonArray DescribeShortcuts(const QWidget* window) {
    QJsonArray shortcuts;
    const auto add = [&shortcuts](const QKeySequence& key, const QString& name, const QString& scope) {
        if (!key.isEmpty())
            shortcuts.append(QJsonObject{
                {"key", key.toString(QKeySequence::PortableText)}, {"name", name}, {"scope", scope}});
    };
    const auto isNarrow = [](Qt::ShortcutContext context) {
        return context == Qt::WidgetShortcut || context == Qt::WidgetWithChildrenShortcut;
    };
    const QList<QWidget*> controls = window->findChildren<QWidget*>();
    for (const QWidget* control : controls) {
        if (control->window() != window)
            continue;
        if (const auto* button = qobject_cast<const QAbstractButton*>(control))
            add(button->shortcut(), NearestName(button), {});
        const auto* menuBar = qobject_cast<const QMenuBar*>(control);
        const QList<QAction*> actions = control->actions();
        for (const QAction* action : actions) {
            // The letters in the menus themselves count only while these are open.
            if (menuBar != nullptr && action->menu() != nullptr && action->isVisible())
                add(QKeySequence::mnemonic(action->text()), action->menu()->objectName(), {});
            if (isNarrow(action->shortcutContext()) && qobject_cast<const QMenu*>(control) == nullptr) {
                for (const QKeySequence& key : action->shortcuts())
                    add(key, action->text() + action->objectName(), NearestName(control));
            }
        }
    }
    const QList<QAction*> actions = window->findChildren<QAction*>();
    for (const QAction* action : actions) {
        if (!isNarrow(action->shortcutContext())) {
            for (const QKeySequence& key : action->shortcuts())
                add(key, action->text() + action->objectName(), {});
        }
    }
    const QList<QShortcut*> others = window->findChildren<QShortcut*>();
    for (const QShortcut* shortcut : others) {
        const bool narrow = isNarrow(shortcut->context());
        for (const QKeySequence& key : shortcut->keys())
            add(key, "QShortcut",
                narrow ? NearestName(qobject_cast<QWidget*>(shortcut->parent())) : QString());
    }
    return shortcuts;
}

QMessageBox* OpenBox() {
    QMessageBox* open = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    const QList<QWidget*> windows = VisibleWindows();
    for (QWidget* window : windows) {
        if (open == nullptr)
            open = qobject_cast<QMessageBox*>(window);
    }
    return open != nullptr && IsLaidOut(open) ? open : nullptr;
}

QJsonObject DescribeBox(QMessageBox* box) {
    static int lastSerial = 0;
    if (!box->property("velmoTestSerial").isValid())
        box->setProperty("velmoTestSerial", ++lastSerial);
    QJsonArray buttons;
    const QList<QAbstractButton*> all = box->buttons();
    for (QAbstractButton* button : all) {
        QString name;
        for (const ButtonName& known : buttonNames) {
            if (known.button == box->standardButton(button))
                name = known.name;
        }
        buttons.append(QJsonObject{
            {"name", name}, {"caption", button->text()}, {"default", button == box->defaultButton()}});
    }
    return {{"serial", box->property("velmoTestSerial").toInt()},
            {"title", box->windowTitle()},
            {"text", box->text()},
            {"informative", box->informativeText()},
            {"icon", static_cast<int>(box->icon())},
            {"buttons", buttons}};
}

QAbstractButton* BoxButton(const QMessageBox* box, const QString& name) {
    for (const ButtonName& known : buttonNames) {
        if (name == known.name && box->button(known.button) != nullptr)
            return box->button(known.button);
    }
    throw DriverError("the message box has no button " + name);
}

QJsonArray PanelTexts(const QWidget* statusBar) {
    QList<QLabel*> labels = statusBar->findChildren<QLabel*>();
    std::sort(labels.begin(), labels.end(), [](const QLabel* a, const QLabel* b) { return a->x() < b->x(); });
    QJsonArray texts;
    for (const QLabel* label : std::as_const(labels))
        texts.append(label->text());
    return texts;
}

QString Dump() {
    QString text;
    const QList<QWidget*> windows = VisibleWindows();
    for (QWidget* window : windows) {
        text += DumpWidget(window, {});
        if (const auto* box = qobject_cast<QMessageBox*>(window)) {
            text += "    title: " + box->windowTitle() + "\n    text: " + box->text() + '\n';
            continue;
        }
        const QList<QWidget*> children = window->findChildren<QWidget*>();
        for (const QWidget* child : children) {
            const bool own = !child->objectName().isEmpty() && !child->objectName().startsWith("qt_");
            if (child->window() == window && child->isVisible() && own)
                text += DumpWidget(child, "    ");
        }
    }
    return text.isEmpty() ? QString("no visible window\n") : text;
}

} // namespace velmo::driver
