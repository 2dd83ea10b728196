#include "platform/runtime_error.h"
#include "startup/hand_off_files.h"
#include "support/failing_disk.h"
#include "support/failure.h"
#include "support/temp_folder.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace velmo {
namespace {

const QString Symbol = QStringLiteral("D:\\lib\\s1.txt");

TEST(HandOffFiles, ValuesAreALineEach) {
    const TempFolder folder;
    WriteAnswer(folder.Path(), {{"A", "10"}, {"B", " 20 "}, {"C", "x"}}, Symbol, false);
    EXPECT_EQ(folder.Read("velmo.ret"), "3\r\nA\r\n10\r\nB\r\n 20 \r\nC\r\nx\r\n");
}

TEST(HandOffFiles, NoVariablesGiveASingleLine) {
    const TempFolder folder;
    WriteAnswer(folder.Path(), {}, Symbol, false);
    EXPECT_EQ(folder.Read("velmo.ret"), "0\r\n");
}

TEST(HandOffFiles, TheChoiceNamesSymbolAndLibrary) {
    const TempFolder folder;
    WriteAnswer(folder.Path(), {}, "D:\\lib\\ボルト.txt", true);
    EXPECT_EQ(folder.Read("velmo.ret2"), "D:\\lib\\\x83\x7B\x83\x8B\x83\x67.txt\r\nVELMO\r\n");
    WriteAnswer(folder.Path(), {}, Symbol, false);
    EXPECT_EQ(folder.Read("velmo.ret2"), "D:\\lib\\s1.txt\r\nTOLVIKS\r\n");
}

TEST(HandOffFiles, ACancelLeavesTheValuesOfTheLastAnswer) {
    const TempFolder folder;
    WriteAnswer(folder.Path(), {{"A", "1"}}, Symbol, true);
    const QByteArray values = folder.Read("velmo.ret");
    WriteNoSelection(folder.Path());
    EXPECT_EQ(folder.Read("velmo.ret2"), "NO SELECT\r\n");
    EXPECT_EQ(folder.Read("velmo.ret"), values);
}

TEST(HandOffFiles, ADocumentIsALine) {
    const TempFolder folder;
    folder.Write("velmo.doc", "an older one\r\nof two lines\r\n");
    WriteDocument(folder.Path(), "D:\\lib\\図面\\ボルト.PDF");
    EXPECT_EQ(folder.Read("velmo.doc"), "D:\\lib\\\x90\x7D\x96\xCA\\\x83\x7B\x83\x8B\x83\x67.PDF\r\n");
    EXPECT_FALSE(folder.Exists("velmo.ret"));
    EXPECT_FALSE(folder.Exists("velmo.ret2"));
}

TEST(HandOffFiles, ADocumentThatCannotBeWrittenLeavesTheOldOne) {
    const TempFolder folder;
    folder.Write("velmo.doc", "old\r\n");
    EXPECT_EQ(Failure([&] { WriteDocument(folder.Path(), "שלום.PDF"); }), ErrorNumber::InvalidArgument);
    EXPECT_EQ(folder.Read("velmo.doc"), "old\r\n");
    EXPECT_EQ(Failure([&] { WriteDocument(folder.Path("gone\\"), "A.PDF"); }), ErrorNumber::PathNotFound);
}

TEST(HandOffFiles, AFullDiskLeavesTheOldAnswer) {
    const TempFolder folder;
    WriteAnswer(folder.Path(), {{"A", "1"}}, Symbol, true);
    const QByteArray values = folder.Read("velmo.ret");
    const QByteArray choice = folder.Read("velmo.ret2");
    {
        const FailingDisk disk(64);
        try {
            WriteAnswer(folder.Path(), {{"A", QString(1000, u'9')}}, Symbol, false);
            FAIL();
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.Number(), ErrorNumber::DiskFull);
            EXPECT_EQ(error.File(), folder.Path("velmo.ret"));
        }
    }
    EXPECT_EQ(folder.Read("velmo.ret"), values);
    EXPECT_EQ(folder.Read("velmo.ret2"), choice);
}

TEST(HandOffFiles, NeitherFileChangesWhenOneCannotBeWritten) {
    const TempFolder folder;
    WriteAnswer(folder.Path(), {{"A", "1"}}, Symbol, true);
    const QByteArray values = folder.Read("velmo.ret");
    EXPECT_TRUE(QFile::remove(folder.Path("velmo.ret2").replace(u'\\', u'/')));
    EXPECT_TRUE(QDir().mkpath(folder.Path("velmo.ret2").replace(u'\\', u'/')));
    EXPECT_THROW(WriteAnswer(folder.Path(), {{"A", "2"}}, Symbol, true), RuntimeError);
    EXPECT_EQ(folder.Read("velmo.ret"), values);
}

TEST(HandOffFiles, AMissingFolderIsNamed) {
    const TempFolder folder;
    try {
        WriteNoSelection(folder.Path("none\\"));
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), ErrorNumber::PathNotFound);
        EXPECT_EQ(error.File(), folder.Path("none\\velmo.ret2"));
    }
}

TEST(HandOffFiles, ReadingThePreviousAnswerNeverFails) {
    const TempFolder folder;
    EXPECT_EQ(ReadPreviousAnswer(folder.Path()).symbol, "");
    EXPECT_EQ(ReadPreviousAnswer(folder.Path()).library, "TOLVIKS2");
    folder.Write("velmo.ret2", "only\r\n");
    EXPECT_EQ(ReadPreviousAnswer(folder.Path()).symbol, "only");
    EXPECT_EQ(ReadPreviousAnswer(folder.Path()).library, "TOLVIKS2");
    folder.Write("velmo.ret2", "");
    EXPECT_EQ(ReadPreviousAnswer(folder.Path()).symbol, "");
    folder.Write("velmo.ret2", "s\r\nVELMO\r\nmore\r\n");
    EXPECT_EQ(ReadPreviousAnswer(folder.Path()).symbol, "s");
    EXPECT_EQ(ReadPreviousAnswer(folder.Path()).library, "VELMO");
}

} // namespace
} // namespace velmo
