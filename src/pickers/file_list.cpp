#include "pickers/file_list.h"

#include "pickers/folder_scan.h"
#include "platform/eliding_delegate.h"
#include "platform/empty_hint.h"
#include "platform/plain_tool_tip.h"
#include "platform/svg_icon.h"

#include <QKeyEvent>
#include <QMouseEvent>

#include <algorithm>

namespace velmo {

namespace {

// Names with a file's picture; one that the view cuts can be read in full.
class FileNames : public QStringListModel {
public:
    explicit FileNames(QObject* parent) : QStringListModel(parent) {}

    QVariant data(const QModelIndex& index, int role) const override {
        switch (role) {
        case Qt::DecorationRole:
            return icon_;
        case Qt::ToolTipRole:
            return PlainToolTip(QStringListModel::data(index, Qt::DisplayRole).toString());
        default:
            return QStringListModel::data(index, role);
        }
    }

private:
    QIcon icon_ = PlatformIcon(QStringLiteral("file"));
};

} // namespace

FileList::FileList(QWidget* parent) : KeepsSelection(parent), names_(new FileNames(this)) {
    setModel(names_);
    setUniformItemSizes(true);
    setEditTriggers(NoEditTriggers);
    setTextElideMode(Qt::ElideMiddle);
    setItemDelegate(new ElidingDelegate(this));
    hint_ = new EmptyHint(*this);
}

void FileList::ShowFolder(const QString& folder) {
    if (UpperCasePath(FolderPath(folder)) == UpperCasePath(FolderPath(folder_)) && !folder_.isEmpty())
        return;
    folder_ = folder;
    List();
}

void FileList::SetPattern(const QString& pattern) {
    pattern_ = pattern;
    if (!folder_.isEmpty())
        List();
}

QString FileList::FileName() const {
    const QModelIndexList selected = selectionModel()->selectedIndexes();
    return selected.isEmpty() ? QString() : selected.first().data().toString();
}

void FileList::List() {
    const FolderFiles files = FilesOf(FolderPath(folder_), pattern_);
    names_->setStringList(files.names);
    scrollToTop();
    if (files.readable)
        hint_->SetText(QStringLiteral("このフォルダに\n%1 のファイルはありません").arg(pattern_));
    else if (FolderExists(folder_))
        hint_->SetText(QStringLiteral("このフォルダは読み取れません"));
    else
        hint_->SetText(QStringLiteral("このフォルダはもうありません"));
}

void FileList::Frame(const QString& name) {
    const QStringList names = names_->stringList();
    const auto found = std::find_if(names.begin(), names.end(), [&](const QString& candidate) {
        return candidate.compare(name, Qt::CaseInsensitive) == 0;
    });
    if (found == names.end())
        return;
    const QModelIndex index = names_->index(int(found - names.begin()));
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
    scrollTo(index, PositionAtCenter);
}

void FileList::showEvent(QShowEvent* event) {
    KeepsSelection::showEvent(event);
    // What was framed before the view had its size.
    if (currentIndex().isValid())
        scrollTo(currentIndex(), PositionAtCenter);
}

void FileList::mousePressEvent(QMouseEvent* event) {
    told_ = false;
    KeepsSelection::mousePressEvent(event);
    if (!told_ && indexAt(event->position().toPoint()).isValid() && !FileName().isEmpty())
        Q_EMIT FileChosen(FileName());
}

void FileList::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        mousePressEvent(event);
        return;
    }
    KeepsSelection::mouseDoubleClickEvent(event);
    if (indexAt(event->position().toPoint()).isValid())
        Q_EMIT FileAccepted();
}

void FileList::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    KeepsSelection::selectionChanged(selected, deselected);
    if (selected.isEmpty())
        return;
    told_ = true;
    Q_EMIT FileChosen(FileName());
}

} // namespace velmo
