#include "library/browser_panes.h"

#include "library/browser_layout.h"
#include "library/find_box.h"
#include "platform/elided_label.h"
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
    VlmTreeSlide->SetEmptyText(QStringLiteral("スライドのない分類です"));
    findBox = new FindBox(*VlmTreeView, state, messages);
    layout = new BrowserLayout(findBox, VlmTreeSlide, VlmPDFSlide, VlmPdfList);
    window.setCentralWidget(layout);
    SetUpStatusBar(window);
    OrderTabs();
}

// What is chosen comes first, then what is looked at, then what is moved now and then.
void BrowserPanes::OrderTabs() {
    QList<QWidget*> order{VlmTreeView, VlmPdfList, VlmPDFSlide, VlmTreeSlide};
    for (SplitBar* bar : layout->findChildren<SplitBar*>())
        order << bar;
    for (qsizetype i = 1; i < order.size(); ++i)
        QWidget::setTabOrder(order[i - 1], order[i]);
}

void BrowserPanes::SetUpStatusBar(QMainWindow& window) {
    auto* status = new QStatusBar;
    status->setObjectName(QStringLiteral("VlmStatusBar"));
    const auto panel = [&](int stretch) {
        auto* made = new ElidedLabel;
        made->setIndent(window.fontMetrics().averageCharWidth());
        status->addWidget(made, stretch);
        return made;
    };
    pathPanel = panel(3);
    namePanel = panel(1);
    window.setStatusBar(status);
}

} // namespace velmo
