#include "variables/cell_block.h"

#include <cstdint>

// Any text of the clipboard is taken apart, and a block survives being copied and pasted.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const velmo::CellBlock block = velmo::FromTabText(text);
    if (!block.IsEmpty() &&
        velmo::ToTabText(velmo::FromTabText(velmo::ToTabText(block))) != velmo::ToTabText(block))
        qFatal("a pasted block differs from the copied one");
    return 0;
}
