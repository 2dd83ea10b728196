#pragma once

#include <QEvent>
#include <QHash>
#include <QStringList>
#include <SQLiteCpp/SQLiteCpp.h>

#include <cstdint>
#include <memory>
#include <optional>

namespace velmo {

// A compiled statement and the names of the columns it returns.
struct PreparedStatement {
    SQLite::Statement statement;
    QStringList columns;
};

// A relational store in one file. Every failure is a RuntimeError that names the file.
//
// Statements may use the column types COUNTER (numbers rows 1, 2, 3 ... and never reuses one) and TEXT (at
// most 255 characters).
class Database {
public:
    enum class Access { Read, Write };
    // How texts compare. Japanese: without regard to case, kana type and width; the file remembers it, and
    // every TEXT column made in it later compares so.
    enum class Collation { Bytes, Japanese };

    // Opens an existing file (stored path). Throws 53, 75, 76, 3260 (locked) or 3343 (no database), and for
    // writing 3027 when the file can only be read.
    Database(const QString& path, Access access);

    // Makes a new, empty file; there must be none of that name.
    static Database Create(const QString& path, Collation collation = Collation::Bytes);

    const QString& Path() const { return path_; }

    // Runs a statement that returns no rows.
    void Execute(const QString& statement);

    // The scratch data of one run need not survive a crash: no journal on disk, no sync.
    void MakeScratch();

    // A compiled statement, taken from those compiled before when one of them is idle.
    std::shared_ptr<PreparedStatement> Prepare(const QString& statement);

    // The number that the file bears for its maker to know it again; 0 in a file that got none.
    std::int32_t Token() const;
    void SetToken(std::int32_t token);

    // The identity that the last added row received.
    qint64 LastAddedId() const { return connection_->getLastInsertRowid(); }

    // Turns a failure of the engine into the program's own error.
    [[noreturn]] void Throw(const SQLite::Exception& failure) const;

private:
    friend class Transaction;
    Database(const QString& path, int flags);
    QString EngineStatement(QString statement) const;

    QString path_;
    std::unique_ptr<SQLite::Database> connection_;
    QHash<QString, std::shared_ptr<PreparedStatement>> prepared_;
};

// Sent to the application when another program keeps a database busy for longer than one likes to wait
// without knowing why, once for each such wait.
constexpr QEvent::Type LongWaitEvent = QEvent::Type(QEvent::User + 1);

// Everything until Commit counts together or not at all.
class Transaction {
public:
    explicit Transaction(Database& database);
    void Commit();

private:
    Database& database_;
    std::unique_ptr<SQLite::Transaction> transaction_;
};

} // namespace velmo
