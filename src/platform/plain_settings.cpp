#include "platform/plain_settings.h"

#include "platform/files.h"
#include "platform/runtime_error.h"
#include "platform/save_file.h"

#include <QDir>
#include <QFileInfo>

#include <cerrno>

namespace velmo {

namespace {

// A file of settings that is larger is something else.
constexpr qint64 LargestFile = 16'777'216;

struct Line {
    QByteArray bytes;
    QByteArray lineBreak;
    // Set only for a line Key=value of our section.
    QString key;
    QString value;
};

bool IsSection(QByteArrayView line) {
    return line.startsWith('[');
}

bool IsOurSection(const QByteArray& line) {
    return line.trimmed() == "[Settings]";
}

QList<Line> TakeApart(const QByteArray& file) {
    QList<Line> lines;
    bool ours = false;
    qsizetype at = file.startsWith("\xEF\xBB\xBF") ? 3 : 0;
    if (at > 0)
        lines << Line{file.first(at), {}, {}, {}};
    while (at < file.size()) {
        const qsizetype end = file.indexOf('\n', at);
        Line line;
        line.bytes = end < 0 ? file.sliced(at) : file.sliced(at, end - at);
        line.lineBreak = end < 0 ? QByteArray() : QByteArray("\n");
        at = end < 0 ? file.size() : end + 1;
        if (line.bytes.endsWith('\r')) {
            line.bytes.chop(1);
            line.lineBreak.prepend('\r');
        }
        const qsizetype equals = line.bytes.indexOf('=');
        if (IsSection(line.bytes)) {
            ours = IsOurSection(line.bytes);
        } else if (ours && equals > 0) {
            line.key = QString::fromUtf8(line.bytes.first(equals));
            line.value = QString::fromUtf8(line.bytes.sliced(equals + 1));
        }
        lines << line;
    }
    return lines;
}

SettingsValues ValuesIn(const QList<Line>& lines) {
    SettingsValues values;
    for (const Line& line : lines) {
        if (!line.key.isEmpty())
            values.insert(line.key, line.value);
    }
    return values;
}

QByteArray Written(const QString& key, const QString& value) {
    return key.toUtf8() + '=' + value.toUtf8();
}

// The changed file, finished beside the old one.
class PlainChange : public SettingsChange {
public:
    explicit PlainChange(const QString& path) : file_(NativeFile{path}) {}

    void Write(const QByteArray& bytes) { file_.Write(bytes); }
    void Commit() override { file_.Commit(); }

private:
    SaveFile file_;
};

// What is in the file already needs no saving.
class NoChange : public SettingsChange {
public:
    void Commit() override {}
};

} // namespace

SettingsValues ReadPlainSettings(const QByteArray& file) {
    return ValuesIn(TakeApart(file));
}

QByteArray WithPlainSettings(const QByteArray& file, const SettingsValues& changes) {
    const QList<Line> lines = TakeApart(file);
    const SettingsValues before = ValuesIn(lines);
    QByteArray changed; // up to the last line of our section that holds something
    QByteArray after;
    bool ours = false;
    bool found = false;
    for (Line line : lines) {
        if (IsSection(line.bytes)) {
            ours = IsOurSection(line.bytes);
            found = found || ours;
        }
        // Only what was changed is written anew; the bytes of the rest may be no text at all.
        const auto value = changes.constFind(line.key);
        if (!line.key.isEmpty() && value != changes.cend() && *value != before.value(line.key))
            line.bytes = Written(line.key, *value);
        after += line.bytes + line.lineBreak;
        if (ours && !line.bytes.trimmed().isEmpty()) {
            changed += after;
            after.clear();
        }
    }
    if (!found) {
        changed += after;
        after.clear();
        if (!changed.isEmpty() && !changed.endsWith('\n'))
            changed += '\n';
        changed += "[Settings]\n";
    }
    for (auto entry = changes.begin(); entry != changes.end(); ++entry) {
        if (before.contains(entry.key()))
            continue;
        if (!changed.endsWith('\n'))
            changed += '\n';
        changed += Written(entry.key(), *entry) + '\n';
    }
    return changed + after;
}

// A missing file is an empty one; one that cannot be read, or found out about, is not.
QByteArray PlainSettings::Bytes() const {
    QFile file(path_);
    if (OpenRegularFile(file, QIODevice::ReadOnly))
        return ReadRest(file, path_, LargestFile);
    // A link that leads nowhere, as to a disk that is not there, does not mean that there are no settings.
    if (errno == ENOENT && !QFileInfo(path_).isSymLink())
        return {};
    if (QFileInfo::exists(path_))
        ThrowCannotOpen(path_);
    throw RuntimeError(ErrorNumber::PathFileAccess).InFile(path_);
}

SettingsValues PlainSettings::Read() const {
    return ReadPlainSettings(Bytes());
}

std::unique_ptr<SettingsChange> PlainSettings::Prepare(const SettingsValues& changes) {
    QDir().mkpath(QFileInfo(path_).path());
    // What others save meanwhile must be in the file before it is read, or wait.
    auto change = std::make_unique<PlainChange>(path_);
    const QByteArray before = Bytes();
    const QByteArray after = WithPlainSettings(before, changes);
    if (after == before)
        return std::make_unique<NoChange>();
    change->Write(after);
    return change;
}

} // namespace velmo
