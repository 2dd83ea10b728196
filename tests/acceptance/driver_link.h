#pragma once

#include <QJsonObject>
#include <QLocalServer>
#include <QLocalSocket>
#include <QProcess>

#include <functional>
#include <memory>
#include <stdexcept>

namespace velmo {

// What a whole run cannot do or did not expect; the text is for the reader of the failed test.
class HarnessError : public std::runtime_error {
public:
    explicit HarnessError(const QString& text) : std::runtime_error(text.toStdString()) {}
};

// How a program under test is started.
struct Launch {
    QString program;
    // The folder that holds generic/<the driver>.
    QString pluginFolder;
    QString workingFolder;
    // Set on top of the tests' own environment.
    QProcessEnvironment environment;
    // Run in the new process just before the program; limits it, for instance. Only async-signal-safe calls.
    std::function<void()> childModifier = {};
};

// The unchanged program in a process of its own, with the driver loaded into it, and the line to that driver.
class DriverLink {
public:
    // Starts the program and returns when its event loop runs or it has ended. Throws HarnessError when it
    // does neither before the deadline.
    explicit DriverLink(const Launch& launch);
    // Kills a program that still runs.
    ~DriverLink();
    DriverLink(const DriverLink&) = delete;
    DriverLink& operator=(const DriverLink&) = delete;

    // Sends one command and waits for the driver's answer. Throws HarnessError when the driver refuses, when
    // an input before it failed or when the program has ended.
    QJsonObject Call(const QJsonObject& command);

    // Whether the program has ended, waiting at most this long (milliseconds) for it.
    bool HasEnded(int wait = 0);
    // After the end only: what the program returned; throws when it crashed.
    int ExitStatus();
    // What the program has written to its standard error so far.
    QString ErrorOutput();

    // How long (milliseconds) anything may take before a test fails.
    static int Deadline();

private:
    void WaitForConnection();
    QByteArray ReadLine();
    QString Ended();

    QLocalServer server_;
    QProcess process_;
    std::unique_ptr<QLocalSocket> socket_;
    QByteArray errorOutput_;
    int lastId_ = 0;
};

} // namespace velmo
