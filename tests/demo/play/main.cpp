// Plays the CAD side and the real program together without anybody at the screen, and keeps pictures of what
// a user would have seen.

#include "cad_play.h"
#include "platform/runtime_error.h"
#include "platform/settings_store.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QTemporaryDir>
#include <QTextStream>

using namespace velmo;

namespace {

// Windows of a size that shows all there is to see (twips).
void PrepareWindowSize(const CadSession& session) {
    QDir().mkpath(QFileInfo(session.SettingsFile()).path());
    SettingsStore store(session.SettingsFile());
    store.Save(QStringLiteral("VlmMainWidth"), 13500);
    store.Save(QStringLiteral("VlmMainHeight"), 9600);
    store.Flush();
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Qt would take --session for its own option of that name, so it does not see the arguments.
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    int ownName = 1;
    const QApplication application(ownName, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOption({"program", "The program.", "file"});
    parser.addOption({"plugins", "The folder with generic/ and the driver in it.", "folder"});
    parser.addOption({"home", "The library home; the play works on a copy.", "folder"});
    parser.addOption(
        {"session", "Where the copy, settings and answers go; a temporary folder by default.", "folder"});
    parser.addOption({"pictures", "Where the pictures go.", "folder"});
    parser.process(arguments);
    QTextStream out(stdout);
    QTextStream errors(stderr);
    for (const char* needed : {"program", "plugins", "home", "pictures"}) {
        if (!parser.isSet(needed)) {
            errors << "--" << needed << " is missing\n";
            return 2;
        }
    }
    try {
        const QString pictures = QDir(parser.value("pictures")).absolutePath();
        QDir().mkpath(pictures);
        PlayedRunner runner(parser.value("program"), parser.value("plugins"));
        const QTemporaryDir temporary;
        const QString session = parser.isSet("session") ? parser.value("session") : temporary.path();
        CadConversation conversation(CadSession(session, parser.value("home")), runner);
        PrepareWindowSize(conversation.Session());
        QObject::connect(&conversation, &CadConversation::Logged,
                         [&out](const QString& line) { out << line << Qt::endl; });
        CadWindow window(conversation);
        window.show();
        const PlayChoice choice = {{"トルヴィク", "ねじ・締結部品", "六角ボルト"},
                                   "六角ボルト 部品等級A JIS B 1180",
                                   "M20",
                                   "M12",
                                   "V5(L)"};
        CadPlay(window, runner, choice, pictures).Run();
        out << pictures << Qt::endl;
        return 0;
    } catch (const HarnessError& error) {
        errors << error.what() << '\n';
    } catch (const RuntimeError& error) {
        errors << ErrorText(error) << '\n';
    }
    return 1;
}
