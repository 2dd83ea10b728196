#pragma once

namespace velmo::driver {

// Gives the program the colours and the font size of the desktop that the test wants.
void UseDesktopLook();

} // namespace velmo::driver
