#include "acceptance_test.h"

namespace velmo {

Launch AcceptanceTest::ThisLaunch() const {
    Launch launch = session_.LaunchOf(VELMO_PROGRAM, TEST_PLUGIN_FOLDER);
    launch.environment.insert(environment_);
    return launch;
}

void AcceptanceTest::Start() {
    FinishRun();
    run_ = std::make_unique<VelmoRun>(ThisLaunch());
}

void AcceptanceTest::StartChanged(const std::function<void()>& childModifier) {
    FinishRun();
    Launch launch = ThisLaunch();
    launch.childModifier = childModifier;
    run_ = std::make_unique<VelmoRun>(launch);
}

void AcceptanceTest::StartWith(const QString& window) {
    Start();
    Run().WaitForWindow(window);
}

int AcceptanceTest::End() {
    return Run().WaitForEnd();
}

void AcceptanceTest::ExpectError(const QStringList& parts) {
    const Message message = Run().WaitForMessage();
    EXPECT_EQ(message.title, QString("VELMO2"));
    EXPECT_EQ(message.buttons, QStringList("Ok"));
    for (const QString& part : parts) {
        EXPECT_TRUE(message.text.contains(part))
            << part.toStdString() << " is not in " << message.text.toStdString();
    }
    Run().AnswerOk();
}

void AcceptanceTest::ExpectFailedStart(const QStringList& parts) {
    Start();
    ExpectError(parts);
    EXPECT_EQ(End(), 1);
}

void AcceptanceTest::FinishRun() {
    if (run_ == nullptr)
        return;
    try {
        // Asking anything reports a message that is still open.
        if (!HasFailure() && !run_->HasEnded())
            run_->Windows();
    } catch (const HarnessError& error) {
        ADD_FAILURE() << error.what();
    }
    const QString errors = run_->ErrorOutput();
    if (errors.contains("Sanitizer") || errors.contains("runtime error:"))
        ADD_FAILURE() << errors.toStdString();
    run_.reset();
}

void AcceptanceTest::ChooseCategory(const QStringList& path) {
    for (qsizetype depth = 1; depth < path.size(); ++depth) {
        const Item above = Item::Path(path.first(depth));
        if (!Run().Describe("VlmTreeView", above)["expanded"].toBool())
            Run().ClickBranch("VlmTreeView", above);
    }
    Run().Click("VlmTreeView", Item::Path(path));
}

void AcceptanceTest::OpenEntry(const QStringList& category, const QString& entry) {
    ChooseCategory(category);
    OpenShownEntry(entry);
}

void AcceptanceTest::OpenShownEntry(const QString& entry) {
    Run().Click("VlmPdfList", Item::Named(entry));
    Run().ClickAction("Tbar_Open");
    Run().WaitForWindow("VLM_VEDT");
}

void AcceptanceTest::EnterValue(int row, const QString& value) {
    ClickVariable(row, 1);
    Run().WaitFor("CurEdit", [this] { return Run().IsVisible("CurEdit"); });
    Run().Press("Ctrl+A");
    Run().Type(value);
    Run().Press("Return");
}

int AcceptanceTest::CurrentRow(const QString& grid) {
    return Run().View(grid)["current"].toArray().first().toInt() + 1;
}

QString AcceptanceTest::TableText(int row, int col) {
    const QJsonObject view = Run().View("Vedt_FlexGrid");
    if (row == 0)
        return view["columnHeaders"][col - 1].toString();
    if (col == 0)
        return view["rowHeaders"][row - 1].toString();
    return view["texts"][row - 1][col - 1].toString();
}

QString AcceptanceTest::VariableText(int row, int col) {
    const QJsonObject view = Run().View("Vedt_NowFGrid");
    return row == 0 ? view["columnHeaders"][col].toString() : view["texts"][row - 1][col].toString();
}

QStringList AcceptanceTest::Values() {
    return Run().Column("Vedt_NowFGrid", 1);
}

} // namespace velmo
