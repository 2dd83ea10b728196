#include "platform/slide_damage.h"

namespace velmo {

QString SlideDamage::Text() const {
    switch (fault) {
    case SlideFault::Unreadable:
        return QStringLiteral("スライドのファイルを開けません");
    case SlideFault::NoSlide:
        return QStringLiteral("スライドのファイルではありません");
    case SlideFault::TooLarge:
        return QStringLiteral("スライドを途中まで表示しています");
    case SlideFault::MissingEnd:
    case SlideFault::CutShort:
    case SlideFault::UnknownRecord:
        return QStringLiteral("スライドが壊れています");
    }
    return {};
}

QString SlideDamage::Detail() const {
    QString reason;
    switch (fault) {
    case SlideFault::Unreadable:
    case SlideFault::NoSlide:
        return Text() + u'。';
    case SlideFault::TooLarge:
        reason = QStringLiteral("ファイルが大きすぎます。");
        break;
    case SlideFault::MissingEnd:
        reason = QStringLiteral("終わりの印がありません。");
        break;
    case SlideFault::CutShort:
        reason = QStringLiteral("データが途中で切れています。");
        break;
    case SlideFault::UnknownRecord:
        reason = QStringLiteral("読めないデータがあります。");
        break;
    }
    return QStringLiteral("%1。%2\n位置: 先頭から %3 バイト").arg(Text(), reason, QString::number(offset));
}

} // namespace velmo
