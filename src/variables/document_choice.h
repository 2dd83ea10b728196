#pragma once

#include "platform/message_boxes.h"
#include "startup/global_state.h"

#include <QString>

namespace velmo {

// Lets the user pick a PDF document below the library home folder, with the picker over the window. Empty
// when none was picked, or, after a message, when the CAD side could not read the document's path.
QString PickDocument(QWidget& window, const QString& caption, GlobalState& state, MessageBoxes& messages);

} // namespace velmo
