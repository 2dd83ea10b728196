#include "acceptance_test.h"

#include <QFile>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

namespace velmo {
namespace {

using testing::ElementsAre;

const QStringList bolts = {"トルヴィク", "ボルト"};

// Slides that are not what they should be are shown as far as they go, and told about where they show.
class DamagedSlideTest : public AcceptanceTest {
protected:
    void SetUp() override {
        AcceptanceTest::SetUp();
        whole_ = session_.ReadHome("SMB\\BOLT\\HEX.SLD");
    }
    // The picture of the entry whose slide holds these bytes.
    QImage Show(const QByteArray& slide) {
        session_.WriteHome("SMB\\BOLT\\HEX.SLD", slide);
        Run().Click("VlmPdfList", Item::Named("アイボルト"));
        Run().Click("VlmPdfList", Item::Named("六角ボルト"));
        return Run().Picture("VlmPDFSlide");
    }

    QByteArray whole_;
};

TEST_F(DamagedSlideTest, OfSeveralKinds) {
    StartWith("VLM_MAIN");
    const QImage empty = Run().Picture("VlmPDFSlide");
    ChooseCategory(bolts);
    const QImage whole = Show(whole_);
    EXPECT_NE(whole, empty);
    Show("");
    Show("AutoCAD");
    Show(QByteArray(500, '\0'));
    Show(QByteArray(500, '\xFF'));
    Show(whole_.first(31));
    QByteArray garbled = whole_;
    garbled.replace(34, garbled.size() - 34, QByteArray(4000, '\xAA'));
    Show(garbled);
    for (qsizetype length = 0; length < whole_.size(); ++length)
        Show(whole_.first(length));
    // Cut before its end mark the picture is still there, above a line that says so.
    const QImage cut = Show(whole_.chopped(2));
    const QRect above(0, 0, whole.width(), whole.height() / 2);
    EXPECT_EQ(cut.copy(above), whole.copy(above));
    EXPECT_NE(cut, whole);
    EXPECT_TRUE(Run().Property("VlmPDFSlide", "toolTip").toString().contains("HEX.SLD"));
    EXPECT_EQ(Show(whole_), whole);
    OpenShownEntry("六角ボルト");
    EXPECT_THAT(Values(), ElementsAre("10", "50", "SS400"));
}

#ifdef Q_OS_UNIX
TEST_F(DamagedSlideTest, APipeIsNotWaitedFor) {
    const QString file = session_.Home() + "/SMB/BOLT/HEX.SLD";
    ASSERT_TRUE(QFile::remove(file));
    ASSERT_EQ(mkfifo(file.toLocal8Bit().constData(), 0600), 0);
    StartWith("VLM_MAIN");
    ChooseCategory(bolts);
    Run().Click("VlmPdfList", Item::Named("六角ボルト"));
    EXPECT_TRUE(Run().Property("VlmPDFSlide", "toolTip").toString().contains("開けません"));
    OpenShownEntry("六角ボルト");
    EXPECT_THAT(Values(), ElementsAre("10", "50", "SS400"));
}
#endif

TEST_F(DamagedSlideTest, OfACategoryOrMissing) {
    session_.WriteHome("SMB\\BOLT\\BOLT.SLD", "no slide");
    QFile::remove(session_.Home() + "/SMB/WASH/WASH.SLD");
    StartWith("VLM_MAIN");
    ChooseCategory({"トルヴィク", "座金"});
    const QImage missing = Run().Picture("VlmTreeSlide");
    ChooseCategory(bolts);
    EXPECT_EQ(Run().Panels("VlmStatusBar").first(), QString("ボルト"));
    EXPECT_THAT(Run().Column("VlmPdfList", 0), ElementsAre("六角ボルト", "アイボルト", "記号"));
    const QString trouble = Run().Property("VlmTreeSlide", "toolTip").toString();
    EXPECT_TRUE(trouble.contains("スライドのファイルではありません")) << trouble.toStdString();
    EXPECT_TRUE(trouble.contains("BOLT.SLD")) << trouble.toStdString();
    ChooseCategory({"トルヴィク", "座金"});
    EXPECT_EQ(Run().Property("VlmTreeSlide", "toolTip").toString(), QString());
    EXPECT_EQ(Run().Picture("VlmTreeSlide"), missing);
}

// Names are put into search conditions as they are.
class QuoteTest : public AcceptanceTest {
protected:
    void SetUp() override {
        AcceptanceTest::SetUp();
        session_.WriteHomeLines("syst\\vlmsymlib.lst",
                                {R"(("トルヴィク,  ,")", R"( ("O'Brien,  \BOLT\BOLT.SLD,")",
                                 R"(  ("3/4' ボルト,  \BOLT\HEX.SLD,  \BOLT\HEX.TXT"))",
                                 R"(  ("アイボルト,  \BOLT\EYE.SLD,  \BOLT\EYE.TXT"))", " )", ")"});
    }
};

TEST_F(QuoteTest, ACategoryMayHaveOne) {
    StartWith("VLM_MAIN");
    ChooseCategory({"トルヴィク", "O'Brien"});
    EXPECT_EQ(Run().Panels("VlmStatusBar").first(), QString("O'Brien"));
    EXPECT_THAT(Run().Column("VlmPdfList", 0), ElementsAre("3/4' ボルト", "アイボルト"));
}

TEST_F(QuoteTest, AnEntryWithOneIsAnErrorAndTheBrowserGoesOn) {
    StartWith("VLM_MAIN");
    ChooseCategory({"トルヴィク", "O'Brien"});
    Run().Click("VlmPdfList", Item::Named("アイボルト"));
    Run().Click("VlmPdfList", Item::Named("3/4' ボルト"));
    ExpectError({"3075", session_.HomeDir() + "Velmo2.mdb"});
    // Nothing is chosen now.
    Run().ClickAction("Tbar_Open");
    Run().ExpectMessage("シンボルを選択してください");
    Run().AnswerOk();
    OpenShownEntry("アイボルト");
    Run().Click("Vedt_OKBtn");
    EXPECT_EQ(End(), 0);
}

TEST_F(QuoteTest, ALastSymbolWithOneSelectsNothing) {
    session_.Set("TreeLast", "2");
    session_.Set("LastPDF", session_.HomeDir() + "SMB\\BOLT\\O'HEX.TXT");
    StartWith("VLM_MAIN");
    Run().CloseWindow("VLM_MAIN");
    EXPECT_EQ(End(), 0);
    StartWith("VLM_MAIN");
    EXPECT_TRUE(Run().Describe("VlmTreeView", Item::Path({"トルヴィク", "O'Brien"}))["selected"].toBool());
    Run().ClickAction("Tbar_Open");
    Run().ExpectMessage("シンボルを選択してください");
    Run().AnswerOk();
}

TEST_F(QuoteTest, AVariablesNameMayHaveOne) {
    session_.WriteHomeLines("SMB\\BOLT\\EYE.TXT", {"$VAR", R"(V1=PRO("d'",8))", "$GEO"});
    session_.WriteHomeLines("SMB\\BOLT\\EYE.PMN", {"", "2", "1", "ｺﾒﾝﾄ", "3", "0", "呼び", "2", "V0001", "3",
                                                   "0", "d'", "1", " M8 18"});
    StartWith("VLM_MAIN");
    OpenEntry({"トルヴィク", "O'Brien"}, "アイボルト");
    EXPECT_EQ(TableText(1, 2), QString("18"));
    ClickTable(1, 1);
    ExpectError({"3075"});
    EXPECT_TRUE(Run().IsWindowShown("VLM_VEDT"));
    Run().Click("Vedt_OKBtn");
    EXPECT_EQ(End(), 0);
}

TEST_F(QuoteTest, NamesAreNoMarkup) {
    session_.WriteHomeLines("syst\\vlmsymlib.lst",
                            {R"(("トルヴィク,  ,")", R"( ("<b>A</b> & B,  \BOLT\BOLT.SLD,")",
                             R"(  ("<i>目</i>,  \BOLT\EYE.SLD,  \NIL\<u>.TXT"))"});
    StartWith("VLM_MAIN");
    ChooseCategory({"トルヴィク", "<b>A</b> & B"});
    EXPECT_EQ(Run().Panels("VlmStatusBar").first(), QString("<b>A</b> & B"));
    Run().Click("VlmPdfList", Item::Named("<i>目</i>"));
    Run().ClickAction("Tbar_Open");
    Run().ExpectMessage(session_.HomeDir() + "SMB\\NIL\\<u>.TXTが見つかりません");
    Run().AnswerOk();
}

} // namespace
} // namespace velmo
