#include "disk_sample.h"
#include "platform/files.h"
#include "support/other_user.h"

#include <gmock/gmock.h>

#include <optional>
#include <sys/stat.h>

namespace velmo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

class FolderScanTest : public testing::Test {
protected:
    QStringList Folders(const QString& below = {}) const { return SubFolders(disk_.Home() + below); }
    QStringList Files(const QString& pattern, const QString& below = {}) const {
        return FilesOf(disk_.Home() + below, pattern).names;
    }
    // The names in the order in which the file system gives them.
    QStringList DirectoryOrder() const {
        const QDir home(disk_.Native());
        QDir unsorted(home.path(), {}, QDir::Unsorted, QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot);
        return unsorted.entryList();
    }

    DiskSample disk_;
};

TEST_F(FolderScanTest, OnlyFoldersAreSubFolders) {
    disk_.MakeFolder("BOLT");
    disk_.MakeFolder("nut");
    disk_.MakeFolder(".hidden");
    disk_.MakeFolder("with.dot");
    disk_.WriteFile("HEX.SLD");
    EXPECT_THAT(Folders(), UnorderedElementsAre("BOLT", "nut", ".hidden", "with.dot"));
    EXPECT_THAT(Folders("BOLT\\"), IsEmpty());
}

TEST_F(FolderScanTest, SubFoldersComeAsTheFileSystemGivesThem) {
    for (int i = 0; i < 50; ++i)
        disk_.MakeFolder(QStringLiteral("F%1").arg((i * 37) % 50));
    EXPECT_EQ(Folders(), DirectoryOrder());
    EXPECT_EQ(Folders().size(), 50);
}

TEST_F(FolderScanTest, OnlyOneLevelIsRead) {
    disk_.MakeFolder("A\\B\\C");
    EXPECT_THAT(Folders(), ElementsAre("A"));
    EXPECT_THAT(Folders("A\\"), ElementsAre("B"));
}

TEST_F(FolderScanTest, PageFileIsSkippedAsItIsWritten) {
    disk_.MakeFolder("pagefile.sys");
    disk_.MakeFolder("PAGEFILE.SY");
    EXPECT_THAT(Folders(), ElementsAre("PAGEFILE.SY"));
    disk_.RemoveFolder("pagefile.sys");
    disk_.MakeFolder("PAGEFILE.SYS");
    EXPECT_THAT(Folders(), UnorderedElementsAre("PAGEFILE.SYS", "PAGEFILE.SY"));
}

TEST_F(FolderScanTest, PageFileIsSkippedBesideItsOtherSpelling) {
    disk_.MakeFolder("pagefile.sys");
    disk_.MakeFolder("Pagefile.sys");
    EXPECT_THAT(Folders(), ElementsAre("Pagefile.sys"));
}

TEST_F(FolderScanTest, NamesThatDifferInCaseAreShownOnce) {
    disk_.MakeFolder("Bolt");
    disk_.MakeFolder("BOLT");
    disk_.MakeFolder("NUT");
    const QStringList order = DirectoryOrder();
    const QString first = order[qMin(order.indexOf("Bolt"), order.indexOf("BOLT"))];
    EXPECT_THAT(Folders(), UnorderedElementsAre(first, "NUT"));
}

TEST_F(FolderScanTest, ALinkToAFolderIsAFolder) {
    disk_.MakeFolder("REAL\\INNER");
    disk_.WriteFile("A.SLD");
    disk_.Link("LINKED", disk_.Native("REAL"));
    disk_.Link("FILELINK", disk_.Native("A.SLD"));
    disk_.Link("NOWHERE", disk_.Native("gone"));
    EXPECT_THAT(Folders(), UnorderedElementsAre("REAL", "LINKED"));
    EXPECT_THAT(Folders("LINKED\\"), ElementsAre("INNER"));
}

TEST_F(FolderScanTest, ACircleOfLinksIsReadLevelByLevel) {
    disk_.MakeFolder("A");
    disk_.Link("A\\UP", disk_.Native());
    disk_.Link("SELF", disk_.Native("SELF"));
    EXPECT_THAT(Folders(), ElementsAre("A"));
    EXPECT_THAT(Folders("A\\"), ElementsAre("UP"));
    EXPECT_THAT(Folders("A\\UP\\"), ElementsAre("A"));
    // Deeper than the system follows links: without sub-folders, as anything else that cannot be read.
    QString deep;
    for (int i = 0; i < 100; ++i)
        deep += "A\\UP\\";
    EXPECT_THAT(Folders(deep), IsEmpty());
    EXPECT_THAT(Folders("SELF\\"), IsEmpty());
}

TEST_F(FolderScanTest, WhatCannotBeReadHasNothing) {
    disk_.MakeFolder("CLOSED\\INNER");
    disk_.WriteFile("CLOSED\\A.SLD");
    disk_.WriteFile("FILE");
    EXPECT_THAT(Folders("GONE\\"), IsEmpty());
    EXPECT_FALSE(FilesOf(disk_.Home() + "GONE\\", "*.SLD").readable);
    EXPECT_THAT(Folders("FILE\\"), IsEmpty());
    EXPECT_FALSE(FilesOf(disk_.Home() + "FILE\\", "*.SLD").readable);

    ASSERT_EQ(::chmod(disk_.Native("CLOSED").toLocal8Bit().constData(), 0), 0);
    {
        std::optional<OtherUser> other;
        if (OtherUser::IsPossible())
            other.emplace(QDir(disk_.Native()).absoluteFilePath(".."));
        EXPECT_THAT(Folders("CLOSED\\"), IsEmpty());
        EXPECT_FALSE(FilesOf(disk_.Home() + "CLOSED\\", "*.SLD").readable);
        EXPECT_TRUE(FolderExists(disk_.Home() + "CLOSED\\"));
    }
    ASSERT_EQ(::chmod(disk_.Native("CLOSED").toLocal8Bit().constData(), 0700), 0);
}

TEST_F(FolderScanTest, NamesThatNoStoredPathCanHoldArePassedOver) {
    disk_.MakeFolder("OK");
    ASSERT_TRUE(QDir(disk_.Native()).mkdir("back\\slash"));
    const QByteArray broken = (disk_.Native() + "broken").toLocal8Bit() + "\xff\xfe";
    ASSERT_EQ(::mkdir(broken.constData(), 0777), 0);
    EXPECT_THAT(Folders(), ElementsAre("OK"));
    ASSERT_EQ(::rmdir(broken.constData()), 0);
    QFile odd(disk_.Native() + "b\\s.SLD");
    ASSERT_TRUE(odd.open(QIODevice::WriteOnly));
    disk_.WriteFile("A.SLD");
    EXPECT_THAT(Files("*.SLD"), ElementsAre("A.SLD"));
}

TEST_F(FolderScanTest, NamesOfEveryScript) {
    const QStringList names = {"ボルト", "ﾎﾞﾙﾄ", "straße", "ılık", "Ünïcödé",
                               "שלום",   "𝔸𝕓",   "𐐨𐐩",     "a b",  "ﬁn"};
    for (const QString& name : names) {
        disk_.MakeFolder(name);
        disk_.MakeFolder(name + "\\inner");
    }
    QStringList found = Folders();
    EXPECT_EQ(found.size(), names.size());
    for (const QString& name : names) {
        EXPECT_TRUE(found.contains(name)) << name.toStdString();
        // By its upper-case path it is found again.
        const QString key = disk_.Key(name + "\\");
        EXPECT_EQ(key.size(), (disk_.Home() + name + "\\").size()) << name.toStdString();
        EXPECT_THAT(SubFolders(key), ElementsAre("inner")) << name.toStdString();
    }
}

TEST_F(FolderScanTest, UpperCaseKeepsTheLength) {
    EXPECT_EQ(UpperCasePath("c:\\lib\\ａｂボルト\\"), "C:\\LIB\\ＡＢボルト\\");
    EXPECT_EQ(UpperCasePath("straße ﬁ ŉ"), "STRAßE ﬁ ŉ");
    EXPECT_EQ(UpperCasePath("𐐨"), "𐐀");
    // A lone half of a character stays.
    const QString broken = QString(QChar(0xd801)) + "a";
    EXPECT_EQ(UpperCasePath(broken), QString(QChar(0xd801)) + "A");
}

TEST_F(FolderScanTest, FilesMatchThePatternRegardlessOfCase) {
    for (const char* name : {"b.sld", "A.SLD", "c.Sld", ".hidden.sld", "d.pdf", "e.sldx", "sld", "ｆ.SLD"})
        disk_.WriteFile(name);
    disk_.MakeFolder("folder.sld");
    EXPECT_THAT(Files("*.SLD"), ElementsAre(".hidden.sld", "A.SLD", "b.sld", "c.Sld", "ｆ.SLD"));
    EXPECT_THAT(Files("*.sld"), ElementsAre(".hidden.sld", "A.SLD", "b.sld", "c.Sld", "ｆ.SLD"));
    EXPECT_THAT(Files("*.PDF"), ElementsAre("d.pdf"));
    EXPECT_THAT(Files("*.TXT"), IsEmpty());
    EXPECT_TRUE(FilesOf(disk_.Home(), "*.TXT").readable);
}

TEST_F(FolderScanTest, FileNamesThatDifferInCaseStandSideBySide) {
    disk_.WriteFile("a.sld");
    disk_.WriteFile("A.SLD");
    disk_.WriteFile("B.SLD");
    EXPECT_THAT(Files("*.SLD"), ElementsAre("A.SLD", "a.sld", "B.SLD"));
}

TEST_F(FolderScanTest, OnlyWhatLeadsToAFileIsAFile) {
    disk_.WriteFile("A.SLD");
    disk_.MakeFolder("SUB");
    disk_.Link("TOFILE.SLD", disk_.Native("A.SLD"));
    disk_.Link("TOFOLDER.SLD", disk_.Native("SUB"));
    disk_.Link("NOWHERE.SLD", disk_.Native("gone"));
    ASSERT_EQ(::mkfifo((disk_.Native() + "PIPE.SLD").toLocal8Bit().constData(), 0600), 0);
    EXPECT_THAT(Files("*.SLD"), ElementsAre("A.SLD", "TOFILE.SLD"));
}

TEST_F(FolderScanTest, FoldersAreFoundWhateverTheirCase) {
    disk_.MakeFolder("Bolt\\Inner");
    disk_.WriteFile("Bolt\\A.SLD");
    EXPECT_THAT(SubFolders(disk_.Key("BOLT\\")), ElementsAre("Inner"));
    EXPECT_THAT(FilesOf(disk_.Key("BOLT\\"), "*.SLD").names, ElementsAre("A.SLD"));
    EXPECT_TRUE(FolderExists(disk_.Key("BOLT")));
    EXPECT_FALSE(FolderExists(disk_.Key("BOLT\\A.SLD")));
    EXPECT_FALSE(FolderExists(disk_.Key("NUT\\")));
}

TEST_F(FolderScanTest, ABackslashOnlyWhereThereIsNone) {
    EXPECT_EQ(PathIn("C:\\LIB", "A.SLD"), "C:\\LIB\\A.SLD");
    EXPECT_EQ(PathIn("C:\\LIB\\", "A.SLD"), "C:\\LIB\\A.SLD");
    EXPECT_EQ(FolderPath("C:\\LIB"), "C:\\LIB\\");
    EXPECT_EQ(FolderPath("C:\\"), "C:\\");
}

} // namespace
} // namespace velmo
