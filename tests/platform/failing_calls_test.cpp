#include "platform/files.h"
#include "platform/runtime_error.h"
#include "platform/save_file.h"
#include "platform/settings_store.h"
#include "support/counted_calls.h"
#include "support/temp_folder.h"

#include <QDir>
#include <gtest/gtest.h>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace velmo {
namespace {

constexpr long MostCalls = 500;
constexpr long SomeCalls = 10;

// Files are saved again and again, and each time another one of the calls that this takes fails or is the
// last.
class FailingCallsTest : public testing::Test {
protected:
    enum class Outcome { Done, Told, Killed };

    // In a process of its own, for counting ends with it.
    static Outcome Run(const std::function<void()>& action, long call, CallFate fate) {
        const pid_t child = ::fork();
        if (child == 0) {
            CountCalls(call, fate);
            try {
                action();
            } catch (const RuntimeError&) {
                ::_exit(1);
            }
            ::_exit(long(CountedCalls().size()) < call ? 2 : 0);
        }
        int status = 0;
        EXPECT_EQ(::waitpid(child, &status, 0), child);
        if (WIFSIGNALED(status))
            return Outcome::Killed;
        return WEXITSTATUS(status) == 1 ? Outcome::Told : Outcome::Done;
    }

    // The number of calls that the action takes when all is as it was.
    static long CallsOf(const std::function<void()>& action, const std::function<void()>& putBack) {
        for (long call = 1; call < MostCalls; ++call) {
            putBack();
            if (Run(action, call, CallFate::Killed) != Outcome::Killed)
                return call - 1;
        }
        return 0;
    }

    QStringList Names() const { return QDir(NativePath(folder.Path())).entryList(QDir::Files); }

    const TempFolder folder;
};

const QByteArray OldSettings = "[Other]\nkey=\xFF\n[Settings]\nVlmHome=/srv\nSmbTbl1=1\n";
const QByteArray NewSettings = "[Other]\nkey=\xFF\n[Settings]\nVlmHome=/srv\nSmbTbl1=2\n";

TEST_F(FailingCallsTest, SettingsAreTheOldOnesOrTheNewOnes) {
    const QString path = NativePath(folder.Path("Velmo2.ini"));
    const auto save = [&path] {
        SettingsStore store(path);
        store.Save("SmbTbl1", "2");
        store.Flush();
    };
    const long calls = CallsOf(save, [this] { folder.Write("Velmo2.ini", OldSettings); });
    ASSERT_GT(calls, SomeCalls);
    int told = 0;
    for (const CallFate fate : {CallFate::Failed, CallFate::Killed}) {
        for (long call = 1; call <= calls; ++call) {
            SCOPED_TRACE(call);
            folder.Write("Velmo2.ini", OldSettings);
            const Outcome outcome = Run(save, call, fate);
            const QByteArray now = folder.Read("Velmo2.ini");
            EXPECT_TRUE(now == NewSettings || now == OldSettings) << now.constData();
            EXPECT_TRUE(outcome != Outcome::Done || now == NewSettings) << "what is not told is done";
            EXPECT_TRUE(outcome == Outcome::Killed || Names() == QStringList{"Velmo2.ini"});
            told += outcome == Outcome::Told ? 1 : 0;
            folder.Write("Velmo2.ini", OldSettings);
            EXPECT_EQ(Run(save, MostCalls, fate), Outcome::Done) << "nothing that was left is in the way";
            EXPECT_EQ(Names(), QStringList{"Velmo2.ini"});
        }
    }
    EXPECT_GT(told, 3);
}

TEST_F(FailingCallsTest, FilesThatBelongTogetherChangeTogether) {
    const auto save = [this] {
        ReplaceFiles({{folder.Path("velmo.ret"), "new"}, {folder.Path("velmo.ret2"), "new, too"}});
    };
    for (const bool oldOnes : {true, false}) {
        const auto putBack = [&] {
            for (const QString& name : Names())
                QFile::remove(NativePath(folder.Path(name)));
            if (!oldOnes)
                return;
            folder.Write("velmo.ret", "old");
            folder.Write("velmo.ret2", "old, too");
        };
        const auto now = [this] {
            const QByteArray one = folder.Exists("velmo.ret") ? folder.Read("velmo.ret") : "none";
            const QByteArray other = folder.Exists("velmo.ret2") ? folder.Read("velmo.ret2") : "none, too";
            return one + '|' + other;
        };
        putBack();
        const QByteArray before = now();
        const QByteArray after = "new|new, too";
        const auto expectSavedByTheNext = [&] {
            EXPECT_EQ(Run(save, MostCalls, CallFate::Failed), Outcome::Done);
            EXPECT_EQ(now(), after);
            EXPECT_EQ(Names(), (QStringList{"velmo.ret", "velmo.ret2"}));
        };
        const long calls = CallsOf(save, putBack);
        ASSERT_GT(calls, SomeCalls);
        int told = 0;
        for (long call = 1; call <= calls; ++call) {
            SCOPED_TRACE(call);
            putBack();
            const Outcome outcome = Run(save, call, CallFate::Failed);
            EXPECT_EQ(now(), outcome == Outcome::Done ? after : before);
            told += outcome == Outcome::Told ? 1 : 0;
            expectSavedByTheNext();

            putBack();
            EXPECT_EQ(Run(save, call, CallFate::Killed), Outcome::Killed);
            expectSavedByTheNext();
        }
        EXPECT_GT(told, 3);
    }
}

TEST_F(FailingCallsTest, TwoProgramsNeverMixFilesThatBelongTogether) {
    constexpr int Writers = 4;
    constexpr int Rounds = 5;
    std::vector<pid_t> children;
    for (int writer = 0; writer < Writers; ++writer) {
        const pid_t child = ::fork();
        if (child == 0) {
            try {
                for (int round = 0; round < Rounds; ++round) {
                    const QByteArray text = QByteArray::number(writer) + ' ' + QByteArray::number(round);
                    ReplaceFiles({{folder.Path("velmo.ret"), text}, {folder.Path("velmo.ret2"), text}});
                }
            } catch (const RuntimeError&) {
                ::_exit(1);
            }
            ::_exit(0);
        }
        children.push_back(child);
    }
    int written = 0;
    for (const pid_t child : children) {
        int status = -1;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        ASSERT_TRUE(WIFEXITED(status));
        // On a busy machine one may have waited for too long; it was told then.
        written += WEXITSTATUS(status) == 0 ? 1 : 0;
    }
    EXPECT_GT(written, 0);
    EXPECT_EQ(folder.Read("velmo.ret"), folder.Read("velmo.ret2"));
    EXPECT_EQ(Names(), (QStringList{"velmo.ret", "velmo.ret2"}));
}

} // namespace
} // namespace velmo
