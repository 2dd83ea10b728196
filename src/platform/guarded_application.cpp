#include "platform/guarded_application.h"

#include "platform/guarded.h"

namespace velmo {

GuardedApplication::GuardedApplication(int& argc, char** argv, MessageBoxes& messages)
    : QApplication(argc, argv), messages_(messages) {}

bool GuardedApplication::notify(QObject* receiver, QEvent* event) {
    bool taken = false;
    RunGuarded(messages_, activeWindow(), [&] { taken = QApplication::notify(receiver, event); });
    return taken;
}

} // namespace velmo
