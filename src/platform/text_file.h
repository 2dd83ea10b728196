#pragma once

#include "platform/code_page.h"
#include "platform/save_file.h"

#include <QFile>

namespace velmo {

// The longest line that is read, in bytes without its line break.
inline constexpr qsizetype LongestLine = 1'048'576;

// Reads a text file in code page 932 line by line. A line ends at CR LF, LF or CR, or at the end of the file.
class TextReader {
public:
    // path is a stored path. Throws 53, 75 or 76 when the file cannot be opened or is no regular file.
    explicit TextReader(const QString& path, qsizetype longestLine = LongestLine);

    bool AtEnd();
    // The next line without its line break. Throws 62 at the end of the file, 57 when reading fails, 6 when
    // the line is longer than the longest.
    QString ReadLine();
    // The bytes of the next line instead, good until the reader is used again.
    QByteArrayView ReadBytes();
    // Number of lines read so far, so the 1-based number of the line that was returned last.
    qint64 LineNumber() const { return lineNumber_; }
    const QString& Path() const { return path_; }
    // Bytes read so far and in all, for progress.
    qint64 Position() const;
    qint64 Size() const { return file_.size(); }

private:
    bool Fill();
    [[noreturn]] void ThrowTooLong() const;

    QString path_;
    qsizetype longestLine_;
    QFile file_;
    QByteArray buffer_;
    qsizetype at_ = 0;
    CodePageDecoder decoder_;
    qint64 lineNumber_ = 0;
};

// Collects lines and puts them in the place of a text file in code page 932 with CR LF.
class TextWriter {
public:
    // path is a stored path; nothing is written before Commit.
    explicit TextWriter(QString path) : path_(std::move(path)) {}

    // Throws 5 when code page 932 does not have a character of the line.
    void WriteLine(QStringView line);
    // Replaces the file in one step; throws as ReplaceFile does.
    void Commit();
    // What Commit writes, for files that are replaced together.
    FileReplacement Replacement() const { return {path_, bytes_}; }

private:
    QString path_;
    QByteArray bytes_;
    qint64 lineNumber_ = 0;
};

} // namespace velmo
