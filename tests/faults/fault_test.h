#pragma once

#include "acceptance/library_run.h"
#include "session_files.h"

#include <optional>

namespace velmo {

// What the program meets at one of the calls by which it opens, changes, names and syncs files.
enum class Fate { Failed, Killed };

// Goes through one thing that a user does again and again, each time with another call of the program's that
// fails (no room on the device and broken device in turn) or kills the program. After each:
//
// - The program has told that something failed, or has done all.
// - Every file is the old or the new one, whole.
// - The program starts again, and the same can be done completely; nothing stays of the run before.
//
// VELMO_FAULTS tells how many calls are tried, spread over all; "all" tries each. With VELMO_FAULTS_TOLD each
// is told, with the exit status, the milliseconds it took and the messages that came.
class FaultTest : public LibraryRunTest, public testing::WithParamInterface<Fate> {
public:
    static auto Fates() { return testing::Values(Fate::Failed, Fate::Killed); }
    static std::string FateName(const testing::TestParamInfo<Fate>& fate) {
        return fate.param == Fate::Failed ? "Fail" : "Kill";
    }

protected:
    // Makes the library.
    void SetUp() override;

    struct Task {
        // From the start of the program to the last input, after which it ends by itself.
        std::function<void()> perform;
        // Whether it can be done once more where it was done.
        bool isRepeatable = false;
        // What is wrong with the files after it was interrupted, and after the program has started again;
        // unless given, whatever is neither old nor new.
        std::function<QStringList()> complaints = {};
        std::function<QStringList()> complaintsAfterStart = {};
    };
    void Try(const Task& task);

private:
    struct Call {
        int number = 0;
        QString text;
    };
    struct Ending {
        // What the messages said.
        QStringList told;
        // None after a crash.
        std::optional<int> status;
    };

    // The home, the exchange folder and that of the settings.
    QStringList Folders() const;
    // In the runs that follow, calls that concern these folders are told, and one of them meets a fault.
    void Watch(const QString& call, const QString& fault);
    void Complete(const Task& task, const QString& when);
    QList<Call> CallsOf(const Task& task);
    QList<Call> Chosen(const QList<Call>& calls) const;
    void TryCall(const Task& task, const Call& call);
    Ending RunWithFault(const Task& task, const Call& call);
    Ending Leave();
    void StartAgain();
    void MakeReady(const Task& task, const SessionFiles& now);

    std::optional<SessionFiles> before_;
    std::optional<SessionFiles> after_;
    // After the task was done twice.
    std::optional<SessionFiles> afterAll_;
};

} // namespace velmo
