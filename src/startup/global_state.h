#pragma once

#include <QString>

#include <cstdint>

namespace velmo {

// Run modes as the CAD side asks for them (VlmMode).
namespace run_mode {
inline constexpr std::int16_t VariableInput = 2;
inline constexpr std::int16_t UserLibrary = 3;
inline constexpr std::int16_t ReturnFromMeasure = 4;
} // namespace run_mode

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
    // Row of the dimension table chosen last, 1-based.
    std::int16_t TableLast = 1;
    // The variable window handed a selection back.
    bool Confirmed = false;
};

} // namespace velmo
