#pragma once

#include "driver_link.h"

#include <QStringList>
#include <QTemporaryDir>

#include <memory>
#include <optional>

namespace velmo {

// What the CAD side keeps around the program: a library home, an exchange folder and the settings store.
// Several runs can follow each other in one session.
class VelmoSession {
public:
    // An empty library home in a folder that is gone when the test ends; the settings hold VlmHome, VlmTemp,
    // VlmMode=2 and VlmNxt=0.
    VelmoSession();
    // A library home that is there already, and a folder for the rest, made when missing; both stay. The same
    // settings.
    VelmoSession(const QString& home, const QString& folder);

    // As the program spells them, with the backslash at the end.
    QString HomeDir() const { return Home() + '\\'; }
    QString TempDir() const { return Exchange() + '\\'; }
    // As the operating system spells them.
    const QString& Home() const { return home_; }
    QString Exchange() const { return folder_ + "/exchange"; }
    // Where programs keep their settings.
    QString ConfigFolder() const { return folder_ + "/config"; }
    QString SettingsPath() const { return ConfigFolder() + "/Kestova2019/Velmo2.ini"; }

    // Writes a file below the home folder (name with backslashes); lines get code page 932 and CR LF.
    void WriteHome(const QString& name, const QByteArray& bytes) const;
    void WriteHomeLines(const QString& name, const QStringList& lines) const;
    void WriteExchangeLines(const QString& name, const QStringList& lines) const;
    QByteArray ReadHome(const QString& name) const;
    bool ExistsInHome(const QString& name) const;
    bool ExistsInExchange(const QString& name) const;
    // The lines of an answer file; nothing when there is no such file. Throws when a line does not end in CR
    // LF.
    std::optional<QStringList> ReadExchangeLines(const QString& name) const;

    QByteArray ReadExchange(const QString& name) const;

    // The value of a key as the file holds it; nothing when the key is missing.
    std::optional<QString> Setting(const QString& key) const;
    void Set(const QString& key, const QString& value) const;
    QByteArray SettingsFile() const;
    void WriteSettingsFile(const QByteArray& bytes) const;

    // All rows of a query on a database below the home folder, values as text.
    QList<QStringList> QueryHome(const QString& database, const QString& sql) const;
    // The same on a database of the exchange folder.
    QList<QStringList> QueryExchange(const QString& database, const QString& sql) const;

    // Runs statements on a database below the home folder, making it when it is missing: what any program can
    // do.
    void ExecuteHome(const QString& database, const QString& sql) const;

    // A program with this session's settings store and folders.
    Launch LaunchOf(const QString& program, const QString& pluginFolder) const;

private:
    void Prepare() const;

    std::unique_ptr<QTemporaryDir> temporary_;
    QString folder_;
    QString home_;
};

} // namespace velmo
