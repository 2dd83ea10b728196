#include "variables/cell_block.h"

#include <algorithm>
#include <optional>

namespace velmo {

namespace {

constexpr QChar Quote = u'"';
constexpr QChar Tab = u'\t';

bool IsLineEnd(QChar unit) {
    return unit == u'\n' || unit == u'\r' || unit == QChar::LineSeparator ||
           unit == QChar::ParagraphSeparator;
}

bool NeedsQuotes(QStringView text) {
    return text.startsWith(Quote) ||
           std::any_of(text.begin(), text.end(), [](QChar unit) { return unit == Tab || IsLineEnd(unit); });
}

QString Quoted(const QString& text) {
    QString inner = text;
    inner.replace(Quote, QStringLiteral("\"\""));
    return Quote + inner + Quote;
}

QString OneLine(QStringView text) {
    QString line;
    line.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar unit = text[i];
        const bool isPair = unit == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n';
        if (isPair)
            continue;
        if (unit == Tab || IsLineEnd(unit))
            line += u' ';
        else if (unit.category() != QChar::Other_Control)
            line += unit;
    }
    return line;
}

// Goes through a tab-separated text from cell to cell.
class TabTextReader {
public:
    explicit TabTextReader(QStringView text) : text_(text) {}

    std::vector<QStringList> ReadRows() {
        std::vector<QStringList> rows;
        while (at_ < text_.size())
            rows.push_back(ReadRow());
        return rows;
    }

private:
    QStringList ReadRow() {
        QStringList cells{ReadCell()};
        while (at_ < text_.size() && text_[at_] == Tab) {
            ++at_;
            cells.append(ReadCell());
        }
        at_ += RowEndLength(at_);
        return cells;
    }

    QString ReadCell() {
        if (const std::optional<QString> quoted = ReadQuotedCell())
            return OneLine(*quoted);
        const qsizetype start = at_;
        while (!IsCellEnd(at_))
            ++at_;
        return OneLine(text_.sliced(start, at_ - start));
    }

    // Nothing, and stays, when no quotes enclose the cell.
    std::optional<QString> ReadQuotedCell() {
        if (at_ == text_.size() || text_[at_] != Quote)
            return std::nullopt;
        QString cell;
        for (qsizetype i = at_ + 1; i < text_.size(); ++i) {
            if (text_[i] != Quote) {
                cell += text_[i];
            } else if (i + 1 < text_.size() && text_[i + 1] == Quote) {
                cell += Quote;
                ++i;
            } else if (IsCellEnd(i + 1)) {
                at_ = i + 1;
                return cell;
            } else {
                return std::nullopt;
            }
        }
        return std::nullopt;
    }

    bool IsCellEnd(qsizetype at) const {
        return at == text_.size() || text_[at] == Tab || RowEndLength(at) > 0;
    }

    qsizetype RowEndLength(qsizetype at) const {
        const QStringView rest = text_.sliced(at);
        if (rest.startsWith(u'\n'))
            return 1;
        return rest.startsWith(u"\r\n") ? 2 : 0;
    }

    QStringView text_;
    qsizetype at_ = 0;
};

} // namespace

CellBlock::CellBlock(std::vector<QStringList> rows) : rows_(std::move(rows)) {
    for (const QStringList& row : rows_)
        columns_ = std::max(columns_, int(row.size()));
}

QString CellBlock::Text(int row, int column) const {
    return rows_.at(size_t(row)).value(column);
}

QString ToTabText(const CellBlock& block) {
    QString text;
    for (int row = 0; row < block.Rows(); ++row) {
        if (row > 0)
            text += u'\n';
        for (int column = 0; column < block.Columns(); ++column) {
            if (column > 0)
                text += Tab;
            const QString cell = block.Text(row, column);
            text += NeedsQuotes(cell) ? Quoted(cell) : cell;
        }
    }
    // A line end behind the last row would come along when a single value is pasted into a field, but
    // without it an empty last row is none.
    const bool endsEmpty = !block.IsEmpty() && (text.isEmpty() || text.endsWith(u'\n'));
    return endsEmpty ? text + u'\n' : text;
}

CellBlock FromTabText(const QString& text) {
    return CellBlock(TabTextReader(text).ReadRows());
}

PasteTargets TargetsOfPaste(const CellBlock& block, const CellRange& selected, int tableRows,
                            int tableColumns) {
    CellRange cells{selected.row, selected.column, block.Rows(), block.Columns()};
    if (!block.IsEmpty() && selected.rows % block.Rows() == 0 && selected.columns % block.Columns() == 0) {
        cells.rows = selected.rows;
        cells.columns = selected.columns;
    }
    return {cells, tableRows - selected.row + 1, tableColumns - selected.column + 1};
}

QString PastedText(const CellBlock& block, int row, int column) {
    return block.Text(row % block.Rows(), column % block.Columns());
}

} // namespace velmo
