#pragma once

#include "platform/runtime_error.h"

#include <QString>

class QWidget;

namespace velmo {

// The title of every message that does not name another.
inline const QString MessageTitle = QStringLiteral("VELMO2");

// The modal messages of the program. Windows are handed one of these, so that a test can answer in the user's
// place.
class MessageBoxes {
public:
    virtual ~MessageBoxes() = default;

    // A text with an OK button.
    virtual void Inform(QWidget* parent, const QString& text, const QString& title = MessageTitle);
    // A question with Yes and No; true only on Yes.
    virtual bool Ask(QWidget* parent, const QString& text, const QString& title = MessageTitle);

    // The one place that shows run-time errors. An error that ends the program ends every window's event
    // loop, and the exit status becomes 1.
    void ShowError(QWidget* parent, const RuntimeError& error);

    // What main returns.
    int ExitStatus() const { return exitStatus_; }

private:
    int exitStatus_ = 0;
};

} // namespace velmo
