#pragma once

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <gtest/gtest.h>

#include <functional>

namespace velmo {

// Uses the dialogs that a command opens and waits for, each expected one in its turn. A dialog that nobody
// expects, one that stays open, and one that was expected but did not come, fail the test.
class DialogQueue : public QObject {
public:
    // What the user does in a dialog; the last thing closes it.
    using Use = std::function<void(QDialog& dialog)>;

    DialogQueue() { qApp->installEventFilter(this); }
    ~DialogQueue() override {
        for (const Expected& dialog : expected_)
            ADD_FAILURE() << "this dialog did not come: " << dialog.name.toStdString();
    }

    void Expect(const QString& name, const Use& use) { expected_ << Expected{name, use}; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        auto* dialog = qobject_cast<QDialog*>(watched);
        // Only what blocks the others is waited for.
        if (event->type() == QEvent::WindowActivate && dialog && dialog->isModal() && dialog != used_) {
            used_ = dialog;
            // The dialog's own loop runs by then.
            QMetaObject::invokeMethod(
                dialog, [this, dialog] { UseNext(*dialog); }, Qt::QueuedConnection);
        }
        return false;
    }

private:
    struct Expected {
        QString name;
        Use use;
    };

    void UseNext(QDialog& dialog) {
        const bool isExpected = !expected_.isEmpty() && expected_.first().name == dialog.objectName();
        EXPECT_TRUE(isExpected) << "nobody expects this dialog: " << dialog.objectName().toStdString();
        if (isExpected)
            expected_.takeFirst().use(dialog);
        used_ = nullptr;
        EXPECT_FALSE(dialog.isVisible()) << dialog.objectName().toStdString() << " stays open";
        if (dialog.isVisible())
            dialog.reject();
    }

    QList<Expected> expected_;
    // The one that is being used, or is going to be.
    QDialog* used_ = nullptr;
};

} // namespace velmo
