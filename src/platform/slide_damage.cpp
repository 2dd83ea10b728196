#include "platform/slide_damage.h"

namespace velmo {

QString SlideDamage::Text() const {
    switch (fault) {
    case SlideFault::Unreadable:
        return QStringLiteral("スライドのファイルを開けません");
    case SlideFault::NoSlide:
        return QStringLiteral("スライドのファイルではありません");
    case SlideFault::TooLarge:
        return QStringLiteral("スライドが大きすぎるため、途中まで表示しています");
    case SlideFault::MissingEnd:
    case SlideFault::CutShort:
        return QStringLiteral("スライドが壊れています (途中で終わっています)");
    case SlideFault::UnknownRecord:
        return QStringLiteral("スライドが壊れています (読めない部分があります)");
    }
    return {};
}

QString SlideDamage::TextWithPlace() const {
    if (fault == SlideFault::Unreadable || fault == SlideFault::NoSlide)
        return Text();
    return QStringLiteral("%1\n位置: 先頭から %2 バイト").arg(Text(), QString::number(offset));
}

} // namespace velmo
