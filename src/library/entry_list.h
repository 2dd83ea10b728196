#pragma once

#include "library/library_database.h"
#include "platform/keeps_selection.h"
#include "platform/message_boxes.h"
#include "platform/settings_store.h"
#include "startup/global_state.h"

#include <QListView>
#include <QObject>

namespace velmo {

class EmptyHint;
class EntryListModel;
class SlideView;

// Shows the entries of the selected category and the slide of the one that is chosen.
class EntryList : public QObject {
    Q_OBJECT

public:
    EntryList(KeepsSelection<QListView>& view, SlideView& slide, GlobalState& state,
              const SettingsStore& settings, MessageBoxes& messages);

    // Shows nothing; no symbol is chosen.
    void Clear();
    // Whether the entry chosen last, as the settings remember it, is chosen again.
    enum class Restore { No, Yes };
    // Lists the entries of CurFolderID; nothing is chosen unless the remembered entry is restored.
    void FillEntryList(Restore restore);

    // What of a list one sees: the category, the row that is selected (-1 for none) with its caption, and how
    // far it is scrolled.
    struct Place {
        std::int16_t folderId = 0;
        int row = -1;
        QString caption;
        int scrolled = 0;
    };
    Place CurrentPlace() const;
    // Lists the entries of the same category anew, which have changed; the place stays as far as it can.
    void Refill();
    // After the category was listed anew: scrolls back and chooses the entry again, if it is still there.
    void ReturnTo(const Place& place);
    // Chooses the entry of an ID and scrolls to it; one that the category does not have chooses nothing.
    void ChooseEntry(std::int16_t id);
    // Chooses the entry of a row as a click does; a row beyond the list chooses nothing.
    void SelectAgain(int row);

    int Count() const;
    // The caption of the entry that is selected; empty when none is.
    QString SelectedName() const;

Q_SIGNALS:
    // The user wants to go on with the chosen entry.
    void OpenWanted();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void SelectEntry(const QModelIndex& index);
    void RestoreLast(Database& database);
    void Choose(int row, const RecordSet& found);
    bool KeyPressed(int key);

    KeepsSelection<QListView>& view_;
    SlideView& slide_;
    GlobalState& state_;
    const SettingsStore& settings_;
    MessageBoxes& messages_;
    EntryListModel* model_;
    EmptyHint* hint_ = nullptr;
    // The category that is listed.
    std::int16_t folderId_ = 0;
    // The list is being filled: a change of the current entry is not the user's.
    bool filling_ = false;
    // The mouse press under way has chosen its entry already.
    bool chosen_ = false;
};

} // namespace velmo
