#pragma once

#include <QHash>
#include <QSize>
#include <QString>

#include <cstdint>

namespace velmo {

// Run modes as the CAD side asks for them (VlmMode).
namespace run_mode {
inline constexpr std::int16_t VariableInput = 2;
inline constexpr std::int16_t UserLibrary = 3;
inline constexpr std::int16_t ReturnFromMeasure = 4;
// The mode of a run that ended with a document instead of values; whether it did, PickedPdf tells.
inline constexpr std::int16_t Document = 33;
} // namespace run_mode

// Jobs of the entry editor (EditMode).
namespace edit_mode {
inline constexpr std::int16_t Cancelled = 0;
inline constexpr std::int16_t AddFolder = 1;
inline constexpr std::int16_t EditFolder = 2;
inline constexpr std::int16_t AddEntry = 3;
inline constexpr std::int16_t EditEntry = 4;
} // namespace edit_mode

// What all windows share. Made once in main and handed to every window by reference. Paths are stored paths.
struct GlobalState {
    std::int16_t NextFlag = 0;
    QString HomeDir;
    QString LibRoot;
    std::int16_t RunMode = run_mode::VariableInput;
    QString TempDir;
    bool UserLibrary = false;
    // Full path of the chosen symbol's definition file; empty when nothing is chosen.
    QString SymbolFile;
    QString LibraryDb;
    // Run mode 3 only: the system library beside the user library in LibraryDb.
    QString SystemDb;
    bool SystemTreeFirst = false;
    std::int16_t CurFolderID = 0;
    QString CurFolderName;
    QString CurSldFile;
    std::int16_t CurPdfID = 0;
    int CurPdfIndex = 0;
    std::int16_t EditMode = edit_mode::Cancelled;
    // The file picker's answer, relative to HomeDir; empty when nothing was picked.
    QString PickedFile;
    // What the folder picker offers: folders of the disk, or categories.
    bool PickDiskDir = false;
    // The folder picker's answer: a folder of the disk (stored path) or the ID of a category; empty when
    // nothing was picked.
    QString PickedDir;
    // The document that the variable window ended with, relative to HomeDir; empty for another end.
    QString PickedPdf;
    // Row of the dimension table chosen last, 1-based.
    std::int16_t TableLast = 1;
    // The variable window handed a selection back.
    bool Confirmed = false;
    // A distance is to be measured for the answer that was given last (run mode 3, where the browser stays).
    bool MeasureAsked = false;
    // The sizes that the user gave to dialogs, by their names, as long as the program runs.
    QHash<QString, QSize> DialogSizes;
};

// Whether the browser was opened on both libraries. It stays so although RunMode may change meanwhile.
inline bool ShowsBothLibraries(const GlobalState& state) {
    return !state.SystemDb.isEmpty();
}

// The library that the selected category belongs to.
inline const QString& CurrentLibrary(const GlobalState& state) {
    return state.SystemTreeFirst ? state.SystemDb : state.LibraryDb;
}

} // namespace velmo
