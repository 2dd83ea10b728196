#pragma once

#include <thread>

namespace velmo {

// Reads what the system knows about fonts beside the program's own start. The first text would read it
// anyway, and everything would wait for it.
class FontPreload {
public:
    enum class Part {
        // The configuration: needs nothing. Read ahead only where the system's fonts have one.
        Configuration,
        // The families and the first engine: needs the application, and must end before it does.
        Families
    };

    explicit FontPreload(Part part);
    ~FontPreload();
    FontPreload(const FontPreload&) = delete;
    FontPreload& operator=(const FontPreload&) = delete;

private:
    std::thread reading_;
};

} // namespace velmo
