#include "edited_table.h"
#include "platform/files.h"
#include "support/failing_disk.h"

#include <functional>

namespace velmo {
namespace {

const QString WorkName = QStringLiteral("VELMONOW.mdb");

struct ChangeCase {
    const char* name;
    std::function<void(TableEditor&)> change;
};

// Each change that needs the work database, tried while something is wrong with it.
class TableEditorFailureTest : public EditedTable, public testing::WithParamInterface<ChangeCase> {
protected:
    TableEditorFailureTest() {
        OpenUsual();
        Editor().EnterText(1, 1, QStringLiteral("first step"));
    }

    // The action fails; cells, history, NowTable are as before, and so is what the editor knows of them.
    template <typename Action>
    void ExpectFailure(Action&& action) {
        const State before = Now();
        const QUndoStack& history = Editor().History();
        const int steps = history.count();
        const int done = history.index();
        const QByteArray database = symbol.folder.Read(WorkName);
        EXPECT_EQ(ErrorOf(action).Number(), expected_);
        symbol.folder.Write(WorkName, database);
        EXPECT_EQ(Now(), before);
        EXPECT_EQ(history.count(), steps);
        EXPECT_EQ(history.index(), done);
        EXPECT_FALSE(Editor().HasOpenColumn());
        for (int column = 1; column < Cells().Cols(); ++column)
            EXPECT_EQ(Editor().VariableOf(column)->name, Cells().Text(0, column));
    }

    // A new change, an undo and a redo fail, each of them goes well afterwards.
    void ExpectAllFail(const std::function<void(const std::function<void()>&)>& inTrouble) {
        const auto change = [this] { GetParam().change(Editor()); };
        QUndoStack& history = Editor().History();
        ExpectFailure([&] { inTrouble(change); });
        const State before = Now();
        change();
        const State after = Now();
        ExpectFailure([&] { inTrouble([&] { history.undo(); }); });
        EXPECT_EQ(Now(), after);
        history.undo();
        EXPECT_EQ(Now(), before);
        ExpectFailure([&] { inTrouble([&] { history.redo(); }); });
        history.redo();
        EXPECT_EQ(Now(), after);
    }

    ErrorNumber expected_ = ErrorNumber::FileNotFound;
};

TEST_P(TableEditorFailureTest, WhenTheDatabaseIsGone) {
    expected_ = ErrorNumber::DatabaseFailed;
    ExpectAllFail([this](const std::function<void()>& action) {
        DeleteFile(symbol.folder.Path(WorkName));
        action();
    });
}

TEST_P(TableEditorFailureTest, WhenTheDatabaseIsAnothers) {
    expected_ = ErrorNumber::DatabaseFailed;
    ExpectAllFail([this](const std::function<void()>& action) {
        // Even one of the same symbol.
        SymbolSample other;
        other.state = symbol.state;
        other.work = WorkDatabase(symbol.state.TempDir);
        other.Load();
        action();
    });
}

TEST_P(TableEditorFailureTest, WhenTheFileIsNoDatabase) {
    expected_ = ErrorNumber::NotADatabase;
    ExpectAllFail([this](const std::function<void()>& action) {
        symbol.folder.Write(WorkName, QByteArray(5000, 'x'));
        action();
    });
}

TEST_P(TableEditorFailureTest, WhenTheTableIsGone) {
    expected_ = ErrorNumber::TableNotFound;
    ExpectAllFail([this](const std::function<void()>& action) {
        symbol.work.Open(Database::Access::Write).Execute(QStringLiteral("DROP TABLE NowTable"));
        action();
    });
}

using TableEditorOfAnotherTest = EditedTable;

TEST_F(TableEditorOfAnotherTest, CellsAndRowsStayToo) {
    OpenUsual();
    Editor().EnterText(1, 1, QStringLiteral("first step"));
    WorkDatabase(symbol.state.TempDir).CreateWorkDatabase([](const QString&) {});
    const QList<std::function<void()>> changes = {[this] { Editor().EnterText(2, 2, QStringLiteral("x")); },
                                                  [this] { Editor().CopyRow(1); },
                                                  [this] { Editor().AppendRow(); },
                                                  [this] { Editor().MoveRow(1, Direction::After); },
                                                  [this] { Editor().OpenColumn(1); },
                                                  [this] { Editor().History().undo(); }};
    const Rows before = SymbolSample::Texts(Cells());
    for (const auto& change : changes) {
        EXPECT_EQ(ErrorOf(change).Number(), ErrorNumber::DatabaseFailed);
        EXPECT_EQ(SymbolSample::Texts(Cells()), before);
        EXPECT_EQ(Editor().History().count(), 1);
        EXPECT_EQ(Editor().History().index(), 1);
    }
}

TEST_P(TableEditorFailureTest, WhenItsVariablesAreGoneItIsNotUndone) {
    expected_ = ErrorNumber::NoCurrentRecord;
    GetParam().change(Editor());
    ExpectFailure([this] {
        symbol.work.Open(Database::Access::Write).Execute(QStringLiteral("DELETE FROM NowTable"));
        Editor().History().undo();
    });
    Editor().History().undo();
}

TEST_P(TableEditorFailureTest, WhenNothingCanBeWritten) {
    // The change is found out without writing; it fails when it is done.
    expected_ = ErrorNumber::DeviceIo;
    ExpectAllFail([](const std::function<void()>& action) {
        const FailingDisk full(0);
        action();
    });
}

INSTANTIATE_TEST_SUITE_P(
    Changes, TableEditorFailureTest,
    testing::Values(
        ChangeCase{"RenamesShown", [](TableEditor& editor) { editor.EnterText(0, 2, QStringLiteral("x")); }},
        ChangeCase{"RenamesHidden", [](TableEditor& editor) { editor.EnterName(4, QStringLiteral("x")); }},
        ChangeCase{"ShowsAVariable",
                   [](TableEditor& editor) {
                       editor.OpenColumn(2);
                       editor.ShowInOpenColumn(3);
                   }},
        ChangeCase{"DeletesAColumn", [](TableEditor& editor) { editor.DeleteColumn(2); }},
        ChangeCase{"MovesAColumn",
                   [](TableEditor& editor) { editor.MoveColumn(1, TableEditor::Direction::After); }}),
    [](const testing::TestParamInfo<ChangeCase>& info) { return std::string(info.param.name); });

} // namespace
} // namespace velmo
