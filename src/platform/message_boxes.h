#pragma once

#include "platform/runtime_error.h"

#include <QString>

class QWidget;

namespace velmo {

// The title of every message that does not name another.
inline const QString MessageTitle = QStringLiteral("VELMO2");

// The modal messages of the program. Windows are handed one of these, so that a test can answer in the user's place.
class MessageBoxes {
public:
    virtual ~MessageBoxes() = default;

    // A text with an OK button.
    virtual void Inform(QWidget* parent, const QString& text, const QString& title = MessageTitle);
    // A question with Yes and No; true only on Yes.
    virtual bool Ask(QWidget* parent, const QString& text, const QString& title = MessageTitle);

    // The one place that shows run-time errors. Ends the program with exit status 1 when the error asks for it.
    void ShowError(QWidget* parent, const RuntimeError& error);
};

// Ends every open window's event loop; the program's exit status becomes the number.
void EndProgram(int exitStatus);

// The exit status that EndProgram asked for, 0 when it was not called.
int RequestedExitStatus();

} // namespace velmo
