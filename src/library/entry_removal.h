#pragma once

#include "startup/global_state.h"

#include <functional>

namespace velmo {

// What a removal tells and asks; true means yes. No connection to the library is open meanwhile.
struct RemovalCallbacks {
    std::function<void(const QString& text)> inform;
    std::function<bool(const QString& text, const QString& title)> ask;
};

// Deletes the category CurFolderID, unless it has subcategories, its list shows entries or it is the last
// root, and makes its parent the current one. True when it was deleted. A failure of the database is told
// through inform; only that the library cannot be written is thrown (3027), before any question.
bool DeleteFolder(GlobalState& state, int shownEntries, const RemovalCallbacks& callbacks);

// Deletes the first entry of the category CurFolderID that bears the name. True when it was deleted. Fails as
// DeleteFolder does.
bool DeletePdfEntry(const GlobalState& state, const QString& name, const RemovalCallbacks& callbacks);

} // namespace velmo
