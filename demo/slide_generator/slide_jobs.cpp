#include "slide_generator/slide_jobs.h"

#include "drawing/drawing.h"
#include "platform/files.h"
#include "platform/runtime_error.h"
#include "slide_generator/drawing_slide.h"

#include <QDirIterator>
#include <QFileInfo>

#include <map>

namespace velmo {
namespace {

bool HasExtension(const QString& path, QLatin1String extension) {
    return QFileInfo(path).suffix().compare(extension, Qt::CaseInsensitive) == 0;
}

} // namespace

std::vector<SlideJob> FindSlideJobs(const QString& home) {
    const QString symbols = NativePath(home + QStringLiteral("/SMB"));
    if (!QFileInfo(symbols).isDir())
        throw RuntimeError(ErrorNumber::PathNotFound, QStringLiteral("SMB フォルダーがありません。"))
            .InFile(symbols);
    // By path without extension, so that a .GEO takes the place of a .TXT of the same name.
    std::map<QString, QString> sources;
    QDirIterator files(symbols, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        const QString base = path.chopped(QFileInfo(path).suffix().size() + 1);
        if (HasExtension(path, QLatin1String("GEO")))
            sources[base] = path;
        else if (HasExtension(path, QLatin1String("TXT")) && ReadSymbolGeometry(path).hasGeometry)
            sources.emplace(base, path);
    }
    std::vector<SlideJob> jobs;
    jobs.reserve(sources.size());
    for (const auto& [base, source] : sources)
        jobs.push_back({source, NativePath(base + QStringLiteral(".SLD"))});
    return jobs;
}

QByteArray RenderSlide(const SlideJob& job) {
    return DrawingSlide(MakeDrawing(ReadSymbolGeometry(job.source)));
}

} // namespace velmo
