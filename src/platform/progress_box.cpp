#include "platform/progress_box.h"

#include "platform/message_boxes.h"

namespace velmo {

namespace {

constexpr int DelayMilliseconds = 500;
constexpr int Steps = 1000;

} // namespace

bool ProgressBox::Report(qint64 done, qint64 whole) {
    if (!dialog_) {
        const QString stop = cancel_ == Cancel::Yes ? QStringLiteral("中止") : QString();
        dialog_.emplace(label_, stop, 0, Steps, parent_);
        dialog_->setWindowTitle(MessageTitle);
        dialog_->setWindowModality(Qt::ApplicationModal);
        dialog_->setMinimumDuration(DelayMilliseconds);
    }
    dialog_->setValue(whole > 0 ? int(done * Steps / whole) : 0);
    return !dialog_->wasCanceled();
}

bool ProgressBox::ReportWaiting() {
    // A button that is pressed is noticed only when the bar moves.
    const bool goesOn = Report(waited_, Steps);
    waited_ = (waited_ + 1) % Steps;
    return goesOn;
}

} // namespace velmo
