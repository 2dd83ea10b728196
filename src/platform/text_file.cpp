#include "platform/text_file.h"

#include "platform/files.h"
#include "platform/runtime_error.h"

#include <QLocale>

namespace velmo {

namespace {

constexpr qsizetype ChunkBytes = 65'536;

} // namespace

TextReader::TextReader(const QString& path, qsizetype longestLine)
    : path_(path), longestLine_(longestLine), file_(NativePath(path)) {
    if (path.isEmpty() || !OpenRegularFile(file_, QIODevice::ReadOnly | QIODevice::Unbuffered))
        ThrowCannotOpen(path);
}

qint64 TextReader::Position() const {
    return file_.pos() - (buffer_.size() - at_);
}

// Reads one more chunk behind what is not used yet; false at the end of the file.
bool TextReader::Fill() {
    buffer_.remove(0, at_);
    at_ = 0;
    const qsizetype kept = buffer_.size();
    buffer_.resize(kept + ChunkBytes);
    const qint64 count = file_.read(buffer_.data() + kept, ChunkBytes);
    buffer_.resize(kept + qMax<qsizetype>(0, qsizetype(count)));
    if (count < 0)
        throw RuntimeError(ErrorNumber::DeviceIo).InFile(path_).AtLine(lineNumber_ + 1);
    return count > 0;
}

bool TextReader::AtEnd() {
    return at_ == buffer_.size() && !Fill();
}

void TextReader::ThrowTooLong() const {
    throw RuntimeError(ErrorNumber::Overflow, QStringLiteral("1 行が長すぎます (%1 バイトまで)。")
                                                  .arg(QLocale(QLocale::Japanese).toString(longestLine_)))
        .InFile(path_)
        .AtLine(lineNumber_ + 1);
}

QString TextReader::ReadLine() {
    return decoder_.Decode(ReadBytes());
}

QByteArrayView TextReader::ReadBytes() {
    if (AtEnd())
        throw RuntimeError(ErrorNumber::InputPastEnd).InFile(path_).AtLine(lineNumber_ + 1);
    qsizetype length = 0;
    for (;;) {
        while (at_ + length < buffer_.size() && buffer_[at_ + length] != '\r' &&
               buffer_[at_ + length] != '\n')
            ++length;
        if (length > longestLine_)
            ThrowTooLong();
        const bool complete = at_ + length + 1 < buffer_.size() ||
                              (at_ + length < buffer_.size() && buffer_[at_ + length] == '\n');
        if (complete || !Fill())
            break;
    }
    const QByteArrayView line = QByteArrayView(buffer_).sliced(at_, length);
    at_ += length;
    if (at_ < buffer_.size()) {
        const bool pair = buffer_[at_] == '\r' && at_ + 1 < buffer_.size() && buffer_[at_ + 1] == '\n';
        at_ += pair ? 2 : 1;
    }
    ++lineNumber_;
    return line;
}

void TextWriter::WriteLine(QStringView line) {
    ++lineNumber_;
    try {
        bytes_ += EncodeCodePage(line);
    } catch (RuntimeError& error) {
        throw error.InFile(path_).AtLine(lineNumber_);
    }
    bytes_ += "\r\n";
}

void TextWriter::Commit() {
    ReplaceFile(path_, bytes_);
}

} // namespace velmo
