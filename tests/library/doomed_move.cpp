#include "library/symbol_file_move.h"
#include "platform/runtime_error.h"
#include "support/counted_calls.h"

#include <QCoreApplication>

#include <cstdio>

// Moves the files of all entries of category 2 of a user library to the folder N beside it, whatever is there
// already, and meets a fate at one of its calls of the file system. The calls that it survives are told line
// by line. Exit status: 0 moved, 1 an error.
int main(int argc, char** argv) {
    using namespace velmo;
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    GlobalState state;
    state.LibRoot = arguments.at(1);
    state.LibraryDb = state.LibRoot + QStringLiteral("VelmoUsr.mdb");
    state.PickedDir = state.LibRoot + QStringLiteral("N");
    state.CurFolderID = 2;
    try {
        const std::vector<ContentRow> rows = FolderContent(state);
        CountCalls(arguments.at(3).toLong(),
                   arguments.at(2) == QStringLiteral("kill") ? CallFate::Killed : CallFate::Failed);
        MoveSymbolFiles(state, rows, {[](const QString&) {}, [](const QString&) { return true; }, {}});
        for (const std::string& call : CountedCalls())
            std::puts(call.c_str());
        return 0;
    } catch (const RuntimeError&) {
        return 1;
    }
}
