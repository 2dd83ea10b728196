#include "acceptance_test.h"

#include <QDir>
#include <QFile>

#include <sys/stat.h>

namespace velmo {
namespace {

using testing::ElementsAre;

const QStringList bolts = {"トルヴィク", "ボルト"};

class BadSettingsTest : public AcceptanceTest {
protected:
    void Confirm() {
        StartWith("VLM_MAIN");
        OpenEntry(bolts, "アイボルト");
        Run().Click("Vedt_OKBtn");
        EXPECT_EQ(End(), 0);
    }
};

TEST_F(BadSettingsTest, WhatOthersWroteStaysByteForByte) {
    const QByteArray before = "; comment \xFF\xFE\n"
                              "no equals sign\n"
                              "=no key\n"
                              "[Other]\n"
                              "VlmHome=elsewhere\n"
                              "Bad\x80=\xC3\x28\n"
                              "\n"
                              "[Settings]\n"
                              "VlmHome=";
    const QByteArray after = "\nSpaced = a \"quoted\\x41\" ; value\n"
                             "Twice=1\n"
                             "Twice=2\n"
                             "garbage\n"
                             "Bad\x80Key=\x80\x81\n"
                             "\xE3\x81\n"
                             "VlmTemp=";
    const QByteArray end = "\n[Third]\r\nKey=1\r\n";
    const QByteArray file =
        before + session_.Home().toUtf8() + after + session_.Exchange().toUtf8() + "\n" + end;
    session_.WriteSettingsFile(file);
    Confirm();
    const QByteArray saved = session_.SettingsFile();
    EXPECT_TRUE(
        saved.startsWith(before + session_.Home().toUtf8() + after + session_.Exchange().toUtf8() + "\n"))
        << saved.toStdString();
    EXPECT_TRUE(saved.endsWith(end)) << saved.toStdString();
    EXPECT_EQ(session_.Setting("SmbTbl1"), QString("8"));
    EXPECT_EQ(session_.Setting("TreeLast"), QString("2"));
}

TEST_F(BadSettingsTest, WindowsLineEndsAreRead) {
    session_.WriteSettingsFile(("[Settings]\r\nVlmHome=" + session_.Home() +
                                "\r\nVlmTemp=" + session_.Exchange() + "\r\nVlmMode=2\r\n")
                                   .toUtf8());
    Confirm();
    EXPECT_EQ(session_.ReadExchangeLines("velmo.ret2")->last(), QString("TOLVIKS"));
}

TEST_F(BadSettingsTest, AFileOfOtherBytesIsAnEmptyStore) {
    session_.WriteSettingsFile(QByteArray("\x00\x01\x02\xFF\n\n\x80", 7));
    ExpectFailedStart({"syst\\vlmsymlib.lst"});
    EXPECT_EQ(session_.SettingsFile(), QByteArray("\x00\x01\x02\xFF\n\n\x80", 7));
}

TEST_F(BadSettingsTest, AFileThatCannotBeReadIsTold) {
    ASSERT_TRUE(QFile::remove(session_.SettingsPath()));
    ASSERT_EQ(::mkfifo(QFile::encodeName(session_.SettingsPath()).constData(), 0600), 0);
    ExpectFailedStart({"75", session_.SettingsPath(), "通常のファイルではありません"});
    ASSERT_TRUE(QFile::remove(session_.SettingsPath()));
    ASSERT_TRUE(QDir().mkpath(session_.SettingsPath()));
    ExpectFailedStart({"75", session_.SettingsPath()});
}

TEST_F(BadSettingsTest, LocksThatWereLeftHoldNobodyUp) {
    for (const char* ending : {".lock", ".velmo-new"}) {
        QFile left(session_.SettingsPath() + ending);
        ASSERT_TRUE(left.open(QIODevice::WriteOnly));
    }
    Confirm();
    EXPECT_EQ(session_.Setting("SmbTbl1"), QString("8"));
    EXPECT_FALSE(QFile::exists(session_.SettingsPath() + ".velmo-new"));
}

TEST_F(BadSettingsTest, ModesThatAreNoNumbersAreTheDefaults) {
    session_.Set("VlmMode", "なし");
    session_.Set("VlmNxt", "1e9");
    session_.WriteExchangeLines("velmo.ret2", {session_.HomeDir() + "SMB\\BOLT\\EYE.TXT", "TOLVIKS"});
    StartWith("VLM_MAIN");
    OpenEntry(bolts, "アイボルト");
    EXPECT_EQ(Run().Window("VLM_VEDT")["title"].toString(), QString("Velmo 変数入力"));
}

TEST_F(BadSettingsTest, AStoredCategoryThatIsNoNumberIsTheFirst) {
    Confirm();
    for (const char* value : {"二", "70000", "-", "1,000"}) {
        session_.Set("TreeLast", value);
        StartWith("VLM_MAIN");
        EXPECT_TRUE(Run().Describe("VlmTreeView", Item::Named("トルヴィク"))["selected"].toBool()) << value;
        Run().ClickAction("Tbar_Cancel");
        EXPECT_EQ(End(), 0);
    }
}

TEST_F(BadSettingsTest, AStoredPlaceThatIsNoNumberIsThatOfAFirstStart) {
    StartWith("VLM_MAIN");
    const QJsonValue place = Run().Property("VLM_MAIN", "pos");
    const QJsonValue size = Run().Property("VLM_MAIN", "size");
    const QJsonValue tree = Run().Property("VlmTreeView", "size");
    Run().ClickAction("Tbar_Cancel");
    EXPECT_EQ(End(), 0);
    for (const char* key :
         {"VlmMainLeft", "VlmMainTop", "VlmMainWidth", "VlmMainHeight", "FrameSplitLeft", "FrameSplitTop",
          "FrameSplitWidth", "FrameSplitHeight", "TreeSplitLeft", "TreeSplitTop", "TreeSplitWidth",
          "TreeSplitHeight", "PdfSplitLeft", "PdfSplitTop", "PdfSplitWidth", "PdfSplitHeight"})
        session_.Set(key, "左");
    StartWith("VLM_MAIN");
    EXPECT_EQ(Run().Property("VLM_MAIN", "pos"), place);
    EXPECT_EQ(Run().Property("VLM_MAIN", "size"), size);
    EXPECT_EQ(Run().Property("VlmTreeView", "size"), tree);
}

TEST_F(BadSettingsTest, ARowThatIsNoneIsTheFirst) {
    StartWith("VLM_MAIN");
    OpenEntry(bolts, "六角ボルト");
    Run().Click("Vedt_OKBtn");
    EXPECT_EQ(End(), 0);
    session_.Set("VlmNxt", "1");
    for (const char* row : {"-3", "x", "70000"}) {
        session_.Set("TBLLast", row);
        session_.Set("DistNo", row);
        session_.Set("VlmMode", "4");
        session_.Set("VlmDist", "0");
        StartWith("VLM_VEDT");
        EXPECT_EQ(CurrentRow("Vedt_FlexGrid"), 1);
        EXPECT_EQ(CurrentRow("Vedt_NowFGrid"), 1);
    }
}

// A return from measuring on a symbol that cannot be read must not come again and again.
TEST_F(BadSettingsTest, AMeasurementIsAnsweredOnceThoughItsSymbolIsGone) {
    session_.Set("VlmMode", "4");
    session_.WriteExchangeLines("velmo.ret2", {session_.HomeDir() + "SMB\\NONE.TXT", "TOLVIKS"});
    ExpectFailedStart({"SMB\\NONE.TXT"});
    EXPECT_EQ(session_.Setting("VlmMode"), QString("2"));
    StartWith("VLM_MAIN");
}

TEST_F(BadSettingsTest, APlaceFarOutsideIsBroughtBack) {
    session_.Set("VlmMainLeft", "900000");
    session_.Set("VlmMainTop", "-900000");
    session_.Set("VlmMainWidth", "10");
    session_.Set("VlmMainHeight", "10");
    StartWith("VLM_MAIN");
    const QJsonValue size = Run().Property("VLM_MAIN", "size");
    constexpr int twipsOfAPixel = 15;
    EXPECT_NEAR(size[0].toInt() * twipsOfAPixel, 3000, twipsOfAPixel);
    EXPECT_NEAR(size[1].toInt() * twipsOfAPixel, 2000, twipsOfAPixel);
    const QJsonArray rect = Run().Window("VLM_MAIN")["rect"].toArray();
    constexpr int widestScreen = 10'000;
    EXPECT_LT(rect[0].toInt(), widestScreen);
    EXPECT_GE(rect[1].toInt(), 0);
}

} // namespace
} // namespace velmo
