#include "cad_side/cad_window.h"
#include "platform/runtime_error.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QLibraryInfo>
#include <QTemporaryDir>
#include <QTranslator>

#include <cstdio>
#include <optional>

using namespace velmo;

namespace {

struct Options {
    QString program;
    QString home;
    // Empty for a temporary folder.
    QString session;
};

QString DefaultProgram() {
    const QString folder = QCoreApplication::applicationDirPath();
    const QString beside = folder + QStringLiteral("/velmo2");
    // In a build folder the programs lie in the folders of their sources.
    return QFileInfo::exists(beside) ? beside : QDir::cleanPath(folder + QStringLiteral("/../../src/velmo2"));
}

Options ReadOptions(const QStringList& arguments) {
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("CAD側の見本: VELMO2 を呼び出し、回答を受け取って図面に描きます。"));
    parser.addHelpOption();
    const QCommandLineOption program(QStringLiteral("program"), QStringLiteral("velmo2 のパス"),
                                     QStringLiteral("file"), DefaultProgram());
    const QCommandLineOption home(QStringLiteral("home"),
                                  QStringLiteral("見本のライブラリ (複写して使います)"),
                                  QStringLiteral("folder"), QStringLiteral(VELMO_DEMO_HOME));
    const QCommandLineOption session(
        QStringLiteral("session"),
        QStringLiteral("設定、回答、ライブラリの複写を置くフォルダー (省略時は一時フォルダー)"),
        QStringLiteral("folder"));
    parser.addOptions({program, home, session});
    parser.process(arguments);
    return {parser.value(program), parser.value(home), parser.value(session)};
}

} // namespace

int main(int argc, char** argv) {
    // Qt would take --session for its own option of that name, so it does not see the arguments.
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    int ownName = 1;
    const QApplication application(ownName, argv);
    QTranslator translator;
    if (translator.load(QStringLiteral("qtbase_ja"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(&translator);
    const Options options = ReadOptions(arguments);
    try {
        std::optional<QTemporaryDir> temporary;
        if (options.session.isEmpty())
            temporary.emplace();
        ProcessRunner runner(options.program);
        CadConversation conversation(
            CadSession(temporary ? temporary->path() : options.session, options.home), runner);
        CadWindow window(conversation);
        window.show();
        return QApplication::exec();
    } catch (const RuntimeError& error) {
        std::fputs((ErrorText(error) + u'\n').toLocal8Bit().constData(), stderr);
        return 1;
    }
}
