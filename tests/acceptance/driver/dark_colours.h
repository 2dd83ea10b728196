#pragma once

namespace velmo::driver {

// Gives the program the colours of a dark desktop.
void UseDarkColours();

} // namespace velmo::driver
