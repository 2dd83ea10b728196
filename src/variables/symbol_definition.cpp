#include "variables/symbol_definition.h"

#include "platform/numbers.h"
#include "platform/runtime_error.h"
#include "platform/text_file.h"

namespace velmo {

namespace {

const QString SectionStart = QStringLiteral("$VAR");
const QString SectionEnd = QStringLiteral("$GEO");
const QString Call = QStringLiteral("PRO(");

// The text from first up to, but not including, end.
QStringView Between(QStringView text, qsizetype first, qsizetype end) {
    if (end < first)
        throw RuntimeError(ErrorNumber::InvalidArgument);
    return text.sliced(first, end - first);
}

// A piece of the line and where the search for the next one goes on; a comma of -1 stands for none.
struct NamePart {
    QStringView name;
    qsizetype comma;
};

NamePart ParseName(QStringView line, qsizetype call) {
    const qsizetype comma = line.indexOf(u',', call);
    const qsizetype open = line.indexOf(u'"', call);
    if (open < 0)
        return {{}, comma};
    const qsizetype close = line.indexOf(u'"', open + 1);
    if (close < 0)
        return {Between(line, open + 1, comma), comma};
    return {Between(line, open + 1, close), line.indexOf(u',', close)};
}

QStringView ParseValue(QStringView line, qsizetype comma) {
    if (comma < 0)
        return {};
    const qsizetype close = line.indexOf(u')', comma);
    return Between(line, comma + 1, close < 0 ? line.size() : close);
}

QString Shortened(const QString& line) {
    constexpr qsizetype longest = 60;
    return line.size() <= longest ? line : line.first(longest) + QStringLiteral("…");
}

class DefinitionReader {
public:
    DefinitionReader(const GlobalState& state, GridCells& grid)
        : file_(state.SymbolFile), tableEditing_(state.RunMode == run_mode::UserLibrary), grid_(grid) {}

    std::int16_t ReadInto(Database& database) {
        Transaction transaction(database);
        {
            RecordSet variables = SelectVariables(database);
            Add(variables, 0, {}, 0);
            if (FindSection())
                ReadSection(variables);
        }
        transaction.Commit();
        return count_;
    }

private:
    bool FindSection() {
        while (!file_.AtEnd()) {
            if (file_.ReadLine() == SectionStart)
                return true;
        }
        return false;
    }

    void ReadSection(RecordSet& variables) {
        while (!file_.AtEnd()) {
            const QString line = file_.ReadLine();
            if (line == SectionEnd)
                return;
            try {
                if (const std::optional<VariableLine> variable = ParseVariableLine(line))
                    AddVariable(variables, *variable);
            } catch (const RuntimeError& error) {
                throw RuntimeError(error.Number(), Shortened(line))
                    .InFile(file_.Path())
                    .AtLine(file_.LineNumber());
            }
        }
    }

    void AddVariable(RecordSet& variables, const VariableLine& variable) {
        if (count_ == MostVariables)
            throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
        const int row = ++count_;
        grid_.SetRows(row + 1);
        const QString label = QStringLiteral("V%1").arg(variable.number);
        grid_.SetText(row, 0, tableEditing_ ? label : label + u'(' + variable.name + u')');
        grid_.SetText(row, 1, tableEditing_ ? variable.name : variable.value);
        constexpr int newWidth = 10;
        Add(variables, row, variable, newWidth);
    }

    static void Add(RecordSet& variables, int row, const VariableLine& variable, int width) {
        variables.AddNew();
        variables.SetNumber(u"ValNum", row);
        variables.SetNumber(u"ValNo", variable.number);
        variables.Set(u"ValName", variable.name);
        variables.SetNumber(u"ValDis", 0);
        variables.SetNumber(u"ValLen", width);
        variables.SetNumber(u"ValSmall", 0);
        variables.Update();
    }

    TextReader file_;
    bool tableEditing_;
    GridCells& grid_;
    std::int16_t count_ = 0;
};

} // namespace

std::optional<VariableLine> ParseVariableLine(QStringView line) {
    if (!line.startsWith(u'V'))
        return std::nullopt;
    const qsizetype equals = line.indexOf(u'=');
    VariableLine variable;
    variable.number = ToInteger(Between(line, 1, equals));
    const qsizetype call = line.indexOf(Call, equals);
    if (call < 0)
        return std::nullopt;
    const NamePart part = ParseName(line, call);
    variable.name = part.name.toString();
    variable.value = ParseValue(line, part.comma).toString();
    return variable;
}

std::int16_t ReadSymbolDefinition(const GlobalState& state, WorkDatabase& work, GridCells& variableGrid,
                                  const Inform& inform) {
    DefinitionReader reader(state, variableGrid);
    work.CreateWorkDatabase(inform);
    Database database = work.Open(Database::Access::Write);
    const std::int16_t count = reader.ReadInto(database);
    if (count == 0)
        variableGrid.BecomeMessage(QStringLiteral("変数がありません"));
    return count;
}

} // namespace velmo
