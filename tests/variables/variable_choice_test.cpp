#include "two_grids.h"
#include "variables/variable_choice.h"

#include <QAbstractItemView>
#include <QScrollBar>
#include <QSignalSpy>

namespace velmo {
namespace {

class VariableChoiceTest : public TwoGridsTest {
protected:
    void Offer(int column = 2) {
        choice.Offer(column, {{QStringLiteral("W (V12)"), 1},
                              {QStringLiteral("H (V3)"), 2},
                              {QStringLiteral("Long (V5)"), 7}});
    }
    QComboBox* Vedt_Combo() const { return window.findChild<QComboBox*>(QStringLiteral("Vedt_Combo")); }
    QAbstractItemView* List() const { return Vedt_Combo()->view(); }
    // A key for the unfolded list, as the window system sends it.
    void PressUnfolded(Qt::Key key) const { QTest::keyClick(List()->window()->windowHandle(), key); }
    QList<int> Values() const {
        QList<int> values;
        for (const QVariantList& arguments : chosen)
            values << arguments[0].toInt();
        return values;
    }
    void ExpectClosed() const {
        EXPECT_FALSE(choice.IsOffering());
        EXPECT_FALSE(Vedt_Combo()->isVisible());
        EXPECT_FALSE(List()->isVisible());
        EXPECT_EQ(window.focusWidget(), table);
    }
    // What the closing of the list set off has happened after this.
    static void Finish() { QCoreApplication::processEvents(); }

    VariableChoice choice{*table};
    QSignalSpy chosen{&choice, &VariableChoice::Chosen};
    QSignalSpy cancelled{&choice, &VariableChoice::Cancelled};
};

TEST_F(VariableChoiceTest, LiesUnfoldedOverTheHeader) {
    EXPECT_FALSE(Vedt_Combo()->isVisible());
    Offer();
    EXPECT_TRUE(Vedt_Combo()->isVisible());
    EXPECT_TRUE(List()->isVisible());
    EXPECT_FALSE(Vedt_Combo()->isEditable());
    EXPECT_FALSE(Vedt_Combo()->accessibleName().isEmpty());
    EXPECT_EQ(window.focusWidget(), Vedt_Combo());
    EXPECT_EQ(Vedt_Combo()->parentWidget(), table->horizontalHeader()->viewport());
    EXPECT_EQ(Vedt_Combo()->geometry(), table->CellRect(0, 2));
    ASSERT_EQ(Vedt_Combo()->count(), 3);
    EXPECT_EQ(Vedt_Combo()->itemText(0), QStringLiteral("W (V12)"));
}

TEST_F(VariableChoiceTest, EnterChooses) {
    Offer();
    PressUnfolded(Qt::Key_Down);
    PressUnfolded(Qt::Key_Return);
    Finish();
    EXPECT_EQ(Values(), QList<int>{2});
    EXPECT_EQ(cancelled.size(), 0);
    ExpectClosed();
    Offer();
    PressUnfolded(Qt::Key_Enter);
    Finish();
    EXPECT_EQ(Values(), (QList<int>{2, 1})) << "the first entry, and none remembered";
    EXPECT_EQ(cancelled.size(), 0);
}

TEST_F(VariableChoiceTest, AClickChooses) {
    Offer();
    const QPoint spot = List()->visualRect(List()->model()->index(2, 0)).center();
    QTest::mouseMove(List()->viewport(), spot);
    QTest::mouseClick(List()->viewport(), Qt::LeftButton, {}, spot);
    Finish();
    EXPECT_EQ(Values(), QList<int>{7});
    EXPECT_EQ(cancelled.size(), 0);
    ExpectClosed();
}

TEST_F(VariableChoiceTest, TypingFindsAnEntry) {
    Offer();
    PressUnfolded(Qt::Key_L);
    PressUnfolded(Qt::Key_Return);
    Finish();
    EXPECT_EQ(Values(), QList<int>{7});
}

TEST_F(VariableChoiceTest, EscapeCancels) {
    Offer();
    PressUnfolded(Qt::Key_Down);
    PressUnfolded(Qt::Key_Escape);
    EXPECT_EQ(cancelled.size(), 1);
    ExpectClosed();
    Finish();
    EXPECT_EQ(cancelled.size(), 1);
    EXPECT_EQ(chosen.size(), 0);
}

TEST_F(VariableChoiceTest, AClickBesideTheListCancels) {
    Offer();
    QWidget* frame = List()->window();
    QTest::mouseClick(frame, Qt::LeftButton, {}, frame->rect().bottomRight() + QPoint(50, 50));
    Finish();
    EXPECT_EQ(cancelled.size(), 1);
    EXPECT_EQ(chosen.size(), 0);
    ExpectClosed();
}

TEST_F(VariableChoiceTest, AListThatIsFoldedOrClosedCancels) {
    Offer();
    Vedt_Combo()->hidePopup();
    Finish();
    EXPECT_EQ(cancelled.size(), 1);
    ExpectClosed();
    Offer();
    List()->window()->close();
    Finish();
    EXPECT_EQ(cancelled.size(), 2);
    ExpectClosed();
}

TEST_F(VariableChoiceTest, TheWindowCanCancel) {
    choice.Cancel();
    EXPECT_EQ(cancelled.size(), 0);
    Offer();
    choice.Cancel();
    choice.Cancel();
    ExpectClosed();
    Offer();
    Finish();
    EXPECT_TRUE(choice.IsOffering()) << "the first one's end does not reach the second";
    EXPECT_EQ(cancelled.size(), 1);
    Offer();
    EXPECT_EQ(cancelled.size(), 2);
    EXPECT_EQ(chosen.size(), 0);
}

TEST_F(VariableChoiceTest, NothingToChooseIsNotShown) {
    choice.Offer(2, {});
    EXPECT_FALSE(choice.IsOffering());
    EXPECT_FALSE(Vedt_Combo()->isVisible());
    EXPECT_EQ(cancelled.size(), 1);
}

TEST_F(VariableChoiceTest, ANewColumnBeyondTheEdgeComesIntoSight) {
    Fill(tableCells, 4, 40);
    table->CellsReplaced();
    tableCells.InsertColumn(40, tableCells.MakeColumn());
    table->ColumnsInserted(40);
    choice.Offer(40, {{QStringLiteral("A variable with a rather long name (V12)"), 1}});
    EXPECT_EQ(Vedt_Combo()->geometry(), table->CellRect(0, 40));
    EXPECT_TRUE(table->horizontalHeader()->viewport()->rect().contains(Vedt_Combo()->geometry()));
    EXPECT_GE(List()->viewport()->width(), List()->sizeHintForColumn(0)) << "the names are whole";
}

TEST_F(VariableChoiceTest, GoesWithItsGridWhileItIsOpen) {
    Offer();
    delete table;
    Finish();
    EXPECT_EQ(chosen.size() + cancelled.size(), 0);
}

} // namespace
} // namespace velmo
