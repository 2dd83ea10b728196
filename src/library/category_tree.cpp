#include "library/category_tree.h"

#include "library/category_keys.h"
#include "library/category_way.h"
#include "platform/folder_images.h"
#include "platform/guarded.h"

#include <QScopeGuard>
#include <QScopedValueRollback>
#include <QScrollBar>

namespace velmo {

namespace {

// How many categories on the way to the selected one are remembered.
constexpr size_t LongestWay = 21;

} // namespace

CategoryTree::CategoryTree(KeyedTree& view, GlobalState& state, MessageBoxes& messages)
    : view_(view), state_(state), messages_(messages), levels_(view) {
    const auto guarded = [this](void (CategoryTree::*action)(const QString&)) {
        return [this, action](const QString& key) {
            RunGuarded(messages_, view_.window(), [&] { (this->*action)(key); });
        };
    };
    connect(&view_, &KeyedTree::NodeExpanded, this, guarded(&CategoryTree::Expand));
    connect(&view_, &KeyedTree::NodeCollapsed, this, guarded(&CategoryTree::Collapse));
    connect(&view_, &KeyedTree::NodeClicked, this, guarded(&CategoryTree::NodeClick));
    connect(&view_, &KeyedTree::EnterPressed, this, [this](const QString& key) {
        if (!view_.FirstChildKey(key).isEmpty())
            view_.SetExpanded(key, !view_.IsExpanded(key));
    });
}

void CategoryTree::BuildCategoryTree() {
    const QScopedValueRollback<bool> busy(busy_, true);
    // The view keeps its place and the focus while nothing of the filling is seen.
    view_.setUpdatesEnabled(false);
    const auto show = qScopeGuard([this] { view_.setUpdatesEnabled(true); });
    view_.Nodes().Clear();
    AddRoot(false);
    if (ShowsBothLibraries(state_))
        AddSystemRoot();
}

void CategoryTree::Rebuild() {
    const int scrolled = view_.verticalScrollBar()->value();
    view_.setUpdatesEnabled(false);
    const auto show = qScopeGuard([this] { view_.setUpdatesEnabled(true); });
    BuildAgain();
    RestoreSelection();
    view_.ScrollBackTo(scrolled);
}

// What was open is opened again.
void CategoryTree::BuildAgain() {
    const QStringList expanded = view_.ExpandedKeys();
    BuildCategoryTree();
    const QScopedValueRollback<bool> busy(busy_, true);
    for (const QString& key : expanded)
        OpenAgain(key);
}

// A category that is gone, or has no subcategories any more, is passed over.
void CategoryTree::OpenAgain(const QString& key) {
    if (!view_.Nodes().Contains(key) || view_.FirstChildKey(key).isEmpty())
        return;
    Open(key);
    view_.SetExpanded(key, true);
    view_.Nodes().SetImage(key, OpenFolder);
}

void CategoryTree::AddRoot(bool systemTree) {
    Database library(DatabasePath(systemTree), Database::Access::Read);
    levels_.AddRoots(library, systemTree, CategoryLevels::Roots::First);
}

void CategoryTree::AddSystemRoot() {
    AddRoot(true);
}

void CategoryTree::RestoreSelection() {
    const QScopedValueRollback<bool> busy(busy_, true);
    view_.setUpdatesEnabled(false);
    const auto show = qScopeGuard([this] { view_.setUpdatesEnabled(true); });
    Database library(CurrentLibrary(state_), Database::Access::Read);
    const std::vector<int> way = WayToCurrent(library);
    for (auto id = way.rbegin(); id != way.rend(); ++id) {
        const QString key = RequireNode(state_.SystemTreeFirst, *id);
        if (state_.SystemTreeFirst)
            LoadSystemChildren(library, *id);
        else
            LoadChildren(library, *id);
        if (!view_.FirstChildKey(key).isEmpty())
            view_.SetExpanded(key, true);
        view_.Nodes().SetImage(key, OpenFolder);
    }
    if (way.empty())
        state_.CurFolderID = 1;
    view_.Select(RequireNode(state_.SystemTreeFirst, way.empty() ? 1 : way.front()));
}

bool CategoryTree::Choose(bool systemTree, const std::vector<std::int16_t>& way) {
    // Another program may have added it below a category that was read before, or removed one that was.
    if (!LibraryShows(systemTree, way.back()) || !OpenWay(systemTree, way)) {
        BuildAgain();
        if (!OpenWay(systemTree, way)) {
            RestoreSelection();
            return false;
        }
    }
    const QString key = CategoryKey(systemTree, way.back());
    view_.Select(key);
    NodeClick(key);
    return true;
}

bool CategoryTree::LibraryShows(bool systemTree, std::int16_t id) const {
    Database library(DatabasePath(systemTree), Database::Access::Read);
    return WayToRoot(library, id).has_value();
}

// False when the tree does not have all of it.
bool CategoryTree::OpenWay(bool systemTree, const std::vector<std::int16_t>& way) {
    const QScopedValueRollback<bool> busy(busy_, true);
    for (const std::int16_t id : way) {
        const QString key = CategoryKey(systemTree, id);
        if (!view_.Nodes().Contains(key))
            return false;
        if (id == way.back())
            break;
        Open(key);
        view_.SetExpanded(key, true);
        view_.Nodes().SetImage(key, OpenFolder);
    }
    return true;
}

QString CategoryTree::RequireNode(bool systemTree, int id) const {
    QString key = CategoryKey(systemTree, id);
    if (!view_.Nodes().Contains(key))
        throw RuntimeError(ErrorNumber::ElementNotFound,
                           QStringLiteral("分類 (ID %1) はツリーにありません。").arg(id))
            .InFile(DatabasePath(systemTree))
            .InField(key);
    return key;
}

// The categories from CurFolderID up to the one below the root; empty when it is a root or gone.
std::vector<int> CategoryTree::WayToCurrent(Database& library) const {
    std::vector<int> way;
    const RecordSet current = CategoryWithId(library, state_.CurFolderID);
    if (current.Eof())
        return way;
    Category category = ReadCategory(current);
    while (category.parentId != 0 && way.size() < LongestWay) {
        way.push_back(category.id);
        category = ReadCategory(CategoryWithId(library, category.parentId));
    }
    return way;
}

void CategoryTree::LoadChildren(Database& library, int id) {
    levels_.Load(library, false, id);
}

void CategoryTree::LoadSystemChildren(Database& library, int id) {
    levels_.Load(library, true, id);
}

void CategoryTree::Open(const QString& key) {
    if (levels_.IsLoaded(key))
        return;
    Database library(DatabasePath(IsSystemKey(key)), Database::Access::Read);
    if (IsSystemKey(key))
        LoadSystemChildren(library, CategoryIdOf(key));
    else
        LoadChildren(library, CategoryIdOf(key));
}

void CategoryTree::Expand(const QString& key) {
    if (busy_)
        return;
    const QScopedValueRollback<bool> busy(busy_, true);
    // A node that could not be filled stays closed over its placeholder.
    auto closeAgain = qScopeGuard([&] { view_.SetExpanded(key, false); });
    Open(key);
    if (view_.FirstChildKey(key).isEmpty()) {
        // What was below it is gone.
        view_.Nodes().SetImage(key, view_.SelectedKey() == key ? OpenFolder : ClosedFolder);
        return;
    }
    closeAgain.dismiss();
    view_.Nodes().SetImage(key, OpenFolder);
}

void CategoryTree::Collapse(const QString& key) {
    if (!busy_)
        view_.Nodes().SetImage(key, ClosedFolder);
}

void CategoryTree::NodeClick(const QString& key) {
    if (busy_ || IsPlaceholderKey(key))
        return;
    const QString before = CategoryKey(state_.SystemTreeFirst, state_.CurFolderID);
    if (view_.Nodes().Contains(before) && !view_.IsExpanded(before))
        view_.Nodes().SetImage(before, ClosedFolder);
    if (view_.IsExpanded(key) || view_.FirstChildKey(key).isEmpty())
        view_.Nodes().SetImage(key, OpenFolder);
    state_.CurFolderID = CategoryIdOf(key);
    state_.SystemTreeFirst = IsSystemKey(key);
    Q_EMIT CategoryChosen();
}

QString CategoryTree::PathText() const {
    const QString key = view_.SelectedKey();
    if (key.isEmpty())
        return state_.CurFolderName;
    // The first root's own name appears only where a second one stands beside it.
    const FirstRoot firstRoot = ShowsBothLibraries(state_) ? FirstRoot::With : FirstRoot::Without;
    return WayTo(view_, key, firstRoot) + state_.CurFolderName;
}

const QString& CategoryTree::DatabasePath(bool systemTree) const {
    return systemTree ? state_.SystemDb : state_.LibraryDb;
}

} // namespace velmo
