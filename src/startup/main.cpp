#include "library/vlm_main.h"
#include "platform/busy_cursor.h"
#include "platform/guarded.h"
#include "platform/guarded_application.h"
#include "platform/velmo_style.h"
#include "startup/hand_off_files.h"
#include "startup/load_settings.h"
#include "variables/vlm_vedt.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QTranslator>

namespace velmo {

namespace {

// The run ended with a document. An answer that cannot be written ends the program.
void AnswerDocument(const GlobalState& state) {
    EndProgramOnError([&] { WriteDocument(state.TempDir, state.HomeDir + state.PickedPdf); });
}

void ShowVariableWindow(GlobalState& state, SettingsStore& settings, MessageBoxes& messages,
                        VLM_MAIN* browser) {
    VLM_VEDT window(state, settings, messages);
    if (browser)
        QObject::connect(&window, &VLM_VEDT::Cancelled, browser, &VLM_MAIN::ForgetOpened);
    window.Load();
    const std::int16_t mode = state.RunMode;
    window.ShowModal();
    if (state.PickedPdf.isEmpty())
        return;
    AnswerDocument(state);
    if (!browser)
        return;
    // The browser remembers its place as after any symbol that was opened, under the keys of its own mode.
    state.RunMode = mode;
    browser->close();
}

// One window is shown; when it closes, the program ends.
void Main(GlobalState& state, SettingsStore& settings, MessageBoxes& messages) {
    EndProgramOnError([&] { LoadSettings(state, settings); });
    if (!state.SymbolFile.isEmpty()) {
        ShowVariableWindow(state, settings, messages, nullptr);
        return;
    }
    VLM_MAIN browser(state, settings, messages,
                     [&](VLM_MAIN& self) { ShowVariableWindow(state, settings, messages, &self); });
    if (browser.Load())
        browser.ShowModal();
}

} // namespace

} // namespace velmo

int main(int argc, char** argv) {
    velmo::MessageBoxes messages;
    velmo::GuardedApplication application(argc, argv, messages);
    // Only now is the desktop's own style known.
    QApplication::setStyle(new velmo::VelmoStyle);
    // The windows' own loops end the program, not the last window that happens to be visible.
    QApplication::setQuitOnLastWindowClosed(false);
    QTranslator standardButtons;
    if (standardButtons.load(QStringLiteral("qtbase_ja"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(&standardButtons);

    const velmo::BusyCursor busyCursor;
    velmo::SettingsStore settings;
    velmo::GlobalState state;
    velmo::RunGuarded(messages, nullptr, [&] { velmo::Main(state, settings, messages); });
    return messages.ExitStatus();
}
