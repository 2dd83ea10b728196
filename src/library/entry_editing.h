#pragma once

#include "startup/global_state.h"

#include <optional>

namespace velmo {

// What the entry editor shows and stores: the line of the folder and the three boxes. For a folder the third
// text is the slide and the fourth is not used. EditMode, CurFolderID and CurPdfID tell the row.
struct EntryTexts {
    QString Name1;
    QString Name2;
    QString Name3;
    QString Name4;
};

// The texts that the editor starts with. Throws 3021 when a row is missing.
EntryTexts LoadEntryTexts(const GlobalState& state);

// Why texts are not stored, and the box (2, 3 or 4) that is to be corrected.
struct EntryRefusal {
    int box = 0;
    QString text;
};

// The first thing wrong with the texts: an empty required field, then what the library or the CAD side could
// not take.
std::optional<EntryRefusal> CheckEntryTexts(const GlobalState& state, const EntryTexts& texts);

// Stores a category (EditMode 1 and 2) and leaves its ID, name and slide in the state. Throws 3021 when the
// row of CurFolderID is missing; the state changes only with the library.
void SaveFolderEntry(GlobalState& state, const EntryTexts& texts);

// Stores an entry (EditMode 3 and 4) and leaves its slide in the state. An entry to edit that has vanished is
// added anew; EditMode tells.
void SavePdfEntry(GlobalState& state, const EntryTexts& texts);

} // namespace velmo
