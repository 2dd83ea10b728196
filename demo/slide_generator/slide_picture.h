#pragma once

#include <QString>

namespace velmo {

// Paints a slide file (stored path) as the program shows it into a PNG file of 800 by 600 pixels.
// Throws 5 when the file is no slide, 75 when the picture cannot be written.
void SaveSlidePicture(const QString& slideFile, const QString& pictureFile);

} // namespace velmo
