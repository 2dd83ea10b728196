#include "library_run.h"

namespace velmo {

namespace {

QStringList WayToSelected(const QJsonArray& items) {
    for (const QJsonValue item : items) {
        const QString text = item["text"].toString();
        if (item["selected"].toBool())
            return {text};
        const QStringList below = WayToSelected(item["items"].toArray());
        if (!below.isEmpty())
            return QStringList(text) + below;
    }
    return {};
}

} // namespace

void LibraryRunTest::MakeLibrary(const QString& statements) {
    StartWith("VLM_MAIN");
    Run().ClickAction("Tbar_Cancel");
    EXPECT_EQ(End(), 0);
    if (!statements.isEmpty())
        Execute(statements);
}

// The answer to a question comes after all that was done before.
void LibraryRunTest::AwaitIdle() {
    if (!Run().HasEnded())
        Run().Windows();
}

void LibraryRunTest::Execute(const QString& statements) {
    AwaitIdle();
    session_.ExecuteHome(library_, statements);
}

QStringList LibraryRunTest::Rows(const QString& query) {
    AwaitIdle();
    QStringList rows;
    const QList<QStringList> found = session_.QueryHome(library_, query);
    for (const QStringList& row : found)
        rows.append(row.join('|'));
    return rows;
}

QStringList LibraryRunTest::Categories() {
    return Rows("SELECT ID, ParentID, FolderName, SLDFileName FROM FolderTable ORDER BY ID");
}

QStringList LibraryRunTest::Entries() {
    return Rows("SELECT ID, FolderID, PDFName, PDFFileName, SLDFileName FROM PDFFileTable ORDER BY ID");
}

void LibraryRunTest::Unfold(const QStringList& path, const QString& tree) {
    for (qsizetype depth = 1; depth < path.size(); ++depth) {
        const Item above = Item::Path(path.first(depth));
        if (!Run().Describe(tree, above)["expanded"].toBool())
            Run().ClickBranch(tree, above);
    }
}

void LibraryRunTest::OpenPopUpOnCategory(const QStringList& path) {
    Unfold(path);
    Run().RightClick("VlmTreeView", Item::Path(path));
    Run().WaitForWindow("VlmMnuPop");
}

void LibraryRunTest::OpenPopUpOnEntry(const QString& entry) {
    Run().RightClick("VlmPdfList", Item::Named(entry));
    Run().WaitForWindow("VlmMnuPop");
}

void LibraryRunTest::OpenPopUpOnEmptyPart() {
    Run().RightClickEmpty("VlmPdfList");
    Run().WaitForWindow("VlmMnuPop");
}

void LibraryRunTest::ChooseOnCategory(const QStringList& path, const QString& entry) {
    OpenPopUpOnCategory(path);
    Run().ClickAction(entry);
}

void LibraryRunTest::ChooseOnEntry(const QString& name, const QString& entry) {
    OpenPopUpOnEntry(name);
    Run().ClickAction(entry);
}

void LibraryRunTest::ChooseOnEmptyPart(const QString& entry) {
    OpenPopUpOnEmptyPart();
    Run().ClickAction(entry);
}

void LibraryRunTest::LeavePopUp() {
    Run().Press("Escape");
    Run().WaitUntilClosed("VlmMnuPop");
}

QString LibraryRunTest::SelectedCategory() {
    return WayToSelected(Run().Do({{"do", "tree"}, {"name", "VlmTreeView"}}).toArray()).join(" > ");
}

QString LibraryRunTest::SelectedEntry() {
    const QJsonObject view = Run().View("VlmPdfList");
    const QJsonArray selection = view["selection"].toArray();
    return selection.isEmpty() ? QString() : view["texts"][selection[0][0].toInt()][0].toString();
}

void LibraryRunTest::Fill(const QString& box, const QString& text) {
    Run().Click(box);
    Run().Press("Ctrl+A");
    if (text.isEmpty())
        Run().Press("Delete");
    else
        Run().Type(text);
}

void LibraryRunTest::AddCategoryBelow(const QStringList& path) {
    ChooseOnCategory(path, "VlmMnuPopAdd");
    Run().WaitForWindow("Vlm_TBlEdt");
}

void LibraryRunTest::EditCategory(const QStringList& path) {
    ChooseOnCategory(path, "VlmMnuPopEdt");
    Run().WaitForWindow("Vlm_TBlEdt");
}

void LibraryRunTest::AddEntry(const QStringList& category) {
    ChooseCategory(category);
    ChooseOnEmptyPart("VlmMnuPopAdd");
    Run().WaitForWindow("Vlm_TBlEdt");
}

void LibraryRunTest::EditEntry(const QStringList& category, const QString& entry) {
    ChooseCategory(category);
    ChooseOnEntry(entry, "VlmMnuPopEdt");
    Run().WaitForWindow("Vlm_TBlEdt");
}

void LibraryRunTest::ConfirmEditor() {
    Run().Click("OK_btn");
    Run().WaitUntilClosed("Vlm_TBlEdt");
}

void LibraryRunTest::ExpectRefusal(const QString& text) {
    const Message message = Run().ExpectMessage(text);
    EXPECT_EQ(message.title, QString("VELMO2"));
    EXPECT_EQ(message.buttons, QStringList("Ok"));
    Run().AnswerOk();
}

void LibraryRunTest::ExpectQuestion(const QString& text, const QString& title) {
    Message message = Run().ExpectMessage(text);
    EXPECT_EQ(message.title, title);
    message.buttons.sort();
    EXPECT_EQ(message.buttons, QStringList({"No", "Yes"}));
}

} // namespace velmo
