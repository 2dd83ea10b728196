#pragma once

#include "platform/database.h"

#include <QStringView>

#include <utility>
#include <variant>
#include <vector>

namespace velmo {

// The most characters that a text field holds.
inline constexpr qsizetype LongestText = 255;

// The rows of one table that a statement "SELECT * FROM table [WHERE condition]" names, walked, searched and
// changed one at a time. Fields are named without regard to case, or by their ordinal, 0-based. Right after
// opening the first row is the current one. Without a current row, reading and changing throw 3021.
class RecordSet {
public:
    // statement: the whole statement, or just the name of a table.
    RecordSet(Database& database, const QString& statement);
    // The statement followed by a number.
    RecordSet(Database& database, const QString& statement, qint64 number);
    // Before, name and after put together. The name stands between single quotes and goes in as it is: a
    // quote in it breaks the statement (error 3075).
    RecordSet(Database& database, const QString& before, const QString& name, const QString& after);
    ~RecordSet();
    RecordSet(const RecordSet&) = delete;
    RecordSet& operator=(const RecordSet&) = delete;

    // True when there is no current row: the set is empty or was walked to its end.
    bool Eof() const { return !onRow_; }
    void MoveFirst();
    void MoveNext();

    // Makes the first row of the set that meets the criterion the current one, in the order they were added.
    void FindFirst(const QString& criterion);
    // The next row that meets the criterion of FindFirst.
    void FindNext();
    bool NoMatch() const { return !onRow_; }

    // Text of a field of the current row; an empty value gives an empty text.
    QString Text(int ordinal) const;
    QString Text(QStringView field) const { return Text(Ordinal(field)); }
    // Whole number of a field; no value gives 0. Throws 6 when it exceeds 16 bits, 13 when it is no number.
    std::int16_t Integer(QStringView field) const;

    // The first Set after AddNew or Edit starts from an empty or the current row; Update stores it.
    // Set throws 3163 when a text is longer than 255 characters, 3265 when the table has no such field.
    void AddNew();
    void Edit();
    void Set(int ordinal, QStringView text);
    void Set(QStringView field, QStringView text) { Set(Ordinal(field), text); }
    void SetNumber(QStringView field, qint64 number);
    void Update();
    // Deletes the current row.
    void Delete();

private:
    enum class Change { None, Add, Edit };

    using Value = std::variant<qint64, std::string>;

    void Take(const QString& statement);
    void Open(const QString& criterion);
    void Step();
    void RequireRow() const;
    qint64 RowId() const;
    int FieldCount() const { return int(rows_->columns.size()) - 1; }
    const QString& FieldName(int ordinal) const { return rows_->columns[ordinal + 1]; }
    int Ordinal(QStringView field) const;
    void RequireField(int ordinal) const;
    void Put(int ordinal, const Value& value);
    void Run(SQLite::Statement& statement);
    SQLite::Statement& InsertStatement();

    Database& database_;
    QString table_;
    QString condition_;
    // What stands for the "?" of the condition; without one there is none.
    std::optional<Value> argument_;
    // The statement that is walked: the whole set, or what FindFirst looks for. Column 0 is the row's
    // identity.
    std::shared_ptr<PreparedStatement> rows_;
    std::shared_ptr<PreparedStatement> insert_;
    bool onRow_ = false;
    Change change_ = Change::None;
    // The fields that an Edit changes, stored together by Update.
    std::vector<std::pair<int, Value>> edited_;
};

} // namespace velmo
