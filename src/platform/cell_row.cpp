#include "platform/cell_row.h"

#include "platform/runtime_error.h"

#include <limits>

namespace velmo {

namespace {

QChar LengthUnit(QStringView text) {
    if (text.size() > std::numeric_limits<char16_t>::max())
        throw RuntimeError(ErrorNumber::InvalidArgument);
    return QChar(char16_t(text.size()));
}

} // namespace

// Where the length of a stored text stands.
qsizetype CellRow::Start(int index) const {
    qsizetype at = 0;
    for (int i = 0; i < index; ++i)
        at += 1 + packed_[at].unicode();
    return at;
}

void CellRow::Append(QStringView text) {
    packed_ += LengthUnit(text);
    packed_ += text;
    ++count_;
}

QStringView CellRow::Text(int index) const {
    if (index >= count_)
        return {};
    const qsizetype at = Start(index);
    return QStringView(packed_).sliced(at + 1, packed_[at].unicode());
}

void CellRow::GetTexts(std::vector<QStringView>& texts, int count) const {
    texts.assign(size_t(qMax(count_, count)), {});
    const QStringView packed = packed_;
    qsizetype at = 0;
    for (int i = 0; i < count_; ++i) {
        const qsizetype length = packed[at].unicode();
        texts[size_t(i)] = packed.sliced(at + 1, length);
        at += 1 + length;
    }
}

void CellRow::SetText(int index, QStringView text) {
    const QChar length = LengthUnit(text);
    while (count_ <= index)
        Append({});
    const qsizetype at = Start(index);
    packed_.replace(at + 1, packed_[at].unicode(), text.data(), text.size());
    packed_[at] = length;
}

void CellRow::Forget(int index) {
    if (index < count_)
        SetText(index, {});
}

void CellRow::Reserve(int texts, qsizetype characters) {
    packed_.reserve(texts + characters);
}

} // namespace velmo
