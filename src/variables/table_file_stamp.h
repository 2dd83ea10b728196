#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace velmo {

// What a table file held when it was opened, to know before it is replaced whether that would undo somebody
// else's change. Take it before the file is read.
class TableFileStamp {
public:
    // path is a stored path.
    explicit TableFileStamp(const QString& path);

    // True when the file now holds something else, or has come into being. A file that is gone loses nothing.
    bool IsOutdated() const;

private:
    QString path_;
    // Nothing for no file; an empty one for a file that cannot be read.
    std::optional<QByteArray> hash_;
};

} // namespace velmo
