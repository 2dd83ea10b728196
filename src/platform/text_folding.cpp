#include "platform/text_folding.h"

#include <QVarLengthArray>

namespace velmo {

namespace {

constexpr char16_t VoicedMark = u'\u309B';
constexpr char16_t CombiningVoicedMark = u'\u3099';
constexpr char16_t SemiVoicedMark = u'\u309C';
constexpr char16_t CombiningSemiVoicedMark = u'\u309A';

constexpr char16_t FirstHalfWidthKana = u'ｦ';
constexpr char16_t LastHalfWidthKana = u'ﾝ';
constexpr char16_t HalfWidthKana[] = u"をぁぃぅぇぉゃゅょっーあいうえおかきくけこさしすせそたちつてとなにぬね"
                                     u"のはひふへほまみむめもやゆよらりるれろわん";
static_assert(std::size(HalfWidthKana) == LastHalfWidthKana - FirstHalfWidthKana + 2);

constexpr bool IsIn(char16_t unit, char16_t first, char16_t last) {
    return first <= unit && unit <= last;
}

constexpr char16_t Moved(char16_t unit, int distance) {
    return char16_t(unit + distance);
}

constexpr char16_t Hiragana(char16_t unit) {
    const bool hasHiragana = IsIn(unit, u'ァ', u'ヶ') || IsIn(unit, u'ヽ', u'ヾ');
    return hasHiragana ? Moved(unit, u'ぁ' - u'ァ') : unit;
}

constexpr char16_t LowerAscii(char16_t unit) {
    return IsIn(unit, u'A', u'Z') ? Moved(unit, u'a' - u'A') : unit;
}

// Folds a unit that stays one unit whatever stands beside it, as nearly all of a library do; 0 for others.
constexpr char16_t SimplyFolded(char16_t unit) {
    if (unit < 0x80)
        return LowerAscii(unit);
    if (IsIn(unit, u'ァ', u'ヶ') || IsIn(unit, u'ぁ', u'ゖ') || unit == u'ー')
        return Hiragana(unit);
    if (IsIn(unit, u'\u4E00', u'\u9FFF'))
        return unit;
    if (IsIn(unit, u'！', u'～'))
        return LowerAscii(Moved(unit, u'!' - u'！'));
    if (IsIn(unit, FirstHalfWidthKana, LastHalfWidthKana))
        return HalfWidthKana[unit - FirstHalfWidthKana];
    return unit == u'\u3000' ? u' ' : u'\0';
}

// Folds into as many units; false when a unit is not that simple.
bool FoldSimply(QStringView text, QChar* folded) {
    for (const QChar unit : text) {
        const char16_t simple = SimplyFolded(unit.unicode());
        if (simple == 0)
            return false;
        *folded++ = simple;
    }
    return true;
}

// A sound mark of its own counts as that of the kana before it, as in half-width kana.
char16_t Combining(char16_t unit) {
    switch (unit) {
    case VoicedMark:
        return CombiningVoicedMark;
    case SemiVoicedMark:
        return CombiningSemiVoicedMark;
    default:
        return unit;
    }
}

QString FoldThoroughly(QStringView text) {
    QString same = text.toString();
    for (QChar& unit : same)
        unit = Combining(unit.unicode());
    same = same.normalized(QString::NormalizationForm_KC).toCaseFolded();
    QString folded;
    folded.reserve(same.size());
    for (const QChar unit : same) {
        switch (unit.unicode()) {
        // Hiragana has these only with the sound mark apart.
        case u'ヷ':
            folded += QStringLiteral("わ\u3099");
            break;
        case u'ヸ':
            folded += QStringLiteral("ゐ\u3099");
            break;
        case u'ヹ':
            folded += QStringLiteral("ゑ\u3099");
            break;
        case u'ヺ':
            folded += QStringLiteral("を\u3099");
            break;
        // What some converters make of the full-width － and ～ of code page 932.
        case u'\u2212':
            folded += u'-';
            break;
        case u'\u301C':
            folded += u'~';
            break;
        default:
            folded += QChar(Hiragana(unit.unicode()));
        }
    }
    return folded;
}

} // namespace

QString FoldedForSearch(QStringView text) {
    QString folded(text.size(), Qt::Uninitialized);
    return FoldSimply(text, folded.data()) ? folded : FoldThoroughly(text);
}

bool ContainsFolded(QStringView text, QStringView needle) {
    constexpr int usualLength = 128;
    QVarLengthArray<QChar, usualLength> folded(text.size());
    if (!FoldSimply(text, folded.data()))
        return FoldThoroughly(text).contains(needle);
    return QStringView(folded).contains(needle);
}

} // namespace velmo
