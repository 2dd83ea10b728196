#include "startup/hand_off_files.h"

#include "platform/runtime_error.h"
#include "support/failing_disk.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

TEST(HandOffFiles, ValuesAreALineEach) {
    const TempFolder folder;
    WriteValues(folder.Path(), {{"A", "10"}, {"B", " 20 "}, {"C", "x"}});
    EXPECT_EQ(folder.Read("velmo.ret"), "3\r\nA\r\n10\r\nB\r\n 20 \r\nC\r\nx\r\n");
}

TEST(HandOffFiles, NoVariablesGiveASingleLine) {
    const TempFolder folder;
    WriteValues(folder.Path(), {});
    EXPECT_EQ(folder.Read("velmo.ret"), "0\r\n");
}

TEST(HandOffFiles, TheChoiceNamesSymbolAndLibrary) {
    const TempFolder folder;
    WriteChoice(folder.Path(), "D:\\lib\\ボルト.txt", true);
    EXPECT_EQ(folder.Read("velmo.ret2"), "D:\\lib\\\x83\x7B\x83\x8B\x83\x67.txt\r\nVELMO\r\n");
    WriteChoice(folder.Path(), "D:\\lib\\s1.txt", false);
    EXPECT_EQ(folder.Read("velmo.ret2"), "D:\\lib\\s1.txt\r\nTOLVIKS\r\n");
    WriteNoSelection(folder.Path());
    EXPECT_EQ(folder.Read("velmo.ret2"), "NO SELECT\r\n");
}

TEST(HandOffFiles, AFullDiskLeavesTheOldAnswer) {
    const TempFolder folder;
    WriteValues(folder.Path(), {{"A", "1"}});
    const QByteArray before = folder.Read("velmo.ret");
    {
        const FailingDisk disk(64);
        try {
            WriteValues(folder.Path(), {{"A", QString(1000, u'9')}});
            FAIL();
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.Number(), ErrorNumber::DiskFull);
            EXPECT_EQ(error.File(), folder.Path("velmo.ret"));
        }
    }
    EXPECT_EQ(folder.Read("velmo.ret"), before);
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
