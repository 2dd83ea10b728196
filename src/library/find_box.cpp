#include "library/find_box.h"

#include "library/found_name_delegate.h"
#include "platform/empty_hint.h"
#include "platform/guarded.h"
#include "platform/keeps_selection.h"
#include "platform/progress_box.h"

#include <QBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QShortcut>
#include <QStackedLayout>

namespace velmo {

namespace {

// Pixels.
constexpr int Gap = 3;
// What the field leaves for the tree, in lines of text.
constexpr int LeastLines = 3;

Qt::KeyboardModifiers Held(const QKeyEvent& key) {
    return key.modifiers() & ~Qt::KeyboardModifiers(Qt::KeypadModifier);
}

// Keys that go to the list while one types.
bool Moves(const QKeyEvent& key) {
    switch (key.key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        return Held(key) == Qt::NoModifier;
    case Qt::Key_Home:
    case Qt::Key_End:
        return Held(key) == Qt::ControlModifier;
    default:
        return false;
    }
}

bool IsPlain(const QKeyEvent& key, Qt::Key wanted) {
    return key.key() == wanted && Held(key) == Qt::NoModifier;
}

bool Opens(const QKeyEvent& key) {
    return IsPlain(key, Qt::Key_Return) || IsPlain(key, Qt::Key_Enter);
}

bool Leaves(const QKeyEvent& key) {
    return IsPlain(key, Qt::Key_Escape);
}

} // namespace

FindBox::FindBox(QAbstractItemView& tree, const GlobalState& state, MessageBoxes& messages)
    : tree_(tree),
      state_(state),
      messages_(messages),
      bar_(new QWidget(this)),
      VlmFind_(new QLineEdit(bar_)),
      pane_(new QStackedLayout) {
    setObjectName(QStringLiteral("VlmFindBox"));
    BuildField();
    pane_->addWidget(&tree_);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(bar_);
    layout->addLayout(pane_, 1);
    setTabOrder(VlmFind_, &tree_);
}

void FindBox::BuildField() {
    // The ground around it makes it a field in dark schemes, too.
    auto* around = new QHBoxLayout(bar_);
    around->setContentsMargins(Gap, Gap, Gap, Gap);
    around->addWidget(VlmFind_);
    VlmFind_->setObjectName(QStringLiteral("VlmFind"));
    VlmFind_->setPlaceholderText(QStringLiteral("検索 (Ctrl+F)"));
    VlmFind_->setAccessibleName(QStringLiteral("分類とシンボルから検索する文字"));
    VlmFind_->setToolTip(QStringLiteral("大文字と小文字、全角と半角、ひらがなとカタカナは区別しません\n"
                                        "空白で区切ると、すべての語に一致するものを探します"));
    VlmFind_->installEventFilter(this);
    connect(VlmFind_, &QLineEdit::textChanged, this, [this] { Search(); });
    const auto* find = new QShortcut(QKeySequence::Find, this);
    connect(find, &QShortcut::activated, this, [this] {
        bar_->show();
        VlmFind_->setFocus(Qt::ShortcutFocusReason);
        VlmFind_->selectAll();
    });
}

void FindBox::BuildResults() {
    VlmFind_->setClearButtonEnabled(true);
    model_ = new FindResultsModel(names_, this);
    BuildList();
    pane_->addWidget(VlmFindList_);
}

void FindBox::BuildList() {
    VlmFindList_ = new KeepsSelection<QListView>;
    VlmFindList_->setObjectName(QStringLiteral("VlmFindList"));
    VlmFindList_->setAccessibleName(QStringLiteral("検索結果"));
    VlmFindList_->setModel(model_);
    auto* hint = new EmptyHint(*VlmFindList_);
    hint->SetText(QStringLiteral("一致する分類やシンボルはありません。\nEsc で検索をやめます。"));
    VlmFindList_->setItemDelegate(new FoundNameDelegate(*VlmFind_, this));
    VlmFindList_->setUniformItemSizes(true);
    VlmFindList_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    VlmFindList_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    VlmFindList_->setFocusPolicy(Qt::NoFocus);
    VlmFindList_->viewport()->installEventFilter(this);
    connect(VlmFindList_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this](const QItemSelection& selected) {
                if (restoring_ || selected.isEmpty())
                    return;
                told_ = true;
                Choose(selected.indexes().first().row(), Wish::Show);
            });
    // A press on the row that is selected already chooses it again.
    connect(VlmFindList_, &QListView::pressed, this, [this](const QModelIndex& pressed) {
        if (!told_)
            Choose(pressed.row(), Wish::Show);
    });
    connect(VlmFindList_, &QListView::doubleClicked, this, &FindBox::OpenSelected);
}

bool FindBox::IsSearching() const {
    return !QStringView(VlmFind_->text()).trimmed().isEmpty();
}

bool FindBox::HasRoomForField() const {
    return height() >= bar_->sizeHint().height() + LeastLines * fontMetrics().lineSpacing();
}

void FindBox::ShowOrHideField() {
    bar_->setVisible(HasRoomForField() || VlmFind_->hasFocus() || !VlmFind_->text().isEmpty());
    layout()->activate();
}

void FindBox::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    ShowOrHideField();
}

// False when the names could not be read or the user did not want to wait for them.
bool FindBox::ReadNames() {
    bool read = false;
    RunGuarded(messages_, window(), [&] {
        ProgressBox progress(window(), QStringLiteral("分類とシンボルの名前を読み込んでいます..."),
                             ProgressBox::Cancel::Yes);
        read =
            names_.Refresh(state_, [&](qint64 done, qint64 whole) { return progress.Report(done, whole); });
    });
    return read;
}

void FindBox::Search() {
    if (!IsSearching()) {
        ShowTree();
        return;
    }
    if (!VlmFindList_)
        BuildResults();
    if (!ReadNames()) {
        VlmFind_->clear();
        return;
    }
    model_->SetHits(names_.Find(VlmFind_->text()));
    VlmFindList_->scrollToTop();
    pane_->setCurrentWidget(VlmFindList_);
}

void FindBox::LookAgain() {
    names_.Forget();
    if (!IsSearching())
        return;
    const int row = SelectedRow();
    const std::optional<FoundName> selected =
        row < 0 ? std::nullopt : std::optional(names_.Place(model_->NameIn(row)));
    const int scrolled = VlmFindList_->verticalScrollBar()->value();
    Search();
    VlmFindList_->doItemsLayout();
    VlmFindList_->verticalScrollBar()->setValue(scrolled);
    if (selected) {
        const QScopedValueRollback<bool> quiet(restoring_, true);
        VlmFindList_->setCurrentIndex(model_->index(model_->RowOf(names_.NameAt(*selected))));
    }
}

void FindBox::ShowTree() {
    if (pane_->currentWidget() == &tree_)
        return;
    pane_->setCurrentWidget(&tree_);
    model_->SetHits({});
    if (std::exchange(chosen_, false))
        tree_.scrollTo(tree_.currentIndex());
}

void FindBox::Leave() {
    VlmFind_->clear();
    tree_.setFocus();
}

// The innermost thing first: the search, then the field.
void FindBox::Escape() {
    if (VlmFind_->text().isEmpty())
        tree_.setFocus();
    else
        VlmFind_->clear();
}

int FindBox::SelectedRow() const {
    const QModelIndexList selected = VlmFindList_->selectionModel()->selectedIndexes();
    return selected.isEmpty() ? -1 : selected.first().row();
}

void FindBox::Choose(int row, Wish wish) {
    chosen_ = true;
    // A copy: the names may be read again before this ends.
    const FoundName found = names_.Place(model_->NameIn(row));
    Q_EMIT Chosen(found, wish);
    if (wish == Wish::Open && found.entryId == 0)
        Leave();
}

// Without a choice the best one is meant.
void FindBox::OpenSelected() {
    if (model_->rowCount() == 0)
        return;
    const int row = qMax(0, SelectedRow());
    {
        const QScopedValueRollback<bool> quiet(restoring_, true);
        VlmFindList_->setCurrentIndex(model_->index(row));
    }
    Choose(row, Wish::Open);
}

void FindBox::Move(int key) {
    const int last = model_->rowCount() - 1;
    if (last < 0)
        return;
    const int row = SelectedRow();
    const int height = qMax(1, VlmFindList_->visualRect(model_->index(0)).height());
    const int page = qMax(1, VlmFindList_->viewport()->height() / height - 1);
    int wanted = 0;
    switch (key) {
    case Qt::Key_Up:
        wanted = row - 1;
        break;
    case Qt::Key_Down:
        wanted = row + 1;
        break;
    case Qt::Key_PageUp:
        wanted = row - page;
        break;
    case Qt::Key_PageDown:
        wanted = row + page;
        break;
    case Qt::Key_End:
        wanted = last;
        break;
    default:
        break;
    }
    VlmFindList_->setCurrentIndex(model_->index(qBound(0, wanted, last)));
}

bool FindBox::KeyPressed(const QKeyEvent& key) {
    const bool searches = IsSearching();
    if (Leaves(key))
        Escape();
    else if (searches && Opens(key))
        OpenSelected();
    else if (searches && Moves(key))
        Move(key.key());
    else
        return false;
    return true;
}

bool FindBox::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::ShortcutOverride: {
        // While one types here these keys belong to no button or menu.
        const auto& key = *static_cast<QKeyEvent*>(event);
        if (watched != VlmFind_ || !(Leaves(key) || Opens(key) || Moves(key)))
            return false;
        event->accept();
        return true;
    }
    case QEvent::KeyPress:
        return watched == VlmFind_ && KeyPressed(*static_cast<QKeyEvent*>(event));
    case QEvent::FocusIn:
    case QEvent::FocusOut:
        if (VlmFindList_)
            VlmFindList_->viewport()->update();
        if (watched == VlmFind_ && event->type() == QEvent::FocusOut)
            ShowOrHideField();
        return false;
    case QEvent::MouseButtonPress:
        told_ = false;
        // One goes on typing after a click on the list.
        VlmFind_->setFocus(Qt::MouseFocusReason);
        return false;
    case QEvent::MouseButtonDblClick:
        // Only the left button opens.
        told_ = false;
        return watched != VlmFind_ && static_cast<QMouseEvent*>(event)->button() != Qt::LeftButton;
    default:
        return false;
    }
}

} // namespace velmo
