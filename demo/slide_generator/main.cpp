#include "platform/runtime_error.h"
#include "platform/save_file.h"
#include "slide_generator/slide_jobs.h"
#include "slide_generator/slide_picture.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>

#include <cstdio>

using namespace velmo;

namespace {

void Print(FILE* stream, const QString& line) {
    std::fputs((line + u'\n').toLocal8Bit().constData(), stream);
}

QByteArray Contents(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// True when the slide is now, or with isCheck was already, what its drawing gives.
bool Handle(const SlideJob& job, bool isCheck) {
    const QByteArray bytes = RenderSlide(job);
    if (Contents(job.slide) == bytes)
        return true;
    if (isCheck) {
        Print(stderr, QStringLiteral("%1: スライドが図形と一致しません。").arg(job.slide));
        return false;
    }
    ReplaceFile(job.slide, bytes);
    Print(stdout, job.slide);
    return true;
}

// Goes on after a file with an error, so that one run names them all.
bool HandleAll(const QString& home, bool isCheck) {
    const std::vector<SlideJob> jobs = FindSlideJobs(home);
    bool isGood = true;
    for (const SlideJob& job : jobs) {
        try {
            isGood = Handle(job, isCheck) && isGood;
        } catch (const RuntimeError& error) {
            Print(stderr, ErrorText(error));
            isGood = false;
        }
    }
    Print(stdout, QStringLiteral("スライド %1 枚").arg(jobs.size()));
    return isGood;
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("図形定義から VELMO のスライドを作ります。"));
    parser.addHelpOption();
    const QCommandLineOption check(QStringLiteral("check"),
                                   QStringLiteral("書かずに、今のスライドと比べます。"));
    const QCommandLineOption png(QStringLiteral("png"), QStringLiteral("スライド 1 枚を PNG にします。"),
                                 QStringLiteral("slide"));
    parser.addOptions({check, png});
    parser.addPositionalArgument(QStringLiteral("path"),
                                 QStringLiteral("ホームフォルダー。--png では PNG ファイル"));
    parser.process(application);
    if (parser.positionalArguments().size() != 1)
        parser.showHelp(2);
    const QString path = parser.positionalArguments().first();
    try {
        if (!parser.isSet(png))
            return HandleAll(path, parser.isSet(check)) ? 0 : 1;
        SaveSlidePicture(parser.value(png), path);
        return 0;
    } catch (const RuntimeError& error) {
        Print(stderr, ErrorText(error));
        return 1;
    }
}
