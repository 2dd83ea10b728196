#include "platform/runtime_error.h"
#include "support/counted_calls.h"
#include "variables/dimension_table.h"
#include "variables/symbol_definition.h"
#include "variables/table_file.h"

#include <QCoreApplication>

#include <cstdio>

namespace {

void TellCalls() {
    for (const std::string& call : velmo::CountedCalls())
        std::puts(call.c_str());
}

} // namespace

// Saves a symbol's table with 99 in its first cell, and meets a fate at one of its calls of the file system.
// The calls that it survives are told line by line. Exit status: 0 saved, 1 an error, 2 no work file.
int main(int argc, char** argv) {
    using namespace velmo;
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    GlobalState state;
    state.RunMode = run_mode::UserLibrary;
    state.TempDir = arguments.at(1);
    state.SymbolFile = arguments.at(2);
    WorkDatabase work(state.TempDir);
    try {
        GridCells variables{GridCells::FirstColumn::Texts};
        variables.SetCols(2);
        const std::int16_t count = ReadSymbolDefinition(state, work, variables, [](const QString&) {});
        DimensionTable table = LoadDimensionTable(state, work, count, variables);
        table.cells.SetText(1, 1, u"99");
        bool workFile = true;
        CountCalls(arguments.at(4).toLong(),
                   arguments.at(3) == QStringLiteral("kill") ? CallFate::Killed : CallFate::Failed);
        const bool saved =
            SaveDimensionTable(state, work, table.cells, [&](const QString&) { workFile = false; });
        TellCalls();
        return saved && workFile ? 0 : 2;
    } catch (const RuntimeError&) {
        TellCalls();
        return 1;
    }
}
