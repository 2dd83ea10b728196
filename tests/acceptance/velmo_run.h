#pragma once

#include "driver_link.h"

#include <QImage>
#include <QJsonArray>
#include <QPoint>
#include <QSize>

#include <functional>
#include <optional>

namespace velmo {

// An item of a view: by place, by text, or by the texts on the way to it from a tree's top.
class Item {
public:
    // 0-based model row and column.
    static Item Cell(int row, int col) { return Item({{"row", row}, {"col", col}}); }
    static Item Named(const QString& text, int col = 0) { return Item({{"text", text}, {"col", col}}); }
    static Item Path(const QStringList& texts) { return Item({{"path", QJsonArray::fromStringList(texts)}}); }

    const QJsonObject& Address() const { return address_; }

private:
    explicit Item(QJsonObject address) : address_(std::move(address)) {}

    QJsonObject address_;
};

// A message box that is open in the program.
struct Message {
    QString title;
    QString text;
    // Standard names ("Ok", "Yes", "No") and what stands on the buttons.
    QStringList buttons;
    QStringList captions;
};

// A run of the program, used as its user does: by mouse and keys, and by looking at what is shown. Controls,
// windows, menu items and tool-bar buttons go by their objectName. Everything throws HarnessError, with all
// that is on the screen, when a control is missing or cannot be reached, and when a message box opens that
// nobody waited for.
class VelmoRun {
public:
    explicit VelmoRun(const Launch& launch) : link_(launch) {}

    // --- waiting: asks again and again until the condition holds; the deadline is the harness's
    void WaitFor(const QString& what, const std::function<bool()>& condition);
    void WaitForWindow(const QString& name);
    void WaitUntilClosed(const QString& window);
    void WaitForText(const QString& control, const QString& text);
    // Waits for the program's end and gives its exit status.
    int WaitForEnd();
    bool HasEnded() { return link_.HasEnded(); }

    // --- looking
    bool IsWindowShown(const QString& name);
    // "windows" of the driver: name, title, modal, active, minimized, onTop, rect ... of every visible
    // window.
    QJsonArray Windows();
    QJsonObject Window(const QString& name);
    // Whether the control exists in a visible window and can be seen.
    bool IsVisible(const QString& control);
    bool IsEnabled(const QString& control);
    QString Text(const QString& control);
    QJsonValue Property(const QString& control, const QString& property);
    // The named control that has the keyboard focus.
    QString Focus();
    QStringList Panels(const QString& statusBar);
    // text, shortcuts, enabled, visible, checked, checkable, shown
    QJsonObject Action(const QString& name);
    // The texts of a menu's entries, from top to bottom; greyed ones in parentheses.
    QStringList MenuEntries(const QString& menu);
    // "key", "name", "scope" of all keys that a window listens to; any control may have the focus without a
    // scope.
    QJsonArray Shortcuts(const QString& window);
    QStringList ComboItems(const QString& combo);

    // rows, cols, texts, columnHeaders, rowHeaders, current, selection
    QJsonObject View(const QString& view);
    // All display texts of a table or list, row by row.
    QList<QStringList> Texts(const QString& view);
    QStringList Column(const QString& view, int col);
    // text, icon, current, selected, expanded, children, visible, rect ...
    QJsonObject Describe(const QString& view, const Item& item);
    // The loaded items of a tree, one line each, two blanks before each level; "+" after a folded item with
    // children.
    QStringList Tree(const QString& view);

    // --- hands
    void Click(const QString& control);
    void ClickAt(const QString& control, const QPoint& pos);
    void DoubleClick(const QString& control);
    void Click(const QString& view, const Item& item);
    void ControlClick(const QString& view, const Item& item);
    void ShiftClick(const QString& view, const Item& item);
    void RightClick(const QString& view, const Item& item);
    void DoubleClick(const QString& view, const Item& item);
    // The mark before a tree's item that opens and closes it.
    void ClickBranch(const QString& tree, const Item& item);
    void RightClickEmpty(const QString& view);
    void ClickColumnHeader(const QString& view, int section);
    void RightClickColumnHeader(const QString& view, int section);
    void ClickRowHeader(const QString& view, int section);
    void RightClickRowHeader(const QString& view, int section);
    void Drag(const QString& control, const QPoint& by);
    // From the middle of a cell to that of another.
    void Drag(const QString& view, const Item& from, const Item& to);
    // The right border of a column's header.
    void DragColumnBorder(const QString& view, int section, int by);
    void DoubleClickColumnBorder(const QString& view, int section);
    // Through the menu bar, opening menu after menu.
    void ClickMenu(const QString& action);
    // Where it is shown now: in an open menu or as a tool-bar button.
    void ClickAction(const QString& action);
    // Opens the list unless it is open, and clicks the item.
    void ChooseInCombo(const QString& combo, const QString& text);
    // A key with its modifiers: "Return", "Ctrl+C", "Shift+Tab".
    void Press(const QString& key);
    void Type(const QString& text);

    // --- the clipboard that the program shares with others
    QString Clipboard();
    void SetClipboard(const QString& text);

    // --- message boxes
    // Waits for the next box, whatever it says.
    Message WaitForMessage();
    // The box that is open now, whatever it says, if there is one.
    std::optional<Message> OpenMessage();
    // Waits for the next box and throws when it says something else.
    Message ExpectMessage(const QString& text);
    // Clicks a standard button of the box that was waited for.
    void Answer(const QString& button);
    void AnswerOk() { Answer("Ok"); }
    void AnswerYes() { Answer("Yes"); }
    void AnswerNo() { Answer("No"); }

    // --- window manager
    void CloseWindow(const QString& window);
    void ResizeWindow(const QString& window, const QSize& size);
    void MinimizeWindow(const QString& window);

    // --- pictures
    // The control or window as it looks now; an empty name is the window in front.
    void SavePicture(const QString& control, const QString& file);
    QImage Picture(const QString& control);

    // All visible windows with the texts of their controls.
    QString Screen();
    QString ErrorOutput() { return link_.ErrorOutput(); }

    // One command to the driver, for what has no function here.
    QJsonValue Do(const QJsonObject& command);

private:
    QJsonObject CallAndExplain(const QJsonObject& command);
    Message Know(const QJsonValue& box);
    QString TryScreen();
    void ThrowWithScreen(const QString& what);

    DriverLink link_;
    // The number of the box that a test knows of.
    int knownBox_ = 0;
};

} // namespace velmo
