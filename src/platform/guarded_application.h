#pragma once

#include "platform/message_boxes.h"

#include <QApplication>

namespace velmo {

// The application whose event handlers may throw: what reaches the toolkit is told as RunGuarded tells it,
// instead of ending the program without a word.
class GuardedApplication : public QApplication {
    Q_OBJECT

public:
    GuardedApplication(int& argc, char** argv, MessageBoxes& messages);

    bool notify(QObject* receiver, QEvent* event) override;

private:
    MessageBoxes& messages_;
};

} // namespace velmo
