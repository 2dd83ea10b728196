#include "velmo_run.h"

#include <QDeadlineTimer>
#include <QTemporaryDir>

namespace velmo {

namespace {

QStringList Strings(const QJsonValue& array) {
    QStringList texts;
    const QJsonArray items = array.toArray();
    for (const QJsonValue item : items)
        texts.append(item.toString());
    return texts;
}

void AddTree(const QJsonArray& items, const QString& indent, QStringList& lines) {
    for (const QJsonValue item : items) {
        const bool folded = item["hasChildren"].toBool() && !item["expanded"].toBool();
        lines.append(indent + item["text"].toString() + (folded ? "+" : ""));
        AddTree(item["items"].toArray(), indent + "  ", lines);
    }
}

QString BoxText(const QJsonValue& box) {
    return box["title"].toString() + ": " + box["text"].toString();
}

QJsonObject With(QJsonObject command, const QString& key, const QJsonValue& value) {
    command[key] = value;
    return command;
}

QJsonObject ClickOn(const QString& name) {
    return {{"do", "click"}, {"name", name}};
}

QJsonObject ClickOn(const QString& name, const Item& item) {
    return With(ClickOn(name), "at", item.Address());
}

} // namespace

QString VelmoRun::TryScreen() {
    try {
        return link_.Call({{"do", "dump"}})["result"].toString();
    } catch (const HarnessError&) {
        return {};
    }
}

void VelmoRun::ThrowWithScreen(const QString& what) {
    throw HarnessError(what + "\nOn the screen:\n" + TryScreen() + link_.ErrorOutput());
}

QJsonObject VelmoRun::CallAndExplain(const QJsonObject& command) {
    try {
        return link_.Call(command);
    } catch (const HarnessError& error) {
        if (link_.HasEnded())
            throw;
        ThrowWithScreen(error.what());
        throw;
    }
}

QJsonValue VelmoRun::Do(const QJsonObject& command) {
    const QJsonObject answer = CallAndExplain(command);
    const QJsonValue box = answer["box"];
    if (box.isObject() && box["serial"].toInt() != knownBox_)
        ThrowWithScreen("unexpected message " + BoxText(box));
    return answer["result"];
}

void VelmoRun::WaitFor(const QString& what, const std::function<bool()>& condition) {
    const QDeadlineTimer deadline(DriverLink::Deadline());
    while (!condition()) {
        if (deadline.hasExpired())
            ThrowWithScreen("waited in vain for " + what);
    }
}

void VelmoRun::WaitForWindow(const QString& name) {
    WaitFor("the window " + name, [&] { return IsWindowShown(name); });
}

void VelmoRun::WaitUntilClosed(const QString& window) {
    WaitFor("the end of " + window, [&] { return !IsWindowShown(window); });
}

void VelmoRun::WaitForText(const QString& control, const QString& text) {
    WaitFor(control + " to show " + text, [&] { return IsVisible(control) && Text(control) == text; });
}

int VelmoRun::WaitForEnd() {
    const QDeadlineTimer deadline(DriverLink::Deadline());
    constexpr int look = 5;
    while (!link_.HasEnded(look)) {
        QJsonObject answer;
        try {
            answer = link_.Call({{"do", "state"}});
        } catch (const HarnessError&) {
            // The line breaks while the program ends; whether it ends is seen above.
            if (deadline.hasExpired())
                throw;
            continue;
        }
        if (answer.contains("box"))
            ThrowWithScreen("unexpected message " + BoxText(answer["box"]));
        if (deadline.hasExpired())
            ThrowWithScreen("the program does not end");
    }
    return link_.ExitStatus();
}

bool VelmoRun::IsWindowShown(const QString& name) {
    const QJsonArray windows = Windows();
    for (const QJsonValue window : windows) {
        if (window["name"].toString() == name)
            return true;
    }
    return false;
}

QJsonArray VelmoRun::Windows() {
    return Do({{"do", "windows"}}).toArray();
}

QJsonObject VelmoRun::Window(const QString& name) {
    const QJsonArray windows = Windows();
    for (const QJsonValue window : windows) {
        if (window["name"].toString() == name)
            return window.toObject();
    }
    ThrowWithScreen("no visible window " + name);
    return {};
}

bool VelmoRun::IsVisible(const QString& control) {
    return Do({{"do", "exists"}, {"name", control}}).toBool() &&
           Do({{"do", "widget"}, {"name", control}})["visible"].toBool();
}

bool VelmoRun::IsEnabled(const QString& control) {
    return Do({{"do", "widget"}, {"name", control}})["enabled"].toBool();
}

QString VelmoRun::Text(const QString& control) {
    return Do({{"do", "widget"}, {"name", control}})["text"].toString();
}

QJsonValue VelmoRun::Property(const QString& control, const QString& property) {
    return Do({{"do", "property"}, {"name", control}, {"property", property}});
}

QString VelmoRun::Focus() {
    return Do({{"do", "state"}})["focus"].toString();
}

QStringList VelmoRun::Panels(const QString& statusBar) {
    return Strings(Do({{"do", "panels"}, {"name", statusBar}}));
}

QJsonObject VelmoRun::Action(const QString& name) {
    return Do({{"do", "action"}, {"name", name}}).toObject();
}

QStringList VelmoRun::MenuEntries(const QString& menu) {
    QStringList texts;
    const QJsonArray entries = Do({{"do", "menu"}, {"name", menu}}).toArray();
    for (const QJsonValue entry : entries) {
        const QString text = entry["text"].toString();
        texts.append(entry["enabled"].toBool() ? text : '(' + text + ')');
    }
    return texts;
}

QJsonArray VelmoRun::Shortcuts(const QString& window) {
    return Do({{"do", "shortcuts"}, {"window", window}}).toArray();
}

QStringList VelmoRun::ComboItems(const QString& combo) {
    return Strings(Do({{"do", "combo"}, {"name", combo}})["items"]);
}

QJsonObject VelmoRun::View(const QString& view) {
    return Do({{"do", "view"}, {"name", view}}).toObject();
}

QList<QStringList> VelmoRun::Texts(const QString& view) {
    QList<QStringList> rows;
    const QJsonArray texts = View(view)["texts"].toArray();
    for (const QJsonValue row : texts)
        rows.append(Strings(row));
    return rows;
}

QStringList VelmoRun::Column(const QString& view, int col) {
    QStringList texts;
    const QList<QStringList> rows = Texts(view);
    for (const QStringList& row : rows)
        texts.append(row.value(col));
    return texts;
}

QJsonObject VelmoRun::Describe(const QString& view, const Item& item) {
    return Do({{"do", "item"}, {"name", view}, {"at", item.Address()}}).toObject();
}

QStringList VelmoRun::Tree(const QString& view) {
    QStringList lines;
    AddTree(Do({{"do", "tree"}, {"name", view}}).toArray(), {}, lines);
    return lines;
}

void VelmoRun::Click(const QString& control) {
    Do(ClickOn(control));
}

void VelmoRun::ClickAt(const QString& control, const QPoint& pos) {
    Do(With(ClickOn(control), "pos", QJsonArray{pos.x(), pos.y()}));
}

void VelmoRun::DoubleClick(const QString& control) {
    Do(With(ClickOn(control), "double", true));
}

void VelmoRun::Click(const QString& view, const Item& item) {
    Do(ClickOn(view, item));
}

void VelmoRun::ControlClick(const QString& view, const Item& item) {
    Do(With(ClickOn(view, item), "modifiers", static_cast<int>(Qt::ControlModifier)));
}

void VelmoRun::ShiftClick(const QString& view, const Item& item) {
    Do(With(ClickOn(view, item), "modifiers", static_cast<int>(Qt::ShiftModifier)));
}

void VelmoRun::RightClick(const QString& view, const Item& item) {
    Do(With(ClickOn(view, item), "right", true));
}

void VelmoRun::DoubleClick(const QString& view, const Item& item) {
    Do(With(ClickOn(view, item), "double", true));
}

void VelmoRun::ClickBranch(const QString& tree, const Item& item) {
    Do(With(ClickOn(tree), "branch", item.Address()));
}

void VelmoRun::RightClickEmpty(const QString& view) {
    Do(With(With(ClickOn(view), "empty", true), "right", true));
}

void VelmoRun::ClickColumnHeader(const QString& view, int section) {
    Do(With(ClickOn(view), "column", section));
}

void VelmoRun::RightClickColumnHeader(const QString& view, int section) {
    Do(With(With(ClickOn(view), "column", section), "right", true));
}

void VelmoRun::ClickRowHeader(const QString& view, int section) {
    Do(With(ClickOn(view), "row", section));
}

void VelmoRun::RightClickRowHeader(const QString& view, int section) {
    Do(With(With(ClickOn(view), "row", section), "right", true));
}

void VelmoRun::Drag(const QString& control, const QPoint& by) {
    Do({{"do", "drag"}, {"name", control}, {"by", QJsonArray{by.x(), by.y()}}});
}

void VelmoRun::Drag(const QString& view, const Item& from, const Item& to) {
    const auto middle = [&](const Item& item) {
        const QJsonArray rect = Describe(view, item)["rect"].toArray();
        return QRect(rect[0].toInt(), rect[1].toInt(), rect[2].toInt(), rect[3].toInt()).center();
    };
    const QPoint by = middle(to) - middle(from);
    Do({{"do", "drag"}, {"name", view}, {"at", from.Address()}, {"by", QJsonArray{by.x(), by.y()}}});
}

void VelmoRun::DragColumnBorder(const QString& view, int section, int by) {
    Do({{"do", "drag"}, {"name", view}, {"border", section}, {"by", QJsonArray{by, 0}}});
}

void VelmoRun::DoubleClickColumnBorder(const QString& view, int section) {
    Do(With(With(ClickOn(view), "border", section), "double", true));
}

void VelmoRun::ClickMenu(const QString& action) {
    const QStringList path = Strings(Do({{"do", "menuPath"}, {"name", action}}));
    if (path.isEmpty())
        ThrowWithScreen(action + " is in no menu bar");
    for (const QString& name : path) {
        WaitFor("the menu with " + name, [&] { return Action(name)["shown"].toBool(); });
        ClickAction(name);
    }
}

void VelmoRun::ClickAction(const QString& action) {
    Do({{"do", "click"}, {"action", action}});
}

void VelmoRun::ChooseInCombo(const QString& combo, const QString& text) {
    const auto isOpen = [&] { return Do({{"do", "combo"}, {"name", combo}})["open"].toBool(); };
    if (!isOpen())
        Click(combo);
    WaitFor("the list of " + combo, isOpen);
    Do(With(ClickOn(combo, Item::Named(text)), "popup", true));
}

void VelmoRun::Press(const QString& key) {
    Do({{"do", "key"}, {"key", key}});
}

void VelmoRun::Type(const QString& text) {
    Do({{"do", "type"}, {"text", text}});
}

QString VelmoRun::Clipboard() {
    return Do({{"do", "clipboard"}}).toString();
}

void VelmoRun::SetClipboard(const QString& text) {
    Do({{"do", "setClipboard"}, {"text", text}});
}

Message VelmoRun::WaitForMessage() {
    QJsonValue box;
    WaitFor("a message", [&] {
        box = CallAndExplain({{"do", "state"}})["box"];
        return box.isObject() && box["serial"].toInt() != knownBox_;
    });
    return Know(box);
}

std::optional<Message> VelmoRun::OpenMessage() {
    const QJsonValue box = CallAndExplain({{"do", "state"}})["box"];
    return box.isObject() ? std::optional(Know(box)) : std::nullopt;
}

Message VelmoRun::Know(const QJsonValue& box) {
    knownBox_ = box["serial"].toInt();
    Message message{box["title"].toString(), box["text"].toString(), {}, {}};
    const QJsonArray buttons = box["buttons"].toArray();
    for (const QJsonValue button : buttons) {
        message.buttons.append(button["name"].toString());
        message.captions.append(button["caption"].toString());
    }
    return message;
}

Message VelmoRun::ExpectMessage(const QString& text) {
    Message message = WaitForMessage();
    if (message.text != text)
        ThrowWithScreen("the message is not \"" + text + "\" but \"" + message.text + '"');
    return message;
}

void VelmoRun::Answer(const QString& button) {
    Do({{"do", "click"}, {"button", button}});
}

void VelmoRun::CloseWindow(const QString& window) {
    Do({{"do", "close"}, {"window", window}});
}

void VelmoRun::ResizeWindow(const QString& window, const QSize& size) {
    Do({{"do", "resize"}, {"window", window}, {"size", QJsonArray{size.width(), size.height()}}});
}

void VelmoRun::MinimizeWindow(const QString& window) {
    Do({{"do", "minimize"}, {"window", window}});
}

void VelmoRun::SavePicture(const QString& control, const QString& file) {
    Do({{"do", "grab"}, {"name", control}, {"file", file}});
}

QImage VelmoRun::Picture(const QString& control) {
    const QTemporaryDir folder;
    const QString file = folder.filePath("picture.png");
    SavePicture(control, file);
    return QImage(file);
}

QString VelmoRun::Screen() {
    return Do({{"do", "dump"}}).toString();
}

} // namespace velmo
