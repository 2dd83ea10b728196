#pragma once

#include "library/move_note.h"
#include "library/symbol_file_move.h"
#include "platform/file_move.h"

namespace velmo {

// A file to move, and the name that entries give it.
struct PlannedMove {
    QString source;
    QString destination;
    IfThere ifThere = IfThere::Refuse;
    NameChange change;
};

// The files of the selected rows that are to be moved to PickedDir, in order, each checked and asked about as
// if those before it had been moved already; none when progress is told to stop. Throws 3163 or 5 for a new
// name that cannot be stored or told to the CAD side.
std::vector<PlannedMove> PlanFileMoves(const GlobalState& state, const std::vector<ContentRow>& selected,
                                       const FileMoveCallbacks& callbacks);

} // namespace velmo
