#include "platform/code_page.h"
#include "platform/runtime_error.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

TEST(CodePage, ReadsWhatWindowsWrites) {
    CodePageDecoder decoder;
    EXPECT_EQ(decoder.Decode("\x83\x7B\x83\x8B\x83\x67 M10\\"), QStringLiteral("ボルト M10\\"));
    EXPECT_EQ(decoder.Decode("\x81\x60\x81\x7C\x87\x40\xFA\x40"), QStringLiteral("～－①ⅰ"));
    EXPECT_EQ(decoder.Decode("\xBA\xD2\xDD\xC4"), QStringLiteral("ｺﾒﾝﾄ"));
}

TEST(CodePage, ForeignBytesBecomeReplacementCharacters) {
    CodePageDecoder decoder;
    EXPECT_EQ(decoder.Decode("a\xA0"
                             "b"),
              QStringLiteral("a\uFFFDb"));
    EXPECT_EQ(decoder.Decode("\x83"), QStringLiteral("\uFFFD"));
    EXPECT_EQ(decoder.Decode("\x81\x20\x83\x7B"), QStringLiteral("\uFFFD ボ"));
    EXPECT_EQ(decoder.Decode("\xFD\x80"), QStringLiteral("\uFFFD\uFFFD"));
    EXPECT_EQ(decoder.Decode("\x83\x7B"), QStringLiteral("ボ"))
        << "an error does not spoil what is read next";
}

TEST(CodePage, EncodesAndDecodesTheSameText) {
    CodePageDecoder decoder;
    const QString text = QStringLiteral("呼び径～－①ｺﾒﾝﾄ\\~髙﨑");
    EXPECT_EQ(decoder.Decode(EncodeCodePage(text)), text);
}

TEST(CodePage, AsciiKeepsItsCodesNextToJapanese) {
    CodePageDecoder decoder;
    for (int code = 0; code < 0x80; ++code) {
        const QString text = QStringLiteral("呼") + QChar(code) + QStringLiteral("び") + QChar(code);
        const QByteArray bytes = QByteArray("\x8C\xC4") + char(code) + QByteArray("\x82\xD1") + char(code);
        EXPECT_EQ(decoder.Decode(bytes), text) << code;
        EXPECT_EQ(EncodeCodePage(text), bytes) << code;
    }
    EXPECT_EQ(decoder.Decode("\x83\x7F"), QStringLiteral("\uFFFD\x7F")) << "no second half";
    CodePageEncoder encoder;
    QByteArray bytes = "<";
    EXPECT_FALSE(encoder.Append(u"呼\x1A"
                                u"é",
                                bytes));
    EXPECT_EQ(bytes, "<");
}

TEST(CodePage, NamesTheFirstForeignCharacter) {
    EXPECT_EQ(FirstForeignCharacter(u"ボルト"), std::nullopt);
    EXPECT_EQ(FirstForeignCharacter(u"φ10±é"), QStringLiteral("é"));
    EXPECT_EQ(FirstForeignCharacter(u"x😀é"), QStringLiteral("😀"));
    EXPECT_THROW(EncodeCodePage(u"한글"), RuntimeError);
}

TEST(CodePage, TheEncoderAddsWholeTextsOrNothing) {
    CodePageEncoder encoder;
    QByteArray bytes = "<";
    EXPECT_TRUE(encoder.Append(u"M10 ", bytes));
    EXPECT_TRUE(encoder.Append(u"呼び", bytes));
    EXPECT_FALSE(encoder.Append(u"10é", bytes));
    EXPECT_FALSE(encoder.Append(u"\uFFFD", bytes));
    EXPECT_TRUE(encoder.Append(u"", bytes));
    EXPECT_TRUE(encoder.Append(u"ｺ>", bytes)) << "an error does not spoil what is written next";
    EXPECT_EQ(bytes, "<M10 \x8C\xC4\x82\xD1\xBA>");
}

TEST(CodePage, HalfACharacterIsForeign) {
    const QString half = QStringLiteral("呼") + QChar(0xD83D);
    CodePageEncoder encoder;
    QByteArray bytes;
    EXPECT_FALSE(encoder.Append(half, bytes));
    EXPECT_TRUE(encoder.Append(u"呼", bytes));
    EXPECT_EQ(bytes, "\x8C\xC4");
    EXPECT_EQ(FirstForeignCharacter(half), QString(QChar(0xD83D)));
    EXPECT_THROW(EncodeCodePage(half), RuntimeError);
}

} // namespace
} // namespace velmo
