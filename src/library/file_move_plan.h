#pragma once

#include "library/move_note.h"
#include "library/symbol_file_move.h"
#include "platform/file_move.h"

namespace velmo {

// A file to move, and the name that entries give it.
struct PlannedMove {
    FileToMove file;
    NameChange change;
    // It belongs to the file before it: both move, or none.
    bool goesAlong = false;
};

// The files of the selected rows that are to be moved to PickedDir, in order, each checked and asked about as
// if those before it had been moved already; none when progress is told to stop. Behind a definition file
// come those that belong to its symbol. Throws 75 when PickedDir is outside the library's root, 3163 or 5 for
// a new name that cannot be stored or told to the CAD side.
std::vector<PlannedMove> PlanFileMoves(const GlobalState& state, const std::vector<ContentRow>& selected,
                                       const FileMoveCallbacks& callbacks);

} // namespace velmo
