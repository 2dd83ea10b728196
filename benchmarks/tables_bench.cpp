#include "benchmarks/child.h"
#include "benchmarks/lazy.h"
#include "benchmarks/ratio_table.h"
#include "benchmarks/ratios.h"
#include "benchmarks/table_symbol.h"
#include "platform/files.h"
#include "platform/numbers.h"
#include "platform/text_file.h"
#include "variables/vlm_vedt.h"
#include "variables/work_database.h"

#include <SQLiteCpp/SQLiteCpp.h>

namespace velmo::bench {

namespace {

// The header line, the count, five lines for each column and the row count stand before the rows.
constexpr int LinesBeforeRows = 3 + 5 * Columns;

double OpenSymbol(const Symbol& symbol, std::int16_t mode) {
    GlobalState state = symbol.State(mode);
    SettingsStore settings(symbol.Folder().Native("velmo.ini"));
    MessageBoxes messages;
    VLM_VEDT window(state, settings, messages);
    return Seconds([&] { window.Load(); });
}

// Decodes the same file and inserts the same rows with one prepared statement in one transaction.
double InsertBare(const Symbol& symbol) {
    const QString path = symbol.Folder().Path("bare.mdb");
    DeleteFileIfAny(path);
    return Seconds([&] {
        SQLite::Database database(NativePath(path).toStdString(),
                                  SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
        database.exec("PRAGMA journal_mode=MEMORY");
        database.exec("PRAGMA synchronous=OFF");
        std::string columns;
        std::string marks;
        for (int i = 1; i <= Columns; ++i) {
            columns += ", Val" + std::to_string(i) + " TEXT";
            marks += i == 1 ? "?" : ",?";
        }
        database.exec("CREATE TABLE PmnTable (ValID INTEGER PRIMARY KEY AUTOINCREMENT" + columns + ")");
        SQLite::Transaction transaction(database);
        SQLite::Statement insert(database, "INSERT INTO PmnTable VALUES (NULL," + marks + ")");
        TextReader reader(symbol.Folder().Path("S.PMN"));
        for (int line = 0; line < LinesBeforeRows; ++line)
            reader.ReadLine();
        while (!reader.AtEnd()) {
            const QString line = reader.ReadLine();
            for (int i = 0; i < Columns; ++i)
                insert.bind(
                    i + 1,
                    TrimBlanks(QStringView(line).mid(qsizetype(i) * Width, Width)).toUtf8().toStdString());
            insert.exec();
            insert.reset();
        }
        transaction.commit();
    });
}

QString ModeName(std::int16_t mode) {
    return mode == run_mode::UserLibrary ? QStringLiteral(", mode 3") : QString();
}

double ClickRow(VLM_VEDT& window) {
    auto* table = window.findChild<Grid*>(QStringLiteral("Vedt_FlexGrid"));
    return Seconds([&] { Q_EMIT table->CellClicked(2, 1); });
}

double LookUpBare(const GlobalState& state, int columns) {
    Database database(WorkDatabase(state.TempDir).Path(), Database::Access::Read);
    const auto prepared = database.Prepare(QStringLiteral("SELECT * FROM NowTable WHERE ValName=?"));
    SQLite::Statement& select = prepared->statement;
    return Seconds([&] {
        int found = 0;
        for (int i = 1; i <= columns; ++i) {
            select.bind(1, "name" + std::to_string(i));
            if (select.executeStep())
                found += select.getColumn(0).getInt() > 0;
            select.reset();
        }
        if (found != columns)
            qFatal("a variable was not found");
    });
}

} // namespace

void AddTableLoading() {
    struct Case {
        const char* name;
        Nominals nominals;
    };
    const auto symbolWith = [](Nominals nominals) {
        return Lazy<Symbol>(
            [nominals] { return std::make_unique<Symbol>(Variables, Columns, Rows, nominals); });
    };
    const Lazy<Symbol> first = symbolWith(Nominals::Different);
    for (const std::int16_t mode : {run_mode::VariableInput, run_mode::UserLibrary}) {
        for (const auto& [name, nominals] :
             {Case{"different", Nominals::Different}, Case{"alike", Nominals::Alike},
              Case{"alternating", Nominals::Alternating}}) {
            const Lazy<Symbol> symbol = nominals == Nominals::Different ? first : symbolWith(nominals);
            const std::string item = std::string(name) + ModeName(mode).toStdString();
            AddRatio(
                "1 open 32,767 x 30, rows " + item, 3, [symbol, mode] { return OpenSymbol(*symbol, mode); },
                [symbol] { return InsertBare(*symbol); });
            if (nominals != Nominals::Different) {
                // Rows of one kind must not cost more than rows of another: compared both ways.
                AddRatio(
                    "1 rows " + item + " to different", 1.5,
                    [symbol, mode] { return OpenSymbol(*symbol, mode); },
                    [first, mode] { return OpenSymbol(*first, mode); });
                AddRatio(
                    "1 rows different to " + item, 1.5, [first, mode] { return OpenSymbol(*first, mode); },
                    [symbol, mode] { return OpenSymbol(*symbol, mode); });
            }
        }
    }
    AddAmounts(
        "7 peak memory of opening it, to the table file", 10,
        [first] {
            return double(RunToFirstPaint(Velmo2Program, first->Folder().Native("config"), "VLM_VEDT").peak -
                          RunToFirstPaint(PlainWindowProgram, {}, "plain").peak);
        },
        [first] { return double(first->TableBytes()); });
}

void AddRowClick() {
    struct Opened {
        Symbol symbol{300, 300, 50, Nominals::Different};
        GlobalState state = symbol.State(run_mode::VariableInput);
        SettingsStore settings{symbol.Folder().Native("velmo.ini")};
        MessageBoxes messages;
        VLM_VEDT window{state, settings, messages};
    };
    const Lazy<Opened> opened([] {
        auto made = std::make_unique<Opened>();
        made->window.Load();
        return made;
    });
    AddRatio(
        "2 click a row, 300 variables in 300 columns", 3, [opened] { return ClickRow(opened->window); },
        [opened] { return LookUpBare(opened->state, 300); });
}

} // namespace velmo::bench
