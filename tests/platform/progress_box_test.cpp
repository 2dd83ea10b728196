#include "platform/progress_box.h"

#include <QApplication>
#include <QElapsedTimer>
#include <gtest/gtest.h>

namespace velmo {
namespace {

QProgressDialog* Shown() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (auto* dialog = qobject_cast<QProgressDialog*>(window); dialog && dialog->isVisible())
            return dialog;
    }
    return nullptr;
}

// Reports a work that goes on until the box is seen, or for ten seconds.
QProgressDialog* WorkUntilShown(ProgressBox& progress) {
    QElapsedTimer timer;
    timer.start();
    for (qint64 done = 1; !Shown() && !timer.hasExpired(10'000); ++done)
        progress.Report(1 + done % 400, 1000);
    return Shown();
}

TEST(ProgressBox, AShortWorkShowsNothing) {
    ProgressBox progress(nullptr, "label", ProgressBox::Cancel::Yes);
    for (int done = 0; done <= 10; ++done)
        EXPECT_TRUE(progress.Report(done, 10));
    EXPECT_FALSE(Shown());
}

TEST(ProgressBox, ALongWorkIsShownAndCanBeStopped) {
    ProgressBox progress(nullptr, "label", ProgressBox::Cancel::Yes);
    QProgressDialog* dialog = WorkUntilShown(progress);
    ASSERT_TRUE(dialog);
    EXPECT_EQ(dialog->labelText(), "label");
    EXPECT_EQ(dialog->windowTitle(), "VELMO2");
    EXPECT_TRUE(progress.Report(500, 1000));
    dialog->cancel();
    EXPECT_FALSE(progress.Report(501, 1000));
}

} // namespace
} // namespace velmo
