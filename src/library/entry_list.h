#pragma once

#include "library/library_database.h"
#include "platform/message_boxes.h"
#include "platform/settings_store.h"
#include "startup/global_state.h"

#include <QListView>
#include <QObject>

namespace velmo {

class EntryListModel;
class SlideView;

// Shows the entries of the selected category and the slide of the one that is chosen.
class EntryList : public QObject {
    Q_OBJECT

public:
    EntryList(QListView& view, SlideView& slide, GlobalState& state, const SettingsStore& settings,
              MessageBoxes& messages);

    // Shows nothing; no symbol is chosen.
    void Clear();
    // Whether the entry chosen last, as the settings remember it, is chosen again.
    enum class Restore { No, Yes };
    // Lists the entries of CurFolderID; nothing is chosen unless the remembered entry is restored.
    void FillEntryList(Restore restore);

Q_SIGNALS:
    // The user wants to go on with the chosen entry.
    void OpenWanted();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void SelectEntry(const QModelIndex& index);
    void RestoreLast(Database& database);
    void Choose(int row, const RecordSet& found);
    bool ChooseFramed();
    bool KeyPressed(int key);
    const QString& DatabasePath() const;

    QListView& view_;
    SlideView& slide_;
    GlobalState& state_;
    const SettingsStore& settings_;
    MessageBoxes& messages_;
    EntryListModel* model_;
    // The list is being filled: a change of the current entry is not the user's.
    bool filling_ = false;
    // The mouse press under way has chosen its entry already.
    bool chosen_ = false;
};

} // namespace velmo
