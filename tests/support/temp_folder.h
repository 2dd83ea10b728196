#pragma once

#include <QString>
#include <QTemporaryDir>

#include <ostream>

namespace velmo {

// A folder that is gone when the test ends. Paths are stored paths: the folder's own ends in a backslash.
class TempFolder {
public:
    TempFolder();

    // The folder followed by name, as the program spells paths.
    QString Path(const QString& name = {}) const;
    // Writes a file below the folder (name with backslashes; folders are made) and returns its stored path.
    QString Write(const QString& name, const QByteArray& bytes) const;
    // The same with lines in code page 932 and CR LF.
    QString WriteLines(const QString& name, const QStringList& lines) const;
    QByteArray Read(const QString& name) const;
    bool Exists(const QString& name) const;

private:
    QString Native(const QString& name) const;

    QTemporaryDir folder_;
};

} // namespace velmo

// GoogleTest prints these in failures.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}
