#include "fault_test.h"

#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QRegularExpression>

#include <cerrno>

namespace velmo {

namespace {

// How many calls are tried unless VELMO_FAULTS tells another number.
constexpr int usualTries = 8;

// Calls that leave another state on the disk than the one before.
bool IsChange(const QString& call) {
    static const QRegularExpression change(
        "^(open\\+|openat\\+|creat|write|pwrite|ftruncate|rename|unlink|remove|link|mkdir|rmdir)");
    return change.match(call).hasMatch();
}

// What is read at a start may be missing, and what cannot be opened counts as that: there is no answer from
// before, or no table, as the window shows.
bool IsSeenAnyway(const QString& call) {
    static const QRegularExpression seen("^open(64)? .*(velmo\\.ret2|\\.PMN)$");
    return seen.match(call).hasMatch();
}

// The program's own; the engine of the databases has another way, and knows which ones it needs.
bool IsSync(const QString& call) {
    return call.startsWith("fsync ");
}

QString FaultAt(int call) {
    return QString::number(call % 2 == 1 ? ENOSPC : EIO);
}

} // namespace

void FaultTest::SetUp() {
    LibraryRunTest::SetUp();
    session_.WriteSettingsFile(session_.SettingsFile() + "Foreign=\xff\n[Other]\nLeft=of another program\n");
    MakeLibrary();
}

QStringList FaultTest::Folders() const {
    return {session_.Home(), session_.Exchange(), session_.ConfigFolder()};
}

// Without any fault it is done and the program ends well.
void FaultTest::Complete(const Task& task, const QString& when) {
    try {
        task.perform();
        EXPECT_EQ(End(), 0) << when.toStdString();
    } catch (const HarnessError& error) {
        ADD_FAILURE() << when.toStdString() << ": " << error.what();
        Leave();
    }
}

void FaultTest::Watch(const QString& call, const QString& fault) {
    environment_.insert("LD_PRELOAD", FAILING_CALLS);
    environment_.insert("VELMO_FAULT_FOLDERS", Folders().join(':'));
    environment_.insert("VELMO_FAULT_CALL", call);
    environment_.insert("VELMO_FAULT", fault);
}

QList<FaultTest::Call> FaultTest::CallsOf(const Task& task) {
    Watch({}, {});
    Complete(task, "without a fault");
    environment_ = {};
    static const QRegularExpression told("^call (\\d+): (.*)$", QRegularExpression::MultilineOption);
    QList<Call> calls;
    auto found = told.globalMatch(Run().ErrorOutput());
    while (found.hasNext()) {
        const QRegularExpressionMatch call = found.next();
        calls << Call{call.captured(1).toInt(), call.captured(2)};
    }
    return calls;
}

// A killed program leaves what it had done by then, so only calls that change something count.
QList<FaultTest::Call> FaultTest::Chosen(const QList<Call>& calls) const {
    QList<Call> possible = calls;
    possible.removeIf([](const Call& call) { return IsSeenAnyway(call.text); });
    if (GetParam() == Fate::Killed)
        possible.removeIf([](const Call& call) { return !IsChange(call.text); });
    const QString wish = qEnvironmentVariable("VELMO_FAULTS", QString::number(usualTries));
    const qsizetype tries = wish == "all" ? possible.size() : qMin<qsizetype>(wish.toInt(), possible.size());
    QList<Call> chosen;
    for (qsizetype i = 1; i <= tries; ++i)
        chosen << possible[i * possible.size() / tries - 1];
    return chosen;
}

void FaultTest::Try(const Task& task) {
    before_ = SessionFiles(Folders());
    const QList<Call> calls = CallsOf(task);
    ASSERT_FALSE(HasFailure());
    ASSERT_FALSE(calls.isEmpty());
    after_ = SessionFiles(Folders());
    MakeReady(task, *after_);
    Complete(task, "once more");
    ASSERT_FALSE(HasFailure());
    afterAll_ = SessionFiles(Folders());
    for (const Call& call : Chosen(calls))
        TryCall(task, call);
}

void FaultTest::TryCall(const Task& task, const Call& call) {
    SCOPED_TRACE(QString("call %1: %2").arg(call.number).arg(call.text).toStdString());
    before_->PutBackAlone();
    const Ending ending = RunWithFault(task, call);
    const SessionFiles now(Folders());
    const std::string told = ending.told.join("; ").toStdString();
    if (GetParam() == Fate::Failed && ending.status) {
        const QStringList undone = now.Complaints(*after_, *after_);
        EXPECT_TRUE(!ending.told.isEmpty() || (ending.status == 0 && undone.isEmpty()))
            << "nothing was told, yet not all is done; exit status " << *ending.status << "\n"
            << undone.join('\n').toStdString();
        EXPECT_TRUE(!ending.told.isEmpty() || !IsSync(call.text)) << "may be lost with the power, unsaid";
    } else {
        EXPECT_TRUE(GetParam() == Fate::Killed) << "the program did not end by itself";
    }
    const QStringList complaints = task.complaints ? task.complaints() : now.Complaints(*before_, *after_);
    EXPECT_TRUE(complaints.isEmpty()) << complaints.join('\n').toStdString() << "\ntold: " << told;

    MakeReady(task, now);
    Complete(task, "afterwards");
    const SessionFiles last(Folders());
    EXPECT_EQ(last.NamesBeside(*afterAll_), QStringList()) << "what stays of the run before";
    const QStringList lacks = last.Complaints(*afterAll_, *afterAll_);
    EXPECT_TRUE(lacks.isEmpty()) << "afterwards " << lacks.join('\n').toStdString();
}

FaultTest::Ending FaultTest::RunWithFault(const Task& task, const Call& call) {
    Watch(QString::number(call.number), GetParam() == Fate::Killed ? "kill" : FaultAt(call.number));
    QElapsedTimer timer;
    timer.start();
    try {
        task.perform();
    } catch (const HarnessError&) {
        // What it met is seen when it is left.
    }
    const Ending ending = Leave();
    environment_ = {};
    if (qEnvironmentVariableIsSet("VELMO_FAULTS_TOLD"))
        qInfo() << call.number << call.text << ending.status.value_or(-1) << timer.elapsed() << ending.told;
    return ending;
}

// Answers whatever is asked and closes what is open until the program has ended.
FaultTest::Ending FaultTest::Leave() {
    Ending ending;
    if (!HasStarted())
        return ending;
    const QDeadlineTimer deadline(DriverLink::Deadline());
    while (!Run().HasEnded()) {
        try {
            if (const std::optional<Message> message = Run().OpenMessage()) {
                // Only where No leads nowhere is it Yes.
                const bool isQuestion = message->buttons.contains("No");
                Run().Answer(!isQuestion ? "Ok" : ending.told.contains(message->text) ? "Yes" : "No");
                ending.told << message->text;
                continue;
            }
            const QJsonValue state = Run().Do({{"do", "state"}});
            if (state["popupOpen"].toBool())
                Run().Press("Escape");
            else
                Run().CloseWindow(state[state["modal"].toString().isEmpty() ? "active" : "modal"].toString());
        } catch (const HarnessError&) {
            // It may have ended between two looks.
        }
        if (deadline.hasExpired())
            return ending;
    }
    try {
        ending.status = End();
    } catch (const HarnessError&) {
        // It was killed, or has crashed.
    }
    return ending;
}

// The next start after a fault shows a window, without a complaint.
void FaultTest::StartAgain() {
    try {
        Start();
        QString window;
        Run().WaitFor("a window", [&] {
            for (const char* name : {"VLM_MAIN", "VLM_VEDT"}) {
                if (Run().IsWindowShown(name))
                    window = name;
            }
            return !window.isEmpty();
        });
        Run().CloseWindow(window);
        EXPECT_EQ(End(), 0);
    } catch (const HarnessError& error) {
        ADD_FAILURE() << "the next start: " << error.what();
        Leave();
    }
}

void FaultTest::MakeReady(const Task& task, const SessionFiles& now) {
    if (task.isRepeatable || now.Complaints(*before_, *before_).isEmpty())
        return;
    StartAgain();
    const SessionFiles started(Folders());
    const QStringList complaints =
        task.complaintsAfterStart ? task.complaintsAfterStart() : started.Complaints(*before_, *after_);
    EXPECT_TRUE(complaints.isEmpty()) << "after the next start: " << complaints.join('\n').toStdString();
    EXPECT_EQ(started.Journals(), QStringList()) << "the next start leaves a change half taken back";
    before_->PutBack(*after_);
}

} // namespace velmo
