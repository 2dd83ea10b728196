#include "driver_link.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QJsonDocument>
#include <QUuid>

namespace velmo {

namespace {

// How often (milliseconds) a wait for the driver looks whether the program is still there.
constexpr int lookInterval = 20;

} // namespace

DriverLink::DriverLink(const Launch& launch) {
    const QString name = "velmo-test-" + QUuid::createUuid().toString(QUuid::WithoutBraces);
    if (!server_.listen(name))
        throw HarnessError("no line for the driver: " + server_.errorString());
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_QPA_PLATFORM", qEnvironmentVariable("VELMO_TEST_PLATFORM", "offscreen"));
    environment.insert("QT_QPA_GENERIC_PLUGINS", "velmotestdriver");
    environment.insert("QT_PLUGIN_PATH", launch.pluginFolder);
    environment.insert("VELMO_TEST_SERVER", server_.fullServerName());
    // Fonts and drivers keep what they have allocated until the end, which is no leak of the program's.
    if (!environment.contains("ASAN_OPTIONS"))
        environment.insert("ASAN_OPTIONS", "detect_leaks=0");
    environment.insert(launch.environment);
    process_.setProcessEnvironment(environment);
    if (!launch.workingFolder.isEmpty())
        process_.setWorkingDirectory(launch.workingFolder);
    if (launch.childModifier)
        process_.setChildProcessModifier(launch.childModifier);
    process_.start(launch.program, {});
    if (!process_.waitForStarted(Deadline()))
        throw HarnessError("cannot start " + launch.program + ": " + process_.errorString());
    WaitForConnection();
}

DriverLink::~DriverLink() {
    if (process_.state() != QProcess::NotRunning) {
        process_.kill();
        process_.waitForFinished(Deadline());
    }
}

int DriverLink::Deadline() {
    static const int seconds = qEnvironmentVariableIntValue("VELMO_TEST_DEADLINE");
    return (seconds > 0 ? seconds : 30) * 1000;
}

void DriverLink::WaitForConnection() {
    const QDeadlineTimer deadline(Deadline());
    while (!server_.waitForNewConnection(lookInterval)) {
        if (HasEnded())
            return;
        if (deadline.hasExpired())
            throw HarnessError("the program does not come up\n" + ErrorOutput());
    }
    socket_.reset(server_.nextPendingConnection());
    socket_->setParent(nullptr);
}

QByteArray DriverLink::ReadLine() {
    const QDeadlineTimer deadline(Deadline());
    while (!socket_->canReadLine()) {
        socket_->waitForReadyRead(lookInterval);
        if (socket_->canReadLine())
            break;
        if (HasEnded())
            throw HarnessError(Ended());
        if (deadline.hasExpired())
            throw HarnessError("the program does not answer\n" + ErrorOutput());
    }
    return socket_->readLine();
}

QJsonObject DriverLink::Call(const QJsonObject& command) {
    if (socket_ == nullptr)
        throw HarnessError(Ended());
    QJsonObject numbered = command;
    numbered["id"] = ++lastId_;
    socket_->write(QJsonDocument(numbered).toJson(QJsonDocument::Compact) + '\n');
    socket_->flush();
    QJsonObject answer = QJsonDocument::fromJson(ReadLine()).object();
    const QString asked = QJsonDocument(command).toJson(QJsonDocument::Compact);
    if (answer["id"].toInt() != lastId_)
        throw HarnessError("the driver answers something else than " + asked);
    if (answer.contains("late"))
        throw HarnessError("input before " + asked + " failed: " + answer["late"].toString());
    if (answer.contains("error"))
        throw HarnessError(asked + ": " + answer["error"].toString());
    return answer;
}

bool DriverLink::HasEnded(int wait) {
    if (process_.state() != QProcess::NotRunning)
        process_.waitForFinished(wait);
    return process_.state() == QProcess::NotRunning;
}

int DriverLink::ExitStatus() {
    if (process_.exitStatus() != QProcess::NormalExit)
        throw HarnessError("the program crashed\n" + ErrorOutput());
    return process_.exitCode();
}

QString DriverLink::ErrorOutput() {
    errorOutput_ += process_.readAllStandardError();
    return QString::fromUtf8(errorOutput_);
}

QString DriverLink::Ended() {
    if (!HasEnded())
        return "the program does not take input\n" + ErrorOutput();
    if (process_.exitStatus() != QProcess::NormalExit)
        return "the program crashed\n" + ErrorOutput();
    return QString("the program has ended with status %1\n").arg(process_.exitCode()) + ErrorOutput();
}

} // namespace velmo
