#include "move_run.h"

namespace velmo {

void MoveRunTest::SetUp() {
    LibraryRunTest::SetUp();
    MakeLibrary("INSERT INTO FolderTable (ParentID, FolderName, SLDFileName) VALUES (1, '部品', '');"
                "INSERT INTO PDFFileTable (FolderID, PDFName, PDFFileName, SLDFileName) VALUES "
                "(5, 'ポンプ', 'OLD\\PUMP.PDF', 'OLD\\PUMP.SLD'),"
                "(5, '弁', 'OLD\\VALVE.PDF', 'OLD\\VALVE.SLD');");
    for (const char* name : {"PUMP.PDF", "PUMP.SLD", "VALVE.PDF", "VALVE.SLD"})
        session_.WriteHome(QString("OLD\\") + name, name);
    session_.WriteHome("NEW\\OTHER.TXT", "other");
    session_.WriteHome("NEW\\DEEP\\OTHER.TXT", "other");
    StartWith("VLM_MAIN");
}

void MoveRunTest::OpenTool(const QStringList& category) {
    ChooseOnCategory(category, "VlmMnuPopTool");
    Run().WaitForWindow("Vlm_Tool");
}

QStringList MoveRunTest::SelectedRows() {
    QStringList rows;
    const QJsonObject view = Run().View("SelList");
    const QJsonArray selection = view["selection"].toArray();
    for (const QJsonValue cell : selection) {
        if (cell[1].toInt() == 0)
            rows.append(view["texts"][cell[0].toInt()][0].toString());
    }
    return rows;
}

void MoveRunTest::MoveTo(const QString& button, const QStringList& target) {
    Run().Click(button);
    Run().WaitForWindow("Vlm_SelDir");
    Unfold(target, "VlmDirTV");
    Run().Click("VlmDirTV", Item::Path(target));
    Run().Click("OkBtn");
}

} // namespace velmo
