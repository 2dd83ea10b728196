#include "cad_side/cad_conversation.h"
#include "cad_side/symbol_drawing.h"
#include "demo_session.h"

#include <QFile>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

namespace velmo {
namespace {

class CadConversationTest : public testing::Test {
protected:
    DemoSession demo_;
    FakeRunner runner_;
    CadConversation conversation_{demo_.Session(), runner_};
    QSignalSpy answered_{&conversation_, &CadConversation::Answered};
    QSignalSpy unanswered_{&conversation_, &CadConversation::ClosedUnanswered};
    QSignalSpy failed_{&conversation_, &CadConversation::Failed};
};

TEST_F(CadConversationTest, DrawsTheAnswersValues) {
    runner_.program = [&] {
        EXPECT_EQ(conversation_.CurrentState(), CadConversation::State::Running);
        demo_.WriteAnswer(QStringLiteral("75"));
        return 0;
    };
    EXPECT_FALSE(conversation_.CanReopen());
    conversation_.Ask({});
    EXPECT_EQ(answered_.count(), 1);
    EXPECT_EQ(conversation_.CurrentState(), CadConversation::State::Idle);
    EXPECT_TRUE(conversation_.CanReopen());
    const Drawing drawing = DrawAnswer(conversation_.Answer());
    EXPECT_EQ(drawing.corners[1], QPointF(75, -5));
    const auto& text = std::get<DrawnText>(drawing.primitives.back());
    EXPECT_EQ(text.text, u"L=75");
}

TEST_F(CadConversationTest, MatchesValuesByNumberNotByHeading) {
    demo_.WriteAnswer(QStringLiteral("75"));
    demo_.WriteExchange(QStringLiteral("velmo.ret"), {"1", QStringLiteral("V2(長さ)"), "60"});
    EXPECT_EQ(DrawAnswer(conversation_.Session().ReadAnswer()).corners[1], QPointF(60, -5));
    // Table editing answers with names instead of values: the definition's own values draw.
    demo_.WriteExchange(QStringLiteral("velmo.ret"), {"1", "V2", "L"});
    EXPECT_EQ(DrawAnswer(conversation_.Session().ReadAnswer()).corners[1], QPointF(40, -5));
}

TEST_F(CadConversationTest, GoesRoundForADistance) {
    runner_.program = [&] {
        demo_.WriteAnswer(QStringLiteral("40"));
        demo_.ReplaceSetting(QStringLiteral("VlmMode=2"), QStringLiteral("VlmMode=4\nDistNo=2"));
        return 0;
    };
    conversation_.Ask({});
    EXPECT_EQ(conversation_.CurrentState(), CadConversation::State::Measuring);
    EXPECT_EQ(conversation_.MeasuredLabel(), u"V2(L)");

    runner_.program = [&] {
        EXPECT_TRUE(demo_.Settings().contains(QStringLiteral("VlmMode=4")));
        EXPECT_TRUE(demo_.Settings().contains(QStringLiteral("VlmDist=62.5")));
        demo_.ReplaceSetting(QStringLiteral("VlmMode=4"), QStringLiteral("VlmMode=2\nTBLLast=1"));
        demo_.WriteAnswer(QStringLiteral("62.5"));
        return 0;
    };
    conversation_.ReturnDistance(62.5);
    EXPECT_EQ(runner_.starts, 2);
    EXPECT_EQ(conversation_.CurrentState(), CadConversation::State::Idle);
    EXPECT_EQ(conversation_.Answer().variables[1].value, u"62.5");
}

TEST_F(CadConversationTest, AWindowClosedWithoutAnswerKeepsTheSymbol) {
    runner_.program = [&] {
        demo_.WriteAnswer(QStringLiteral("40"));
        return 0;
    };
    conversation_.Ask({});
    runner_.program = [] { return 0; };
    conversation_.Ask({CadRunMode::Choose, true, std::nullopt});
    EXPECT_EQ(unanswered_.count(), 1);
    EXPECT_EQ(answered_.count(), 1);
    EXPECT_TRUE(conversation_.CanReopen());
}

TEST_F(CadConversationTest, TellsThatNothingWasChosen) {
    runner_.program = [&] {
        demo_.WriteExchange(QStringLiteral("velmo.ret2"), {"NO SELECT"});
        return 0;
    };
    conversation_.Ask({});
    EXPECT_EQ(conversation_.Answer().kind, AnswerKind::NoSelection);
    EXPECT_FALSE(conversation_.CanReopen());
}

TEST_F(CadConversationTest, ReportsAnErrorOfTheProgramAndABrokenAnswer) {
    runner_.program = [] { return 1; };
    conversation_.Ask({});
    EXPECT_EQ(failed_.count(), 1);
    EXPECT_EQ(conversation_.CurrentState(), CadConversation::State::Idle);

    runner_.program = [&] {
        demo_.WriteExchange(QStringLiteral("velmo.ret"), {"2", "V1(d)"});
        demo_.WriteExchange(QStringLiteral("velmo.ret2"), {demo_.SymbolFile(), "TOLVIKS"});
        return 0;
    };
    conversation_.Ask({});
    ASSERT_EQ(failed_.count(), 2);
    EXPECT_TRUE(failed_[1][0].toString().contains(QStringLiteral("velmo.ret")));
    EXPECT_EQ(conversation_.CurrentState(), CadConversation::State::Idle);
}

#ifdef Q_OS_UNIX
// A real process that answers as the program does.
TEST(ProcessRunner, RunsAProgramOnTheSessionsOwnSettings) {
    const DemoSession demo;
    const CadSession session = demo.Session();
    QString program =
        demo.Folder().Write(QStringLiteral("program"),
                            "#!/bin/sh\n"
                            "grep -q '^VlmMode=3' \"$XDG_CONFIG_HOME/Kestova2019/Velmo2.ini\" || exit 7\n"
                            "printf 'NO SELECT\\r\\n' > exchange/velmo.ret2\n");
    program.replace(u'\\', u'/');
    QFile::setPermissions(program, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    ProcessRunner runner(program);
    CadConversation conversation(session, runner);
    QSignalSpy answered(&conversation, &CadConversation::Answered);
    conversation.Ask({CadRunMode::EditTables, false, std::nullopt});
    EXPECT_EQ(conversation.CurrentState(), CadConversation::State::Running);
    conversation.Ask({}); // is already running
    ASSERT_TRUE(answered.wait(30000));
    EXPECT_EQ(conversation.Answer().kind, AnswerKind::NoSelection);
}

TEST(ProcessRunner, NamesAProgramThatCannotBeStarted) {
    const DemoSession demo;
    ProcessRunner runner(QStringLiteral("/nowhere/velmo2"));
    CadConversation conversation(demo.Session(), runner);
    QSignalSpy failed(&conversation, &CadConversation::Failed);
    conversation.Ask({});
    ASSERT_TRUE(!failed.isEmpty() || failed.wait(30000));
    EXPECT_TRUE(failed[0][0].toString().contains(QStringLiteral("/nowhere/velmo2")));
    EXPECT_EQ(conversation.CurrentState(), CadConversation::State::Idle);
}
#endif

} // namespace
} // namespace velmo
