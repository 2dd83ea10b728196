#include "platform/database.h"

#include "platform/files.h"
#include "platform/runtime_error.h"

#include <QCollator>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <sqlite3.h>

#include <cstring>

namespace velmo {

namespace {

// How long another program may keep the database busy before that is an error, after how long the wait is
// told, and how long until the next look. Milliseconds.
constexpr int Patience = 3000;
constexpr int LongWait = 500;
constexpr int Pause = 20;

constexpr const char* JapaneseCollation = "JAPANESE";

// The language of a file whose texts compare as Japanese, kept in the field that the engine leaves to the
// program.
constexpr int JapaneseLanguageId = 0x0411;

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

// The engine asks this whether it shall try once more.
int WaitForOthers(void*, int pauses) {
    if (pauses >= Patience / Pause)
        return 0;
    auto* const application = QCoreApplication::instance();
    if (pauses == LongWait / Pause && application) {
        QEvent wait(LongWaitEvent);
        QCoreApplication::sendEvent(application, &wait);
    }
    sqlite3_sleep(Pause);
    return 1;
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
    const QByteArray message(failure.what());
    return message.contains("no such table") || message.contains("no such column")
               ? ErrorNumber::TableNotFound
               : ErrorNumber::QuerySyntax;
}

std::unique_ptr<SQLite::Database> Connect(const QString& path, int flags) {
    try {
        auto connection = std::make_unique<SQLite::Database>(NativePath(path).toUtf8().constData(), flags);
        sqlite3_busy_handler(connection->getHandle(), WaitForOthers, nullptr);
        return connection;
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
    : Database(FileExists(path) ? path : (ThrowCannotOpen(path), QString()), SQLite::OPEN_READWRITE) {
    // Opened for writing all the same: only so can the engine take back what a program that was killed left
    // half done.
    if (access == Access::Read)
        Execute(QStringLiteral("PRAGMA query_only=ON"));
    else if (sqlite3_db_readonly(connection_->getHandle(), "main") != 0)
        throw RuntimeError(ErrorNumber::DatabaseReadOnly).InFile(path_);
}

Database Database::Create(const QString& path, Collation collation) {
    Database database(path, SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
    if (collation == Collation::Japanese)
        database.Execute(QStringLiteral("PRAGMA user_version=%1").arg(JapaneseLanguageId));
    return database;
}

// The column types of the program's statements in the engine's own words.
QString Database::EngineStatement(QString statement) const {
    static const QRegularExpression counter(QStringLiteral("\\bCOUNTER\\b"));
    static const QRegularExpression text(QStringLiteral("\\bTEXT\\b"));
    if (!statement.startsWith(QStringLiteral("CREATE TABLE")) &&
        !statement.startsWith(QStringLiteral("ALTER TABLE")))
        return statement;
    statement.replace(counter, QStringLiteral("INTEGER PRIMARY KEY AUTOINCREMENT"));
    if (connection_->execAndGet("PRAGMA user_version").getInt() == JapaneseLanguageId)
        statement.replace(text, QStringLiteral("TEXT COLLATE ") + QLatin1String(JapaneseCollation));
    return statement;
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

std::int32_t Database::Token() const {
    try {
        return connection_->execAndGet("PRAGMA application_id").getInt();
    } catch (const SQLite::Exception& failure) {
        Throw(failure);
    }
}

void Database::SetToken(std::int32_t token) {
    Execute(QStringLiteral("PRAGMA application_id=%1").arg(token));
}

std::shared_ptr<PreparedStatement> Database::Prepare(const QString& statement) {
    const auto known = prepared_.constFind(statement);
    try {
        if (known != prepared_.constEnd() && known->use_count() == 1) {
            // What its last run failed with does not concern the next one.
            (*known)->statement.tryReset();
            (*known)->statement.clearBindings();
            return *known;
        }
        auto compiled = std::make_shared<PreparedStatement>(
            PreparedStatement{SQLite::Statement(*connection_, statement.toUtf8().constData()), {}});
        for (int i = 0; i < compiled->statement.getColumnCount(); ++i)
            compiled->columns << QString::fromUtf8(compiled->statement.getColumnName(i));
        prepared_.insert(statement, compiled);
        return compiled;
    } catch (const SQLite::Exception& failure) {
        Throw(failure);
    }
}

void Database::Throw(const SQLite::Exception& failure) const {
    const ErrorNumber number = NumberOf(failure);
    const bool explains = number == ErrorNumber::QuerySyntax || number == ErrorNumber::TableNotFound ||
                          number == ErrorNumber::DatabaseFailed;
    throw RuntimeError(number, explains ? QString::fromUtf8(failure.what()) : QString()).InFile(path_);
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
