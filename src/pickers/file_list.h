#pragma once

#include "platform/keeps_selection.h"

#include <QListView>
#include <QStringListModel>

namespace velmo {

class EmptyHint;

// The files of one folder of the disk that match a pattern. The user chooses one by mouse or keys; until then
// none is chosen.
class FileList : public KeepsSelection<QListView> {
    Q_OBJECT

public:
    explicit FileList(QWidget* parent = nullptr);

    // The stored path of a folder, with or without a backslash at its end. Another folder lists its files,
    // and nothing is chosen then.
    void ShowFolder(const QString& folder);
    const QString& Folder() const { return folder_; }
    // Such as "*.SLD"; case does not matter.
    void SetPattern(const QString& pattern);
    const QString& Pattern() const { return pattern_; }
    // The chosen file; empty when none is.
    QString FileName() const;
    bool IsEmpty() const { return names_->rowCount() == 0; }

    // Puts the frame on a file and scrolls to it, without choosing it; a file that is not there gets none.
    void Frame(const QString& name);

Q_SIGNALS:
    // The user chose a file; the one chosen before may be chosen again.
    void FileChosen(const QString& name);
    // The user wants to go on with the chosen file.
    void FileAccepted();

protected:
    void showEvent(QShowEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;

private:
    void List();

    QStringListModel* names_;
    QString folder_;
    QString pattern_ = QStringLiteral("*.*");
    EmptyHint* hint_ = nullptr;
    // The mouse press under way has been told already.
    bool told_ = false;
};

} // namespace velmo
