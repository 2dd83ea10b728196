#pragma once

#include <QByteArray>
#include <QString>
#include <QStringDecoder>

#include <optional>

namespace velmo {

// Reads code page 932. Bytes that the code page does not have become U+FFFD.
class CodePageDecoder {
public:
    CodePageDecoder();
    QString Decode(QByteArrayView bytes);

private:
    QString DecodeOneByOne(QByteArrayView bytes);

    QStringDecoder decoder_;
};

// The bytes of text in code page 932. Throws 5, naming the character, when the code page does not have one of
// them.
QByteArray EncodeCodePage(QStringView text);

// The first character that code page 932 does not have (a surrogate pair counts as one), or nothing.
std::optional<QString> FirstForeignCharacter(QStringView text);

} // namespace velmo
