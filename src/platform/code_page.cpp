#include "platform/code_page.h"

#include "platform/runtime_error.h"

#include <QStringEncoder>

#include <algorithm>

namespace velmo {

namespace {

constexpr const char* CodePageName = "windows-31j";

bool IsAscii(QByteArrayView bytes) {
    return std::all_of(bytes.begin(), bytes.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

bool IsAscii(QStringView text) {
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x80; });
}

bool IsLeadByte(unsigned char c) {
    return (c >= 0x81 && c <= 0x9F) || (c >= 0xE0 && c <= 0xFC);
}

std::optional<QByteArray> TryEncode(QStringView text) {
    QStringEncoder encoder(CodePageName);
    QByteArray bytes = encoder(text);
    if (encoder.hasError())
        return std::nullopt;
    return bytes;
}

} // namespace

CodePageDecoder::CodePageDecoder() : decoder_(CodePageName) {}

QString CodePageDecoder::Decode(QByteArrayView bytes) {
    if (IsAscii(bytes))
        return QString::fromLatin1(bytes);
    QString text = decoder_(bytes);
    return decoder_.hasError() ? DecodeOneByOne(bytes) : text;
}

// The library beneath marks what it cannot read in more than one way; here every such byte becomes U+FFFD.
QString CodePageDecoder::DecodeOneByOne(QByteArrayView bytes) {
    // The error mark of a decoder is never taken back, so each failure needs a new one.
    decoder_ = QStringDecoder(CodePageName);
    QString text;
    qsizetype at = 0;
    while (at < bytes.size()) {
        const bool pair = IsLeadByte(static_cast<unsigned char>(bytes[at])) && at + 1 < bytes.size();
        for (qsizetype length = pair ? 2 : 1; length > 0; --length) {
            const QString one = decoder_(bytes.sliced(at, length));
            const bool failed = decoder_.hasError() || one.isEmpty();
            if (failed)
                decoder_ = QStringDecoder(CodePageName);
            if (failed && length == 2)
                continue;
            text += failed ? QString(QChar::ReplacementCharacter) : one;
            at += length;
            break;
        }
    }
    return text;
}

QByteArray EncodeCodePage(QStringView text) {
    if (IsAscii(text))
        return text.toLatin1();
    if (std::optional<QByteArray> bytes = TryEncode(text))
        return *bytes;
    throw RuntimeError(ErrorNumber::InvalidArgument,
                       QStringLiteral("文字「%1」はコードページ 932 にありません。")
                           .arg(FirstForeignCharacter(text).value_or(QString())));
}

std::optional<QString> FirstForeignCharacter(QStringView text) {
    if (IsAscii(text) || TryEncode(text))
        return std::nullopt;
    for (qsizetype at = 0; at < text.size();) {
        const bool pair = text[at].isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate();
        const QStringView one = text.sliced(at, pair ? 2 : 1);
        if (pair || !TryEncode(one))
            return one.toString();
        at += one.size();
    }
    return std::nullopt;
}

} // namespace velmo
