#include "variables/table_file.h"

#include "platform/code_page.h"
#include "platform/files.h"
#include "platform/runtime_error.h"
#include "platform/save_file.h"
#include "variables/dimension_table.h"
#include "variables/table_fault.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace velmo {

namespace {

// Columns may be so wide that their blanks would fill the memory.
constexpr qsizetype LargestFile = 1'000'000'000;
constexpr QByteArrayView LineBreak = "\r\n";
constexpr int MostRows = std::numeric_limits<std::int16_t>::max();

QString ColumnKey(const TableColumn& column) {
    constexpr int padding = 10000;
    if (column.row == 0)
        return CommentColumnKey.toString();
    const int padded = column.number + padding;
    if (padded > std::numeric_limits<std::int16_t>::max())
        throw RuntimeError(ErrorNumber::Overflow).InField(QStringLiteral("V%1").arg(column.number));
    return u'V' + QString::number(padded).right(4);
}

// The bytes of a table file, line by line.
class TableFileWriter {
public:
    TableFileWriter(const TableColumns& columns, const GridCells& cells) : columns_(columns), cells_(cells) {
        for (size_t i = 0; i < columns_.size(); ++i) {
            if (!columns_[i])
                continue;
            saved_.emplace_back(int(i) + 1, columns_[i]->width);
            rowWidth_ += qMax<qsizetype>(0, columns_[i]->width);
        }
    }

    QByteArray Write() {
        if (cells_.IsMessage())
            throw RuntimeError(ErrorNumber::InvalidArgument);
        if (columns_.size() > MostTableColumns)
            throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
        const int rows = cells_.Rows() - 1;
        const qsizetype rowBytes = rowWidth_ + LineBreak.size();
        if (rows > MostRows || rows * rowBytes > LargestFile)
            throw RuntimeError(ErrorNumber::Overflow);
        WriteLine(QString());
        WriteNumber(int(columns_.size()));
        for (size_t i = 0; i < columns_.size(); ++i)
            WriteColumn(int(i) + 1, columns_[i]);
        WriteNumber(rows);
        bytes_.reserve(bytes_.size() + rows * rowBytes);
        for (int row = 1; row <= rows; ++row)
            WriteRow(row);
        return bytes_;
    }

private:
    void WriteColumn(int index, const std::optional<TableColumn>& column) {
        WriteNumber(index);
        if (!column)
            return;
        WriteLine(ColumnKey(*column));
        WriteNumber(column->width);
        WriteNumber(column->small);
        WriteLine(column->name);
    }

    void WriteRow(int row) {
        if (!WriteAsciiRow(row))
            WriteLine(RowText(row));
    }

    // False when the row has other characters too. A table is mostly numbers, and this takes half the
    // time.
    bool WriteAsciiRow(int row) {
        const qsizetype before = bytes_.size();
        bytes_.resize(before + rowWidth_);
        char* at = bytes_.data() + before;
        char16_t all = 0;
        const std::vector<QStringView>& texts = cells_.RowTexts(row, buffer_);
        for (const auto& [column, width] : saved_) {
            const QStringView value = texts[size_t(column - 1)];
            at = std::fill_n(at, Padding(value, width), ' ');
            for (const QChar c : value) {
                all |= c.unicode();
                *at++ = char(c.unicode());
            }
        }
        const QByteArrayView line = QByteArrayView(bytes_).sliced(before);
        const bool ascii = all < 0x80 && !line.contains('\n') && !line.contains('\r');
        if (ascii)
            bytes_ += LineBreak;
        else
            bytes_.resize(before);
        return ascii;
    }

    QString RowText(int row) {
        QString line;
        line.reserve(rowWidth_);
        const std::vector<QStringView>& texts = cells_.RowTexts(row, buffer_);
        for (const auto& [column, width] : saved_) {
            const QStringView value = texts[size_t(column - 1)];
            line.resize(line.size() + Padding(value, width), u' ');
            line += value;
        }
        return line;
    }

    qsizetype Padding(QStringView value, int width) const {
        if (value.size() > LongestValue(width))
            ThrowFault();
        return width - value.size();
    }

    void WriteNumber(int number) { WriteLine(QString::number(number)); }

    void WriteLine(const QString& line) {
        if (line.contains(u'\n') || line.contains(u'\r') || !encoder_.Append(line, bytes_))
            ThrowFault();
        bytes_ += LineBreak;
    }

    [[noreturn]] void ThrowFault() const {
        const std::optional<TableFault> fault = FindTableFault(columns_, cells_);
        throw RuntimeError(ErrorNumber::InvalidArgument, fault ? fault->Text() : QString());
    }

    const TableColumns& columns_;
    const GridCells& cells_;
    CodePageEncoder encoder_;
    // Place and width of each column that has a variable; together they are as wide as a row.
    std::vector<std::pair<int, int>> saved_;
    qsizetype rowWidth_ = 0;
    GridCells::RowBuffer buffer_;
    QByteArray bytes_;
};

// The work file of a table that is reached by a link.
QString WorkFileOf(const QString& table) {
    const bool usual = table.endsWith(QStringLiteral(".PMN"), Qt::CaseInsensitive);
    return (usual ? table.chopped(4) : table) + QStringLiteral(".TMP");
}

} // namespace

bool SaveDimensionTable(const GlobalState& state, const WorkDatabase& work, const GridCells& cells,
                        const Inform& inform, const MayReplace& mayReplace) {
    const QString path = DimensionTablePath(state.SymbolFile);
    const QString workFile = path.chopped(4) + QStringLiteral(".TMP");
    // The definition itself is neither a table nor a work file, whatever its extension.
    if (state.SymbolFile.compare(path, Qt::CaseInsensitive) == 0 ||
        state.SymbolFile.compare(workFile, Qt::CaseInsensitive) == 0)
        throw RuntimeError(ErrorNumber::InvalidArgument).InFile(state.SymbolFile);
    QByteArray bytes;
    try {
        bytes = TableFileWriter(ReadTableColumns(work, cells.Cols() - 1), cells).Write();
    } catch (RuntimeError& error) {
        throw error.InFile(path);
    }
    // Whoever saves the same table by another link to it must meet the same work file.
    const QString table = FollowLink(NativePath(path));
    const bool isLink = table != NativePath(path);
    SaveFile file(path, isLink ? WorkFileOf(table) : workFile);
    if (!file.IsOpen()) {
        inform(QStringLiteral("作業ファイルが作成できません"));
        return false;
    }
    if (mayReplace && !mayReplace())
        return false;
    file.Write(bytes);
    file.Commit();
    return true;
}

} // namespace velmo
