#include "variables/dimension_table.h"

#include "platform/files.h"
#include "platform/numbers.h"
#include "platform/runtime_error.h"
#include "platform/text_file.h"
#include "variables/row_groups.h"

#include <limits>
#include <optional>

namespace velmo {

namespace {

constexpr int RowsBetweenProgress = 1000;

// Bytes: as wide as columns can be, each character of two bytes.
constexpr qsizetype LongestRow = qsizetype{2} * MostTableColumns * std::numeric_limits<std::int16_t>::max();

struct ColumnBlock {
    QString key;
    std::int16_t width = 0;
    std::int16_t small = 0;
    QString name;
};

// The field of a row that starts at a character and is so wide; what the line does not reach is empty.
QStringView Field(QStringView line, qsizetype start, int width) {
    if (width < 0)
        throw RuntimeError(ErrorNumber::InvalidArgument);
    return TrimBlanks(line.mid(qMin(start, line.size()), width));
}

void LinkColumn(RecordSet& variables, int column, int width, int small, const QString& name) {
    variables.Edit();
    variables.Set(u"ValName", name);
    variables.SetNumber(u"ValDis", column);
    variables.SetNumber(u"ValLen", width);
    variables.SetNumber(u"ValSmall", small);
    variables.Update();
}

// The next line, without the mark with which old programs end a file.
QString ReadUpToEndMark(TextReader& file) {
    constexpr char16_t endMark = u'\x1A';
    QString line = file.ReadLine();
    if (line.endsWith(endMark) && file.AtEnd()) {
        while (line.endsWith(endMark))
            line.chop(1);
    }
    return line;
}

class TableReader {
public:
    TableReader(const GlobalState& state, Database& database, GridCells& variableGrid,
                const Progress& progress)
        : runMode_(state.RunMode), database_(database), variableGrid_(variableGrid), progress_(progress) {}

    // False when nothing of the file can be shown.
    bool Read(const QString& path, DimensionTable& table) {
        std::optional<TextReader> file;
        try {
            file.emplace(path, LongestRow);
            ReadColumns(*file, table.cells);
        } catch (const RuntimeError& error) {
            RequireReadError(error);
            table.whole = !FileExists(path);
            return false;
        }
        table.whole = int(widths_.size()) == count_;
        try {
            database_.Execute(QStringLiteral("CREATE TABLE PmnTable (") + definition_ + QStringLiteral(");"));
        } catch (const RuntimeError&) {
            table.whole = false;
            return true;
        }
        bool ended = true;
        try {
            ReadRows(*file, table.cells);
        } catch (const RuntimeError& error) {
            RequireReadError(error);
            ended = false;
        }
        table.whole = table.whole && ended && !leftOver_;
        table.rows = std::int16_t(rows_.Count());
        rows_.MoveInto(table.cells);
        if (ended && table.rows == 0)
            return OfferEmptyRow(table);
        return table.rows > 0;
    }

private:
    // What the file is to blame for; the rest is not passed over.
    void RequireReadError(const RuntimeError& error) const {
        const bool inDatabase = error.File() == database_.Path();
        if (inDatabase && error.Number() != ErrorNumber::TextTooLong &&
            error.Number() != ErrorNumber::ItemNotInCollection)
            throw;
    }

    // For a file without rows; in run mode 2 there is nothing to choose.
    bool OfferEmptyRow(DimensionTable& table) const {
        if (runMode_ == run_mode::VariableInput)
            return false;
        table.cells.SetRows(2);
        table.rows = 1;
        return true;
    }

    void ReadColumns(TextReader& file, GridCells& cells) {
        file.ReadLine();
        count_ = ToInteger(file.ReadLine());
        RecordSet variables = SelectVariables(database_);
        for (int column = 1; column <= count_; ++column) {
            if (ToInteger(file.ReadLine()) != column)
                break;
            ReadColumn(file, column, variables, cells);
        }
    }

    void ReadColumn(TextReader& file, int column, RecordSet& variables, GridCells& cells) {
        ColumnBlock block;
        block.key = file.ReadLine();
        block.width = ToInteger(file.ReadLine());
        block.small = ToInteger(file.ReadLine());
        block.name = file.ReadLine();
        if (column > MostTableColumns)
            throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
        widths_.push_back(block.width);
        cells.SetCols(column + 1);
        cells.SetText(0, column, block.name);
        if (block.key == CommentColumnKey)
            FindCommentRow(variables);
        else
            FindVariableNumber(variables, ToInteger(QStringView(block.key).mid(1)));
        if (!variables.NoMatch()) {
            const int row = variables.Integer(u"ValNum");
            LinkColumn(variables, column, block.width, block.small, block.name);
            if (runMode_ == run_mode::UserLibrary && row > 0)
                variableGrid_.SetText(row, 1, block.name);
        }
        definition_ += QStringLiteral(", Val%1 TEXT").arg(column);
    }

    void ReadRows(TextReader& file, GridCells& cells) {
        const int rows = ToInteger(ReadUpToEndMark(file));
        if (count_ < 1)
            throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
        cells.SetCols(count_ + 1);
        // A column whose block was not read has no width.
        widths_.resize(size_t(count_));
        RecordSet records = SelectTableRows(database_);
        for (int row = 0; row < rows; ++row) {
            if (progress_ && row % RowsBetweenProgress == 0)
                progress_(file.Position(), file.Size());
            ReadRow(ReadUpToEndMark(file), records);
        }
        while (!file.AtEnd() && !leftOver_)
            leftOver_ = !TrimBlanks(ReadUpToEndMark(file)).isEmpty();
    }

    void ReadRow(const QString& line, RecordSet& records) {
        const auto duplicates =
            runMode_ == run_mode::UserLibrary ? RowGroups::Duplicates::Shown : RowGroups::Duplicates::Hidden;
        CellRow* shown = rows_.Add(Field(line, 0, widths_.front()), duplicates);
        if (shown)
            shown->Reserve(count_, line.size());
        records.AddNew();
        qsizetype start = 0;
        for (int column = 1; column <= count_; ++column) {
            const int width = widths_[size_t(column - 1)];
            const QStringView value = Field(line, start, width);
            start += width;
            records.Set(column, value);
            if (shown)
                shown->Append(value);
        }
        records.Update();
        leftOver_ = leftOver_ || !TrimBlanks(QStringView(line).mid(qMin(start, line.size()))).isEmpty();
        if (shown)
            shown->Squeeze();
    }

    std::int16_t runMode_;
    Database& database_;
    GridCells& variableGrid_;
    const Progress& progress_;
    int count_ = 0;
    std::vector<std::int16_t> widths_;
    QString definition_ = QStringLiteral("ValID COUNTER");
    RowGroups rows_;
    // The file holds something behind its columns or rows.
    bool leftOver_ = false;
};

// A table of one empty row: the nominal column first, then a column for each variable.
void PrepareNewTable(Database& database, int variableCount, DimensionTable& table) {
    constexpr int newWidth = 10;
    table.rows = 1;
    table.cells.SetRows(2);
    table.cells.SetCols(variableCount + 2);
    RecordSet variables = SelectVariables(database);
    for (int row = 0; row <= variableCount; ++row) {
        FindVariableRow(variables, row);
        const QString name = row == 0 ? QStringLiteral("呼び") : variables.Text(u"ValName");
        LinkColumn(variables, row + 1, newWidth, 0, name);
        table.cells.SetText(0, row + 1, name);
    }
}

} // namespace

QString DimensionTablePath(const QString& symbolFile) {
    constexpr qsizetype extension = 4;
    if (symbolFile.size() < extension)
        throw RuntimeError(ErrorNumber::InvalidArgument).InFile(symbolFile);
    return symbolFile.chopped(extension) + QStringLiteral(".PMN");
}

DimensionTable LoadDimensionTable(const GlobalState& state, const WorkDatabase& work, int variableCount,
                                  GridCells& variableGrid, const Progress& progress) {
    const QString noTable = QStringLiteral("テーブルはありません");
    Database database = work.Open(Database::Access::Write);
    Transaction transaction(database);
    DimensionTable table;
    const QString path = DimensionTablePath(state.SymbolFile);
    if (!TableReader(state, database, variableGrid, progress).Read(path, table)) {
        const bool whole = table.whole;
        table = DimensionTable();
        table.whole = whole;
        if (state.RunMode == run_mode::UserLibrary && variableCount > 0)
            PrepareNewTable(database, variableCount, table);
        else
            table.cells.BecomeMessage(noTable);
    }
    transaction.Commit();
    return table;
}

} // namespace velmo
