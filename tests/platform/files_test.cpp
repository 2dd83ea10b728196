#include "platform/files.h"
#include "platform/runtime_error.h"
#include "platform/save_file.h"
#include "platform/text_file.h"
#include "support/failing_disk.h"
#include "support/failure.h"
#include "support/temp_folder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <gmock/gmock.h>

namespace velmo {
namespace {

TEST(Files, NamesAreFoundRegardlessOfCase) {
    const TempFolder folder;
    folder.Write("Smb\\Bolt\\m10.TXT", "x");
    EXPECT_TRUE(FileExists(folder.Path("SMB\\BOLT\\M10.txt")));
    EXPECT_TRUE(NativePath(folder.Path("SMB\\BOLT\\M10.txt")).endsWith("/Smb/Bolt/m10.TXT"));
    EXPECT_FALSE(FileExists(folder.Path("SMB\\BOLT\\M12.txt")));
    EXPECT_FALSE(FileExists(folder.Path("SMB\\BOLT"))) << "a folder is no file";
    EXPECT_FALSE(FileExists({}));
}

TEST(Files, TheExactSpellingWins) {
    const TempFolder folder;
    folder.Write("a.txt", "small");
    folder.Write("A.TXT", "large");
    EXPECT_TRUE(NativePath(folder.Path("A.TXT")).endsWith("/A.TXT"));
    EXPECT_TRUE(NativePath(folder.Path("a.txt")).endsWith("/a.txt"));
}

TEST(Files, ANewNameStaysAsSpelledInAFolderFoundRegardlessOfCase) {
    const TempFolder folder;
    folder.Write("Syst\\x", "");
    EXPECT_TRUE(NativePath(folder.Path("SYST\\New.txt")).endsWith("/Syst/New.txt"));
}

TEST(Files, ManyPathsAreFoundAsOneIs) {
    const TempFolder folder;
    folder.Write("Smb\\Bolt\\m10.TXT", "x");
    folder.Write("a.txt", "small");
    folder.Write("A.TXT", "large");
    NativePaths paths;
    for (const char* name : {"SMB\\BOLT\\M10.txt", "smb\\bolt\\m12.txt", "a.txt", "A.TXT", "A.txt", "GONE\\x",
                             "SMB\\", "", "..\\x"}) {
        const QString stored = folder.Path(name);
        EXPECT_EQ(paths.Find(stored), NativePath(stored)) << name;
    }
    EXPECT_EQ(paths.Find({}), "");
    EXPECT_EQ(paths.Find("gone\\x"), "gone/x");
}

TEST(Files, AFolderIsReadOnceForManyPaths) {
    const TempFolder folder;
    folder.Write("one", "");
    NativePaths paths;
    EXPECT_TRUE(paths.Find(folder.Path("ONE")).endsWith("/one"));
    folder.Write("later", "");
    EXPECT_TRUE(paths.Find(folder.Path("LATER")).endsWith("/LATER"));
    EXPECT_TRUE(paths.Find(folder.Path("later")).endsWith("/later"));
}

TEST(Files, DeletingAMissingFileIsAnError) {
    const TempFolder folder;
    EXPECT_EQ(Failure([&] { DeleteFile(folder.Path("none")); }), ErrorNumber::FileNotFound);
    DeleteFileIfAny(folder.Path("none"));
    folder.Write("one", "1");
    DeleteFile(folder.Path("ONE"));
    EXPECT_FALSE(folder.Exists("one"));
}

TEST(Files, ReplacingWritesTheWholeFileOrNothing) {
    const TempFolder folder;
    folder.Write("answer", "old");
    ReplaceFile(folder.Path("answer"), "new");
    EXPECT_EQ(folder.Read("answer"), "new");
    {
        const FailingDisk disk(1024);
        EXPECT_EQ(Failure([&] { ReplaceFile(folder.Path("answer"), QByteArray(100'000, 'x')); }),
                  ErrorNumber::DiskFull);
    }
    EXPECT_EQ(folder.Read("answer"), "new");
    EXPECT_EQ(QDir(NativePath(folder.Path())).entryList(QDir::Files), QStringList{"answer"})
        << "nothing half-written stays";
}

TEST(Files, ReplacingKeepsThePermissions) {
    const TempFolder folder;
    folder.Write("answer", "old");
    const QFile::Permissions wanted =
        QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser;
    QFile::setPermissions(NativePath(folder.Path("answer")), wanted);
    ReplaceFile(folder.Path("answer"), "new");
    EXPECT_EQ(QFileInfo(NativePath(folder.Path("answer"))).permissions(), wanted);
}

TEST(Files, ReplacingTellsWhyItCannot) {
    const TempFolder folder;
    EXPECT_EQ(Failure([&] { ReplaceFile(folder.Path("none\\x"), "1"); }), ErrorNumber::PathNotFound);
    folder.Write("dir\\x", "");
    EXPECT_EQ(Failure([&] { ReplaceFile(folder.Path("dir"), "1"); }), ErrorNumber::PathFileAccess);
}

TEST(TextFile, LinesEndAtAnyLineBreak) {
    const TempFolder folder;
    TextReader reader(folder.Write("t", "one\r\ntwo\nthree\rfour\r\n\r\nlast"));
    QStringList lines;
    while (!reader.AtEnd())
        lines << reader.ReadLine();
    EXPECT_EQ(lines, (QStringList{"one", "two", "three", "four", "", "last"}));
    EXPECT_EQ(reader.LineNumber(), 6);
    EXPECT_EQ(Failure([&] { reader.ReadLine(); }), ErrorNumber::InputPastEnd);
}

TEST(TextFile, LineBreaksAndLongLinesAcrossChunks) {
    const TempFolder folder;
    const QByteArray longLine(200'000, 'a');
    // The CR is the last byte of the first chunk, its LF the first of the next.
    const QByteArray start(64 * 1024 - 1, 'b');
    TextReader reader(folder.Write("t", start + "\r\n" + longLine + "\r\nend\r\n"));
    EXPECT_EQ(reader.ReadLine().size(), start.size());
    EXPECT_EQ(reader.ReadLine().size(), longLine.size());
    EXPECT_EQ(reader.ReadLine(), "end");
    EXPECT_TRUE(reader.AtEnd());
}

TEST(TextFile, BytesOfALineAreNotDecoded) {
    const TempFolder folder;
    TextReader reader(folder.Write("t", "\x83\xFD\r\n\xA0\n\x8C\xC4"));
    EXPECT_EQ(reader.ReadBytes().toByteArray(), "\x83\xFD");
    EXPECT_EQ(reader.ReadBytes().toByteArray(), "\xA0");
    EXPECT_EQ(reader.ReadLine(), QStringLiteral("呼"));
    EXPECT_EQ(reader.LineNumber(), 3);
    EXPECT_EQ(Failure([&] { reader.ReadBytes(); }), ErrorNumber::InputPastEnd);
}

TEST(TextFile, AFileThatCannotBeOpenedIsNamed) {
    const TempFolder folder;
    EXPECT_EQ(Failure([&] { TextReader reader(folder.Path("none.txt")); }), ErrorNumber::FileNotFound);
    EXPECT_EQ(Failure([&] { TextReader reader(folder.Path("none\\none.txt")); }), ErrorNumber::PathNotFound);
    EXPECT_EQ(Failure([&] { TextReader reader(folder.Path()); }), ErrorNumber::PathFileAccess);
    try {
        TextReader reader(folder.Path("none.txt"));
    } catch (const RuntimeError& error) {
        EXPECT_THAT(ErrorText(error).toStdString(),
                    testing::HasSubstr(folder.Path("none.txt").toStdString()));
    }
}

TEST(TextFile, WritesCodePageWithCarriageReturns) {
    const TempFolder folder;
    TextWriter writer(folder.Path("out.txt"));
    writer.WriteLine(u"呼び");
    writer.WriteLine(u"");
    EXPECT_FALSE(folder.Exists("out.txt")) << "nothing is written before the whole is";
    writer.Commit();
    EXPECT_EQ(folder.Read("out.txt"), "\x8C\xC4\x82\xD1\r\n\r\n");
}

TEST(TextFile, ACharacterOutsideTheCodePageNamesItsLine) {
    const TempFolder folder;
    TextWriter writer(folder.Path("out.txt"));
    writer.WriteLine(u"good");
    try {
        writer.WriteLine(u"caf\u00e9");
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), ErrorNumber::InvalidArgument);
        EXPECT_EQ(error.Line(), 2);
        EXPECT_TRUE(ErrorText(error).contains("é"));
    }
}

} // namespace
} // namespace velmo
