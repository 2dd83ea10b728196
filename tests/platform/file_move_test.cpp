#include "platform/file_move.h"
#include "platform/files.h"
#include "support/failing_disk.h"
#include "support/failure.h"
#include "support/other_user.h"
#include "support/temp_folder.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <gtest/gtest.h>

namespace velmo {
namespace {

class FileMoveTest : public testing::Test {
protected:
    FileMoveTest() {
        folder.Write("old\\a.sld", "content");
        folder.Write("new\\x", "");
    }

    void Move(IfThere ifThere = IfThere::Refuse) const { MoveFile(from, to, ifThere); }
    QByteArray Native(const QString& stored) const { return QFile::encodeName(NativePath(stored)); }
    static QString Place(const QString& stored) { return PlaceOf(NativePath(stored)); }
    QStringList Names(const QString& name) const {
        return QDir(NativePath(folder.Path(name)))
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }
    // The move fails for this file, and nothing has changed.
    void ExpectRefused(ErrorNumber number, const QString& file, IfThere ifThere = IfThere::Refuse) const {
        const QStringList before = Names("new");
        try {
            Move(ifThere);
            ADD_FAILURE() << "no error";
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.Number(), number);
            EXPECT_EQ(error.File(), file);
        }
        EXPECT_EQ(folder.Read("old\\a.sld"), "content");
        EXPECT_EQ(Names("new"), before);
    }

    const TempFolder folder;
    const QString from = folder.Path("old\\a.sld");
    QString to = folder.Path("new\\A.SLD");
};

TEST_F(FileMoveTest, TheFileIsInItsNewPlaceOnly) {
    Move();
    EXPECT_EQ(Names("new"), (QStringList{"A.SLD", "x"}));
    EXPECT_EQ(folder.Read("new\\A.SLD"), "content");
    EXPECT_EQ(Names("old"), QStringList());
}

TEST_F(FileMoveTest, ItKeepsItsTimesAndPermissions) {
    const QDateTime longAgo(QDate(1999, 12, 31), QTime(23, 59, 58, 123));
    {
        QFile file(NativePath(from));
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        ASSERT_TRUE(file.setFileTime(longAgo, QFile::FileModificationTime));
    }
    ASSERT_EQ(::chmod(Native(from).constData(), 0640), 0);
    Move();
    EXPECT_EQ(QFileInfo(NativePath(to)).lastModified(), longAgo);
    struct stat status {};
    ASSERT_EQ(::stat(Native(to).constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0640U);
}

TEST_F(FileMoveTest, AnEmptyFileMovesAndALargeOneDoesSoInPieces) {
    folder.Write("old\\a.sld", "");
    Move();
    EXPECT_EQ(folder.Read("new\\A.SLD"), "");
    QByteArray large(3'500'001, 'x');
    large.back() = 'y';
    folder.Write("old\\a.sld", large);
    Move(IfThere::Overwrite);
    EXPECT_EQ(folder.Read("new\\A.SLD"), large);
}

TEST_F(FileMoveTest, AnotherFileIsReplacedOnlyWhenItMay) {
    folder.Write("new\\a.Sld", "another, and longer");
    ExpectRefused(ErrorNumber::PathFileAccess, to);
    EXPECT_EQ(folder.Read("new\\a.Sld"), "another, and longer");
    Move(IfThere::Overwrite);
    EXPECT_EQ(folder.Read("new\\a.Sld"), "content");
    EXPECT_EQ(Names("new"), (QStringList{"a.Sld", "x"}));
}

TEST_F(FileMoveTest, AFolderIsNeverReplaced) {
    QDir(NativePath(folder.Path("new"))).mkdir("A.SLD");
    ExpectRefused(ErrorNumber::PathFileAccess, to);
    ExpectRefused(ErrorNumber::PathFileAccess, to, IfThere::Overwrite);
}

TEST_F(FileMoveTest, OntoItselfItStays) {
    ASSERT_EQ(::symlink("old", Native(folder.Path()).append("way").constData()), 0);
    for (const char* same : {"old\\a.sld", "OLD\\A.SLD", "old\\..\\old\\a.sld", "way\\a.sld"}) {
        EXPECT_TRUE(IsSameFile(NativePath(from), NativePath(folder.Path(same))));
        MoveFile(from, folder.Path(same), IfThere::Overwrite);
        EXPECT_EQ(folder.Read("old\\a.sld"), "content") << same;
    }
    EXPECT_FALSE(IsSameFile(NativePath(from), NativePath(folder.Path("new\\x"))));
    EXPECT_FALSE(IsSameFile(NativePath(from), NativePath(to)));
    EXPECT_FALSE(IsSameFile(NativePath(to), NativePath(to))) << "there is none";
}

TEST_F(FileMoveTest, APlaceIsTheSameByWhateverWay) {
    ASSERT_EQ(::symlink("old", Native(folder.Path()).append("way").constData()), 0);
    for (const char* same : {"OLD\\A.SLD", "old\\..\\old\\a.sld", "way\\a.sld"})
        EXPECT_EQ(Place(folder.Path(same)), Place(from)) << same;
    EXPECT_EQ(Place(folder.Path("way\\none")), Place(folder.Path("OLD\\none")));
    EXPECT_NE(Place(folder.Path("gone\\a.sld")), Place(from));
}

TEST_F(FileMoveTest, OfALinkTheContentMovesAndWhatItLedToStays) {
    folder.Write("new\\x", "led to");
    ASSERT_TRUE(QFile::remove(NativePath(from)));
    ASSERT_EQ(::symlink("../new/x", Native(from).constData()), 0);
    Move();
    EXPECT_FALSE(QFileInfo(NativePath(to)).isSymLink());
    EXPECT_EQ(folder.Read("new\\A.SLD"), "led to");
    EXPECT_EQ(folder.Read("new\\x"), "led to");
    EXPECT_EQ(Names("old"), QStringList());
}

TEST_F(FileMoveTest, WhatIsBelowAFolderIsSoByEveryLink) {
    const QString root = folder.Path("home\\");
    folder.Write("home\\SMB\\x", "");
    folder.Write("outside\\x", "");
    const auto link = [this](const char* to, const QString& name) {
        ASSERT_EQ(::symlink(to, Native(folder.Path()).append(name.toUtf8()).constData()), 0);
    };
    link("../outside", "home/OUT");
    link("SMB", "home/IN");
    link("home", "way");
    link("nowhere", "home/DANGLING");
    for (const char* below : {"x", "SMB\\x", "smb\\none", "SMB\\..\\x", "none\\none\\x", "IN\\x", "IN/x",
                              "..x", "a:b", "DANGLING\\x"})
        EXPECT_TRUE(IsBelow(root + below, root)) << below;
    for (const char* other : {"..\\x", "../x", "SMB\\..\\..\\x", "none\\..\\..\\x", "none\\..\\x", "OUT\\x",
                              "OUT\\none\\x", "\\x", "/x", "\\\\server\\x", "C:\\x", "c:/x"})
        EXPECT_FALSE(IsBelow(root + other, root)) << other;
    EXPECT_FALSE(IsBelow(folder.Path("outside\\x"), root));
    EXPECT_FALSE(IsBelow(folder.Path("home2\\x"), root));
    EXPECT_FALSE(IsBelow(folder.Path("gone\\x"), folder.Path("gone\\")));
    const QString way = folder.Path("way\\");
    EXPECT_TRUE(IsBelow(way + "SMB\\x", way)) << "the root may be a link itself";
    EXPECT_FALSE(IsBelow(way + "..\\x", way));
    EXPECT_FALSE(IsBelow(way + "OUT\\x", way));
}

TEST_F(FileMoveTest, WithoutARootTheCurrentFolderIsMeant) {
    EXPECT_TRUE(IsBelow("x", {}));
    EXPECT_TRUE(IsBelow(".\\none\\x", {}));
    EXPECT_FALSE(IsBelow("..\\x", {}));
    EXPECT_FALSE(IsBelow(from, {}));
}

TEST_F(FileMoveTest, FilesMoveTogetherOrNotAtAll) {
    folder.Write("old\\b.pmn", "table");
    const FileToMove first{from, to};
    const FileToMove second{folder.Path("old\\b.pmn"), folder.Path("new\\b.pmn")};
    const FileToMove gone{folder.Path("old\\gone"), folder.Path("new\\gone")};
    EXPECT_EQ(Failure([&] { MoveTogether({first, second, gone}); }), ErrorNumber::FileNotFound);
    EXPECT_EQ(Names("old"), (QStringList{"a.sld", "b.pmn"}));
    EXPECT_EQ(Names("new"), QStringList{"x"});
    EXPECT_EQ(MoveTogether({first, second}), QStringList());
    EXPECT_EQ(Names("old"), QStringList());
    EXPECT_EQ(Names("new"), (QStringList{"A.SLD", "b.pmn", "x"}));
    EXPECT_EQ(folder.Read("new\\b.pmn"), "table");
    MoveTogether({{to, to}});
    EXPECT_EQ(folder.Read("new\\A.SLD"), "content");
}

TEST_F(FileMoveTest, ASourceThatStaysAfterTheFirstIsGoneIsNamed) {
    if (!OtherUser::IsPossible())
        GTEST_SKIP() << "only the superuser can be another user";
    const FileToMove second{folder.Write("kept\\b", "table"), folder.Path("new\\b")};
    for (const char* open : {"old", "new"})
        ASSERT_EQ(::chmod(Native(folder.Path(open)).constData(), 0777), 0);
    ASSERT_EQ(::chmod(Native(folder.Path()).constData(), 0755), 0);
    const OtherUser other(NativePath(folder.Path("kept")));
    ASSERT_TRUE(other.Changed());
    EXPECT_EQ(MoveTogether({{from, to}, second}), QStringList{second.source});
    EXPECT_EQ(Names("old"), QStringList());
    EXPECT_EQ(Names("new"), (QStringList{"A.SLD", "b", "x"}));
    EXPECT_EQ(Failure([&] {
                  MoveTogether({second, {to, from}});
              }),
              ErrorNumber::PathFileAccess)
        << "it is there already";
    EXPECT_EQ(Names("old"), QStringList());
}

TEST_F(FileMoveTest, ANameIsGivenOnlyWhereThereIsNone) {
    EXPECT_FALSE(RenameUnlessThere(from, folder.Path("new\\x")));
    EXPECT_EQ(folder.Read("new\\x"), "");
    EXPECT_EQ(folder.Read("old\\a.sld"), "content");
    EXPECT_TRUE(RenameUnlessThere(from, to));
    EXPECT_EQ(Names("old"), QStringList());
    EXPECT_EQ(folder.Read("new\\A.SLD"), "content");
    EXPECT_EQ(Failure([&] { static_cast<void>(RenameUnlessThere(from, folder.Path("new\\y"))); }),
              ErrorNumber::PathFileAccess);
}

TEST_F(FileMoveTest, BytesAreTheSameOrNot) {
    const QByteArray large(2'500'000, 'x');
    folder.Write("new\\one", large);
    folder.Write("new\\other", large);
    EXPECT_TRUE(HaveSameBytes(folder.Path("new\\one"), folder.Path("NEW\\OTHER")));
    folder.Write("new\\other", large.chopped(1) + 'y');
    EXPECT_FALSE(HaveSameBytes(folder.Path("new\\one"), folder.Path("new\\other")));
    EXPECT_FALSE(HaveSameBytes(from, folder.Path("new\\one")));
    EXPECT_FALSE(HaveSameBytes(from, folder.Path("gone")));
    EXPECT_FALSE(HaveSameBytes(folder.Path("new"), folder.Path("new")));
}

TEST_F(FileMoveTest, AMissingSourceOrFolderIsNamed) {
    const QString gone = folder.Path("old\\gone");
    EXPECT_EQ(Failure([&] { MoveFile(gone, to, IfThere::Refuse); }), ErrorNumber::FileNotFound);
    EXPECT_EQ(Failure([&] { MoveFile(folder.Path("gone\\a"), to, IfThere::Refuse); }),
              ErrorNumber::PathNotFound);
    EXPECT_EQ(Failure([&] { MoveFile(folder.Path("old"), to, IfThere::Refuse); }),
              ErrorNumber::PathFileAccess);
    EXPECT_EQ(Names("new"), QStringList{"x"});
    to = folder.Path("gone\\A.SLD");
    ExpectRefused(ErrorNumber::PathNotFound, to);
}

TEST_F(FileMoveTest, AFullDiskLeavesNothingHalfWritten) {
    folder.Write("new\\A.SLD", "the old one");
    const FailingDisk full(3);
    ExpectRefused(ErrorNumber::DiskFull, to, IfThere::Overwrite);
    EXPECT_EQ(folder.Read("new\\A.SLD"), "the old one");
}

TEST_F(FileMoveTest, WhatAKilledMoveLeftIsOverwrittenOrDeleted) {
    folder.Write("new\\A.SLD.moving", "half");
    Move();
    EXPECT_EQ(Names("new"), (QStringList{"A.SLD", "x"}));
    folder.Write("new\\A.SLD.moving", "half");
    DeleteMoveRemains(to);
    DeleteMoveRemains(to);
    EXPECT_EQ(Names("new"), (QStringList{"A.SLD", "x"}));
}

TEST_F(FileMoveTest, WithoutPermissionItIsTold) {
    if (!OtherUser::IsPossible())
        GTEST_SKIP() << "only the superuser can be another user";
    {
        const OtherUser other(NativePath(folder.Path()));
        ASSERT_TRUE(other.Changed());
        ExpectRefused(ErrorNumber::PermissionDenied, to);
    }
    {
        const OtherUser other(NativePath(folder.Path("new")));
        ASSERT_TRUE(other.Changed());
        ExpectRefused(ErrorNumber::PermissionDenied, from);
    }
    folder.Write("new\\A.SLD", "write-protected");
    {
        const OtherUser other(NativePath(folder.Path("old")));
        ASSERT_TRUE(other.Changed());
        ExpectRefused(ErrorNumber::PermissionDenied, to, IfThere::Overwrite);
    }
    ASSERT_EQ(::chmod(Native(from).constData(), 0), 0);
    const OtherUser other(NativePath(folder.Path("new")));
    ASSERT_TRUE(other.Changed());
    EXPECT_EQ(Failure([&] { Move(IfThere::Overwrite); }), ErrorNumber::PathFileAccess);
}

} // namespace
} // namespace velmo
