#include "variables/find_bar.h"

#include <QAction>
#include <QApplication>
#include <QBoxLayout>
#include <QInputMethodEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QTest>
#include <QToolButton>
#include <gtest/gtest.h>

#include <utility>

namespace velmo {
namespace {

constexpr auto Forward = SearchDirection::Forward;
constexpr auto Backward = SearchDirection::Backward;

// The bar below another control, in a window whose own shortcuts are the same keys.
class FindBarTest : public testing::Test {
protected:
    FindBarTest() {
        auto* pane = new QWidget;
        auto* layout = new QVBoxLayout(pane);
        layout->addWidget(table);
        layout->addWidget(bar);
        window.setCentralWidget(pane);
        for (const QKeySequence& keys : {QKeySequence(Qt::Key_Return), QKeySequence(Qt::Key_Escape),
                                         QKeySequence(Qt::CTRL | Qt::Key_Return)}) {
            auto* action = new QAction(&window);
            action->setShortcut(keys);
            QObject::connect(action, &QAction::triggered, &window, [this] { ++windowActions; });
            window.addAction(action);
        }
        QObject::connect(bar, &FindBar::SearchWanted, &window,
                         [this](const QString& text, SearchDirection direction, SearchStart start) {
                             asked << text + (direction == Forward ? " forward" : " backward") +
                                          (start == SearchStart::AtCurrent ? " from here" : "");
                         });
        QObject::connect(bar, &FindBar::Closed, &window, [this] { ++closed; });
    }

    void SetUp() override {
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        table->setFocus();
    }

    QLineEdit* Text() { return bar->findChild<QLineEdit*>("VedtFindText"); }
    QToolButton* Button(const char* name) { return bar->findChild<QToolButton*>(QLatin1String(name)); }
    QString Outcome() { return bar->findChild<QLabel*>("VedtFindOutcome")->text(); }
    // Opened, with a text that was looked for.
    void OpenWith(const QString& text) {
        bar->Open();
        Text()->setText(text);
        asked.clear();
    }
    static void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        ASSERT_TRUE(QApplication::focusWidget());
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    QStringList Asked() { return std::exchange(asked, {}); }

    QMainWindow window;
    QLineEdit* table = new QLineEdit;
    FindBar* bar = new FindBar;
    QStringList asked;
    int closed = 0;
    int windowActions = 0;
};

TEST_F(FindBarTest, IsHiddenUntilOpened) {
    EXPECT_FALSE(bar->isVisible());
    bar->Open();
    EXPECT_TRUE(bar->isVisible());
    EXPECT_TRUE(Text()->hasFocus());
    EXPECT_EQ(Asked(), QStringList());
}

TEST_F(FindBarTest, TypingSearchesFromTheCurrentCellOn) {
    bar->Open();
    QTest::keyClicks(Text(), "M1");
    EXPECT_EQ(Asked(), (QStringList{"M forward from here", "M1 forward from here"}));
    Press(Qt::Key_Backspace);
    EXPECT_EQ(Asked(), QStringList("M forward from here"));
    Press(Qt::Key_Backspace);
    EXPECT_EQ(Asked(), QStringList()) << "nothing to look for";
}

TEST_F(FindBarTest, AnInputMethodSearchesForWhatItCommits) {
    bar->Open();
    QInputMethodEvent first(QStringLiteral("ぼると"), {});
    QApplication::sendEvent(Text(), &first);
    EXPECT_EQ(Asked(), QStringList());
    QInputMethodEvent last;
    last.setCommitString(QStringLiteral("ボルト"));
    QApplication::sendEvent(Text(), &last);
    EXPECT_EQ(Asked(), QStringList("ボルト forward from here"));
}

TEST_F(FindBarTest, EnterAndF3GoOnAndWithShiftGoBack) {
    OpenWith("M1");
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_F3}) {
        Press(key);
        EXPECT_EQ(Asked(), QStringList("M1 forward"));
        Press(key, Qt::ShiftModifier);
        EXPECT_EQ(Asked(), QStringList("M1 backward"));
    }
    Press(Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(Asked(), QStringList("M1 forward"));
    EXPECT_TRUE(Text()->hasFocus());
    EXPECT_EQ(windowActions, 0);
}

TEST_F(FindBarTest, KeysWithControlStayTheWindows) {
    OpenWith("M1");
    Press(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(windowActions, 1);
    EXPECT_EQ(Asked(), QStringList());
}

TEST_F(FindBarTest, ButtonsSearchAndLeaveTheCaretInTheText) {
    OpenWith("M1");
    QTest::mouseClick(Button("VedtFindNext"), Qt::LeftButton);
    EXPECT_EQ(Asked(), QStringList("M1 forward"));
    QTest::mouseClick(Button("VedtFindPrevious"), Qt::LeftButton);
    EXPECT_EQ(Asked(), QStringList("M1 backward"));
    EXPECT_TRUE(Text()->hasFocus());
}

TEST_F(FindBarTest, ButtonsWorkByKeyToo) {
    OpenWith("M1");
    Press(Qt::Key_Tab);
    ASSERT_TRUE(Button("VedtFindPrevious")->hasFocus());
    Press(Qt::Key_Return);
    Press(Qt::Key_Space);
    EXPECT_EQ(Asked(), (QStringList{"M1 backward", "M1 backward"}));
    Button("VedtFindClose")->setFocus();
    Press(Qt::Key_Return);
    EXPECT_EQ(closed, 1);
    EXPECT_FALSE(bar->isVisible());
}

TEST_F(FindBarTest, WithoutATextThereIsNothingToSearch) {
    bar->Open();
    EXPECT_FALSE(Button("VedtFindNext")->isEnabled());
    EXPECT_FALSE(Button("VedtFindPrevious")->isEnabled());
    Press(Qt::Key_Return);
    EXPECT_EQ(Asked(), QStringList());
    EXPECT_TRUE(bar->isVisible());
    QTest::keyClicks(Text(), "M");
    EXPECT_TRUE(Button("VedtFindNext")->isEnabled());
    EXPECT_TRUE(Button("VedtFindPrevious")->isEnabled());
}

TEST_F(FindBarTest, EscapeClosesTheBarAlone) {
    OpenWith("M1");
    QWidget* focusWhenClosed = Text();
    QObject::connect(bar, &FindBar::Closed, table, [&] {
        focusWhenClosed = window.focusWidget();
        table->setFocus();
    });
    Press(Qt::Key_Escape);
    EXPECT_FALSE(bar->isVisible());
    EXPECT_EQ(closed, 1);
    EXPECT_EQ(focusWhenClosed, nullptr);
    EXPECT_TRUE(table->hasFocus());
    EXPECT_EQ(windowActions, 0);
    Press(Qt::Key_Escape);
    EXPECT_EQ(windowActions, 1);
}

TEST_F(FindBarTest, TheButtonClosesTheBarToo) {
    OpenWith("M1");
    QTest::mouseClick(Button("VedtFindClose"), Qt::LeftButton);
    EXPECT_FALSE(bar->isVisible());
    EXPECT_EQ(closed, 1);
    EXPECT_EQ(Asked(), QStringList());
}

TEST_F(FindBarTest, RepeatsTheLastSearchWhileClosed) {
    OpenWith("M1");
    Press(Qt::Key_Escape);
    bar->Repeat(Forward);
    bar->Repeat(Backward);
    EXPECT_EQ(Asked(), (QStringList{"M1 forward", "M1 backward"}));
    EXPECT_FALSE(bar->isVisible());
}

TEST_F(FindBarTest, RepeatingNothingOpensTheBar) {
    bar->Repeat(Forward);
    EXPECT_TRUE(bar->isVisible());
    EXPECT_TRUE(Text()->hasFocus());
    EXPECT_EQ(Asked(), QStringList());
}

TEST_F(FindBarTest, OpenedAgainItKeepsTheTextForTypingOver) {
    OpenWith("M1");
    bar->ShowOutcome(FindBar::Outcome::NotFound);
    Press(Qt::Key_Escape);
    bar->Open();
    EXPECT_EQ(Text()->selectedText(), "M1");
    EXPECT_EQ(Outcome(), "");
    QTest::keyClicks(Text(), "6");
    EXPECT_EQ(Asked(), QStringList("6 forward from here"));
}

TEST_F(FindBarTest, TellsWhatCameOfTheSearch) {
    OpenWith("M1");
    bar->ShowOutcome(FindBar::Outcome::NotFound);
    EXPECT_EQ(Outcome(), "見つかりません");
    Press(Qt::Key_F3);
    bar->ShowOutcome(FindBar::Outcome::FoundBeyondEnd);
    EXPECT_EQ(Outcome(), "先頭から検索しました");
    Press(Qt::Key_F3, Qt::ShiftModifier);
    bar->ShowOutcome(FindBar::Outcome::FoundBeyondEnd);
    EXPECT_EQ(Outcome(), "末尾から検索しました");
    bar->ShowOutcome(FindBar::Outcome::Found);
    EXPECT_EQ(Outcome(), "");
    bar->ShowOutcome(FindBar::Outcome::NotFound);
    Text()->clear();
    EXPECT_EQ(Outcome(), "");
}

TEST_F(FindBarTest, EveryControlHasANameAndAnIcon) {
    EXPECT_FALSE(Text()->accessibleName().isEmpty());
    for (const char* name : {"VedtFindPrevious", "VedtFindNext", "VedtFindClose"}) {
        const QToolButton* button = Button(name);
        EXPECT_FALSE(button->accessibleName().isEmpty()) << name;
        const QImage picture = button->icon().pixmap(QSize(16, 16), 1.0).toImage();
        EXPECT_GT(qAlpha(picture.pixel(8, button == Button("VedtFindNext") ? 10 : 6)) +
                      qAlpha(picture.pixel(8, 8)),
                  0)
            << name;
    }
}

TEST_F(FindBarTest, ALongOutcomeDoesNotWidenTheWindow) {
    bar->Open();
    const int before = bar->minimumSizeHint().width();
    bar->ShowOutcome(FindBar::Outcome::FoundBeyondEnd);
    EXPECT_EQ(bar->minimumSizeHint().width(), before);
}

} // namespace
} // namespace velmo
