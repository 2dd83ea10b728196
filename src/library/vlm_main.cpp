#include "library/vlm_main.h"

#include "library/browser_icons.h"
#include "library/browser_layout.h"
#include "library/symbol_file_move.h"
#include "platform/files.h"
#include "platform/font_scale.h"
#include "platform/guarded.h"
#include "platform/numbers.h"
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
#include <QScopeGuard>
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
    panes_.SetUp(*this, state_, messages_);
    panes_.VlmPDFSlide->installEventFilter(this);
    // With a large font bars alone would fill the least window.
    setMinimumSize(QSize(TwipsToPixels(MinimumWidth), TwipsToPixels(MinimumHeight)) *
                   FontScale(fontMetrics()));
    tree_ = new CategoryTree(*panes_.VlmTreeView, state_, messages_);
    tree_->setParent(this);
    entries_ = new EntryList(*panes_.VlmPdfList, *panes_.VlmPDFSlide, state_, settings_, messages_);
    entries_->setParent(this);
    commands_ = std::make_unique<LibraryCommands>(LibraryCommands::Browser{*this, panes_, *entries_,
                                                                           [this] { RebuildTree(); },
                                                                           [this] { return categoryShown_; }},
                                                  state_, messages_);
    connect(tree_, &CategoryTree::CategoryChosen, this, [this] {
        RunGuarded(messages_, this, [this] {
            panes_.namePanel->clear();
            ShowCategory(EntryList::Restore::No);
        });
    });
    connect(entries_, &EntryList::OpenWanted, this,
            [this] { RunGuarded(messages_, this, [this] { OpenSymbol(); }); });
    connect(panes_.findBox, &FindBox::Chosen, this, [this](const FoundName& found, FindBox::Wish wish) {
        RunGuarded(messages_, this, [&] {
            if (ChooseFound(found) && found.entryId != 0 && wish == FindBox::Wish::Open)
                OpenSymbol();
        });
    });
    connect(commands_.get(), &LibraryCommands::Done, panes_.findBox, &FindBox::LookAgain);
    BuildFileMenu();
    menuBar()->addMenu(&commands_->EditMenu());
    BuildToolBar();
    BuildDisplayMenu();
}

QAction* VLM_MAIN::MakeCommand(const char* name, const QIcon& icon, const QString& text,
                               std::function<void()> run) {
    auto* command = new QAction(icon, text, this);
    command->setObjectName(QLatin1String(name));
    connect(command, &QAction::triggered, this,
            [this, run = std::move(run)] { RunGuarded(messages_, this, run); });
    return command;
}

void VLM_MAIN::BuildFileMenu() {
    QMenu* file = menuBar()->addMenu(QStringLiteral("ファイル(&F)"));
    file->setObjectName(QStringLiteral("VlmMnuFile"));
    QAction* open =
        MakeCommand("VlmMnuFileOpen", OpenIcon(), QStringLiteral("開く(&O)"), [this] { OpenSymbol(); });
    open->setShortcut(QKeySequence::Open);
    file->addAction(open);
    file->addSeparator();
    file->addAction(MakeCommand("VlmMnuFileCan", CancelIcon(), QStringLiteral("キャンセル(&C)"),
                                [this] { CancelBrowser(); }));
}

void VLM_MAIN::BuildToolBar() {
    VlmToolbar_ = addToolBar(QStringLiteral("ツールバー"));
    VlmToolbar_->setObjectName(QStringLiteral("VlmToolbar"));
    VlmToolbar_->setMovable(false);
    VlmToolbar_->setContextMenuPolicy(Qt::PreventContextMenu);
    VlmToolbar_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    VlmToolbar_->addAction(
        MakeCommand("Tbar_Open", OpenIcon(), QStringLiteral("開く"), [this] { OpenSymbol(); }));
    QAction* closing =
        MakeCommand("Tbar_Cancel", CancelIcon(), QStringLiteral("閉じる"), [this] { close(); });
    closing->setShortcut(Qt::CTRL | Qt::Key_W);
    VlmToolbar_->addAction(closing);
}

void VLM_MAIN::BuildDisplayMenu() {
    VlmMnuDisp_ = menuBar()->addMenu(QStringLiteral("表示(&V)"));
    VlmMnuDisp_->setObjectName(QStringLiteral("VlmMnuDisp"));
    const auto toggle = [this](const char* name, const QString& text, QWidget* shown) {
        QAction* item = VlmMnuDisp_->addAction(text);
        item->setObjectName(QLatin1String(name));
        item->setCheckable(true);
        item->setChecked(true);
        connect(item, &QAction::toggled, shown, &QWidget::setVisible);
    };
    toggle("VlmMnuDispSB", QStringLiteral("ステータスバー(&S)"), statusBar());
    toggle("VlmMnuDispTB", QStringLiteral("ツールバー(&T)"), VlmToolbar_);
}

bool VLM_MAIN::Load() {
    if (state_.RunMode == run_mode::UserLibrary) {
        commands_->SwitchOff();
        VlmMnuDisp_->menuAction()->setVisible(false);
    }
    try {
        OpenOrCreateLibraries();
        FinishInterruptedMove(state_.LibraryDb, state_.LibRoot);
        if (ShowsBothLibraries(state_))
            FinishInterruptedMove(state_.SystemDb, state_.LibRoot);
        RestorePlace();
        Appear();
        tree_->BuildCategoryTree();
    } catch (RuntimeError& error) {
        hide();
        throw error.EndsProgram();
    } catch (const ImportCancelled&) {
        return false;
    }
    // A category that cannot be selected leaves a usable window.
    RunGuarded(messages_, this, [this] {
        tree_->RestoreSelection();
        ShowCategory(EntryList::Restore::Yes);
    });
    panes_.VlmTreeView->setFocus();
    return true;
}

void VLM_MAIN::OpenOrCreateLibraries() {
    ProgressBox progress(nullptr, QStringLiteral("シンボルライブラリを作成しています..."),
                         ProgressBox::Cancel::Yes);
    LibraryCallbacks callbacks;
    callbacks.ask = [this](const QString& question) { return messages_.Ask(nullptr, question); };
    callbacks.progress = [&progress](qint64 done, qint64 total) { return progress.Report(done, total); };
    callbacks.wait = [&progress] { return progress.ReportWaiting(); };
    OpenLibraries(state_, settings_, callbacks);
}

void VLM_MAIN::RestorePlace() {
    const auto pixels = [this](const QString& key, double fallback) {
        return TwipsToPixels(ToNumberOr(settings_.Get(key), fallback));
    };
    const QRect place(pixels(keys::VlmMainLeft, DefaultPlace), pixels(keys::VlmMainTop, DefaultPlace),
                      pixels(keys::VlmMainWidth, DefaultSize), pixels(keys::VlmMainHeight, DefaultSize));
    const QRect onScreen = BroughtOntoScreen(place);
    move(onScreen.topLeft());
    resize(onScreen.size());
    panes_.layout->Restore(settings_);
}

void VLM_MAIN::RebuildTree() {
    ClearCategory();
    tree_->Rebuild();
    ShowCategory(EntryList::Restore::Yes);
}

void VLM_MAIN::ClearCategory() {
    categoryShown_ = false;
    panes_.VlmTreeSlide->Clear();
    panes_.pathPanel->clear();
    entries_->Clear();
}

void VLM_MAIN::ShowCategory(EntryList::Restore restore) {
    // Where a step fails, nothing of the category before stays in sight or can be opened.
    ClearCategory();
    {
        Database database(CurrentLibrary(state_), Database::Access::Read);
        const RecordSet row = CategoryWithId(database, state_.CurFolderID);
        if (row.Eof())
            throw RuntimeError(ErrorNumber::NoCurrentRecord,
                               QStringLiteral("分類 (ID %1) はもうありません。").arg(state_.CurFolderID))
                .InFile(database.Path());
        const Category category = ReadCategory(row);
        state_.CurSldFile = category.slide.isEmpty() ? QString() : state_.HomeDir + category.slide;
        state_.CurFolderName = category.name;
    }
    panes_.VlmTreeSlide->ShowSlide(state_.CurSldFile);
    panes_.pathPanel->setText(tree_->PathText());
    entries_->FillEntryList(restore);
    categoryShown_ = true;
}

// False when its category cannot be shown, which was told already. Throws 35601 when it is gone.
bool VLM_MAIN::ChooseFound(const FoundName& found) {
    const EntryList::Place place = entries_->CurrentPlace();
    const auto clear = qScopeGuard([this] {
        // What is shown belongs to a selected category, or there is none.
        if (panes_.VlmTreeView->SelectedKey().isEmpty())
            ClearCategory();
    });
    if (!tree_->Choose(found.systemTree, found.way)) {
        ShowCategory(EntryList::Restore::No);
        entries_->ReturnTo(place);
        throw RuntimeError(ErrorNumber::ElementNotFound,
                           QStringLiteral("分類 (ID %1) はもうありません。").arg(found.way.back()))
            .InFile(found.systemTree ? state_.SystemDb : state_.LibraryDb);
    }
    if (categoryShown_ && found.entryId != 0)
        entries_->ChooseEntry(found.entryId);
    return categoryShown_;
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
    const StepsBack stepsBack(*this);
    opened_ = true;
    // A window that is left without an answer confirms nothing, whatever one before it did.
    state_.Confirmed = false;
    showVariableWindow_(*this);
    if (state_.Confirmed && state_.RunMode != run_mode::UserLibrary)
        close();
}

void VLM_MAIN::CancelBrowser() {
    WriteNoSelection(state_.TempDir);
    opened_ = false;
    close();
}

void VLM_MAIN::resizeEvent(QResizeEvent* event) {
    ModalWindow::resizeEvent(event);
    if (!isMinimized() && !IsSteppedBack())
        SetTopmost(this, true);
}

bool VLM_MAIN::eventFilter(QObject* watched, QEvent* event) {
    if (watched == panes_.VlmPDFSlide && event->type() == QEvent::MouseButtonDblClick) {
        slideArmed_ = static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton;
    } else if (watched == panes_.VlmPDFSlide && event->type() == QEvent::MouseButtonRelease &&
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

// Where the window is when it is not maximised: the corner of its frame, and its own size.
QRect VLM_MAIN::NormalPlace() const {
    return isMaximized() ? normalGeometry().translated(frame_) : QRect(pos(), size());
}

void VLM_MAIN::moveEvent(QMoveEvent* event) {
    ModalWindow::moveEvent(event);
    if (!isMaximized())
        frame_ = pos() - geometry().topLeft();
}

void VLM_MAIN::SaveOnClose() {
    if (!isMinimized()) {
        const QRect place = NormalPlace();
        settings_.Save(keys::VlmMainLeft, PixelsToTwips(place.x()));
        settings_.Save(keys::VlmMainTop, PixelsToTwips(place.y()));
        settings_.Save(keys::VlmMainWidth, PixelsToTwips(place.width()));
        settings_.Save(keys::VlmMainHeight, PixelsToTwips(place.height()));
        // The splitters belong to the size that is saved.
        panes_.layout->resize(panes_.layout->size() + place.size() - size());
        panes_.layout->Save(settings_);
    }
    settings_.Save(keys::LastSymbol(state_.UserLibrary), state_.SymbolFile);
    if (ShowsBothLibraries(state_)) {
        settings_.Save(keys::EdtTreeLast, state_.CurFolderID);
        settings_.Save(keys::Tree2nd1st, state_.SystemTreeFirst ? 1 : 0);
    } else {
        settings_.Save(state_.UserLibrary ? keys::UsrTreeLast : keys::TreeLast, state_.CurFolderID);
    }
    settings_.Flush();
}

} // namespace velmo
