#include "demo_session.h"
#include "platform/runtime_error.h"

#include <QDir>
#include <gmock/gmock.h>

namespace velmo {
namespace {

using testing::ElementsAre;

TEST(CadSession, WorksOnACopyOfTheLibrary) {
    const DemoSession demo;
    const CadSession session = demo.Session();
    demo.Folder().Write(QStringLiteral("session\\home\\SMB\\BOLT.TXT"), "changed");
    demo.Session();
    EXPECT_EQ(demo.Folder().Read(QStringLiteral("session\\home\\SMB\\BOLT.TXT")), "changed");
    EXPECT_NE(demo.Folder().Read(QStringLiteral("library\\SMB\\BOLT.TXT")), "changed");
    EXPECT_TRUE(QDir(session.ExchangeFolder()).exists());
}

TEST(CadSession, TakesARelativeLibrary) {
    const DemoSession demo;
    const QString library = demo.Folder().Path().replace(u'\\', u'/') + QStringLiteral("library");
    const CadSession session(demo.Folder().Path().replace(u'\\', u'/') + QStringLiteral("other"),
                             QDir::current().relativeFilePath(library));
    EXPECT_TRUE(demo.Folder().Exists(QStringLiteral("other\\home\\SMB\\BOLT.TXT")));
}

TEST(CadSession, SaysWhichLibraryIsMissing) {
    const TempFolder folder;
    try {
        const CadSession session(folder.Path(QStringLiteral("s")).replace(u'\\', u'/'),
                                 QStringLiteral("/nowhere"));
        FAIL() << "no error";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), ErrorNumber::PathNotFound);
        EXPECT_EQ(error.File(), u"/nowhere");
    }
}

TEST(CadSession, WritesTheRequestVerbatim) {
    const DemoSession demo;
    const CadSession session = demo.Session();
    session.WriteRequest({CadRunMode::Choose, true, std::nullopt});
    const QStringList lines = demo.Settings().split(u'\n', Qt::SkipEmptyParts);
    EXPECT_EQ(lines[0].trimmed(), u"[Settings]");
    EXPECT_TRUE(lines.contains(QStringLiteral("VlmHome=") + session.Home())) << demo.Settings().toStdString();
    EXPECT_TRUE(lines.contains(QStringLiteral("VlmTemp=") + session.ExchangeFolder()));
    EXPECT_TRUE(lines.contains(QStringLiteral("VlmMode=2")));
    EXPECT_TRUE(lines.contains(QStringLiteral("VlmNxt=1")));
    EXPECT_FALSE(demo.Settings().contains(QStringLiteral("VlmDist")));
}

TEST(CadSession, KeepsWhatTheProgramHasStored) {
    const DemoSession demo;
    const CadSession session = demo.Session();
    demo.Folder().Write(QStringLiteral("session\\config\\Kestova2019\\Velmo2.ini"),
                        "[Settings]\nTreeLast=7\nVlmMode=4\nDistNo=2\n");
    EXPECT_TRUE(session.IsMeasurementAsked());
    EXPECT_EQ(session.MeasuredRow(), 2);
    session.WriteRequest({CadRunMode::EditTables, false, std::nullopt});
    EXPECT_FALSE(session.IsMeasurementAsked());
    EXPECT_TRUE(demo.Settings().contains(QStringLiteral("TreeLast=7")));
    EXPECT_TRUE(demo.Settings().contains(QStringLiteral("VlmMode=3")));
}

TEST(CadSession, WritesADistanceInItsShortestForm) {
    const DemoSession demo;
    const CadSession session = demo.Session();
    const std::pair<double, const char*> cases[] = {
        {12.5, "12.5"}, {100, "100"}, {0, "0"}, {3.14159, "3.14"}};
    for (const auto& [distance, text] : cases) {
        const QStringList lines = session.WriteRequest({CadRunMode::ReturnDistance, false, distance});
        EXPECT_EQ(lines.last(), QStringLiteral("VlmDist=") + QLatin1String(text));
        EXPECT_TRUE(demo.Settings().contains(QStringLiteral("VlmMode=4")));
    }
}

TEST(CadAnswer, ReadsSymbolLibraryAndValues) {
    const DemoSession demo;
    const CadSession session = demo.Session();
    EXPECT_EQ(session.ReadAnswer().kind, AnswerKind::None);
    demo.WriteExchange(QStringLiteral("velmo.ret"), {"3", "V1(d)", "10", QStringLiteral("V12(材質 (表))"),
                                                     QStringLiteral("ステンレス"), "V7", "name"});
    demo.WriteExchange(QStringLiteral("velmo.ret2"), {QStringLiteral("D:\\lib\\s1.txt"), "VELMO"});
    const CadAnswer answer = session.ReadAnswer();
    EXPECT_EQ(answer.kind, AnswerKind::Symbol);
    EXPECT_EQ(answer.symbolFile, u"D:\\lib\\s1.txt");
    EXPECT_EQ(answer.libraryWord, u"VELMO");
    ASSERT_EQ(answer.variables.size(), 3u);
    EXPECT_EQ(answer.variables[0].Number(), 1);
    EXPECT_EQ(answer.variables[1].Number(), 12);
    EXPECT_EQ(answer.variables[1].value, QStringLiteral("ステンレス"));
    EXPECT_TRUE(answer.variables[1].HasValue());
    EXPECT_EQ(answer.variables[2].Number(), 7);
    EXPECT_FALSE(answer.variables[2].HasValue());
}

TEST(CadAnswer, NothingChosenLeavesTheOldValuesAlone) {
    const DemoSession demo;
    const CadSession session = demo.Session();
    demo.WriteAnswer(QStringLiteral("40"));
    demo.WriteExchange(QStringLiteral("velmo.ret2"), {"NO SELECT"});
    const CadAnswer answer = session.ReadAnswer();
    EXPECT_EQ(answer.kind, AnswerKind::NoSelection);
    EXPECT_TRUE(answer.variables.empty());
}

TEST(CadAnswer, IsNewWhenItWasWrittenAgainWithTheSameText) {
    const DemoSession demo;
    const CadSession session = demo.Session();
    session.MarkAnswerOld();
    EXPECT_FALSE(session.IsAnswerNew());
    demo.WriteAnswer(QStringLiteral("40"));
    EXPECT_TRUE(session.IsAnswerNew());
    session.MarkAnswerOld();
    EXPECT_FALSE(session.IsAnswerNew());
    EXPECT_EQ(session.ReadAnswer().symbolFile, demo.SymbolFile());
    demo.WriteAnswer(QStringLiteral("40"));
    EXPECT_TRUE(session.IsAnswerNew());
}

TEST(CadAnswer, NamesFileAndLineOfABrokenAnswer) {
    const struct {
        QStringList lines;
        qint64 line;
    } cases[] = {
        {{"2", "V1(d)", "10", "V2(L)"}, 5}, {{"two"}, 1}, {{"-1"}, 1},
        {{"1", "V1(d)", "10", "more"}, 4},  {{}, 1},
    };
    const DemoSession demo;
    const CadSession session = demo.Session();
    demo.WriteExchange(QStringLiteral("velmo.ret2"), {"s.txt", "TOLVIKS"});
    EXPECT_THROW(session.ReadAnswer(), RuntimeError);
    for (const auto& one : cases) {
        demo.WriteExchange(QStringLiteral("velmo.ret"), one.lines);
        try {
            session.ReadAnswer();
            ADD_FAILURE() << "no error: " << one.lines.join(u'/').toStdString();
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.Line(), one.line) << one.lines.join(u'/').toStdString();
            EXPECT_TRUE(error.File().endsWith(QStringLiteral("velmo.ret")));
        }
    }
}

} // namespace
} // namespace velmo
