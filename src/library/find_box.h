#pragma once

#include "library/find_results_model.h"
#include "platform/message_boxes.h"

#include <QListView>

class QLineEdit;
class QStackedLayout;

namespace velmo {

// The tree's pane: a field above the tree in which one types what to look for. While it holds a text, the
// list of what was found stands in the tree's place. The field keeps the focus; the keys that move and open
// are meant for the list. It only tells what was chosen. Where the pane is too low for both, the tree has all
// of it until one wants to search.
class FindBox : public QWidget {
    Q_OBJECT

public:
    // What is wanted with a name that was chosen.
    enum class Wish { Show, Open };

    // state names the libraries that are searched.
    FindBox(QAbstractItemView& tree, const GlobalState& state, MessageBoxes& messages);

    // The libraries were changed: what is shown is looked for again, and its place stays.
    void LookAgain();

Q_SIGNALS:
    void Chosen(const FoundName& found, FindBox::Wish wish);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void BuildField();
    void BuildResults();
    void BuildList();
    bool IsSearching() const;
    bool HasRoomForField() const;
    void ShowOrHideField();
    bool ReadNames();
    void Search();
    void ShowTree();
    void Leave();
    void Escape();
    void Move(int key);
    bool KeyPressed(const QKeyEvent& key);
    int SelectedRow() const;
    void Choose(int row, Wish wish);
    void OpenSelected();

    QAbstractItemView& tree_;
    const GlobalState& state_;
    MessageBoxes& messages_;
    NameIndex names_;
    QWidget* bar_;
    QLineEdit* VlmFind_;
    QStackedLayout* pane_;
    // The results are built when something is looked for first; the program starts without them.
    FindResultsModel* model_ = nullptr;
    QListView* VlmFindList_ = nullptr;
    // The tree's selection followed a choice while the tree was out of sight.
    bool chosen_ = false;
    // The mouse press under way has chosen its row already.
    bool told_ = false;
    // The selection is put back: it is not the user's.
    bool restoring_ = false;
};

} // namespace velmo
