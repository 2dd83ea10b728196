// Plays a whole session on a library without anybody at the screen, and keeps pictures of what a user would
// have seen.

#include "acceptance/velmo_run.h"
#include "acceptance/velmo_session.h"

#include <QCommandLineParser>
#include <QDir>
#include <QGuiApplication>
#include <QTextStream>

using velmo::HarnessError;
using velmo::Item;
using velmo::VelmoRun;
using velmo::VelmoSession;

namespace {

class Player {
public:
    Player(VelmoRun& run, const QString& pictures) : run_(run), pictures_(pictures) {}

    // Clicks the category, or without one the first that has entries, as the tree shows them.
    void OpenCategory(const QStringList& path) {
        run_.WaitForWindow("VLM_MAIN");
        if (path.isEmpty()) {
            const QStringList roots = run_.Column("VlmTreeView", 0);
            for (const QString& root : roots) {
                if (FindEntries({root}))
                    return;
            }
            throw HarnessError("no category of the library has entries");
        }
        for (qsizetype depth = 1; depth < path.size(); ++depth)
            Unfold(path.first(depth));
        run_.Click("VlmTreeView", Item::Path(path));
    }

    void ClickEntry(const QString& name) {
        run_.Click("VlmPdfList", name.isEmpty() ? Item::Cell(0, 0) : Item::Named(name));
        Picture("browser");
        run_.ClickAction("Tbar_Open");
        run_.WaitForWindow("VLM_VEDT");
    }

    // Clicks a table row and chooses another value where the table offers several.
    void ChooseValues() {
        const QJsonObject table = run_.View("Vedt_FlexGrid");
        if (!table["columnHeaders"].toArray().isEmpty())
            run_.Click("Vedt_FlexGrid", Item::Cell(qMin(1, table["rows"].toInt() - 1), 0));
        const int variables = run_.View("Vedt_NowFGrid")["rows"].toInt();
        for (int row = 0; row < variables; ++row) {
            run_.Click("Vedt_NowFGrid", Item::Cell(row, 1));
            if (!run_.IsVisible("CurCmb"))
                continue;
            const QStringList values = run_.ComboItems("CurCmb");
            if (values.size() > 1) {
                run_.ChooseInCombo("CurCmb", values.last());
                break;
            }
        }
        Picture("variables");
    }

    int Confirm() {
        run_.Click("Vedt_OKBtn");
        return run_.WaitForEnd();
    }

private:
    bool FindEntries(const QStringList& path) {
        run_.Click("VlmTreeView", Item::Path(path));
        if (!run_.Texts("VlmPdfList").isEmpty())
            return true;
        Unfold(path);
        const QStringList below = Children(path);
        return std::any_of(below.begin(), below.end(),
                           [&](const QString& child) { return FindEntries(path + QStringList{child}); });
    }

    void Unfold(const QStringList& path) {
        const QJsonObject item = run_.Describe("VlmTreeView", Item::Path(path));
        if (item["hasChildren"].toBool() && !item["expanded"].toBool())
            run_.ClickBranch("VlmTreeView", Item::Path(path));
    }

    QStringList Children(const QStringList& path) {
        QJsonArray items = run_.Do({{"do", "tree"}, {"name", "VlmTreeView"}}).toArray();
        for (const QString& text : path) {
            for (const QJsonValue item : std::as_const(items)) {
                if (item["text"].toString() == text) {
                    items = item["items"].toArray();
                    break;
                }
            }
        }
        QStringList texts;
        for (const QJsonValue item : std::as_const(items))
            texts.append(item["text"].toString());
        return texts;
    }

    void Picture(const QString& name) { run_.SavePicture({}, pictures_ + '/' + name + ".png"); }

    VelmoRun& run_;
    QString pictures_;
};

void PrintAnswer(const VelmoSession& session, const QString& name, QTextStream& out) {
    out << name << ":\n";
    const std::optional<QStringList> lines = session.ReadExchangeLines(name);
    for (const QString& line : lines.value_or(QStringList{"-"}))
        out << "  " << line << '\n';
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        "Plays a whole session: open a category, choose an entry and values, confirm.");
    parser.addHelpOption();
    parser.addOption({"program", "The program.", "file"});
    parser.addOption({"plugins", "The folder with generic/ and the test driver in it.", "folder"});
    parser.addOption({"home", "The library home; the program adds its databases.", "folder"});
    parser.addOption({"answers", "Where the settings and the answers go.", "folder"});
    parser.addOption({"pictures", "Where the pictures go.", "folder"});
    parser.addOption({"category", "The category's names from the top, separated by slashes.", "path"});
    parser.addOption({"entry", "The entry of the list.", "name"});
    parser.process(application);
    QTextStream out(stdout);
    QTextStream errors(stderr);
    for (const char* needed : {"program", "plugins", "home", "answers", "pictures"}) {
        if (!parser.isSet(needed)) {
            errors << "--" << needed << " is missing\n";
            return 2;
        }
    }
    try {
        QDir().mkpath(parser.value("pictures"));
        VelmoSession session(parser.value("home"), parser.value("answers"));
        session.Set("VlmMainWidth", "12000");
        session.Set("VlmMainHeight", "9000");
        VelmoRun run(session.LaunchOf(parser.value("program"), parser.value("plugins")));
        Player player(run, QDir(parser.value("pictures")).absolutePath());
        player.OpenCategory(parser.value("category").split('/', Qt::SkipEmptyParts));
        player.ClickEntry(parser.value("entry"));
        player.ChooseValues();
        const int status = player.Confirm();
        PrintAnswer(session, "velmo.ret", out);
        PrintAnswer(session, "velmo.ret2", out);
        return status;
    } catch (const HarnessError& error) {
        errors << error.what() << '\n';
        return 1;
    }
}
