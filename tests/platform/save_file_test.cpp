#include "platform/files.h"
#include "platform/plain_settings.h"
#include "platform/save_file.h"
#include "platform/settings_store.h"
#include "platform/text_file.h"
#include "support/failure.h"
#include "support/temp_folder.h"

#include <QDir>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace velmo {
namespace {

constexpr std::chrono::milliseconds NoPatience{0};

class SaveFileTest : public testing::Test {
protected:
    QByteArray Native(const QString& name) const { return QFile::encodeName(NativePath(folder.Path(name))); }
    QStringList Names() const {
        return QDir(NativePath(folder.Path()))
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }
    // A pipe that nobody writes to or reads from.
    QString Pipe(const QString& name) const {
        EXPECT_EQ(
            ::mkfifo((QFile::encodeName(NativePath(folder.Path())) + name.toLatin1()).constData(), 0600), 0);
        return folder.Path(name);
    }

    const TempFolder folder;
};

TEST_F(SaveFileTest, WithoutCommitTheOldFileStays) {
    folder.Write("a", "old");
    {
        SaveFile file(folder.Path("a"));
        file.Write("new");
        EXPECT_EQ(Names(), (QStringList{"a", "a.velmo-new"}));
    }
    EXPECT_EQ(folder.Read("a"), "old");
    EXPECT_EQ(Names(), QStringList{"a"});
}

TEST_F(SaveFileTest, WhatAKilledRunLeftIsGoneAfterTheNextSave) {
    folder.Write("a.velmo-new", "half written");
    ReplaceFile(folder.Path("a"), "whole");
    EXPECT_EQ(folder.Read("a"), "whole");
    EXPECT_EQ(Names(), QStringList{"a"});
}

TEST_F(SaveFileTest, NobodyElseWritesAFileMeanwhile) {
    SaveFile first(folder.Path("a"));
    first.Write("first");
    EXPECT_EQ(Failure([&] { SaveFile(folder.Path("a"), NoPatience); }), ErrorNumber::PathFileAccess);
    first.Commit();
    ReplaceFile(folder.Path("a"), "second");
    EXPECT_EQ(folder.Read("a"), "second");
}

TEST_F(SaveFileTest, ASecondWriterWaitsForTheFirst) {
    int told[2] = {};
    ASSERT_EQ(::pipe(told), 0);
    const QString path = folder.Path("a");
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        SaveFile held(path);
        held.Write("first");
        const char ready = 1;
        if (::write(told[1], &ready, 1) != 1)
            ::_exit(1);
        ::usleep(100'000);
        held.Commit();
        ::_exit(0);
    }
    char ready = 0;
    ASSERT_EQ(::read(told[0], &ready, 1), 1);
    ReplaceFile(path, "second");
    EXPECT_EQ(folder.Read("a"), "second") << "the first has not come after it";
    int status = -1;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(folder.Read("a"), "second");
    ::close(told[0]);
    ::close(told[1]);
}

TEST_F(SaveFileTest, ALockThatADeadProgramLeftHoldsNobodyUp) {
    folder.Write("Velmo2.ini.lock", "");
    folder.Write("Velmo2.ini.velmo-new", "");
    SettingsStore store(NativePath(folder.Path("Velmo2.ini")));
    store.Save("A", "1");
    store.Flush();
    EXPECT_EQ(folder.Read("Velmo2.ini"), "[Settings]\nA=1\n");
}

TEST_F(SaveFileTest, WhatSomebodyElseLeftMakesRoom) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only the superuser can be another user";
    folder.Write("a.velmo-new", "left by a program that was killed");
    ASSERT_EQ(::chmod(Native("a.velmo-new").constData(), 0644), 0);
    ASSERT_EQ(::chmod(Native({}).constData(), 0777), 0);
    constexpr uid_t nobody = 65534;
    const int held = ::open(Native("a.velmo-new").constData(), O_RDONLY);
    ASSERT_EQ(::flock(held, LOCK_EX), 0);
    ASSERT_EQ(::seteuid(nobody), 0);
    EXPECT_EQ(Failure([&] { SaveFile(folder.Path("a"), NoPatience); }), ErrorNumber::PathFileAccess)
        << "its writer is at work";
    ::close(held);
    ReplaceFile(folder.Path("a"), "new");
    ASSERT_EQ(::seteuid(0), 0);
    EXPECT_EQ(folder.Read("a"), "new");
    EXPECT_EQ(Names(), QStringList{"a"});
}

TEST_F(SaveFileTest, WhatIsInTheWorkFilesPlaceIsNamed) {
    folder.Write("a.velmo-new\\x", "");
    try {
        ReplaceFile(folder.Path("a"), "new");
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_TRUE(error.File().endsWith("a.velmo-new")) << error.File().toStdString();
    }
}

TEST_F(SaveFileTest, AnOldFileOfAnySizeIsReplacedTogetherWithOthers) {
    for (const char* name : {"velmo.ret", "velmo.ret2"}) {
        QFile file(NativePath(folder.Path()) + name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        // Of holes: it takes no room on the disk.
        ASSERT_TRUE(file.resize(qint64(1) << 40));
    }
    ReplaceFiles({{folder.Path("velmo.ret"), "1"}, {folder.Path("velmo.ret2"), "2"}});
    EXPECT_EQ(folder.Read("velmo.ret") + folder.Read("velmo.ret2"), "12");
    EXPECT_EQ(Names(), (QStringList{"velmo.ret", "velmo.ret2"}));
}

TEST_F(SaveFileTest, ALinkToSettingsThatAreNotThereIsNoEmptyStore) {
    ASSERT_EQ(::symlink("away/Velmo2.ini", (Native({}) + "Velmo2.ini").constData()), 0);
    SettingsStore store(NativePath(folder.Path()) + "Velmo2.ini");
    EXPECT_EQ(Failure([&] { store.Get("VlmHome"); }), ErrorNumber::PathFileAccess);
    store.Save("A", "1");
    EXPECT_EQ(Failure([&] { store.Flush(); }), ErrorNumber::PathFileAccess);
    EXPECT_TRUE(QFileInfo(Native("Velmo2.ini")).isSymLink());
}

TEST_F(SaveFileTest, SettingsOfAnotherSpellingAreSomebodyElses) {
    folder.Write("velmo2.ini", "[Settings]\nA=theirs\n");
    const QString path = NativePath(folder.Path()) + "Velmo2.ini";
    SettingsStore store(path);
    EXPECT_EQ(store.Get("A"), "");
    store.Save("A", "ours");
    store.Flush();
    EXPECT_EQ(folder.Read("velmo2.ini"), "[Settings]\nA=theirs\n");
    EXPECT_EQ(SettingsStore(path).Get("A"), "ours");
}

TEST_F(SaveFileTest, AFolderOfSettingsMayHaveABackslashInItsName) {
    const QString path = NativePath(folder.Path()) + "DOMAIN\\user/Velmo2.ini";
    SettingsStore store(path);
    store.Save("A", "1");
    store.Flush();
    EXPECT_EQ(SettingsStore(path).Get("A"), "1");
    EXPECT_TRUE(QFileInfo::exists(path));
}

TEST_F(SaveFileTest, ARefusedTextForgetsWhatWasSavedWithIt) {
    SettingsStore store(NativePath(folder.Path("Velmo2.ini")));
    store.Save("VlmMode", "4");
    EXPECT_EQ(Failure([&] { store.Save("LastPDF", "a\nb"); }), ErrorNumber::InvalidArgument);
    EXPECT_EQ(store.Get("VlmMode", "2"), "2");
}

TEST_F(SaveFileTest, APipeIsNotReplaced) {
    const QString pipe = Pipe("velmo.ret");
    EXPECT_EQ(Failure([&] { ReplaceFile(pipe, "new"); }), ErrorNumber::PathFileAccess);
    EXPECT_EQ(Names(), QStringList{"velmo.ret"});
    EXPECT_EQ(Failure([&] { SaveFile(pipe, folder.Path("M.TMP")); }), ErrorNumber::PathFileAccess);
}

TEST_F(SaveFileTest, PipesAndDevicesAreNotRead) {
    const QString pipe = Pipe("pipe");
    for (const QString& path : {pipe, QStringLiteral("\\dev\\zero")}) {
        try {
            TextReader reader(path);
            FAIL() << path.toStdString();
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.Number(), ErrorNumber::PathFileAccess);
            EXPECT_EQ(error.Detail(), "通常のファイルではありません。");
            EXPECT_EQ(error.File(), path);
        }
        EXPECT_EQ(Failure([&] { ReadWholeFile(path, 10); }), ErrorNumber::PathFileAccess);
        QString native = path;
        const SettingsStore store(native.replace(u'\\', u'/'));
        EXPECT_EQ(Failure([&] { store.Get("VlmHome"); }), ErrorNumber::PathFileAccess);
    }
}

TEST_F(SaveFileTest, AFileIsReadUpToASize) {
    const QString path = folder.Write("a", "0123456789");
    EXPECT_EQ(ReadWholeFile(path, 10), "0123456789");
    EXPECT_EQ(Failure([&] { ReadWholeFile(path, 9); }), ErrorNumber::PathFileAccess);
}

TEST_F(SaveFileTest, ALineIsReadUpToALength) {
    const QByteArray longest(LongestLine, 'a');
    TextReader reader(folder.Write("t", "1\r\n" + longest + "\r\n" + longest + "a\r\n"));
    EXPECT_EQ(reader.ReadLine(), "1");
    EXPECT_EQ(reader.ReadLine().size(), LongestLine);
    try {
        reader.ReadLine();
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), ErrorNumber::Overflow);
        EXPECT_EQ(error.Line(), 3);
        EXPECT_EQ(error.File(), folder.Path("t"));
    }
}

TEST_F(SaveFileTest, TheLineLimitHoldsWithoutALineBreak) {
    QFile file(Native("t"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    // Of holes: it takes no room on the disk.
    ASSERT_TRUE(file.resize(qint64(1) << 32));
    TextReader reader(folder.Path("t"));
    EXPECT_EQ(Failure([&] { reader.ReadLine(); }), ErrorNumber::Overflow);
    EXPECT_LT(reader.Position(), 2 * LongestLine) << "the rest is not read";
}

TEST_F(SaveFileTest, SettingsThatCannotBeReadAreNotEmpty) {
    const QString path = NativePath(folder.Path("Velmo2.ini"));
    ASSERT_TRUE(QDir().mkpath(path));
    SettingsStore store(path);
    EXPECT_EQ(Failure([&] { store.Get("VlmHome"); }), ErrorNumber::PathFileAccess);
    store.Save("A", "1");
    EXPECT_EQ(Failure([&] { store.Flush(); }), ErrorNumber::PathFileAccess);
}

TEST_F(SaveFileTest, NothingHappensWhenSettingsFindNoRoom) {
    folder.Write("Velmo2.ini\\x", "");
    SettingsStore store(NativePath(folder.Path("Velmo2.ini")));
    store.Save("A", "1");
    bool happened = false;
    EXPECT_EQ(Failure([&] { store.FlushAround([&] { happened = true; }); }), ErrorNumber::PathFileAccess);
    EXPECT_FALSE(happened);
}

TEST_F(SaveFileTest, SettingsStayWhenWhatTheyBelongToFails) {
    const QByteArray before = "[Settings]\nA=1\n";
    folder.Write("Velmo2.ini", before);
    SettingsStore store(NativePath(folder.Path("Velmo2.ini")));
    store.Save("A", "2");
    EXPECT_EQ(Failure([&] { store.FlushAround([] { throw RuntimeError(ErrorNumber::DiskFull); }); }),
              ErrorNumber::DiskFull);
    EXPECT_EQ(folder.Read("Velmo2.ini"), before);
    EXPECT_EQ(store.Get("A"), "1");
    EXPECT_EQ(Names(), QStringList{"Velmo2.ini"});
}

} // namespace
} // namespace velmo
