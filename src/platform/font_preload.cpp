#include "platform/font_preload.h"

#ifdef VELMO_FONTCONFIG
#include <fontconfig/fontconfig.h>
#endif

namespace velmo {

FontPreload::FontPreload() {
#ifdef VELMO_FONTCONFIG
    reading_ = std::thread([] { FcInit(); });
#endif
}

FontPreload::~FontPreload() {
    if (reading_.joinable())
        reading_.join();
}

} // namespace velmo
