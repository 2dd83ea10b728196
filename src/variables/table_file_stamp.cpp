#include "variables/table_file_stamp.h"

#include "platform/files.h"

#include <QCryptographicHash>
#include <QFile>

namespace velmo {

namespace {

std::optional<QByteArray> HashOf(const QString& path) {
    if (!FileExists(path))
        return std::nullopt;
    QFile file(NativePath(path));
    // Against accidents, not against forgers.
    QCryptographicHash hash(QCryptographicHash::Sha1);
    if (!OpenRegularFile(file, QIODevice::ReadOnly) || !hash.addData(&file))
        return QByteArray();
    return hash.result();
}

} // namespace

TableFileStamp::TableFileStamp(const QString& path) : path_(path), hash_(HashOf(path)) {}

bool TableFileStamp::IsOutdated() const {
    const std::optional<QByteArray> now = HashOf(path_);
    return now && now != hash_;
}

} // namespace velmo
