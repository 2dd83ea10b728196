#include "platform/modal_dialog.h"

#include <QApplication>
#include <QTimer>
#include <gtest/gtest.h>

namespace velmo {
namespace {

constexpr QSize Small(200, 100);
constexpr QSize Large(300, 250);

class KindOfDialog : public ModalDialog {
public:
    KindOfDialog(QHash<QString, QSize>& sizes, const QString& kind) : ModalDialog(nullptr, "Dialog", sizes) {
        if (!kind.isEmpty())
            SetSizeKey(kind);
        resize(Small);
    }
};

// Shows a dialog, gives it a size if there is one, and closes it. Returns the size that it came up with.
QSize Show(QHash<QString, QSize>& sizes, QSize given = {}, const QString& kind = {}) {
    KindOfDialog dialog(sizes, kind);
    EXPECT_EQ(dialog.objectName(), "Dialog");
    QSize shown;
    const auto use = [&] {
        shown = dialog.size();
        if (given.isValid())
            dialog.resize(given);
        dialog.accept();
    };
    // In an event loop of its own, because another test may have ended the program's.
    QTimer::singleShot(0, &dialog, [&] {
        QTimer::singleShot(0, &dialog, use);
        dialog.ShowModal();
        QCoreApplication::quit();
    });
    QCoreApplication::exec();
    return shown;
}

TEST(ModalDialogTest, ComesBackInTheSizeThatTheUserGaveIt) {
    QHash<QString, QSize> sizes;
    EXPECT_EQ(Show(sizes, Large), Small);
    EXPECT_EQ(Show(sizes), Large);
    EXPECT_EQ(Show(sizes), Large) << "not touching it keeps what was remembered";
}

TEST(ModalDialogTest, ASizeThatTheUserLeftAloneIsNotRemembered) {
    QHash<QString, QSize> sizes;
    Show(sizes);
    EXPECT_TRUE(sizes.isEmpty());
}

TEST(ModalDialogTest, EveryKindOfADialogHasItsOwnSize) {
    QHash<QString, QSize> sizes;
    Show(sizes, Large, "one");
    EXPECT_EQ(Show(sizes, {}, "other"), Small);
    EXPECT_EQ(Show(sizes, {}, "one"), Large);
}

} // namespace
} // namespace velmo
