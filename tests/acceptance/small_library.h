#pragma once

#include "acceptance/velmo_session.h"

namespace velmo {

// A library home with one symbol of every kind, written as the tests know it:
//
// トルヴィク
//   ボルト        slide; 六角ボルト (HEX: three variables, table), アイボルト (EYE: two variables, no table),
//                 記号 (MARK: no variables)
//   座金          slide; no entries
//     大形        one entry 平座金 (WASHER: as HEX, other values)
//
// HEX's table has the columns 呼び, d and L and the rows M10 10 50, M10 10 60, M12 12 50, M12 12 80; the
// variable 材質 has no column.
void WriteSmallLibrary(const VelmoSession& session);

// The lines of HEX's table file.
QStringList HexTableLines();

} // namespace velmo
