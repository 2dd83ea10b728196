#pragma once

#include <QByteArray>
#include <QString>
#include <QStringDecoder>
#include <QStringEncoder>

#include <optional>

namespace velmo {

// Reads code page 932. Bytes that the code page does not have become U+FFFD.
class CodePageDecoder {
public:
    CodePageDecoder();
    CodePageDecoder(const CodePageDecoder&) = delete;
    CodePageDecoder& operator=(const CodePageDecoder&) = delete;

    QString Decode(QByteArrayView bytes);

private:
    QString DecodeOneByOne(QByteArrayView bytes);

    // Never moved: the library's converter keeps the address of its state.
    std::optional<QStringDecoder> decoder_;
};

// Writes code page 932.
class CodePageEncoder {
public:
    CodePageEncoder();
    CodePageEncoder(const CodePageEncoder&) = delete;
    CodePageEncoder& operator=(const CodePageEncoder&) = delete;

    // Adds the bytes of text behind those that are there. False, and nothing added, when the code page does
    // not have one of its characters.
    bool Append(QStringView text, QByteArray& bytes);

private:
    bool Encode(QStringView text, QByteArray& bytes);

    // Never moved, like the decoder's.
    std::optional<QStringEncoder> encoder_;
};

// The bytes of text in code page 932. Throws 5, naming the character, when the code page does not have one of
// them.
QByteArray EncodeCodePage(QStringView text);

// The first character that code page 932 does not have (a surrogate pair counts as one), or nothing.
std::optional<QString> FirstForeignCharacter(QStringView text);

} // namespace velmo
