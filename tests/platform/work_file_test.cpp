#include "platform/files.h"
#include "platform/save_file.h"
#include "support/failing_disk.h"
#include "support/failure.h"
#include "support/other_user.h"
#include "support/temp_folder.h"

#include <QDir>
#include <QFileInfo>
#include <QStorageInfo>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/file.h>

namespace velmo {
namespace {

class WorkFileTest : public testing::Test {
protected:
    bool Replace(const QByteArray& bytes = "new") const {
        return ReplaceFileThrough(folder.Path("M.TMP"), folder.Path("M.PMN"), bytes);
    }
    QByteArray Native(const QString& name) const { return QFile::encodeName(NativePath(folder.Path(name))); }
    mode_t Mode(const QString& name) const {
        struct stat status {};
        return ::stat(Native(name).constData(), &status) == 0 ? status.st_mode & 07777 : 0;
    }
    QStringList Names() const {
        return QDir(NativePath(folder.Path()))
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }
    void Link(const QByteArray& target, const QString& name) const {
        ASSERT_EQ(::symlink(target.constData(), (Native({}) + name.toLatin1()).constData()), 0);
    }

    const TempFolder folder;
};

TEST_F(WorkFileTest, TakesThePlaceOfTheOldFile) {
    folder.Write("M.PMN", "the old one, which is longer");
    EXPECT_TRUE(Replace());
    EXPECT_EQ(folder.Read("M.PMN"), "new");
    EXPECT_EQ(Names(), QStringList{"M.PMN"});
}

TEST_F(WorkFileTest, WithoutAnOldFileItIsTheFile) {
    EXPECT_TRUE(Replace());
    EXPECT_EQ(folder.Read("M.PMN"), "new");
    EXPECT_EQ(Names(), QStringList{"M.PMN"});
}

TEST_F(WorkFileTest, TheFileIsFoundRegardlessOfCaseAndKeepsItsSpelling) {
    folder.Write("m.pmn", "old");
    EXPECT_TRUE(Replace());
    EXPECT_EQ(Names(), QStringList{"m.pmn"});
    EXPECT_EQ(folder.Read("m.pmn"), "new");
}

TEST_F(WorkFileTest, WhatAKilledRunLeftIsOverwritten) {
    folder.Write("M.PMN", "old");
    folder.Write("M.TMP", "half written, and longer than what comes");
    EXPECT_TRUE(Replace());
    EXPECT_EQ(folder.Read("M.PMN"), "new");
    EXPECT_EQ(Names(), QStringList{"M.PMN"});
}

TEST_F(WorkFileTest, ThePermissionsOfTheOldFileStay) {
    for (const mode_t mode : {0640U, 0600U, 0664U, 0644U}) {
        folder.Write("M.PMN", "old");
        ASSERT_EQ(::chmod(Native("M.PMN").constData(), mode), 0);
        EXPECT_TRUE(Replace());
        EXPECT_EQ(Mode("M.PMN"), mode);
    }
}

TEST_F(WorkFileTest, TheOwnerStaysWhenTheSuperuserWrites) {
    if (!OtherUser::IsPossible())
        GTEST_SKIP() << "only the superuser can give files away";
    folder.Write("M.PMN", "old");
    constexpr uid_t owner = 65534;
    ASSERT_EQ(::chown(Native("M.PMN").constData(), owner, owner), 0);
    EXPECT_TRUE(Replace());
    struct stat status {};
    ASSERT_EQ(::stat(Native("M.PMN").constData(), &status), 0);
    EXPECT_EQ(status.st_uid, owner);
    EXPECT_EQ(status.st_gid, owner);
}

TEST_F(WorkFileTest, ASymbolicLinkStaysOne) {
    folder.Write("shared\\table", "old");
    Link("shared/table", "M.PMN");
    EXPECT_TRUE(Replace());
    EXPECT_TRUE(QFileInfo(Native("M.PMN")).isSymLink());
    EXPECT_EQ(folder.Read("shared\\table"), "new");
    EXPECT_EQ(QDir(Native("shared")).entryList(QDir::Files), QStringList{"table"});
    EXPECT_EQ(Names(), (QStringList{"M.PMN", "shared"}));
}

TEST_F(WorkFileTest, ASymbolicLinkToAnotherDiskStaysOne) {
    QTemporaryDir other(QStringLiteral("/dev/shm/velmo-XXXXXX"));
    if (!other.isValid() ||
        QStorageInfo(other.path()).device() == QStorageInfo(NativePath(folder.Path())).device())
        GTEST_SKIP() << "there is no other disk";
    QFile table(other.filePath("table"));
    ASSERT_TRUE(table.open(QIODevice::ReadWrite));
    Link(QFile::encodeName(table.fileName()), "M.PMN");
    EXPECT_TRUE(Replace());
    EXPECT_TRUE(QFileInfo(Native("M.PMN")).isSymLink());
    EXPECT_EQ(folder.Read("M.PMN"), "new");
    EXPECT_EQ(QDir(other.path()).entryList(QDir::Files), QStringList{"table"});
    EXPECT_EQ(Names(), QStringList{"M.PMN"});
}

TEST_F(WorkFileTest, ALinkToNothingBecomesTheFile) {
    Link("nothing", "M.PMN");
    EXPECT_TRUE(Replace());
    EXPECT_EQ(folder.Read("M.PMN"), "new");
    EXPECT_EQ(Names(), QStringList{"M.PMN"});
}

TEST_F(WorkFileTest, AWorkFileThatIsALinkHarmsNoOtherFile) {
    folder.Write("M.PMN", "old");
    folder.Write("other", "other");
    Link("other", "M.TMP");
    EXPECT_TRUE(Replace());
    EXPECT_EQ(folder.Read("M.PMN"), "new");
    EXPECT_FALSE(QFileInfo(Native("M.PMN")).isSymLink());
    EXPECT_EQ(folder.Read("other"), "other");

    ASSERT_EQ(::link(Native("other").constData(), (Native({}) + "M.TMP").constData()), 0);
    EXPECT_TRUE(Replace("newer"));
    EXPECT_EQ(folder.Read("M.PMN"), "newer");
    EXPECT_EQ(folder.Read("other"), "other");
    EXPECT_EQ(Names(), (QStringList{"M.PMN", "other"}));
}

TEST_F(WorkFileTest, AFolderOfTheWorkFilesNameStopsIt) {
    folder.Write("M.PMN", "old");
    folder.Write("M.TMP\\x", "x");
    EXPECT_FALSE(Replace());
    EXPECT_EQ(folder.Read("M.PMN"), "old");
    EXPECT_EQ(folder.Read("M.TMP\\x"), "x");
}

TEST_F(WorkFileTest, AWorkFileThatAnotherProgramIsWritingStopsIt) {
    folder.Write("M.PMN", "old");
    folder.Write("M.TMP", "in the making");
    const int other = ::open(Native("M.TMP").constData(), O_RDWR);
    ASSERT_EQ(::flock(other, LOCK_EX), 0);
    EXPECT_FALSE(Replace());
    EXPECT_EQ(folder.Read("M.TMP"), "in the making");
    EXPECT_EQ(folder.Read("M.PMN"), "old");
    ::close(other);
    EXPECT_TRUE(Replace());
    EXPECT_EQ(folder.Read("M.PMN"), "new");
}

TEST_F(WorkFileTest, AMissingFolderStopsIt) {
    EXPECT_FALSE(ReplaceFileThrough(folder.Path("none\\M.TMP"), folder.Path("none\\M.PMN"), "new"));
    EXPECT_TRUE(Names().isEmpty());
}

TEST_F(WorkFileTest, AFolderThatCannotBeWrittenStopsIt) {
    if (!OtherUser::IsPossible())
        GTEST_SKIP() << "only the superuser can be another user";
    folder.Write("sub\\M.PMN", "old");
    ASSERT_EQ(::chmod(Native("sub\\M.PMN").constData(), 0666), 0);
    {
        const OtherUser other(Native({}));
        ASSERT_TRUE(other.Changed());
        EXPECT_FALSE(ReplaceFileThrough(folder.Path("sub\\M.TMP"), folder.Path("sub\\M.PMN"), "new"));
    }
    EXPECT_EQ(folder.Read("sub\\M.PMN"), "old");
    EXPECT_FALSE(folder.Exists("sub\\M.TMP"));
}

TEST_F(WorkFileTest, AWriteProtectedFileIsNotReplaced) {
    if (!OtherUser::IsPossible())
        GTEST_SKIP() << "only the superuser can be another user";
    folder.Write("M.PMN", "old");
    {
        const OtherUser other(Native({}));
        ASSERT_TRUE(other.Changed());
        EXPECT_EQ(Failure([&] { Replace(); }), ErrorNumber::PermissionDenied);
    }
    EXPECT_EQ(folder.Read("M.PMN"), "old");
    EXPECT_EQ(Names(), QStringList{"M.PMN"});
}

TEST_F(WorkFileTest, WhenRenamingFailsTheWorkFileGoesAndTheOldFileStays) {
    if (!OtherUser::IsPossible())
        GTEST_SKIP() << "only the superuser can be another user";
    // It can be written, but not replaced: only owners may do that in the folder.
    folder.Write("M.PMN", "old");
    ASSERT_EQ(::chmod(Native("M.PMN").constData(), 0666), 0);
    {
        const OtherUser other(Native({}));
        ASSERT_TRUE(other.Changed());
        EXPECT_EQ(Failure([&] { Replace(); }), ErrorNumber::PermissionDenied);
    }
    EXPECT_EQ(folder.Read("M.PMN"), "old");
    EXPECT_EQ(Names(), QStringList{"M.PMN"});
}

TEST_F(WorkFileTest, AFolderOfTheFilesNameIsNotReplaced) {
    folder.Write("M.PMN\\x", "x");
    EXPECT_EQ(Failure([&] { Replace(); }), ErrorNumber::PathFileAccess);
    EXPECT_EQ(Names(), QStringList{"M.PMN"});
}

TEST_F(WorkFileTest, AFullDiskLeavesTheOldFileAndNothingElse) {
    folder.Write("M.PMN", "old");
    {
        const FailingDisk disk(1024);
        EXPECT_EQ(Failure([&] { Replace(QByteArray(100'000, 'x')); }), ErrorNumber::DiskFull);
    }
    EXPECT_EQ(folder.Read("M.PMN"), "old");
    EXPECT_EQ(Names(), QStringList{"M.PMN"});
    EXPECT_TRUE(Replace());
}

} // namespace
} // namespace velmo
