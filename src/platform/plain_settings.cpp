#include "platform/plain_settings.h"

#include <QHash>
#include <QIODevice>

namespace velmo {

namespace {

// The file as it was read travels along under a key that no file can hold (it has a line break).
const QString WholeFile = QStringLiteral("\nfile");
const QString Section = QStringLiteral("Settings/");

struct Line {
    QByteArray bytes;
    QByteArray lineBreak;
    // Set only for a line Key=value of our section.
    QString key;
    QString value;
};

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
        if (line.bytes.startsWith('[')) {
            ours = line.bytes.trimmed() == "[Settings]";
        } else if (ours && equals > 0) {
            line.key = QString::fromUtf8(line.bytes.first(equals));
            line.value = QString::fromUtf8(line.bytes.sliced(equals + 1));
        }
        lines << line;
    }
    return lines;
}

// What the file says about each key; of a key that stands there twice the last line holds.
QHash<QString, QString> ValuesIn(const QList<Line>& lines) {
    QHash<QString, QString> values;
    for (const Line& line : lines) {
        if (!line.key.isEmpty())
            values.insert(line.key, line.value);
    }
    return values;
}

QByteArray Written(const QString& key, const QString& value) {
    return key.toUtf8() + '=' + value.toUtf8();
}

} // namespace

bool ReadPlainSettings(QIODevice& device, QSettings::SettingsMap& map) {
    const QByteArray file = device.readAll();
    map.insert(WholeFile, file);
    for (const Line& line : TakeApart(file)) {
        if (!line.key.isEmpty())
            map.insert(Section + line.key, line.value);
    }
    return true;
}

bool WritePlainSettings(QIODevice& device, const QSettings::SettingsMap& map) {
    const QList<Line> lines = TakeApart(map.value(WholeFile).toByteArray());
    const QHash<QString, QString> before = ValuesIn(lines);
    QByteArray file; // up to the last line of our section that holds something
    QByteArray after;
    bool ours = false;
    bool found = false;
    for (Line line : lines) {
        if (line.bytes.startsWith('[')) {
            ours = line.bytes.trimmed() == "[Settings]";
            found = found || ours;
        }
        if (!line.key.isEmpty()) {
            // Only what was changed is written anew; the bytes of the rest may be no text at all.
            const QString value = map.value(Section + line.key).toString();
            if (value != before.value(line.key))
                line.bytes = Written(line.key, value);
        }
        after += line.bytes + line.lineBreak;
        if (ours && !line.bytes.trimmed().isEmpty()) {
            file += after;
            after.clear();
        }
    }
    if (!found) {
        file += after;
        after.clear();
        if (!file.isEmpty() && !file.endsWith('\n'))
            file += '\n';
        file += "[Settings]\n";
    }
    for (auto entry = map.begin(); entry != map.end(); ++entry) {
        if (!entry.key().startsWith(Section) || before.contains(entry.key().sliced(Section.size())))
            continue;
        if (!file.endsWith('\n'))
            file += '\n';
        file += Written(entry.key().sliced(Section.size()), entry.value().toString()) + '\n';
    }
    file += after;
    return device.write(file) == file.size();
}

QSettings::Format PlainSettingsFormat() {
    // A process has room for few formats: registered once.
    static const QSettings::Format format = QSettings::registerFormat(
        QStringLiteral("ini"), ReadPlainSettings, WritePlainSettings, Qt::CaseSensitive);
    return format;
}

} // namespace velmo
