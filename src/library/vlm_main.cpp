#include "library/vlm_main.h"

#include "library/browser_icons.h"
#include "platform/files.h"
#include "platform/guarded.h"
#include "platform/progress_box.h"
#include "platform/slide_view.h"
#include "platform/window_places.h"
#include "startup/hand_off_files.h"
#include "startup/settings_keys.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QMenuBar>
#include <QMouseEvent>
#include <QScopedValueRollback>
#include <QSplitter>
#include <QStatusBar>
#include <QToolBar>

namespace velmo {

namespace {

namespace keys = settings_keys;

// Twips, unless the settings hold others.
constexpr double DefaultPlace = 1000;
constexpr double DefaultSize = 6500;
constexpr int MinimumWidth = 3000;
constexpr int MinimumHeight = 2000;

template <typename Control>
Control* Named(Control* control, const char* name, const QString& accessibleName) {
    control->setObjectName(QLatin1String(name));
    control->setAccessibleName(accessibleName);
    return control;
}

} // namespace

VLM_MAIN::VLM_MAIN(GlobalState& state, SettingsStore& settings, MessageBoxes& messages,
                   ShowVariableWindow showVariableWindow)
    : state_(state),
      settings_(settings),
      messages_(messages),
      showVariableWindow_(std::move(showVariableWindow)) {
    setObjectName(QStringLiteral("VLM_MAIN"));
    setWindowTitle(QStringLiteral("VELMO2 シンボルライブラリ"));
    setWindowIcon(SymbolIcon());
    BuildControls();
}

void VLM_MAIN::BuildControls() {
    BuildPanes();
    BuildMenus();
    tree_ = new CategoryTree(*VlmTreeView_, state_, messages_);
    tree_->setParent(this);
    entries_ = new EntryList(*VlmPdfList_, *VlmPDFSlide_, state_, settings_, messages_);
    entries_->setParent(this);
    connect(tree_, &CategoryTree::CategoryChosen, this,
            [this] { RunGuarded(messages_, this, [this] { ShowCategory(EntryList::Restore::No); }); });
    connect(entries_, &EntryList::OpenWanted, this,
            [this] { RunGuarded(messages_, this, [this] { OpenSymbol(); }); });
}

void VLM_MAIN::BuildPanes() {
    VlmTreeView_ = Named(new KeyedTree, "VlmTreeView", QStringLiteral("分類ツリー"));
    VlmTreeSlide_ = Named(new SlideView, "VlmTreeSlide", QStringLiteral("分類のスライド"));
    VlmPDFSlide_ = Named(new SlideView, "VlmPDFSlide", QStringLiteral("シンボルのスライド"));
    VlmPdfList_ = Named(new KeepsSelection<QListView>, "VlmPdfList", QStringLiteral("シンボルの一覧"));
    VlmPDFSlide_->installEventFilter(this);
    VlmTreeSlide_->SetEmptyText(QStringLiteral("この分類にスライドはありません"));

    auto* left = new QSplitter(Qt::Vertical);
    left->addWidget(VlmTreeView_);
    left->addWidget(VlmTreeSlide_);
    left->setSizes({300, 200});
    auto* right = new QSplitter(Qt::Vertical);
    right->addWidget(VlmPDFSlide_);
    right->addWidget(VlmPdfList_);
    right->setSizes({250, 250});
    auto* panes = new QSplitter(Qt::Horizontal);
    panes->addWidget(left);
    panes->addWidget(right);
    panes->setSizes({200, 300});
    for (QSplitter* splitter : {left, right, panes})
        splitter->setChildrenCollapsible(false);
    setCentralWidget(panes);
    setMinimumSize(TwipsToPixels(MinimumWidth), TwipsToPixels(MinimumHeight));

    auto* status = new QStatusBar;
    status->setObjectName(QStringLiteral("VlmStatusBar"));
    pathPanel_ = new QLabel;
    pathPanel_->setTextFormat(Qt::PlainText);
    pathPanel_->setIndent(fontMetrics().averageCharWidth());
    // A long path must not keep the window from becoming narrow.
    pathPanel_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    status->addWidget(pathPanel_, 1);
    setStatusBar(status);
}

void VLM_MAIN::BuildMenus() {
    const auto command = [this](const char* name, const QIcon& icon, const QString& text, auto action) {
        auto* item = new QAction(icon, text, this);
        item->setObjectName(QLatin1String(name));
        connect(item, &QAction::triggered, this, [this, action] { RunGuarded(messages_, this, action); });
        return item;
    };
    QMenu* file = menuBar()->addMenu(QStringLiteral("ファイル(&F)"));
    file->setObjectName(QStringLiteral("VlmMnuFile"));
    QAction* open =
        command("VlmMnuFileOpen", OpenIcon(), QStringLiteral("開く(&O)"), [this] { OpenSymbol(); });
    open->setShortcut(QKeySequence::Open);
    file->addAction(open);
    file->addSeparator();
    file->addAction(command("VlmMnuFileCan", CancelIcon(), QStringLiteral("キャンセル(&C)"),
                            [this] { CancelBrowser(); }));

    QToolBar* bar = addToolBar(QStringLiteral("ツールバー"));
    bar->setObjectName(QStringLiteral("VlmToolbar"));
    bar->setMovable(false);
    bar->setContextMenuPolicy(Qt::PreventContextMenu);
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    bar->addAction(command("Tbar_Open", OpenIcon(), QStringLiteral("開く"), [this] { OpenSymbol(); }));
    bar->addAction(command("Tbar_Cancel", CancelIcon(), QStringLiteral("閉じる"), [this] { close(); }));
}

bool VLM_MAIN::Load() {
    try {
        OpenOrCreateLibraries();
        RestorePlace();
        tree_->BuildCategoryTree();
    } catch (RuntimeError& error) {
        throw error.EndsProgram();
    } catch (const ImportCancelled&) {
        return false;
    }
    // A category that cannot be selected leaves a usable window.
    RunGuarded(messages_, this, [this] {
        tree_->RestoreSelection();
        ShowCategory(EntryList::Restore::Yes);
    });
    VlmTreeView_->setFocus();
    return true;
}

void VLM_MAIN::OpenOrCreateLibraries() {
    ProgressBox progress(nullptr, QStringLiteral("シンボルライブラリを作成しています..."),
                         ProgressBox::Cancel::Yes);
    LibraryCallbacks callbacks;
    callbacks.ask = [this](const QString& question) { return messages_.Ask(nullptr, question); };
    callbacks.progress = [&progress](qint64 done, qint64 total) { return progress.Report(done, total); };
    OpenLibraries(state_, settings_, callbacks);
}

void VLM_MAIN::RestorePlace() {
    const auto pixels = [this](const QString& key, double fallback) {
        return TwipsToPixels(settings_.GetNumber(key, fallback));
    };
    const QRect place(pixels(keys::VlmMainLeft, DefaultPlace), pixels(keys::VlmMainTop, DefaultPlace),
                      pixels(keys::VlmMainWidth, DefaultSize), pixels(keys::VlmMainHeight, DefaultSize));
    const QRect onScreen = BroughtOntoScreen(place);
    move(onScreen.topLeft());
    resize(onScreen.size());
}

void VLM_MAIN::ShowCategory(EntryList::Restore restore) {
    // Where a step fails, nothing of the category before stays in sight or can be opened.
    VlmTreeSlide_->Clear();
    pathPanel_->clear();
    entries_->Clear();
    {
        const QString& path = state_.SystemTreeFirst ? state_.SystemDb : state_.LibraryDb;
        Database database(path, Database::Access::Read);
        const Category category = ReadCategory(CategoryWithId(database, state_.CurFolderID));
        state_.CurSldFile = category.slide.isEmpty() ? QString() : state_.HomeDir + category.slide;
        state_.CurFolderName = category.name;
    }
    VlmTreeSlide_->ShowSlide(state_.CurSldFile);
    pathPanel_->setText(tree_->PathText());
    pathPanel_->setToolTip(tree_->PathText());
    entries_->FillEntryList(restore);
}

void VLM_MAIN::OpenSymbol() {
    if (state_.SymbolFile.isEmpty()) {
        messages_.Inform(this, QStringLiteral("シンボルを選択してください"));
        return;
    }
    if (!FileExists(state_.SymbolFile)) {
        messages_.Inform(this, state_.SymbolFile + QStringLiteral("が見つかりません"));
        return;
    }
    SetTopmost(this, false);
    opened_ = true;
    // A window that is left without an answer confirms nothing, whatever one before it did.
    state_.Confirmed = false;
    {
        const QScopedValueRollback<bool> covered(covered_, true);
        showVariableWindow_(*this);
    }
    if (state_.Confirmed && state_.RunMode != run_mode::UserLibrary)
        close();
    else
        SetTopmost(this, true);
}

void VLM_MAIN::CancelBrowser() {
    WriteNoSelection(state_.TempDir);
    opened_ = false;
    close();
}

void VLM_MAIN::resizeEvent(QResizeEvent* event) {
    ModalWindow::resizeEvent(event);
    if (!isMinimized() && !covered_)
        SetTopmost(this, true);
}

bool VLM_MAIN::eventFilter(QObject* watched, QEvent* event) {
    if (watched == VlmPDFSlide_ && event->type() == QEvent::MouseButtonDblClick) {
        slideArmed_ = static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton;
    } else if (watched == VlmPDFSlide_ && event->type() == QEvent::MouseButtonRelease &&
               std::exchange(slideArmed_, false)) {
        RunGuarded(messages_, this, [this] { OpenSymbol(); });
    }
    return ModalWindow::eventFilter(watched, event);
}

void VLM_MAIN::closeEvent(QCloseEvent* event) {
    if (opened_)
        RunGuarded(messages_, this, [this] { SaveOnClose(); });
    ModalWindow::closeEvent(event);
}

void VLM_MAIN::SaveOnClose() {
    if (!isMinimized()) {
        const QRect place = isMaximized() ? normalGeometry() : QRect(pos(), size());
        settings_.Save(keys::VlmMainLeft, PixelsToTwips(place.x()));
        settings_.Save(keys::VlmMainTop, PixelsToTwips(place.y()));
        settings_.Save(keys::VlmMainWidth, PixelsToTwips(place.width()));
        settings_.Save(keys::VlmMainHeight, PixelsToTwips(place.height()));
    }
    settings_.Save(keys::LastSymbol(state_.UserLibrary), state_.SymbolFile);
    if (state_.RunMode == run_mode::UserLibrary) {
        settings_.Save(keys::EdtTreeLast, state_.CurFolderID);
        settings_.Save(keys::Tree2nd1st, state_.SystemTreeFirst ? 1 : 0);
    } else {
        settings_.Save(state_.UserLibrary ? keys::UsrTreeLast : keys::TreeLast, state_.CurFolderID);
    }
    settings_.Flush();
}

} // namespace velmo
