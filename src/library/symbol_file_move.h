#pragma once

#include "library/folder_content.h"

#include <functional>

namespace velmo {

// What a move of files tells and asks; a question is answered yes with true. The library is not held
// meanwhile.
struct FileMoveCallbacks {
    std::function<void(const QString& text)> inform;
    std::function<bool(const QString& text)> ask;
    // Where there are many, first the files looked at of those that may move, all before the first question;
    // then the files done of those to move. False stops; what was moved until then stays moved, in the
    // library too.
    std::function<bool(qint64 done, qint64 total)> progress;
};

// Moves the files of the selected entries to the folder PickedDir and stores their new names wherever the
// library names them. With a definition file goes what belongs to its symbol: the files of the same base name
// with the endings PMN, SLD, LBL and PDF; they move all or, after an error, none. What leads out of LibRoot
// is refused. All questions come first. An error ends the move with what was moved until then; before the
// first file it is 3027 or 3260 when the library cannot be written, 75 when the note of a move that was
// killed cannot be read or PickedDir is outside LibRoot, 3163 or 5 when a new name cannot be stored or told
// to the CAD side.
void MoveSymbolFiles(const GlobalState& state, const std::vector<ContentRow>& selected,
                     const FileMoveCallbacks& callbacks);

// Stores the names of files that a move which was killed had moved without storing them, and deletes what is
// left in its old place of files that had been moved together. Never fails: what cannot be done now is left
// for the next time.
void FinishInterruptedMove(const QString& library, const QString& libRoot);

// The part of a path behind its last backslash.
QString PathToFnam(const QString& path);

} // namespace velmo
