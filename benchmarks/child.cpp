#include "benchmarks/child.h"

#include <QElapsedTimer>
#include <QFile>

#include <cstdlib>
#include <sys/wait.h>
#include <unistd.h>

namespace velmo::bench {

ChildRun RunToFirstPaint(const QString& program, const QString& config, const QString& window) {
    const QByteArray path = QFile::encodeName(program);
    const QByteArray configFolder = QFile::encodeName(config);
    const QByteArray windowName = window.toUtf8();
    int report[2];
    if (pipe(report) != 0)
        qFatal("no pipe");
    const QByteArray reportEnd = QByteArray::number(report[1]);
    QElapsedTimer timer;
    timer.start();
    const pid_t child = fork();
    if (child == 0) {
        // A start counts on a display, as users have one; this process's own windows stay offscreen.
        setenv("QT_QPA_PLATFORM", getenv("DISPLAY") ? "xcb" : "offscreen", 1);
        setenv("QT_PLUGIN_PATH", FIRST_PAINT_PLUGINS, 1);
        setenv("QT_QPA_GENERIC_PLUGINS", "velmofirstpaint", 1);
        setenv("VELMO_FIRST_PAINT_WINDOW", windowName.constData(), 1);
        // Without a session bus the accessibility bridge would launch one, a daemon that stays behind.
        setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent", 0);
        setenv("VELMO_FIRST_PAINT_REPORT", reportEnd.constData(), 1);
        if (!configFolder.isEmpty())
            setenv("XDG_CONFIG_HOME", configFolder.constData(), 1);
        execl(path.constData(), path.constData(), nullptr);
        _exit(127);
    }
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child || !WIFEXITED(status) || WEXITSTATUS(status) != 0)
        qFatal("%s did not paint %s", path.constData(), windowName.constData());
    const double seconds = double(timer.nsecsElapsed()) * 1e-9;
    // The system's own account of a child counts what this process held when it forked.
    qint64 peak = 0;
    const bool told = read(report[0], &peak, sizeof peak) == sizeof peak;
    close(report[0]);
    close(report[1]);
    if (!told)
        qFatal("%s did not tell its memory", path.constData());
    return {seconds, peak};
}

} // namespace velmo::bench
