#pragma once

#include <thread>

namespace velmo {

// Reads the system's font configuration beside the program's own start. The first text would read it anyway,
// and everything would wait for it. Does nothing where the system's fonts need no such reading.
class FontPreload {
public:
    FontPreload();
    ~FontPreload();
    FontPreload(const FontPreload&) = delete;
    FontPreload& operator=(const FontPreload&) = delete;

private:
    std::thread reading_;
};

} // namespace velmo
