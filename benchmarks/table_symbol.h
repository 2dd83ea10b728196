#pragma once

#include "benchmarks/scratch.h"
#include "startup/global_state.h"

namespace velmo::bench {

// The largest table that is measured.
inline constexpr int Variables = 500;
inline constexpr int Rows = 32'767;
inline constexpr int Columns = 30;
// Characters of each column.
inline constexpr int Width = 10;

// The first values of the rows, by which they are grouped.
enum class Nominals { Different, Alike, Alternating };

// A symbol in a folder of its own, with settings that reopen it.
class Symbol {
public:
    Symbol(int variables, int columns, int rows, Nominals nominals);

    const Scratch& Folder() const { return scratch_; }
    qint64 TableBytes() const { return tableBytes_; }

    GlobalState State(std::int16_t mode) const;

private:
    Scratch scratch_;
    qint64 tableBytes_ = 0;
};

} // namespace velmo::bench
