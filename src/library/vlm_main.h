#pragma once

#include "library/browser_panes.h"
#include "library/category_tree.h"
#include "library/entry_list.h"
#include "library/find_box.h"
#include "library/library_commands.h"
#include "library/library_files.h"
#include "platform/message_boxes.h"
#include "platform/modal_window.h"
#include "platform/settings_store.h"
#include "startup/global_state.h"

#include <QToolBar>

#include <functional>
#include <memory>

namespace velmo {

// The library browser: the category tree with the category's slide, the entries of a category with the slide
// of the chosen one; hands the chosen symbol to the variable window.
class VLM_MAIN : public ModalWindow {
    Q_OBJECT

public:
    // Shows the variable window on SymbolFile until it closes; its cancel calls ForgetOpened.
    using ShowVariableWindow = std::function<void(VLM_MAIN& browser)>;

    VLM_MAIN(GlobalState& state, SettingsStore& settings, MessageBoxes& messages,
             ShowVariableWindow showVariableWindow);

    // Opens the libraries, fills the tree and restores what was chosen last. Every failure ends the program.
    // False when the user stopped the making of a library; the window must not be shown then.
    bool Load();

    // Nothing is saved when the window closes, until the next Open.
    void ForgetOpened() { opened_ = false; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void BuildControls();
    QAction* MakeCommand(const char* name, const QIcon& icon, const QString& text, std::function<void()> run);
    void BuildFileMenu();
    void BuildToolBar();
    void BuildDisplayMenu();
    void OpenOrCreateLibraries();
    void RestorePlace();
    void RebuildTree();
    void ClearCategory();
    void ShowCategory(EntryList::Restore restore);
    bool ChooseFound(const FoundName& found);
    void OpenSymbol();
    void CancelBrowser();
    QRect NormalPlace() const;
    void SaveOnClose();

    GlobalState& state_;
    SettingsStore& settings_;
    MessageBoxes& messages_;
    ShowVariableWindow showVariableWindow_;

    BrowserPanes panes_;
    QMenu* VlmMnuDisp_ = nullptr;
    QToolBar* VlmToolbar_ = nullptr;
    CategoryTree* tree_ = nullptr;
    EntryList* entries_ = nullptr;
    std::unique_ptr<LibraryCommands> commands_;

    // The window was left through Open: its place and the choices are saved when it closes.
    bool opened_ = false;
    // From the window's own corner to that of its frame, when it is not maximised.
    QPoint frame_;
    // What tree and list show is the selected category.
    bool categoryShown_ = false;
    // The slide was double-clicked; the release of the button opens the symbol.
    bool slideArmed_ = false;
};

} // namespace velmo
