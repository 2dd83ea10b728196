#pragma once

namespace velmo {

// The pointer tells that the program is busy, until it handles events again.
void ShowBusyCursor();

} // namespace velmo
