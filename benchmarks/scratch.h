#pragma once

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

namespace velmo::bench {

// A folder for the files of a measurement, gone at the end.
class Scratch {
public:
    // A stored path; the folder's own ends in a backslash.
    QString Path(const QString& name = {}) const { return folder_.path() + u'\\' + name; }
    QString Native(const QString& name) const { return folder_.filePath(name); }

    void Write(const QString& name, const QByteArray& bytes) const {
        QDir().mkpath(QFileInfo(Native(name)).path());
        QFile file(Native(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("cannot write %s", qUtf8Printable(file.fileName()));
    }

private:
    QTemporaryDir folder_;
};

} // namespace velmo::bench
