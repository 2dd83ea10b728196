#include "platform/record_set.h"

#include "platform/numbers.h"
#include "platform/runtime_error.h"

#include <limits>

namespace velmo {

namespace {

void Bind(SQLite::Statement& statement, int index, const std::variant<qint64, std::string>& value) {
    if (const auto* number = std::get_if<qint64>(&value))
        statement.bind(index, int64_t(*number));
    else
        statement.bind(index, std::get<std::string>(value));
}

} // namespace

RecordSet::RecordSet(Database& database, const QString& statement) : database_(database) {
    Take(statement);
    MoveFirst();
}

RecordSet::RecordSet(Database& database, const QString& statement, qint64 number)
    : database_(database), argument_(number) {
    Take(statement + u'?');
    MoveFirst();
}

RecordSet::RecordSet(Database& database, const QString& before, const QString& name, const QString& after)
    : database_(database) {
    if (name.contains(u'\'')) {
        Take(before + name + after);
    } else {
        // Without a quote in it the name means the same as an argument, and the statement is compiled only
        // once.
        argument_ = name.toStdString();
        Take(before.chopped(1) + u'?' + after.sliced(1));
    }
    MoveFirst();
}

RecordSet::~RecordSet() {
    if (rows_)
        rows_->statement.tryReset();
}

// Takes the statement apart into table and condition.
void RecordSet::Take(const QString& statement) {
    static const QString select = QStringLiteral("SELECT * FROM ");
    static const QString where = QStringLiteral("WHERE ");
    QStringView rest = statement;
    if (rest.startsWith(select, Qt::CaseInsensitive))
        rest = rest.sliced(select.size());
    if (rest.endsWith(u';'))
        rest.chop(1);
    const qsizetype blank = rest.indexOf(u' ');
    table_ = (blank < 0 ? rest : rest.first(blank)).toString();
    if (blank < 0)
        return;
    rest = rest.sliced(blank).trimmed();
    if (!rest.startsWith(where, Qt::CaseInsensitive))
        throw RuntimeError(ErrorNumber::QuerySyntax, statement).InFile(database_.Path());
    condition_ = rest.sliced(where.size()).toString();
}

void RecordSet::Open(const QString& criterion) {
    QString where = condition_;
    if (!criterion.isEmpty())
        where = where.isEmpty() ? criterion : QStringLiteral("(%1) AND (%2)").arg(where, criterion);
    QString statement = QStringLiteral("SELECT rowid,* FROM ") + table_;
    if (!where.isEmpty())
        statement += QStringLiteral(" WHERE ") + where;
    if (rows_)
        rows_->statement.tryReset();
    rows_.reset();
    rows_ = database_.Prepare(statement);
    if (argument_)
        Bind(rows_->statement, 1, *argument_);
    Step();
}

void RecordSet::Step() {
    try {
        onRow_ = rows_->statement.executeStep();
    } catch (const SQLite::Exception& failure) {
        onRow_ = false;
        database_.Throw(failure);
    }
}

void RecordSet::MoveFirst() {
    Open({});
}

void RecordSet::MoveNext() {
    RequireRow();
    Step();
}

void RecordSet::FindFirst(const QString& criterion) {
    Open(criterion);
}

void RecordSet::FindNext() {
    if (onRow_)
        Step();
}

void RecordSet::RequireRow() const {
    if (!onRow_)
        throw RuntimeError(ErrorNumber::NoCurrentRecord).InFile(database_.Path());
}

qint64 RecordSet::RowId() const {
    RequireRow();
    return rows_->statement.getColumn(0).getInt64();
}

int RecordSet::Ordinal(QStringView field) const {
    for (int i = 0; i < FieldCount(); ++i) {
        if (field.compare(FieldName(i), Qt::CaseInsensitive) == 0)
            return i;
    }
    throw RuntimeError(ErrorNumber::ItemNotInCollection).InFile(database_.Path()).InField(field.toString());
}

void RecordSet::RequireField(int ordinal) const {
    if (ordinal < 0 || ordinal >= FieldCount())
        throw RuntimeError(ErrorNumber::ItemNotInCollection)
            .InFile(database_.Path())
            .InField(table_ + u'.' + QString::number(ordinal));
}

QString RecordSet::Text(int ordinal) const {
    RequireRow();
    RequireField(ordinal);
    const SQLite::Column column = rows_->statement.getColumn(ordinal + 1);
    return QString::fromUtf8(column.getText(), column.getBytes());
}

std::int16_t RecordSet::Integer(QStringView field) const {
    RequireRow();
    const int ordinal = Ordinal(field);
    const SQLite::Column column = rows_->statement.getColumn(ordinal + 1);
    if (column.isNull())
        return 0;
    try {
        using Limits = std::numeric_limits<std::int16_t>;
        if (column.isInteger() && column.getInt64() >= Limits::min() && column.getInt64() <= Limits::max())
            return std::int16_t(column.getInt64());
        return ToInteger(Text(ordinal));
    } catch (RuntimeError& error) {
        throw error.InFile(database_.Path()).InField(table_ + u'.' + field.toString());
    }
}

SQLite::Statement& RecordSet::InsertStatement() {
    if (!insert_) {
        const QStringList fields = rows_->columns.sliced(1);
        const QStringList marks(fields.size(), QStringLiteral("?"));
        insert_ = database_.Prepare(QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                                        .arg(table_, fields.join(u','), marks.join(u',')));
    }
    return insert_->statement;
}

void RecordSet::AddNew() {
    InsertStatement().clearBindings();
    change_ = Change::Add;
}

void RecordSet::Edit() {
    RequireRow();
    edited_.clear();
    change_ = Change::Edit;
}

void RecordSet::Put(int ordinal, const Value& value) {
    RequireField(ordinal);
    if (change_ == Change::Add)
        Bind(insert_->statement, ordinal + 1, value);
    else if (change_ == Change::Edit)
        edited_.emplace_back(ordinal, value);
    else
        throw RuntimeError(ErrorNumber::NoCurrentRecord).InFile(database_.Path());
}

void RecordSet::Set(int ordinal, QStringView text) {
    RequireField(ordinal);
    if (text.size() > LongestText)
        throw RuntimeError(ErrorNumber::TextTooLong)
            .InFile(database_.Path())
            .InField(table_ + u'.' + FieldName(ordinal));
    const QByteArray bytes = text.toUtf8();
    Put(ordinal, std::string(bytes.constData(), size_t(bytes.size())));
}

void RecordSet::SetNumber(QStringView field, qint64 number) {
    Put(Ordinal(field), number);
}

void RecordSet::Run(SQLite::Statement& statement) {
    try {
        statement.exec();
        statement.reset();
    } catch (const SQLite::Exception& failure) {
        statement.tryReset();
        database_.Throw(failure);
    }
}

void RecordSet::Update() {
    const Change change = std::exchange(change_, Change::None);
    if (change == Change::Add) {
        Run(insert_->statement);
        return;
    }
    if (change == Change::None)
        throw RuntimeError(ErrorNumber::NoCurrentRecord).InFile(database_.Path());
    if (edited_.empty())
        return;
    QStringList assignments;
    for (const auto& [ordinal, value] : edited_)
        assignments << FieldName(ordinal) + QStringLiteral("=?");
    const std::shared_ptr<PreparedStatement> update = database_.Prepare(
        QStringLiteral("UPDATE %1 SET %2 WHERE rowid=?").arg(table_, assignments.join(u',')));
    int index = 1;
    for (const auto& [ordinal, value] : edited_)
        Bind(update->statement, index++, value);
    update->statement.bind(index, int64_t(RowId()));
    Run(update->statement);
}

void RecordSet::Delete() {
    const std::shared_ptr<PreparedStatement> prepared =
        database_.Prepare(QStringLiteral("DELETE FROM %1 WHERE rowid=?").arg(table_));
    prepared->statement.bind(1, int64_t(RowId()));
    Run(prepared->statement);
}

} // namespace velmo
