#include "table_run.h"

#include <QTemporaryDir>

namespace velmo {
namespace {

using testing::ElementsAre;

// Two runs at a time on one exchange folder: the work database belongs to the one that opened last.
class TwoWindowsTest : public TableRunTest {
protected:
    // Another run on another symbol.
    void OpenOther() {
        session_.WriteExchangeLines("velmo.ret2", {Symbol("EYE.TXT"), "TOLVIKS"});
        other_ = std::make_unique<VelmoRun>(session_.LaunchOf(VELMO_PROGRAM, TEST_PLUGIN_FOLDER));
        other_->WaitForWindow("VLM_VEDT");
    }
    VelmoRun& Other() { return *other_; }
    void OpenValues() {
        session_.Set("VlmMode", "2");
        OpenTable();
    }
    void ExpectTold() {
        ExpectError({"作業データベースがほかで作り直された", session_.TempDir() + "VELMONOW.mdb"});
    }
    QStringList NamesInDatabase() {
        QStringList names;
        for (const QStringList& row :
             session_.QueryExchange("VELMONOW.mdb", "SELECT ValName FROM NowTable ORDER BY ValNum"))
            names << row;
        return names;
    }

private:
    std::unique_ptr<VelmoRun> other_;
};

TEST_F(TwoWindowsTest, TheFirstNoticesBeforeAValueChanges) {
    OpenValues();
    ClickTable(2, 1);
    EXPECT_THAT(Values(), ElementsAre("12", "50", "SS400"));
    OpenOther();
    ClickTable(1, 1);
    ExpectTold();
    ClickVariable(2, 1);
    ExpectTold();
    EXPECT_THAT(Values(), ElementsAre("12", "50", "SS400"));
    EXPECT_EQ(CurrentRow("Vedt_FlexGrid"), 2);
    // What was seen is what is handed over.
    Run().Click("Vedt_OKBtn");
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(session_.ReadExchangeLines("velmo.ret"),
              QStringList({"3", "V1(d)", "12", "V2(L)", "50", "V3(材質)", "SS400"}));
    EXPECT_THAT(NamesInDatabase(), ElementsAre("", "d", "個数"));
    Other().Click("Vedt_OKBtn");
    EXPECT_EQ(Other().WaitForEnd(), 0);
    EXPECT_EQ(session_.ReadExchangeLines("velmo.ret2"), QStringList({Symbol("EYE.TXT"), "TOLVIKS"}));
    EXPECT_FALSE(session_.ExistsInExchange("VELMONOW.mdb"));
}

TEST_F(TwoWindowsTest, AChangedTableIsNotSavedFromTheOthersDatabase) {
    OpenTable();
    Enter({1, 2}, "11");
    const QByteArray settings = session_.SettingsFile();
    OpenOther();
    Run().Click("Vedt_OKBtn");
    ExpectTold();
    EXPECT_TRUE(Run().IsWindowShown("VLM_VEDT"));
    EXPECT_EQ(TableFile(), HexTableLines());
    EXPECT_FALSE(session_.ExistsInExchange("velmo.ret"));
    EXPECT_EQ(session_.SettingsFile(), settings);
    // What was entered can still be taken elsewhere.
    SelectBlock({1, 1}, {4, 3});
    Run().Press("Ctrl+C");
    EXPECT_TRUE(Run().Clipboard().startsWith("M10\t11\t50\n")) << Run().Clipboard().toStdString();
    Other().CloseWindow("VLM_VEDT");
    EXPECT_EQ(Other().WaitForEnd(), 0);
}

// Each has an exchange folder of its own, so that only the table is shared.
TEST_F(TwoWindowsTest, OneTableIsSavedByOneAtATime) {
    OpenTable();
    Enter({1, 2}, "11");
    const QTemporaryDir folder;
    const VelmoSession session(session_.Home(), folder.path());
    session.Set("VlmMode", "3");
    session.Set("VlmNxt", "1");
    session.WriteExchangeLines("velmo.ret2", {Symbol("HEX.TXT"), "VELMO"});
    VelmoRun other(session.LaunchOf(VELMO_PROGRAM, TEST_PLUGIN_FOLDER));
    other.WaitForWindow("VLM_VEDT");
    other.Click("Vedt_FlexGrid", CellOf({2, 2}));
    other.Type("22");
    other.Press("Return");
    // Somebody else's change, so that the first asks.
    QStringList lines = HexTableLines();
    lines[21] = "   M12   12   99";
    session_.WriteHomeLines(tableFile_, lines);
    Run().Click("Vedt_OKBtn");
    EXPECT_TRUE(Run().WaitForMessage().text.contains("ほかで変更されています"));
    // While it asks, nobody can slip in between.
    other.Click("Vedt_OKBtn");
    other.ExpectMessage("作業ファイルが作成できません");
    other.AnswerOk();
    EXPECT_EQ(TableFile(), lines);
    Run().AnswerYes();
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(TableFile().at(18), QString("   M10   11   50"));
    // Nor does the other one overwrite that unasked.
    other.Click("Vedt_OKBtn");
    EXPECT_TRUE(other.WaitForMessage().text.contains("ほかで変更されています"));
    other.AnswerNo();
    other.WaitFor("the end of the work file",
                  [this] { return !session_.ExistsInHome("SMB\\BOLT\\HEX.TMP"); });
    EXPECT_EQ(TableFile().at(18), QString("   M10   11   50"));
}

TEST_F(TwoWindowsTest, WhenTheOtherHasEndedTheDatabaseIsGone) {
    OpenValues();
    OpenOther();
    Other().Click("VEdt_CanBtn");
    EXPECT_EQ(Other().WaitForEnd(), 0);
    EXPECT_FALSE(session_.ExistsInExchange("VELMONOW.mdb"));
    ClickTable(2, 1);
    ExpectTold();
    EXPECT_THAT(Values(), ElementsAre("10", "50", "SS400"));
    Run().Click("VEdt_CanBtn");
    EXPECT_EQ(End(), 0);
}

} // namespace
} // namespace velmo
