#include "benchmarks/child.h"

#include <QElapsedTimer>
#include <QFile>

#include <cstdlib>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace velmo::bench {

ChildRun RunToFirstPaint(const QString& program, const QString& config, const QString& window) {
    const QByteArray path = QFile::encodeName(program);
    const QByteArray configFolder = QFile::encodeName(config);
    const QByteArray windowName = window.toUtf8();
    QElapsedTimer timer;
    timer.start();
    const pid_t child = fork();
    if (child == 0) {
        // A start counts on a display, as users have one; this process's own windows stay offscreen.
        setenv("QT_QPA_PLATFORM", getenv("DISPLAY") ? "xcb" : "offscreen", 1);
        setenv("QT_PLUGIN_PATH", FIRST_PAINT_PLUGINS, 1);
        setenv("QT_QPA_GENERIC_PLUGINS", "velmofirstpaint", 1);
        setenv("VELMO_FIRST_PAINT_WINDOW", windowName.constData(), 1);
        if (!configFolder.isEmpty())
            setenv("XDG_CONFIG_HOME", configFolder.constData(), 1);
        execl(path.constData(), path.constData(), nullptr);
        _exit(127);
    }
    int status = 0;
    rusage usage{};
    if (child < 0 || wait4(child, &status, 0, &usage) != child || !WIFEXITED(status) ||
        WEXITSTATUS(status) != 0)
        qFatal("%s did not paint %s", path.constData(), windowName.constData());
    return {double(timer.nsecsElapsed()) * 1e-9, qint64(usage.ru_maxrss) * 1024};
}

} // namespace velmo::bench
