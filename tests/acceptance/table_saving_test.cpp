#include "table_run.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>

namespace velmo {
namespace {

using testing::ElementsAre;

// OK, and what is on the disk afterwards.
class TableSavingTest : public TableRunTest {
protected:
    void ExpectNoWorkFile() {
        EXPECT_FALSE(session_.ExistsInHome("SMB\\BOLT\\HEX.TMP"));
        EXPECT_FALSE(session_.ExistsInExchange("VELMONOW.mdb"));
    }
    QString TablePath() const { return session_.Home() + "/SMB/BOLT/HEX.PMN"; }
};

TEST_F(TableSavingTest, WithoutAChangeTheFileStaysAsItIs) {
    // Neither the line end nor the numbers are as a save would write them.
    const QByteArray bytes = "old\r\n1\r\n1\r\nV1\r\n05\r\n0\r\nd\r\n1\r\n10\r\n";
    session_.WriteHome(tableFile_, bytes);
    const QDateTime longAgo(QDate(2001, 2, 3), QTime(4, 5, 6));
    QFile file(TablePath());
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.setFileTime(longAgo, QFileDevice::FileModificationTime));
    file.close();
    OpenTable();
    EXPECT_THAT(TableRows(), ElementsAre(ElementsAre("10")));
    Confirm();
    EXPECT_EQ(session_.ReadHome(tableFile_), bytes);
    EXPECT_EQ(QFileInfo(TablePath()).lastModified(), longAgo);
    ExpectNoWorkFile();
}

TEST_F(TableSavingTest, WhatWasUndoneIsNotSaved) {
    const QByteArray before = session_.ReadHome(tableFile_);
    session_.WriteHome(tableFile_, "kept" + before);
    OpenTable();
    Enter({1, 2}, "11");
    Run().Press("Ctrl+Z");
    Confirm();
    EXPECT_EQ(session_.ReadHome(tableFile_), "kept" + before);
}

TEST_F(TableSavingTest, AChangeIsWrittenByteByByte) {
    session_.WriteHome(tableFile_, "a title\r\n" + session_.ReadHome(tableFile_).mid(2));
    OpenTable();
    Enter({1, 2}, "11");
    Enter({4, 1}, "全角");
    Confirm();
    EXPECT_EQ(
        session_.ReadHome(tableFile_),
        "\r\n3\r\n1\r\n\xba\xd2\xdd\xc4\r\n6\r\n0\r\n\x8c\xc4\x82\xd1\r\n2\r\nV0001\r\n5\r\n1\r\nd\r\n"
        "3\r\nV0002\r\n5\r\n0\r\nL\r\n4\r\n"
        "   M10   11   50\r\n   M10   10   60\r\n   M12   12   50\r\n    \x91\x53\x8a\x70   12   80\r\n");
    ExpectNoWorkFile();
}

TEST_F(TableSavingTest, TheAnswerNamesTheSymbolAndTheNames) {
    OpenTable();
    Click({2, 3});
    Run().Type("61");
    Confirm();
    const QString symbol = Symbol("HEX.TXT");
    EXPECT_EQ(session_.ReadExchangeLines("velmo.ret"),
              QStringList({"3", "V1", "d", "V2", "L", "V3", "材質"}));
    EXPECT_EQ(session_.ReadExchangeLines("velmo.ret2"), QStringList({symbol, "VELMO"}));
    EXPECT_EQ(session_.Setting("VlmTbl1"), QString("d"));
    EXPECT_EQ(session_.Setting("VlmTbl2"), QString("L"));
    EXPECT_EQ(session_.Setting("VlmTbl3"), QString("材質"));
    EXPECT_EQ(session_.Setting("UsrTBLLast"), QString("2"));
    EXPECT_EQ(session_.Setting("UsrLastPDF"), symbol);
    EXPECT_EQ(session_.Setting("VlmMode"), QString("3"));
    for (const char* others : {"SmbTbl1", "TBLLast", "LastPDF", "DistNo"})
        EXPECT_EQ(session_.Setting(others), std::nullopt) << others;
    // The editor was open when OK was clicked, and its text counts.
    EXPECT_EQ(TableFile().at(19), QString("   M10   10   61"));
}

TEST_F(TableSavingTest, OpenedAgainItShowsTheSame) {
    OpenTable();
    ChooseOnColumn(3, "VedtHdrPopAdd");
    Run().Press("Return");
    Run().SetClipboard("SS400\nS45C\nSUS304\n特殊鋼");
    Click({1, 4});
    Run().Press("Ctrl+V");
    ChooseOnColumn(4, "VedtHdrPopBef");
    ChooseOnRow(2, "VedtHdrPopAft");
    const QStringList headers = Headers();
    Confirm();
    EXPECT_THAT(headers, ElementsAre("呼び", "d", "材質", "L"));
    EXPECT_EQ(TableFile().mid(12),
              QStringList({"3", "V0003", "10", "0", "材質", "4", "V0002", "5", "0", "L", "4",
                           "   M10   10     SS400   50", "   M12   12    SUS304   50",
                           "   M10   10      S45C   60", "   M12   12       特殊鋼   80"}));
    OpenTable();
    EXPECT_EQ(Headers(), headers);
    // Rows of one group stand together again.
    EXPECT_THAT(TableRows(),
                ElementsAre(ElementsAre("M10", "10", "SS400", "50"), ElementsAre("M10", "10", "S45C", "60"),
                            ElementsAre("M12", "12", "SUS304", "50"),
                            ElementsAre("M12", "12", "特殊鋼", "80")));
    EXPECT_FALSE(IsChanged());
}

TEST_F(TableSavingTest, TheValueInputTakesTheNewTable) {
    OpenTable();
    Enter({1, 2}, "11");
    Enter({2, 2}, "11");
    Confirm();
    session_.Set("VlmMode", "2");
    OpenTable();
    ClickTable(1, 1);
    EXPECT_THAT(Values().first(2), ElementsAre("11", "50"));
}

TEST_F(TableSavingTest, ANewTableIsWritten) {
    OpenTable("EYE");
    Run().SetClipboard("M8\t8\t1");
    Run().Press("Ctrl+V");
    Confirm();
    EXPECT_EQ(
        session_.ReadHome("SMB\\BOLT\\EYE.PMN"),
        "\r\n3\r\n1\r\n\xba\xd2\xdd\xc4\r\n10\r\n0\r\n\x8c\xc4\x82\xd1\r\n2\r\nV0001\r\n10\r\n0\r\nd\r\n"
        "3\r\nV0007\r\n10\r\n0\r\n\x8c\xc2\x90\x94\r\n1\r\n        M8         8         1\r\n");
    EXPECT_FALSE(session_.ExistsInHome("SMB\\BOLT\\EYE.TMP"));
    OpenTable("EYE");
    EXPECT_THAT(TableRows(), ElementsAre(ElementsAre("M8", "8", "1")));
}

TEST_F(TableSavingTest, ByTheKeyboardAlone) {
    OpenTable();
    Run().Press("Tab");
    Run().Type("9");
    Run().Press("Ctrl+Return");
    EXPECT_EQ(End(), 0);
    EXPECT_EQ(TableFile().at(18), QString("   M10    9   50"));
}

TEST_F(TableSavingTest, TheFileKeepsItsRights) {
    const auto rights = QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadGroup;
    ASSERT_TRUE(QFile::setPermissions(TablePath(), rights));
    OpenTable();
    Enter({1, 2}, "11");
    Confirm();
    const auto asked = QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadGroup |
                       QFileDevice::WriteGroup | QFileDevice::ReadOther | QFileDevice::WriteOther;
    EXPECT_EQ(QFile::permissions(TablePath()) & asked, rights);
}

} // namespace
} // namespace velmo
