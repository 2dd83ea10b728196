#pragma once

#include <cstdint>

namespace velmo {

// The drawing program's indexed colours as 0xRRGGBB. Number 0 is the background and 7 the foreground of the
// drawing window: they come out as black and white, what they are on a dark ground.
std::uint32_t SlideColour(std::uint8_t number);

} // namespace velmo
