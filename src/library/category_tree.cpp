#include "library/category_tree.h"

#include "library/category_keys.h"
#include "platform/folder_images.h"
#include "platform/guarded.h"

#include <QScopeGuard>
#include <QScopedValueRollback>

namespace velmo {

namespace {

// How many categories on the way to the selected one are remembered.
constexpr size_t LongestWay = 21;

const QString PathSeparator = QStringLiteral(" － ");

Category ReadRoot(Database& library) {
    const RecordSet roots = RootCategories(library);
    if (roots.Eof())
        throw RuntimeError(ErrorNumber::NoCurrentRecord, QStringLiteral("分類がひとつもありません。"))
            .InFile(library.Path());
    return ReadCategory(roots);
}

} // namespace

CategoryTree::CategoryTree(KeyedTree& view, GlobalState& state, MessageBoxes& messages)
    : view_(view), state_(state), messages_(messages) {
    view_.Nodes().SetImages(FolderImages());
    const auto guarded = [this](void (CategoryTree::*action)(const QString&)) {
        return [this, action](const QString& key) {
            RunGuarded(messages_, view_.window(), [&] { (this->*action)(key); });
        };
    };
    connect(&view_, &KeyedTree::NodeExpanded, this, guarded(&CategoryTree::Expand));
    connect(&view_, &KeyedTree::NodeCollapsed, this, guarded(&CategoryTree::Collapse));
    connect(&view_, &KeyedTree::NodeClicked, this, guarded(&CategoryTree::NodeClick));
}

void CategoryTree::BuildCategoryTree() {
    const QScopedValueRollback<bool> busy(busy_, true);
    // The view keeps its place and the focus while nothing of the filling is seen.
    view_.setUpdatesEnabled(false);
    const auto show = qScopeGuard([this] { view_.setUpdatesEnabled(true); });
    view_.Nodes().Clear();
    AddRoot(false);
    if (state_.RunMode == run_mode::UserLibrary)
        AddSystemRoot();
}

void CategoryTree::AddRoot(bool systemTree) {
    Database library(DatabasePath(systemTree), Database::Access::Read);
    const Category root = ReadRoot(library);
    const QString key = CategoryKey(systemTree, root.id);
    view_.Nodes().Add({}, {NewNode{key, root.name, OpenFolder, {}}});
    LoadLevel(library, systemTree, root.id);
    view_.SetExpanded(key, true);
}

void CategoryTree::AddSystemRoot() {
    AddRoot(true);
}

void CategoryTree::RestoreSelection() {
    const QScopedValueRollback<bool> busy(busy_, true);
    view_.setUpdatesEnabled(false);
    const auto show = qScopeGuard([this] { view_.setUpdatesEnabled(true); });
    Database library(DatabasePath(state_.SystemTreeFirst), Database::Access::Read);
    const std::vector<int> way = WayToCurrent(library);
    for (auto id = way.rbegin(); id != way.rend(); ++id) {
        if (state_.SystemTreeFirst)
            LoadSystemChildren(library, *id);
        else
            LoadChildren(library, *id);
        const QString key = CategoryKey(state_.SystemTreeFirst, *id);
        if (!view_.FirstChildKey(key).isEmpty())
            view_.SetExpanded(key, true);
        view_.Nodes().SetImage(key, OpenFolder);
    }
    if (way.empty())
        state_.CurFolderID = 1;
    SelectCategory(way.empty() ? 1 : way.front());
}

void CategoryTree::SelectCategory(int id) {
    const QString key = CategoryKey(state_.SystemTreeFirst, id);
    if (!view_.Nodes().Contains(key))
        throw RuntimeError(ErrorNumber::ElementNotFound,
                           QStringLiteral("前回の分類 (ID %1) はツリーにありません。").arg(id))
            .InFile(DatabasePath(state_.SystemTreeFirst))
            .InField(key);
    view_.Select(key);
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
    LoadLevel(library, false, id);
}

void CategoryTree::LoadSystemChildren(Database& library, int id) {
    LoadLevel(library, true, id);
}

// Whether the node's own subcategories stand below it, not only the placeholder for them.
bool CategoryTree::IsLoaded(const QString& key) const {
    const QString first = view_.FirstChildKey(key);
    return !first.isEmpty() && !IsPlaceholderKey(first);
}

void CategoryTree::LoadLevel(Database& library, bool systemTree, int id) {
    const QString parent = CategoryKey(systemTree, id);
    if (IsLoaded(parent))
        return;
    const QString placeholder = systemTree ? SystemPlaceholder : LibraryPlaceholder;
    const QString first = view_.FirstChildKey(parent);

    std::vector<NewNode> children;
    for (RecordSet rows = ChildCategories(library, id); !rows.Eof(); rows.MoveNext()) {
        const int childId = rows.Integer(u"ID");
        NewNode child{CategoryKey(systemTree, childId), rows.Text(u"foldername"), ClosedFolder, {}};
        const RecordSet grandchildren = ChildCategories(library, childId);
        if (!grandchildren.Eof())
            child.children.push_back({placeholder + grandchildren.Text(u"ID"),
                                      grandchildren.Text(u"foldername"),
                                      ClosedFolder,
                                      {}});
        children.push_back(std::move(child));
    }
    if (!first.isEmpty())
        view_.Nodes().Remove(first);
    view_.Nodes().Add(parent, children);
}

void CategoryTree::Expand(const QString& key) {
    if (busy_)
        return;
    const QScopedValueRollback<bool> busy(busy_, true);
    // A node that could not be filled stays closed over its placeholder.
    auto closeAgain = qScopeGuard([&] { view_.SetExpanded(key, false); });
    if (!IsLoaded(key)) {
        Database library(DatabasePath(IsSystemKey(key)), Database::Access::Read);
        if (IsSystemKey(key))
            LoadSystemChildren(library, CategoryIdOf(key));
        else
            LoadChildren(library, CategoryIdOf(key));
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
    QString path = state_.CurFolderName;
    const QString firstRoot = view_.FirstKey();
    QString key = view_.SelectedKey();
    if (key.isEmpty())
        return path;
    for (key = view_.ParentKey(key); !key.isEmpty(); key = view_.ParentKey(key)) {
        // The first root's own name appears only where a second one stands beside it.
        if (key == firstRoot && state_.RunMode != run_mode::UserLibrary)
            break;
        path.prepend(view_.Text(key) + PathSeparator);
    }
    return path;
}

const QString& CategoryTree::DatabasePath(bool systemTree) const {
    return systemTree ? state_.SystemDb : state_.LibraryDb;
}

} // namespace velmo
