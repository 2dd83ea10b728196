#include "window_tour.h"

#include <QDir>

namespace velmo {

namespace {

const QString Tree = QStringLiteral("VlmTreeView");
const QString List = QStringLiteral("VlmPdfList");
const QStringList Screws{QStringLiteral("トルヴィク"), QStringLiteral("ねじ・締結部品")};
const QStringList HexBolts = Screws + QStringList{QStringLiteral("六角ボルト")};
const QString HexBolt = QStringLiteral("六角ボルト 部品等級A JIS B 1180");

} // namespace

WindowTour::WindowTour(QString program, QString pluginFolder, QString home, PictureStyle style,
                       QString pictures)
    : program_(std::move(program)),
      pluginFolder_(std::move(pluginFolder)),
      style_(std::move(style)),
      pictures_(std::move(pictures)),
      session_(home, QFileInfo(home).path() + QStringLiteral("/session")) {
    QDir().mkpath(pictures_);
    // A size that shows all there is to see (twips).
    session_.Set("VlmMainWidth", "13500");
    session_.Set("VlmMainHeight", "9600");
}

void WindowTour::Start(const char* mode, const std::function<void(VelmoRun&)>& hands) {
    session_.Set("VlmMode", mode);
    Launch launch = session_.LaunchOf(program_, pluginFolder_);
    launch.environment.insert("QT_QPA_PLATFORM", "offscreen");
    // The letters of a Japanese desktop.
    launch.environment.insert("FC_LANG", "ja");
    launch.environment.insert("QT_SCALE_FACTOR", style_.scale);
    if (style_.dark)
        launch.environment.insert("VELMO_TEST_COLOURS", "dark");
    launch.environment.insert("VELMO_TEST_FONT_SIZE", style_.fontSize);
    VelmoRun run(launch);
    run.WaitForWindow("VLM_MAIN");
    hands(run);
    if (run.WaitForEnd() != 0)
        throw HarnessError("the program did not end well");
}

void WindowTour::Run() {
    Start("2", [this](VelmoRun& run) {
        ShowBrowser(run);
        ShowEntryEditor(run);
        ShowMoveTool(run);
        ShowSearch(run);
        ShowVariables(run);
    });
    Start("3", [this](VelmoRun& run) { ShowTableEditor(run); });
}

void WindowTour::ChooseCategory(VelmoRun& run, const QStringList& path) {
    for (qsizetype depth = 1; depth < path.size(); ++depth) {
        const Item item = Item::Path(path.first(depth));
        if (!run.Describe(Tree, item)["expanded"].toBool())
            run.ClickBranch(Tree, item);
    }
    run.Click(Tree, Item::Path(path));
}

void WindowTour::Picture(VelmoRun& run, const QString& name, const QString& control) {
    run.SavePicture(control, QStringLiteral("%1/%2.png").arg(pictures_, name));
}

void WindowTour::ShowBrowser(VelmoRun& run) {
    // The screen of the platform without one is small.
    run.ResizeWindow("VLM_MAIN", {900, 640});
    Picture(run, "browser-start");
    ChooseCategory(run, HexBolts);
    Picture(run, "browser-category");
    run.Click(List, Item::Named(HexBolt));
    Picture(run, "browser");
    run.RightClick(Tree, Item::Path(HexBolts));
    run.WaitFor("the pop-up", [&run] { return run.IsVisible("VlmMnuPop"); });
    Picture(run, "browser-menu", "VlmMnuPop");
    run.Press("Escape");
    run.Press("Delete");
    run.WaitForMessage();
    Picture(run, "message");
    run.AnswerOk();
    run.ResizeWindow("VLM_MAIN", {200, 133});
    Picture(run, "browser-smallest");
    run.ResizeWindow("VLM_MAIN", {900, 640});
}

void WindowTour::ShowEntryEditor(VelmoRun& run) {
    run.Click(List, Item::Named(HexBolt));
    run.Press("F2");
    run.WaitForWindow("Vlm_TBlEdt");
    Picture(run, "entry-editor");
    run.Click("Srch4");
    run.WaitForWindow("Vlm_FileFrm");
    const QStringList folder{"トルヴィク", "SMB", "BOLT"};
    run.ClickBranch("VlmFileTV", Item::Path(folder.first(2)));
    run.Click("VlmFileTV", Item::Path(folder));
    run.Click("Vlm_File", Item::Cell(0, 0));
    Picture(run, "file-picker");
    run.Click("Vlm_FilCanBtn");
    run.Click("Can_Btn");
    run.Click(Tree, Item::Path(HexBolts));
    run.Press("Insert");
    run.WaitForWindow("Vlm_TBlEdt");
    Picture(run, "category-editor");
    run.Click("Can_Btn");
}

void WindowTour::ShowMoveTool(VelmoRun& run) {
    const auto openTool = [&run](const QStringList& category) {
        run.RightClick(Tree, Item::Path(category));
        run.ClickAction("VlmMnuPopTool");
        run.WaitForWindow("Vlm_Tool");
        run.Click("AllBtn");
    };
    openTool(HexBolts);
    Picture(run, "move-tool");
    run.Click("FilMovBtn");
    run.WaitForWindow("Vlm_SelDir");
    run.Click("VlmDirTV", Item::Path({"トルヴィク", "SMB"}));
    Picture(run, "folder-picker-disk");
    run.Click("CanBtn");
    run.Click("FolDerMovBtn");
    run.WaitForWindow("Vlm_SelDir");
    run.ClickBranch("VlmDirTV", Item::Path(Screws));
    run.Click("VlmDirTV", Item::Path(HexBolts));
    Picture(run, "folder-picker-categories");
    run.Press("Escape");
    run.Press("Escape");
    openTool(Screws);
    Picture(run, "move-tool-folders");
    run.Press("Escape");
}

void WindowTour::ShowSearch(VelmoRun& run) {
    run.Press("Ctrl+F");
    run.Type("ぼると");
    run.Press("Down");
    Picture(run, "search");
    run.Press("Escape");
}

void WindowTour::ShowVariables(VelmoRun& run) {
    ChooseCategory(run, HexBolts);
    run.DoubleClick(List, Item::Named(HexBolt));
    run.WaitForWindow("VLM_VEDT");
    run.Click("Vedt_FlexGrid", Item::Named("M12"));
    Picture(run, "variables");
    run.Click("Vedt_NowFGrid", Item::Cell(0, 1));
    Picture(run, "variables-list");
    run.Press("Escape");
    run.Click("Vedt_OKBtn");
}

void WindowTour::ShowTableEditor(VelmoRun& run) {
    ChooseCategory(run, HexBolts);
    run.Click(List, Item::Named(HexBolt));
    run.ClickAction("Tbar_Open");
    run.WaitForWindow("VLM_VEDT");
    run.Click("Vedt_FlexGrid", Item::Cell(2, 1));
    run.Press("Ctrl+F");
    run.Type("M12");
    Picture(run, "table-editing");
    run.Press("Escape");
    run.RightClickColumnHeader("Vedt_FlexGrid", 1);
    Picture(run, "table-editing-menu", "VedtHdrPop");
    run.Press("Escape");
    run.Click("VEdt_CanBtn");
    run.ClickAction("Tbar_Cancel");
}

} // namespace velmo
