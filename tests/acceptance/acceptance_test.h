#pragma once

#include "acceptance/small_library.h"
#include "acceptance/velmo_run.h"
#include "acceptance/velmo_session.h"
#include "support/temp_folder.h"

#include <gmock/gmock.h>

#include <memory>

namespace velmo {

// A session on the small library, and runs of the real program in it. A run that a test leaves with a message
// nobody answered, or that a sanitizer complained about, fails the test.
class AcceptanceTest : public testing::Test {
protected:
    void SetUp() override { WriteSmallLibrary(session_); }
    void TearDown() override { FinishRun(); }

    // Starts the program; a run before must have ended.
    void Start();
    // The same in a process that was changed before the program came into it.
    void StartChanged(const std::function<void()>& childModifier);
    // The same, and waits for the window.
    void StartWith(const QString& window);
    VelmoRun& Run() { return *run_; }
    // False when the last start failed.
    bool HasStarted() const { return run_ != nullptr; }
    // The exit status of a run that ends by itself.
    int End();
    // Waits for a message that holds all these parts, and answers it.
    void ExpectError(const QStringList& parts);
    // A run whose first sight is such a message and which then ends with exit status 1.
    void ExpectFailedStart(const QStringList& parts);

    // Chooses an entry of the browser and opens it in the variable window.
    void OpenEntry(const QStringList& category, const QString& entry);
    // Selects a category, opening the ones above it.
    void ChooseCategory(const QStringList& path);

    // Selects an entry of the category that is chosen, and opens it.
    void OpenShownEntry(const QString& entry);
    // Puts a value into a variable that the table does not govern.
    void EnterValue(int row, const QString& value);

    // Cell texts by the windows' own numbers: row 0 is the header row, column 0 of the table its row labels.
    QString TableText(int row, int col);
    QString VariableText(int row, int col);
    QStringList Values();
    // The rows that the table grid shows, without its labels; a message is its only cell.
    QList<QStringList> TableRows() { return Run().Texts("Vedt_FlexGrid"); }
    // The row of a grid that is current.
    int CurrentRow(const QString& grid);
    void ClickTable(int row, int col) { Run().Click("Vedt_FlexGrid", Item::Cell(row - 1, col - 1)); }
    void ClickVariable(int row, int col) { Run().Click("Vedt_NowFGrid", Item::Cell(row - 1, col)); }

    VelmoSession session_;
    // What every run finds in its environment besides the session's.
    QProcessEnvironment environment_;

private:
    Launch ThisLaunch() const;
    void FinishRun();

    std::unique_ptr<VelmoRun> run_;
};

} // namespace velmo
