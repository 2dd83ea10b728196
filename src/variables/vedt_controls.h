#pragma once

#include "platform/elided_label.h"
#include "platform/grid.h"
#include "variables/find_bar.h"

#include <QAction>
#include <QPushButton>
#include <QToolBar>

class QMainWindow;

namespace velmo {

class SlideView;

// The controls of the variable window and their places.
struct VedtControls {
    // Makes them in the window; the grids show these cells.
    void SetUp(QMainWindow& window, const GridCells& variables, const GridCells& table);
    // After the cells came: the grids show them and get the column widths of a freshly opened window.
    void ShowCells();

    QAction* VedtMnuFileOpen = nullptr;
    QAction* VedtMnuFileWrite = nullptr;
    QAction* VedtMnuFileCan = nullptr;
    QToolBar* Vedt_Toolbar = nullptr;
    QAction* TB_POINT = nullptr;
    Grid* Vedt_NowFGrid = nullptr;
    SlideView* Vedt_Slide = nullptr;
    Grid* Vedt_FlexGrid = nullptr;
    FindBar* findBar = nullptr;
    QPushButton* Vedt_TreeBtn = nullptr;
    QPushButton* Vedt_OKBtn = nullptr;
    QPushButton* VEdt_CanBtn = nullptr;
    ElidedLabel* hint = nullptr;

private:
    void MakeFileMenu(QMainWindow& window);
    QWidget* MakeVariablePane(const GridCells& variables);
    QWidget* MakeTablePane(const GridCells& table);
    void AcceptByKey(QMainWindow& window);
};

} // namespace velmo
