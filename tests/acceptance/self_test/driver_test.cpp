#include "acceptance/velmo_run.h"

#include <gmock/gmock.h>

namespace velmo {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::ThrowsMessage;

class DriverTest : public testing::Test {
protected:
    void SetUp() override { run_.WaitForWindow("MAIN"); }

    void ExpectPanel(const QString& text) {
        run_.WaitFor("panel " + text, [&] { return run_.Panels("StatusBar").first() == text; });
    }

    VelmoRun run_{Launch{SAMPLE_PROGRAM, TEST_PLUGIN_FOLDER, {}, {}}};
};

TEST_F(DriverTest, ReadsWindowsAndControls) {
    const QJsonObject window = run_.Window("MAIN");
    EXPECT_EQ(window["title"].toString(), QString("見本"));
    EXPECT_TRUE(window["active"].toBool());
    EXPECT_FALSE(window["modal"].toBool());
    EXPECT_FALSE(window["onTop"].toBool());
    EXPECT_THAT(run_.Panels("StatusBar"), ElementsAre("-", "二"));
    EXPECT_THAT(run_.Texts("Table").at(1), ElementsAre("B0", "B1"));
    EXPECT_EQ(run_.View("Table")["columnHeaders"][1].toString(), QString("W"));
    EXPECT_THAT(run_.Column("List", 0), ElementsAre("M10", "M12"));
    EXPECT_EQ(run_.Property("List", "selectionMode").toInt(), 1);
    EXPECT_FALSE(run_.IsVisible("Nothing"));
    EXPECT_THAT([&] { run_.Text("Nothing"); }, ThrowsMessage<HarnessError>(HasSubstr("no control Nothing")));
}

TEST_F(DriverTest, EndsWithTheProgramsOwnStatus) {
    run_.ClickAction("ToolFail");
    EXPECT_EQ(run_.WaitForEnd(), 7);
    EXPECT_THAT([&] { run_.Click("List"); }, ThrowsMessage<HarnessError>(HasSubstr("ended with status 7")));
}

TEST_F(DriverTest, ClosesAWindowAsTheWindowManagerDoes) {
    run_.CloseWindow("MAIN");
    EXPECT_EQ(run_.WaitForEnd(), 0);
}

TEST_F(DriverTest, ReachesItemsThatAreScrolledAwayOrFolded) {
    run_.Click("Tree", Item::Path({"根", "枝40"}));
    ExpectPanel("枝40");
    EXPECT_THAT(
        [&] {
            run_.Click("Tree", Item::Path({"根", "枝1", "葉1"}));
        },
        ThrowsMessage<HarnessError>(HasSubstr("folded away")));
    run_.ClickBranch("Tree", Item::Path({"根", "枝1"}));
    run_.Click("Tree", Item::Path({"根", "枝1", "葉1"}));
    ExpectPanel("葉1");
    EXPECT_EQ(run_.Tree("Tree").mid(0, 4), QStringList({"根", "  枝1", "    葉1", "  枝2+"}));
}

TEST_F(DriverTest, WorksInsideTheEventLoopOfAMessageBox) {
    run_.ClickMenu("MenuAsk");
    const Message message = run_.ExpectMessage("削除しますか");
    EXPECT_EQ(message.title, QString("VELMO2"));
    EXPECT_THAT(message.buttons, testing::UnorderedElementsAre("Yes", "No"));
    EXPECT_THAT([&] { run_.Click("List"); },
                ThrowsMessage<HarnessError>(HasSubstr("behind the modal window")));
    run_.AnswerYes();
    ExpectPanel("yes");
}

TEST_F(DriverTest, WaitsForAMessageThatIsNotLaidOutYet) {
    run_.ClickMenu("MenuAskLate");
    run_.WaitFor("the box", [&] { return run_.Windows().size() == 2; });
    run_.Press("F5");
    run_.ExpectMessage("遅れました");
    run_.AnswerYes();
    ExpectPanel("yes");
}

TEST_F(DriverTest, FailsOnAMessageThatNobodyExpects) {
    run_.ClickMenu("MenuAsk");
    EXPECT_THAT([&] { run_.WaitFor("nothing", [&] { return run_.Windows().isEmpty(); }); },
                ThrowsMessage<HarnessError>(HasSubstr("unexpected message VELMO2: 削除しますか")));
    EXPECT_THAT([&] { run_.WaitForEnd(); }, ThrowsMessage<HarnessError>(HasSubstr("unexpected message")));
}

TEST_F(DriverTest, TypesIntoADialogAndItsMessage) {
    run_.ClickMenu("MenuDialog");
    run_.WaitForWindow("DIALOG");
    EXPECT_TRUE(run_.Window("DIALOG")["modal"].toBool());
    EXPECT_TRUE(run_.Window("DIALOG")["onTop"].toBool());
    run_.Click("OkButton");
    run_.ExpectMessage("値を入力してください。");
    run_.Press("Return");
    run_.WaitFor("the message to close", [&] { return run_.Windows().size() == 2; });
    run_.Click("Edit");
    run_.Type("Ab 1.5呼び");
    run_.Press("Backspace");
    EXPECT_EQ(run_.Text("Edit"), QString("Ab 1.5呼"));
    EXPECT_EQ(run_.Focus(), QString("Edit"));
    run_.Press("Return");
    ExpectPanel("Ab 1.5呼");
    // The keys go to the window that is active again.
    run_.Click("List", Item::Named("M10"));
    run_.Press("Down");
    EXPECT_TRUE(run_.Describe("List", Item::Named("M12"))["current"].toBool());
}

TEST_F(DriverTest, OpensContextMenus) {
    run_.RightClick("List", Item::Named("M12"));
    run_.WaitFor("the menu", [&] { return run_.Action("PopAdd")["shown"].toBool(); });
    EXPECT_THAT(run_.Column("List", 0), ElementsAre("M10", "M12")) << "the click itself chooses nothing";
    run_.ClickAction("PopAdd");
    run_.WaitFor("the new item", [&] { return run_.Column("List", 0).contains("M12の次"); });
    run_.RightClickEmpty("List");
    run_.WaitFor("the menu", [&] { return run_.Action("PopAdd")["shown"].toBool(); });
    run_.ClickAction("PopAdd");
    run_.WaitFor("the new item", [&] { return run_.Column("List", 0).contains("空"); });
}

TEST_F(DriverTest, OpensContextMenusByTheMenuKey) {
    run_.Click("List", Item::Named("M10"));
    run_.Press("Menu");
    run_.WaitFor("the menu", [&] { return run_.Action("PopAdd")["shown"].toBool(); });
    run_.ClickAction("PopAdd");
    run_.WaitFor("the new item", [&] { return run_.Column("List", 0).contains("M10の次"); });
}

TEST_F(DriverTest, ReadsMenus) {
    EXPECT_THAT(run_.MenuEntries("MenuEdit"), ElementsAre("その他(&M)", "ダイアログ(&D)", "(終了(&X))"));
    EXPECT_EQ(run_.Action("MenuQuit")["text"].toString(), QString("終了(&X)"));
    EXPECT_THAT([&] { run_.MenuEntries("Nothing"); },
                ThrowsMessage<HarnessError>(HasSubstr("no menu Nothing")));
}

TEST_F(DriverTest, TellsOneClickFromTwo) {
    run_.Click("List", Item::Named("M10"));
    run_.Click("List", Item::Named("M10"));
    EXPECT_EQ(run_.Text("Panel"), QString("-"));
    run_.DoubleClick("List", Item::Named("M10"));
    ExpectPanel("double M10");
}

TEST_F(DriverTest, ChoosesInAComboBoxByMouse) {
    run_.ChooseInCombo("Combo", "16");
    ExpectPanel("16");
    run_.ChooseInCombo("Combo", "12");
    ExpectPanel("12");
    EXPECT_EQ(run_.Text("Combo"), QString("12"));
    EXPECT_THAT(run_.ComboItems("Combo"), ElementsAre("10", "12", "16"));
}

TEST_F(DriverTest, EditsACellByKeys) {
    run_.DoubleClick("Table", Item::Cell(2, 1));
    run_.Press("Ctrl+A");
    run_.Type("12.5");
    run_.Press("Return");
    EXPECT_EQ(run_.Texts("Table").at(2).at(1), QString("12.5"));
}

TEST_F(DriverTest, SelectsCellsByDragging) {
    run_.Drag("Table", Item::Cell(0, 0), Item::Cell(1, 1));
    EXPECT_EQ(run_.View("Table")["selection"].toArray().size(), 4);
    run_.ShiftClick("Table", Item::Cell(2, 1));
    EXPECT_EQ(run_.View("Table")["selection"].toArray().size(), 6);
}

TEST_F(DriverTest, MovesAHeadersBorder) {
    const auto width = [&] { return run_.Describe("Table", Item::Cell(0, 0))["rect"][2].toInt(); };
    const int before = width();
    run_.DragColumnBorder("Table", 0, 20);
    EXPECT_EQ(width(), before + 20);
    run_.DoubleClickColumnBorder("Table", 0);
    run_.WaitFor("the width of the contents", [&] { return width() < before; });
}

TEST_F(DriverTest, ReadsActionsAndTheClipboard) {
    EXPECT_EQ(run_.Action("MenuDialog")["shortcuts"], QJsonArray{"Ctrl+D"});
    EXPECT_EQ(run_.Action("MenuDialog")["text"].toString(), QString("ダイアログ(&D)"));
    run_.SetClipboard("呼び\t12");
    EXPECT_EQ(run_.Clipboard(), QString("呼び\t12"));
    run_.ClickMenu("MenuDialog");
    run_.WaitForWindow("DIALOG");
    run_.Click("Edit");
    run_.Press("Ctrl+V");
    run_.Press("Return");
    ExpectPanel("呼び\t12");
}

TEST_F(DriverTest, SavesPictures) {
    const QImage picture = run_.Picture("MAIN");
    EXPECT_EQ(picture.size(), QSize(430, 500));
    run_.ResizeWindow("MAIN", {500, 600});
    run_.WaitFor("the new size", [&] { return run_.Picture("MAIN").size() == QSize(500, 600); });
}

} // namespace
} // namespace velmo
