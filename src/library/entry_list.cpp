#include "library/entry_list.h"

#include "library/entry_list_model.h"
#include "platform/eliding_delegate.h"
#include "platform/empty_hint.h"
#include "platform/guarded.h"
#include "platform/slide_view.h"
#include "startup/settings_keys.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QScopedValueRollback>
#include <QScrollBar>

namespace velmo {

EntryList::EntryList(KeepsSelection<QListView>& view, SlideView& slide, GlobalState& state,
                     const SettingsStore& settings, MessageBoxes& messages)
    : view_(view),
      slide_(slide),
      state_(state),
      settings_(settings),
      messages_(messages),
      model_(new EntryListModel(&view)) {
    view_.setModel(model_);
    hint_ = new EmptyHint(view_);
    view_.setUniformItemSizes(true);
    view_.setEditTriggers(QAbstractItemView::NoEditTriggers);
    view_.setTextElideMode(Qt::ElideMiddle);
    view_.setItemDelegate(new ElidingDelegate(&view_));
    view_.installEventFilter(this);
    view_.viewport()->installEventFilter(this);
    // The keyboard chooses as the mouse does.
    connect(view_.selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this](const QItemSelection& selected) {
                if (filling_ || selected.isEmpty())
                    return;
                chosen_ = true;
                SelectEntry(selected.indexes().first());
            });
    // A click on the entry that is selected already chooses it again.
    connect(&view_, &QListView::pressed, this, [this](const QModelIndex& pressed) {
        if (!chosen_)
            SelectEntry(pressed);
    });
    connect(&view_, &QListView::doubleClicked, this, &EntryList::OpenWanted);
}

void EntryList::Clear() {
    const QScopedValueRollback<bool> filling(filling_, true);
    slide_.Clear();
    model_->setStringList({});
    slide_.SetEmptyText(QStringLiteral("シンボルのスライドがここに出ます"));
    hint_->SetText(QStringLiteral("ツリーで分類を選んでください。"));
    state_.SymbolFile.clear();
}

void EntryList::FillEntryList(Restore restore) {
    Clear();
    const QScopedValueRollback<bool> filling(filling_, true);
    folderId_ = state_.CurFolderID;
    Database database(CurrentLibrary(state_), Database::Access::Read);
    QStringList names;
    for (RecordSet rows = EntriesOf(database, state_.CurFolderID); !rows.Eof(); rows.MoveNext())
        names << rows.Text(u"PDFName");
    model_->setStringList(names);
    if (!names.isEmpty())
        slide_.SetEmptyText(QStringLiteral("一覧からシンボルを選んでください"));
    hint_->SetText(QStringLiteral("この分類にシンボルはありません。\nツリーでほかの分類を選んでください。"));
    if (restore == Restore::Yes && !names.isEmpty())
        RestoreLast(database);
}

void EntryList::RestoreLast(Database& database) {
    const QString last = settings_.Get(settings_keys::LastSymbol(state_.UserLibrary));
    if (!last.startsWith(state_.HomeDir, Qt::CaseInsensitive))
        return;
    const QString file = last.sliced(state_.HomeDir.size());
    // A quote would break the search condition; then nothing is chosen.
    if (file.isEmpty() || file.contains(u'\''))
        return;
    RecordSet rows = EntriesOf(database, state_.CurFolderID);
    rows.FindFirst(EntryFileCriterion(file));
    if (rows.NoMatch())
        return;
    const int row = int(model_->stringList().indexOf(rows.Text(u"PDFName")));
    view_.setCurrentIndex(model_->index(row));
    view_.scrollTo(model_->index(row));
    Choose(row, rows);
}

void EntryList::ChooseEntry(std::int16_t id) {
    const QString wanted = QString::number(id);
    Database database(CurrentLibrary(state_), Database::Access::Read);
    RecordSet rows = EntriesOf(database, folderId_);
    int row = 0;
    for (; !rows.Eof() && rows.Text(u"ID") != wanted; rows.MoveNext())
        ++row;
    if (rows.Eof() || row >= Count())
        return;
    const QScopedValueRollback<bool> filling(filling_, true);
    view_.setCurrentIndex(model_->index(row));
    view_.scrollTo(model_->index(row));
    Choose(row, rows);
}

EntryList::Place EntryList::CurrentPlace() const {
    const QModelIndexList selected = view_.selectionModel()->selectedIndexes();
    const QModelIndex row = selected.isEmpty() ? QModelIndex() : selected.first();
    return {folderId_, row.row(), row.data().toString(), view_.verticalScrollBar()->value()};
}

void EntryList::Refill() {
    const Place place = CurrentPlace();
    FillEntryList(Restore::No);
    ReturnTo(place);
}

void EntryList::ReturnTo(const Place& place) {
    if (place.folderId != folderId_ || Count() == 0)
        return;
    view_.doItemsLayout();
    view_.verticalScrollBar()->setValue(place.scrolled);
    const QModelIndex row = model_->index(qMin(place.row, Count() - 1), 0);
    if (place.row < 0 || view_.selectionModel()->hasSelection())
        return;
    if (row.row() == place.row && row.data() == place.caption)
        SelectAgain(place.row);
    else
        // The keyboard goes on where it was.
        view_.selectionModel()->setCurrentIndex(row, QItemSelectionModel::NoUpdate);
}

void EntryList::SelectAgain(int row) {
    view_.setCurrentIndex(model_->index(row, 0));
}

int EntryList::Count() const {
    return model_->rowCount();
}

QString EntryList::SelectedName() const {
    return CurrentPlace().caption;
}

void EntryList::SelectEntry(const QModelIndex& index) {
    RunGuarded(messages_, view_.window(), [&] {
        state_.CurPdfIndex = index.row();
        state_.CurPdfID = 0;
        slide_.Clear();
        state_.SymbolFile.clear();
        Database database(CurrentLibrary(state_), Database::Access::Read);
        const RecordSet rows = EntriesNamed(database, index.data().toString(), state_.CurFolderID);
        if (!rows.Eof())
            Choose(index.row(), rows);
    });
}

void EntryList::Choose(int row, const RecordSet& found) {
    const Entry entry = ReadEntry(found);
    slide_.SetEmptyText(QStringLiteral("このシンボルにスライドはありません"));
    slide_.ShowSlide(entry.slide.isEmpty() ? QString() : state_.HomeDir + entry.slide);
    state_.SymbolFile = state_.HomeDir + entry.file;
    state_.CurPdfIndex = row;
    state_.CurPdfID = found.Integer(u"ID");
}

bool EntryList::KeyPressed(int key) {
    if (key != Qt::Key_Return && key != Qt::Key_Enter)
        return false;
    view_.SelectFramed();
    Q_EMIT OpenWanted();
    return true;
}

bool EntryList::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::KeyPress:
        return watched == &view_ && KeyPressed(static_cast<QKeyEvent*>(event)->key());
    case QEvent::MouseButtonPress:
        chosen_ = false;
        return false;
    case QEvent::MouseButtonDblClick:
        // Only the left button opens.
        chosen_ = false;
        return static_cast<QMouseEvent*>(event)->button() != Qt::LeftButton;
    default:
        return false;
    }
}

} // namespace velmo
