#pragma once

#include "library/symbol_file_move.h"

#include <optional>

namespace velmo {

// The path with a backslash at its end.
QString WithBackslash(const QString& folder);

// A file, existing or not, as it was found on the disk.
struct FoundFile {
    QString path;
    QString place;
    // Without regard to case: the file system of the CAD side has none.
    QString foldedPlace;
    bool exists = false;
};

// A file that may move.
struct Candidate {
    // The entry that names it, or whose definition file it lies beside.
    QString entry;
    QString field;
    // Relative to the library's root.
    QString name;
    FoundFile source;
    FoundFile destination;
    bool isInPlace = false;
    // It would lead out of the library's root, from there or to there.
    bool isOutside = false;
    // It belongs to the definition file before it and goes where that goes.
    bool goesAlong = false;
};

// A name without its ending, as the symbol's other files begin; empty when nothing is left of it.
QString BaseName(const QString& name);

// The files that the selected rows name, in order, behind each definition file those of its base name that
// belong to the symbol and that no selected row names: the dimension table, the slide, the places of letters
// beside it, and a document. All are looked at before the first question, so that nothing is read between
// two. Nothing when progress is told to stop. Throws 75 when the target is outside the library's root.
std::optional<std::vector<Candidate>> SurveyFiles(const GlobalState& state,
                                                  const std::vector<ContentRow>& selected,
                                                  const FileMoveCallbacks& callbacks);

} // namespace velmo
