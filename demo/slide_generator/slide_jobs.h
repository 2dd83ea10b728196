#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

namespace velmo {

// A slide and the file whose drawing it shows (paths of the operating system).
struct SlideJob {
    QString source;
    QString slide;
};

// The slides of a library home, sorted by path: for every X.TXT below its SMB folder that has a $GEO section,
// and for every X.GEO (which goes before an X.TXT), the slide X.SLD beside it.
// Throws 76 when there is no SMB folder, else as ReadSymbolGeometry does.
std::vector<SlideJob> FindSlideJobs(const QString& home);

// The slide's bytes. Throws 5 or 13 naming file and line.
QByteArray RenderSlide(const SlideJob& job);

} // namespace velmo
