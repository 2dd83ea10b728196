#include "library/browser_panes.h"

#include "library/browser_layout.h"
#include "library/find_box.h"
#include "platform/keyed_tree.h"
#include "platform/slide_view.h"

#include <QMainWindow>
#include <QStatusBar>

namespace velmo {

namespace {

template <typename Control>
Control* Named(Control* control, const char* name, const QString& accessibleName) {
    control->setObjectName(QLatin1String(name));
    control->setAccessibleName(accessibleName);
    return control;
}

} // namespace

void BrowserPanes::SetUp(QMainWindow& window, const GlobalState& state, MessageBoxes& messages) {
    VlmTreeView = Named(new KeyedTree, "VlmTreeView", QStringLiteral("分類ツリー"));
    VlmTreeSlide = Named(new SlideView, "VlmTreeSlide", QStringLiteral("分類のスライド"));
    VlmPDFSlide = Named(new SlideView, "VlmPDFSlide", QStringLiteral("シンボルのスライド"));
    VlmPdfList = Named(new KeepsSelection<QListView>, "VlmPdfList", QStringLiteral("シンボルの一覧"));
    VlmTreeSlide->SetEmptyText(QStringLiteral("この分類にスライドはありません"));
    findBox = new FindBox(*VlmTreeView, state, messages);
    layout = new BrowserLayout(findBox, VlmTreeSlide, VlmPDFSlide, VlmPdfList);
    window.setCentralWidget(layout);
    SetUpStatusBar(window);
}

void BrowserPanes::SetUpStatusBar(QMainWindow& window) {
    auto* status = new QStatusBar;
    status->setObjectName(QStringLiteral("VlmStatusBar"));
    const auto panel = [&](int stretch) {
        auto* made = new QLabel;
        made->setTextFormat(Qt::PlainText);
        made->setIndent(window.fontMetrics().averageCharWidth());
        // A long text must not keep the window from becoming narrow.
        made->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        status->addWidget(made, stretch);
        return made;
    };
    pathPanel = panel(3);
    namePanel = panel(1);
    window.setStatusBar(status);
}

} // namespace velmo
