// Keeps a picture of every window of the program, as a user sees it at a screen scale and in a scheme.

#include "window_tour.h"

#include <QCommandLineParser>
#include <QDir>
#include <QGuiApplication>
#include <QTextStream>

using namespace velmo;

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOption({"program", "The program.", "file"});
    parser.addOption({"plugins", "The folder with generic/ and the driver in it.", "folder"});
    parser.addOption({"home", "A library home of its own.", "folder"});
    parser.addOption({"scale", "Screen pixels for a logical one.", "number", "1"});
    parser.addOption({"dark", "The colours of a dark desktop."});
    parser.addOption({"font-size", "The desktop's font size.", "points"});
    parser.addOption({"pictures", "Where the pictures go.", "folder"});
    parser.process(application);
    try {
        WindowTour(parser.value("program"), parser.value("plugins"), parser.value("home"),
                   {parser.value("scale"), parser.isSet("dark"), parser.value("font-size")},
                   parser.value("pictures"))
            .Run();
        return 0;
    } catch (const HarnessError& error) {
        QTextStream(stderr) << error.what() << '\n';
        return 1;
    }
}
