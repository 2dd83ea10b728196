#include "library/library_files.h"
#include "platform/runtime_error.h"
#include "support/counted_calls.h"

#include <QCoreApplication>

// Opens both libraries of a home folder as a first start does, and may be killed at one of its calls of the
// file system. Exit status: 0 opened, 1 an error, 2 something was asked.
int main(int argc, char** argv) {
    using namespace velmo;
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    SettingsStore settings(arguments.at(2));
    GlobalState state;
    state.HomeDir = arguments.at(1);
    state.UserLibrary = true;
    state.RunMode = run_mode::UserLibrary;
    bool asked = false;
    LibraryCallbacks callbacks;
    callbacks.ask = [&asked](const QString&) { return !(asked = true); };
    try {
        CountCalls(arguments.at(3).toLong(), CallFate::Killed);
        OpenLibraries(state, settings, callbacks);
        return asked ? 2 : 0;
    } catch (const RuntimeError&) {
        return 1;
    }
}
