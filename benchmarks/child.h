#pragma once

#include <QString>

namespace velmo::bench {

// Programs that are started in a process of their own.
inline const QString Velmo2Program = QStringLiteral(VELMO2_PROGRAM);
inline const QString PlainWindowProgram = QStringLiteral(PLAIN_WINDOW_PROGRAM);

struct ChildRun {
    double seconds = 0;
    // Peak resident memory, bytes.
    qint64 peak = 0;
};

// Starts a program and ends it as soon as a window has painted itself for the first time. config: the folder
// of its settings (XDG_CONFIG_HOME), or empty.
ChildRun RunToFirstPaint(const QString& program, const QString& config, const QString& window);

} // namespace velmo::bench
