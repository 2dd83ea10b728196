#include "pickers/folder_scan.h"

#include "platform/files.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QSet>

#include <algorithm>
#include <filesystem>

namespace velmo {

namespace {

constexpr QChar Separator = u'\\';
const QString PageFile = QStringLiteral("pagefile.sys");

// Links and devices are what they lead to; nothing is read about an entry but what its folder does not tell.
constexpr QDir::Filters Everything = QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;

QDirIterator EntriesOf(const QString& folder, const QStringList& patterns, QDir::Filters kinds) {
    const QString native = NativePath(folder);
    return QDirIterator(native.isEmpty() ? QStringLiteral(".") : native, patterns, kinds | Everything);
}

// Permissions do not tell; opening it does.
bool IsReadable(const QString& folder) {
    std::error_code failed;
    const std::filesystem::directory_iterator opened(
        std::filesystem::path(NativePath(folder).toStdU16String()), failed);
    return !failed;
}

char32_t UpperCase(char32_t character) {
    const char32_t upper = QChar::toUpper(character);
    // What has become another letter would not be found again.
    const bool same = QChar::toCaseFolded(upper) == QChar::toCaseFolded(character);
    return same && QChar::requiresSurrogates(upper) == QChar::requiresSurrogates(character) ? upper
                                                                                            : character;
}

} // namespace

QStringList SubFolders(const QString& folder) {
    QStringList names;
    QSet<QString> known;
    for (QDirIterator entries = EntriesOf(folder, {}, QDir::Dirs); entries.hasNext();) {
        entries.next();
        const QString name = entries.fileName();
        // A link to nothing is offered too.
        if (name == PageFile || name.contains(Separator) || !entries.fileInfo().isDir())
            continue;
        // Names that differ only in case are one name in a stored path.
        const qsizetype before = known.size();
        known.insert(UpperCasePath(name));
        if (known.size() > before)
            names << name;
    }
    return names;
}

FolderFiles FilesOf(const QString& folder, const QString& pattern) {
    FolderFiles files;
    for (QDirIterator entries = EntriesOf(folder, {pattern}, QDir::Files); entries.hasNext();) {
        entries.next();
        // Neither a device nor a link to nothing is a file.
        const QString name = entries.fileName();
        if (!name.contains(Separator) && entries.fileInfo().isFile())
            files.names << name;
    }
    std::sort(files.names.begin(), files.names.end(), [](const QString& left, const QString& right) {
        const int order = left.compare(right, Qt::CaseInsensitive);
        return order != 0 ? order < 0 : left < right;
    });
    files.readable = !files.names.isEmpty() || IsReadable(folder);
    return files;
}

bool FolderExists(const QString& folder) {
    return QFileInfo(NativePath(folder)).isDir();
}

QString UpperCasePath(const QString& path) {
    QString upper;
    upper.reserve(path.size());
    for (qsizetype i = 0; i < path.size(); ++i) {
        const QChar unit = path[i];
        if (unit.isHighSurrogate() && i + 1 < path.size() && path[i + 1].isLowSurrogate())
            upper += QChar::fromUcs4(UpperCase(QChar::surrogateToUcs4(unit, path[++i])));
        else
            upper += QChar(char16_t(UpperCase(unit.unicode())));
    }
    return upper;
}

QString FolderPath(const QString& path) {
    return path.endsWith(Separator) ? path : path + Separator;
}

QString PathIn(const QString& folder, const QString& name) {
    return FolderPath(folder) + name;
}

} // namespace velmo
