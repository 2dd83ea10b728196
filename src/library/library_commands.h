#pragma once

#include "library/browser_panes.h"
#include "library/category_clipboard.h"
#include "library/entry_list.h"
#include "platform/modal_window.h"

#include <QMenu>

#include <functional>

namespace velmo {

// The commands with which a library is kept: the Edit menu, the pop-up over tree and list, and their keys.
class LibraryCommands : public QObject {
    Q_OBJECT

public:
    // What the commands work on; all of it outlives them.
    struct Browser {
        ModalWindow& window;
        BrowserPanes& panes;
        EntryList& entries;
        // Shows what is in the library now, with the category CurFolderID selected.
        std::function<void()> rebuildTree;
        // Whether the selected category is what is shown.
        std::function<bool()> isCategoryShown;
    };

    LibraryCommands(Browser browser, GlobalState& state, MessageBoxes& messages);

    // The Edit menu, for the menu bar.
    QMenu& EditMenu() { return VlmMnuEdit_; }
    // No menu and no key from now on.
    void SwitchOff();

Q_SIGNALS:
    // A command has ended; the library may have changed.
    void Done();

private:
    // Where the pop-up was last opened; the commands work on what is there. All but Tree mean the list.
    enum PopSource : int { Nowhere = 0, Tree = 1, Entry = 5, EmptyList = 6 };
    using Command = void (LibraryCommands::*)();

    QAction* MakeAction(const char* name, const QString& caption, Command command,
                        const QKeySequence& shown = {});
    void BuildPopUp();
    void BuildEditMenu();
    void AddKey(QWidget* view, const QKeySequence& key, Command command);
    void AddMenuKey(QAbstractItemView* view);
    void Run(Command command);

    bool HasSelectedEntry() const;
    bool IsPossible(Command command) const;
    void ShowWhatIsPossible();
    void ShowPopUp(QAbstractItemView& view, PopSource source, const QPoint& place);
    void ShowTreePopUp(const QPoint& place);
    void ShowListPopUp(const QPoint& place);

    void Add();
    void Edit();
    void Delete();
    void MoveTool();
    void Copy();
    void Cut();
    void Paste();

    void ShowEditor(std::int16_t editMode);
    void RebuildTree();
    void ShowStoredFolder();

    Browser browser_;
    GlobalState& state_;
    MessageBoxes& messages_;
    QMenu VlmMnuEdit_;
    QMenu VlmMnuPop_;
    QAction* VlmMnuPopAdd_ = nullptr;
    QAction* VlmMnuPopDel_ = nullptr;
    QAction* VlmMnuPopEdt_ = nullptr;
    QAction* VlmMnuPopTool_ = nullptr;
    QAction* VlmMnuPopCopy_ = nullptr;
    QAction* VlmMnuPopCut_ = nullptr;
    QAction* VlmMnuPopPaste_ = nullptr;
    QList<QAction*> keys_;
    PopSource PopSource_ = Nowhere;
    CategoryClipboard clipboard_;
};

} // namespace velmo
