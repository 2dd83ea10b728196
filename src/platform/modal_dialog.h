#pragma once

#include <QDialog>
#include <QHash>

namespace velmo {

// A dialog that is above all other windows while it is the active one, and that comes back in the size that
// the user gave it.
class ModalDialog : public QDialog {
    Q_OBJECT

public:
    // name: the objectName, under which sizes keeps the size that the user gave it; sizes outlives the
    // dialog.
    ModalDialog(QWidget* parent, const char* name, QHash<QString, QSize>& sizes);

    // Shows the dialog, blocks the other windows, and returns when it is closed.
    void ShowModal();

    void done(int result) override;

protected:
    // For a dialog that is laid out in several ways: each has a size of its own.
    void SetSizeKey(const QString& key) { sizeKey_ = key; }

    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    QHash<QString, QSize>& sizes_;
    QString sizeKey_;
    QSize shownSize_;
};

} // namespace velmo
