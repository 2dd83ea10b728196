#include "library/entry_list.h"

#include "library/entry_list_model.h"
#include "platform/guarded.h"
#include "platform/slide_view.h"
#include "startup/settings_keys.h"

#include <QKeyEvent>
#include <QScopedValueRollback>

namespace velmo {

EntryList::EntryList(QListView& view, SlideView& slide, GlobalState& state, const SettingsStore& settings,
                     MessageBoxes& messages)
    : view_(view),
      slide_(slide),
      state_(state),
      settings_(settings),
      messages_(messages),
      model_(new EntryListModel(&view)) {
    view_.setModel(model_);
    view_.setUniformItemSizes(true);
    view_.setEditTriggers(QAbstractItemView::NoEditTriggers);
    view_.setTextElideMode(Qt::ElideMiddle);
    view_.installEventFilter(this);
    // The keyboard chooses as the mouse does.
    connect(view_.selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this](const QItemSelection& selected) {
                if (!filling_ && !selected.isEmpty()) {
                    chosen_ = true;
                    SelectEntry(selected.indexes().first());
                }
            });
    // A click on the entry that is selected already chooses it again; a press with Ctrl does not take it
    // away.
    connect(&view_, &QListView::pressed, this, [this](const QModelIndex& pressed) {
        if (!view_.selectionModel()->isSelected(pressed))
            view_.setCurrentIndex(pressed);
        if (!std::exchange(chosen_, false))
            SelectEntry(pressed);
    });
    connect(&view_, &QListView::doubleClicked, this, &EntryList::OpenWanted);
}

void EntryList::FillEntryList(Restore restore) {
    const QScopedValueRollback<bool> filling(filling_, true);
    slide_.Clear();
    state_.SymbolFile.clear();
    Database database(DatabasePath(), Database::Access::Read);
    QStringList names;
    for (RecordSet rows = EntriesOf(database, state_.CurFolderID); !rows.Eof(); rows.MoveNext())
        names << rows.Text(u"PDFName");
    model_->setStringList(names);
    if (restore == Restore::Yes && !names.isEmpty())
        RestoreLast(database);
}

void EntryList::RestoreLast(Database& database) {
    const QString last = settings_.Get(settings_keys::LastSymbol(state_.UserLibrary));
    const QString file = last.size() > state_.HomeDir.size() ? last.sliced(state_.HomeDir.size()) : last;
    // A quote would break the search condition; then nothing is chosen.
    if (file.isEmpty() || file.contains(u'\''))
        return;
    RecordSet rows = EntriesOf(database, state_.CurFolderID);
    rows.FindFirst(EntryFileCriterion(file));
    if (rows.NoMatch())
        return;
    const Entry entry = ReadEntry(rows);
    const int row = int(model_->stringList().indexOf(entry.name));
    view_.setCurrentIndex(model_->index(row));
    view_.scrollTo(model_->index(row));
    Choose(row, entry);
}

void EntryList::SelectEntry(const QModelIndex& index) {
    RunGuarded(messages_, view_.window(), [&] {
        state_.CurPdfIndex = index.row();
        slide_.Clear();
        state_.SymbolFile.clear();
        Database database(DatabasePath(), Database::Access::Read);
        const RecordSet rows = EntriesNamed(database, index.data().toString(), state_.CurFolderID);
        if (!rows.Eof())
            Choose(index.row(), ReadEntry(rows));
    });
}

void EntryList::Choose(int row, const Entry& entry) {
    slide_.ShowSlide(entry.slide.isEmpty() ? QString() : state_.HomeDir + entry.slide);
    state_.SymbolFile = state_.HomeDir + entry.file;
    state_.CurPdfID = entry.id;
    state_.CurPdfIndex = row;
}

const QString& EntryList::DatabasePath() const {
    return state_.SystemTreeFirst ? state_.SystemDb : state_.LibraryDb;
}

bool EntryList::eventFilter(QObject* watched, QEvent* event) {
    if (watched == &view_ && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if ((key == Qt::Key_Return || key == Qt::Key_Enter) && view_.currentIndex().isValid()) {
            Q_EMIT OpenWanted();
            return true;
        }
    }
    return QObject::eventFilter(watched, event);
}

} // namespace velmo
