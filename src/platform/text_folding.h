#pragma once

#include <QString>

namespace velmo {

// The text in the one form that all texts share which differ only in case, width or kana type: ﾎﾞﾙﾄ, ボルト
// and ぼると are the same, so are Ｍ１０ and m10. Only an empty text gives an empty one.
QString FoldedForSearch(QStringView text);

// Whether the folded text contains needle, which is folded already; quicker than folding it. Every text
// contains the empty needle.
bool ContainsFolded(QStringView text, QStringView needle);

} // namespace velmo
