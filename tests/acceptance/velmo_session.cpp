#include "velmo_session.h"

#include "platform/code_page.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <SQLiteCpp/SQLiteCpp.h>

namespace velmo {

namespace {

QString Below(const QString& folder, QString name) {
    return folder + '/' + name.replace('\\', '/');
}

QByteArray ReadFile(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw HarnessError("cannot read " + path);
    return file.readAll();
}

void WriteFile(const QString& path, const QByteArray& bytes) {
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        throw HarnessError("cannot write " + path);
}

QByteArray Lines(const QStringList& lines) {
    QByteArray bytes;
    for (const QString& line : lines)
        bytes += EncodeCodePage(line) + "\r\n";
    return bytes;
}

QList<QStringList> Query(const QString& path, const QString& sql) {
    QList<QStringList> rows;
    try {
        const SQLite::Database database(path.toStdString(), SQLite::OPEN_READONLY);
        SQLite::Statement statement(database, sql.toStdString());
        while (statement.executeStep()) {
            QStringList row;
            for (int col = 0; col < statement.getColumnCount(); ++col)
                row.append(QString::fromStdString(statement.getColumn(col).getString()));
            rows.append(row);
        }
    } catch (const SQLite::Exception& error) {
        throw HarnessError(path + ": " + sql + ": " + error.what());
    }
    return rows;
}

} // namespace

VelmoSession::VelmoSession() : temporary_(std::make_unique<QTemporaryDir>()) {
    if (!temporary_->isValid())
        throw HarnessError("no temporary folder: " + temporary_->errorString());
    folder_ = temporary_->path();
    home_ = folder_ + "/home";
    Prepare();
}

VelmoSession::VelmoSession(const QString& home, const QString& folder)
    : folder_(QDir(folder).absolutePath()), home_(QDir(home).absolutePath()) {
    Prepare();
}

void VelmoSession::Prepare() const {
    if (!QDir().mkpath(Home()) || !QDir().mkpath(Exchange()))
        throw HarnessError("cannot make the folders " + Home() + " and " + Exchange());
    Set("VlmHome", Home());
    Set("VlmTemp", Exchange());
    Set("VlmMode", "2");
    Set("VlmNxt", "0");
}

void VelmoSession::WriteHome(const QString& name, const QByteArray& bytes) const {
    WriteFile(Below(Home(), name), bytes);
}

void VelmoSession::WriteHomeLines(const QString& name, const QStringList& lines) const {
    WriteHome(name, Lines(lines));
}

void VelmoSession::WriteExchangeLines(const QString& name, const QStringList& lines) const {
    WriteFile(Below(Exchange(), name), Lines(lines));
}

QByteArray VelmoSession::ReadHome(const QString& name) const {
    return ReadFile(Below(Home(), name));
}

bool VelmoSession::ExistsInHome(const QString& name) const {
    return QFileInfo::exists(Below(Home(), name));
}

bool VelmoSession::ExistsInExchange(const QString& name) const {
    return QFileInfo::exists(Below(Exchange(), name));
}

QByteArray VelmoSession::ReadExchange(const QString& name) const {
    return ReadFile(Below(Exchange(), name));
}

std::optional<QStringList> VelmoSession::ReadExchangeLines(const QString& name) const {
    if (!ExistsInExchange(name))
        return {};
    const QByteArray bytes = ReadFile(Below(Exchange(), name));
    if (bytes.isEmpty())
        return QStringList();
    QStringList lines = CodePageDecoder().Decode(bytes).split("\r\n");
    if (!lines.takeLast().isEmpty() || lines.join(QString()).contains('\n') ||
        lines.join(QString()).contains('\r'))
        throw HarnessError(name + " has a line without CR LF");
    return lines;
}

QByteArray VelmoSession::SettingsFile() const {
    return QFileInfo::exists(SettingsPath()) ? ReadFile(SettingsPath()) : QByteArray();
}

void VelmoSession::WriteSettingsFile(const QByteArray& bytes) const {
    WriteFile(SettingsPath(), bytes);
}

std::optional<QString> VelmoSession::Setting(const QString& key) const {
    const QStringList lines = QString::fromUtf8(SettingsFile()).split('\n');
    bool inSection = false;
    for (QString line : lines) {
        if (line.endsWith('\r'))
            line.chop(1);
        if (line.startsWith('['))
            inSection = line == "[Settings]";
        else if (inSection && line.startsWith(key + '='))
            return line.mid(key.size() + 1);
    }
    return {};
}

void VelmoSession::Set(const QString& key, const QString& value) const {
    QStringList lines = QString::fromUtf8(SettingsFile()).split('\n', Qt::SkipEmptyParts);
    lines.removeIf([&](const QString& line) { return line.startsWith(key + '='); });
    if (!lines.contains("[Settings]"))
        lines.append("[Settings]");
    lines.insert(lines.indexOf("[Settings]") + 1, key + '=' + value);
    WriteSettingsFile((lines.join('\n') + '\n').toUtf8());
}

QList<QStringList> VelmoSession::QueryHome(const QString& database, const QString& sql) const {
    return Query(Below(Home(), database), sql);
}

QList<QStringList> VelmoSession::QueryExchange(const QString& database, const QString& sql) const {
    return Query(Below(Exchange(), database), sql);
}

void VelmoSession::ExecuteHome(const QString& database, const QString& sql) const {
    try {
        SQLite::Database file(Below(Home(), database).toStdString(),
                              SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
        file.exec(sql.toStdString());
    } catch (const SQLite::Exception& error) {
        throw HarnessError(database + ": " + sql + ": " + error.what());
    }
}

Launch VelmoSession::LaunchOf(const QString& program, const QString& pluginFolder) const {
    QProcessEnvironment environment;
    environment.insert("XDG_CONFIG_HOME", ConfigFolder());
    return {program, pluginFolder, folder_, environment};
}

} // namespace velmo
