#pragma once

#include <QString>

#include <exception>
#include <utility>

namespace velmo {

// Classic run-time error numbers that the program raises.
enum class ErrorNumber {
    InvalidArgument = 5,
    Overflow = 6,
    OutOfMemory = 7,
    SubscriptOutOfRange = 9,
    TypeMismatch = 13,
    Internal = 51,
    FileNotFound = 53,
    DeviceIo = 57,
    DiskFull = 61,
    InputPastEnd = 62,
    PermissionDenied = 70,
    PathFileAccess = 75,
    PathNotFound = 76,
    NoCurrentRecord = 3021,
    DatabaseReadOnly = 3027,
    QuerySyntax = 3075,
    TableNotFound = 3078,
    TextTooLong = 3163,
    DatabaseLocked = 3260,
    ItemNotInCollection = 3265,
    NotADatabase = 3343,
    DatabaseFailed = 3197,
    ElementNotFound = 35601,
    KeyNotUnique = 35602,
};

// A failure that nothing handles: a number and what caused it. One place turns it into Japanese (ErrorText).
class RuntimeError : public std::exception {
public:
    // detail: Japanese text that says more than the number does; may be empty.
    explicit RuntimeError(ErrorNumber number, QString detail = {})
        : number_(number), detail_(std::move(detail)) {}

    RuntimeError& InFile(const QString& path);
    RuntimeError& AtLine(qint64 line);
    RuntimeError& InField(const QString& field);
    // The program ends with exit status 1 after the error was shown.
    RuntimeError& EndsProgram();

    ErrorNumber Number() const { return number_; }
    const QString& Detail() const { return detail_; }
    const QString& File() const { return file_; }
    // 1-based; 0 when no line is known.
    qint64 Line() const { return line_; }
    const QString& Field() const { return field_; }
    bool IsFatal() const { return fatal_; }

    const char* what() const noexcept override { return "velmo::RuntimeError"; }

private:
    ErrorNumber number_;
    QString detail_;
    QString file_;
    qint64 line_ = 0;
    QString field_;
    bool fatal_ = false;
};

// Runs an action that the program does not survive the failure of.
template <typename Action>
void EndProgramOnError(Action&& action) {
    try {
        std::forward<Action>(action)();
    } catch (RuntimeError& error) {
        throw error.EndsProgram();
    }
}

// The Japanese text of an error: number, what it means, then file, line and field as far as they are known.
QString ErrorText(const RuntimeError& error);

} // namespace velmo
