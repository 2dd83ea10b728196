#include "variables/table_fault.h"

#include "platform/code_page.h"

namespace velmo {

namespace {

using Kind = TableFault::Kind;

bool HasLineBreak(QStringView text) {
    return text.contains(u'\n') || text.contains(u'\r');
}

// What is wrong with the characters of a text.
std::optional<TableFault> FindIn(QStringView text) {
    TableFault fault;
    if (HasLineBreak(text)) {
        fault.kind = Kind::LineBreak;
        return fault;
    }
    const std::optional<QString> foreign = FirstForeignCharacter(text);
    if (!foreign)
        return std::nullopt;
    fault.character = *foreign;
    fault.kind = text.contains(QChar::ReplacementCharacter) ? Kind::UnreadBytes : Kind::ForeignCharacter;
    return fault;
}

class FaultFinder {
public:
    FaultFinder(const TableColumns& columns, const GridCells& cells, LookFor lookFor)
        : columns_(columns), cells_(cells), lookFor_(lookFor) {}

    std::optional<TableFault> Find() {
        for (size_t i = 0; i < columns_.size(); ++i) {
            if (!columns_[i])
                continue;
            if (const std::optional<TableFault> fault = FindIn(columns_[i]->name); IsLookedFor(fault))
                return At(*fault, 0, i);
        }
        for (int row = 1; row < cells_.Rows(); ++row) {
            if (IsSound(row))
                continue;
            if (std::optional<TableFault> fault = FindInRow(row))
                return fault;
        }
        return std::nullopt;
    }

private:
    bool IsLookedFor(const std::optional<TableFault>& fault) const {
        return fault && (lookFor_ == LookFor::Everything || fault->kind == Kind::ForeignCharacter);
    }

    // Looks at the whole row at once.
    bool IsSound(int row) {
        line_.resize(0);
        const std::vector<QStringView>& texts = cells_.RowTexts(row, buffer_);
        for (size_t i = 0; i < columns_.size(); ++i) {
            if (!columns_[i])
                continue;
            const QStringView value = texts[i];
            if (value.size() > LongestValue(columns_[i]->width))
                return false;
            line_ += value;
        }
        bytes_.resize(0);
        return !HasLineBreak(line_) && encoder_.Append(line_, bytes_);
    }

    std::optional<TableFault> FindInRow(int row) const {
        for (size_t i = 0; i < columns_.size(); ++i) {
            if (!columns_[i])
                continue;
            const QStringView value = cells_.TextView(row, int(i) + 1);
            if (const std::optional<TableFault> fault = FindIn(value); IsLookedFor(fault))
                return At(*fault, row, i);
            TableFault fault;
            fault.length = value.size();
            fault.width = columns_[i]->width;
            fault.kind = fault.length > fault.width ? Kind::TooLong : Kind::TooLongToRead;
            if (fault.length > LongestValue(fault.width) && IsLookedFor(fault))
                return At(fault, row, i);
        }
        return std::nullopt;
    }

    TableFault At(TableFault fault, int row, size_t column) const {
        fault.row = row;
        fault.column = int(column) + 1;
        fault.name = columns_[column]->name;
        return fault;
    }

    const TableColumns& columns_;
    const GridCells& cells_;
    LookFor lookFor_;
    CodePageEncoder encoder_;
    // Used again for every row.
    GridCells::RowBuffer buffer_;
    QString line_;
    QByteArray bytes_;
};

} // namespace

QString TableFault::Text() const {
    QString place = row == 0 ? QStringLiteral("%1 列の名前 (%2)").arg(column).arg(name)
                             : QStringLiteral("%1 行 %2 列 (%3)").arg(row).arg(column).arg(name);
    switch (kind) {
    case Kind::TooLong:
        return place +
               QStringLiteral(" の値は %1 文字あり、列の幅 %2 文字に入りません。").arg(length).arg(width);
    case Kind::TooLongToRead:
        return place + QStringLiteral(" の値は %1 文字あり、次からは読めません (%2 文字まで)。")
                           .arg(length)
                           .arg(LongestText);
    case Kind::ForeignCharacter:
        return place + QStringLiteral(" の文字「%1」は寸法表のファイルに書けません "
                                      "(コードページ 932 にない文字です)。")
                           .arg(character);
    case Kind::UnreadBytes:
        return place + QStringLiteral(" に、ファイルから読めなかった文字があります (コードページ 932 でない"
                                      "バイト)。元の内容が失われるため、保存しません。");
    case Kind::LineBreak:
        return place + QStringLiteral(" に改行があります。寸法表のファイルには書けません。");
    }
    return place;
}

std::optional<TableFault> FindTableFault(const TableColumns& columns, const GridCells& cells,
                                         LookFor lookFor) {
    return FaultFinder(columns, cells, lookFor).Find();
}

} // namespace velmo
