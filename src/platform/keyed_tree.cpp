#include "platform/keyed_tree.h"

#include "platform/elided_tip_delegate.h"

#include <QHeaderView>
#include <QMouseEvent>
#include <QScopedValueRollback>
#include <QScrollBar>

namespace velmo {

namespace {

// What of a deep node's name can be read at least, in letters.
constexpr int LeastLetters = 8;
// A tree lower than this shows no bar below, in lines of text.
constexpr int LeastLines = 4;

} // namespace

KeyedTree::KeyedTree(QWidget* parent) : KeepsSelection(parent), model_(new KeyedTreeModel(this)) {
    setModel(model_);
    setHeaderHidden(true);
    // An unseen header that stretches by itself stops at 100 pixels.
    header()->setMinimumSectionSize(0);
    header()->setStretchLastSection(false);
    const auto narrow = [this] {
        widestNode_ = 0;
        FitColumn();
    };
    connect(this, &QTreeView::collapsed, this, narrow);
    connect(model_, &QAbstractItemModel::rowsRemoved, this, narrow);
    connect(model_, &QAbstractItemModel::modelReset, this, narrow);
    setUniformRowHeights(true);
    setEditTriggers(NoEditTriggers);
    setItemDelegate(new ElidedTipDelegate(this));
    connect(this, &QTreeView::expanded, this,
            [this](const QModelIndex& index) { OnExpanded(model_->Key(index)); });
    connect(this, &QTreeView::collapsed, this,
            [this](const QModelIndex& index) { Q_EMIT NodeCollapsed(model_->Key(index)); });
}

QString KeyedTree::Text(const QString& key) const {
    return model_->Find(key).data().toString();
}

QString KeyedTree::ParentKey(const QString& key) const {
    return model_->Key(model_->Find(key).parent());
}

QString KeyedTree::FirstKey() const {
    return model_->Key(model_->index(0, 0));
}

QString KeyedTree::FirstChildKey(const QString& key) const {
    return model_->Key(model_->index(0, 0, model_->Find(key)));
}

void KeyedTree::SetExpanded(const QString& key, bool expanded) {
    const QScopedValueRollback<bool> setting(settingExpanded_, true);
    setExpanded(model_->Find(key), expanded);
}

// A node that the user opened and that turns out to have nothing below it is not open.
void KeyedTree::OnExpanded(const QString& key) {
    Q_EMIT NodeExpanded(key);
    if (settingExpanded_ || !model_->Contains(key) || !FirstChildKey(key).isEmpty())
        return;
    const QSignalBlocker untold(this);
    setExpanded(model_->Find(key), false);
}

bool KeyedTree::IsExpanded(const QString& key) const {
    return isExpanded(model_->Find(key));
}

QStringList KeyedTree::ExpandedKeys() const {
    QStringList keys;
    for (QModelIndex index = model_->index(0, 0); index.isValid(); index = indexBelow(index)) {
        if (isExpanded(index))
            keys << model_->Key(index);
    }
    return keys;
}

void KeyedTree::ScrollBackTo(int value) {
    executeDelayedItemsLayout();
    verticalScrollBar()->setValue(value);
    scrollTo(currentIndex());
}

void KeyedTree::Select(const QString& key) {
    const QScopedValueRollback<bool> quiet(selecting_, true);
    const QModelIndex index = model_->Find(key);
    setCurrentIndex(index);
    scrollTo(index);
}

QString KeyedTree::SelectedKey() const {
    const QModelIndexList selected = selectionModel()->selectedIndexes();
    return selected.isEmpty() ? QString() : model_->Key(selected.first());
}

// A selected node that was in sight stays there.
void KeyedTree::resizeEvent(QResizeEvent* event) {
    const QScopedValueRollback<bool> keep(inSight_);
    // A bar would be all that there is room for.
    setHorizontalScrollBarPolicy(event->size().height() < LeastLines * fontMetrics().lineSpacing()
                                     ? Qt::ScrollBarAlwaysOff
                                     : Qt::ScrollBarAsNeeded);
    KeepsSelection::resizeEvent(event);
    FitColumn();
    if (inSight_)
        scrollTo(currentIndex());
}

void KeyedTree::updateGeometries() {
    KeepsSelection::updateGeometries();
    FitColumn();
}

// Names are elided before the tree scrolls sideways, but of the deepest node in sight the beginning of the
// name can be read. While one scrolls up and down the column only becomes wider.
void KeyedTree::FitColumn() {
    if (fitting_)
        return;
    const QScopedValueRollback<bool> fitting(fitting_, true);
    for (QModelIndex index = indexAt({0, 0}); index.isValid(); index = indexBelow(index)) {
        const QRect place = visualRect(index);
        if (place.top() > viewport()->height())
            break;
        widestNode_ = qMax(widestNode_, place.left() + horizontalOffset() + RoomFor(index));
    }
    header()->resizeSection(0, qMax(viewport()->width(), widestNode_));
}

// What a node needs right of its branch.
int KeyedTree::RoomFor(const QModelIndex& index) const {
    const int least = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this) +
                      LeastLetters * fontMetrics().averageCharWidth();
    return qMin(least, sizeHintForIndex(index).width());
}

void KeyedTree::scrollTo(const QModelIndex& index, ScrollHint hint) {
    KeepsSelection::scrollTo(index, hint);
    const QRect place = visualRect(index);
    if (!place.isValid())
        return;
    const int beyond = place.left() + RoomFor(index) - viewport()->width();
    if (beyond > 0)
        horizontalScrollBar()->setValue(horizontalScrollBar()->value() + qMin(beyond, place.left()));
}

void KeyedTree::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    KeepsSelection::currentChanged(current, previous);
    inSight_ = true;
}

void KeyedTree::verticalScrollbarValueChanged(int value) {
    KeepsSelection::verticalScrollbarValueChanged(value);
    FitColumn();
    inSight_ = viewport()->rect().contains(visualRect(currentIndex()).center());
}

void KeyedTree::mousePressEvent(QMouseEvent* event) {
    told_ = false;
    QTreeView::mousePressEvent(event);
    const QModelIndex pressed = indexAt(event->position().toPoint());
    if (!pressed.isValid() || !visualRect(pressed).contains(event->position().toPoint()))
        return;
    if (!told_)
        Q_EMIT NodeClicked(model_->Key(pressed));
}

void KeyedTree::OpenSelected() {
    if (const QString key = SelectedKey(); !key.isEmpty() && !FirstChildKey(key).isEmpty())
        setExpanded(model_->Find(key), true);
}

void KeyedTree::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        event->ignore();
        if (const QString key = SelectedKey(); !key.isEmpty())
            Q_EMIT EnterPressed(key);
        return;
    case Qt::Key_Asterisk:
        // Everything below the node would be the whole library or disk, and it is read as it is opened.
        OpenSelected();
        return;
    default:
        KeepsSelection::keyPressEvent(event);
    }
}

void KeyedTree::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    QTreeView::selectionChanged(selected, deselected);
    if (selecting_ || selected.isEmpty())
        return;
    told_ = true;
    Q_EMIT NodeClicked(SelectedKey());
}

} // namespace velmo
