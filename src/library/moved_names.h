#pragma once

#include "library/move_note.h"
#include "platform/database.h"

namespace velmo {

// Gives every entry and category of the library that names a moved file, in whatever field, its new name. A
// name that is spelled otherwise, by upper and lower case only, names the file too, unless another file of
// that spelling is still there below the library's root. Returns the number of changed rows.
int StoreMovedNames(Database& library, const QString& libRoot, const std::vector<NameChange>& moved);

} // namespace velmo
