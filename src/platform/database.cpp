#include "platform/database.h"

#include "platform/files.h"
#include "platform/runtime_error.h"

#include <QCollator>
#include <QFileInfo>
#include <QRegularExpression>
#include <sqlite3.h>

#include <cstring>

namespace velmo {

namespace {

// How long another program may keep the database busy before that is an error.
constexpr int BusyMilliseconds = 3000;

constexpr const char* JapaneseCollation = "JAPANESE";

int CompareJapanese(void* collator, int leftBytes, const void* left, int rightBytes, const void* right) {
    if (leftBytes == rightBytes && std::memcmp(left, right, size_t(leftBytes)) == 0)
        return 0;
    return static_cast<QCollator*>(collator)->compare(
        QString::fromUtf8(static_cast<const char*>(left), leftBytes),
        QString::fromUtf8(static_cast<const char*>(right), rightBytes));
}

// Called by the engine only when a table uses a collation, so that other files never pay for it.
void ProvideCollation(void*, sqlite3* connection, int, const char* name) {
    if (std::strcmp(name, JapaneseCollation) != 0)
        return;
    auto collator = std::make_unique<QCollator>(QLocale(QLocale::Japanese, QLocale::Japan));
    collator->setCaseSensitivity(Qt::CaseInsensitive);
    sqlite3_create_collation_v2(connection, JapaneseCollation, SQLITE_UTF8, collator.release(),
                                CompareJapanese, [](void* owned) { delete static_cast<QCollator*>(owned); });
}

QString EngineStatement(QString statement) {
    static const QRegularExpression counter(QStringLiteral("\\bCOUNTER\\b"));
    return statement.replace(counter, QStringLiteral("INTEGER PRIMARY KEY AUTOINCREMENT"));
}

ErrorNumber NumberOf(const SQLite::Exception& failure) {
    switch (failure.getErrorCode() & 0xFF) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return ErrorNumber::DatabaseLocked;
    case SQLITE_NOTADB:
    case SQLITE_CORRUPT:
        return ErrorNumber::NotADatabase;
    case SQLITE_READONLY:
        return ErrorNumber::DatabaseReadOnly;
    case SQLITE_FULL:
        return ErrorNumber::DiskFull;
    case SQLITE_IOERR:
        return ErrorNumber::DeviceIo;
    case SQLITE_CANTOPEN:
    case SQLITE_PERM:
    case SQLITE_AUTH:
        return ErrorNumber::PathFileAccess;
    case SQLITE_ERROR:
        break;
    default:
        return ErrorNumber::DatabaseFailed;
    }
    const QByteArray message(failure.getErrorStr());
    return message.contains("no such table") || message.contains("no such column")
               ? ErrorNumber::TableNotFound
               : ErrorNumber::QuerySyntax;
}

std::unique_ptr<SQLite::Database> Connect(const QString& path, int flags) {
    try {
        return std::make_unique<SQLite::Database>(NativePath(path).toUtf8().constData(), flags,
                                                  BusyMilliseconds);
    } catch (const SQLite::Exception&) {
        const QFileInfo info(NativePath(path));
        throw RuntimeError(info.dir().exists() ? ErrorNumber::PathFileAccess : ErrorNumber::PathNotFound)
            .InFile(path);
    }
}

} // namespace

Database::Database(const QString& path, int flags) : path_(path), connection_(Connect(path, flags)) {
    sqlite3_collation_needed(connection_->getHandle(), nullptr, ProvideCollation);
    // The engine looks at the file only now: what is no database is found here and not in the middle of an
    // action.
    Execute(QStringLiteral("PRAGMA schema_version"));
}

Database::Database(const QString& path, Access access)
    : Database(FileExists(path) ? path : (ThrowCannotOpen(path), QString()),
               access == Access::Read ? SQLite::OPEN_READONLY : SQLite::OPEN_READWRITE) {}

Database Database::Create(const QString& path) {
    return Database(path, SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
}

void Database::Execute(const QString& statement) {
    try {
        connection_->exec(EngineStatement(statement).toUtf8().constData());
    } catch (const SQLite::Exception& failure) {
        Throw(failure);
    }
}

void Database::MakeScratch() {
    Execute(QStringLiteral("PRAGMA journal_mode=MEMORY"));
    Execute(QStringLiteral("PRAGMA synchronous=OFF"));
}

std::shared_ptr<SQLite::Statement> Database::Prepare(const QString& statement) {
    std::shared_ptr<SQLite::Statement>& idle = prepared_[statement];
    try {
        if (idle && idle.use_count() == 1) {
            idle->reset();
            idle->clearBindings();
        } else {
            idle = std::make_shared<SQLite::Statement>(*connection_, statement.toUtf8().constData());
        }
    } catch (const SQLite::Exception& failure) {
        prepared_.remove(statement);
        Throw(failure);
    }
    return idle;
}

void Database::Throw(const SQLite::Exception& failure) const {
    const ErrorNumber number = NumberOf(failure);
    const bool explains = number == ErrorNumber::QuerySyntax || number == ErrorNumber::TableNotFound ||
                          number == ErrorNumber::DatabaseFailed;
    throw RuntimeError(number, explains ? QString::fromUtf8(failure.getErrorStr()) : QString()).InFile(path_);
}

Transaction::Transaction(Database& database) : database_(database) {
    try {
        transaction_ = std::make_unique<SQLite::Transaction>(*database.connection_,
                                                             SQLite::TransactionBehavior::IMMEDIATE);
    } catch (const SQLite::Exception& failure) {
        database.Throw(failure);
    }
}

void Transaction::Commit() {
    try {
        transaction_->commit();
    } catch (const SQLite::Exception& failure) {
        database_.Throw(failure);
    }
}

} // namespace velmo
