#include "session_files.h"

#include "acceptance/driver_link.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <SQLiteCpp/SQLiteCpp.h>

namespace velmo {

namespace {

const QStringList journals = {"-journal", "-wal", "-shm"};

bool IsSettings(const QString& name) {
    return name.endsWith(".ini");
}

bool IsDatabase(const QString& name) {
    return name.endsWith(".mdb");
}

// Whatever a run leaves of it, the next one begins it anew.
bool IsScratch(const QString& name) {
    return QFileInfo(name).fileName().startsWith("VELMONOW.mdb");
}

bool IsJournal(const QString& name) {
    return std::any_of(journals.begin(), journals.end(),
                       [&name](const QString& ending) { return name.endsWith(".mdb" + ending); });
}

void Write(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        throw HarnessError("cannot write " + path);
}

QByteArray Read(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw HarnessError("cannot read " + path);
    return file.readAll();
}

QStringList RowsOf(const SQLite::Database& database, const std::string& table) {
    QStringList rows;
    SQLite::Statement statement(database, "SELECT * FROM " + table + " ORDER BY rowid");
    while (statement.executeStep()) {
        QStringList row;
        for (int col = 0; col < statement.getColumnCount(); ++col)
            row << QString::fromStdString(statement.getColumn(col).getString());
        rows << row.join('|');
    }
    return rows;
}

// All that a database says of itself and holds.
QString RowsOf(const QString& path) {
    try {
        const SQLite::Database database(path.toStdString(), SQLite::OPEN_READWRITE);
        QStringList rows;
        SQLite::Statement check(database, "PRAGMA integrity_check");
        while (check.executeStep())
            rows << QString::fromStdString(check.getColumn(0).getString());
        std::vector<std::string> tables{"sqlite_master"};
        SQLite::Statement names(database, "SELECT name FROM sqlite_master WHERE type='table' ORDER BY name");
        while (names.executeStep())
            tables.push_back(names.getColumn(0).getString());
        for (const std::string& table : tables)
            rows += RowsOf(database, table);
        return rows.join('\n');
    } catch (const SQLite::Exception& error) {
        return QString("unreadable: ") + error.what();
    }
}

// The lines of the settings: the program's own by their keys, the others by their places among these.
QMap<QString, QByteArray> SettingsIn(const QByteArray& file) {
    QMap<QString, QByteArray> settings;
    bool ours = false;
    for (const QByteArray& line : file.split('\n')) {
        const qsizetype equals = line.indexOf('=');
        if (line.startsWith('['))
            ours = line == "[Settings]";
        if (ours && equals > 0)
            settings.insert(QString::fromUtf8(line.first(equals)), line);
        else
            settings["other lines"] += line + '\n';
    }
    return settings;
}

QStringList SettingsComplaints(const QString& name, const QByteArray& now, const QByteArray& before,
                               const QByteArray& after) {
    const QMap<QString, QByteArray> nows = SettingsIn(now);
    const QMap<QString, QByteArray> befores = SettingsIn(before);
    const QMap<QString, QByteArray> afters = SettingsIn(after);
    // Who leaves the program in another way than the task does saves other values too.
    QMap<QString, QByteArray> all = befores;
    all.insert(afters);
    QStringList complaints;
    for (const QString& key : all.keys()) {
        const QByteArray value = nows.value(key);
        if (value != befores.value(key) && value != afters.value(key))
            complaints << name + ": " + key + " is neither old nor new: " + QString::fromUtf8(value);
    }
    return complaints;
}

} // namespace

SessionFiles::SessionFiles(const QStringList& folders) : folders_(folders) {
    for (const QString& folder : folders) {
        QDirIterator files(folder, QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString path = files.next();
            files_.insert(path, Read(path));
        }
    }
}

void SessionFiles::PutBack(const SessionFiles& others) const {
    for (const QString& name : others.Names()) {
        if (!files_.contains(name))
            QFile::remove(name);
    }
    for (auto file = files_.begin(); file != files_.end(); ++file) {
        QDir().mkpath(QFileInfo(file.key()).path());
        Write(file.key(), file.value());
    }
}

void SessionFiles::PutBackAlone() const {
    PutBack(SessionFiles(folders_));
}

QStringList SessionFiles::NamesBeside(const SessionFiles& others) const {
    QStringList names = Names();
    names.removeIf([&others](const QString& name) { return others.files_.contains(name); });
    return names;
}

QStringList SessionFiles::Journals() const {
    QStringList found;
    for (const QString& name : Names()) {
        if (IsJournal(name) && !IsScratch(name))
            found << name;
    }
    return found;
}

// What counts of a file, as text that can be compared.
QString SessionFiles::ContentOf(const QString& name) const {
    if (!files_.contains(name))
        return "nothing";
    if (!IsDatabase(name))
        return QString::fromLatin1(files_[name]);
    // The journal of a killed run belongs to it. Only the program itself is to play it into the real one.
    const QTemporaryDir folder;
    const QString copy = folder.filePath("copy.mdb");
    Write(copy, files_[name]);
    for (const QString& ending : journals) {
        if (files_.contains(name + ending))
            Write(copy + ending, files_[name + ending]);
    }
    return RowsOf(copy);
}

QStringList SessionFiles::Complaints(const SessionFiles& before, const SessionFiles& after) const {
    QStringList names = before.Names() + after.Names();
    names.removeDuplicates();
    QStringList complaints;
    for (const QString& name : names) {
        if (IsScratch(name) || IsJournal(name))
            continue;
        if (IsSettings(name)) {
            complaints += SettingsComplaints(name, files_.value(name), before.files_.value(name),
                                             after.files_.value(name));
            continue;
        }
        if (files_.contains(name) && files_[name] == before.files_.value(name))
            continue;
        const QString content = ContentOf(name);
        if (content != before.ContentOf(name) && content != after.ContentOf(name))
            complaints << name + " is neither old nor new:\n" + content;
    }
    return complaints;
}

} // namespace velmo
