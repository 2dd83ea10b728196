#pragma once

#include "cad_side/cad_answer.h"
#include "drawing/drawing.h"

namespace velmo {

// The chosen symbol drawn with the answer's values; empty when its definition file has no drawing
// instructions. Throws as reading and drawing the definition file do.
Drawing DrawAnswer(const CadAnswer& answer);

} // namespace velmo
