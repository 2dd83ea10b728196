#include "platform/code_page.h"

#include "platform/runtime_error.h"

#include <algorithm>

namespace velmo {

namespace {

constexpr const char* CodePageName = "windows-31j";

bool IsAscii(QByteArrayView bytes) {
    return std::all_of(bytes.begin(), bytes.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

// Looks at every unit, which is faster than to stop at the first foreign one.
bool IsAscii(QStringView text) {
    char16_t all = 0;
    for (const QChar c : text)
        all |= c.unicode();
    return all < 0x80;
}

// What the converter beneath gives, without calling it an error, for a byte that means nothing.
constexpr QChar Substitute = u'\x1A';

// The control characters whose codes the converter beneath exchanges in a text that is not all ASCII. None of
// them is the second half of a character.
bool IsExchanged(char16_t code) {
    return code == 0x1A || code == 0x1C || code == 0x7F;
}

bool HasExchanged(QByteArrayView bytes) {
    return std::any_of(bytes.begin(), bytes.end(),
                       [](char c) { return IsExchanged(static_cast<unsigned char>(c)); });
}

bool IsLeadByte(char byte) {
    const auto c = static_cast<unsigned char>(byte);
    return (c >= 0x81 && c <= 0x9F) || (c >= 0xE0 && c <= 0xFC);
}

// True when the last byte is the first half of a character.
bool EndsInsideCharacter(QByteArrayView bytes) {
    qsizetype at = 0;
    while (at < bytes.size())
        at += IsLeadByte(bytes[at]) ? 2 : 1;
    return at > bytes.size();
}

// One character of one or two bytes; empty when the bytes mean nothing.
QString DecodeCharacter(QByteArrayView bytes) {
    if (IsAscii(bytes))
        return QString::fromLatin1(bytes);
    QStringDecoder decoder(CodePageName);
    const QString text = decoder(bytes);
    const bool foreign =
        decoder.hasError() || text.contains(Substitute) || text.contains(QChar::ReplacementCharacter);
    return foreign ? QString() : text;
}

} // namespace

CodePageDecoder::CodePageDecoder() : decoder_(std::in_place, CodePageName) {}

QString CodePageDecoder::Decode(QByteArrayView bytes) {
    if (IsAscii(bytes))
        return QString::fromLatin1(bytes);
    if (EndsInsideCharacter(bytes) || HasExchanged(bytes))
        return DecodeOneByOne(bytes);
    QString text = (*decoder_)(bytes);
    if (!decoder_->hasError() && !text.contains(Substitute) && !text.contains(QChar::ReplacementCharacter))
        return text;
    // The error mark of a decoder is never taken back, so a failure needs a new one.
    decoder_.emplace(CodePageName);
    return DecodeOneByOne(bytes);
}

// The library beneath marks what it cannot read in more than one way; here every such byte becomes U+FFFD.
QString CodePageDecoder::DecodeOneByOne(QByteArrayView bytes) {
    QString text;
    for (qsizetype at = 0; at < bytes.size();) {
        const bool pair = IsLeadByte(bytes[at]) && at + 1 < bytes.size();
        const QString both = pair ? DecodeCharacter(bytes.sliced(at, 2)) : QString();
        if (!both.isEmpty()) {
            text += both;
            at += 2;
            continue;
        }
        const QString one = IsLeadByte(bytes[at]) ? QString() : DecodeCharacter(bytes.sliced(at, 1));
        text += one.isEmpty() ? QString(QChar::ReplacementCharacter) : one;
        ++at;
    }
    return text;
}

// Each text is whole: half a character at its end must not wait for the next one.
CodePageEncoder::CodePageEncoder() : encoder_(std::in_place, CodePageName, QStringEncoder::Flag::Stateless) {}

bool CodePageEncoder::Append(QStringView text, QByteArray& bytes) {
    const qsizetype before = bytes.size();
    if (IsAscii(text)) {
        bytes.resize(before + text.size());
        std::transform(text.begin(), text.end(), bytes.begin() + before,
                       [](QChar c) { return char(c.unicode()); });
        return true;
    }
    bool known = true;
    for (qsizetype from = 0, at = 0; known && at <= text.size(); ++at) {
        const bool exchanged = at < text.size() && IsExchanged(text[at].unicode());
        if (!exchanged && at < text.size())
            continue;
        known = Encode(text.sliced(from, at - from), bytes);
        if (exchanged)
            bytes += char(text[at].unicode());
        from = at + 1;
    }
    if (!known)
        bytes.truncate(before);
    return known;
}

// Adds nothing when it fails.
bool CodePageEncoder::Encode(QStringView text, QByteArray& bytes) {
    const QByteArray encoded = (*encoder_)(text);
    if (encoder_->hasError()) {
        // The error mark of an encoder is never taken back.
        encoder_.emplace(CodePageName, QStringEncoder::Flag::Stateless);
        return false;
    }
    bytes += encoded;
    return true;
}

QByteArray EncodeCodePage(QStringView text) {
    if (IsAscii(text))
        return text.toLatin1();
    QByteArray bytes;
    if (CodePageEncoder().Append(text, bytes))
        return bytes;
    throw RuntimeError(ErrorNumber::InvalidArgument,
                       QStringLiteral("文字「%1」はコードページ 932 にありません。")
                           .arg(FirstForeignCharacter(text).value_or(QString())));
}

std::optional<QString> FirstForeignCharacter(QStringView text) {
    if (IsAscii(text))
        return std::nullopt;
    CodePageEncoder encoder;
    QByteArray ignored;
    if (encoder.Append(text, ignored))
        return std::nullopt;
    for (qsizetype at = 0; at < text.size();) {
        const bool pair = text[at].isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate();
        const QStringView one = text.sliced(at, pair ? 2 : 1);
        if (pair || !encoder.Append(one, ignored))
            return one.toString();
        at += one.size();
    }
    return std::nullopt;
}

} // namespace velmo
