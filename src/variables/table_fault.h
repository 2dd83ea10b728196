#pragma once

#include "platform/grid_cells.h"
#include "platform/record_set.h"
#include "variables/table_columns.h"

#include <optional>

namespace velmo {

// What keeps a table from being saved as it is, and where it stands.
struct TableFault {
    enum class Kind {
        // A value has more characters than its column is wide.
        TooLong,
        // A value has more characters than can be read again, however wide its column is.
        TooLongToRead,
        // Code page 932 does not have the character.
        ForeignCharacter,
        // The file held bytes that are not code page 932; saving would lose them.
        UnreadBytes,
        LineBreak,
    };

    Kind kind = Kind::TooLong;
    // In the table's cells; row 0 for the name of the column.
    int row = 0;
    int column = 0;
    // Of the column.
    QString name;
    // Of a value that is too long, and what its column holds, in characters.
    qsizetype length = 0;
    int width = 0;
    // The foreign one.
    QString character;

    // What the user is told.
    QString Text() const;
};

// The most characters of a value in a column of a width.
inline qsizetype LongestValue(int width) {
    return qMin<qsizetype>(width, LongestText);
}

// The first one: names before values, values row by row. Columns without a variable are not saved and not
// looked at.
enum class LookFor { Everything, ForeignCharacters };
std::optional<TableFault> FindTableFault(const TableColumns& columns, const GridCells& cells,
                                         LookFor lookFor = LookFor::Everything);

} // namespace velmo
