#include "platform/font_preload.h"

#include <QFontDatabase>
#include <QStringList>
#ifdef VELMO_FONTCONFIG
#include <fontconfig/fontconfig.h>
#endif

namespace velmo {

namespace {

void ReadConfiguration() {
#ifdef VELMO_FONTCONFIG
    FcInit();
#endif
}

void ReadFamilies() {
    // The engine stays with its thread; the families that stand in for a missing character are found for all.
    QFontDatabase::families();
}

} // namespace

FontPreload::FontPreload(Part part)
    : reading_(part == Part::Configuration ? ReadConfiguration : ReadFamilies) {}

FontPreload::~FontPreload() {
    reading_.join();
}

} // namespace velmo
