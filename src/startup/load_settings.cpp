#include "startup/load_settings.h"

#include "platform/numbers.h"
#include "startup/hand_off_files.h"
#include "startup/settings_keys.h"

namespace velmo {

namespace {

QString WithBackslash(const QString& folder) {
    return folder.isEmpty() || folder.endsWith(u'\\') ? folder : folder + u'\\';
}

} // namespace

void LoadSettings(GlobalState& state, const SettingsStore& settings) {
    namespace keys = settings_keys;
    state.NextFlag = ToIntegerOr(settings.Get(keys::VlmNxt), 0);
    state.HomeDir = WithBackslash(settings.Get(keys::VlmHome));
    state.RunMode = ToIntegerOr(settings.Get(keys::VlmMode), run_mode::VariableInput);
    state.TempDir = WithBackslash(settings.Get(keys::VlmTemp));
    state.LibRoot = state.HomeDir;

    const PreviousAnswer answer = ReadPreviousAnswer(state.TempDir);
    state.UserLibrary = state.RunMode == run_mode::UserLibrary || answer.library == UserLibraryWord;

    if (state.NextFlag != 1 && state.RunMode != run_mode::ReturnFromMeasure)
        return;
    if (answer.symbol == NoSelection)
        return;
    state.SymbolFile = answer.symbol;
    state.LibraryDb =
        state.HomeDir + (state.UserLibrary ? QStringLiteral("VelmoUsr.mdb") : QStringLiteral("Velmo2.mdb"));
}

} // namespace velmo
