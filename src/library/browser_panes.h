#pragma once

#include "platform/keeps_selection.h"
#include "platform/message_boxes.h"
#include "startup/global_state.h"

#include <QLabel>
#include <QListView>

class QMainWindow;

namespace velmo {

class BrowserLayout;
class FindBox;
class KeyedTree;
class SlideView;

// The controls that the browser shows: the category tree with the search above and the category's slide below
// it, the slide of the chosen entry above the list, the status bar.
struct BrowserPanes {
    KeyedTree* VlmTreeView = nullptr;
    SlideView* VlmTreeSlide = nullptr;
    SlideView* VlmPDFSlide = nullptr;
    KeepsSelection<QListView>* VlmPdfList = nullptr;
    FindBox* findBox = nullptr;
    BrowserLayout* layout = nullptr;
    // The status bar's panels: the path of the selected category, and the name of one that was just stored.
    QLabel* pathPanel = nullptr;
    QLabel* namePanel = nullptr;

    // Makes the controls and lays them out in the window.
    void SetUp(QMainWindow& window, const GlobalState& state, MessageBoxes& messages);

private:
    void SetUpStatusBar(QMainWindow& window);
    void OrderTabs();
};

} // namespace velmo
